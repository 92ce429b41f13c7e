// Nanoseconds per pixel of the view conversion, called as a host does: the function that the
// plug-in hands to the iterate suite, through its pointer, once per pixel of a 1920x1080 world on
// one thread. The plain copy of the same rows is the identity case's yardstick.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "hostapi/effect_types.h"
#include "render/gamma.h"
#include "render/view_callbacks.h"
#include "render/views.h"

namespace {

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
std::vector<PF_Pixel> noise() {
    return fill<PF_Pixel>(
        [](std::mt19937 &random) { return static_cast<A_u_char>(random() & 255u); });
}
template <>
std::vector<PF_Pixel16> noise() {
    return fill<PF_Pixel16>(
        [](std::mt19937 &random) { return static_cast<A_u_short>(random() % 32769u); });
}
template <>
std::vector<PF_PixelFloat> noise() {
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

void count_pixels(benchmark::State &state) {
    state.counters["ns_per_pixel"] = benchmark::Counter(
        1e-9 * static_cast<double>(kPixels),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class HostPixel>
void view_conversion(benchmark::State &state) {
    std::vector<float> tables(ks::kCurveEntries, 0.0f);
    ks::build_gamma_tables(tables.data(), 2.2, std::pow);
    ks::ConversionRecord record{};
    record.apply_curve = ks::kCurveOnLuma;
    record.view_mode = static_cast<std::int32_t>(state.range(0));
    record.low_table = tables.data();
    record.high_table = tables.data() + ks::kLowCurveEntries;
    record.gain = 1.1f;
    record.pixel_format = Depth<HostPixel>::kCode;
    record.luminance_math = 1;
    std::vector<HostPixel> in = noise<HostPixel>();
    std::vector<HostPixel> out(kPixels);
    auto callback = Depth<HostPixel>::kCallback(record.view_mode);
    benchmark::DoNotOptimize(callback);  // the host does not know which function it is
    for (auto _ : state) {
        ks::prepare_record(record);
        for (int y = 0; y < kHeight; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * kWidth;
            for (int x = 0; x < kWidth; ++x) {
                const std::size_t i = row + static_cast<std::size_t>(x);
                if (callback(&record, x, y, &in[i], &out[i]) != 0) return;
            }
        }
        benchmark::ClobberMemory();
    }
    count_pixels(state);
}

template <class HostPixel>
void identity_copy(benchmark::State &state) {
    const std::vector<HostPixel> in = noise<HostPixel>();
    std::vector<HostPixel> out(kPixels);
    for (auto _ : state) {
        for (std::size_t row = 0; row < kPixels; row += kWidth) {
            std::memcpy(&out[row], &in[row], kWidth * sizeof(HostPixel));
        }
        benchmark::ClobberMemory();
    }
    count_pixels(state);
}

void all_views(benchmark::internal::Benchmark *bench) {
    bench->ArgName("view")->DenseRange(1, 8)->Unit(benchmark::kMillisecond);
}

BENCHMARK_TEMPLATE(view_conversion, PF_Pixel)->Apply(all_views);
BENCHMARK_TEMPLATE(view_conversion, PF_Pixel16)->Apply(all_views);
BENCHMARK_TEMPLATE(view_conversion, PF_PixelFloat)->Apply(all_views);
BENCHMARK_TEMPLATE(identity_copy, PF_Pixel)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(identity_copy, PF_Pixel16)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(identity_copy, PF_PixelFloat)->Unit(benchmark::kMillisecond);

}  // namespace
