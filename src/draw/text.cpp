#include "draw/draw_surface.h"
#include "draw/gdiplus_objects.h"
#include "draw/wide_text.h"
#include "hostapi/constants.h"

namespace ks::draw {
namespace {

// Arial from the system's fonts; null, with a status noted, where there is none.
OwnedFont make_font(DrawSurface &surface, float em_size) {
    GpFontFamily *arial = nullptr;
    note_status(surface, GdipCreateFontFamilyFromName(u"Arial", nullptr, &arial));
    const OwnedFontFamily family(arial);
    GpFont *font = nullptr;
    note_status(surface,
                GdipCreateFont(family.get(), em_size, kFontStyleRegular, kUnitPixel, &font));
    return OwnedFont(font);
}

OwnedStringFormat make_format(DrawSurface &surface, TextAlign align) {
    GpStringFormat *format = nullptr;
    note_status(surface, GdipCreateStringFormat(0, kLanguageNeutral, &format));
    note_status(surface, GdipSetStringFormatAlign(format, static_cast<std::int32_t>(align)));
    return OwnedStringFormat(format);
}

// What glyphs are stretched by horizontally to keep their shape on the surface's pixels.
float glyph_stretch(const DrawSurface &surface) {
    const float downsampling =
        static_cast<float>(surface.den_x) / static_cast<float>(surface.den_y);
    return static_cast<float>(1.0 / (downsampling * surface.pixel_aspect));
}

}  // namespace

PF_Err draw_text(double x, double y, std::string text, const Colour &colour, float font_size,
                 TextAlign align, DrawSurface &surface) {
    // The length is kept in 16 bits; a text whose length turns negative there is not drawn.
    const auto length = static_cast<std::int16_t>(text.size());
    if (length < 0) {
        note_status(surface, kInvalidParameter);
        return PF_Err_NONE;
    }
    GpGraphics *const graphics = native_graphics(surface);
    const OwnedBrush brush = make_solid_brush(surface, colour);
    const std::u16string wide = widen(text, length);
    const OwnedFont font = make_font(surface, font_size);
    const OwnedStringFormat format = make_format(surface, align);

    const float stretch = glyph_stretch(surface);
    const bool stretched = stretch != 1.0f;
    // Near and centred text keep their x although the transform moves it too: scopes place their
    // labels with that in mind.
    if (stretched && align == TextAlign::kFar) x /= stretch;
    const GpRectF origin{static_cast<float>(x), static_cast<float>(y - font_size), 0.0f, 0.0f};
    if (stretched) {
        note_status(surface, GdipScaleWorldTransform(graphics, stretch, 1.0f, kMatrixOrderPrepend));
    }
    note_status(surface, GdipDrawString(graphics, wide.c_str(), length, font.get(), &origin,
                                        format.get(), brush.get()));
    if (stretched) {
        note_status(surface,
                    GdipScaleWorldTransform(graphics, 1.0f / stretch, 1.0f, kMatrixOrderPrepend));
    }
    return PF_Err_NONE;
}

}  // namespace ks::draw
