#include "plugin/ui/event_host.h"

namespace fake {

void EventHost::fill_conversions() {
    PF_EventCallbacks &cbs = extra.cbs;
    cbs.refcon = this;
    // The layer lies at (window.layer_x, window.layer_y) in the composition.
    cbs.layer_to_comp = [](void *refcon, PF_ContextH ctx, A_long time, A_long scale,
                           PF_FixedPoint *point) {
        point->x += current()->window.layer_x * 65536;
        point->y += current()->window.layer_y * 65536;
        return in_time("layer_to_comp", refcon, ctx, time, scale);
    };
    cbs.comp_to_layer = [](void *refcon, PF_ContextH ctx, A_long time, A_long scale,
                           PF_FixedPoint *point) {
        point->x -= current()->window.layer_x * 65536;
        point->y -= current()->window.layer_y * 65536;
        return in_time("comp_to_layer", refcon, ctx, time, scale);
    };
    cbs.source_to_frame = [](void *refcon, PF_ContextH ctx, PF_FixedPoint *point) {
        const expected::Window &w = current()->window;
        point->x = static_cast<A_long>(std::int64_t{point->x} * w.zoom_num / w.zoom_den +
                                       std::int64_t{w.pan_x} * 65536);
        point->y = static_cast<A_long>(std::int64_t{point->y} * w.zoom_num / w.zoom_den +
                                       std::int64_t{w.pan_y} * 65536);
        return convert("source_to_frame", refcon, ctx);
    };
    cbs.frame_to_source = [](void *refcon, PF_ContextH ctx, PF_FixedPoint *point) {
        const expected::Window &w = current()->window;
        point->x = static_cast<A_long>((point->x - std::int64_t{w.pan_x} * 65536) * w.zoom_den /
                                       w.zoom_num);
        point->y = static_cast<A_long>((point->y - std::int64_t{w.pan_y} * 65536) * w.zoom_den /
                                       w.zoom_num);
        return convert("frame_to_source", refcon, ctx);
    };
}

void EventHost::fill_suites() {
    ansi_.fabs = [](A_FpLong value) {
        current()->host.calls.note("fabs");
        return std::fabs(value);
    };
    custom_ui_.PF_GetDrawingReference = [](PF_ContextH, DRAWBOT_DrawRef *ref) {
        *ref = reference<DRAWBOT_DrawRef>(current()->draw_reference);
        return step("PF_GetDrawingReference");
    };
    fill_theme();
    fill_drawbot();
    host.suites[{kPFANSISuite, 1}] = &ansi_;
    host.suites[{kPFEffectCustomUISuite, 1}] = &custom_ui_;
    host.suites[{kPFEffectCustomUIOverlayThemeSuite, 1}] = &theme_;
    host.suites[{kDRAWBOT_DrawSuite, 1}] = &draw_;
    host.suites[{kDRAWBOT_SupplierSuite, 1}] = &supplier_;
    host.suites[{kDRAWBOT_SurfaceSuite, 1}] = &surface_;
    host.suites[{kDRAWBOT_PathSuite, 1}] = &paths_;
}

void EventHost::fill_theme() {
    theme_.PF_GetPreferredForegroundColor = [](DRAWBOT_ColorRGBA *colour) {
        *colour = {1.f, 1.f, 0.f, 1.f};
        return step("PF_GetPreferredForegroundColor");
    };
    theme_.PF_FillPath = [](DRAWBOT_DrawRef ref, DRAWBOT_PathRef path, PF_Boolean shadow) {
        expect_ref(ref, kDraw);
        expect_path(path);
        return step(std::string("FillPath shadow ") + (shadow != 0 ? "on" : "off"));
    };
    theme_.PF_StrokePath = [](DRAWBOT_DrawRef ref, DRAWBOT_PathRef path, PF_Boolean shadow) {
        expect_ref(ref, kDraw);
        expect_path(path);
        return step(std::string("StrokePath shadow ") + (shadow != 0 ? "on" : "off"));
    };
}

void EventHost::fill_drawbot() {
    draw_.GetSupplier = [](DRAWBOT_DrawRef ref, DRAWBOT_SupplierRef *supplier) {
        expect_ref(ref, kDraw);
        *supplier = reference<DRAWBOT_SupplierRef>(kSupplier);
        return step("GetSupplier");
    };
    draw_.GetSurface = [](DRAWBOT_DrawRef ref, DRAWBOT_SurfaceRef *surface) {
        expect_ref(ref, kDraw);
        *surface = reference<DRAWBOT_SurfaceRef>(kSurface);
        return step("GetSurface");
    };
    supplier_.NewPath = [](DRAWBOT_SupplierRef ref, DRAWBOT_PathRef *path) {
        expect_ref(ref, kSupplier);
        const PF_Err error = step("NewPath");
        if (error != 0 || current()->null_path) return error;
        *path = reference<DRAWBOT_PathRef>(current()->next_path_);
        current()->live_paths.insert(current()->next_path_++);
        return error;
    };
    supplier_.ReleaseObject = [](DRAWBOT_ObjectRef object) {
        expect_path(object);
        current()->live_paths.erase(reinterpret_cast<std::uintptr_t>(object));
        return step("ReleaseObject");
    };
    paths_.MoveTo = [](DRAWBOT_PathRef path, float x, float y) {
        expect_path(path);
        return step("MoveTo" + numbers({x, y}));
    };
    paths_.LineTo = [](DRAWBOT_PathRef path, float x, float y) {
        expect_path(path);
        return step("LineTo" + numbers({x, y}));
    };
    surface_.PaintRect = [](DRAWBOT_SurfaceRef ref, const DRAWBOT_ColorRGBA *c,
                            const DRAWBOT_RectF32 *r) {
        expect_ref(ref, kSurface);
        return step("PaintRect" + numbers({r->left, r->top, r->width, r->height}) + " in" +
                    numbers({c->red, c->green, c->blue, c->alpha}));
    };
}

}  // namespace fake
