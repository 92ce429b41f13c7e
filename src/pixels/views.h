// The monitor views: what one pixel becomes in each view mode.
#pragma once

#include <array>
#include <cstdint>

#include "pixels/depth.h"
#include "pixels/gamma.h"
#include "pixels/luma.h"
#include "pixels/pixel_format.h"

namespace ks {

/// View modes by their codes; any other code copies the pixel.
enum class View : std::int32_t {
    kUnchanged = 0,
    kRgb = 1,
    kAlpha = 2,
    kLuminance = 3,
    kRed = 4,
    kGreen = 5,
    kBlue = 6,
    kCb = 7,
    kCr = 8
};
inline constexpr int kViewCount = 9;  ///< kUnchanged and the eight views

/// Values of ConversionRecord::apply_curve.
inline constexpr std::uint8_t kCurveOnLuma = 1;  ///< the luminance view goes through curve and gain
inline constexpr std::uint8_t kRawLuma = 2;      ///< the four-way tiles show the measured luma

/// What the pixel callbacks read. Filled before an iteration and not written while it runs.
struct ConversionRecord {
    std::uint8_t apply_curve;
    std::int32_t view_mode;
    float inverse_gamma;      ///< informational: the tables already hold it
    const float *low_table;   ///< start of the block of 768 floats; may be null for views 4 to 8
    const float *high_table;  ///< directly behind the low table
    float gain;
    FormatCode pixel_format;
    LumaMath luma_math;
    /// 8-bit worlds: curve and gain for each of the 256 codes; see prepare_record.
    std::array<std::uint8_t, 256> corrected_codes;
};

/// `v` through the gamma curve and the gain.
inline float corrected(float v, const ConversionRecord &record) {
    return gamma_curve(v, record.low_table, record.high_table) * record.gain;
}

/// `grey` in red, green and blue, with the alpha of `in`.
inline __m128 grey_pixel(__m128 in, float grey) {
    return _mm_move_ss(_mm_set1_ps(grey), in);
}

/// One pixel, lanes alpha, red, green, blue, in view V. Output alpha is the input alpha, except in
/// the alpha view, which is opaque. The channel views ignore gamma and gain. [worker]
template <View V>
__m128 convert_view(__m128 in, const ConversionRecord &record) {
    const Colour c = colour_of(in);
    if constexpr (V == View::kRgb) {
        const __m128 curved = gamma_curve_rgb(in, record.low_table);
        return _mm_move_ss(_mm_mul_ps(curved, _mm_set1_ps(record.gain)), in);
    } else if constexpr (V == View::kAlpha) {
        return grey_pixel(_mm_set_ss(1.0f), corrected(c.alpha, record));
    } else if constexpr (V == View::kLuminance) {
        const float luma = luminance(c, record.luma_math);
        return grey_pixel(in, record.apply_curve == kCurveOnLuma ? corrected(luma, record) : luma);
    } else if constexpr (V == View::kRed) {
        return grey_pixel(in, c.red);
    } else if constexpr (V == View::kGreen) {
        return grey_pixel(in, c.green);
    } else if constexpr (V == View::kBlue) {
        return grey_pixel(in, c.blue);
    } else if constexpr (V == View::kCb) {
        return grey_pixel(in, (c.blue - luminance(c, record.luma_math) + 1.0f) * 0.5f);
    } else if constexpr (V == View::kCr) {
        // Scale 0.6 where Cb has 0.5, and the offset added after scaling: deliberate.
        return grey_pixel(in, (c.red - luminance(c, record.luma_math)) * 0.6f + 0.5f);
    } else {
        return in;
    }
}

/// True for the views in which an 8-bit result channel depends on one 8-bit channel alone.
constexpr bool has_code_table(View view) {
    return view == View::kRgb || view == View::kAlpha;
}

/// Completes a filled record. For 8-bit worlds in the RGB and alpha views it works out the 256
/// possible results once, by the same conversion as every other pixel, which the callbacks then
/// only look up. Costs about a microsecond. [host thread]
inline void prepare_record(ConversionRecord &record) {
    if (record.pixel_format != kFormat8) return;
    if (!has_code_table(static_cast<View>(record.view_mode))) return;
    for (std::size_t i = 0; i < record.corrected_codes.size(); ++i) {
        const auto code = static_cast<std::uint8_t>(i);
        const __m128 in = load_lanes(Pixel8{code, code, code, code});
        const Pixel8 out = store_lanes<Pixel8>(convert_view<View::kRgb>(in, record));
        record.corrected_codes[i] = out.red;
    }
}

}  // namespace ks
