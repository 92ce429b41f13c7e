// An offscreen raster made from a host world, drawn on with GDI+ and copied back. The scopes'
// graticules and labels are drawn with it.
//
// Coordinates and lengths are pixels of the world, y downwards; pen widths and font sizes are
// surface pixels. Colours are straight ARGB, components nominally 0..1: above 1 they count as 1,
// below 0 they wrap (see pack_colour). All of it: [host thread].
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/suite_cache.h"
#include "hostapi/in_out_data.h"
#include "pixels/pixel_format.h"

namespace ks::draw {

/// The GDI+ graphics object, kept in host memory. `last_status` is the latest non-zero status that
/// a primitive met; nothing else is done about it.
struct GraphicsObject {
    void *native = nullptr;
    std::int32_t last_status = 0;
};
static_assert(sizeof(GraphicsObject) == 16);

/// One drawing pass. The caller sets the fields from `format` on before create_surface; the first
/// three and `suites` belong to this layer.
struct DrawSurface {
    PF_Handle raster = nullptr;           ///< width * 4 bytes per row, red green blue alpha
    PF_Handle graphics_memory = nullptr;  ///< holds *graphics
    GraphicsObject *graphics = nullptr;
    PF_PixelFormat format = 0;  ///< of `world`
    PF_EffectWorld world{};     ///< the target; its pixels are borrowed until release_surface
    std::uint32_t den_x = 1;    ///< horizontal downsampling denominator
    std::uint32_t den_y = 1;    ///< vertical downsampling denominator
    double pixel_aspect = 1.0;  ///< pixel width / height
    double scale = 1.0;         ///< drawing scale, for the callers' own use
    /// Held from creation to release, so that a host that refuses its suites in between gets its
    /// memory back all the same.
    std::unique_ptr<SuiteCache> suites;
};

/// A surface description for `world` of format `format` with the resolution and pixel aspect of
/// `in_data`, ready for create_surface. Ratios that the host leaves at zero count as 1.
DrawSurface describe_surface(const PF_InData &in_data, PF_PixelFormat format,
                             const PF_EffectWorld &world, double scale);

/// Copies the world into a new raster and opens GDI+ on it, at the quality of the render. Returns
/// 0; the host's code when it asks to abort; 4 or 512 with a message in return_msg; 516 for an
/// unknown pixel format. After an error nothing is held. Throws 516 without the handle suite.
PF_Err create_surface(PF_InData *in_data, PF_OutData *out_data, DrawSurface &surface);

/// Copies the raster back, fully opaque, and frees everything. Returns 0; the host's code when it
/// asks to abort (nothing is copied then); 512 for a surface without raster (nothing is freed); 516
/// for an unknown format (the world is left alone). To be called exactly once per creation.
PF_Err release_surface(PF_InData *in_data, PF_OutData *out_data, DrawSurface &surface);

/// Dash and gap lengths in multiples of the pen width.
struct DashPattern {
    const float *lengths;
    std::int32_t count;
};

/// Horizontal text alignment, GDI+'s numbers.
enum class TextAlign : std::int32_t { kNear = 0, kCentre = 1, kFar = 2 };

// The primitives always return 0: a failure of GDI+ is kept in last_status and drawing goes on.
// `fill` and `stroke` may be null: nothing is filled, or outlined.

PF_Err clear_surface(const Colour &colour, DrawSurface &surface);
PF_Err draw_line(double x1, double y1, double x2, double y2, const Colour &colour, float width,
                 DrawSurface &surface);
PF_Err draw_dashed_line(double x1, double y1, double x2, double y2, const Colour &colour,
                        float width, const DashPattern &dashes, DrawSurface &surface);
/// Both ends show their full colour. A null colour counts as all channels 0.
PF_Err draw_gradient_line(double x1, double y1, double x2, double y2, const Colour *start,
                          const Colour *end, float width, DrawSurface &surface);
/// Fill first, then outline, over the same rectangle.
PF_Err draw_rectangle(double x, double y, double width, double height, const Colour *fill,
                      const Colour *stroke, float pen_width, DrawSurface &surface);
/// The outline of the ellipse in that bounding box.
PF_Err draw_ellipse(double x, double y, double width, double height, const Colour &colour,
                    float pen_width, DrawSurface &surface);
/// Round in square full-resolution pixels, whatever the surface's own pixels are.
PF_Err draw_circle(double centre_x, double centre_y, double radius, const Colour &colour,
                   float pen_width, DrawSurface &surface);
/// A rotated ellipse: a closed cardinal spline of tension 1 through its four vertices. `angle` in
/// radians, counter-clockwise. Outline first, then fill, so that the fill covers its inner half.
PF_Err draw_closed_curve(double centre_x, double centre_y, double width, double height, float angle,
                         const Colour *fill, const Colour *stroke, float pen_width,
                         DrawSurface &surface);
/// Text in Arial, `font_size` the em height. `y` is the bottom of the em box. The glyphs keep their
/// shape on downsampled or non-square pixels. With far alignment `x` is the right end; there, and
/// only there, it is corrected for that scaling.
PF_Err draw_text(double x, double y, std::string text, const Colour &colour, float font_size,
                 TextAlign align, DrawSurface &surface);

/// The 32-bit value that GDI+ takes for `colour`: each channel trunc(min(c * 255, 255)), its low 8
/// bits; alpha in bits 24..31, blue in 16..23, green in 8..15, red in 0..7. Red and blue stand
/// exchanged because the raster's do.
std::uint32_t pack_colour(const Colour &colour);

}  // namespace ks::draw
