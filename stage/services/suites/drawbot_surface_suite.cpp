// The surface: drawing and its state, recorded into the list of the open draw event.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "hostapi/suite_names.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"
#include "stage/text/utf16.h"

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

SPErr push_state_stack(DrawCall call, DRAWBOT_SurfaceRef surface) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    call.store().states().push();
    return call.record(primitive_of(Kind::kPushState));
}

SPErr pop_state_stack(DrawCall call, DRAWBOT_SurfaceRef surface) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    if (!call.store().pop_state(call.command())) return A_Err_PARAMETER;
    return call.record(primitive_of(Kind::kPopState));
}

SPErr paint_rect(DrawCall call, DRAWBOT_SurfaceRef surface, const DRAWBOT_ColorRGBA *color,
                 const DRAWBOT_RectF32 *rect) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    DrawPrimitive painted = primitive_of(Kind::kPaintRect);
    if (!call.read(color, painted.color) || !call.read(rect, painted.rect)) {
        return A_Err_PARAMETER;
    }
    return call.record(std::move(painted));
}

SPErr fill_path(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush,
                DRAWBOT_PathRef path, DRAWBOT_FillType type) {
    if (!call.on(surface)) return A_Err_PARAMETER;
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
}

SPErr stroke_path(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen,
                  DRAWBOT_PathRef path) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    const PenObject *drawing = call.find<PenObject>(pen);
    const PathObject *figure = call.find<PathObject>(path);
    if (drawing == nullptr || figure == nullptr) return A_Err_PARAMETER;
    DrawPrimitive stroked = primitive_of(Kind::kStrokePath);
    stroked.color = drawing->color;
    stroked.width = drawing->width;
    stroked.dashes = drawing->dashes;
    stroked.path = figure->path;
    return call.record(std::move(stroked));
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

SPErr clip(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_SupplierRef supplier,
           const DRAWBOT_Rect32 &rect) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    if (call.find<SupplierObject>(supplier) == nullptr) return A_Err_PARAMETER;
    call.store().states().clip(bounds_of(rect));
    DrawPrimitive clipped = primitive_of(Kind::kClip);
    clipped.rect = {static_cast<float>(rect.left), static_cast<float>(rect.top),
                    static_cast<float>(rect.width), static_cast<float>(rect.height)};
    return call.record(std::move(clipped));
}

/// In the coordinates of the present transform.
SPErr get_clip_bounds(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_Rect32 &result) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    result = rect_of(call.store().states().clip_bounds());
    return A_Err_NONE;
}

/// Whether all of the rectangle can be drawn on.
SPErr is_within_clip_bounds(DrawCall call, DRAWBOT_SurfaceRef surface, const DRAWBOT_Rect32 &rect,
                            DRAWBOT_Boolean &result) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    const Bounds asked = bounds_of(rect), clip = call.store().states().clip_bounds();
    const bool within = !clip.empty() && asked.left >= clip.left && asked.top >= clip.top &&
                        asked.right <= clip.right && asked.bottom <= clip.bottom;
    result = within ? 1 : 0;
    return A_Err_NONE;
}

/// Put in front of the present transform. Refused: anything that is not affine.
SPErr transform(DrawCall call, DRAWBOT_SurfaceRef surface, const DRAWBOT_MatrixF32 &matrix) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    DrawPrimitive moved = primitive_of(Kind::kTransform);
    for (std::size_t row = 0; row < 3; ++row) {
        const float *from = matrix.mat[row];
        if (!call.finite({from[0], from[1], from[2]}, "matrix")) return A_Err_PARAMETER;
        moved.matrix[row] = {from[0], from[1], from[2]};
    }
    const auto &m = moved.matrix;
    if (m[0][2] != 0 || m[1][2] != 0 || m[2][2] != 1) return A_Err_PARAMETER;
    SurfaceState &state = call.store().states().now();
    state.transform = state.transform.after(Affine::from_matrix(m));
    return call.record(std::move(moved));
}

