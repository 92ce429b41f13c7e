// One frame with scopes, and what its panels ought to show: the oracle's traces, brought to the
// panels' codes through the 8-bit raster that graticules are drawn in.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "oracle/scope_oracle.h"
#include "whole/support/frame_case.h"

namespace ks::flow {

struct ScopeFrame {
    // Pictures, resolution, layout, quality. Only `frame.settings.show` says which scopes are on.
    FrameCase frame;
    // What the traces depend on; sizes, resolution, luma and quality of the render are taken from
    // `frame`.
    oracle::ScopeSettings scopes;
    // Popup values of the graticules; everything else that is drawn stays at its defaults.
    int waveform_scale = 1;      // 1 IRE, 2 Project Bit Depth
    int waveform_guides = 1;     // 1 Off, 2 7.5 IRE, 3 16-235
    int vectorscope_layout = 1;  // 1 Regular, 2 Hue Vectors
    bool skin_tone_line = true;
    bool reference_line = false;
};

using Panels = std::array<oracle::Image, 6>;  // by scope kind

// Settings of the oracle's traces for the frame, complete.
oracle::ScopeSettings trace_settings(const ScopeFrame &scope);

// The frame's panels as composited.
Panels rendered_panels(const ScopeFrame &scope);

// The same frame's panels after the sampling pass, before anything was drawn over the traces: of
// use for the waveform, the parade and the vectorscope.
Panels sampled_traces(const ScopeFrame &scope);

// The same panels without a trace: graticules and labels alone. Muting does it; the vectorscope,
// which is not drawn at all when muted, gets a trace of brightness 0.
Panels empty_panels(const ScopeFrame &scope);

// The oracle's traces for the picture that the frame's scopes measure.
oracle::ScopeTraces expected_traces(const ScopeFrame &scope);

// What a panel holds after its pixels went through the raster: 8 bits per channel, opaque.
oracle::Image through_raster(const oracle::Image &panel);

// The rows of the label band above the trace area, pixels.
int label_rows(const ScopeFrame &scope);

// True, row by row, for every pixel that no part of the graticule reaches: below the label band,
// and black in `empty` together with its neighbours, whose anti-aliased edge may be too faint to
// show on black.
std::vector<bool> uncovered(const oracle::Image &empty, int label_rows);

}  // namespace ks::flow
