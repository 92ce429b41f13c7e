// What the host's own picture services do to a frame: fill, copy, transfer_rect, transform_world.
//
// The real host's rounding is private to it. These are the plain formulas in double precision on
// components scaled to 0..1; integer depths are rounded to the nearest code and clamped to the
// range, float is stored without clamping. Pictures that pass through interpolation or partial
// opacity are therefore to be compared with a tolerance of one code; copies, nearest-neighbour
// moves and opaque overlays are exact.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "oracle/image.h"

namespace ks::oracle {

enum class Quality { kNearest, kBilinear };

// Opacity of an overlay in both units that the host keeps; 8-bit pictures read the first, 16-bit
// and float pictures the second (divided by 32768).
struct Opacity {
    int byte_opacity = 255;
    int word_opacity = 32768;
};

// Fills the rectangle (none: all; clipped to the picture) with an 8-bit colour alpha, red, green,
// blue. Deeper pictures get c * 32768 / 255, truncated, or c / 255.
void host_fill(Image &image, const std::array<std::uint8_t, 4> &colour,
               const std::optional<Rect> &rect);

// Copies the whole of source over the whole of destination, alpha included, of the same depth.
// Equal sizes copy the components exactly; otherwise the picture is stretched, its edge pixels
// repeated.
void host_copy(const Image &source, Image &destination, Quality quality);

// Lays `rect` of source (clipped to it) over destination with its upper-left corner at (x, y), "in
// front", straight alpha: as = source alpha * opacity, a = as + ad * (1 - as), colour =
// (as * cs + ad * (1 - as) * cd) / a. as = 0 leaves the pixel as it is, as = 1 copies the source's.
void host_transfer_rect(const Image &source, const Rect &rect, const Opacity &opacity, int x, int y,
                        Image &destination);

// Scale and translation of a destination-to-source matrix: source = destination * scale + offset,
// with pixel corners at integers, so that the first pixel's centre is at 0.5.
struct DestinationToSource {
    double scale_x = 1.0;
    double scale_y = 1.0;
    double offset_x = 0.0;
    double offset_y = 0.0;
};

// Draws source into the rectangle of destination through the matrix, composited "in front" at full
// opacity. Bilinear weights each neighbour's colour by its alpha; whatever lies outside the source
// counts as transparent. There is no pre-filter.
void host_transform_world(const Image &source, Quality quality, const DestinationToSource &matrix,
                          const Rect &rect, Image &destination);

}  // namespace ks::oracle
