// Carves typed arrays out of one block of host memory. No host types.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ks {

/// A place in the block: `count` elements of T from byte `offset`.
template <class T>
struct ArenaSpan {
    std::size_t offset = 0;
    std::size_t count = 0;
};

/// Adds up what the block must hold. Every array starts on a cache line of its own, so that two
/// threads never write into one line by way of different arrays.
class ArenaPlan {
  public:
    static constexpr std::size_t kLine = 64;

    template <class T>
    ArenaSpan<T> reserve(std::size_t count) {
        const ArenaSpan<T> span{size_, count};
        size_ += (count * sizeof(T) + kLine - 1) / kLine * kLine;
        return span;
    }

    /// Bytes to allocate; the slack lets the arrays be aligned in a block that is not.
    [[nodiscard]] std::size_t bytes() const { return size_ + kLine; }

  private:
    std::size_t size_ = 0;
};

/// The block itself, borrowed.
class Arena {
  public:
    Arena() = default;
    /// `block` holds the bytes() of the plan whose spans are looked up.
    explicit Arena(void *block) {
        const auto address = reinterpret_cast<std::uintptr_t>(block);
        base_ = static_cast<std::byte *>(block) + (ArenaPlan::kLine - address % ArenaPlan::kLine);
    }

    template <class T>
    [[nodiscard]] T *at(const ArenaSpan<T> &span) const {
        return reinterpret_cast<T *>(base_ + span.offset);
    }

  private:
    std::byte *base_ = nullptr;
};

}  // namespace ks
