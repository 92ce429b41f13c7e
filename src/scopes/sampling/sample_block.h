// A run of samples of one picture row, as separate channels. [worker]
#pragma once

#include <emmintrin.h>

#include "pixels/depth.h"
#include "scopes/context/sample_context.h"

namespace ks {

/// Up to kSize samples; every array is filled to a multiple of four, what lies behind `count` is
/// zero and of no meaning.
struct alignas(16) SampleBlock {
    static constexpr int kSize = 64;
    float alpha[kSize], red[kSize], green[kSize], blue[kSize];
    float luma[kSize];
    float blue_y[kSize];  ///< B - Y, exactly 0 for neutral samples
    float red_y[kSize];   ///< R - Y, likewise
    int count = 0;
};

/// Reads `count` samples that lie `step` pixels apart.
template <class P>
void load_block(const P *first, int step, int count, SampleBlock &block) {
    block.count = count;
    for (int i = 0; i < count; i += 4) {
        __m128 a, r, g, b;
        if (i + 4 <= count) {
            const P *p = first + static_cast<std::ptrdiff_t>(i) * step;
            a = load_lanes(p[0]);
            r = load_lanes(p[step]);
            g = load_lanes(p[2 * step]);
            b = load_lanes(p[3 * step]);
        } else {
            P rest[4]{};
            for (int k = 0; i + k < count; ++k) {
                rest[k] = first[static_cast<std::ptrdiff_t>(i + k) * step];
            }
            a = load_lanes(rest[0]);
            r = load_lanes(rest[1]);
            g = load_lanes(rest[2]);
            b = load_lanes(rest[3]);
        }
        _MM_TRANSPOSE4_PS(a, r, g, b);
        _mm_store_ps(block.alpha + i, a);
        _mm_store_ps(block.red + i, r);
        _mm_store_ps(block.green + i, g);
        _mm_store_ps(block.blue + i, b);
    }
}

/// Fills luma and the colour differences. A neutral sample (R = G = B) has no colour difference,
/// whatever Y was rounded to.
inline void fill_luma(LumaMath math, SampleBlock &block) {
    const LumaWeights weights = luma_weights(math);  // a copy, which no store can change
    for (int i = 0; i < block.count; i += 4) {
        const __m128 r = _mm_load_ps(block.red + i);
        const __m128 g = _mm_load_ps(block.green + i);
        const __m128 b = _mm_load_ps(block.blue + i);
        const __m128 y = luminance(r, g, b, weights);
        const __m128 neutral = _mm_and_ps(_mm_cmpeq_ps(r, g), _mm_cmpeq_ps(g, b));
        _mm_store_ps(block.luma + i, y);
        _mm_store_ps(block.blue_y + i, _mm_andnot_ps(neutral, _mm_sub_ps(b, y)));
        _mm_store_ps(block.red_y + i, _mm_andnot_ps(neutral, _mm_sub_ps(r, y)));
    }
}

/// True when a sample's R, G, B, or Y if `with_luma`, is above the over-range limit.
inline bool any_over_range(const SampleBlock &block, bool with_luma) {
    const __m128 limit = _mm_set1_ps(kOverRange);
    __m128 over = _mm_setzero_ps();
    for (int i = 0; i < block.count; i += 4) {
        over = _mm_or_ps(over, _mm_cmpgt_ps(_mm_load_ps(block.red + i), limit));
        over = _mm_or_ps(over, _mm_cmpgt_ps(_mm_load_ps(block.green + i), limit));
        over = _mm_or_ps(over, _mm_cmpgt_ps(_mm_load_ps(block.blue + i), limit));
        if (with_luma) over = _mm_or_ps(over, _mm_cmpgt_ps(_mm_load_ps(block.luma + i), limit));
    }
    return _mm_movemask_ps(over) != 0;
}

}  // namespace ks
