#include "oracle/host_oracle.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ks::oracle {
namespace {

Stored scaled_pixel(const Image &image, int x, int y) {
    Stored value = stored_pixel(image, x, y);
    for (double &component : value) component /= full_scale(image.depth);
    return value;
}

void store_scaled(Image &image, int x, int y, Stored value) {
    if (image.depth != Depth::kFloat) {
        const double top = full_scale(image.depth);
        for (double &component : value) {
            component = std::clamp(std::floor(component * top + 0.5), 0.0, top);
        }
    }
    store_pixel(image, x, y, value);
}

void composite_in_front(Image &image, int x, int y, const Stored &source, double opacity) {
    const double as = source[0] * opacity;
    if (as == 0.0) return;
    const Stored below = scaled_pixel(image, x, y);
    const double rest = as == 1.0 ? 0.0 : below[0] * (1.0 - as);
    Stored result{};
    result[0] = as + rest;
    for (std::size_t c = 1; c < 4; ++c) {
        const double under = rest == 0.0 ? 0.0 : rest * below[c];
        result[c] = rest == 0.0 ? source[c] : (as * source[c] + under) / result[0];
    }
    store_scaled(image, x, y, result);
}

Stored nearest_sample(const Image &image, double u, double v) {
    const int x = whole(std::floor(u));
    const int y = whole(std::floor(v));
    return contains(image, x, y) ? scaled_pixel(image, x, y) : Stored{};
}

// Alpha-weighted mean of the four pixels whose centres surround (u, v).
Stored bilinear_sample(const Image &image, double u, double v) {
    const double left = std::floor(u - 0.5);
    const double top = std::floor(v - 0.5);
    const double fx = u - 0.5 - left;
    const double fy = v - 0.5 - top;
    Stored sum{};
    for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
            const double weight = (dx == 0 ? 1.0 - fx : fx) * (dy == 0 ? 1.0 - fy : fy);
            const int x = whole(left + dx);
            const int y = whole(top + dy);
            if (weight == 0.0 || !contains(image, x, y)) continue;
            const Stored pixel = scaled_pixel(image, x, y);
            if (pixel[0] == 0.0) continue;
            sum[0] += weight * pixel[0];
            for (std::size_t c = 1; c < 4; ++c) sum[c] += weight * pixel[0] * pixel[c];
        }
    }
    if (sum[0] == 0.0) return Stored{};
    for (std::size_t c = 1; c < 4; ++c) sum[c] /= sum[0];
    return sum;
}

// Plain mean of the four neighbours, alpha like a colour, with the edge pixels repeated outward.
Stored stretched_sample(const Image &image, double u, double v) {
    const double left = std::floor(u - 0.5);
    const double top = std::floor(v - 0.5);
    const double fx = u - 0.5 - left;
    const double fy = v - 0.5 - top;
    Stored sum{};
    for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
            const double weight = (dx == 0 ? 1.0 - fx : fx) * (dy == 0 ? 1.0 - fy : fy);
            if (weight == 0.0) continue;
            const int x = std::clamp(whole(left + dx), 0, image.width - 1);
            const int y = std::clamp(whole(top + dy), 0, image.height - 1);
            const Stored pixel = scaled_pixel(image, x, y);
            for (std::size_t c = 0; c < 4; ++c) sum[c] += weight * pixel[c];
        }
    }
    return sum;
}

Rect clipped(const Rect &rect, const Image &image) {
    return {std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, image.width),
            std::min(rect.bottom, image.height)};
}

}  // namespace

void host_fill(Image &image, const std::array<std::uint8_t, 4> &colour,
               const std::optional<Rect> &rect) {
    Stored value{};
    for (std::size_t c = 0; c < 4; ++c) {
        value[c] = colour[c];
        if (image.depth == Depth::kWord) value[c] = std::floor(colour[c] * 32768.0 / 255.0);
        if (image.depth == Depth::kFloat) value[c] = colour[c] / 255.0;
    }
    const Rect area = clipped(rect.value_or(Rect{0, 0, image.width, image.height}), image);
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) store_pixel(image, x, y, value);
    }
}

void host_copy(const Image &source, Image &destination, Quality quality) {
    if (source.width == destination.width && source.height == destination.height) {
        destination = source;
        return;
    }
    if (source.width == 0 || source.height == 0) return;
    const double scale_x = static_cast<double>(source.width) / destination.width;
    const double scale_y = static_cast<double>(source.height) / destination.height;
    for (int y = 0; y < destination.height; ++y) {
        for (int x = 0; x < destination.width; ++x) {
            const double u = (x + 0.5) * scale_x;
            const double v = (y + 0.5) * scale_y;
            store_scaled(destination, x, y,
                         quality == Quality::kNearest ? nearest_sample(source, u, v)
                                                      : stretched_sample(source, u, v));
        }
    }
}

void host_transfer_rect(const Image &source, const Rect &rect, const Opacity &opacity, int x, int y,
                        Image &destination) {
    const double fraction = destination.depth == Depth::kByte ? opacity.byte_opacity / 255.0
                                                              : opacity.word_opacity / 32768.0;
    const Rect area = clipped(rect, source);
    for (int sy = area.top; sy < area.bottom; ++sy) {
        for (int sx = area.left; sx < area.right; ++sx) {
            const std::int64_t dx = std::int64_t{x} + sx - rect.left;
            const std::int64_t dy = std::int64_t{y} + sy - rect.top;
            if (dx < 0 || dy < 0 || dx >= destination.width || dy >= destination.height) continue;
            composite_in_front(destination, static_cast<int>(dx), static_cast<int>(dy),
                               scaled_pixel(source, sx, sy), fraction);
        }
    }
}

void host_transform_world(const Image &source, Quality quality, const DestinationToSource &matrix,
                          const Rect &rect, Image &destination) {
    const Rect area = clipped(rect, destination);
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const double u = (x + 0.5) * matrix.scale_x + matrix.offset_x;
            const double v = (y + 0.5) * matrix.scale_y + matrix.offset_y;
            if (!std::isfinite(u) || !std::isfinite(v)) continue;
            const Stored sample = quality == Quality::kNearest ? nearest_sample(source, u, v)
                                                               : bilinear_sample(source, u, v);
            composite_in_front(destination, x, y, sample, 1.0);
        }
    }
}

}  // namespace ks::oracle