bool in_range(int value, int highest) {
    return value >= 0 && value <= highest;
}

SPErr draw_string(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush,
                  DRAWBOT_FontRef font, const DRAWBOT_UTF16Char *string,
                  const DRAWBOT_PointF32 *origin, DRAWBOT_TextAlignment alignment,
                  DRAWBOT_TextTruncation truncation, float truncation_width) {
    if (!call.on(surface)) return A_Err_PARAMETER;
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
}

SPErr draw_image(DrawCall call, DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image,
                 const DRAWBOT_PointF32 *origin, float alpha) {
    if (!call.on(surface)) return A_Err_PARAMETER;
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
}

/// One of the policies, a member of the state that is pushed and popped. Its change is recorded as
/// kKind: whether it asks for more than none.
template <int SurfaceState::*kPolicy, Kind kKind>
SPErr set_policy(DrawCall call, DRAWBOT_SurfaceRef surface, int policy) {
    if (!call.on(surface) || !in_range(policy, kHighestPolicy)) return A_Err_PARAMETER;
    call.store().states().now().*kPolicy = policy;
    DrawPrimitive chosen = primitive_of(kKind);
    chosen.on = policy != 0;
    return call.record(std::move(chosen));
}

template <int SurfaceState::*kPolicy>
SPErr get_policy(DrawCall call, DRAWBOT_SurfaceRef surface, int &result) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    result = call.store().states().now().*kPolicy;
    return A_Err_NONE;
}

/// Everything is drawn at the end of the event anyway.
SPErr flush(DrawCall call, DRAWBOT_SurfaceRef surface) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    return A_Err_NONE;
}

/// Window pixels are screen pixels.
SPErr get_transform_to_screen_scale(DrawCall call, DRAWBOT_SurfaceRef surface, float &result) {
    if (!call.on(surface)) return A_Err_PARAMETER;
    result = 1;
    return A_Err_NONE;
}

template <class Suite>
constexpr auto surface_table() {
    CallTable<Suite, kDRAWBOT_SurfaceSuite, kDrawCall> table;
    KS_SERVE(PushStateStack, push_state_stack);
    KS_SERVE(PopStateStack, pop_state_stack);
    KS_SERVE(PaintRect, paint_rect);
    KS_SERVE(FillPath, fill_path);
    KS_SERVE(StrokePath, stroke_path);
    KS_SERVE(Clip, clip);
    KS_SERVE(GetClipBounds, get_clip_bounds);
    KS_SERVE(IsWithinClipBounds, is_within_clip_bounds);
    KS_SERVE(Transform, transform);
    KS_SERVE(DrawString, draw_string);
    KS_SERVE(DrawImage, draw_image);
    KS_SERVE(SetInterpolationPolicy,
             set_policy<&SurfaceState::interpolation, Kind::kInterpolation>);
    KS_SERVE(GetInterpolationPolicy, get_policy<&SurfaceState::interpolation>);
    KS_SERVE(SetAntiAliasPolicy, set_policy<&SurfaceState::antialias, Kind::kAntiAlias>);
    KS_SERVE(GetAntiAliasPolicy, get_policy<&SurfaceState::antialias>);
    KS_SERVE(Flush, flush);
    // Number 1 ends before the screen scale: calling that slot there is a finding.
    if constexpr (std::is_same_v<Suite, DRAWBOT_SurfaceSuite2>) {
        KS_SERVE(GetTransformToScreenScale, get_transform_to_screen_scale);
    }
    return table;
}

}  // namespace

void add_drawbot_surface_suite(SuiteRegistry &suites) {
    offer<surface_table<DRAWBOT_SurfaceSuite1>>(suites, kDRAWBOT_SurfaceSuite_Version1);
    offer<surface_table<DRAWBOT_SurfaceSuite2>>(suites, kDRAWBOT_SurfaceSuite_Version2);
}

}  // namespace stage
