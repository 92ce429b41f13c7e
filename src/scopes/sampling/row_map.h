// From a sample's value to the row of a waveform-type trace. [host thread] [worker]
#pragma once

#include <emmintrin.h>

#include <cstdint>

namespace ks {

/// y = trunc(bottom - (value * scale) * span - lift), limited to top..last. Rows are counted from
/// `top`. A value that is not a number has no row: it is counted in the spare cell behind them.
struct RowMap {
    double bottom = 0.0;  ///< y of value 0 before the lift
    double scale = 1.0;
    double span = 0.0;  ///< pixels for a value of 1.0
    double lift = 0.0;  ///< pixels that the zero line lies above `bottom`
    int top = 0;        ///< panel row of row 0
    int last = -1;      ///< panel row of the lowest row

    /// Rows of the trace; 0 for an area too low to hold one, which then plots nothing.
    [[nodiscard]] int rows() const { return last >= top ? last - top + 1 : 0; }
    [[nodiscard]] int spare() const { return rows(); }

    [[nodiscard]] int row(float value) const {
        if (!(value == value)) return spare();
        const double y = bottom - (static_cast<double>(value) * scale) * span - lift;
        if (!(y > top)) return 0;  // also for the -inf that infinity times a span gives
        return y < last ? static_cast<int>(y) - top : last - top;
    }

    /// True when the scale and the lift change nothing, so that the cheaper rows_of may be used.
    [[nodiscard]] bool plain() const { return scale == 1.0 && lift == 0.0; }

    /// row() of four values at once; `kPlain` only for a plain() map.
    template <bool kPlain>
    [[nodiscard]] __m128i rows_of(__m128 values) const {
        const __m128i low = two<kPlain>(_mm_cvtps_pd(values));
        const __m128i high = two<kPlain>(_mm_cvtps_pd(_mm_movehl_ps(values, values)));
        const __m128i rows4 = _mm_sub_epi32(_mm_unpacklo_epi64(low, high), _mm_set1_epi32(top));
        const __m128i nan = _mm_castps_si128(_mm_cmpunord_ps(values, values));
        return _mm_or_si128(_mm_and_si128(nan, _mm_set1_epi32(spare())),
                            _mm_andnot_si128(nan, rows4));
    }

    [[nodiscard]] bool operator==(const RowMap &) const = default;

  private:
    /// Panel rows of two values in the low half; those of NaN are of no meaning.
    template <bool kPlain>
    [[nodiscard]] __m128i two(__m128d values) const {
        const __m128d placed = kPlain ? values : _mm_mul_pd(values, _mm_set1_pd(scale));
        __m128d y = _mm_sub_pd(_mm_set1_pd(bottom), _mm_mul_pd(placed, _mm_set1_pd(span)));
        if constexpr (!kPlain) y = _mm_sub_pd(y, _mm_set1_pd(lift));
        y = _mm_min_pd(_mm_max_pd(y, _mm_set1_pd(top)), _mm_set1_pd(last));
        return _mm_cvttpd_epi32(y);
    }
};

}  // namespace ks
