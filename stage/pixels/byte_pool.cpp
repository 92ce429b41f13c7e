#include "stage/pixels/byte_pool.h"

#include <new>

namespace stage {
namespace {

// The address sanitizer finds uses of freed memory only where memory is really freed.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kKeeps = false;
#else
constexpr bool kKeeps = true;
#endif

/// A block may serve a request when at most this part of it goes unused.
constexpr std::size_t kWasteDivisor = 4;

}  // namespace

void GiveBack::operator()(std::uint8_t *bytes) const noexcept {
    if (pool != nullptr) {
        pool->give_back(bytes, capacity);
    } else {
        delete[] bytes;
    }
}

Bytes BytePool::take(std::size_t size) {
    if (!kKeeps || size < kSmallest) return Bytes(new std::uint8_t[size]);
    {
        const std::lock_guard lock(mutex_);
        auto best = blocks_.end();
        for (auto block = blocks_.begin(); block != blocks_.end(); ++block) {
            if (block->capacity < size || block->capacity - size > size / kWasteDivisor) continue;
            if (best == blocks_.end() || block->capacity < best->capacity) best = block;
        }
        if (best != blocks_.end()) {
            const std::size_t capacity = best->capacity;
            Bytes bytes(best->bytes.release(), GiveBack{shared_from_this(), capacity});
            kept_ -= capacity;
            blocks_.erase(best);
            return bytes;
        }
    }
    return Bytes(new std::uint8_t[size], GiveBack{shared_from_this(), size});
}

std::size_t BytePool::kept() const {
    const std::lock_guard lock(mutex_);
    return kept_;
}

void BytePool::give_back(std::uint8_t *bytes, std::size_t capacity) noexcept {
    std::unique_ptr<std::uint8_t[]> block(bytes);
    if (capacity > kBudget) return;
    try {
        const std::lock_guard lock(mutex_);
        blocks_.push_front({std::move(block), capacity});
        kept_ += capacity;
        while (kept_ > kBudget) {
            kept_ -= blocks_.back().capacity;
            blocks_.pop_back();
        }
    } catch (const std::bad_alloc &) {  // then it is freed
    }
}

}  // namespace stage
