// Milliseconds of the scopes' sampling pass alone, with one thread and with two, and of the literal
// implementation that plots sample after sample. The cases of one frame stand next to each other,
// so that their ratios hold on a machine whose speed drifts.
#include <benchmark/benchmark.h>

#include <string>

#include "scope_pictures.h"
#include "scope_scene.h"

namespace {

using namespace ks_bench;

constexpr int kMostParts = 64;
constexpr double kMiB = 1024.0 * 1024.0;

void pass(benchmark::State &state, const SceneKey &key, int threads) {
    ScopeScene &scene = scope_scene(key);
    PassTimes sum;
    for (auto step : state) {
        static_cast<void>(step);
        const PassTimes times = scene.run_pass(threads);
        state.SetIterationTime(times.total() / 1000.0);
        sum.set_up += times.set_up;
        sum.count += times.count;
        sum.merge += times.merge;
        sum.bytes = times.bytes;
    }
    const auto per_frame = [](double total) {
        return benchmark::Counter(total, benchmark::Counter::kAvgIterations);
    };
    state.counters["set_up_ms"] = per_frame(sum.set_up);
    state.counters["count_ms"] = per_frame(sum.count);
    state.counters["merge_ms"] = per_frame(sum.merge);
    state.counters["MiB"] = static_cast<double>(sum.bytes) / kMiB;
    state.counters["MiB_64_parts"] =
        static_cast<double>(scene.accumulator_bytes(kMostParts)) / kMiB;
}

void literal(benchmark::State &state, const SceneKey &key) {
    ScopeScene &scene = scope_scene(key);
    for (auto step : state) {
        static_cast<void>(step);
        state.SetIterationTime(scene.run_literal() / 1000.0);
    }
}

benchmark::internal::Benchmark *timed(benchmark::internal::Benchmark *bench, int frames) {
    return bench->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(frames)
        ->DisplayAggregatesOnly();
}

void add_frame(const SceneKey &key) {
    const bool large = key.width > 1920;
    for (const int threads : {1, 2}) {
        const std::string name =
            "scopes/pass/" + key.path() + "/threads:" + std::to_string(threads);
        timed(benchmark::RegisterBenchmark(name.c_str(), pass, key, threads), large ? 1 : 3)
            ->Repetitions(5);
    }
    timed(benchmark::RegisterBenchmark(("scopes/literal/" + key.path()).c_str(), literal, key), 1)
        ->Repetitions(large && key.picture != "natural" ? 1 : 3);
}

const bool g_registered = [] {
    benchmark::AddCustomContext("natural_picture", natural_source());
    for (const int height : {1080, 2160}) {
        const int width = height * 16 / 9;
        for (const char *picture : {"natural", "noise", "bars"}) {
            for (const ScopePreset &preset : kPresets) {
                const bool middle = std::string(preset.name) == "five";
                if (middle && (height != 1080 || std::string(picture) != "natural")) continue;
                for (const int bits : {8, 16, 32}) {
                    add_frame({picture, width, height, bits, &preset});
                }
            }
        }
    }
    return true;
}();

}  // namespace
