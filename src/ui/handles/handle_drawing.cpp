#include "ui/handles/handle_drawing.h"

#include <algorithm>
#include <optional>

namespace ks {
namespace {

constexpr int kTriangleSide = 12;                                    // window pixels
constexpr auto kDrawnBarHeight = static_cast<unsigned>(kBarHeight);  // at full resolution
constexpr double kTick = 3.0;
constexpr double kDiamond = 5.0;

int nearest_pixel(std::int32_t fixed) {
    return static_cast<int>((std::int64_t{fixed} + 0x8000) >> 16);
}

std::optional<IntRect> on_window(const LayerRect &rect, const WindowMap &window) {
    const std::optional<FixedPoint> from = window.to_window(rect.from);
    if (!from) return std::nullopt;
    const std::optional<FixedPoint> to = window.to_window(rect.to);
    if (!to) return std::nullopt;
    return IntRect{nearest_pixel(from->x), nearest_pixel(from->y), nearest_pixel(to->x),
                   nearest_pixel(to->y)};
}

/// Keeps what foreign values may bring (NaN, out of a float's range) away from the host.
float coordinate(double value) {
    constexpr double kLimit = 1048576.0;
    return value == value ? static_cast<float>(std::clamp(value, -kLimit, kLimit)) : 0.f;
}

void start(Path &path, double x, double y) {
    path.points[path.count++] = {true, coordinate(x), coordinate(y)};
}

void line(Path &path, double x, double y) {
    path.points[path.count++] = {false, coordinate(x), coordinate(y)};
}

FilledPath corner_triangle(const IntRect &monitor) {
    FilledPath path;
    start(path, monitor.right, monitor.bottom);
    line(path, monitor.right, monitor.bottom - kTriangleSide);
    line(path, monitor.right - kTriangleSide, monitor.bottom);
    line(path, monitor.right, monitor.bottom);
    return path;
}

Bar monitor_bar(const IntRect &monitor, const FrameScale &frame) {
    return {coordinate(monitor.left), coordinate(monitor.top),
            coordinate(monitor.right - monitor.left), coordinate(kDrawnBarHeight / frame.den_y)};
}

void add(HandleDrawing &drawing, const PaintItem &item) {
    drawing.items[drawing.count++] = item;
}

HandleDrawing wipe_drawing(const IntRect &region, const HandleSettings &settings) {
    const double height = static_cast<double>(region.bottom) - region.top;
    const double x =
        region.left + (static_cast<double>(region.right) - region.left) * settings.compare * 0.01;
    const double middle = (static_cast<double>(region.top) + region.bottom) * 0.5;
    const double y = region.top + height * ((100.0 - settings.opacity) * 0.004 + 0.5);
    HandleDrawing drawing;
    if (settings.opacity < 100.0) {
        const double lowest = middle + (region.bottom - middle) * 0.8;  // where opacity 0 lies
        StrokedPath stem;
        start(stem, x - kTick, middle);
        line(stem, x + kTick, middle);
        start(stem, x, middle);
        line(stem, x, y);
        start(stem, x - kTick, lowest);
        line(stem, x + kTick, lowest);
        add(drawing, stem);
    }
    FilledPath diamond;
    start(diamond, x - kDiamond, y);
    line(diamond, x, y - kDiamond);
    line(diamond, x + kDiamond, y);
    line(diamond, x, y + kDiamond);
    add(drawing, diamond);
    return drawing;
}

}  // namespace

HandleDrawing drawing_of(const HandleRow &row, const HandleSettings &settings,
                         const WindowMap &window) {
    if (row.paint == HandlePaint::kNothing || !is_present(row, settings)) return {};
    const bool is_wipe = row.paint == HandlePaint::kWipeDiamond;
    if (is_wipe && settings.compare_disabled) return {};
    LayerRect area = drawn_monitor(settings);
    if (is_wipe) area = wipe_region(settings, area).value_or(area);
    const std::optional<IntRect> shown = on_window(area, window);
    if (!shown) return {};
    if (is_wipe) return wipe_drawing(*shown, settings);
    HandleDrawing drawing;
    if (row.paint == HandlePaint::kCornerTriangle) {
        add(drawing, corner_triangle(*shown));
    } else {
        add(drawing, monitor_bar(*shown, settings.frame));
    }
    return drawing;
}

}  // namespace ks
