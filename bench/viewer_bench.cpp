// Milliseconds per frame of a composition window while a handle is dragged: the drag event, the
// refresh of the panel, the frame and the handles drawn over it. An adjustment layer over the
// picture shows all five scopes at their first sizes. "plug_in" is the wall time inside the smart
// render, the host's own services that it uses included; "host" is everything else.
#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

#include "scope_pictures.h"
#include "stage/desk/desk.h"
#include "stage/session/footage.h"
#include "stage/session/session.h"

namespace {

struct ViewerCase {
    int layout;  ///< choice of "Monitor Layout"
    const char *layout_name;
    int width, height, bits;
    bool strict;

    std::string name() const {
        return "viewer/drag/" + std::to_string(width) + "x" + std::to_string(height) + "/" +
               std::to_string(bits) + "bit/" + layout_name + (strict ? "/strict" : "");
    }
};

stage::HostOptions options_for(const ViewerCase &key) {
    stage::HostOptions options;
    options.depth = stage::depth_from_bits(key.bits);
    options.schedule = stage::Schedule::with_threads(2);
    options.strict = key.strict;
    return options;
}

void set(stage::Desk &desk, const char *name, double number) {
    const int index = desk.session().plugin.catalog.find(name);
    stage::ParamValue value = desk.session().value(*desk.effect(), index);
    value.number = number;
    desk.set_value(index, value);
}

/// The comp with the effect on an adjustment layer, seen at half its size.
void set_up(stage::Desk &desk, const ViewerCase &key) {
    desk.new_comp("comp", key.width, key.height, 1, 1, 1);
    stage::Project &project = desk.session().project();
    const stage::Footage natural =
        stage::still_footage(ks_bench::scope_picture("natural", key.width, key.height));
    project.add_layer(project.active_comp,
                      project.add_footage(footage_item(natural, "natural", 1, 1)), 0, "natural");
    desk.add_adjustment("monitor");
    desk.apply();
    for (const char *show : {"Show Waveform Monitor", "Show Vectorscope", "Show Channel Parade",
                             "Show Slice Waveform", "Show Histogram"}) {
        set(desk, show, 1);
    }
    set(desk, "Monitor Layout", key.layout);
    desk.viewport().zoom = 0.5;
    desk.viewport().pan_x = desk.viewport().pan_y = 0;
}

/// Takes hold of the bar on top of the vectorscope, by which it is moved; false when it is not
/// there.
bool take_handle(stage::Desk &desk, int &x, int &y) {
    const int index = desk.session().plugin.catalog.find("Vectorscope/Scope Position");
    const stage::ParamValue corner = desk.session().value(*desk.effect(), index);
    x = static_cast<int>((corner.x + 60) * desk.viewport().zoom);
    y = static_cast<int>((corner.y + 9) * desk.viewport().zoom);
    return desk.press(x, y).event.handled;
}

void drag(benchmark::State &state, const ViewerCase &key) {
    stage::Session session(KS_PLUGIN_FILE, options_for(key));
    session.start();
    stage::Desk desk(session);
    set_up(desk, key);
    int x = 0, y = 0;
    if (!take_handle(desk, x, y)) return state.SkipWithError("there is no handle to drag");
    desk.view();  // warm: the picture under the effect is made now
    double plug_in = 0, total = 0;
    for (auto step : state) {
        static_cast<void>(step);
        const auto begin = std::chrono::steady_clock::now();
        const stage::PointerReply reply = desk.move(++x, y);
        const stage::ViewFrame &frame = desk.view();
        benchmark::DoNotOptimize(desk.overlay().primitives.data());
        total += std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        if (reply.event.changed.empty()) state.SkipWithError("the drag changed nothing");
        if (frame.effects.size() != 1 || frame.effects[0].error != 0) {
            state.SkipWithError("the frame was not rendered");
            break;
        }
        plug_in += frame.effects[0].seconds;
    }
    const auto mean_ms = [&](double seconds) {
        return seconds * 1e3 / static_cast<double>(state.iterations());
    };
    state.counters["plug_in"] = mean_ms(plug_in);
    state.counters["host"] = mean_ms(total - plug_in);
}

void add(const ViewerCase &key) {
    benchmark::RegisterBenchmark(key.name().c_str(), drag, key)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(key.width > 1920 ? 10 : 40);
}

const bool g_registered = [] {
    for (const int height : {1080, 2160}) {
        for (const int bits : {8, 16, 32}) {
            for (const bool strict : {false, true}) {
                if (strict && bits != 8) continue;
                add({1, "single", height * 16 / 9, height, bits, strict});
                add({4, "four_way_classic", height * 16 / 9, height, bits, strict});
            }
        }
    }
    return true;
}();

}  // namespace
