#include "stage/project/layer_raster.h"

#include <algorithm>
#include <cmath>

#include "stage/project/layer_arithmetic.h"

namespace stage {
namespace {

/// Beyond this distance from the comp nothing can be visible, and a cast to int is safe.
constexpr double kFarAway = 1e6;

void draw_on_pixels(Picture &target, const Picture &picture, int left, int top, float opacity) {
    const int first_x = std::max(left, 0);
    const int last_x = std::min(left + picture.width, target.width);
    const int last_y = std::min(top + picture.height, target.height);
    for (int y = std::max(top, 0); y < last_y; ++y) {
        for (int x = first_x; x < last_x; ++x) {
            lay_over(target.at(x, y), picture.at(x - left, y - top), opacity);
        }
    }
}

bool is_whole(double value) {
    return std::abs(value) < kFarAway && std::floor(value) == value;
}

}  // namespace

bool lands_on_pixels(int width, int height, const Placement &placement, int *left, int *top) {
    const double x = placement.center_x - width / 2.0;
    const double y = placement.center_y - height / 2.0;
    if (placement.scale_x != 1 || placement.scale_y != 1 || !is_whole(x) || !is_whole(y)) {
        return false;
    }
    *left = static_cast<int>(x);
    *top = static_cast<int>(y);
    return true;
}

void draw_over(Picture &target, const Picture &picture, const Placement &placement) {
    int left = 0;
    int top = 0;
    if (lands_on_pixels(picture.width, picture.height, placement, &left, &top)) {
        draw_on_pixels(target, picture, left, top, placement.opacity);
        return;
    }
    resample(
        picture.width, picture.height, placement, target.width, target.height,
        [&](int x, int y) { return picture.at(x, y); },
        [&](int x, int y, const PixelValue &value) {
            lay_over(target.at(x, y), value.data(), placement.opacity);
        });
}

}  // namespace stage
