// The weighted mean of four opaque pixels, all channels at once.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>

#include "stage/pixels/pixel_view.h"
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace stage {

/// Weights of the four pixels around a point that lies `fx`, `fy` (0..1) from the first one.
struct CornerWeights {
    double w00, w10, w01, w11;

    CornerWeights(double fx, double fy) : w00(0), w10(0), w01(0), w11(fx * fy) {
        w10 = fx - w11;
        w01 = fy - w11;
        w00 = 1 - fx - w01;
    }
};

namespace opaque_mean_detail {

#if defined(__SSE2__)

/// Two pixels that lie next to each other, as integers: alpha, red, green, blue each.
struct PixelPair {
    __m128i left, right;
};

inline PixelPair load_pair(const PF_Pixel *pixels) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(pixels));
    const __m128i words = _mm_unpacklo_epi8(bytes, zero);
    return {_mm_unpacklo_epi16(words, zero), _mm_unpackhi_epi16(words, zero)};
}
inline PixelPair load_pair(const PF_Pixel16 *pixels) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i words = _mm_loadu_si128(reinterpret_cast<const __m128i *>(pixels));
    return {_mm_unpacklo_epi16(words, zero), _mm_unpackhi_epi16(words, zero)};
}

inline void store(__m128i codes, PF_Pixel &out) {
    const __m128i words = _mm_packs_epi32(codes, codes);
    const int bytes = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
    std::memcpy(&out, &bytes, sizeof out);
}
inline void store(__m128i codes, PF_Pixel16 &out) {
    // Packing is for signed words: 0..32768 is moved there and back.
    const __m128i moved = _mm_sub_epi32(codes, _mm_set1_epi32(kWhite16));
    const __m128i words =
        _mm_add_epi16(_mm_packs_epi32(moved, moved), _mm_set1_epi16(static_cast<short>(-kWhite16)));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(&out), words);
}

/// Alpha and red, or with `kHigh` green and blue, as doubles.
template <bool kHigh>
__m128d half(__m128i pixel) {
    return _mm_cvtepi32_pd(kHigh ? _mm_unpackhi_epi64(pixel, pixel) : pixel);
}

template <bool kHigh>
__m128i rounded_half(const PixelPair &upper, const PixelPair &lower, const CornerWeights &w) {
    __m128d sum = _mm_mul_pd(half<kHigh>(upper.left), _mm_set1_pd(w.w00));
    sum = _mm_add_pd(sum, _mm_mul_pd(half<kHigh>(upper.right), _mm_set1_pd(w.w10)));
    sum = _mm_add_pd(sum, _mm_mul_pd(half<kHigh>(lower.left), _mm_set1_pd(w.w01)));
    sum = _mm_add_pd(sum, _mm_mul_pd(half<kHigh>(lower.right), _mm_set1_pd(w.w11)));
    return _mm_cvttpd_epi32(_mm_add_pd(sum, _mm_set1_pd(0.5)));
}

template <class Pixel>
void integer_mean(const Pixel *upper, const Pixel *lower, const CornerWeights &weights,
                  Pixel &out) {
    const PixelPair above = load_pair(upper), below = load_pair(lower);
    store(_mm_unpacklo_epi64(rounded_half<false>(above, below, weights),
                             rounded_half<true>(above, below, weights)),
          out);
}

#else

template <class Pixel>
void integer_mean(const Pixel *upper, const Pixel *lower, const CornerWeights &weights,
                  Pixel &out) {
    using Channel = decltype(out.red);
    const auto mean = [&](double a, double b, double c, double d) {
        return static_cast<Channel>(static_cast<int>(a * weights.w00 + b * weights.w10 +
                                                     c * weights.w01 + d * weights.w11 + 0.5));
    };
    out.red = mean(upper[0].red, upper[1].red, lower[0].red, lower[1].red);
    out.green = mean(upper[0].green, upper[1].green, lower[0].green, lower[1].green);
    out.blue = mean(upper[0].blue, upper[1].blue, lower[0].blue, lower[1].blue);
    out.alpha = upper[0].alpha;
}

#endif

}  // namespace opaque_mean_detail

/// The mean of upper[0], upper[1], lower[0], lower[1] in double, in that order; integer codes are
/// rounded to the nearest, halves up. All four must be opaque, and so is `out`: the weights add up
/// to 1 within a few units in the last place, far too little to move white.
inline void opaque_mean(const PF_Pixel *upper, const PF_Pixel *lower, const CornerWeights &weights,
                        PF_Pixel &out) {
    opaque_mean_detail::integer_mean(upper, lower, weights, out);
}
inline void opaque_mean(const PF_Pixel16 *upper, const PF_Pixel16 *lower,
                        const CornerWeights &weights, PF_Pixel16 &out) {
    opaque_mean_detail::integer_mean(upper, lower, weights, out);
}
inline void opaque_mean(const PF_PixelFloat *upper, const PF_PixelFloat *lower,
                        const CornerWeights &weights, PF_PixelFloat &out) {
    const auto mean = [&](double a, double b, double c, double d) {
        return static_cast<float>(a * weights.w00 + b * weights.w10 + c * weights.w01 +
                                  d * weights.w11);
    };
    out.red = mean(upper[0].red, upper[1].red, lower[0].red, lower[1].red);
    out.green = mean(upper[0].green, upper[1].green, lower[0].green, lower[1].green);
    out.blue = mean(upper[0].blue, upper[1].blue, lower[0].blue, lower[1].blue);
    out.alpha = upper[0].alpha;
}

}  // namespace stage
