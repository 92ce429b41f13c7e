// Adds up counter cells. Whole runs at a time, skipping what was never hit. [worker]
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>

namespace ks {

/// True when the eight cells are all 0.
inline bool all_zero(__m128i cells) {
    return _mm_movemask_epi8(_mm_cmpeq_epi16(cells, _mm_setzero_si128())) == 0xFFFF;
}

/// sum[k][i] += cells[i] * factor[k] for N sums of `count` floats, a multiple of eight. Sums of
/// whole numbers are exact up to 2^24, far above any full scale.
template <std::size_t N>
void add_scaled(const std::uint16_t *cells, std::size_t count, const float (&factors)[N],
                float *const (&sums)[N]) {
    const __m128i zero = _mm_setzero_si128();
    for (std::size_t i = 0; i < count; i += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(cells + i));
        if (all_zero(eight)) continue;
        const __m128 low = _mm_cvtepi32_ps(_mm_unpacklo_epi16(eight, zero));
        const __m128 high = _mm_cvtepi32_ps(_mm_unpackhi_epi16(eight, zero));
        for (std::size_t k = 0; k < N; ++k) {
            if (factors[k] == 0.0f) continue;
            const __m128 factor = _mm_set1_ps(factors[k]);
            float *const at = sums[k] + i;
            _mm_storeu_ps(at, _mm_add_ps(_mm_loadu_ps(at), _mm_mul_ps(low, factor)));
            _mm_storeu_ps(at + 4, _mm_add_ps(_mm_loadu_ps(at + 4), _mm_mul_ps(high, factor)));
        }
    }
}

/// The same for three planes of cells `stride` apart: plane k adds cells * factor to sums[k], and
/// all three together add cells * shared to sums[3]. Beyond 65535 together they count as 65535
/// there.
inline void add_planes(const std::uint16_t *cells, std::size_t stride, float factor, float shared,
                       float *const (&sums)[4]) {
    const __m128i zero = _mm_setzero_si128();
    const __m128 factors[2] = {_mm_set1_ps(factor), _mm_set1_ps(shared)};
    const auto add = [&](__m128i eight, __m128 by, float *at) {
        const __m128 low = _mm_cvtepi32_ps(_mm_unpacklo_epi16(eight, zero));
        const __m128 high = _mm_cvtepi32_ps(_mm_unpackhi_epi16(eight, zero));
        _mm_storeu_ps(at, _mm_add_ps(_mm_loadu_ps(at), _mm_mul_ps(low, by)));
        _mm_storeu_ps(at + 4, _mm_add_ps(_mm_loadu_ps(at + 4), _mm_mul_ps(high, by)));
    };
    for (std::size_t i = 0; i < stride; i += 8) {
        const auto load = [&](std::size_t plane) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i *>(cells + plane * stride + i));
        };
        const __m128i planes[3] = {load(0), load(1), load(2)};
        const __m128i all = _mm_adds_epu16(_mm_adds_epu16(planes[0], planes[1]), planes[2]);
        if (all_zero(all)) continue;
        for (std::size_t k = 0; k < 3; ++k) add(planes[k], factors[0], sums[k] + i);
        add(all, factors[1], sums[3] + i);
    }
}

/// sum[i] += cells[i] for `count` cells, a multiple of eight; sums stop at 65535.
inline void add_hits(const std::uint16_t *cells, std::size_t count, std::uint16_t *sums) {
    for (std::size_t i = 0; i < count; i += 8) {
        auto *const at = reinterpret_cast<__m128i *>(sums + i);
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(cells + i));
        _mm_storeu_si128(at, _mm_adds_epu16(_mm_loadu_si128(at), eight));
    }
}

/// sum[i] += cells[i] for `count` cells, a multiple of eight.
inline void add_counts(const std::uint16_t *cells, std::size_t count, std::uint32_t *sums) {
    const __m128i zero = _mm_setzero_si128();
    for (std::size_t i = 0; i < count; i += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(cells + i));
        if (all_zero(eight)) continue;
        auto *const at = reinterpret_cast<__m128i *>(sums + i);
        const __m128i low = _mm_unpacklo_epi16(eight, zero);
        const __m128i high = _mm_unpackhi_epi16(eight, zero);
        _mm_storeu_si128(at, _mm_add_epi32(_mm_loadu_si128(at), low));
        _mm_storeu_si128(at + 1, _mm_add_epi32(_mm_loadu_si128(at + 1), high));
    }
}

}  // namespace ks
