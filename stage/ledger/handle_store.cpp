#include "stage/ledger/handle_store.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "stage/ledger/strict.h"

namespace stage {
namespace {

constexpr std::size_t kGuardBytes = 32;
constexpr std::size_t kAlignment = 16;
constexpr std::uint8_t kGuardByte = 0xC3;
// Each 32-bit word of a new block reads as a huge negative integer, each float as about -3e-11.
constexpr std::uint8_t kNewByte = 0xAE;
constexpr std::size_t kQuarantineBytes = std::size_t{16} << 20;
constexpr std::size_t kKeptRecords = 4096;

}  // namespace

/// `data` is what a PF_Handle points to.
struct HandleStore::Block {
    void *data = nullptr;
    Bytes bytes;
    std::size_t total = 0;
    HandleInfo info;
    bool overrun = false;  // damage to the guard bytes has been reported

    PF_Handle handle() { return &data; }
    std::uint8_t *begin() const { return static_cast<std::uint8_t *>(data); }
    std::uint8_t *end() const { return begin() + info.size; }
    std::string label() const {
        return "a handle of " + std::to_string(info.size) + " bytes from " +
               (info.command.empty() ? std::string("outside any command") : info.command);
    }
    /// Gives the block fresh memory of `size` bytes; false when there is none.
    bool make(std::uint64_t size) {
        total = static_cast<std::size_t>(size) + 2 * kGuardBytes + kAlignment;
        bytes.reset(new (std::nothrow) std::uint8_t[total]);
        if (bytes == nullptr) return false;
        void *start = bytes.get() + kGuardBytes;
        std::size_t space = total - kGuardBytes;
        data = std::align(kAlignment, static_cast<std::size_t>(size), start, space);
        std::memset(bytes.get(), kGuardByte, total);
        std::memset(data, kNewByte, static_cast<std::size_t>(size));
        info.size = size;
        return true;
    }
};

HandleStore::HandleStore(Strict &strict)
    : strict_(strict), freed_(strict, "handle.use_after_free", kQuarantineBytes) {}
HandleStore::~HandleStore() = default;

PF_Handle HandleStore::allocate(std::uint64_t size, const std::string &command) {
    if (size > size_limit) return nullptr;
    auto block = std::make_unique<Block>();
    if (!block->make(size)) return nullptr;
    block->info.command = command;
    const PF_Handle handle = block->handle();
    const std::lock_guard lock(mutex_);
    live_.emplace(handle, std::move(block));
    return handle;
}

HandleStore::Block *HandleStore::find(PF_Handle handle) const {
    const auto found = live_.find(handle);
    return found == live_.end() ? nullptr : found->second.get();
}

HandleStore::Block *HandleStore::require(PF_Handle handle, const char *what,
                                         const std::string &command) const {
    if (Block *block = find(handle)) return block;
    const std::string *freed = handle == nullptr ? nullptr : freed_.label_of(handle);
    std::string text = std::string(what) + " of ";
    text += handle == nullptr ? "a null handle" : freed != nullptr ? *freed : "an unknown handle";
    if (freed != nullptr) text += ", already disposed of";
    const bool twice = freed != nullptr && std::string_view(what) == "dispose";
    strict_.report(twice ? "handle.double_dispose" : "handle.dead", command, std::move(text));
    return nullptr;
}

void *HandleStore::lock(PF_Handle handle, const std::string &command) {
    const std::lock_guard lock(mutex_);
    Block *block = require(handle, "lock", command);
    if (block == nullptr) return nullptr;
    ++block->info.locks;
    return block->data;
}

void HandleStore::unlock(PF_Handle handle, const std::string &command) {
    const std::lock_guard lock(mutex_);
    Block *block = require(handle, "unlock", command);
    if (block == nullptr) return;
    if (block->info.locks <= 0) {
        strict_.report("handle.unlock_balance", command,
                       block->label() + " was unlocked more often than locked");
        return;
    }
    --block->info.locks;
}

void HandleStore::dispose(PF_Handle handle, const std::string &command) {
    const std::lock_guard lock(mutex_);
    Block *block = require(handle, "dispose", command);
    if (block == nullptr) return;
    if (block->info.locks > 0 && !block->info.host_owned) {
        strict_.report("handle.locked_dispose", command, block->label() + " is still locked");
    }
    check_guard(*block, command);
    auto node = live_.extract(handle);
    freed_.take(std::move(block->bytes), block->total, handle, block->label(), command);
    // The record stays a little longer than the bytes may: a stale handle then still points to a
    // pointer, and its address is not dealt out again soon.
    disposed_.push_back(std::move(node.mapped()));
    if (disposed_.size() > kKeptRecords) disposed_.pop_front();
}

bool HandleStore::resize(std::uint64_t size, PF_Handle *handle, const std::string &command) {
    const std::lock_guard lock(mutex_);
    Block *block = require(handle == nullptr ? nullptr : *handle, "resize", command);
    if (block == nullptr || size > size_limit) return false;
    check_guard(*block, command);
    Block fresh;
    fresh.info = block->info;
    if (!fresh.make(size)) return false;
    std::memcpy(fresh.data, block->data,
                static_cast<std::size_t>(std::min<std::uint64_t>(size, block->info.size)));
    freed_.take(std::move(block->bytes), block->total, block->data,
                block->label() + " before its resize", command);
    *block = std::move(fresh);
    return true;
}

std::uint64_t HandleStore::size(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const Block *block = find(handle);
    return block == nullptr ? 0 : block->info.size;
}

bool HandleStore::is_live(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    return find(handle) != nullptr;
}

const HandleInfo *HandleStore::info(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const Block *block = find(handle);
    return block == nullptr ? nullptr : &block->info;
}

void HandleStore::set_host_owned(PF_Handle handle, bool owned) {
    const std::lock_guard lock(mutex_);
    if (Block *block = find(handle)) block->info.host_owned = owned;
}

std::vector<PF_Handle> HandleStore::strays() const {
    const std::lock_guard lock(mutex_);
    std::vector<PF_Handle> result;
    for (const auto &[handle, block] : live_) {
        if (!block->info.host_owned) result.push_back(handle);
    }
    return result;
}

std::size_t HandleStore::live_count() const {
    const std::lock_guard lock(mutex_);
    return live_.size();
}

void HandleStore::check_guards(const std::string &command, bool everything) {
    const std::lock_guard lock(mutex_);
    for (const auto &[handle, block] : live_) check_guard(*block, command);
    freed_.check(command, everything);
}

void HandleStore::check_guard(Block &block, const std::string &command) const {
    if (!strict_.enabled || block.overrun) return;
    const auto intact = [](const std::uint8_t *from, const std::uint8_t *to) {
        return std::all_of(from, to, [](std::uint8_t byte) { return byte == kGuardByte; });
    };
    if (!intact(block.end(), block.bytes.get() + block.total)) {
        block.overrun = true;
        strict_.report("handle.guard", command, block.label() + " was written past its end");
    }
    if (!intact(block.bytes.get(), block.begin())) {
        block.overrun = true;
        strict_.report("handle.guard", command, block.label() + " was written before its start");
    }
}

}  // namespace stage
