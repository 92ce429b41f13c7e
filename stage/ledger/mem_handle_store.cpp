#include "stage/ledger/mem_handle_store.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "stage/ledger/strict.h"

namespace stage {
namespace {
/// What new memory holds: a value that is neither zero nor a plausible pointer.
constexpr unsigned char kPattern = 0xC5;
}  // namespace

/// `data` must stay the first member: the handle is its address.
struct MemHandleStore::Block {
    void *data = nullptr;
    std::unique_ptr<std::max_align_t[]> storage;
    std::uint32_t size = 0;
    int locks = 0;
    std::string what;
    std::string command;

    AEGP_MemHandle handle() { return reinterpret_cast<AEGP_MemHandle>(&data); }

    /// False when memory is short; then nothing has changed.
    bool provide(std::uint32_t bytes, unsigned char fill) {
        const std::size_t units = bytes / sizeof(std::max_align_t) + 1;
        std::unique_ptr<std::max_align_t[]> fresh(new (std::nothrow) std::max_align_t[units]);
        if (!fresh) return false;
        std::memset(fresh.get(), fill, units * sizeof(std::max_align_t));
        if (storage) std::memcpy(fresh.get(), storage.get(), std::min(bytes, size));
        storage = std::move(fresh);
        data = storage.get();
        size = bytes;
        return true;
    }
};

MemHandleStore::MemHandleStore(Strict &strict) : strict_(strict) {}
MemHandleStore::~MemHandleStore() = default;

AEGP_MemHandle MemHandleStore::allocate(std::uint32_t size, bool clear, std::string what,
                                        const std::string &command) {
    if (size > size_limit) return nullptr;
    auto block = std::make_unique<Block>();
    if (!block->provide(size, clear ? 0 : kPattern)) return nullptr;
    block->what = std::move(what);
    block->command = command;
    const AEGP_MemHandle handle = block->handle();
    const std::lock_guard lock(mutex_);
    live_[handle] = std::move(block);
    return handle;
}

AEGP_MemHandle MemHandleStore::allocate_text(std::u16string_view text, const std::string &command) {
    const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
    if (bytes > size_limit) return nullptr;
    const AEGP_MemHandle handle =
        allocate(static_cast<std::uint32_t>(bytes), true, "UTF-16 text", command);
    if (handle != nullptr) std::memcpy(*handle, text.data(), text.size() * sizeof(char16_t));
    return handle;
}

AEGP_MemHandle MemHandleStore::allocate_text(std::string_view text, const std::string &command) {
    if (text.size() >= size_limit) return nullptr;
    const AEGP_MemHandle handle =
        allocate(static_cast<std::uint32_t>(text.size() + 1), true, "text", command);
    if (handle != nullptr) std::memcpy(*handle, text.data(), text.size());
    return handle;
}

MemHandleStore::Block *MemHandleStore::find(AEGP_MemHandle handle, const char *call,
                                            const std::string &command) {
    const auto found = live_.find(handle);
    if (found != live_.end()) return found->second.get();
    strict_.report("mem.unknown", command, std::string(call) + " of a handle that is not live");
    return nullptr;
}

void *MemHandleStore::lock(AEGP_MemHandle handle, const std::string &command) {
    const std::lock_guard guard(mutex_);
    Block *block = find(handle, "lock", command);
    if (block == nullptr) return nullptr;
    ++block->locks;
    return block->data;
}

bool MemHandleStore::unlock(AEGP_MemHandle handle, const std::string &command) {
    const std::lock_guard guard(mutex_);
    Block *block = find(handle, "unlock", command);
    if (block == nullptr) return false;
    if (block->locks == 0) {
        strict_.report("mem.unlock", command, block->what + " was unlocked more often than locked");
        return false;
    }
    --block->locks;
    return true;
}

bool MemHandleStore::free(AEGP_MemHandle handle, const std::string &command) {
    const std::lock_guard guard(mutex_);
    const Block *block = find(handle, "free", command);
    if (block == nullptr) return false;
    if (block->locks != 0) {
        strict_.report("mem.locked", command, block->what + " was freed while locked");
    }
    live_.erase(handle);
    return true;
}

bool MemHandleStore::resize(AEGP_MemHandle handle, std::uint32_t size, const std::string &command) {
    const std::lock_guard guard(mutex_);
    Block *block = find(handle, "resize", command);
    if (block == nullptr || size > size_limit) return false;
    if (block->locks != 0) {
        strict_.report("mem.locked", command, block->what + " was resized while locked");
        return false;
    }
    return block->provide(size, kPattern);
}

bool MemHandleStore::size(AEGP_MemHandle handle, std::uint32_t *size) const {
    const std::lock_guard guard(mutex_);
    const auto found = live_.find(handle);
    if (found == live_.end()) return false;
    *size = found->second->size;
    return true;
}

std::size_t MemHandleStore::live_count() const {
    const std::lock_guard guard(mutex_);
    return live_.size();
}

std::uint64_t MemHandleStore::live_bytes() const {
    const std::lock_guard guard(mutex_);
    std::uint64_t sum = 0;
    for (const auto &[handle, block] : live_) sum += block->size;
    return sum;
}

std::vector<std::string> MemHandleStore::leaks() const {
    const std::lock_guard guard(mutex_);
    std::vector<std::string> lines;
    for (const auto &[handle, block] : live_) {
        lines.push_back(block->what + " of " + std::to_string(block->size) + " bytes from " +
                        (block->command.empty() ? "outside any command" : block->command));
    }
    return lines;
}

void MemHandleStore::free_all() {
    const std::lock_guard guard(mutex_);
    live_.clear();
}

}  // namespace stage
