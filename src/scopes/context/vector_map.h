// From colour differences to the vectorscope's cells. [host thread] [worker]
#pragma once

#include <emmintrin.h>

#include <array>
#include <cstdint>

#include "scopes/context/sample_context.h"

namespace ks {

/// Gains of the colour differences per luma math: they bring the 100 % primaries and secondaries of
/// a calibration of 1 onto the graticule's targets.
struct VectorGains {
    double blue_y, red_y;
};
constexpr VectorGains vector_gains(LumaMath math) {
    return math == LumaMath::k709 ? VectorGains{0.3266, 0.5453} : VectorGains{0.342, 0.6125};
}

/// x = trunc((B - Y) * gain * box width * calibration + centre x),
/// y = trunc(centre y - (R - Y) * gain * box height * calibration),
/// counted from the clip box's corner; whatever lies outside the box, or is not a number, goes to
/// the spare cell behind the last.
struct VectorMap {
    VectorGains gains{};
    double width_gain = 0.0, height_gain = 0.0, calibration = 1.0;
    std::int32_t centre_x = 0, centre_y = 0, left = 0, top = 0;
    std::uint32_t width = 0, height = 0;  ///< cells; 0 for a box without an inside

    explicit VectorMap(const ScopeSampleContext &context)
        : gains(vector_gains(context.lumaMath)),
          width_gain(context.cbGain),
          height_gain(context.crGain),
          calibration(context.calibrationGain),
          centre_x(context.vectorscopeCentreX),
          centre_y(context.vectorscopeCentreY),
          left(context.vectorscopeLeft),
          top(context.vectorscopeTop) {
        if (context.vectorscopeRight < left || context.vectorscopeBottom < top) return;
        width = static_cast<std::uint32_t>(context.vectorscopeRight - left + 1);
        height = static_cast<std::uint32_t>(context.vectorscopeBottom - top + 1);
    }
    VectorMap() = default;

    [[nodiscard]] std::size_t cells() const { return std::size_t{width} * height + 1; }

    /// Cells of the four samples from `blue_y` and `red_y` on.
    [[nodiscard]] std::array<std::uint32_t, 4> cells_of(const float *blue_y,
                                                        const float *red_y) const {
        alignas(16) std::int32_t x[4], y[4];
        const __m128 b = _mm_load_ps(blue_y), r = _mm_load_ps(red_y);
        _mm_store_si128(reinterpret_cast<__m128i *>(x),
                        _mm_unpacklo_epi64(columns(_mm_cvtps_pd(b)),
                                           columns(_mm_cvtps_pd(_mm_movehl_ps(b, b)))));
        _mm_store_si128(
            reinterpret_cast<__m128i *>(y),
            _mm_unpacklo_epi64(rows(_mm_cvtps_pd(r)), rows(_mm_cvtps_pd(_mm_movehl_ps(r, r)))));
        std::array<std::uint32_t, 4> cells;
        for (std::size_t k = 0; k < 4; ++k) {
            // Unsigned, so that what lies before the box, and the code of a failed truncation, is
            // beyond it too.
            const std::uint32_t u =
                static_cast<std::uint32_t>(x[k]) - static_cast<std::uint32_t>(left);
            const std::uint32_t v =
                static_cast<std::uint32_t>(y[k]) - static_cast<std::uint32_t>(top);
            cells[k] = u < width && v < height ? v * width + u : width * height;
        }
        return cells;
    }

  private:
    [[nodiscard]] __m128i columns(__m128d blue_y) const {
        __m128d x = _mm_mul_pd(blue_y, _mm_set1_pd(gains.blue_y));
        x = _mm_mul_pd(_mm_mul_pd(x, _mm_set1_pd(width_gain)), _mm_set1_pd(calibration));
        return _mm_cvttpd_epi32(_mm_add_pd(x, _mm_set1_pd(centre_x)));
    }
    [[nodiscard]] __m128i rows(__m128d red_y) const {
        __m128d y = _mm_mul_pd(red_y, _mm_set1_pd(gains.red_y));
        y = _mm_mul_pd(_mm_mul_pd(y, _mm_set1_pd(height_gain)), _mm_set1_pd(calibration));
        return _mm_cvttpd_epi32(_mm_sub_pd(_mm_set1_pd(centre_y), y));
    }
};

}  // namespace ks
