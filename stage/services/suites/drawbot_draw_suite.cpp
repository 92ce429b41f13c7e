// The small Drawbot suites: where an event draws, and what can be set on pens and images.
#include "hostapi/suite_names.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

constexpr int kMaxDashes = 1024;

SPErr get_supplier(DrawCall call, DRAWBOT_DrawRef drawing, DRAWBOT_SupplierRef &result) {
    result = nullptr;
    if (call.find<DrawingObject>(drawing) == nullptr) return A_Err_PARAMETER;
    result = reference_as<DRAWBOT_SupplierRef>(call.store().supplier());
    return A_Err_NONE;
}

SPErr get_surface(DrawCall call, DRAWBOT_DrawRef drawing, DRAWBOT_SurfaceRef &result) {
    result = nullptr;
    if (call.find<DrawingObject>(drawing) == nullptr) return A_Err_PARAMETER;
    result = reference_as<DRAWBOT_SurfaceRef>(call.store().surface());
    return A_Err_NONE;
}

/// No dashes is a solid line. Refused: negative lengths, and patterns that draw and skip nothing.
SPErr set_dash_pattern(DrawCall call, DRAWBOT_PenRef pen, const float *dashes, int count) {
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
}

SPErr set_scale_factor(DrawCall call, DRAWBOT_ImageRef image, float factor) {
    ImageObject *found = call.find<ImageObject>(image);
    if (found == nullptr || !call.finite({factor}, "scale factor") || factor <= 0) {
        return A_Err_PARAMETER;
    }
    found->image.scale_factor = factor;
    return A_Err_NONE;
}

constexpr auto draw_table() {
    CallTable<DRAWBOT_DrawbotSuite1, kDRAWBOT_DrawSuite, kDrawCall> table;
    KS_SERVE(GetSupplier, get_supplier);
    KS_SERVE(GetSurface, get_surface);
    return table;
}

constexpr auto pen_table() {
    CallTable<DRAWBOT_PenSuite1, kDRAWBOT_PenSuite, kDrawCall> table;
    KS_SERVE(SetDashPattern, set_dash_pattern);
    return table;
}

constexpr auto image_table() {
    CallTable<DRAWBOT_ImageSuite1, kDRAWBOT_ImageSuite, kDrawCall> table;
    KS_SERVE(SetScaleFactor, set_scale_factor);
    return table;
}

}  // namespace

void add_drawbot_draw_suites(SuiteRegistry &suites) {
    offer<draw_table>(suites, kDRAWBOT_DrawSuite_Version1);
    offer<pen_table>(suites, kDRAWBOT_PenSuite_Version1);
    offer<image_table>(suites, kDRAWBOT_ImageSuite_Version1);
}

}  // namespace stage
