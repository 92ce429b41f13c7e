#include "scopes/graticules.h"

#include "host/error_chain.h"
#include "host/host_world.h"
#include "host/param_values.h"
#include "scopes/draw_shapes.h"
#include "scopes/graticule/label_box.h"
#include "scopes/graticule/vectorscope_graticule.h"
#include "scopes/graticule/waveform_graticule.h"

namespace ks {
namespace {

/// The parameters that only graticules read.
struct GraticuleSettings {
    ScaleUnit unit = ScaleUnit::kIre;
    WaveformGuides guides = WaveformGuides::kOff;
    VectorscopeOptions vectorscope;
};

/// What every panel's drawing is told.
struct GraticuleJob {
    const ScopeSampleContext &context;
    const SliceResult &slice;
    const LayoutUnits &units;
    const FrameScale &frame;
    GraticuleSettings settings;
};

const PF_EffectWorld *panel_of(const ScopeSet &scopes, ScopeKind kind) {
    return scopes.enabled(kind) ? scopes.panels[scope_slot(kind)] : nullptr;
}

bool draws_vectorscope(const ScopeSet &scopes, const ScopeSampleContext &context) {
    return panel_of(scopes, ScopeKind::kVectorscope) != nullptr && context.muted == 0;
}

GraticuleSettings read_graticule_settings(ErrorChain &chain, PF_InData *in_data,
                                          const ScopeSet &scopes,
                                          const ScopeSampleContext &context) {
    GraticuleSettings settings;
    if (panel_of(scopes, ScopeKind::kWaveform) != nullptr ||
        panel_of(scopes, ScopeKind::kParade) != nullptr ||
        panel_of(scopes, ScopeKind::kSlice) != nullptr) {
        settings.unit = static_cast<ScaleUnit>(read_popup(chain, in_data, kParamWaveformScale));
        settings.guides =
            static_cast<WaveformGuides>(read_popup(chain, in_data, kParamWaveformGuides));
    }
    if (draws_vectorscope(scopes, context)) {
        VectorscopeOptions &options = settings.vectorscope;
        options.layout =
            static_cast<VectorscopeLayout>(read_popup(chain, in_data, kParamVectorscopeGraticule));
        options.skin_tone_line = read_checkbox(chain, in_data, kParamVectorscopeSkinToneLine);
        if (read_checkbox(chain, in_data, kParamVectorscopeReferenceLine)) {
            options.reference = read_colour(chain, in_data, kParamVectorscopeReferenceColour);
        }
    }
    return settings;
}

/// The label box of a waveform-type scope.
LabelBox waveform_label(ScopeKind kind, const GraticuleJob &job) {
    const ScopeSampleContext &c = job.context;
    LabelBox box;
    box.title = waveform_title(static_cast<int>(kind));
    if (kind == ScopeKind::kParade) {
        box.over_range = c.paradeOverRange != 0;
        box.legend = static_cast<LegendMode>(c.paradeMode);
    } else if (kind == ScopeKind::kSlice) {
        box.subtitle = "Line " + std::to_string(job.slice.row + 1);
        box.over_range = job.slice.over_range;
        box.legend = static_cast<LegendMode>(job.slice.mode);
    } else {
        box.over_range = c.waveformOverRange != 0;
        box.legend = static_cast<LegendMode>(c.waveformMode);
    }
    return box;
}

void add_waveform_shapes(ShapeList &shapes, ScopeKind kind, IntSize panel,
                         const GraticuleJob &job) {
    WaveformScale scale;
    scale.panel = panel;
    scale.unit = job.settings.unit;
    scale.format = job.context.pixelFormat;
    scale.value_scale = job.context.valueScale;
    scale.first_column_only =
        kind == ScopeKind::kParade && job.context.paradeMode == ParadeMode::kYCbCr;
    scale.guides = job.settings.guides;
    add_waveform_scale(shapes, scale, job.units);
    add_label_box(shapes, waveform_label(kind, job), panel.width, job.units);
}

ShapeList graticule_shapes(ScopeKind kind, IntSize panel, const GraticuleJob &job) {
    ShapeList shapes;
    LabelBox box;
    switch (kind) {
        case ScopeKind::kVectorscope:
            add_vectorscope_graticule(shapes, job.context, job.frame, job.settings.vectorscope);
            box.title = kScopeTable[scope_slot(kind)].title;
            add_label_box(shapes, box, panel.width, job.units);
            break;
        case ScopeKind::kHistogram:
            box.title = kScopeTable[scope_slot(kind)].title;
            box.legend = job.context.histogramRgb == HistogramMode::kLuma ? LegendMode::kLuma
                                                                          : LegendMode::kRgb;
            add_label_box(shapes, box, panel.width, job.units);
            break;
        default:
            add_waveform_shapes(shapes, kind, panel, job);
            break;
    }
    return shapes;
}

}  // namespace

PF_Err draw_graticules(PF_InData *in_data, PF_OutData *out_data, const ScopeSet &scopes,
                       const ScopeSampleContext &context, const SliceResult &slice,
                       const LayoutUnits &units, const FrameScale &frame) {
    ErrorChain chain;
    const GraticuleJob job{context, slice, units, frame,
                           read_graticule_settings(chain, in_data, scopes, context)};
    for (const ScopeKind kind : kScopeWalkOrder) {
        const PF_EffectWorld *panel = panel_of(scopes, kind);
        if (panel == nullptr) continue;
        if (kind == ScopeKind::kVectorscope && !draws_vectorscope(scopes, context)) continue;
        chain.step([&] {
            return draw_shapes(in_data, out_data, context.pixelFormat, *panel, units.scale,
                               graticule_shapes(kind, size_of(*panel), job));
        });
    }
    return chain.result();
}

}  // namespace ks
