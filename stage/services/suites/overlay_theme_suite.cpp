// "PF Effect Custom UI Overlay Theme Suite": the look of the host's overlays, asked for at any time
// and drawn with during a draw event.
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/drawbot/path_shapes.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

using Kind = DrawPrimitive::Kind;

DRAWBOT_ColorRGBA color_of(const DrawColor &color) {
    return {color.red, color.green, color.blue, color.alpha};
}

PF_Err get_foreground_color(DrawCall call, DRAWBOT_ColorRGBA &result) {
    result = color_of(call.store().theme.foreground);
    return PF_Err_NONE;
}
PF_Err get_shadow_color(DrawCall call, DRAWBOT_ColorRGBA &result) {
    result = color_of(call.store().theme.shadow);
    return PF_Err_NONE;
}
PF_Err get_stroke_width(DrawCall call, float &result) {
    result = call.store().theme.stroke_width;
    return PF_Err_NONE;
}
PF_Err get_vertex_size(DrawCall call, float &result) {
    result = call.store().theme.vertex_size;
    return PF_Err_NONE;
}
PF_Err get_shadow_offset(DrawCall call, A_LPoint &result) {
    result = {call.store().theme.shadow_x, call.store().theme.shadow_y};
    return PF_Err_NONE;
}

template <Kind kKind>
PF_Err draw_path(DrawCall call, DRAWBOT_DrawRef drawing, DRAWBOT_PathRef path, PF_Boolean shadow) {
    if (call.find<DrawingObject>(drawing) == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    const PathObject *figure = call.find<PathObject>(path);
    if (figure == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    DrawPrimitive drawn;
    drawn.kind = kKind;
    drawn.path = figure->path;
    drawn.shadow = shadow != 0;
    return call.record(std::move(drawn));
}

PF_Err fill_vertex(DrawCall call, DRAWBOT_DrawRef drawing, const A_FloatPoint &center,
                   PF_Boolean shadow) {
    if (call.find<DrawingObject>(drawing) == nullptr ||
        !call.finite({center.x, center.y}, "point")) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    DrawPrimitive drawn;
    drawn.kind = Kind::kThemeVertex;
    drawn.rect = {window_coordinate(center.x), window_coordinate(center.y), 0, 0};
    drawn.shadow = shadow != 0;
    return call.record(std::move(drawn));
}

constexpr auto theme_table() {
    CallTable<PF_EffectCustomUIOverlayThemeSuite1, kPFEffectCustomUIOverlayThemeSuite,
              CallRules{}.on_ui_thread()>
        table;
    KS_SERVE(PF_GetPreferredForegroundColor, get_foreground_color);
    KS_SERVE(PF_GetPreferredShadowColor, get_shadow_color);
    KS_SERVE(PF_GetPreferredStrokeWidth, get_stroke_width);
    KS_SERVE(PF_GetPreferredVertexSize, get_vertex_size);
    KS_SERVE(PF_GetPreferredShadowOffset, get_shadow_offset);
    KS_SERVE(PF_StrokePath, draw_path<Kind::kThemeStroke>);
    KS_SERVE(PF_FillPath, draw_path<Kind::kThemeFill>);
    KS_SERVE(PF_FillVertex, fill_vertex);
    return table;
}

}  // namespace

void add_overlay_theme_suite(SuiteRegistry &suites) {
    offer<theme_table>(suites, kPFEffectCustomUIOverlayThemeSuiteVersion1);
}

}  // namespace stage
