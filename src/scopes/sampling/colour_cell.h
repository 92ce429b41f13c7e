// Vectorscope cells that gather the samples' own colours. [host thread] [worker]
//
// Sums of whole numbers, so that the order of the samples does not matter. Each sample adds what
// its plot would add to a cleared pixel. At 8 and 16 bits that number depends on what the pixel
// already holds only for channels whose scaled code lies within 1/1000 below a whole number (8
// bits: 1/10000); such a hit may be one code low, in each channel, and no other is. At float the
// sum is that of the plots but for their roundings (2^-25 each, 2^-30 here), limited to 1 at the
// end rather than after every plot: negative colours take nothing then from what the limit has cut
// off, and the pixel may stay higher by up to their sum.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

#include "pixels/depth.h"

namespace ks {

inline constexpr float kOpaqueWeight = 64.0f;  ///< what an opaque sample adds to `weight`

/// 8 and 16 bits: codes that stop at 65535, far above full scale.
template <class P>
struct ColourCell {
    std::uint16_t weight, red, green, blue;

    /// `sample` is alpha, red, green, blue; `gain` brings it to what is plotted.
    void add(__m128 sample, float gain) {
        constexpr float kFull = PixelTraits<P>::kFullScale;
        const __m128 colour = _mm_mul_ps(sample, _mm_setr_ps(kOpaqueWeight, gain, gain, gain));
        const __m128 scaled = _mm_mul_ps(colour, _mm_setr_ps(1.0f, kFull, kFull, kFull));
        const __m128 clamped = _mm_min_ps(_mm_set1_ps(kFull), scaled);
        Pixel16 codes;
        store_codes(_mm_cvttps_epi32(clamped), codes);
        std::int64_t more, sum;
        std::memcpy(&more, &codes, sizeof more);
        std::memcpy(&sum, this, sizeof sum);
        sum = _mm_cvtsi128_si64(_mm_adds_epu16(_mm_cvtsi64_si128(sum), _mm_cvtsi64_si128(more)));
        std::memcpy(this, &sum, sizeof sum);
    }

    void merge(const ColourCell &other) {
        weight = saturated(weight, other.weight);
        red = saturated(red, other.red);
        green = saturated(green, other.green);
        blue = saturated(blue, other.blue);
    }

    /// Colour channel in codes.
    static float channel(std::uint16_t sum) { return sum; }

  private:
    static std::uint16_t saturated(std::uint32_t a, std::uint32_t b) {
        return static_cast<std::uint16_t>(a + b < 65535u ? a + b : 65535u);
    }
};
static_assert(sizeof(ColourCell<Pixel8>) == 8 && sizeof(ColourCell<Pixel16>) == 8);

/// Float: fixed point with 30 fraction bits; one sample counts for at most +-64.
template <>
struct ColourCell<PixelF> {
    std::int64_t weight, red, green, blue;

    void add(__m128 sample, float gain) {
        const Colour colour =
            colour_of(_mm_mul_ps(sample, _mm_setr_ps(kOpaqueWeight, gain, gain, gain)));
        weight += fixed(colour.alpha);
        red += fixed(colour.red);
        green += fixed(colour.green);
        blue += fixed(colour.blue);
    }

    void merge(const ColourCell &other) {
        weight += other.weight;
        red += other.red;
        green += other.green;
        blue += other.blue;
    }

    static float channel(std::int64_t sum) {
        return static_cast<float>(static_cast<double>(sum) * (1.0 / kOne));
    }

  private:
    static constexpr double kOne = 1073741824.0;  // 2^30

    static std::int64_t fixed(float value) {
        constexpr float kLimit = 64.0f;
        if (!(value == value)) return 0;
        const float limited = value > kLimit ? kLimit : value < -kLimit ? -kLimit : value;
        return static_cast<std::int64_t>(static_cast<double>(limited) * kOne);
    }
};

}  // namespace ks
