// Luma of a pixel: the weights of ITU-R BT.601 and BT.709, in single precision. [worker]
#pragma once

#include <emmintrin.h>

#include <cstdint>

#include "pixels/pixel_format.h"

namespace ks {

enum class LumaMath : std::int32_t { k601 = 1, k709 = 2 };

/// By "Luminance Math"'s choice; every value but 709's means 601.
constexpr LumaMath luma_math_of(std::int32_t choice) {
    return choice == static_cast<std::int32_t>(LumaMath::k709) ? LumaMath::k709 : LumaMath::k601;
}

struct LumaWeights {
    float red, green, blue;
};
inline constexpr LumaWeights kWeights601{0.299f, 0.587f, 0.114f};
inline constexpr LumaWeights kWeights709{0.2126f, 0.7152f, 0.0722f};

constexpr const LumaWeights &luma_weights(LumaMath math) {
    return math == LumaMath::k709 ? kWeights709 : kWeights601;
}

/// Weighted sum of red, green and blue, in that order.
constexpr float luminance(const Colour &c, LumaMath math) {
    const LumaWeights &weights = luma_weights(math);
    return weights.red * c.red + weights.green * c.green + weights.blue * c.blue;
}

/// The same of four pixels, whose channels are given apart.
inline __m128 luminance(__m128 red, __m128 green, __m128 blue, const LumaWeights &weights) {
    const __m128 wr = _mm_set1_ps(weights.red);
    const __m128 wg = _mm_set1_ps(weights.green);
    const __m128 wb = _mm_set1_ps(weights.blue);
    return _mm_add_ps(_mm_add_ps(_mm_mul_ps(wr, red), _mm_mul_ps(wg, green)), _mm_mul_ps(wb, blue));
}

}  // namespace ks
