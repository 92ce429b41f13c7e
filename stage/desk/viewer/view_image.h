// A picture as a monitor shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "stage/pixels/pixel_view.h"

namespace stage {

/// Opaque pixels, 0xFFRRGGBB, rows from the top without padding. In memory that is what cairo calls
/// RGB24 and SDL ARGB8888.
struct ViewImage {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// Shows `view` over black in `image`, whose memory is used again. Codes are rounded to the nearest
/// of 0..255, halves up, once for colour times alpha; values beyond the range are cut off, NaN is
/// black.
void show_over_black(const PixelView &view, ViewImage &image);

}  // namespace stage
