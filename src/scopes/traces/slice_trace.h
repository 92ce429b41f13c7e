// The slice waveform: one picture row traced as a waveform. No host types.
#pragma once

#include <cstdint>

#include "geometry/scope_layout.h"
#include "pixels/pixel_format.h"
#include "pixels/world_view.h"
#include "scopes/context/sample_context.h"

namespace ks {

/// No slice sample is plotted above this panel row. A fixed row at every label scale, inside the
/// label band, unlike the other waveform scopes' limit: deliberate. The label box, drawn later,
/// covers what stands there.
inline constexpr int kSliceTopRow = 8;

/// How the row is traced.
struct SliceSettings {
    TraceMode mode = TraceMode::kRgbAndLuma;
    LumaMath luma_math = LumaMath::k601;
    double value_scale = 1.0;  ///< multiplies values before they are placed
    double fraction = 0.0;     ///< "Slice Position", 0..1
};

/// What the slice's graticule shows.
struct SliceResult {
    int row = 0;  ///< the sampled source row, from 0
    TraceMode mode = TraceMode::kRgbAndLuma;
    bool over_range = false;  ///< some Y, R, G or B of the row's samples is above kOverRange
};

/// The source row of a slice at `fraction`: trunc((source_height - 1) * fraction), limited to the
/// source's rows; 0 for a source without rows. [host thread]
int slice_row(int source_height, double fraction);

/// Traces one row of `source` into `panel`, both of format `format`, one sample per column of
/// `area`: column u shows source column trunc(u * source width / area width), in opaque white for Y
/// and opaque red, green and blue, added and clamped. Values are placed as
/// trunc(bottom - v * value_scale * span), limited to rows kSliceTopRow..bottom; a NaN is no value
/// and is not plotted. Nothing is drawn when the source or the area has no columns. Returns 0, or
/// 516 for an unknown format. `result` is always filled. [host thread]
std::int32_t draw_slice_trace(const WorldView &source, FormatCode format, const WorldView &panel,
                              const TraceArea &area, const SliceSettings &settings,
                              SliceResult &result);

}  // namespace ks
