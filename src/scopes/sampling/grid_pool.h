// Lends the vectorscope's grids to the workers, each to one at a time.
#pragma once

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <vector>

#include "scopes/sampling/sample_plan.h"

namespace ks {

/// Fewer grids than workers is fine: who comes too late waits for one to come back. Which worker
/// got which grid does not show in their sum. [worker]
class GridPool {
  public:
    GridPool(const VectorGrids &grids, std::byte *memory) : grids_(grids), memory_(memory) {
        free_.reserve(static_cast<std::size_t>(grids.count));
        for (int i = grids.count; i-- > 0;) free_.push_back(i);
    }

    class Lease {
      public:
        explicit Lease(GridPool &pool) : pool_(pool), index_(pool.take()) {}
        ~Lease() { pool_.give_back(index_); }
        Lease(const Lease &) = delete;
        Lease &operator=(const Lease &) = delete;
        /// Cleared before its first use.
        [[nodiscard]] std::byte *get() const { return pool_.grid(index_); }

      private:
        GridPool &pool_;
        int index_;
    };

    /// Grids 0 .. used()-1 hold counts; to be asked when no worker runs.
    [[nodiscard]] int used() const { return used_; }
    [[nodiscard]] std::byte *grid(int index) const {
        return memory_ + static_cast<std::size_t>(index) * grids_.grid_bytes();
    }

  private:
    int take() {
        int index;
        bool fresh;
        {
            std::unique_lock lock(mutex_);
            returned_.wait(lock, [&] { return !free_.empty(); });
            index = free_.back();
            free_.pop_back();
            // The lowest unused grid is always the next fresh one: they are handed out in order.
            fresh = index == used_;
            if (fresh) ++used_;
        }
        if (fresh) std::memset(grid(index), 0, grids_.grid_bytes());
        return index;
    }

    void give_back(int index) {
        {
            const std::lock_guard lock(mutex_);
            free_.push_back(index);
        }
        returned_.notify_one();
    }

    const VectorGrids &grids_;
    std::byte *memory_;
    std::mutex mutex_;
    std::condition_variable returned_;
    std::vector<int> free_;
    int used_ = 0;
};

}  // namespace ks
