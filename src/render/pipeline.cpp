#include "render/pipeline.h"

#include "host/host_world.h"
#include "host/world_suite.h"
#include "render/compositing.h"
#include "render/corrected_world.h"
#include "render/markers.h"
#include "render/monitor_layouts.h"
#include "render/scope_panels.h"
#include "render/stacking.h"
#include "render/wipe.h"
#include "scopes/orchestration.h"

namespace ks {
namespace {

/// Asks for the output's format; one that is not argb, ae16 or ae32 is refused.
PF_Err query_format(PF_WorldSuite2 &worlds, const PF_EffectWorld *output, PF_PixelFormat &format) {
    format = PF_PixelFormat_INVALID;
    const PF_Err error = worlds.PF_GetPixelFormat(output, &format);
    if (error != PF_Err_NONE) return error;
    return visit_format(format, [](auto) { return 0; });
}

/// Corrected image, scopes on it if they measure it, wipe, layout, marker lines.
void draw_monitor(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                  ScopeSet &scopes, OwnedWorld &corrected) {
    make_corrected_world(chain, frame, settings, corrected);
    if (settings.shows_any_scope() && settings.apply_corrections == kPreScopes) {
        chain.step([&] {
            return run_scopes(frame.in_data, frame.out_data, frame.format, corrected.get(), scopes);
        });
    }
    if (!chain.ok()) return;
    const Wipe wipe = apply_wipe(chain, frame, corrected.get());
    const Markers markers = draw_monitor_layout(chain, frame, settings, wipe, corrected.get());
    draw_markers(chain, frame, settings, wipe, markers);
}

void draw_frame(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                ScopePanels &panels, OwnedWorld &corrected) {
    const bool scopes_only =
        settings.monitor_layout == static_cast<std::int32_t>(MonitorLayout::kScopesOnly);
    if (settings.shows_any_scope() && (settings.apply_corrections == kPostScopes || scopes_only)) {
        chain.step([&] {
            return run_scopes(frame.in_data, frame.out_data, frame.format, frame.input,
                              panels.set());
        });
    }
    if (scopes_only) {
        chain.step([&] { return fill_background(frame); });
    } else if (chain.ok()) {
        draw_monitor(chain, frame, settings, panels.set(), corrected);
    }
    stack_scopes(chain, frame, panels);
}

}  // namespace

PF_Err render_frame(PF_InData *in_data, PF_OutData *out_data, PF_EffectWorld *input,
                    PF_EffectWorld *original, PF_EffectWorld *output) {
    // Hosts hand over worlds without pixels where there is nothing to draw, and treat asking for
    // the format of one as a fault.
    if (output->data == nullptr) return PF_Err_NONE;
    if (input->data == nullptr) {
        return in_data->utils->fill(in_data->effect_ref, nullptr, nullptr, output);
    }
    WorldSuiteAccess worlds(in_data, out_data);
    SuiteCache suites(in_data->pica_basicP);
    ErrorChain chain;
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    chain.step([&] { return query_format(worlds.get(), output, format); });
    const RenderSettings settings = read_settings(chain, in_data);
    if (!chain.ok()) return chain.result();

    const bool has_original = original != nullptr && original->data != nullptr;
    const Frame frame{in_data, out_data,
                      suites,  worlds.get(),
                      format,  frame_scale_of(*in_data),
                      input,   has_original ? original : nullptr,
                      output};
    ScopePanels panels;
    OwnedWorld corrected;
    panels.create(chain, frame, settings);
    if (chain.ok()) draw_frame(chain, frame, settings, panels, corrected);
    chain.always([&] { return corrected.close(); });
    panels.close(chain);
    return chain.result();
}

}  // namespace ks
