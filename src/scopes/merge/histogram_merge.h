// Adds the histogram's counts up.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "scopes/sampling/sampler.h"

namespace ks {

/// At 8 and 16 bits the histogram shares its counts with other scopes, slot by slot; each part adds
/// up some of them. Otherwise the strips' own bins are added up in the end.
class HistogramMerge {
  public:
    HistogramMerge(const Sampler &sampler, int parts);

    /// Slots that add_slot must be called for, each once; 0 when the counts are not shared.
    [[nodiscard]] int slots() const {
        return plan_.rgb_uses.histogram ? plan_.rgb.slots.count() : 0;
    }

    /// Adds slot `slot` to part `part`'s sums. Different parts may do so at once. [worker]
    void add_slot(int part, int slot);

    /// Fills the context's bins and returns the highest of each channel, at least 1. To be called
    /// when all slots have been added. [host thread]
    std::array<std::uint32_t, 3> finish();

  private:
    void finish_shared(std::uint32_t *bins) const;
    void finish_strips(std::uint32_t *bins, int channels) const;

    const Sampler &sampler_;
    const SamplePlan &plan_;
    int parts_;
    std::vector<std::uint32_t> sums_;  ///< by part, channel and value class
};

}  // namespace ks
