// Single pixels: depth conversions, gamma curve, luma and the eight monitor views.
//
// Precision, where the required behaviour leaves it open:
// - all pixel arithmetic is in single precision, evaluated left to right as the formulas read;
// - the gamma tables are pow() of doubles, stored as floats. The base of the low table is the
//   single-precision product i * 0.0019569471f, so that gamma 1.0 rebuilds exactly the linear ramp
//   of a new instance; the exponent is the single-precision inverse gamma of the conversion record.
#pragma once

#include <array>
#include <cstdint>

#include "oracle/image.h"

namespace ks::oracle {

using Bytes = std::array<std::uint8_t, 4>;
using Words = std::array<std::uint16_t, 4>;

// Each channel times 0.003921569f, the single-precision 1/255.
Colour colour_from_bytes(const Bytes &pixel);

// Each channel times 3.0517578e-5f, the single-precision 1/32768.
Colour colour_from_words(const Words &pixel);

// Each channel min(value * 255, 255), truncated toward zero. There is no lower clamp: a negative
// result keeps the low 8 bits of its two's complement. NaN and minus infinity give 0.
Bytes bytes_from_colour(const Colour &colour);

// The same with 32768 and 16 bits.
Words words_from_colour(const Colour &colour);

// Each channel times 0.0077819824f (255/32768), truncated.
Bytes bytes_from_words(const Words &pixel);

// Reads and writes one pixel through the conversions above; (x, y) must lie inside.
Colour load_colour(const Image &image, int x, int y);
void save_colour(Image &image, int x, int y, const Colour &colour);

// 512 entries for inputs in (0, 1] followed by 256 entries for inputs in (1, 8).
using GammaTables = std::array<float, 768>;

// The tables of a new instance: i * (1/511), then 1 + (j + 1) * 0.03125.
GammaTables linear_tables();

// The tables for "Monitor Gamma" = gamma, as they are rebuilt for a frame.
GammaTables gamma_tables(double gamma);

// Looks up at scale 512 although the table is built at step 1/511, so that 1.0 reads entry 512, the
// first of the high part. Values not above 0 (NaN included) and values of 8 or more come back
// unchanged.
float gamma_lookup(const GammaTables &tables, float value);

// luma_math 2 takes the 709 weights, any other value the 601 weights.
float luma(const Colour &colour, int luma_math);

struct ViewSettings {
    int view = 1;         // 1 RGB, 2 Alpha, 3 Luminance, 4..6 red green blue, 7 Cb, 8 Cr
    double gamma = 1.0;   // "Monitor Gamma"
    double gain = 1.0;    // "Monitor Gain"
    int luma_math = 1;    // 1 601, 2 709
    int apply_curve = 1;  // 1: the luminance view takes curve and gain; other values: raw luma
};

// One pixel through the view. Any view outside 1..8 leaves the pixel as it is.
Colour view_colour(const Colour &in, const ViewSettings &settings, const GammaTables &tables);

// The whole picture through the view, at its own depth; integer depths go through float and back.
Image convert_view(const Image &source, int view, double gamma, double gain, int luma_math,
                   int apply_curve);

}  // namespace ks::oracle
