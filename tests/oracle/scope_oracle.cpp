#include "oracle/scope_oracle.h"

#include <algorithm>
#include <cmath>

#include "oracle/scope_oracle_pixels.h"

namespace ks::oracle {
namespace {

constexpr Colour kLumaTrace{0.05f, 0.032f, 0.05f, 0.034f};
constexpr Colour kRedTrace{0.05f, 0.05f, 0.0f, 0.0f};
constexpr Colour kGreenTrace{0.05f, 0.0f, 0.05f, 0.0f};
constexpr Colour kBlueTrace{0.05f, 0.0f, 0.0f, 0.05f};
constexpr Colour kCbTrace{0.05f, 0.05f, 0.05f, 0.0f};
constexpr Colour kCrTrace{0.05f, 0.0f, 0.05f, 0.05f};

double pixel_aspect(const ScopeSettings &s) {
    return static_cast<double>(s.par_num) / s.par_den;
}

int sampling_step(int quality) {
    if (quality == 1) return 4;
    return quality == 2 ? 2 : 1;
}

// Keeps the brightness of a trace independent of the number of samples.
double sampling_factor(int quality) {
    if (quality == 1) return 2.0;
    return quality == 2 ? 0.5 : 0.125;
}

TraceArea trace_area(const LayoutUnits &units, const PanelExtent &panel) {
    TraceArea area;
    area.left = units.left_margin;
    area.bottom = panel.height - units.vertical_margin;
    area.span = panel.height - 2 * units.vertical_margin - units.label_band;
    return area;
}

double value_scale(const ScopeSettings &s, Depth depth) {
    const bool waveform_like = s.show[kWaveform] || s.show[kParade] || s.show[kSlice];
    return depth == Depth::kFloat && waveform_like ? 100.0 / s.max_waveform : 1.0;
}

void set_up_waveform(ScopeContext &c, const ScopeSettings &s, const LayoutUnits &units,
                     const PanelExtent &panel, int source_width) {
    c.waveform_mode = s.waveform_channels;
    c.waveform = trace_area(units, panel);
    c.waveform_x_scale =
        static_cast<double>(panel.width - units.left_margin - units.right_margin) / source_width;
    if (c.waveform_mode != 2) c.need_luma = true;
    c.waveform_gain =
        static_cast<float>(s.brightness[kWaveform] * 0.01 * sampling_factor(s.quality) * 1.5);
    c.luma_colour = times(kLumaTrace, c.waveform_gain);
    c.rgb_colours = {kRedTrace, kGreenTrace, kBlueTrace};
}

void set_up_vectorscope(ScopeContext &c, const ScopeSettings &s, const LayoutUnits &units,
                        const PanelExtent &panel) {
    c.need_luma = true;
    c.centre_x = truncated(panel.width * 0.5);
    c.centre_y = truncated((panel.height - units.label_band) * 0.5 + units.label_band);
    c.clip.left = units.vectorscope_inset;
    c.clip.right = panel.width - units.vectorscope_inset;
    c.clip.top = units.label_band + units.small_gap;
    c.clip.bottom = panel.height - units.small_gap;
    c.cb_gain = c.clip.right - c.clip.left;
    c.cr_gain = c.clip.bottom - c.clip.top;
    c.calibration_gain = static_cast<float>(100.0 / ((5 - s.calibrate) * 25));
    c.vectorscope_gain =
        static_cast<float>(s.brightness[kVectorscope] * 0.01 * sampling_factor(s.quality) * 1.5);
    c.monochrome = s.monochrome;
    c.monochrome_colour = times(kLumaTrace, c.vectorscope_gain);
}

void set_up_parade(ScopeContext &c, const ScopeSettings &s, const LayoutUnits &units,
                   const PanelExtent &panel, int source_width) {
    const int column = (panel.width - units.left_margin - units.right_margin) / 3;
    c.parade = trace_area(units, panel);
    c.parade_anchors = {units.left_margin, units.left_margin + column,
                        units.left_margin + 2 * column};
    c.parade_centre_offset = c.parade.span * 0.5;
    c.parade_x_scale = static_cast<double>(column) / source_width;
    const float gain =
        static_cast<float>(s.brightness[kParade] * 0.01 * sampling_factor(s.quality) * 0.75);
    if (s.view_channels == 2) {
        c.parade_mode = 4;
        c.need_luma = true;
        c.parade_colours = {times(kLumaTrace, gain), times(kCbTrace, gain), times(kCrTrace, gain)};
    } else {
        c.parade_mode = 2;
        c.parade_colours = {times(kRedTrace, gain), times(kGreenTrace, gain),
                            times(kBlueTrace, gain)};
    }
}

void set_up_slice(ScopeContext &c, const ScopeSettings &s, const LayoutUnits &units,
                  const PanelExtent &panel, int source_height) {
    c.slice_mode = s.slice_channels;
    c.slice = trace_area(units, panel);
    c.slice_width = panel.width - units.left_margin - units.right_margin;
    c.slice_row = truncated((source_height - 1) * s.slice_fraction);
}

}  // namespace

PanelExtents panel_extents(const std::vector<PanelSize> &panels) {
    PanelExtents extents{};
    for (const PanelSize &panel : panels) {
        extents[static_cast<std::size_t>(panel.kind)] = {panel.width, panel.height};
    }
    return extents;
}

LayoutUnits layout_units(const ScopeSettings &s) {
    const double layer = s.layer_width;
    const double scale =
        std::min(3.0, std::sqrt(layer / s.output_width) * std::max(1.0, layer * 0.000390625));
    const double kx = 1.0 / (s.downsample_x_den * pixel_aspect(s));
    const double ky = 1.0 / s.downsample_y_den;
    LayoutUnits units;
    units.label_scale = scale;
    units.label_band = truncated(scale * 18 * ky);
    units.vertical_margin = truncated(scale * 8 * ky);
    units.left_margin = truncated(scale * 30 * kx);
    units.right_margin = truncated(scale * 8 * kx);
    units.vectorscope_inset = truncated(((scale - 1) * 9 + 8) * kx);
    units.small_gap = 8 / s.downsample_y_den;
    return units;
}

ScopeContext set_up_scopes(const ScopeSettings &s, const Image &source,
                           const PanelExtents &extents) {
    const LayoutUnits units = layout_units(s);
    ScopeContext c;
    c.show = s.show;
    c.muted = s.muted;
    c.luma_math = s.luma_math;
    c.step = sampling_step(s.quality);
    c.top = units.label_band;
    c.sub_pixel = s.sub_pixel;
    c.value_scale = value_scale(s, source.depth);
    c.histogram_mode = s.histogram_channels;
    if (s.show[kWaveform]) set_up_waveform(c, s, units, extents[kWaveform], source.width);
    if (s.show[kVectorscope]) set_up_vectorscope(c, s, units, extents[kVectorscope]);
    if (s.show[kParade]) set_up_parade(c, s, units, extents[kParade], source.width);
    if (s.show[kSlice]) set_up_slice(c, s, units, extents[kSlice], source.height);
    if (s.show[kHistogram] && s.histogram_channels == 2) c.need_luma = true;
    return c;
}

ScopeTraces empty_traces(const PanelExtents &extents, Depth depth) {
    ScopeTraces traces;
    for (std::size_t kind = 1; kind < extents.size(); ++kind) {
        traces.panels[kind] = make_image(extents[kind].width, extents[kind].height, depth);
    }
    traces.bins.assign(768, 0);
    return traces;
}

ScopeTraces scope_traces(const Image &source, const ScopeSettings &s, const PanelExtents &extents,
                         int parts) {
    PanelExtents shown{};
    for (std::size_t kind = 1; kind < shown.size(); ++kind) {
        if (s.show[kind]) shown[kind] = extents[kind];
    }
    const ScopeContext context = set_up_scopes(s, source, shown);
    ScopeTraces traces = empty_traces(shown, source.depth);
    sample_picture(source, context, parts, traces);
    trace_slice(source, context, traces);
    if (s.show[kHistogram]) {
        Image &panel = traces.panels[kHistogram];
        draw_histogram_bars(panel, traces.bins, traces.maxima, s,
                            histogram_bar_area(s, panel.height));
    }
    return traces;
}

}  // namespace ks::oracle
