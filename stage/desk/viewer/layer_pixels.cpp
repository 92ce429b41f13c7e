#include "stage/desk/viewer/layer_pixels.h"

#include <algorithm>
#include <cmath>

#include "stage/image/sample_codes.h"
#include "stage/project/layer_arithmetic.h"

namespace stage {
namespace {

template <Depth kDepth>
using PixelOf = typename DepthTraits<kDepth>::Pixel;

template <Depth kDepth>
float value_of_channel(typename DepthTraits<kDepth>::Channel channel) {
    if constexpr (DepthTraits<kDepth>::kInteger) {
        return value_of(channel, static_cast<int>(DepthTraits<kDepth>::kWhite));
    } else {
        return channel;
    }
}

template <Depth kDepth>
typename DepthTraits<kDepth>::Channel channel_of_value(float value) {
    if constexpr (DepthTraits<kDepth>::kInteger) {
        return static_cast<typename DepthTraits<kDepth>::Channel>(
            code_of(value, static_cast<int>(DepthTraits<kDepth>::kWhite)));
    } else {
        return value;
    }
}

template <Depth kDepth>
PixelValue value_of_pixel(const PixelOf<kDepth> &pixel) {
    return {value_of_channel<kDepth>(pixel.alpha), value_of_channel<kDepth>(pixel.red),
            value_of_channel<kDepth>(pixel.green), value_of_channel<kDepth>(pixel.blue)};
}

template <Depth kDepth>
PixelOf<kDepth> pixel_of_value(const PixelValue &value) {
    return {channel_of_value<kDepth>(value[0]), channel_of_value<kDepth>(value[1]),
            channel_of_value<kDepth>(value[2]), channel_of_value<kDepth>(value[3])};
}

/// True when laying `pixel` over anything at full opacity gives the pixel itself.
template <Depth kDepth>
bool covers(const PixelOf<kDepth> &pixel) {
    return static_cast<double>(pixel.alpha) >= DepthTraits<kDepth>::kWhite;
}

template <Depth kDepth>
void lay(PixelOf<kDepth> &under, const PixelValue &value, float opacity) {
    PixelValue sum = value_of_pixel<kDepth>(under);
    lay_over(sum.data(), value.data(), opacity);
    under = pixel_of_value<kDepth>(sum);
}

template <Depth kDepth>
void draw_on_pixels(const PixelView &target, const PixelView &layer, int left, int top,
                    float opacity) {
    const int first_x = std::max(left, 0);
    const int last_x = std::min(left + layer.width, target.width);
    const int last_y = std::min(top + layer.height, target.height);
    for (int y = std::max(top, 0); y < last_y; ++y) {
        const auto *from = layer.row<const PixelOf<kDepth>>(y - top) - left;
        auto *to = target.row<PixelOf<kDepth>>(y);
        for (int x = first_x; x < last_x; ++x) {
            if (opacity >= 1.0f && covers<kDepth>(from[x])) {
                to[x] = from[x];
            } else {
                lay<kDepth>(to[x], value_of_pixel<kDepth>(from[x]), opacity);
            }
        }
    }
}

template <Depth kDepth>
void draw(const PixelView &target, const PixelView &layer, const Placement &placement) {
    int left = 0;
    int top = 0;
    if (lands_on_pixels(layer.width, layer.height, placement, &left, &top)) {
        draw_on_pixels<kDepth>(target, layer, left, top, placement.opacity);
        return;
    }
    resample(
        layer.width, layer.height, placement, target.width, target.height,
        [&](int x, int y) {
            return value_of_pixel<kDepth>(layer.row<const PixelOf<kDepth>>(y)[x]);
        },
        [&](int x, int y, const PixelValue &value) {
            lay<kDepth>(target.row<PixelOf<kDepth>>(y)[x], value, placement.opacity);
        });
}

/// `share` of `b` and the rest of `a`, colours weighted by their alpha.
PixelValue mixed(const PixelValue &a, const PixelValue &b, float share) {
    const float weight_a = unit_alpha(a[0]) * (1.0f - share);
    const float weight_b = unit_alpha(b[0]) * share;
    const float sum = weight_a + weight_b;
    if (sum <= 0.0f) return {0.0f, b[1], b[2], b[3]};
    PixelValue result{sum};
    for (std::size_t c = 1; c < 4; ++c) result[c] = (a[c] * weight_a + b[c] * weight_b) / sum;
    return result;
}

/// Pixels of a side of `limit` whose centres lie inside a picture of `size` pixels.
PixelSpan covered_span(double center, double scale, int size, int limit) {
    const double reach = std::abs(scale) * size / 2.0;
    const auto first_at = [&](double edge) {
        return static_cast<int>(std::clamp(std::ceil(edge - 0.5), 0.0, double(limit)));
    };
    if (!std::isfinite(center) || !std::isfinite(reach)) return {};
    return {first_at(center - reach), first_at(center + reach)};
}

template <Depth kDepth>
void replace(const PixelView &target, const PixelView &placed, PixelSpan xs, PixelSpan ys,
             float opacity) {
    for (int y = ys.first; y < ys.last; ++y) {
        const auto *from = placed.row<const PixelOf<kDepth>>(y);
        auto *to = target.row<PixelOf<kDepth>>(y);
        for (int x = xs.first; x < xs.last; ++x) {
            to[x] = opacity >= 1.0f
                        ? from[x]
                        : pixel_of_value<kDepth>(mixed(value_of_pixel<kDepth>(to[x]),
                                                       value_of_pixel<kDepth>(from[x]), opacity));
        }
    }
}

}  // namespace

void draw_over(const PixelView &target, const PixelView &layer, const Placement &placement) {
    visit_depth(target.depth, [&]<Depth kDepth>() { draw<kDepth>(target, layer, placement); });
}

HostPixels seen_from_layer(const HostPixels &comp, int layer_width, int layer_height,
                           const Placement &placement, BytePool &pool) {
    HostPixels seen = clear_host_pixels(layer_width, layer_height, comp.depth, pool);
    const auto back = [](double center, double scale, int layer, int whole) {
        return (whole / 2.0 - center) / scale + layer / 2.0;
    };
    const Placement reverse{back(placement.center_x, placement.scale_x, layer_width, comp.width),
                            back(placement.center_y, placement.scale_y, layer_height, comp.height),
                            1 / placement.scale_x, 1 / placement.scale_y, 1.0f};
    draw_over(seen.view(), comp.view(), reverse);
    return seen;
}

void replace_covered(const PixelView &target, const PixelView &adjusted, const Placement &placement,
                     BytePool &pool) {
    Placement solid = placement;
    solid.opacity = 1.0f;
    HostPixels placed = clear_host_pixels(target.width, target.height, target.depth, pool);
    draw_over(placed.view(), adjusted, solid);
    const PixelSpan xs =
        covered_span(placement.center_x, placement.scale_x, adjusted.width, target.width);
    const PixelSpan ys =
        covered_span(placement.center_y, placement.scale_y, adjusted.height, target.height);
    visit_depth(target.depth, [&]<Depth kDepth>() {
        replace<kDepth>(target, placed.view(), xs, ys, placement.opacity);
    });
}

}  // namespace stage
