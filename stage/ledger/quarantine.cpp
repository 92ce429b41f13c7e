#include "stage/ledger/quarantine.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "stage/ledger/strict.h"

namespace stage {

Quarantine::Quarantine(Strict &strict, const char *check, std::size_t budget)
    : strict_(strict), check_(check), budget_(budget) {}

void Quarantine::take(Bytes block, std::size_t size, const void *used, std::string label,
                      const std::string &command) {
    if (!strict_.enabled || size > kLargestKept) return;
    std::memset(block.get(), kFreedByte, size);
    blocks_.push_back({std::move(block), size, used, std::move(label)});
    held_ += size;
    while (held_ > budget_ && blocks_.size() > 1) {
        inspect(blocks_.front(), command);
        held_ -= blocks_.front().size;
        blocks_.pop_front();
        if (turn_ > 0) --turn_;
    }
}

const std::string *Quarantine::label_of(const void *used) const {
    const auto found = std::find_if(blocks_.rbegin(), blocks_.rend(),
                                    [&](const Block &block) { return block.used == used; });
    return found == blocks_.rend() ? nullptr : &found->label;
}

void Quarantine::check(const std::string &command, bool everything) {
    std::size_t older = blocks_.size();  // blocks that are not among the newest
    for (std::size_t seen = 0; older > 0 && (everything || seen < kBytesOfCheck);) {
        seen += blocks_[--older].size;
        inspect(blocks_[older], command);
    }
    std::size_t left = older;
    for (std::size_t seen = 0; left > 0 && seen < kBytesOfCheck; --left, ++turn_) {
        if (turn_ >= older) turn_ = 0;
        seen += blocks_[turn_].size;
        inspect(blocks_[turn_], command);
    }
}

void Quarantine::inspect(Block &block, const std::string &command) {
    if (block.reported || block.size == 0) return;
    const std::uint8_t *begin = block.bytes.get(), *end = begin + block.size;
    // Nearly every block is untouched: equal to itself shifted by one is the fast way to see that.
    if (*begin == kFreedByte && std::memcmp(begin, begin + 1, block.size - 1) == 0) return;
    const std::uint8_t *touched =
        std::find_if(begin, end, [](std::uint8_t byte) { return byte != kFreedByte; });
    if (touched == end) return;
    block.reported = true;
    strict_.report(check_, command,
                   block.label + " was written to after it was disposed of, at byte " +
                       std::to_string(touched - begin));
}

}  // namespace stage
