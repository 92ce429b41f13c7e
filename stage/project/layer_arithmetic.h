// The arithmetic of laying one layer's pixel over another, whatever the pixels are stored as.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "stage/project/layer_raster.h"

namespace stage {

/// Alpha, red, green, blue, straight; 1 is full scale.
using PixelValue = std::array<float, 4>;

/// 0..1; NaN gives 0.
inline float unit_alpha(float value) {
    return value > 0.0f ? std::min(value, 1.0f) : 0.0f;
}

/// Straight-alpha over of one pixel; the rule that composite.h promises.
inline void lay_over(float *under, const float *pixel, float opacity) {
    const float alpha = unit_alpha(pixel[0]) * opacity;
    const float below = unit_alpha(under[0]);
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

/// The picture at a point between pixel centres, transparent outside, interpolated with
/// premultiplied colour so that colour under alpha 0 does not bleed in. `read(x, y)` gives the
/// samples of a pixel inside width × height.
template <class Read>
PixelValue sample_between(int width, int height, double u, double v, Read &&read) {
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
        if (weight <= 0 || x < 0 || y < 0 || x >= width || y >= height) continue;
        const auto pixel = read(x, y);
        const double alpha = weight * static_cast<double>(unit_alpha(pixel[0]));
        sum[0] += alpha;
        if (alpha <= 0) continue;
        for (int c = 1; c < 4; ++c) sum[c] += alpha * static_cast<double>(pixel[c]);
    }
    if (sum[0] <= 0) return {};
    return {static_cast<float>(sum[0]), static_cast<float>(sum[1] / sum[0]),
            static_cast<float>(sum[2] / sum[0]), static_cast<float>(sum[3] / sum[0])};
}

/// Pixels [first, last) of a side of `limit` pixels.
struct PixelSpan {
    int first = 0;
    int last = 0;
};

/// What a picture of `extent` comp pixels around `center` touches.
inline PixelSpan touched_span(double center, double extent, int limit) {
    const double low = std::clamp(center - extent / 2 - 1, 0.0, static_cast<double>(limit));
    const double high = std::clamp(center + extent / 2 + 1, 0.0, static_cast<double>(limit));
    return {static_cast<int>(std::floor(low)), static_cast<int>(std::ceil(high))};
}

/// Calls `put(x, y, value)` for every target pixel of a target of target_width × target_height that
/// a picture of width × height at `placement` covers, in part at least. Scales of 0 and numbers
/// that are not finite cover nothing.
template <class Read, class Put>
void resample(int width, int height, const Placement &placement, int target_width,
              int target_height, Read &&read, Put &&put) {
    const bool finite = std::isfinite(placement.center_x) && std::isfinite(placement.center_y) &&
                        std::isfinite(placement.scale_x) && std::isfinite(placement.scale_y);
    if (!finite || placement.scale_x == 0 || placement.scale_y == 0) return;
    const PixelSpan xs =
        touched_span(placement.center_x, std::abs(width * placement.scale_x), target_width);
    const PixelSpan ys =
        touched_span(placement.center_y, std::abs(height * placement.scale_y), target_height);
    for (int y = ys.first; y < ys.last; ++y) {
        const double v = (y + 0.5 - placement.center_y) / placement.scale_y + height / 2.0;
        if (!(v > -1 && v < height + 1.0)) continue;
        for (int x = xs.first; x < xs.last; ++x) {
            const double u = (x + 0.5 - placement.center_x) / placement.scale_x + width / 2.0;
            if (!(u > -1 && u < width + 1.0)) continue;
            const PixelValue value = sample_between(width, height, u, v, read);
            if (value[0] > 0.0f) put(x, y, value);
        }
    }
}

}  // namespace stage
