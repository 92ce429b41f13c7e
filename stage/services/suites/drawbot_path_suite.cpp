// Paths: steps are taken down in window coordinates.
#include "hostapi/suite_names.h"
#include "stage/drawbot/path_shapes.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "DRAWBOT Path Suite." #function

namespace stage {
namespace {

/// Runs `body(DrawCall &, DrawPath &)` on a live path.
template <class Body>
SPErr path_call(const char *name, DRAWBOT_PathRef path, Body body) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        PathObject *found = call.find<PathObject>(path);
        return found != nullptr ? body(call, found->path) : A_Err_PARAMETER;
    });
}

SPErr move_to(DRAWBOT_PathRef path, float x, float y) noexcept {
    return path_call(KS_NAME(MoveTo), path, [&](DrawCall &call, DrawPath &steps) -> A_Err {
        if (!call.finite({x, y}, "point")) return A_Err_PARAMETER;
        steps.push_back({PathStep::Kind::kMove, {DrawPoint{x, y}}});
        return A_Err_NONE;
    });
}

/// Without an open figure one starts at the point.
SPErr line_to(DRAWBOT_PathRef path, float x, float y) noexcept {
    return path_call(KS_NAME(LineTo), path, [&](DrawCall &call, DrawPath &steps) -> A_Err {
        if (!call.finite({x, y}, "point")) return A_Err_PARAMETER;
        const auto kind = steps.empty() ? PathStep::Kind::kMove : PathStep::Kind::kLine;
        steps.push_back({kind, {DrawPoint{x, y}}});
        return A_Err_NONE;
    });
}

/// Without a point to come from, the curve starts at its first control point.
SPErr bezier_to(DRAWBOT_PathRef path, const DRAWBOT_PointF32 *first, const DRAWBOT_PointF32 *second,
                const DRAWBOT_PointF32 *end) noexcept {
    return path_call(KS_NAME(BezierTo), path, [&](DrawCall &call, DrawPath &steps) -> A_Err {
        PathStep curve{PathStep::Kind::kCurve, {}};
        auto &[a, b, c] = curve.points;
        if (!call.read(first, a) || !call.read(second, b) || !call.read(end, c)) {
            return A_Err_PARAMETER;
        }
        if (steps.empty()) steps.push_back({PathStep::Kind::kMove, {a}});
        steps.push_back(curve);
        return A_Err_NONE;
    });
}

SPErr add_rect_to(DRAWBOT_PathRef path, const DRAWBOT_RectF32 *rect) noexcept {
    return path_call(KS_NAME(AddRect), path, [&](DrawCall &call, DrawPath &steps) -> A_Err {
        DrawPrimitive::Rect area;
        if (!call.read(rect, area)) return A_Err_PARAMETER;
        add_rect(steps, area);
        return A_Err_NONE;
    });
}

SPErr add_arc_to(DRAWBOT_PathRef path, const DRAWBOT_PointF32 *center, float radius, float start,
                 float sweep) noexcept {
    return path_call(KS_NAME(AddArc), path, [&](DrawCall &call, DrawPath &steps) -> A_Err {
        DrawPoint middle;
        if (!call.read(center, middle) || !call.finite({radius, start, sweep}, "arc")) {
            return A_Err_PARAMETER;
        }
        add_arc(steps, middle, radius, start, sweep);
        return A_Err_NONE;
    });
}

/// Back to the start of the open figure; nothing without one.
SPErr close(DRAWBOT_PathRef path) noexcept {
    return path_call(KS_NAME(Close), path, [&](DrawCall &, DrawPath &steps) -> A_Err {
        if (has_open_figure(steps)) steps.push_back({PathStep::Kind::kClose, {}});
        return A_Err_NONE;
    });
}

constexpr DRAWBOT_PathSuite1 kPathSuite{
    .MoveTo = move_to,
    .LineTo = line_to,
    .BezierTo = bezier_to,
    .AddRect = add_rect_to,
    .AddArc = add_arc_to,
    .Close = close,
};

}  // namespace

void add_drawbot_path_suite(SuiteRegistry &suites) {
    suites.add(kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1, &kPathSuite);
}

}  // namespace stage
