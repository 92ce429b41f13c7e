// Pixel buffers that an effect makes images of.
#pragma once

#include <optional>

#include "hostapi/drawbot.h"
#include "stage/drawbot/draw_list.h"

namespace stage {

/// Numbers of the host's pixel layouts; the letters are bytes in the order of memory. The spare
/// byte of the 32-bit layouts without alpha lies where their relatives have alpha.
enum class PixelLayout : DRAWBOT_PixelLayout {
    k24Rgb = 0,
    k24Bgr = 1,
    k32Rgb = 2,
    k32Bgr = 3,
    k32ArgbStraight = 4,
    k32ArgbPremultiplied = 5,
    k32BgraStraight = 6,
    k32BgraPremultiplied = 7,
};

/// Copies the `height` rows of `width` pixels at `data`, `row_bytes` bytes apart. Premultiplied
/// colours are divided by alpha, rounded to nearest, white at most. None for a layout that is not
/// listed, sizes that are not 1..30000, and rows too short for their pixels. Throws std::bad_alloc.
std::optional<DrawImage> image_from_buffer(int width, int height, int row_bytes,
                                           DRAWBOT_PixelLayout layout, const void *data);

}  // namespace stage
