#include "plugin/draw/gdiplus_double.h"

#include <cstdio>
#include <memory>

#include "draw/gdiplus_flat.h"
#include "support/fake_host.h"

namespace gdiplus_double {

State &state() {
    static State the_state;
    return the_state;
}

namespace {

std::string text_of(const char *text) {
    return text;
}
std::string text_of(double number) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%g", number);
    return buffer;
}
std::string text_of(std::int32_t number) {
    return std::to_string(number);
}
std::string text_of(std::uint32_t colour) {
    char buffer[12];
    std::snprintf(buffer, sizeof buffer, "#%08X", colour);
    return buffer;
}
std::string text_of(const ks::draw::GpPointF &point) {
    return "(" + text_of(double{point.x}) + "," + text_of(double{point.y}) + ")";
}
// An object by its kind and number; "null" for none, and a complaint about a dead one.
std::string text_of(const void *object) {
    if (object == nullptr) return "null";
    const auto found = state().alive.find(object);
    if (found != state().alive.end()) return found->second;
    state().misuse.push_back("use of a dead object");
    return "dead";
}
template <class Object>
requires std::is_class_v<Object> std::string text_of(Object *object) {
    return text_of(static_cast<const void *>(object));
}

// Notes a call; its status is 0, or what the test asks for.
template <class... Arguments>
ks::draw::GpStatus call(const char *name, const Arguments &...arguments) {
    std::string line = name;
    ((line += " " + text_of(arguments)), ...);
    fake::FakeHost::current()->calls.note(line);
    if (state().throws == name) throw 99;
    const auto fault = state().fails.find(name);
    return fault == state().fails.end() ? 0 : fault->second;
}

// The object that a successful call makes.
template <class Object>
ks::draw::GpStatus make(ks::draw::GpStatus status, const char *kind, Object **object) {
    if (status != 0) return status;
    auto *const place = new char;  // only its address counts
    *object = reinterpret_cast<Object *>(place);
    state().alive[place] = kind + std::to_string(++state().made);
    return 0;
}

template <class Object>
ks::draw::GpStatus destroy(const char *name, Object *object) {
    const ks::draw::GpStatus status = call(name, object);
    if (state().alive.erase(object) != 0) delete reinterpret_cast<char *>(object);
    return status;
}

std::string ascii(const char16_t *units, std::int32_t count) {
    std::string text;
    for (std::int32_t i = 0; i < count; ++i) {
        char unit[8];
        std::snprintf(unit, sizeof unit, units[i] < 0x80 ? "%c" : "\\%04X", units[i]);
        text += unit;
    }
    return "'" + text + "'";
}

std::string listed(const ks::draw::GpPointF *points, std::int32_t count) {
    std::string text;
    for (std::int32_t i = 0; i < count; ++i) text += text_of(points[i]);
    return text;
}

}  // namespace
}  // namespace gdiplus_double

namespace ks::draw {

using gdiplus_double::ascii;
using gdiplus_double::call;
using gdiplus_double::destroy;
using gdiplus_double::listed;
using gdiplus_double::make;

GpStatus GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height, std::int32_t stride,
                                   std::int32_t format, std::uint8_t *pixels, GpImage **image) {
    gdiplus_double::state().raster = pixels;
    return make(call("GdipCreateBitmapFromScan0", width, height, stride, format), "image", image);
}
GpStatus GdipDisposeImage(GpImage *image) {
    return destroy("GdipDisposeImage", image);
}
GpStatus GdipGetImageGraphicsContext(GpImage *image, GpGraphics **graphics) {
    return make(call("GdipGetImageGraphicsContext", image), "graphics", graphics);
}
GpStatus GdipDeleteGraphics(GpGraphics *graphics) {
    return destroy("GdipDeleteGraphics", graphics);
}
GpStatus GdipSetCompositingMode(GpGraphics *graphics, std::int32_t mode) {
    return call("GdipSetCompositingMode", graphics, mode);
}
GpStatus GdipSetCompositingQuality(GpGraphics *graphics, std::int32_t quality) {
    return call("GdipSetCompositingQuality", graphics, quality);
}
GpStatus GdipSetSmoothingMode(GpGraphics *graphics, std::int32_t mode) {
    return call("GdipSetSmoothingMode", graphics, mode);
}
GpStatus GdipSetTextRenderingHint(GpGraphics *graphics, std::int32_t hint) {
    return call("GdipSetTextRenderingHint", graphics, hint);
}
GpStatus GdipScaleWorldTransform(GpGraphics *graphics, float x, float y, std::int32_t order) {
    return call("GdipScaleWorldTransform", graphics, x, y, order);
}
GpStatus GdipGraphicsClear(GpGraphics *graphics, std::uint32_t colour) {
    return call("GdipGraphicsClear", graphics, colour);
}

