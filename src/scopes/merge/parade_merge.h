// Turns the parade's counts into its three columns.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "scopes/merge/count_table.h"
#include "scopes/sampling/sampler.h"

namespace ks {

/// Draws one position of all three columns at a time. A pixel of the parade takes plots of one
/// colour only, so that it is exactly what that many plots leave, at every depth.
template <class P>
class ParadeMerge {
  public:
    explicit ParadeMerge(const Sampler &sampler);

    [[nodiscard]] int positions() const { return static_cast<int>(groups_.size()); }
    /// Counters that draw_position needs.
    [[nodiscard]] std::size_t scratch_size() const;
    /// Draws the `index`-th lit position. Different ones may be drawn at once. [worker]
    void draw_position(int index, std::uint32_t *scratch) const;

  private:
    struct Group {
        int dx;
        int first_slot, last_slot;  ///< inclusive
    };
    void draw_column(std::size_t k, int x, const std::uint32_t *counts) const;

    const Sampler &sampler_;
    const SamplePlan &plan_;
    const ScopeSampleContext &context_;
    const CounterFamily &family_;
    bool by_class_;  ///< the family counts value classes rather than rows
    std::array<CountTable<P>, 3> tables_;
    std::vector<Group> groups_;
};

}  // namespace ks
