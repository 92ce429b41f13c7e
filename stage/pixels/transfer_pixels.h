// Compositing a rectangle of one world into another at whole pixels.
#pragma once

#include "stage/pixels/compositing.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// Lays `from` of `src` over `dst` with the corner of `from` at (x, y) of `dst`. Both views have
/// the same depth. Clipped against both worlds: parts of `from` outside `src` and what falls
/// outside `dst` are left out; the position may be negative. `how` must be made for the same depth.
/// Integer results are rounded to the nearest code, halves up. [host thread]
void transfer_pixels(const PixelView &src, const Box &from, const PixelView &dst, std::int64_t x,
                     std::int64_t y, const Compositing &how);

}  // namespace stage
