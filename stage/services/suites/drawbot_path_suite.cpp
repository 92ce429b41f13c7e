// Paths: steps are taken down in window coordinates.
#include "hostapi/suite_names.h"
#include "stage/drawbot/path_shapes.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// The steps of a live path; null, with a finding, for anything else.
DrawPath *steps_of(DrawCall &call, DRAWBOT_PathRef path) {
    PathObject *found = call.find<PathObject>(path);
    return found != nullptr ? &found->path : nullptr;
}

SPErr move_to(DrawCall call, DRAWBOT_PathRef path, float x, float y) {
    DrawPath *steps = steps_of(call, path);
    if (steps == nullptr || !call.finite({x, y}, "point")) return A_Err_PARAMETER;
    steps->push_back({PathStep::Kind::kMove, {DrawPoint{x, y}}});
    return A_Err_NONE;
}

/// Without an open figure one starts at the point.
SPErr line_to(DrawCall call, DRAWBOT_PathRef path, float x, float y) {
    DrawPath *steps = steps_of(call, path);
    if (steps == nullptr || !call.finite({x, y}, "point")) return A_Err_PARAMETER;
    const auto kind = steps->empty() ? PathStep::Kind::kMove : PathStep::Kind::kLine;
    steps->push_back({kind, {DrawPoint{x, y}}});
    return A_Err_NONE;
}

/// Without a point to come from, the curve starts at its first control point.
SPErr bezier_to(DrawCall call, DRAWBOT_PathRef path, const DRAWBOT_PointF32 *first,
                const DRAWBOT_PointF32 *second, const DRAWBOT_PointF32 *end) {
    DrawPath *steps = steps_of(call, path);
    if (steps == nullptr) return A_Err_PARAMETER;
    PathStep curve{PathStep::Kind::kCurve, {}};
    auto &[a, b, c] = curve.points;
    if (!call.read(first, a) || !call.read(second, b) || !call.read(end, c)) {
        return A_Err_PARAMETER;
    }
    if (steps->empty()) steps->push_back({PathStep::Kind::kMove, {a}});
    steps->push_back(curve);
    return A_Err_NONE;
}

SPErr add_rect_to(DrawCall call, DRAWBOT_PathRef path, const DRAWBOT_RectF32 *rect) {
    DrawPath *steps = steps_of(call, path);
    DrawPrimitive::Rect area;
    if (steps == nullptr || !call.read(rect, area)) return A_Err_PARAMETER;
    add_rect(*steps, area);
    return A_Err_NONE;
}

SPErr add_arc_to(DrawCall call, DRAWBOT_PathRef path, const DRAWBOT_PointF32 *center, float radius,
                 float start, float sweep) {
    DrawPath *steps = steps_of(call, path);
    if (steps == nullptr) return A_Err_PARAMETER;
    DrawPoint middle;
    if (!call.read(center, middle) || !call.finite({radius, start, sweep}, "arc")) {
        return A_Err_PARAMETER;
    }
    add_arc(*steps, middle, radius, start, sweep);
    return A_Err_NONE;
}

/// Back to the start of the open figure; nothing without one.
SPErr close(DrawCall call, DRAWBOT_PathRef path) {
    DrawPath *steps = steps_of(call, path);
    if (steps == nullptr) return A_Err_PARAMETER;
    if (has_open_figure(*steps)) steps->push_back({PathStep::Kind::kClose, {}});
    return A_Err_NONE;
}

constexpr auto path_table() {
    CallTable<DRAWBOT_PathSuite1, kDRAWBOT_PathSuite, kDrawCall> table;
    KS_SERVE(MoveTo, move_to);
    KS_SERVE(LineTo, line_to);
    KS_SERVE(BezierTo, bezier_to);
    KS_SERVE(AddRect, add_rect_to);
    KS_SERVE(AddArc, add_arc_to);
    KS_SERVE(Close, close);
    return table;
}

}  // namespace

void add_drawbot_path_suite(SuiteRegistry &suites) {
    offer<path_table>(suites, kDRAWBOT_PathSuite_Version1);
}

}  // namespace stage
