// Writing and blending colours straight into a world: points, lines, dashes, outlines.
//
// Every routine takes the world's format code and returns 0, or 516 for an unknown code, with
// nothing written. Pixels outside the world are skipped without an error, so any coordinate is
// safe. Coordinates are world pixels. [host thread]; blend_pixel also [worker].
#pragma once

#include <cstdint>

#include "geometry/int_rect.h"
#include "pixels/depth.h"
#include "pixels/pixel_format.h"
#include "pixels/world_view.h"

namespace ks {

/// Bits of a plot mode.
enum PlotMode : unsigned {
    kPlotOver = 0,      ///< straight-alpha blend over the pixel
    kPlotAdditive = 1,  ///< colour channels are added
    kPlotClampFloat =
        2  ///< float worlds: colour channels limited to 1.0, as integer ones always are
};

/// Blends `colour` into `pixel`. Additive: channel = destination + colour. Over: channel = a *
/// colour
/// + (1 - a) * destination. Alpha in both: (1 - a) * destination + a, limited to 1.0.
template <class P>
void blend_pixel(P &pixel, const Colour &colour, unsigned mode) {
    const Colour old = to_colour(pixel);
    const float a = colour.alpha;
    const float keep = 1.0f - a;
    const bool additive = (mode & kPlotAdditive) != 0;
    const bool clamp = !kIsFloatPixel<P> || (mode & kPlotClampFloat) != 0;
    const auto limit = [](float v) { return v > 1.0f ? 1.0f : v; };
    const auto channel = [&](float d, float c) {
        const float v = additive ? d + c : a * c + keep * d;
        return clamp ? limit(v) : v;
    };
    pixel = from_colour<P>({limit(keep * old.alpha + a), channel(old.red, colour.red),
                            channel(old.green, colour.green), channel(old.blue, colour.blue)});
}

/// Writes one value into the alpha of pixel (x, y): float as is, else value * full scale truncated
/// (not clamped: the low bits are kept, see truncate_low_bits).
std::int32_t write_alpha(const WorldView &world, FormatCode code, int x, int y, float value);

/// Blends `colour` into pixel (x, y); `mode` is a combination of PlotMode bits.
std::int32_t plot(const WorldView &world, FormatCode code, int x, int y, const Colour &colour,
                  unsigned mode);

/// Splits `colour` between the two pixels of row `y` that the position `x` (pixel centres at +0.5)
/// lies between: all four components are weighted. A position exactly on a centre plots one pixel.
/// The left pixel is plotted first; an error stops the second. Positions that are not finite or
/// beyond 2^30 plot nothing.
std::int32_t plot_fractional(const WorldView &world, FormatCode code, double x, int y,
                             const Colour &colour, unsigned mode);

/// Plots the pixels of the line between the two points, both inclusive. Sloped lines step once per
/// pixel of the longer axis and round the other coordinate to the nearest pixel.
std::int32_t draw_line(const WorldView &world, FormatCode code, IntPoint from, IntPoint to,
                       const Colour &colour, unsigned mode);

/// Plots `dash` pixels, skips `gap` pixels and so on, from the smaller coordinate to the larger
/// inclusive, starting with a dash. Horizontal and vertical lines only: any other draws nothing.
/// A dash of 0 or less draws nothing; a gap of 0 or less gives a solid line.
std::int32_t draw_dashed_line(const WorldView &world, FormatCode code, IntPoint from, IntPoint to,
                              const Colour &colour, std::int16_t dash, std::int16_t gap,
                              unsigned mode);

/// Outlines `rect` with a frame `thickness` pixels wide that grows inward; each pixel of the frame
/// is blended once, corners included.
std::int32_t outline_rect(const WorldView &world, FormatCode code, const IntRect &rect,
                          int thickness, const Colour &colour, unsigned mode);

}  // namespace ks
