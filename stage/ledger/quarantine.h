// Memory that was given back, kept aside for a while so that a use after free is noticed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

#include "stage/pixels/byte_pool.h"

namespace stage {

class Strict;

/// Byte that freed memory is filled with.
inline constexpr std::uint8_t kFreedByte = 0xDD;

/// Blocks larger than this many bytes are freed at once.
inline constexpr std::size_t kLargestKept = std::size_t{256} << 20;

/// Bytes that a check looks at among the newest blocks, and again among the older ones in turn.
inline constexpr std::size_t kBytesOfCheck = std::size_t{1} << 20;

/// Keeps the newest freed blocks within a budget, and the newest one even where it alone is larger,
/// up to kLargestKept. Not thread-safe: its owner locks.
class Quarantine {
  public:
    /// `check` is the name of the finding, for example "handle.use_after_free"; `budget` is in
    /// bytes.
    Quarantine(Strict &strict, const char *check, std::size_t budget);

    /// Takes over a block that nobody may touch any more. `used` is the address its user knew (any
    /// pointer, only compared), `label` says what it was. With checks off the block is freed at
    /// once.
    void take(Bytes block, std::size_t size, const void *used, std::string label,
              const std::string &command);
    /// The label of the block that was known as `used`; null when there is none.
    const std::string *label_of(const void *used) const;
    /// Reports blocks whose bytes have changed since they were taken, once each. Looks at the
    /// newest blocks every time and at the older ones in turn, so that the cost of a command does
    /// not grow with what was freed before it; at all of them with `everything`. A block is looked
    /// at once more before it is let go.
    void check(const std::string &command, bool everything);

  private:
    struct Block {
        Bytes bytes;
        std::size_t size;
        const void *used;
        std::string label;
        bool reported = false;
    };
    void inspect(Block &block, const std::string &command);

    Strict &strict_;
    const char *check_;
    std::size_t budget_;
    std::size_t held_ = 0;
    std::size_t turn_ = 0;  // the older block that the next check begins with
    std::deque<Block> blocks_;
};

}  // namespace stage
