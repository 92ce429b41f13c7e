// The oracle's picture: a packed array of alpha, red, green, blue at one of the three depths.
//
// Everything in this folder is a second, slower reading of the required behaviour. It shares no
// code with the plug-in or the stage, so that a wrong reading must be made twice to pass.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ks::oracle {

enum class Depth { kByte, kWord, kFloat };

// Four channels in the order alpha, red, green, blue, 1.0 nominal full scale.
using Colour = std::array<float, 4>;

// Four channels as they are stored: 0..255, 0..32768, or floats. A double holds each exactly.
using Stored = std::array<double, 4>;

// Rectangle in whole pixels; right and bottom are exclusive.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// width x height pixels, rows packed from the top, 4 components per pixel. Only the vector of the
// picture's depth is filled, with width * height * 4 components.
struct Image {
    int width = 0;
    int height = 0;
    Depth depth = Depth::kByte;
    std::vector<std::uint8_t> bytes8;
    std::vector<std::uint16_t> words16;
    std::vector<float> floats;
};

// A picture of transparent black. Negative sizes count as 0.
Image make_image(int width, int height, Depth depth);

// 255, 32768 or 1.
double full_scale(Depth depth);

bool contains(const Image &image, int x, int y);

// Index of the alpha component of pixel (x, y), which must lie inside.
std::size_t component_index(const Image &image, int x, int y);

// The four components as stored; (x, y) must lie inside.
Stored stored_pixel(const Image &image, int x, int y);

// Writes four components that the depth can hold exactly; (x, y) must lie inside.
void store_pixel(Image &image, int x, int y, const Stored &value);

// Truncates toward zero; NaN gives 0, values beyond the range of int its nearest end.
int whole(double value);

}  // namespace ks::oracle
