#include "stage/desk/viewer/axis_map.h"

#include <algorithm>
#include <cmath>

namespace stage {
namespace {

constexpr int kWhole = 256;       // sum of a span's weights
constexpr double kSliver = 1e-3;  // frame pixels that a span covers at least

/// Adds the span of frame coordinates `from`..`to`, which is at least a little wide.
void add_average(AxisMap &map, double from, double to, int frame_size) {
    const int start = std::clamp(static_cast<int>(std::floor(from)), 0, frame_size - 1);
    const int end = std::clamp(static_cast<int>(std::ceil(to)), start + 1, frame_size);
    map.spans.push_back({start, end - start, map.weights.size()});
    map.averages = map.averages || end - start > 1;
    // Rounding the running sum keeps the total exact.
    int given = 0;
    for (int i = start; i < end; ++i) {
        const double part = i + 1 == end ? 1.0 : (i + 1 - from) / (to - from);
        const int sum = static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * kWhole));
        map.weights.push_back(static_cast<std::uint16_t>(sum - given));
        given = sum;
    }
}

}  // namespace

AxisMap axis_map(double from, double length, int window_size, int frame_size) {
    AxisMap map;
    const bool possible =
        std::isfinite(from) && std::isfinite(length) && length > 0 && window_size > 0;
    if (!possible) return map;
    // First and last pixel whose centre, at half a pixel, lies in from..from + length.
    const double first = std::clamp(std::ceil(from - 0.5), 0.0, double(window_size));
    const double end = std::clamp(std::ceil(from + length - 0.5), first, double(window_size));
    map.first = static_cast<int>(first);
    const int count = static_cast<int>(end - first);
    map.spans.reserve(static_cast<std::size_t>(count));
    const double scale = frame_size / length;  // frame pixels to a window pixel
    for (int i = 0; i < count; ++i) {
        const double at = (map.first + i - from) * scale;
        if (frame_size <= 0) {
            map.spans.push_back({});
        } else if (scale <= 1) {
            const double nearest = std::clamp(std::floor(at + 0.5 * scale), 0.0, frame_size - 1.0);
            add_average(map, nearest, nearest + 1, frame_size);
        } else {
            const double start = std::clamp(at, 0.0, frame_size - 2 * kSliver);
            add_average(map, start, std::clamp(at + scale, start + kSliver, double(frame_size)),
                        frame_size);
        }
    }
    return map;
}

}  // namespace stage
