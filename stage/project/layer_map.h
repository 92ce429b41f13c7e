// Where a layer lies in its comp: the transform that comp viewers apply to points.
#pragma once

#include "stage/project/project.h"

namespace stage {

/// Comp point = center + (layer point - middle) * scale, in pixels at full resolution. Different
/// pixel aspects of source and comp are evened out across, as in the rendered frame.
struct LayerMap {
    double center_x = 0, center_y = 0;  ///< comp pixels
    double middle_x = 0, middle_y = 0;  ///< layer pixels
    double scale_x = 1, scale_y = 1;

    double comp_x(double x) const { return center_x + (x - middle_x) * scale_x; }
    double comp_y(double y) const { return center_y + (y - middle_y) * scale_y; }
    /// Only when invertible().
    double layer_x(double x) const { return middle_x + (x - center_x) / scale_x; }
    double layer_y(double y) const { return middle_y + (y - center_y) / scale_y; }
    bool invertible() const { return scale_x != 0 && scale_y != 0; }
};

/// Of a layer; layers without a source are as large as their comp. The layer must exist.
LayerMap layer_map(const Project &project, LayerId layer);

}  // namespace stage
