// The histogram's bars. No host types.
#pragma once

#include <cstdint>

#include "geometry/frame_scale.h"
#include "geometry/scope_layout.h"
#include "scopes/context/sample_context.h"

namespace ks {

/// Draws the bins of `context` into `panel` (of format context.pixelFormat) as vertical bars, added
/// and clamped: one white bar per column for luma, else red, green and blue ones over each other.
///
/// A channel's fullest bin is `scope_height` less kLabelStrip * (label scale - 1) full-resolution
/// pixels high; heights are truncated. Bars stand on row (panel height - units.margin_v - 1),
/// inclusive, and start 8 full-resolution pixels from the panel's left edge. The columns step
/// through the bins by 16.16 fixed point, 256 full-resolution square pixels in all, so that bins
/// are skipped at reduced resolution. Maxima must be at least 1. `scope_height`: "Scope Height",
/// full-resolution pixels. Returns 0, or 516 for an unknown format. [host thread]
std::int32_t draw_histogram_bars(const ScopeSampleContext &context, const WorldView &panel,
                                 const LayoutUnits &units, const FrameScale &frame,
                                 double scope_height);

}  // namespace ks
