// Counts a run of samples into one strip's counters. Each function is called by one worker at a
// time per strip. [worker]
#pragma once

#include "scopes/sampling/colour_cell.h"
#include "scopes/sampling/sample_block.h"
#include "scopes/sampling/sample_plan.h"

namespace ks {

/// The run's view of a family: where its cells lie, and where each column's begin.
struct FamilyCells {
    std::uint16_t *cells;
    const std::uint32_t *first;  ///< of the run's first column on
    std::size_t stride;

    [[nodiscard]] std::uint16_t *column(int i) const { return cells + first[i]; }
};

/// R, G and B by value, for pixels of 8 and 16 bits `step` pixels apart.
inline void count_codes(const Pixel8 *first, int step, int count, const ValueClasses &,
                        const FamilyCells &family) {
    for (int i = 0; i < count; ++i) {
        std::uint32_t pixel;
        std::memcpy(&pixel, first + static_cast<std::ptrdiff_t>(i) * step, sizeof pixel);
        std::uint16_t *cells = family.column(i);
        ++cells[pixel >> 8 & 255];
        ++cells[family.stride + (pixel >> 16 & 255)];
        ++cells[2 * family.stride + (pixel >> 24)];
    }
}

inline void count_codes(const Pixel16 *first, int step, int count, const ValueClasses &classes,
                        const FamilyCells &family) {
    const std::uint16_t *const of_code = classes.of_code.data();
    for (int i = 0; i < count; ++i) {
        const Pixel16 &pixel = first[static_cast<std::ptrdiff_t>(i) * step];
        std::uint16_t *cells = family.column(i);
        ++cells[of_code[pixel.red]];
        ++cells[family.stride + of_code[pixel.green]];
        ++cells[2 * family.stride + of_code[pixel.blue]];
    }
}

/// Samples of N channels by their rows in the channel's map; channel k counts in plane k.
template <bool kPlain, std::size_t N>
void count_mapped_rows(const std::array<const float *, N> &channels, int count,
                       const std::array<const RowMap *, N> &maps, const FamilyCells &family) {
    for (int i = 0; i < count; i += 4) {
        alignas(16) std::uint32_t rows[N][4];
        for (std::size_t k = 0; k < N; ++k) {
            _mm_store_si128(reinterpret_cast<__m128i *>(rows[k]),
                            maps[k]->template rows_of<kPlain>(_mm_load_ps(channels[k] + i)));
        }
        const int last = count - i < 4 ? count - i : 4;
        for (int j = 0; j < last; ++j) {
            std::uint16_t *const cells = family.column(i + j);
            for (std::size_t k = 0; k < N; ++k) ++cells[k * family.stride + rows[k][j]];
        }
    }
}

/// The same with one map for all channels.
template <std::size_t N>
void count_rows(const std::array<const float *, N> &channels, int count, const RowMap &map,
                const FamilyCells &family) {
    std::array<const RowMap *, N> maps;
    maps.fill(&map);
    if (map.plain()) {
        count_mapped_rows<true>(channels, count, maps, family);
    } else {
        count_mapped_rows<false>(channels, count, maps, family);
    }
}

/// The parade's Y, Cb and Cr: Y, (B - Y) * 0.5 and (R - Y) * 0.6.
inline void count_difference(const SampleBlock &block, const std::array<RowMap, 3> &maps,
                             const FamilyCells &family) {
    alignas(16) float cb[SampleBlock::kSize], cr[SampleBlock::kSize];
    for (int i = 0; i < block.count; i += 4) {
        _mm_store_ps(cb + i, _mm_mul_ps(_mm_load_ps(block.blue_y + i), _mm_set1_ps(0.5f)));
        _mm_store_ps(cr + i, _mm_mul_ps(_mm_load_ps(block.red_y + i), _mm_set1_ps(0.6f)));
    }
    count_mapped_rows<false, 3>({block.luma, cb, cr}, block.count, {&maps[0], &maps[1], &maps[2]},
                                family);
}

/// Samples of N channels by histogram bin, channel k from bins[k * kBinStride] on; see
/// histogram_bin. What is not counted goes to the spare cell behind a channel's bins. Neighbouring
/// samples, which are often equal, count in different sets, so that none waits for the one before.
template <std::size_t N>
void count_bins(const std::array<const float *, N> &channels, int count, std::uint32_t *bins) {
    const __m128 zero = _mm_setzero_ps(), one = _mm_set1_ps(1.0f), scale = _mm_set1_ps(255.0f);
    for (int i = 0; i < count; i += 4) {
        alignas(16) std::uint32_t cells[N][4];
        for (std::size_t k = 0; k < N; ++k) {
            const __m128 v = _mm_load_ps(channels[k] + i);
            const __m128i counted =
                _mm_castps_si128(_mm_and_ps(_mm_cmpgt_ps(v, zero), _mm_cmple_ps(v, one)));
            const __m128i bin = _mm_cvttps_epi32(_mm_mul_ps(v, scale));
            _mm_store_si128(
                reinterpret_cast<__m128i *>(cells[k]),
                _mm_or_si128(_mm_and_si128(counted, bin),
                             _mm_andnot_si128(counted, _mm_set1_epi32(kHistogramBins))));
        }
        const int last = count - i < 4 ? count - i : 4;
        for (int j = 0; j < last; ++j) {
            std::uint32_t *const set = bins + j % kBinSets * kBinSetCells;
            for (std::size_t k = 0; k < N; ++k) ++set[k * kBinStride + cells[k][j]];
        }
    }
}

/// Samples by their vectorscope cell.
inline void count_vectors(const SampleBlock &block, const VectorMap &map, std::uint32_t *grid) {
    for (int i = 0; i < block.count; i += 4) {
        const auto cells = map.cells_of(block.blue_y + i, block.red_y + i);
        const int last = block.count - i < 4 ? block.count - i : 4;
        for (int k = 0; k < last; ++k) ++grid[cells[static_cast<std::size_t>(k)]];
    }
}

/// The same, gathering each sample's own colour times `gain`. A colour whose alpha is not a number
/// is no value.
template <class P>
void gather_vectors(const SampleBlock &block, const VectorMap &map, float gain,
                    ColourCell<P> *grid) {
    for (int i = 0; i < block.count; i += 4) {
        const auto cells = map.cells_of(block.blue_y + i, block.red_y + i);
        const int last = block.count - i < 4 ? block.count - i : 4;
        for (int k = 0; k < last; ++k) {
            const int j = i + k;
            if (kIsFloatPixel<P> && !(block.alpha[j] == block.alpha[j])) continue;
            grid[cells[static_cast<std::size_t>(k)]].add(
                _mm_setr_ps(block.alpha[j], block.red[j], block.green[j], block.blue[j]), gain);
        }
    }
}

}  // namespace ks
