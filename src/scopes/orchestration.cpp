#include "scopes/orchestration.h"

#include "host/host_world.h"
#include "host/scoped.h"
#include "hostapi/constants.h"
#include "model/record.h"
#include "scopes/context/context_setup.h"
#include "scopes/graticules.h"
#include "scopes/sampling_pass.h"
#include "scopes/settings_reader.h"
#include "scopes/traces/histogram_bars.h"
#include "scopes/traces/slice_trace.h"

namespace ks {
namespace {

/// The instance keeps the latest label scale for whoever lays text out later.
PF_Err store_label_scale(SuiteCache &suites, PF_OutData *out_data, double scale) {
    const LockedHandle<InstanceRecord> instance(suites.handle(), out_data->sequence_data);
    if (instance.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    instance.get()->cached_value = scale;
    return PF_Err_NONE;
}

SampledFrame sampled_frame(const PF_InData &in_data, PF_PixelFormat format,
                           const PF_EffectWorld &measured, const ScopeSet &scopes) {
    SampledFrame frame;
    frame.switches = scopes.switches;
    for (std::size_t slot = 0; slot < scopes.panels.size(); ++slot) {
        if (scopes.panels[slot] != nullptr) frame.panels[slot] = view_of(*scopes.panels[slot]);
    }
    frame.source = view_of(measured);
    frame.format = format;
    frame.high_quality = in_data.quality == PF_Quality_HI;
    frame.histogram_bins = scopes.histogram_bins;
    return frame;
}

SliceResult trace_slice(ErrorChain &chain, const ScopeSampleContext &context,
                        const ScopeSettings &settings, const ScopeSet &scopes,
                        const LayoutUnits &units) {
    SliceResult result;
    if (context.sliceOn == 0) return result;
    result.row = slice_row(context.source.height, scopes.slice_fraction);
    result.mode = settings.slice_mode;
    if (context.muted != 0) return result;
    chain.step([&] {
        const PF_EffectWorld &panel = *scopes.panels[scope_slot(ScopeKind::kSlice)];
        return draw_slice_trace(
            context.source, context.pixelFormat, view_of(panel), trace_area(size_of(panel), units),
            {settings.slice_mode, context.lumaMath, context.valueScale, scopes.slice_fraction},
            result);
    });
    return result;
}

}  // namespace

PF_Err run_scopes(PF_InData *in_data, PF_OutData *out_data, PF_PixelFormat format,
                  PF_EffectWorld *measured, ScopeSet &scopes) {
    SuiteCache suites(in_data->pica_basicP);
    ErrorChain chain;
    const FrameScale scale = frame_scale_of(*in_data);
    const LayoutUnits units = layout_units(label_scale(in_data->width, scopes.output_width), scale);
    chain.step([&] { return store_label_scale(suites, out_data, units.scale); });
    const ScopeSettings settings = read_scope_settings(chain, in_data, format, scopes);
    if (!chain.ok()) return chain.result();

    ScopeSampleContext context =
        make_sample_context(sampled_frame(*in_data, format, *measured, scopes), settings, units);
    chain.step([&] { return run_sampling_pass(suites, context); });
    const SliceResult slice = trace_slice(chain, context, settings, scopes, units);
    if (context.histogramOn != 0) {
        chain.step([&] {
            const PF_EffectWorld &panel = *scopes.panels[scope_slot(ScopeKind::kHistogram)];
            return draw_histogram_bars(context, view_of(panel), units, scale,
                                       settings.histogram_height);
        });
    }
    chain.step(
        [&] { return draw_graticules(in_data, out_data, scopes, context, slice, units, scale); });
    return chain.result();
}

}  // namespace ks
