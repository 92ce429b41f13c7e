// Copying a rectangle, stretched where the sizes differ.
#pragma once

#include "stage/pixels/pixel_view.h"

namespace stage {

/// How samples between pixels are made.
enum class Sampling { kNearest, kBilinear };

/// Copies `from` of `src` onto `to` of `dst`; both views have the same depth and may be the same
/// memory when no stretch is needed. Equal sizes copy bytes; else the centre of each destination
/// pixel is mapped back and sampled, alpha like a colour, edges repeated, integer codes rounded to
/// the nearest, halves up. Destination pixels whose source lies outside `src` stay as they are;
/// nothing outside `to` and `dst` is touched; empty rectangles do nothing. [host thread]
void copy_pixels(const PixelView &src, const Box &from, const PixelView &dst, const Box &to,
                 Sampling sampling);

}  // namespace stage
