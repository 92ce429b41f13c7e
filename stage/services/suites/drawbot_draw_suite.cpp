// The small Drawbot suites: where an event draws, and what can be set on pens and images.
#include "hostapi/suite_names.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

constexpr int kMaxDashes = 1024;

SPErr get_supplier(DRAWBOT_DrawRef drawing, DRAWBOT_SupplierRef *result) noexcept {
    return draw_call("DRAWBOT Draw Suite.GetSupplier", [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        if (call.find<DrawingObject>(drawing) == nullptr) return A_Err_PARAMETER;
        *result = reference_as<DRAWBOT_SupplierRef>(call.store().supplier());
        return A_Err_NONE;
    });
}

SPErr get_surface(DRAWBOT_DrawRef drawing, DRAWBOT_SurfaceRef *result) noexcept {
    return draw_call("DRAWBOT Draw Suite.GetSurface", [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        if (call.find<DrawingObject>(drawing) == nullptr) return A_Err_PARAMETER;
        *result = reference_as<DRAWBOT_SurfaceRef>(call.store().surface());
        return A_Err_NONE;
    });
}

/// No dashes is a solid line. Refused: negative lengths, and patterns that draw and skip nothing.
SPErr set_dash_pattern(DRAWBOT_PenRef pen, const float *dashes, int count) noexcept {
    return draw_call("DRAWBOT Pen Suite.SetDashPattern", [&](DrawCall &call) -> A_Err {
        PenObject *found = call.find<PenObject>(pen);
        const bool possible = count == 0 || (count > 0 && count <= kMaxDashes && dashes != nullptr);
        if (found == nullptr || !possible) return A_Err_PARAMETER;
        double sum = 0;
        for (int i = 0; i < count; ++i) {
            if (!call.finite({dashes[i]}, "dash") || dashes[i] < 0) return A_Err_PARAMETER;
            sum += dashes[i];
        }
        if (count > 0 && sum == 0) return A_Err_PARAMETER;
        found->dashes.assign(dashes, dashes + count);
        return A_Err_NONE;
    });
}

SPErr set_scale_factor(DRAWBOT_ImageRef image, float factor) noexcept {
    return draw_call("DRAWBOT Image Suite.SetScaleFactor", [&](DrawCall &call) -> A_Err {
        ImageObject *found = call.find<ImageObject>(image);
        if (found == nullptr || !call.finite({factor}, "scale factor") || factor <= 0) {
            return A_Err_PARAMETER;
        }
        found->image.scale_factor = factor;
        return A_Err_NONE;
    });
}

constexpr DRAWBOT_DrawbotSuite1 kDrawSuite{.GetSupplier = get_supplier, .GetSurface = get_surface};
constexpr DRAWBOT_PenSuite1 kPenSuite{.SetDashPattern = set_dash_pattern};
constexpr DRAWBOT_ImageSuite1 kImageSuite{.SetScaleFactor = set_scale_factor};

}  // namespace

void add_drawbot_draw_suites(SuiteRegistry &suites) {
    suites.add(kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1, &kDrawSuite);
    suites.add(kDRAWBOT_PenSuite, kDRAWBOT_PenSuite_Version1, &kPenSuite);
    suites.add(kDRAWBOT_ImageSuite, kDRAWBOT_ImageSuite_Version1, &kImageSuite);
}

}  // namespace stage
