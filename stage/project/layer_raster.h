// Placing one layer's picture over another picture.
#pragma once

#include "stage/image/picture.h"

namespace stage {

/// Where a layer's picture lands: layer point (u, v) goes to comp point
/// (center_x + (u - width / 2) * scale_x, center_y + (v - height / 2) * scale_y); pixel (x, y)
/// covers x..x+1. Opacity is 0..1.
struct Placement {
    double center_x = 0, center_y = 0;
    double scale_x = 1, scale_y = 1;
    float opacity = 1;
};

/// True when a picture of that size lands on whole pixels at its own size; then `*left` and `*top`
/// say where.
bool lands_on_pixels(int width, int height, const Placement &placement, int *left, int *top);

/// Draws `picture` over `target`, straight alpha. Scales of 0 and numbers that are not finite draw
/// nothing.
void draw_over(Picture &target, const Picture &picture, const Placement &placement);

}  // namespace stage
