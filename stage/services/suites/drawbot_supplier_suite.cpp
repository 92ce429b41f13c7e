// The supplier: makes pens, brushes, fonts, images and paths, and counts who holds them.
#include "hostapi/suite_names.h"
#include "stage/drawbot/image_layout.h"
#include "stage/ledger/thread_role.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// Hands out a reference to a new object of the supplier's.
template <class Ref, class Object>
SPErr hand_out(DrawCall &call, Ref &result, Object &&object) {
    result = reference_as<Ref>(call.store().add(std::forward<Object>(object)));
    return A_Err_NONE;
}

bool is_supplier(DrawCall &call, DRAWBOT_SupplierRef supplier) {
    return call.find<SupplierObject>(supplier) != nullptr;
}

SPErr new_pen(DrawCall call, DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA *color,
              float width, DRAWBOT_PenRef &result) {
    result = nullptr;
    PenObject pen;
    if (!is_supplier(call, supplier) || !call.read(color, pen.color) ||
        !call.finite({width}, "pen size") || width < 0) {
        return A_Err_PARAMETER;
    }
    pen.width = width;
    return hand_out(call, result, std::move(pen));
}

SPErr new_brush(DrawCall call, DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA *color,
                DRAWBOT_BrushRef &result) {
    result = nullptr;
    BrushObject brush;
    if (!is_supplier(call, supplier) || !call.read(color, brush.color)) return A_Err_PARAMETER;
    return hand_out(call, result, std::move(brush));
}

SPErr new_default_font(DrawCall call, DRAWBOT_SupplierRef supplier, float size,
                       DRAWBOT_FontRef &result) {
    result = nullptr;
    if (!is_supplier(call, supplier) || !call.finite({size}, "font size") || size <= 0) {
        return A_Err_PARAMETER;
    }
    FontObject font;
    font.size = size;
    return hand_out(call, result, std::move(font));
}

SPErr new_image_from_buffer(DrawCall call, DRAWBOT_SupplierRef supplier, int width, int height,
                            int row_bytes, DRAWBOT_PixelLayout layout, const void *data,
                            DRAWBOT_ImageRef &result) {
    result = nullptr;
    if (!is_supplier(call, supplier)) return A_Err_PARAMETER;
    auto copied = image_from_buffer(width, height, row_bytes, layout, data);
    if (!copied) return A_Err_PARAMETER;
    ImageObject image;
    image.image = std::move(*copied);
    return hand_out(call, result, std::move(image));
}

SPErr new_path(DrawCall call, DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef &result) {
    result = nullptr;
    if (!is_supplier(call, supplier)) return A_Err_PARAMETER;
    return hand_out(call, result, PathObject{});
}

SPErr get_default_font_size(DrawCall call, DRAWBOT_SupplierRef supplier, float &result) {
    if (!is_supplier(call, supplier)) return A_Err_PARAMETER;
    result = FontObject{}.size;
    return A_Err_NONE;
}

/// A question to the supplier whose answer is always the same.
template <DRAWBOT_Boolean kAnswer>
SPErr answer(DrawCall call, DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean &result) {
    if (!is_supplier(call, supplier)) return A_Err_PARAMETER;
    result = kAnswer;
    return A_Err_NONE;
}

SPErr retain_object(DrawCall call, DRAWBOT_ObjectRef object) {
    const bool kept = call.store().retain(object, call.command());
    return kept ? A_Err_NONE : A_Err_PARAMETER;
}

SPErr release_object(HostCall &call, DRAWBOT_ObjectRef object) {
    const ThreadRole role = current_thread_role();
    if (role == ThreadRole::kWorker || role == ThreadRole::kRender) {
        return call.error();  // the ledger is the UI thread's
    }
    const bool released = call.host().drawbot.release(object, call.command());
    return released ? A_Err_NONE : A_Err_PARAMETER;
}

constexpr auto supplier_table() {
    CallTable<DRAWBOT_SupplierSuite1, kDRAWBOT_SupplierSuite, kDrawCall> table;
    KS_SERVE(NewPen, new_pen);
    KS_SERVE(NewBrush, new_brush);
    KS_SERVE(SupportsText, answer<1>);
    KS_SERVE(GetDefaultFontSize, get_default_font_size);
    KS_SERVE(NewDefaultFont, new_default_font);
    KS_SERVE(NewImageFromBuffer, new_image_from_buffer);
    KS_SERVE(NewPath, new_path);
    // Both orders are taken; blue first is the one of Windows.
    KS_SERVE(SupportsPixelLayoutBGRA, answer<1>);
    KS_SERVE(PrefersPixelLayoutBGRA, answer<1>);
    KS_SERVE(SupportsPixelLayoutARGB, answer<1>);
    KS_SERVE(PrefersPixelLayoutARGB, answer<0>);
    KS_SERVE(RetainObject, retain_object);
    KS_SERVE_BY(table.kRules.that_release(), ReleaseObject, release_object);
    return table;
}

}  // namespace

void add_drawbot_supplier_suite(SuiteRegistry &suites) {
    offer<supplier_table>(suites, kDRAWBOT_SupplierSuite_Version1);
}

}  // namespace stage
