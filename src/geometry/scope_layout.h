// Layout units of the scopes: the label scale, the margins and the label band. No host types.
#pragma once

#include "geometry/frame_scale.h"
#include "geometry/int_rect.h"

namespace ks {

/// Label scale: min(3, sqrt(layer width / output width) * max(1, layer width / 2560)), the layer at
/// full resolution, the output as rendered. Sizes that are not above 0 count as 1.
double label_scale(int layer_width, int output_width);

/// Lengths in output pixels, truncated toward zero. At most a few hundred.
struct LayoutUnits {
    double scale = 1.0;  ///< label scale s
    double kx = 1.0;     ///< output pixels per full-resolution square pixel, across
    double ky = 1.0;     ///< and down
    int label_band =
        18;            ///< s * kLabelStrip * ky: the strip above every scope, and the traces' top
    int margin_v = 8;  ///< s * 8 * ky
    int margin_left = 30;  ///< s * 30 * kx
    int margin_right = 8;  ///< s * 8 * kx
    int vector_inset = 8;  ///< ((s - 1) * 9 + 8) * kx
    int gap = 8;           ///< 8 / vertical denominator, whole division
};

LayoutUnits layout_units(double scale, const FrameScale &frame);

/// Where the values of a waveform-type scope lie in its panel.
struct TraceArea {
    int left = 0;       ///< x of the trace area's first column
    int right = 0;      ///< x behind its last column (panel width less the right margin)
    int top = 0;        ///< y no trace goes above: the label band's height
    int bottom = 0;     ///< y of value 0
    double span = 0.0;  ///< pixels from value 0 to value 1.0
};

/// Trace area of a waveform-type panel of that size. Small panels may come out with a span or a
/// width that is not above 0.
TraceArea trace_area(IntSize panel, const LayoutUnits &units);

}  // namespace ks
