// The monitor gamma curve: two tables in one block of 768 floats, and their lookup.
#pragma once

#include <emmintrin.h>

#include <cstdint>

#include "model/record.h"

namespace ks {

inline constexpr int kCurveEntries = kRampEntries + kStepEntries;

/// The host's pow.
using PowFunction = double (*)(double base, double exponent);

/// Writes low[i] = pow(i * step, 1 / gamma) for i = 1..511 and behind it high[k] =
/// pow(1 + (k + 1) * 0.03125, 1 / gamma) for k = 0..255; base and exponent are rounded to single
/// precision, the exponent thus being the inverse gamma that a conversion record carries. `tables`
/// has kCurveEntries entries; entry 0 is left alone (a new record sets it to 0 and nothing ever
/// changes it). Any gamma is survived: 0, NaN and infinities give whatever `power` answers.
/// [host thread]
inline void build_gamma_tables(float *tables, double gamma, PowFunction power) {
    const double exponent = static_cast<double>(static_cast<float>(1.0 / gamma));
    for (int i = 1; i < kRampEntries; ++i) {
        const float x = static_cast<float>(i) * kRampStep;
        tables[i] = static_cast<float>(power(static_cast<double>(x), exponent));
    }
    for (int k = 0; k < kStepEntries; ++k) {
        const float x = static_cast<float>(k + 1) * kHighStep + 1.0f;
        tables[kRampEntries + k] = static_cast<float>(power(static_cast<double>(x), exponent));
    }
}

/// The curve at `v`: unchanged at or below 0, at 8 and beyond, and for NaN.
/// Looked up at scale 512 although built at step 1/511, and exactly 1.0 reads entry 512, the first
/// of the high table directly behind the low one: projects rely on both, so `low` must be the start
/// of one block of kCurveEntries, and `high` stand kRampEntries behind it. [worker]
inline float gamma_curve(float v, const float *low, const float *high) {
    if (!(v > 0.0f) || v >= 8.0f) return v;
    if (v <= 1.0f) return low[static_cast<int>(v * 512.0f)];
    return high[static_cast<int>((v - 1.0f) * 32.0f)];
}

/// gamma_curve of the red, green and blue lanes at once, with selections in place of its branches:
/// noise and highlights would defeat the branch predictor, and the curve is most of a pixel's cost.
/// The alpha lane comes out as 0 or unchanged, and is for the caller to replace. [worker]
inline __m128 gamma_curve_rgb(__m128 v, const float *low) {
    const __m128 one = _mm_set1_ps(1.0f);
    const __m128 on_curve =
        _mm_and_ps(_mm_cmpgt_ps(v, _mm_setzero_ps()), _mm_cmplt_ps(v, _mm_set1_ps(8.0f)));
    const __m128 is_high = _mm_cmpgt_ps(v, one);
    const __m128 low_scaled = _mm_mul_ps(v, _mm_set1_ps(512.0f));
    const __m128 high_scaled = _mm_mul_ps(_mm_sub_ps(v, one), _mm_set1_ps(32.0f));
    const __m128 scaled =
        _mm_or_ps(_mm_andnot_ps(is_high, low_scaled), _mm_and_ps(is_high, high_scaled));
    const __m128i base = _mm_and_si128(_mm_castps_si128(is_high), _mm_set1_epi32(kRampEntries));
    // Values off the curve read entry 0, which is then not used.
    const __m128i index =
        _mm_and_si128(_mm_castps_si128(on_curve), _mm_add_epi32(_mm_cvttps_epi32(scaled), base));
    alignas(16) std::int32_t at[4];
    _mm_store_si128(reinterpret_cast<__m128i *>(at), index);
    const __m128 found = _mm_setr_ps(0.0f, low[at[1]], low[at[2]], low[at[3]]);
    return _mm_or_ps(_mm_and_ps(on_curve, found), _mm_andnot_ps(on_curve, v));
}

}  // namespace ks
