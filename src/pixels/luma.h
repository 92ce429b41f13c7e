// Luma of a pixel: the weights of ITU-R BT.601 and BT.709, in single precision. [worker]
#pragma once

#include "pixels/pixel_format.h"

namespace ks {

struct LumaWeights {
    float red, green, blue;
};
inline constexpr LumaWeights kWeights601{0.299f, 0.587f, 0.114f};
inline constexpr LumaWeights kWeights709{0.2126f, 0.7152f, 0.0722f};

/// Weighted sum of red, green and blue, in that order.
constexpr float luminance(const Colour &c, const LumaWeights &weights) {
    return weights.red * c.red + weights.green * c.green + weights.blue * c.blue;
}

}  // namespace ks
