#include <cmath>

#include "draw/draw_surface.h"
#include "draw/gdiplus_objects.h"
#include "hostapi/constants.h"
#include "pixels/depth.h"

namespace ks::draw {
namespace {

constexpr float kTension = 1.0f;  // of closed curves

float to_float(double value) {
    return static_cast<float>(value);
}

void stroke_line(double x1, double y1, double x2, double y2, const OwnedPen &pen,
                 DrawSurface &surface) {
    note_status(surface, GdipDrawLine(native_graphics(surface), pen.get(), to_float(x1),
                                      to_float(y1), to_float(x2), to_float(y2)));
}

void stroke_ellipse(double x, double y, double width, double height, const Colour &colour,
                    float pen_width, DrawSurface &surface) {
    const OwnedPen pen = make_pen(surface, colour, pen_width);
    note_status(surface, GdipDrawEllipse(native_graphics(surface), pen.get(), to_float(x),
                                         to_float(y), to_float(width), to_float(height)));
}

}  // namespace

std::uint32_t pack_colour(const Colour &colour) {
    const Pixel8 bytes = from_colour<Pixel8>(colour);
    return std::uint32_t{bytes.alpha} << 24 | std::uint32_t{bytes.blue} << 16 |
           std::uint32_t{bytes.green} << 8 | bytes.red;
}

PF_Err clear_surface(const Colour &colour, DrawSurface &surface) {
    note_status(surface, GdipGraphicsClear(native_graphics(surface), pack_colour(colour)));
    return PF_Err_NONE;
}

PF_Err draw_line(double x1, double y1, double x2, double y2, const Colour &colour, float width,
                 DrawSurface &surface) {
    stroke_line(x1, y1, x2, y2, make_pen(surface, colour, width), surface);
    return PF_Err_NONE;
}

PF_Err draw_dashed_line(double x1, double y1, double x2, double y2, const Colour &colour,
                        float width, const DashPattern &dashes, DrawSurface &surface) {
    const OwnedPen pen = make_pen(surface, colour, width);
    note_status(surface, GdipSetPenDashArray(pen.get(), dashes.lengths, dashes.count));
    stroke_line(x1, y1, x2, y2, pen, surface);
    return PF_Err_NONE;
}

PF_Err draw_gradient_line(double x1, double y1, double x2, double y2, const Colour *start,
                          const Colour *end, float width, DrawSurface &surface) {
    constexpr Colour kNone{};
    // One pixel beyond both ends, so that the tiling shows neither end the other's colour.
    const double dx = x1 >= x2 ? 1.0 : -1.0;
    const double dy = y1 >= y2 ? 1.0 : -1.0;
    const GpPointF from{to_float(x1 + dx), to_float(y1 + dy)};
    const GpPointF to{to_float(x2 - dx), to_float(y2 - dy)};
    GpBrush *gradient = nullptr;
    note_status(surface,
                GdipCreateLineBrush(&from, &to, pack_colour(start ? *start : kNone),
                                    pack_colour(end ? *end : kNone), kWrapModeTile, &gradient));
    const OwnedBrush brush(gradient);
    GpPen *pen = nullptr;
    note_status(surface, GdipCreatePen2(brush.get(), width, kUnitWorld, &pen));
    stroke_line(x1, y1, x2, y2, OwnedPen(pen), surface);
    return PF_Err_NONE;
}

PF_Err draw_rectangle(double x, double y, double width, double height, const Colour *fill,
                      const Colour *stroke, float pen_width, DrawSurface &surface) {
    GpGraphics *const graphics = native_graphics(surface);
    const GpRectF area{to_float(x), to_float(y), to_float(width), to_float(height)};
    if (fill != nullptr) {
        const OwnedBrush brush = make_solid_brush(surface, *fill);
        note_status(surface, GdipFillRectangle(graphics, brush.get(), area.x, area.y, area.width,
                                               area.height));
    }
    if (stroke != nullptr) {
        const OwnedPen pen = make_pen(surface, *stroke, pen_width);
        note_status(surface, GdipDrawRectangle(graphics, pen.get(), area.x, area.y, area.width,
                                               area.height));
    }
    return PF_Err_NONE;
}

PF_Err draw_ellipse(double x, double y, double width, double height, const Colour &colour,
                    float pen_width, DrawSurface &surface) {
    stroke_ellipse(x, y, width, height, colour, pen_width, surface);
    return PF_Err_NONE;
}

PF_Err draw_circle(double centre_x, double centre_y, double radius, const Colour &colour,
                   float pen_width, DrawSurface &surface) {
    const double rx = radius / (surface.den_x * surface.pixel_aspect);
    const double ry = radius / surface.den_y;
    stroke_ellipse(centre_x - rx, centre_y - ry, 2.0 * rx, 2.0 * ry, colour, pen_width, surface);
    return PF_Err_NONE;
}

PF_Err draw_closed_curve(double centre_x, double centre_y, double width, double height, float angle,
                         const Colour *fill, const Colour *stroke, float pen_width,
                         DrawSurface &surface) {
    GpGraphics *const graphics = native_graphics(surface);
    const double hw = width * 0.5;
    const double hh = height * 0.5;
    const double c = std::cos(double{angle});
    const double s = std::sin(double{angle});
    const GpPointF vertices[4] = {{to_float(centre_x - c * hw), to_float(centre_y + s * hw)},
                                  {to_float(centre_x + s * hh), to_float(centre_y + c * hh)},
                                  {to_float(centre_x + c * hw), to_float(centre_y - s * hw)},
                                  {to_float(centre_x - s * hh), to_float(centre_y - c * hh)}};
    // The reverse order of draw_rectangle, on purpose: the fill covers the outline's inner half.
    if (stroke != nullptr) {
        const OwnedPen pen = make_pen(surface, *stroke, pen_width);
        note_status(surface, GdipDrawClosedCurve2(graphics, pen.get(), vertices, 4, kTension));
    }
    if (fill != nullptr) {
        const OwnedBrush brush = make_solid_brush(surface, *fill);
        note_status(surface, GdipFillClosedCurve2(graphics, brush.get(), vertices, 4, kTension,
                                                  kFillModeAlternate));
    }
    return PF_Err_NONE;
}

}  // namespace ks::draw
