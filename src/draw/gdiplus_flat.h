// The part of GDI+'s flat interface that the drawing layer calls, declared as its public reference
// gives it. The host process has GDI+ started; nothing here starts or stops it. [host thread]
//
// Every function returns a status: 0 is Ok. A null object is refused with kInvalidParameter.
#pragma once

#include <cstdint>

namespace ks::draw {

using GpStatus = std::int32_t;
inline constexpr GpStatus kInvalidParameter = 2;

inline constexpr std::int32_t kPixelFormat32bppPARGB = 0xE200B;
inline constexpr std::int32_t kUnitWorld = 0;
inline constexpr std::int32_t kUnitPixel = 2;
inline constexpr std::int32_t kFontStyleRegular = 0;
inline constexpr std::int32_t kCompositingModeSourceOver = 0;
inline constexpr std::int32_t kCompositingQualityHighSpeed = 1;
inline constexpr std::int32_t kCompositingQualityHighQuality = 2;
inline constexpr std::int32_t kSmoothingModeHighSpeed = 1;
inline constexpr std::int32_t kSmoothingModeHighQuality = 2;
inline constexpr std::int32_t kTextRenderingHintSystemDefault = 0;
inline constexpr std::int32_t kTextRenderingHintAntiAlias = 4;
inline constexpr std::int32_t kWrapModeTile = 0;
inline constexpr std::int32_t kFillModeAlternate = 0;
inline constexpr std::int32_t kMatrixOrderPrepend = 0;
inline constexpr std::uint16_t kLanguageNeutral = 0;

struct GpPointF {
    float x, y;
};
struct GpRectF {
    float x, y, width, height;
};

// Objects of the library, known by their addresses only.
struct GpImage;
struct GpGraphics;
struct GpPen;
struct GpBrush;
struct GpFontCollection;
struct GpFontFamily;
struct GpFont;
struct GpStringFormat;

extern "C" {

// Images and graphics. `pixels` is borrowed for as long as the graphics object made from the image
// lives; `stride` is bytes per row.
GpStatus GdipCreateBitmapFromScan0(std::int32_t width, std::int32_t height, std::int32_t stride,
                                   std::int32_t format, std::uint8_t *pixels, GpImage **image);
GpStatus GdipDisposeImage(GpImage *image);
GpStatus GdipGetImageGraphicsContext(GpImage *image, GpGraphics **graphics);
GpStatus GdipDeleteGraphics(GpGraphics *graphics);
GpStatus GdipSetCompositingMode(GpGraphics *graphics, std::int32_t mode);
GpStatus GdipSetCompositingQuality(GpGraphics *graphics, std::int32_t quality);
GpStatus GdipSetSmoothingMode(GpGraphics *graphics, std::int32_t mode);
GpStatus GdipSetTextRenderingHint(GpGraphics *graphics, std::int32_t hint);
GpStatus GdipScaleWorldTransform(GpGraphics *graphics, float x, float y, std::int32_t order);
GpStatus GdipGraphicsClear(GpGraphics *graphics, std::uint32_t colour);

// Pens and brushes. Dash lengths are multiples of the pen width.
GpStatus GdipCreatePen1(std::uint32_t colour, float width, std::int32_t unit, GpPen **pen);
GpStatus GdipCreatePen2(GpBrush *brush, float width, std::int32_t unit, GpPen **pen);
GpStatus GdipSetPenDashArray(GpPen *pen, const float *lengths, std::int32_t count);
GpStatus GdipDeletePen(GpPen *pen);
GpStatus GdipCreateSolidFill(std::uint32_t colour, GpBrush **brush);
GpStatus GdipCreateLineBrush(const GpPointF *start, const GpPointF *end, std::uint32_t start_colour,
                             std::uint32_t end_colour, std::int32_t wrap_mode, GpBrush **brush);
GpStatus GdipDeleteBrush(GpBrush *brush);

// Shapes.
GpStatus GdipDrawLine(GpGraphics *graphics, GpPen *pen, float x1, float y1, float x2, float y2);
GpStatus GdipDrawRectangle(GpGraphics *graphics, GpPen *pen, float x, float y, float width,
                           float height);
GpStatus GdipFillRectangle(GpGraphics *graphics, GpBrush *brush, float x, float y, float width,
                           float height);
GpStatus GdipDrawEllipse(GpGraphics *graphics, GpPen *pen, float x, float y, float width,
                         float height);
GpStatus GdipDrawClosedCurve2(GpGraphics *graphics, GpPen *pen, const GpPointF *points,
                              std::int32_t count, float tension);
GpStatus GdipFillClosedCurve2(GpGraphics *graphics, GpBrush *brush, const GpPointF *points,
                              std::int32_t count, float tension, std::int32_t fill_mode);

// Text. Strings are UTF-16 units; `length` -1 means up to the terminating zero.
GpStatus GdipCreateFontFamilyFromName(const char16_t *name, GpFontCollection *collection,
                                      GpFontFamily **family);
GpStatus GdipDeleteFontFamily(GpFontFamily *family);
GpStatus GdipCreateFont(const GpFontFamily *family, float em_size, std::int32_t style,
                        std::int32_t unit, GpFont **font);
GpStatus GdipDeleteFont(GpFont *font);
GpStatus GdipCreateStringFormat(std::int32_t flags, std::uint16_t language,
                                GpStringFormat **format);
GpStatus GdipSetStringFormatAlign(GpStringFormat *format, std::int32_t alignment);
GpStatus GdipDeleteStringFormat(GpStringFormat *format);
GpStatus GdipDrawString(GpGraphics *graphics, const char16_t *text, std::int32_t length,
                        const GpFont *font, const GpRectF *layout, const GpStringFormat *format,
                        const GpBrush *brush);

}  // extern "C"

}  // namespace ks::draw
