// Sizes of the scopes' panels.
//
// All coordinates are pixels of the output world (already downsampled, origin at its top left
// corner). Every truncation is toward zero and safe for NaN (0), infinities and huge values
// (limited to +-2^30, so that two coordinates can be added). [host thread]
#pragma once

#include <optional>

#include "geometry/frame_scale.h"
#include "geometry/int_rect.h"
#include "model/scope_kind.h"

namespace ks {

// Lengths in square pixels at full resolution.

/// The strip with a scope's name, by which every panel is taller than its trace area. It moves the
/// panel when dragged; the monitor window has one as tall.
inline constexpr double kLabelStrip = 18.0;
/// What the histogram's panel has beyond "Scope Height" and the label strip.
inline constexpr double kHistogramFootRoom = 24.0;
inline constexpr double kHistogramPanelWidth = 272.0;

/// Height of a waveform-type trace area for a width of 1, by those values of the "Waveform Scopes
/// Aspect Ratio" choice that fix it: 2 16:9, 3 4:3, 4 square.
std::optional<float> fixed_scope_aspect(int choice);

/// Height of a waveform-type trace area for a width of 1, by the "Waveform Scopes Aspect Ratio"
/// choice: what that fixes, else (1 and any unlisted value) the output's own shape. The ratio of
/// the two denominators is formed in single precision, the rest in double.
double scope_aspect(int choice, IntSize output, const FrameScale &scale);

/// Size of a scope's panel from its size parameter `size` (pixels at full resolution), label strip
/// included. May come out zero or negative at extreme downsampling.
IntSize scope_panel_size(ScopeSizeRule rule, double size, double aspect, const FrameScale &scale);

}  // namespace ks
