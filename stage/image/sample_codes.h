// Between a normalised value and an integer code: the one place where samples are rounded.
#pragma once

#include <cstdint>

namespace stage {

// The code nearest to value * full_scale, halves upwards, clamped to 0..full_scale; NaN gives 0.
// The product is taken in double, where it is exact, so that no rounding comes before the rounding.
inline int code_of(float value, int full_scale) {
    const double scaled = static_cast<double>(value) * full_scale;
    if (!(scaled > 0.0)) return 0;
    if (scaled >= full_scale) return full_scale;
    return static_cast<int>(scaled + 0.5);
}

// code / full_scale, rounded once.
inline float value_of(int code, int full_scale) {
    return static_cast<float>(code) / static_cast<float>(full_scale);
}

}  // namespace stage
