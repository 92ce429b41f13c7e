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
    /// Reports every block whose bytes have changed since it was taken, once each.
    void check(const std::string &command);

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
    std::deque<Block> blocks_;
};

}  // namespace stage
