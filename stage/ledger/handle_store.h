// The host's memory handles, with a ledger.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "hostapi/effect_types.h"
#include "stage/ledger/quarantine.h"

namespace stage {

class Strict;

/// What the ledger knows of one live handle.
struct HandleInfo {
    std::uint64_t size = 0;  ///< bytes asked for
    int locks = 0;
    std::string command;      ///< command that allocated it
    bool host_owned = false;  ///< kept by the host between commands (sequence data)
};

/// PF handles: a PF_Handle points to the data pointer; locking returns that pointer and moves
/// nothing. Data is 16-byte aligned, filled with a pattern (never zero) when new, between guard
/// bytes that are checked at disposal, and poisoned and kept aside for a while after it, so that a
/// use after free is noticed. Thread-safe.
///
/// Findings: "handle.dead" (lock, unlock, dispose, size or resize of a handle that is not live),
/// "handle.double_dispose", "handle.locked_dispose" (not for handles that the host keeps, which it
/// locks itself), "handle.unlock_balance", "handle.guard", "handle.use_after_free".
class HandleStore {
  public:
    explicit HandleStore(Strict &strict);
    ~HandleStore();

    /// Null when `size` is above `size_limit` or memory is short. Size 0 is a valid empty block.
    PF_Handle allocate(std::uint64_t size, const std::string &command);
    /// Null for a handle that is not live (reported).
    void *lock(PF_Handle handle, const std::string &command);
    void unlock(PF_Handle handle, const std::string &command);
    void dispose(PF_Handle handle, const std::string &command);
    /// Keeps the handle and as many bytes as fit; the data moves. False, with nothing changed, when
    /// the handle is not live (reported) or the size cannot be had.
    bool resize(std::uint64_t size, PF_Handle *handle, const std::string &command);
    /// 0 for a handle that is not live.
    std::uint64_t size(PF_Handle handle) const;

    bool is_live(PF_Handle handle) const;
    /// Null when not live; valid until the handle is disposed of.
    const HandleInfo *info(PF_Handle handle) const;
    void set_host_owned(PF_Handle handle, bool owned);
    /// Live handles that no host record keeps.
    std::vector<PF_Handle> strays() const;
    std::size_t live_count() const;
    /// Checks the guard bytes of every live handle and the poison of the disposed ones: of the
    /// newest, and of the others in turn, unless `everything` is wanted.
    void check_guards(const std::string &command, bool everything = true);

    std::uint64_t size_limit = std::uint64_t{8} << 30;  ///< bytes; larger requests fail

  private:
    struct Block;
    Block *find(PF_Handle handle) const;
    Block *require(PF_Handle handle, const char *what, const std::string &command) const;
    void check_guard(Block &block, const std::string &command) const;

    mutable std::mutex mutex_;
    Strict &strict_;
    std::map<PF_Handle, std::unique_ptr<Block>> live_;
    /// Disposed blocks outlive their bytes' poisoning: the data pointer stays readable.
    Quarantine freed_;
    std::deque<std::unique_ptr<Block>> disposed_;
};

}  // namespace stage
