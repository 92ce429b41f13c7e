// Nanoseconds per pixel of the view conversion, called as a host does: the function that the
// plug-in hands to the iterate suite, through its pointer, once per pixel of a 1920x1080 world on
// one thread. The plain copy of the same rows is the identity case's yardstick.
#include <benchmark/benchmark.h>

#include <cstring>

#include "bench_pixels.h"

namespace {

using namespace ks_bench;

template <class HostPixel>
void view_conversion(benchmark::State &state) {
    Conversion conversion(static_cast<int>(state.range(0)), Depth<HostPixel>::kCode);
    ks::ConversionRecord &record = conversion.record;
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
    bench->ArgName("view")->DenseRange(1, 8)->Unit(benchmark::kMillisecond)->MinTime(0.1);
}

BENCHMARK_TEMPLATE(view_conversion, PF_Pixel)->Apply(all_views);
BENCHMARK_TEMPLATE(view_conversion, PF_Pixel16)->Apply(all_views);
BENCHMARK_TEMPLATE(view_conversion, PF_PixelFloat)->Apply(all_views);
BENCHMARK_TEMPLATE(identity_copy, PF_Pixel)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(identity_copy, PF_Pixel16)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(identity_copy, PF_PixelFloat)->Unit(benchmark::kMillisecond);

}  // namespace
