#include "stage/project/layer_raster.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace stage {
namespace {

/// Beyond this distance from the comp nothing can be visible, and a cast to int is safe.
constexpr double kFarAway = 1e6;

/// 0..1; NaN gives 0.
float unit(float value) {
    return value > 0.0f ? std::min(value, 1.0f) : 0.0f;
}

/// Straight-alpha over of one pixel; the rule that composite.h promises.
void over(float *under, const float *pixel, float opacity) {
    const float alpha = unit(pixel[0]) * opacity;
    const float below = unit(under[0]);
    if (alpha >= 1.0f || below <= 0.0f) {
        std::copy_n(pixel, 4, under);
        if (opacity < 1.0f) under[0] = alpha;
        return;
    }
    if (alpha <= 0.0f) return;
    const float rest = below * (1.0f - alpha);
    const float sum = alpha + rest;
    for (int c = 1; c < 4; ++c) under[c] = (pixel[c] * alpha + under[c] * rest) / sum;
    under[0] = sum;
}

void draw_on_pixels(Picture &target, const Picture &picture, int left, int top, float opacity) {
    const int first_x = std::max(left, 0);
    const int last_x = std::min(left + picture.width, target.width);
    const int last_y = std::min(top + picture.height, target.height);
    for (int y = std::max(top, 0); y < last_y; ++y) {
        for (int x = first_x; x < last_x; ++x) {
            over(target.at(x, y), picture.at(x - left, y - top), opacity);
        }
    }
}

/// The picture at a point between pixel centres, transparent outside, interpolated with
/// premultiplied colour so that colour under alpha 0 does not bleed in.
std::array<float, 4> sample(const Picture &picture, double u, double v) {
    const double left = std::floor(u - 0.5);
    const double top = std::floor(v - 0.5);
    const double fraction_x = u - 0.5 - left;
    const double fraction_y = v - 0.5 - top;
    double sum[4] = {};
    for (int corner = 0; corner < 4; ++corner) {
        const int dx = corner & 1;
        const int dy = corner >> 1;
        const int x = static_cast<int>(left) + dx;
        const int y = static_cast<int>(top) + dy;
        const double weight =
            (dx != 0 ? fraction_x : 1 - fraction_x) * (dy != 0 ? fraction_y : 1 - fraction_y);
        if (weight <= 0 || x < 0 || y < 0 || x >= picture.width || y >= picture.height) continue;
        const float *pixel = picture.at(x, y);
        const double alpha = weight * static_cast<double>(unit(pixel[0]));
        sum[0] += alpha;
        if (alpha <= 0) continue;
        for (int c = 1; c < 4; ++c) sum[c] += alpha * static_cast<double>(pixel[c]);
    }
    if (sum[0] <= 0) return {};
    return {static_cast<float>(sum[0]), static_cast<float>(sum[1] / sum[0]),
            static_cast<float>(sum[2] / sum[0]), static_cast<float>(sum[3] / sum[0])};
}

/// Pixels [first, last) of a side of `limit` pixels that a span of comp space touches.
struct Span {
    int first = 0;
    int last = 0;
};

Span touched(double center, double extent, int limit) {
    const double low = std::clamp(center - extent / 2 - 1, 0.0, static_cast<double>(limit));
    const double high = std::clamp(center + extent / 2 + 1, 0.0, static_cast<double>(limit));
    return {static_cast<int>(std::floor(low)), static_cast<int>(std::ceil(high))};
}

void draw_resampled(Picture &target, const Picture &picture, const Placement &placement) {
    const Span xs =
        touched(placement.center_x, std::abs(picture.width * placement.scale_x), target.width);
    const Span ys =
        touched(placement.center_y, std::abs(picture.height * placement.scale_y), target.height);
    for (int y = ys.first; y < ys.last; ++y) {
        const double v = (y + 0.5 - placement.center_y) / placement.scale_y + picture.height / 2.0;
        if (!(v > -1 && v < picture.height + 1.0)) continue;
        for (int x = xs.first; x < xs.last; ++x) {
            const double u =
                (x + 0.5 - placement.center_x) / placement.scale_x + picture.width / 2.0;
            if (!(u > -1 && u < picture.width + 1.0)) continue;
            const std::array<float, 4> pixel = sample(picture, u, v);
            if (pixel[0] > 0.0f) over(target.at(x, y), pixel.data(), placement.opacity);
        }
    }
}

bool is_whole(double value) {
    return std::abs(value) < kFarAway && std::floor(value) == value;
}

}  // namespace

bool lands_on_pixels(const Picture &picture, const Placement &placement, int *left, int *top) {
    const double x = placement.center_x - picture.width / 2.0;
    const double y = placement.center_y - picture.height / 2.0;
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
    if (lands_on_pixels(picture, placement, &left, &top)) {
        draw_on_pixels(target, picture, left, top, placement.opacity);
        return;
    }
    const bool finite = std::isfinite(placement.center_x) && std::isfinite(placement.center_y) &&
                        std::isfinite(placement.scale_x) && std::isfinite(placement.scale_y);
    if (!finite || placement.scale_x == 0 || placement.scale_y == 0) return;
    draw_resampled(target, picture, placement);
}

}  // namespace stage
