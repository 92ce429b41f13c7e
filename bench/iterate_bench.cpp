// The view conversion through the embedded host's iterate suite, with one thread and with two, and
// the host's own copy of the same worlds as the yardstick of the identity case.
#include <benchmark/benchmark.h>

#include <cstring>

#include "bench_pixels.h"
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/services/suites/serving_host.h"
#include "stage/services/utility_callbacks.h"

namespace {

using namespace ks_bench;

template <class HostPixel>
struct Iterate;
template <>
struct Iterate<PF_Pixel> {
    using Suite = PF_Iterate8Suite1;
    static constexpr const char *kName = kPFIterate8Suite;
    static constexpr stage::Depth kDepth = stage::Depth::U8;
};
template <>
struct Iterate<PF_Pixel16> {
    using Suite = PF_iterate16Suite1;
    static constexpr const char *kName = kPFIterate16Suite;
    static constexpr stage::Depth kDepth = stage::Depth::U16;
};
template <>
struct Iterate<PF_PixelFloat> {
    using Suite = PF_iterateFloatSuite1;
    static constexpr const char *kName = kPFIterateFloatSuite;
    static constexpr stage::Depth kDepth = stage::Depth::Float;
};

/// A host with two worlds, the first of noise.
template <class HostPixel>
struct Scene {
    explicit Scene(int threads) : host(options(threads)) {
        in = host.worlds.create(kWidth, kHeight, Iterate<HostPixel>::kDepth, host.options.worlds);
        out = host.worlds.create(kWidth, kHeight, Iterate<HostPixel>::kDepth, host.options.worlds);
        const std::vector<HostPixel> pixels = noise<HostPixel>();
        for (int y = 0; y < kHeight; ++y) {
            std::memcpy(
                reinterpret_cast<char *>(in->def.data) + std::ptrdiff_t{y} * in->def.rowbytes,
                &pixels[static_cast<std::size_t>(y) * kWidth], kWidth * sizeof(HostPixel));
        }
    }

    static stage::HostOptions options(int threads) {
        stage::HostOptions chosen;
        chosen.schedule = stage::Schedule::with_threads(threads);
        chosen.strict = false;
        return chosen;
    }

    stage::ServingHost host;
    stage::World *in;
    stage::World *out;
};

template <class HostPixel>
void iterate_suite(benchmark::State &state) {
    using Suite = typename Iterate<HostPixel>::Suite;
    Scene<HostPixel> scene(static_cast<int>(state.range(1)));
    Conversion conversion(static_cast<int>(state.range(0)), Depth<HostPixel>::kCode);
    bool refused = false;
    auto *suite = static_cast<const Suite *>(
        scene.host.suites.acquire(Iterate<HostPixel>::kName, 1, &refused));
    const auto callback = Depth<HostPixel>::kCallback(conversion.record.view_mode);
    PF_InData in_data{};
    for (auto step : state) {
        static_cast<void>(step);
        ks::prepare_record(conversion.record);
        if (suite->iterate(&in_data, 0, kHeight, &scene.in->def, nullptr, &conversion.record,
                           callback, &scene.out->def) != 0) {
            state.SkipWithError("iterate failed");
        }
    }
    count_pixels(state);
}

template <class HostPixel>
void host_copy(benchmark::State &state) {
    Scene<HostPixel> scene(1);
    const PF_UtilCallbacks *utils = stage::utility_callbacks();
    for (auto step : state) {
        static_cast<void>(step);
        if (utils->copy(nullptr, &scene.in->def, &scene.out->def, nullptr, nullptr) != 0) {
            state.SkipWithError("copy failed");
        }
    }
    count_pixels(state);
}

void views_and_threads(benchmark::internal::Benchmark *bench) {
    bench->ArgNames({"view", "threads"})
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->MinTime(0.1);
    for (const int view : {1, 3, 7}) {
        for (const int threads : {1, 2}) bench->Args({view, threads});
    }
}

BENCHMARK_TEMPLATE(iterate_suite, PF_Pixel)->Apply(views_and_threads);
BENCHMARK_TEMPLATE(iterate_suite, PF_Pixel16)->Apply(views_and_threads);
BENCHMARK_TEMPLATE(iterate_suite, PF_PixelFloat)->Apply(views_and_threads);
BENCHMARK_TEMPLATE(host_copy, PF_Pixel)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(host_copy, PF_Pixel16)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(host_copy, PF_PixelFloat)->Unit(benchmark::kMillisecond);

}  // namespace
