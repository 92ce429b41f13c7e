#include "whole/support/scope_frame.h"

#include <algorithm>
#include <cmath>

#include "whole/support/panel_capture.h"

namespace ks::flow {
namespace {

using oracle::Depth;
using oracle::Image;

constexpr const char *kBrightness[6] = {"",
                                        "Waveform Monitor/Scope Brightness",
                                        "Vectorscope/Scope Brightness",
                                        "Channel Parade/Scope Brightness",
                                        "",
                                        ""};

void set_scopes(Flow &flow, const ScopeFrame &scope) {
    const oracle::ScopeSettings &s = scope.scopes;
    flow.set("REN", s.muted ? 1 : 0);
    flow.set("Sampling Quality", s.quality);
    for (const int kind : {oracle::kWaveform, oracle::kVectorscope, oracle::kParade}) {
        const auto k = static_cast<std::size_t>(kind);
        flow.set(kBrightness[k], s.brightness[k]);
    }
    flow.set("Waveform Monitor/Show Channels", s.waveform_channels);
    flow.set("Calibrate For", s.calibrate);
    flow.set("Monochrome Display", s.monochrome ? 1 : 0);
    flow.set("Max Waveform Scale", s.max_waveform);
    flow.set("Slice Waveform/Show Channels", s.slice_channels);
    flow.set("Histogram/Show Channels", s.histogram_channels);
    flow.set("Waveform Scopes Scale", scope.waveform_scale);
    flow.set("Show Waveform Guides", scope.waveform_guides);
    flow.set("Graticule Layout", scope.vectorscope_layout);
    flow.set("Show Skin Tone Line", scope.skin_tone_line ? 1 : 0);
    flow.set("Show Reference Line", scope.reference_line ? 1 : 0);
}

Panels panels_of(const ScopeFrame &scope, Panels *traces = nullptr) {
    Flow flow(at_depth(scope.frame.depth));
    flow.make_scene(scope.frame.input, scope.frame.scene);
    if (scope.frame.original) flow.set_original(*scope.frame.original);
    flow.set_values(scope.frame.settings);
    set_scopes(flow, scope);
    oracle::FrameSettings settings = scope.frame.settings;
    settings.downsample_x_den = scope.frame.scene.downsample_x;
    settings.downsample_y_den = scope.frame.scene.downsample_y;
    settings.par_num = scope.frame.scene.par_num;
    settings.par_den = scope.frame.scene.par_den;
    stage::RenderSettings render;
    render.high_quality = scope.frame.high_quality;
    Panels panels;
    frame_with_panels(flow, settings, scope.frame.input.width, scope.frame.input.height, panels,
                      render, traces);
    return panels;
}

// Negative sums, which a sample's own colour can give, wrap.
double float_byte(double value) {
    const double scaled = value * 255.0;
    return scaled > 255.0 ? 255.0 : static_cast<double>(oracle::whole(scaled) & 255);
}

oracle::Stored through_raster(const oracle::Stored &pixel, Depth depth) {
    oracle::Stored back = pixel;
    back[0] = oracle::full_scale(depth);
    for (std::size_t c = 1; c < 4; ++c) {
        const auto value = static_cast<float>(pixel[c]);
        if (depth == Depth::kWord) {
            const float byte = std::trunc(value * 0.0077819824f);
            back[c] = std::trunc(byte * 128.50197f);
        }
        if (depth == Depth::kFloat) {
            back[c] = static_cast<float>(float_byte(value)) * 0.003921569f;
        }
    }
    return back;
}

bool black(const Image &image, int x, int y) {
    if (!oracle::contains(image, x, y)) return true;
    const oracle::Stored pixel = oracle::stored_pixel(image, x, y);
    return pixel[1] == 0.0 && pixel[2] == 0.0 && pixel[3] == 0.0;
}

bool black_around(const Image &image, int x, int y) {
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            if (!black(image, x + dx, y + dy)) return false;
        }
    }
    return true;
}

}  // namespace

oracle::ScopeSettings trace_settings(const ScopeFrame &scope) {
    oracle::ScopeSettings s = scope.scopes;
    const FrameCase &frame = scope.frame;
    s.show = frame.settings.show;
    s.luma_math = frame.settings.luma_math;
    s.view_channels = frame.settings.channels;
    s.slice_fraction = frame.settings.slice_position * 0.01;
    s.histogram_height = frame.settings.size[oracle::kHistogram];
    s.sub_pixel = frame.high_quality;
    s.downsample_x_den = frame.scene.downsample_x;
    s.downsample_y_den = frame.scene.downsample_y;
    s.par_num = frame.scene.par_num;
    s.par_den = frame.scene.par_den;
    s.layer_width = frame.input.width * frame.scene.downsample_x;
    s.output_width = frame.input.width;
    return s;
}

Panels rendered_panels(const ScopeFrame &scope) {
    return panels_of(scope);
}

Panels sampled_traces(const ScopeFrame &scope) {
    Panels traces;
    panels_of(scope, &traces);
    return traces;
}

Panels empty_panels(const ScopeFrame &scope) {
    ScopeFrame muted = scope;
    muted.scopes.muted = true;
    Panels panels = panels_of(muted);
    if (scope.frame.settings.show[oracle::kVectorscope]) {
        ScopeFrame dark = scope;
        dark.scopes.brightness[oracle::kVectorscope] = 0.0;
        panels[oracle::kVectorscope] = panels_of(dark)[oracle::kVectorscope];
    }
    return panels;
}

oracle::ScopeTraces expected_traces(const ScopeFrame &scope) {
    oracle::FrameSettings settings = scope.frame.settings;
    settings.downsample_x_den = scope.frame.scene.downsample_x;
    settings.downsample_y_den = scope.frame.scene.downsample_y;
    settings.par_num = scope.frame.scene.par_num;
    settings.par_den = scope.frame.scene.par_den;
    const Image *original = scope.frame.original ? &*scope.frame.original : nullptr;
    const oracle::FrameResult frame = render_frame_oracle(scope.frame.input, original, settings);
    return oracle::scope_traces(frame.measured_image, trace_settings(scope),
                                oracle::panel_extents(frame.panels), 1);
}

Image through_raster(const Image &panel) {
    Image back = panel;
    for (int y = 0; y < panel.height; ++y) {
        for (int x = 0; x < panel.width; ++x) {
            const oracle::Stored pixel = oracle::stored_pixel(panel, x, y);
            oracle::store_pixel(back, x, y, through_raster(pixel, panel.depth));
        }
    }
    return back;
}

int label_rows(const ScopeFrame &scope) {
    return oracle::layout_units(trace_settings(scope)).label_band;
}

std::vector<bool> uncovered(const Image &empty, int label_rows) {
    std::vector<bool> free;
    free.reserve(static_cast<std::size_t>(empty.width) * empty.height);
    for (int y = 0; y < empty.height; ++y) {
        for (int x = 0; x < empty.width; ++x) {
            free.push_back(y >= label_rows && black_around(empty, x, y));
        }
    }
    return free;
}

}  // namespace ks::flow
