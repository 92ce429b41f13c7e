// Pixels of a world into the drawing raster and back. No host types. [host thread]
//
// The raster: width * 4 bytes per row without padding, rows downwards; each pixel is red, green,
// blue, alpha. Nothing is premultiplied in either direction.
#pragma once

#include <cstdint>

#include "pixels/pixel_format.h"
#include "pixels/world_view.h"

namespace ks::draw {

/// Copies every pixel of `world`, of format `format`, into `raster`. Float channels become
/// trunc(min(c * 255, 255)) and 16-bit ones trunc(c * 255 / 32768), of which the low 8 bits are
/// kept (so negative values wrap); 8-bit ones stay. Returns 0, or 516 for an unknown format, which
/// leaves opaque black. A world without data leaves transparent black.
std::int32_t copy_to_raster(FormatCode format, const WorldView &world, std::uint8_t *raster);

/// Copies the raster into `world`, all opaque: the raster's alpha is not used. Bytes become
/// byte / 255 in float, trunc(byte * 32768 / 255) in 16 bits. Returns 0, or 516 for an unknown
/// format, which leaves the world as it is.
std::int32_t copy_from_raster(FormatCode format, const std::uint8_t *raster,
                              const WorldView &world);

}  // namespace ks::draw
