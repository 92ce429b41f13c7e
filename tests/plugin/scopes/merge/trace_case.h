// One picture measured by the sampler and the merger, without a host.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "oracle/scope_oracle.h"
#include "scopes/context/sample_context.h"

namespace ks {

/// How the parts are run.
enum class PartOrder { kSerial, kReversed, kShuffled, kThreads };

struct TraceRun {
    int parts = 1;
    PartOrder order = PartOrder::kSerial;
    int threads = 2;  ///< for kThreads
    int grids = 0;    ///< vectorscope grids to get along with, 0 for as many as planned
};

/// A panel, in a buffer with padded rows.
struct TracePanel {
    int width = 0, height = 0;
    std::int64_t row_bytes = 0;
    std::vector<std::byte> bytes;

    [[nodiscard]] WorldView view() { return {bytes.data(), row_bytes, width, height}; }
};

struct MeasuredTraces {
    std::array<TracePanel, 6> panels;  ///< by scope kind
    std::vector<std::uint32_t> bins;
    ScopeSampleContext context;
    bool over_range = false;
};

/// The picture's traces as the sampling pass draws them. The picture is handed over with padded
/// rows, and from the bottom row up (negative row bytes) when its width is odd.
MeasuredTraces measure(const oracle::Image &source, const oracle::ScopeSettings &settings,
                       const oracle::PanelExtents &extents, const TraceRun &run);

FormatCode format_of(oracle::Depth depth);

/// Reproducible noise over the whole range; float pictures also reach below 0 and above 1.
oracle::Image noise_picture(int width, int height, oracle::Depth depth, std::uint32_t seed);

/// Smooth ramps with a little noise, as a photograph has. Opaque.
oracle::Image smooth_picture(int width, int height, oracle::Depth depth, std::uint32_t seed);

/// Anything that a pixel can hold: 16-bit codes above full scale; floats that are not numbers,
/// infinite, huge or tiny.
oracle::Image wild_picture(int width, int height, oracle::Depth depth, std::uint32_t seed);

/// One colour, alpha first, full scale 1.0.
oracle::Image flat_picture(int width, int height, oracle::Depth depth,
                           const std::array<double, 4> &argb);

void make_opaque(oracle::Image &image);

}  // namespace ks
