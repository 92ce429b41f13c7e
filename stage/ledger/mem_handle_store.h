// The project services' memory handles, with a ledger. Never mixed with the effect handles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "hostapi/aegp_types.h"

namespace stage {

class Strict;

/// AEGP memory handles: each points to the data pointer, locking returns that pointer and moves
/// nothing. Data is 16-byte aligned. Wrong use (a handle that is not live, more unlocks than locks,
/// a free while locked) is a finding; the call then fails where it can. Thread-safe.
class MemHandleStore {
  public:
    explicit MemHandleStore(Strict &strict);
    ~MemHandleStore();
    MemHandleStore(const MemHandleStore &) = delete;
    MemHandleStore &operator=(const MemHandleStore &) = delete;

    /// `size` in bytes, which may be 0; zero-filled when `clear`, else filled with a pattern. Null
    /// above `size_limit` or when memory is short.
    AEGP_MemHandle allocate(std::uint32_t size, bool clear, std::string what,
                            const std::string &command);
    /// Zero-terminated text as the services hand it out.
    AEGP_MemHandle allocate_text(std::u16string_view text, const std::string &command);
    AEGP_MemHandle allocate_text(std::string_view text, const std::string &command);

    /// Null or false for a handle that is not live.
    void *lock(AEGP_MemHandle handle, const std::string &command);
    bool unlock(AEGP_MemHandle handle, const std::string &command);
    bool free(AEGP_MemHandle handle, const std::string &command);
    /// Keeps what fits of the contents. The handle stays, the data pointer changes.
    bool resize(AEGP_MemHandle handle, std::uint32_t size, const std::string &command);
    bool size(AEGP_MemHandle handle, std::uint32_t *size) const;
    std::size_t live_count() const;
    /// Bytes in all live handles.
    std::uint64_t live_bytes() const;

    /// One line for each live handle: purpose, size, command that allocated it.
    std::vector<std::string> leaks() const;
    /// Frees whatever is left, without a finding.
    void free_all();

    std::uint32_t size_limit = std::uint32_t{1} << 30;  ///< bytes; larger requests fail

  private:
    struct Block;
    Block *find(AEGP_MemHandle handle, const char *call, const std::string &command);

    mutable std::mutex mutex_;
    Strict &strict_;
    std::map<AEGP_MemHandle, std::unique_ptr<Block>> live_;
};

}  // namespace stage
