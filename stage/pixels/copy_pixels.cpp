#include "stage/pixels/copy_pixels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace stage {
namespace {

std::size_t pixel_size(Depth depth) {
    return visit_depth(depth,
                       []<Depth kDepth>() { return sizeof(typename DepthTraits<kDepth>::Pixel); });
}

void copy_same_size(const PixelView &src, const Box &from, const PixelView &dst, const Box &to) {
    const std::int64_t dx = from.left - to.left, dy = from.top - to.top;
    const Box area = intersect(intersect(to, bounds(dst)), bounds(src).shifted(-dx, -dy));
    if (area.empty()) return;
    const std::size_t size = pixel_size(src.depth);
    const std::size_t bytes = static_cast<std::size_t>(area.width()) * size;
    const auto copy_row = [&](std::int64_t y) {
        const std::byte *in = src.row<std::byte>(static_cast<int>(y + dy));
        std::byte *out = dst.row<std::byte>(static_cast<int>(y));
        std::memmove(out + static_cast<std::size_t>(area.left) * size,
                     in + static_cast<std::size_t>(area.left + dx) * size, bytes);
    };
    // Upwards or downwards, so that a move within one world reads each row before it is written.
    if (dy >= 0) {
        for (auto y = area.top; y < area.bottom; ++y) copy_row(y);
    } else {
        for (auto y = area.bottom; y-- > area.top;) copy_row(y);
    }
}

// Where one destination column or row samples: two neighbours and the weight of the second.
struct Tap {
    int first = 0, second = 0;
    double weight = 0;
    bool inside = false;
};

// Taps along one axis for destination coordinates begin..end-1.
std::vector<Tap> make_taps(std::int64_t begin, std::int64_t end, std::int64_t to_start,
                           std::int64_t to_size, std::int64_t from_start, std::int64_t from_size,
                           int src_size, Sampling sampling) {
    const std::int64_t low = std::max<std::int64_t>(from_start, 0);
    const std::int64_t high = std::min<std::int64_t>(from_start + from_size, src_size);
    std::vector<Tap> taps;
    taps.reserve(static_cast<std::size_t>(end - begin));
    const double scale = static_cast<double>(from_size) / static_cast<double>(to_size);
    for (auto i = begin; i < end; ++i) {
        const double centre =
            static_cast<double>(from_start) + (static_cast<double>(i - to_start) + 0.5) * scale;
        Tap tap;
        tap.inside =
            low < high && centre >= static_cast<double>(low) && centre < static_cast<double>(high);
        if (tap.inside && sampling == Sampling::kNearest) {
            tap.first = tap.second = static_cast<int>(centre);
        } else if (tap.inside) {
            const double corner = std::floor(centre - 0.5);
            tap.weight = centre - 0.5 - corner;
            const auto clamp = [&](std::int64_t v) {
                return static_cast<int>(std::clamp(v, low, high - 1));
            };
            tap.first = clamp(static_cast<std::int64_t>(corner));
            tap.second = clamp(static_cast<std::int64_t>(corner) + 1);
        }
        taps.push_back(tap);
    }
    return taps;
}

// (1 - w) * a + w * b, untouched by b where its weight is 0, so that no infinity leaks in.
double mix(double a, double b, double w) {
    return w == 0 ? a : a * (1 - w) + b * w;
}

template <Depth kDepth>
void stretch(const PixelView &src, const PixelView &dst, const Box &area,
             const std::vector<Tap> &columns, const std::vector<Tap> &rows) {
    using Channel = typename DepthTraits<kDepth>::Channel;
    for (auto y = area.top; y < area.bottom; ++y) {
        const Tap &v = rows[static_cast<std::size_t>(y - area.top)];
        if (!v.inside) continue;
        const auto *upper = src.row<const Channel>(v.first);
        const auto *lower = src.row<const Channel>(v.second);
        auto *out = dst.row<Channel>(static_cast<int>(y));
        for (auto x = area.left; x < area.right; ++x) {
            const Tap &h = columns[static_cast<std::size_t>(x - area.left)];
            if (!h.inside) continue;
            const std::ptrdiff_t a = std::ptrdiff_t{h.first} * 4, b = std::ptrdiff_t{h.second} * 4;
            for (std::ptrdiff_t c = 0; c < 4; ++c) {
                const double top = mix(upper[a + c], upper[b + c], h.weight);
                const double low = mix(lower[a + c], lower[b + c], h.weight);
                out[x * 4 + c] = to_channel<kDepth>(mix(top, low, v.weight));
            }
        }
    }
}

}  // namespace

void copy_pixels(const PixelView &src, const Box &from, const PixelView &dst, const Box &to,
                 Sampling sampling) {
    if (from.empty() || to.empty()) return;
    if (from.width() == to.width() && from.height() == to.height()) {
        copy_same_size(src, from, dst, to);
        return;
    }
    const Box area = intersect(to, bounds(dst));
    if (area.empty()) return;
    const std::vector<Tap> columns = make_taps(area.left, area.right, to.left, to.width(),
                                               from.left, from.width(), src.width, sampling);
    const std::vector<Tap> rows = make_taps(area.top, area.bottom, to.top, to.height(), from.top,
                                            from.height(), src.height, sampling);
    visit_depth(src.depth, [&]<Depth kDepth>() { stretch<kDepth>(src, dst, area, columns, rows); });
}

}  // namespace stage
