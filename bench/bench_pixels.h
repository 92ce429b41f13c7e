// What the conversion benchmarks share: pictures of noise and a filled conversion record.
#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "hostapi/effect_types.h"
#include "pixels/gamma.h"
#include "pixels/views.h"
#include "render/view_callbacks.h"

namespace ks_bench {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

/// Noise over the whole range of the depth: the worst case for caches and branch prediction. Float
/// pictures go over range here and there.
template <class HostPixel>
std::vector<HostPixel> noise();

template <class HostPixel, class Make>
std::vector<HostPixel> fill(Make &&make) {
    std::mt19937 random(20240611);
    std::vector<HostPixel> pixels(kPixels);
    for (HostPixel &pixel : pixels) {
        pixel.alpha = make(random);
        pixel.red = make(random);
        pixel.green = make(random);
        pixel.blue = make(random);
    }
    return pixels;
}

template <>
inline std::vector<PF_Pixel> noise() {
    return fill<PF_Pixel>(
        [](std::mt19937 &random) { return static_cast<A_u_char>(random() & 255u); });
}
template <>
inline std::vector<PF_Pixel16> noise() {
    return fill<PF_Pixel16>(
        [](std::mt19937 &random) { return static_cast<A_u_short>(random() % 32769u); });
}
template <>
inline std::vector<PF_PixelFloat> noise() {
    std::uniform_real_distribution<float> value(-0.05f, 1.2f);
    return fill<PF_PixelFloat>([value](std::mt19937 &random) mutable { return value(random); });
}

template <class HostPixel>
struct Depth;
template <>
struct Depth<PF_Pixel> {
    static constexpr ks::FormatCode kCode = ks::kFormat8;
    static constexpr auto kCallback = ks::view_callback_8;
};
template <>
struct Depth<PF_Pixel16> {
    static constexpr ks::FormatCode kCode = ks::kFormat16;
    static constexpr auto kCallback = ks::view_callback_16;
};
template <>
struct Depth<PF_PixelFloat> {
    static constexpr ks::FormatCode kCode = ks::kFormatF;
    static constexpr auto kCallback = ks::view_callback_float;
};

inline void count_pixels(benchmark::State &state) {
    state.counters["ns_per_pixel"] = benchmark::Counter(
        1e-9 * static_cast<double>(kPixels),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// A conversion with curve and gain, so that no view is a plain copy.
class Conversion {
  public:
    Conversion(int view, ks::FormatCode format) : tables_(ks::kCurveEntries, 0.0f) {
        ks::build_gamma_tables(tables_.data(), 2.2, std::pow);
        record.apply_curve = ks::kCurveOnLuma;
        record.view_mode = view;
        record.low_table = tables_.data();
        record.high_table = tables_.data() + ks::kRampEntries;
        record.gain = 1.1f;
        record.pixel_format = format;
        record.luma_math = ks::LumaMath::k601;
    }

    ks::ConversionRecord record{};

  private:
    std::vector<float> tables_;
};

}  // namespace ks_bench
