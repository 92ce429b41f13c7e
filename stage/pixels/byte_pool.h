// Memory for pixels that is used again: fresh pages cost more than what is done in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>

namespace stage {

class BytePool;

/// Gives a block back to its pool, or to the heap when it has none.
struct GiveBack {
    std::shared_ptr<BytePool> pool;
    std::size_t capacity = 0;  ///< of a pool's block

    void operator()(std::uint8_t *bytes) const noexcept;
};

/// Bytes on the heap without initialisation.
using Bytes = std::unique_ptr<std::uint8_t[], GiveBack>;

/// Keeps blocks that were given back, the newest ones within a budget, and deals them out again.
/// Blocks may outlive everything but the pool, which they keep alive. Thread-safe.
class BytePool : public std::enable_shared_from_this<BytePool> {
  public:
    static constexpr std::size_t kSmallest = std::size_t{64} << 10;  ///< smaller ones: the heap
    static constexpr std::size_t kBudget = std::size_t{256} << 20;   ///< bytes kept

    /// At least `size` bytes with whatever they held last. Throws std::bad_alloc.
    Bytes take(std::size_t size);
    /// Bytes kept for later.
    std::size_t kept() const;

  private:
    friend struct GiveBack;
    struct Block {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::size_t capacity;
    };
    void give_back(std::uint8_t *bytes, std::size_t capacity) noexcept;

    mutable std::mutex mutex_;
    std::list<Block> blocks_;  // the newest first
    std::size_t kept_ = 0;
};

}  // namespace stage
