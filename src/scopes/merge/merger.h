// Turns a frame's counts into traces and bins, once, after every part has been sampled.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "scopes/sampling/sampler.h"

namespace ks {

/// The merge in parts that write different pixels, and each pixel from its counts in a fixed order,
/// so that parts may run on any threads in any order.
class Merger {
  public:
    virtual ~Merger() = default;

    /// Does part `part` of the parts that the merger was made for; any other number does nothing.
    /// Allocates nothing unless a column has to be plotted by samples. [worker]
    virtual void run_part(int part) = 0;

    /// Fills the histogram's bins and returns the highest of each channel, at least 1; to be called
    /// after the last part. [host thread]
    virtual std::array<std::uint32_t, 3> finish_histogram() = 0;
};

/// A merger of `parts` parts (1 or more) for the sampler's pixel format, which must be a known one.
/// Borrows the sampler.
std::unique_ptr<Merger> make_merger(const Sampler &sampler, int parts);

}  // namespace ks