GpStatus GdipCreatePen1(std::uint32_t colour, float width, std::int32_t unit, GpPen **pen) {
    return make(call("GdipCreatePen1", colour, width, unit), "pen", pen);
}
GpStatus GdipCreatePen2(GpBrush *brush, float width, std::int32_t unit, GpPen **pen) {
    return make(call("GdipCreatePen2", brush, width, unit), "pen", pen);
}
GpStatus GdipSetPenDashArray(GpPen *pen, const float *lengths, std::int32_t count) {
    std::string list;
    for (std::int32_t i = 0; i < count; ++i) list += std::to_string(lengths[i]).substr(0, 3) + " ";
    return call("GdipSetPenDashArray", pen, list.c_str(), count);
}
GpStatus GdipDeletePen(GpPen *pen) {
    return destroy("GdipDeletePen", pen);
}
GpStatus GdipCreateSolidFill(std::uint32_t colour, GpBrush **brush) {
    return make(call("GdipCreateSolidFill", colour), "brush", brush);
}
GpStatus GdipCreateLineBrush(const GpPointF *start, const GpPointF *end, std::uint32_t start_colour,
                             std::uint32_t end_colour, std::int32_t wrap_mode, GpBrush **brush) {
    return make(call("GdipCreateLineBrush", *start, *end, start_colour, end_colour, wrap_mode),
                "brush", brush);
}
GpStatus GdipDeleteBrush(GpBrush *brush) {
    return destroy("GdipDeleteBrush", brush);
}

GpStatus GdipDrawLine(GpGraphics *graphics, GpPen *pen, float x1, float y1, float x2, float y2) {
    return call("GdipDrawLine", graphics, pen, x1, y1, x2, y2);
}
GpStatus GdipDrawRectangle(GpGraphics *graphics, GpPen *pen, float x, float y, float width,
                           float height) {
    return call("GdipDrawRectangle", graphics, pen, x, y, width, height);
}
GpStatus GdipFillRectangle(GpGraphics *graphics, GpBrush *brush, float x, float y, float width,
                           float height) {
    return call("GdipFillRectangle", graphics, brush, x, y, width, height);
}
GpStatus GdipDrawEllipse(GpGraphics *graphics, GpPen *pen, float x, float y, float width,
                         float height) {
    return call("GdipDrawEllipse", graphics, pen, x, y, width, height);
}
GpStatus GdipDrawClosedCurve2(GpGraphics *graphics, GpPen *pen, const GpPointF *points,
                              std::int32_t count, float tension) {
    return call("GdipDrawClosedCurve2", graphics, pen, listed(points, count).c_str(), tension);
}
GpStatus GdipFillClosedCurve2(GpGraphics *graphics, GpBrush *brush, const GpPointF *points,
                              std::int32_t count, float tension, std::int32_t fill_mode) {
    return call("GdipFillClosedCurve2", graphics, brush, listed(points, count).c_str(), tension,
                fill_mode);
}

GpStatus GdipCreateFontFamilyFromName(const char16_t *name, GpFontCollection *collection,
                                      GpFontFamily **family) {
    const auto length = static_cast<std::int32_t>(std::u16string(name).size());
    return make(call("GdipCreateFontFamilyFromName", ascii(name, length).c_str(), collection),
                "family", family);
}
GpStatus GdipDeleteFontFamily(GpFontFamily *family) {
    return destroy("GdipDeleteFontFamily", family);
}
GpStatus GdipCreateFont(const GpFontFamily *family, float em_size, std::int32_t style,
                        std::int32_t unit, GpFont **font) {
    return make(call("GdipCreateFont", family, em_size, style, unit), "font", font);
}
GpStatus GdipDeleteFont(GpFont *font) {
    return destroy("GdipDeleteFont", font);
}
GpStatus GdipCreateStringFormat(std::int32_t flags, std::uint16_t language,
                                GpStringFormat **format) {
    return make(call("GdipCreateStringFormat", flags, std::int32_t{language}), "format", format);
}
GpStatus GdipSetStringFormatAlign(GpStringFormat *format, std::int32_t alignment) {
    return call("GdipSetStringFormatAlign", format, alignment);
}
GpStatus GdipDeleteStringFormat(GpStringFormat *format) {
    return destroy("GdipDeleteStringFormat", format);
}
GpStatus GdipDrawString(GpGraphics *graphics, const char16_t *text, std::int32_t length,
                        const GpFont *font, const GpRectF *layout, const GpStringFormat *format,
                        const GpBrush *brush) {
    return call("GdipDrawString", graphics, ascii(text, length).c_str(), length, font,
                GpPointF{layout->x, layout->y}, GpPointF{layout->width, layout->height}, format,
                brush);
}

}  // namespace ks::draw
