// The scopes' traces in plain serial loops: one plot per sample and trace, straight into the panel,
// truncated after every plot. No graticules and no labels.
//
// Arithmetic: pixels, luma and colour differences are single precision, evaluated as the formulas
// read; positions are double with the whole numbers of the context; trace gains are computed in
// double and narrowed to float, colours are multiplied component by component in float.
//
// Values that are not finite: NaN is no value, it is neither plotted nor counted nor over range; an
// infinity lands on the clamp of its side. A sample with R == G == B has colour differences of
// exactly 0. A vectorscope sample whose own colour has a NaN component is not plotted.
//
// Arrays indexed by scope kind leave entry 0 unused.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "oracle/frame_oracle.h"
#include "oracle/image.h"

namespace ks::oracle {

// Plain parameter values (percentages as percentages), initially the parameters' defaults where
// the traces depend on one.
struct ScopeSettings {
    std::array<bool, 6> show{};  // by scope kind
    bool muted = false;          // "Mute Active Scopes"
    int quality = 1;             // "Sampling Quality": 1 Low (Fast), 2 Medium, other High (Slow)
    int luma_math = 1;           // 2 takes the 709 weights, any other value the 601 weights
    std::array<double, 6> brightness{100, 100, 100, 100, 100, 100};  // "Scope Brightness", percent
    int waveform_channels = 1;                                       // 1 RGB + Luma, 2 RGB, 3 Luma
    int view_channels = 1;                                           // 1 R,G,B, 2 Y,Cb,Cr
    int calibrate = 1;               // "Calibrate For": 1 100%, 2 75%, 3 50%, 4 25%
    bool monochrome = true;          // "Monochrome Display"
    double max_waveform = 100.0;     // "Max Waveform Scale", percent; float pictures only
    double slice_fraction = 0.5;     // "Slice Position", 0..1
    int slice_channels = 1;          // 1 RGB + Luma, 2 RGB, 3 Luma
    int histogram_channels = 1;      // 1 RGB, 2 Luma
    double histogram_height = 60.0;  // "Scope Height"
    bool sub_pixel = false;          // true when the host renders at high quality
    int downsample_x_den = 1;
    int downsample_y_den = 1;
    int par_num = 1;
    int par_den = 1;
    int layer_width = 0;   // pixels at full resolution
    int output_width = 0;  // pixels of the rendered frame
};

struct PanelExtent {
    int width = 0;
    int height = 0;
};

using PanelExtents = std::array<PanelExtent, 6>;

// The listed panels by kind; kinds that are not listed get 0 x 0.
PanelExtents panel_extents(const std::vector<PanelSize> &panels);

// Label scale and margins, whole pixels of the panels rounded toward zero.
struct LayoutUnits {
    double label_scale = 1.0;
    int label_band = 0;
    int vertical_margin = 0;
    int left_margin = 0;
    int right_margin = 0;
    int vectorscope_inset = 0;
    int small_gap = 0;
};

LayoutUnits layout_units(const ScopeSettings &settings);

// Where a waveform-like trace lies: x of the left edge and y of value 0 in panel pixels, and the
// pixels from value 0 to value 1.
struct TraceArea {
    int left = 0;
    int bottom = 0;
    double span = 0.0;
};

// What a sample needs to know. Parts of a scope that is not shown keep their initial values.
struct ScopeContext {
    std::array<bool, 6> show{};
    bool muted = false;
    int luma_math = 1;
    int step = 1;  // in columns and in rows
    int top = 0;   // highest row of the waveform and the parade
    bool sub_pixel = false;
    bool need_luma = false;
    double value_scale = 1.0;

    int waveform_mode = 1;  // 1 RGB + Luma, 2 RGB, 3 Luma
    TraceArea waveform;
    double waveform_x_scale = 0.0;  // panel pixels per source column
    float waveform_gain = 0.0f;
    Colour luma_colour{};                 // times the gain
    std::array<Colour, 3> rgb_colours{};  // red, green, blue before the gain

    bool monochrome = false;
    Colour monochrome_colour{};  // times the gain
    double cb_gain = 0.0;        // width of the clip box
    double cr_gain = 0.0;        // height of the clip box
    int centre_x = 0;
    int centre_y = 0;
    Rect clip;  // all four edges inclusive
    float calibration_gain = 1.0f;
    float vectorscope_gain = 0.0f;

    int parade_mode = 2;  // 2 R, G, B; 4 Y, Cb, Cr
    TraceArea parade;
    std::array<int, 3> parade_anchors{};  // left edge of each column
    double parade_centre_offset = 0.0;
    double parade_x_scale = 0.0;
    std::array<Colour, 3> parade_colours{};  // times the gain

    int slice_mode = 1;  // 1 RGB + Luma, 2 RGB, 3 Luma
    TraceArea slice;
    int slice_width = 0;
    int slice_row = 0;  // source row, counted from 0

    int histogram_mode = 1;  // 1 RGB, 2 Luma
};

// The context for a source of that size and depth; shown panels have the given sizes, which may be
// too small for their margins.
ScopeContext set_up_scopes(const ScopeSettings &settings, const Image &source,
                           const PanelExtents &extents);

struct ScopeTraces {
    std::array<Image, 6> panels;            // by scope kind, at the source's depth
    std::vector<std::uint32_t> bins;        // 768: red, green, blue; luma uses the first 256
    std::array<std::uint32_t, 3> maxima{};  // largest bin per channel; at least 1 in the end
    bool waveform_over_range = false;
    bool parade_over_range = false;
    bool slice_over_range = false;
};

// Transparent black panels, no counts, no flags.
ScopeTraces empty_traces(const PanelExtents &extents, Depth depth);

// Told of every plot into a panel, in turn: the scope's kind, the pixel, which lies in the panel,
// and the colour added.
using PlotObserver = std::function<void(int kind, int x, int y, const Colour &colour)>;

// The sampling pass: parts 0 .. n - 1 one after the other, each of floor(height / n) rows, n being
// `parts` limited to 1..64. Does nothing when muted or when only the Slice Waveform is shown.
// Panels must have the source's depth.
void sample_picture(const Image &source, const ScopeContext &context, int parts,
                    ScopeTraces &traces, const PlotObserver &observer = {});

// The Slice Waveform's trace, unless it is not shown or muted.
void trace_slice(const Image &source, const ScopeContext &context, ScopeTraces &traces);

// Where the histogram's bars stand: column u of the bars is drawn at trunc(u + left), the lowest
// pixel of a bar in row `bottom`.
struct BarArea {
    double left = 0.0;
    int bottom = 0;
};

// 8 full-resolution square pixels from the left edge, the row above the vertical margin.
BarArea histogram_bar_area(const ScopeSettings &settings, int panel_height);

// Draws the bars of the bins into the panel; every maximum must be at least 1.
void draw_histogram_bars(Image &panel, const std::vector<std::uint32_t> &bins,
                         const std::array<std::uint32_t, 3> &maxima, const ScopeSettings &settings,
                         const BarArea &area);

// Set-up, pass, slice trace and bars for one picture.
ScopeTraces scope_traces(const Image &source, const ScopeSettings &settings,
                         const PanelExtents &extents, int parts);

}  // namespace ks::oracle
