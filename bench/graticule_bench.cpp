// Milliseconds of the graticules and labels of five panels at the sizes that the effect starts
// with, drawn with the system's GDI+ over the traces of the natural picture.
#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "scope_scene.h"
#include "scopes/graticules.h"
#include "stage/binary/gdiplus_runtime.h"
#include "support/fake_host.h"

namespace {

using namespace ks_bench;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

/// Every graticule parameter on its first choice; no extra lines.
PF_Err first_choice(PF_ProgPtr, PF_ParamIndex, A_long, A_long, A_u_long, PF_ParamDef *def) {
    def->u.pd.value = 1;
    return 0;
}

PF_EffectWorld world_of(const ks::WorldView &view) {
    PF_EffectWorld world{};
    world.data = static_cast<PF_Pixel *>(view.base);
    world.rowbytes = static_cast<A_long>(view.row_bytes);
    world.width = view.width;
    world.height = view.height;
    return world;
}

struct Panels {
    explicit Panels(const ScopeScene &scene) {
        for (std::size_t slot = 0; slot < worlds.size(); ++slot) {
            worlds[slot] = world_of(scene.frame().panels[slot]);
            set.panels[slot] = &worlds[slot];
            set.switches[slot] = 1;
        }
        set.output_width = kWidth;
    }

    std::array<PF_EffectWorld, ks::kScopeKinds> worlds;
    ks::ScopeSet set;
};

double draw(const ScopeScene &scene, Panels &panels, benchmark::State &state) {
    fake::FakeHost host;  // a fresh one each time: it remembers every call
    host.in.quality = PF_Quality_HI;
    host.in.pixel_aspect_ratio = host.in.downsample_x = host.in.downsample_y = {1, 1};
    host.in.inter.checkout_param = first_choice;
    const ks::ScopeSampleContext context = scene.context();
    ks::SliceResult slice;
    slice.row = kHeight / 2;
    Stopwatch watch;
    const PF_Err error = ks::draw_graticules(&host.in, &host.out, panels.set, context, slice,
                                             scene.units(), ks::FrameScale{});
    const double time = watch.lap();
    if (error != 0) state.SkipWithError("the graticules could not be drawn");
    return time;
}

void graticules(benchmark::State &state, int bits) {
    const stage::GdiplusRuntime gdiplus;
    if (!gdiplus.available()) {
        state.SkipWithError(gdiplus.reason().c_str());
        return;
    }
    ScopeScene &scene = scope_scene({"natural", kWidth, kHeight, bits, &kPresets[1]});
    Panels panels(scene);
    draw(scene, panels, state);  // the first text of a process loads its font
    for (auto step : state) {
        static_cast<void>(step);
        scene.run_pass(1);
        state.SetIterationTime(draw(scene, panels, state) / 1000.0);
    }
}

const bool g_registered = [] {
    for (const int bits : {8, 16, 32}) {
        const std::string name = "scopes/graticules/1920x1080/" + std::to_string(bits) + "bit/five";
        benchmark::RegisterBenchmark(name.c_str(), graticules, bits)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5)
            ->Repetitions(5)
            ->DisplayAggregatesOnly();
    }
    return true;
}();

}  // namespace
