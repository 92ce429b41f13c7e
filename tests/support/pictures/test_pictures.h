// Pictures that tests measure: a photograph, pictures of extreme values, and public test pictures
// where they lie beside the source tree.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "stage/image/picture.h"

namespace ks::test_support {

// The still life that make-photograph makes: opaque, 8 bits per channel, 256 x 168 pixels.
std::string photograph_file();

// Opaque floats. Rings that get brighter outwards, from 1/16 to beyond 10000, with spots of NaN and
// of both infinities, in all channels or in one.
stage::Picture bright_rings();

// All 65536 half floats, each once in every channel, in an order of its own.
stage::Picture half_values();

// The value of the half float with these bits.
float from_half(std::uint16_t bits);

// The bits in the order of half_values(): `channel` is 0 red, 1 green, 2 blue.
std::uint16_t half_bits(int x, int y, int channel);
inline constexpr int kHalfSide = 256;

// Colours of every hue, so saturated that a channel is negative and another over range.
stage::Picture wide_gamut();

// The names of all pictures that this build can read, here or not; they suit as test names.
std::vector<std::string> picture_names();

// The picture of that name; none for a public one that is absent.
std::optional<stage::Picture> picture_named(std::string_view name);

}  // namespace ks::test_support
