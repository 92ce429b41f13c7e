// Plotting straight into a picture: points, straight and dashed lines, rectangle outlines.
#pragma once

#include "oracle/image.h"

namespace ks::oracle {

// Bits of a plot mode.
inline constexpr int kPlotOver = 0;
inline constexpr int kPlotAdditive = 1;
inline constexpr int kPlotLimitFloat = 2;

// Blends the colour into pixel (x, y); a pixel outside the picture is left out.
//
// Additive: channel = destination + colour. Over: channel = a * colour + (1 - a) * destination.
// The new alpha is (1 - a) * destination alpha + a, at most 1. Colour channels are limited to 1.0
// at the integer depths always, at float only with kPlotLimitFloat.
void plot(Image &image, int x, int y, const Colour &colour, int mode);

// Splits the colour between two neighbouring pixels of row y around the horizontal position p,
// pixel centres at +0.5. Each weight multiplies all four components.
void plot_fractional(Image &image, double p, int y, const Colour &colour, int mode);

// Axis-aligned only: every pixel from the smaller to the larger coordinate, both included.
void draw_line(Image &image, int x0, int y0, int x1, int y1, const Colour &colour, int mode);

// Axis-aligned only (any other line draws nothing): walks from the smaller to the larger coordinate
// inclusive, `dash` pixels drawn and `gap` pixels skipped in turn, starting with a dash. Pixels
// outside the picture count in the walk. A dash of 0 pixels draws nothing.
void draw_dashed_line(Image &image, int x0, int y0, int x1, int y1, int dash, int gap,
                      const Colour &colour, int mode);

// Outlines the rectangle `thickness` pixels wide, inward from its edges, each pixel once, over.
void draw_outline(Image &image, const Rect &rect, int thickness, const Colour &colour);

}  // namespace ks::oracle
