#include "geometry/scope_layout.h"

#include <algorithm>
#include <cmath>

#include "geometry/scope_panel.h"

namespace ks {

double label_scale(int layer_width, int output_width) {
    const double layer = std::max(layer_width, 1);
    const double output = std::max(output_width, 1);
    return std::min(3.0, std::sqrt(layer / output) * std::max(1.0, layer * 0.000390625));
}

LayoutUnits layout_units(double scale, const FrameScale &frame) {
    LayoutUnits units;
    units.scale = scale;
    units.kx = 1.0 / (frame.den_x * frame.pixel_aspect);
    units.ky = 1.0 / frame.den_y;
    units.label_band = trunc_to_int(scale * kLabelStrip * units.ky);
    units.margin_v = trunc_to_int(scale * 8.0 * units.ky);
    units.margin_left = trunc_to_int(scale * 30.0 * units.kx);
    units.margin_right = trunc_to_int(scale * 8.0 * units.kx);
    units.vector_inset = trunc_to_int(((scale - 1.0) * 9.0 + 8.0) * units.kx);
    units.gap = static_cast<int>(8u / frame.den_y);
    return units;
}

TraceArea trace_area(IntSize panel, const LayoutUnits &units) {
    TraceArea area;
    area.left = units.margin_left;
    area.right = panel.width - units.margin_right;
    area.top = units.label_band;
    area.bottom = panel.height - units.margin_v;
    area.span = panel.height - 2 * units.margin_v - units.label_band;
    return area;
}

}  // namespace ks
