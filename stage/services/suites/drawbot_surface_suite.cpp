// The surface: drawing and its state, recorded into the list of the open draw event.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "hostapi/suite_names.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"
#include "stage/text/utf16.h"

#define KS_NAME(function) "DRAWBOT Surface Suite." #function

namespace stage {
namespace {

using Kind = DrawPrimitive::Kind;

constexpr int kHighestPolicy = 2;  // of interpolation and of antialiasing
constexpr int kHighestAlignment = kDRAWBOT_TextAlignment_Right;
constexpr int kHighestTruncation = kDRAWBOT_TextTruncation_PathEllipsis;
constexpr std::size_t kLongestText = 65536;  // units read at most, terminator or not

DrawPrimitive primitive_of(Kind kind) {
    DrawPrimitive primitive;
    primitive.kind = kind;
    return primitive;
}

SPErr push_state_stack(DRAWBOT_SurfaceRef surface) noexcept {
    return surface_call(KS_NAME(PushStateStack), surface, [](DrawCall &call) -> A_Err {
        call.store().states().push();
        return call.record(primitive_of(Kind::kPushState));
    });
}

SPErr pop_state_stack(DRAWBOT_SurfaceRef surface) noexcept {
    return surface_call(KS_NAME(PopStateStack), surface, [](DrawCall &call) -> A_Err {
        if (!call.store().pop_state(call.host_call().command())) return A_Err_PARAMETER;
        return call.record(primitive_of(Kind::kPopState));
    });
}

SPErr paint_rect(DRAWBOT_SurfaceRef surface, const DRAWBOT_ColorRGBA *color,
                 const DRAWBOT_RectF32 *rect) noexcept {
    return surface_call(KS_NAME(PaintRect), surface, [&](DrawCall &call) -> A_Err {
        DrawPrimitive painted = primitive_of(Kind::kPaintRect);
        if (!call.read(color, painted.color) || !call.read(rect, painted.rect)) {
            return A_Err_PARAMETER;
        }
        return call.record(std::move(painted));
    });
}

SPErr fill_path(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path,
                DRAWBOT_FillType type) noexcept {
    return surface_call(KS_NAME(FillPath), surface, [&](DrawCall &call) -> A_Err {
        const BrushObject *filling = call.find<BrushObject>(brush);
        const PathObject *figure = call.find<PathObject>(path);
        const bool even_odd = type == kDRAWBOT_FillType_EvenOdd;
        if (filling == nullptr || figure == nullptr ||
            (!even_odd && type != kDRAWBOT_FillType_Winding)) {
            return A_Err_PARAMETER;
        }
        DrawPrimitive filled = primitive_of(Kind::kFillPath);
        filled.color = filling->color;
        filled.path = figure->path;
        filled.even_odd = even_odd;
        return call.record(std::move(filled));
    });
}

SPErr stroke_path(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen, DRAWBOT_PathRef path) noexcept {
    return surface_call(KS_NAME(StrokePath), surface, [&](DrawCall &call) -> A_Err {
        const PenObject *drawing = call.find<PenObject>(pen);
        const PathObject *figure = call.find<PathObject>(path);
        if (drawing == nullptr || figure == nullptr) return A_Err_PARAMETER;
        DrawPrimitive stroked = primitive_of(Kind::kStrokePath);
        stroked.color = drawing->color;
        stroked.width = drawing->width;
        stroked.dashes = drawing->dashes;
        stroked.path = figure->path;
        return call.record(std::move(stroked));
    });
}

Bounds bounds_of(const DRAWBOT_Rect32 &rect) {
    return {static_cast<double>(rect.left), static_cast<double>(rect.top),
            static_cast<double>(rect.left) + rect.width,
            static_cast<double>(rect.top) + rect.height};
}

/// Both edges within ±2^29, so that their difference is an int.
DRAWBOT_Rect32 rect_of(const Bounds &bounds) {
    if (bounds.empty()) return {0, 0, 0, 0};
    constexpr double kLimit = 536870912.0;
    const auto whole = [=](double edge) {
        return static_cast<int>(std::clamp(edge, -kLimit, kLimit));
    };
    const int left = whole(bounds.left), top = whole(bounds.top);
    return {left, top, whole(bounds.right) - left, whole(bounds.bottom) - top};
}

SPErr clip(DRAWBOT_SurfaceRef surface, DRAWBOT_SupplierRef supplier,
           const DRAWBOT_Rect32 *rect) noexcept {
    return surface_call(KS_NAME(Clip), surface, [&](DrawCall &call) -> A_Err {
        if (call.find<SupplierObject>(supplier) == nullptr || rect == nullptr) {
            return A_Err_PARAMETER;
        }
        call.store().states().clip(bounds_of(*rect));
        DrawPrimitive clipped = primitive_of(Kind::kClip);
        clipped.rect = {static_cast<float>(rect->left), static_cast<float>(rect->top),
                        static_cast<float>(rect->width), static_cast<float>(rect->height)};
        return call.record(std::move(clipped));
    });
}

/// In the coordinates of the present transform.
SPErr get_clip_bounds(DRAWBOT_SurfaceRef surface, DRAWBOT_Rect32 *result) noexcept {
    return surface_call(KS_NAME(GetClipBounds), surface, [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = rect_of(call.store().states().clip_bounds());
        return A_Err_NONE;
    });
}

/// Whether all of the rectangle can be drawn on.
SPErr is_within_clip_bounds(DRAWBOT_SurfaceRef surface, const DRAWBOT_Rect32 *rect,
                            DRAWBOT_Boolean *result) noexcept {
    return surface_call(KS_NAME(IsWithinClipBounds), surface, [&](DrawCall &call) -> A_Err {
        if (rect == nullptr || result == nullptr) return A_Err_PARAMETER;
        const Bounds asked = bounds_of(*rect), clip = call.store().states().clip_bounds();
        const bool within = !clip.empty() && asked.left >= clip.left && asked.top >= clip.top &&
                            asked.right <= clip.right && asked.bottom <= clip.bottom;
        *result = within ? 1 : 0;
        return A_Err_NONE;
    });
}

/// Put in front of the present transform. Refused: anything that is not affine.
SPErr transform(DRAWBOT_SurfaceRef surface, const DRAWBOT_MatrixF32 *matrix) noexcept {
    return surface_call(KS_NAME(Transform), surface, [&](DrawCall &call) -> A_Err {
        if (matrix == nullptr) return A_Err_PARAMETER;
        DrawPrimitive moved = primitive_of(Kind::kTransform);
        for (std::size_t row = 0; row < 3; ++row) {
            const float *from = matrix->mat[row];
            if (!call.finite({from[0], from[1], from[2]}, "matrix")) return A_Err_PARAMETER;
            moved.matrix[row] = {from[0], from[1], from[2]};
        }
        const auto &m = moved.matrix;
        if (m[0][2] != 0 || m[1][2] != 0 || m[2][2] != 1) return A_Err_PARAMETER;
        SurfaceState &state = call.store().states().now();
        state.transform = state.transform.after(Affine::from_matrix(m));
        return call.record(std::move(moved));
    });
}

bool in_range(int value, int highest) {
    return value >= 0 && value <= highest;
}

SPErr draw_string(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_FontRef font,
                  const DRAWBOT_UTF16Char *string, const DRAWBOT_PointF32 *origin,
                  DRAWBOT_TextAlignment alignment, DRAWBOT_TextTruncation truncation,
                  float truncation_width) noexcept {
    return surface_call(KS_NAME(DrawString), surface, [&](DrawCall &call) -> A_Err {
        const BrushObject *filling = call.find<BrushObject>(brush);
        const FontObject *lettering = call.find<FontObject>(font);
        DrawPoint point;
        if (filling == nullptr || lettering == nullptr || string == nullptr ||
            !in_range(alignment, kHighestAlignment) || !in_range(truncation, kHighestTruncation) ||
            !call.read(origin, point) || !call.finite({truncation_width}, "truncation width")) {
            return A_Err_PARAMETER;
        }
        std::size_t length = 0;
        while (length < kLongestText && string[length] != 0) ++length;
        DrawPrimitive text = primitive_of(Kind::kText);
        text.text = utf8_from_utf16(std::u16string_view(string, length));
        text.rect = {point.x, point.y, 0, 0};
        text.color = filling->color;
        text.width = lettering->size;
        text.alignment = alignment;
        text.truncation = truncation;
        text.truncation_width = truncation_width;
        return call.record(std::move(text));
    });
}

SPErr draw_image(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image, const DRAWBOT_PointF32 *origin,
                 float alpha) noexcept {
    return surface_call(KS_NAME(DrawImage), surface, [&](DrawCall &call) -> A_Err {
        const ImageObject *shown = call.find<ImageObject>(image);
        DrawPoint point;
        if (shown == nullptr || !call.read(origin, point) || !call.finite({alpha}, "alpha")) {
            return A_Err_PARAMETER;
        }
        DrawPrimitive drawn = primitive_of(Kind::kImage);
        drawn.image = shown->image;
        drawn.rect = {point.x, point.y, 0, 0};
        drawn.color.alpha = alpha;
        return call.record(std::move(drawn));
    });
}

/// Sets one of the policies, and records whether it asks for more than none.
SPErr set_policy(const char *name, DRAWBOT_SurfaceRef surface, int SurfaceState::*member, Kind kind,
                 int policy) noexcept {
    return surface_call(name, surface, [&](DrawCall &call) -> A_Err {
        if (!in_range(policy, kHighestPolicy)) return A_Err_PARAMETER;
        call.store().states().now().*member = policy;
        DrawPrimitive chosen = primitive_of(kind);
        chosen.on = policy != 0;
        return call.record(std::move(chosen));
    });
}

SPErr get_policy(const char *name, DRAWBOT_SurfaceRef surface, int SurfaceState::*member,
                 int *result) noexcept {
    return surface_call(name, surface, [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = call.store().states().now().*member;
        return A_Err_NONE;
    });
}

SPErr set_interpolation_policy(DRAWBOT_SurfaceRef surface,
                               DRAWBOT_InterpolationPolicy policy) noexcept {
    return set_policy(KS_NAME(SetInterpolationPolicy), surface, &SurfaceState::interpolation,
                      Kind::kInterpolation, policy);
}
SPErr get_interpolation_policy(DRAWBOT_SurfaceRef surface,
                               DRAWBOT_InterpolationPolicy *result) noexcept {
    return get_policy(KS_NAME(GetInterpolationPolicy), surface, &SurfaceState::interpolation,
                      result);
}
SPErr set_antialias_policy(DRAWBOT_SurfaceRef surface, DRAWBOT_AntiAliasPolicy policy) noexcept {
    return set_policy(KS_NAME(SetAntiAliasPolicy), surface, &SurfaceState::antialias,
                      Kind::kAntiAlias, policy);
}
SPErr get_antialias_policy(DRAWBOT_SurfaceRef surface, DRAWBOT_AntiAliasPolicy *result) noexcept {
    return get_policy(KS_NAME(GetAntiAliasPolicy), surface, &SurfaceState::antialias, result);
}

/// Everything is drawn at the end of the event anyway.
SPErr flush(DRAWBOT_SurfaceRef surface) noexcept {
    return surface_call(KS_NAME(Flush), surface, [](DrawCall &) -> A_Err { return A_Err_NONE; });
}

/// Window pixels are screen pixels.
SPErr get_transform_to_screen_scale(DRAWBOT_SurfaceRef surface, float *result) noexcept {
    return surface_call(KS_NAME(GetTransformToScreenScale), surface, [&](DrawCall &) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = 1;
        return A_Err_NONE;
    });
}

template <class Suite>
Suite make_table() {
    Suite table{};
    table.PushStateStack = push_state_stack;
    table.PopStateStack = pop_state_stack;
    table.PaintRect = paint_rect;
    table.FillPath = fill_path;
    table.StrokePath = stroke_path;
    table.Clip = clip;
    table.GetClipBounds = get_clip_bounds;
    table.IsWithinClipBounds = is_within_clip_bounds;
    table.Transform = transform;
    table.DrawString = draw_string;
    table.DrawImage = draw_image;
    table.SetInterpolationPolicy = set_interpolation_policy;
    table.GetInterpolationPolicy = get_interpolation_policy;
    table.SetAntiAliasPolicy = set_antialias_policy;
    table.GetAntiAliasPolicy = get_antialias_policy;
    table.Flush = flush;
    return table;
}

}  // namespace

void add_drawbot_surface_suite(SuiteRegistry &suites) {
    // Number 1 ends before the screen scale: calling that slot there is a finding.
    static const auto table1 = with_all_slots(make_table<DRAWBOT_SurfaceSuite1>());
    static const auto table2 = [] {
        auto table = make_table<DRAWBOT_SurfaceSuite2>();
        table.GetTransformToScreenScale = get_transform_to_screen_scale;
        return table;
    }();
    suites.add(kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version1, &table1);
    suites.add(kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2, &table2);
}

}  // namespace stage
