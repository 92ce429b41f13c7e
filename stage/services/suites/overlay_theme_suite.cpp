// "PF Effect Custom UI Overlay Theme Suite": the look of the host's overlays, asked for at any time
// and drawn with during a draw event.
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/drawbot/path_shapes.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "PF Effect Custom UI Overlay Theme Suite." #function

namespace stage {
namespace {

using Kind = DrawPrimitive::Kind;

/// Hands out what `get(const OverlayTheme &)` says.
template <class Value, class Get>
PF_Err theme_value(const char *name, Value *result, Get get) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
        *result = get(call.store().theme);
        return PF_Err_NONE;
    });
}

DRAWBOT_ColorRGBA color_of(const DrawColor &color) {
    return {color.red, color.green, color.blue, color.alpha};
}

PF_Err get_foreground_color(DRAWBOT_ColorRGBA *result) noexcept {
    return theme_value(KS_NAME(PF_GetPreferredForegroundColor), result,
                       [](const OverlayTheme &theme) { return color_of(theme.foreground); });
}
PF_Err get_shadow_color(DRAWBOT_ColorRGBA *result) noexcept {
    return theme_value(KS_NAME(PF_GetPreferredShadowColor), result,
                       [](const OverlayTheme &theme) { return color_of(theme.shadow); });
}
PF_Err get_stroke_width(float *result) noexcept {
    return theme_value(KS_NAME(PF_GetPreferredStrokeWidth), result,
                       [](const OverlayTheme &theme) { return theme.stroke_width; });
}
PF_Err get_vertex_size(float *result) noexcept {
    return theme_value(KS_NAME(PF_GetPreferredVertexSize), result,
                       [](const OverlayTheme &theme) { return theme.vertex_size; });
}
PF_Err get_shadow_offset(A_LPoint *result) noexcept {
    return theme_value(KS_NAME(PF_GetPreferredShadowOffset), result, [](const OverlayTheme &theme) {
        return A_LPoint{theme.shadow_x, theme.shadow_y};
    });
}

PF_Err draw_path(const char *name, Kind kind, DRAWBOT_DrawRef drawing, DRAWBOT_PathRef path,
                 PF_Boolean shadow) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        if (call.find<DrawingObject>(drawing) == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
        const PathObject *figure = call.find<PathObject>(path);
        if (figure == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
        DrawPrimitive drawn;
        drawn.kind = kind;
        drawn.path = figure->path;
        drawn.shadow = shadow != 0;
        return call.record(std::move(drawn));
    });
}

PF_Err stroke_path(DRAWBOT_DrawRef drawing, DRAWBOT_PathRef path, PF_Boolean shadow) noexcept {
    return draw_path(KS_NAME(PF_StrokePath), Kind::kThemeStroke, drawing, path, shadow);
}
PF_Err fill_path(DRAWBOT_DrawRef drawing, DRAWBOT_PathRef path, PF_Boolean shadow) noexcept {
    return draw_path(KS_NAME(PF_FillPath), Kind::kThemeFill, drawing, path, shadow);
}

PF_Err fill_vertex(DRAWBOT_DrawRef drawing, const A_FloatPoint *center,
                   PF_Boolean shadow) noexcept {
    return draw_call(KS_NAME(PF_FillVertex), [&](DrawCall &call) -> A_Err {
        if (call.find<DrawingObject>(drawing) == nullptr || center == nullptr ||
            !call.finite({center->x, center->y}, "point")) {
            return PF_Err_BAD_CALLBACK_PARAM;
        }
        DrawPrimitive drawn;
        drawn.kind = Kind::kThemeVertex;
        drawn.rect = {window_coordinate(center->x), window_coordinate(center->y), 0, 0};
        drawn.shadow = shadow != 0;
        return call.record(std::move(drawn));
    });
}

constexpr PF_EffectCustomUIOverlayThemeSuite1 kThemeSuite{
    .PF_GetPreferredForegroundColor = get_foreground_color,
    .PF_GetPreferredShadowColor = get_shadow_color,
    .PF_GetPreferredStrokeWidth = get_stroke_width,
    .PF_GetPreferredVertexSize = get_vertex_size,
    .PF_GetPreferredShadowOffset = get_shadow_offset,
    .PF_StrokePath = stroke_path,
    .PF_FillPath = fill_path,
    .PF_FillVertex = fill_vertex,
};

}  // namespace

void add_overlay_theme_suite(SuiteRegistry &suites) {
    suites.add(kPFEffectCustomUIOverlayThemeSuite, kPFEffectCustomUIOverlayThemeSuiteVersion1,
               &kThemeSuite);
}

}  // namespace stage
