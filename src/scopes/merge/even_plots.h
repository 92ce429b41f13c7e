// Which plots add the same to whatever a pixel holds. No host types.
#pragma once

#include <cmath>

namespace ks {

/// True when an additive 8-bit plot of a channel of that value, 0 or more, adds the same number of
/// codes to every code, up to full scale. False for values less than 4e-5 of a code below a whole
/// number of codes: the single-precision 1/255 is too large by 1.5e-5 at 255 codes, and the sum and
/// the product of a plot are each rounded by up to 7.6e-6. Nothing rounds a plot down a code.
inline bool adds_evenly(float channel) {
    constexpr double kMargin = 4e-5;
    const double codes = static_cast<double>(channel) * 255.0;
    return codes - std::floor(codes) < 1.0 - kMargin;
}

}  // namespace ks
