#include "stage/drawbot/path_shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace stage {
namespace {

PathStep step(PathStep::Kind kind, DrawPoint a = {}, DrawPoint b = {}, DrawPoint c = {}) {
    return {kind, {a, b, c}};
}

}  // namespace

float window_coordinate(double value) {
    constexpr double kLimit = 1e30;
    return static_cast<float>(std::clamp(value, -kLimit, kLimit));
}

bool has_open_figure(const DrawPath &path) {
    return !path.empty() && path.back().kind != PathStep::Kind::kClose;
}

void add_rect(DrawPath &path, const DrawPrimitive::Rect &rect) {
    using Kind = PathStep::Kind;
    const float right = window_coordinate(static_cast<double>(rect.left) + rect.width);
    const float bottom = window_coordinate(static_cast<double>(rect.top) + rect.height);
    path.push_back(step(Kind::kMove, {rect.left, rect.top}));
    path.push_back(step(Kind::kLine, {right, rect.top}));
    path.push_back(step(Kind::kLine, {right, bottom}));
    path.push_back(step(Kind::kLine, {rect.left, bottom}));
    path.push_back(step(Kind::kClose));
}

void add_arc(DrawPath &path, DrawPoint center, float radius, float start, float sweep) {
    constexpr double kDegree = std::numbers::pi / 180;
    const double turn = std::clamp(static_cast<double>(sweep), -360.0, 360.0) * kDegree;
    // A whole turn more or less changes nothing but the precision.
    const double first = std::fmod(static_cast<double>(start), 360.0) * kDegree;
    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::abs(turn) / (90 * kDegree) - 1e-9)));
    const double piece = turn / pieces;
    const double handle = 4.0 / 3.0 * std::tan(piece / 4) * radius;
    const auto at = [&](double angle, double tangent) {
        const double cosine = std::cos(angle), sine = std::sin(angle);
        return DrawPoint{window_coordinate(center.x + radius * cosine - tangent * sine),
                         window_coordinate(center.y + radius * sine + tangent * cosine)};
    };
    path.push_back(
        step(has_open_figure(path) ? PathStep::Kind::kLine : PathStep::Kind::kMove, at(first, 0)));
    for (int i = 0; i < pieces; ++i) {
        const double from = first + piece * i, to = first + piece * (i + 1);
        path.push_back(step(PathStep::Kind::kCurve, at(from, handle), at(to, -handle), at(to, 0)));
    }
}

}  // namespace stage
