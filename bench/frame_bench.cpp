// Milliseconds per frame of each monitor layout: the wall time inside the plug-in's smart render,
// on the host's own copy, fill, transform and iterate services, with one thread and with two.
// Panels of the three scopes that are on by default are made and composited.
#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "stage/session/footage.h"
#include "stage/session/scene.h"

namespace {

constexpr std::array kLayouts{1, 3, 4, 6, 7};  ///< choices of "Monitor Layout"
constexpr const char *kLayoutNames[] = {"single", "four_way_split", "four_way_classic", "windowed",
                                        "scopes_only"};

stage::HostOptions options_for(int bits, int threads) {
    stage::HostOptions options;
    options.depth = stage::depth_from_bits(bits);
    options.schedule = stage::Schedule::with_threads(threads);
    options.strict = false;  // its scans are no part of a frame
    return options;
}

/// A comp with the test card on a footage layer that carries the effect.
stage::EffectInstance &apply(stage::Session &session, int width, int height) {
    stage::SceneParts parts;
    parts.picture =
        stage::footage_item(stage::open_chart("test-card", width, height), "card", 1, 1);
    parts.adjustment = false;
    return *build_scene(session, std::move(parts)).effect;
}

void frame(benchmark::State &state, int layout, int width, int height, int bits, int threads) {
    stage::Session session(KS_PLUGIN_FILE, options_for(bits, threads));
    session.start();
    stage::EffectInstance &instance = apply(session, width, height);
    stage::ParamValue value;
    value.number = layout;
    session.set_value(instance, session.plugin.catalog.find("Monitor Layout"), value);
    for (auto step : state) {
        static_cast<void>(step);
        const stage::RenderResult result = session.render(instance, {});
        if (result.error != 0) state.SkipWithError("the render failed");
        state.SetIterationTime(result.seconds);
    }
}

void add_frames(int width, int height, int bits, int threads) {
    for (std::size_t i = 0; i < kLayouts.size(); ++i) {
        const std::string name = "frame/" + std::string(kLayoutNames[i]) + "/" +
                                 std::to_string(width) + "x" + std::to_string(height) + "/" +
                                 std::to_string(bits) + "bit/threads:" + std::to_string(threads);
        benchmark::RegisterBenchmark(name.c_str(), frame, kLayouts[i], width, height, bits, threads)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(width > 1920 ? 1 : 5);
    }
}

const bool g_registered = [] {
    for (const int bits : {8, 16, 32}) {
        for (const int threads : {1, 2}) {
            add_frames(1920, 1080, bits, threads);
            add_frames(3840, 2160, bits, threads);
        }
    }
    return true;
}();

}  // namespace
