// The supplier: makes pens, brushes, fonts, images and paths, and counts who holds them.
#include "hostapi/suite_names.h"
#include "stage/drawbot/image_layout.h"
#include "stage/ledger/thread_role.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "DRAWBOT Supplier Suite." #function

namespace stage {
namespace {

/// Runs `make(DrawCall &, Object &)`, which fills in a new object of the supplier's; with error 0 a
/// reference to it is handed out.
template <class Object, class Ref, class Make>
SPErr new_object(const char *name, DRAWBOT_SupplierRef supplier, Ref *result, Make make) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        if (call.find<SupplierObject>(supplier) == nullptr) return A_Err_PARAMETER;
        Object object;
        if (const A_Err error = make(call, object)) return error;
        *result = reference_as<Ref>(call.store().add(std::move(object)));
        return A_Err_NONE;
    });
}

/// Runs a question to the supplier that `value` answers.
template <class Value>
SPErr answer(const char *name, DRAWBOT_SupplierRef supplier, Value *result, Value value) noexcept {
    return draw_call(name, [&](DrawCall &call) -> A_Err {
        if (result == nullptr || call.find<SupplierObject>(supplier) == nullptr) {
            return A_Err_PARAMETER;
        }
        *result = value;
        return A_Err_NONE;
    });
}

SPErr new_pen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA *color, float width,
              DRAWBOT_PenRef *result) noexcept {
    return new_object<PenObject>(
        KS_NAME(NewPen), supplier, result, [&](DrawCall &call, PenObject &pen) -> A_Err {
            const bool good = call.read(color, pen.color) && call.finite({width}, "pen size");
            pen.width = width;
            return good && width >= 0 ? A_Err_NONE : A_Err_PARAMETER;
        });
}

SPErr new_brush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA *color,
                DRAWBOT_BrushRef *result) noexcept {
    return new_object<BrushObject>(
        KS_NAME(NewBrush), supplier, result, [&](DrawCall &call, BrushObject &brush) -> A_Err {
            return call.read(color, brush.color) ? A_Err_NONE : A_Err_PARAMETER;
        });
}

SPErr supports_text(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean *result) noexcept {
    return answer(KS_NAME(SupportsText), supplier, result, DRAWBOT_Boolean{1});
}

SPErr get_default_font_size(DRAWBOT_SupplierRef supplier, float *result) noexcept {
    return answer(KS_NAME(GetDefaultFontSize), supplier, result, FontObject{}.size);
}

SPErr new_default_font(DRAWBOT_SupplierRef supplier, float size, DRAWBOT_FontRef *result) noexcept {
    return new_object<FontObject>(
        KS_NAME(NewDefaultFont), supplier, result, [&](DrawCall &call, FontObject &font) -> A_Err {
            font.size = size;
            return call.finite({size}, "font size") && size > 0 ? A_Err_NONE : A_Err_PARAMETER;
        });
}

SPErr new_image_from_buffer(DRAWBOT_SupplierRef supplier, int width, int height, int row_bytes,
                            DRAWBOT_PixelLayout layout, const void *data,
                            DRAWBOT_ImageRef *result) noexcept {
    return new_object<ImageObject>(KS_NAME(NewImageFromBuffer), supplier, result,
                                   [&](DrawCall &, ImageObject &image) -> A_Err {
                                       auto copied = image_from_buffer(width, height, row_bytes,
                                                                       layout, data);
                                       if (!copied) return A_Err_PARAMETER;
                                       image.image = std::move(*copied);
                                       return A_Err_NONE;
                                   });
}

SPErr new_path(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef *result) noexcept {
    return new_object<PathObject>(KS_NAME(NewPath), supplier, result,
                                  [](DrawCall &, PathObject &) -> A_Err { return A_Err_NONE; });
}

// Both orders are taken; blue first is the one of Windows.
SPErr supports_bgra(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean *result) noexcept {
    return answer(KS_NAME(SupportsPixelLayoutBGRA), supplier, result, DRAWBOT_Boolean{1});
}
SPErr prefers_bgra(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean *result) noexcept {
    return answer(KS_NAME(PrefersPixelLayoutBGRA), supplier, result, DRAWBOT_Boolean{1});
}
SPErr supports_argb(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean *result) noexcept {
    return answer(KS_NAME(SupportsPixelLayoutARGB), supplier, result, DRAWBOT_Boolean{1});
}
SPErr prefers_argb(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean *result) noexcept {
    return answer(KS_NAME(PrefersPixelLayoutARGB), supplier, result, DRAWBOT_Boolean{0});
}

SPErr retain_object(DRAWBOT_ObjectRef object) noexcept {
    return draw_call(KS_NAME(RetainObject), [&](DrawCall &call) -> A_Err {
        const bool kept = call.store().retain(object, call.host_call().command());
        return kept ? A_Err_NONE : A_Err_PARAMETER;
    });
}

SPErr release_object(DRAWBOT_ObjectRef object) noexcept {
    HostCall call(KS_NAME(ReleaseObject), Fallible::kCode, Threads::kUiOnly);
    const ThreadRole role = current_thread_role();
    if (role == ThreadRole::kWorker || role == ThreadRole::kRender) {
        return call.result(call.error());  // the ledger is the UI thread's
    }
    return run_release(call, [&] { return call.host().drawbot.release(object, call.command()); });
}

constexpr DRAWBOT_SupplierSuite1 kSupplierSuite{
    .NewPen = new_pen,
    .NewBrush = new_brush,
    .SupportsText = supports_text,
    .GetDefaultFontSize = get_default_font_size,
    .NewDefaultFont = new_default_font,
    .NewImageFromBuffer = new_image_from_buffer,
    .NewPath = new_path,
    .SupportsPixelLayoutBGRA = supports_bgra,
    .PrefersPixelLayoutBGRA = prefers_bgra,
    .SupportsPixelLayoutARGB = supports_argb,
    .PrefersPixelLayoutARGB = prefers_argb,
    .RetainObject = retain_object,
    .ReleaseObject = release_object,
};

}  // namespace

void add_drawbot_supplier_suite(SuiteRegistry &suites) {
    suites.add(kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1, &kSupplierSuite);
}

}  // namespace stage
