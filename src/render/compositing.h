// Placing whole worlds into others with the host's own compositor.
#pragma once

#include "geometry/int_rect.h"
#include "render/frame.h"

namespace ks {

/// How strongly a world is laid over another, in the units of each depth.
struct Opacity {
    A_u_char code8 = 255;
    A_u_short code16 = 32768;  ///< also read for float worlds
};

/// An opacity of `fraction` (0..1), truncated to each scale; outside 0..1 it is limited, NaN is 0.
Opacity opacity_from_fraction(double fraction);

/// Fills the output with the dark grey behind the monitor layouts (8-bit alpha 255, red, green and
/// blue 30; the host converts it to deeper worlds).
PF_Err fill_background(const Frame &frame);

/// Lays the part `rect` of `source` over `destination`, its top left corner at `at`; the host
/// clips.
PF_Err place_world(const Frame &frame, const PF_EffectWorld *source, const PF_Rect &rect,
                   IntPoint at, Opacity opacity, PF_EffectWorld *destination);

/// Draws `source` scaled by `scale` with its top left corner at (left, top) over all of
/// `destination`. A scale that is not above 0 and finite draws nothing.
PF_Err draw_scaled(const Frame &frame, const PF_EffectWorld *source, double scale, double left,
                   double top, PF_EffectWorld *destination);

}  // namespace ks
