#include "support/stage/painted.h"

#include <algorithm>

#include "stage/drawbot/overlay_painter.h"

namespace stage_test {
using stage::DrawPath;
using stage::DrawPoint;
using stage::DrawPrimitive;
using stage::PathStep;

DrawPrimitive primitive(Kind kind) {
    DrawPrimitive result;
    result.kind = kind;
    return result;
}

DrawPrimitive painted_rect(DrawPrimitive::Rect rect, stage::DrawColor color) {
    DrawPrimitive result = primitive(Kind::kPaintRect);
    result.rect = rect;
    result.color = color;
    return result;
}

DrawPrimitive transform(float xx, float xy, float yx, float yy, float x0, float y0) {
    DrawPrimitive result = primitive(Kind::kTransform);
    result.matrix = {{{xx, xy, 0}, {yx, yy, 0}, {x0, y0, 1}}};
    return result;
}

DrawPrimitive clip(DrawPrimitive::Rect rect) {
    DrawPrimitive result = primitive(Kind::kClip);
    result.rect = rect;
    return result;
}

DrawPath polygon(std::vector<DrawPoint> points) {
    DrawPath path;
    for (const DrawPoint &point : points) {
        const auto kind = path.empty() ? PathStep::Kind::kMove : PathStep::Kind::kLine;
        path.push_back({kind, {point}});
    }
    path.push_back({PathStep::Kind::kClose, {}});
    return path;
}

DrawPath line(DrawPoint from, DrawPoint to) {
    return {{PathStep::Kind::kMove, {from}}, {PathStep::Kind::kLine, {to}}};
}

Painted::Painted(std::vector<DrawPrimitive> primitives, const stage::OverlayTheme &theme)
    : pixels_(stage::overlay_picture(kWidth, kHeight, {std::move(primitives)}, theme)) {}

std::uint32_t Painted::at(int x, int y) const {
    return pixels_.at(static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x));
}

int Painted::painted() const {
    return static_cast<int>(std::ranges::count_if(pixels_, [](auto pixel) { return pixel != 0; }));
}

std::vector<int> Painted::bounds() const {
    std::vector<int> found{kWidth, kHeight, 0, 0};
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (at(x, y) == kClear) continue;
            found = {std::min(found[0], x), std::min(found[1], y), std::max(found[2], x + 1),
                     std::max(found[3], y + 1)};
        }
    }
    return found;
}

}  // namespace stage_test
