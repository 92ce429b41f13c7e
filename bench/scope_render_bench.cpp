// Milliseconds inside the plug-in's smart render with scopes on, through the embedded host, and of
// the same frame with every scope off: what is left is the monitors and the host's own work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "scope_pictures.h"
#include "scope_scene.h"
#include "stage/session/footage.h"
#include "stage/session/scene.h"

namespace {

using namespace ks_bench;

constexpr const char *kShowNames[] = {"Show Waveform Monitor", "Show Vectorscope",
                                      "Show Channel Parade", "Show Slice Waveform",
                                      "Show Histogram"};
constexpr const char *kSizeNames[] = {"Waveform Monitor/Scope Width", "Vectorscope/Scope Size",
                                      "Channel Parade/Scope Width", "Slice Waveform/Scope Width"};

stage::HostOptions options_for(int bits, int threads) {
    stage::HostOptions options;
    options.depth = stage::depth_from_bits(bits);
    options.schedule = stage::Schedule::with_threads(threads);
    options.strict = false;  // its scans are no part of a frame
    return options;
}

/// A comp with the picture on a footage layer that carries the effect.
stage::EffectInstance &apply(stage::Session &session, const SceneKey &key) {
    stage::SceneParts parts;
    parts.picture = stage::footage_item(
        stage::still_footage(scope_picture(key.picture, key.width, key.height)), "picture", 1, 1);
    parts.adjustment = false;
    return *build_scene(session, std::move(parts)).effect;
}

void set(stage::Session &session, stage::EffectInstance &instance, const char *name, double to) {
    stage::ParamValue value = session.value(instance, session.plugin.catalog.find(name));
    value.number = to;
    session.set_value(instance, session.plugin.catalog.find(name), value);
}

void apply_preset(stage::Session &session, stage::EffectInstance &instance,
                  const ScopePreset &preset, bool scopes) {
    for (std::size_t i = 0; i < std::size(kShowNames); ++i) {
        const bool shown = i < 3 || preset.all;
        set(session, instance, kShowNames[i], scopes && shown ? 1 : 0);
    }
    set(session, instance, "Waveform Monitor/Show Channels",
        static_cast<double>(preset.waveform_mode));
    set(session, instance, "Sampling Quality", preset.quality);
    for (const char *name : kSizeNames) set(session, instance, name, preset.size);
}

/// One iteration is the median of some frames: setting up a session takes longer than its frames.
void render(benchmark::State &state, const SceneKey &key, int threads, bool scopes) {
    stage::Session session(KS_PLUGIN_FILE, options_for(key.bits, threads));
    session.start();
    stage::EffectInstance &instance = apply(session, key);
    apply_preset(session, instance, *key.preset, scopes);
    session.render(instance, {});  // warm
    for (auto step : state) {
        static_cast<void>(step);
        std::vector<double> seconds(key.width > 1920 ? 3 : 5);
        for (double &frame : seconds) {
            const stage::RenderResult result = session.render(instance, {});
            if (result.error != 0) state.SkipWithError("the render failed");
            frame = result.seconds;
        }
        std::ranges::sort(seconds);
        state.SetIterationTime(seconds[seconds.size() / 2]);
    }
}

void add(const SceneKey &key, int threads, bool scopes) {
    const std::string name = std::string(scopes ? "scopes/render/" : "scopes/render_without/") +
                             key.path() + "/threads:" + std::to_string(threads);
    benchmark::RegisterBenchmark(name.c_str(), render, key, threads, scopes)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1);
}

const bool g_registered = [] {
    for (const int height : {1080, 2160}) {
        for (const ScopePreset &preset : kPresets) {
            if (std::string(preset.name) == "five") continue;
            for (const int bits : {8, 16, 32}) {
                for (const char *picture : {"natural", "noise", "bars"}) {
                    if (height != 1080 && std::string(picture) != "natural") continue;
                    const SceneKey key{picture, height * 16 / 9, height, bits, &preset};
                    for (const int threads : {1, 2}) add(key, threads, true);
                    if (std::string(picture) == "natural") add(key, 1, false);
                }
            }
        }
    }
    return true;
}();

}  // namespace
