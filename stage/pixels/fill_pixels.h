// Filling a rectangle with one colour.
#pragma once

#include "stage/pixels/pixel_view.h"

namespace stage {

/// Fills `box`, clipped to `view`, with an 8-bit colour. In deeper worlds code c becomes
/// c * 32768 / 255, rounded to the nearest code, or c / 255 in single precision: 30 becomes 3855
/// and 0.117647. [host thread]
void fill_pixels(const PixelView &view, const Box &box, const PF_Pixel &colour);

/// The same with a 16-bit colour: in 8-bit worlds code c becomes c * 255 / 32768, rounded to the
/// nearest code and at most 255, in float worlds c / 32768. [host thread]
void fill_pixels(const PixelView &view, const Box &box, const PF_Pixel16 &colour);

}  // namespace stage
