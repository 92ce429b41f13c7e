// Counts a frame's samples, part by part.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "scopes/sampling/grid_pool.h"
#include "scopes/sampling/sample_plan.h"

namespace ks {

struct FamilyCells;

/// The counters of one frame while they are written. Every part may run on a thread of its own, in
/// any order: a strip's counters are written by whoever holds its lock, and sums of whole numbers
/// come out the same in any order.
class Sampler {
  public:
    /// `block` holds plan.bytes bytes, whatever is in them. Plan and block outlive the sampler.
    Sampler(const SamplePlan &plan, void *block);

    /// Counts part `part` of `parts`: the rows part * r up to, not including, part * r + r, with
    /// r = floor(height / parts), every stepY-th of them. Rows behind parts * r are never sampled.
    /// Returns 0, or 516 for an unknown pixel format. Allocates nothing. [worker]
    std::int32_t run_part(int part, int parts);

    // Below: for the merge, when no part runs any more.

    [[nodiscard]] const SamplePlan &plan() const { return plan_; }
    /// Cells of a slot of `family`; null when no sample of its strip was taken.
    [[nodiscard]] const std::uint16_t *slot_cells(const CounterFamily &family, int slot) const;
    /// A strip's sets of bins, channel k of a set from k * kBinStride on; null when no sample of it
    /// was taken.
    [[nodiscard]] const std::uint32_t *strip_bins(int strip) const;
    [[nodiscard]] const GridPool &grids() const { return grids_; }
    /// Calls `f(y)` for every row that the parts sampled, in their order.
    template <class F>
    void for_sampled_rows(F &&f) const {
        const int parts = parts_.load();
        const int rows = parts > 0 ? plan_.rows / parts : 0;
        for (int part = 0; part < parts; ++part) {
            for (int y = part * rows; y < (part + 1) * rows; y += plan_.context->stepY) f(y);
        }
    }
    /// A sampled R, G, B, or Y where it is used, was above the over-range limit.
    [[nodiscard]] bool over_range() const { return over_range_.load(); }

  private:
    template <class P>
    void count_part(int first_row, int last_row, int start_strip, std::byte *grid);
    template <class P>
    void count_strip(int strip, int first_row, int last_row, std::byte *grid);
    template <class P>
    bool count_run(const P *first, int column, int count, std::byte *grid);
    FamilyCells cells(const CounterFamily &family, int column) const;
    std::uint32_t *strip_bins_at(int strip) const;
    void clear_strip(int strip);
    void clear_slots(const CounterFamily &family, int strip);

    const SamplePlan &plan_;
    Arena arena_;
    GridPool grids_;
    std::unique_ptr<std::mutex[]> locks_;      ///< per strip
    std::unique_ptr<std::uint8_t[]> touched_;  ///< per strip, guarded by its lock
    std::atomic<bool> over_range_{false};
    std::atomic<int> parts_{0};
};

}  // namespace ks
