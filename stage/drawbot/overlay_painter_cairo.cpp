#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "stage/drawbot/affine.h"
#include "stage/drawbot/overlay_painter.h"
#include "stage/drawbot/painter_text_cairo.h"
#include "stage/drawbot/path_shapes.h"

namespace stage {
namespace {

using Kind = DrawPrimitive::Kind;

constexpr double kLimit = 131072;        // window pixels; cairo's coordinates reach ±2^23
constexpr double kWidestStroke = 8192;   // pixels
constexpr double kShortestDashes = 0.5;  // pixels of a whole pattern; shorter ones are solid
constexpr double kLargestScale = 1e4;    // of a transform

struct SurfaceDeleter {
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
};
struct ContextDeleter {
    void operator()(cairo_t *context) const { cairo_destroy(context); }
};
using SurfacePointer = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using ContextPointer = std::unique_ptr<cairo_t, ContextDeleter>;

/// NaN is 0.
double unit(double value) {
    return value > 0 ? std::min(value, 1.0) : 0;
}

cairo_matrix_t matrix_of(const Affine &map) {
    return {map.xx, map.yx, map.xy, map.yy, map.x0, map.y0};
}

/// Whether cairo can work in these coordinates.
bool is_usable(const Affine &map) {
    const double largest =
        std::max({std::abs(map.xx), std::abs(map.yx), std::abs(map.xy), std::abs(map.yy)});
    const double determinant = std::abs(map.xx * map.yy - map.xy * map.yx);
    return largest <= kLargestScale && determinant > 1e-9 && std::abs(map.x0) <= kLimit &&
           std::abs(map.y0) <= kLimit;
}

bool is_finite(const DrawPath &path) {
    return std::ranges::all_of(path, [](const PathStep &step) {
        return std::ranges::all_of(step.points, [](const DrawPoint &point) {
            return std::isfinite(point.x) && std::isfinite(point.y);
        });
    });
}

bool is_finite(const DrawPrimitive::Rect &rect) {
    return std::isfinite(rect.left) && std::isfinite(rect.top) && std::isfinite(rect.width) &&
           std::isfinite(rect.height);
}

DrawPath rect_path(const DrawPrimitive::Rect &rect) {
    DrawPath path;
    add_rect(path, rect);
    return path;
}

struct State {
    Affine transform;
    std::vector<std::pair<Affine, DrawPrimitive::Rect>> clips;
    bool antialias = false;
    bool interpolate = false;
};

class Painter {
  public:
    Painter(cairo_surface_t *surface, const OverlayTheme &theme)
        : surface_(surface), theme_(theme) {}

    void paint(const DrawPrimitive &primitive);

  private:
    State &now() { return states_.back(); }
    /// A context of its own for each thing painted: what cairo cannot draw spoils nothing else.
    ContextPointer context(bool smooth, const DrawColor &color) const;
    static void add_path(cairo_t *cairo, const DrawPath &path, const Affine &map);
    void fill(const DrawPath &path, const DrawColor &color, bool even_odd, bool smooth,
              double shift_x = 0, double shift_y = 0);
    void stroke(const DrawPath &path, const DrawColor &color, float width,
                const std::vector<float> &dashes, bool smooth, double shift_x = 0,
                double shift_y = 0);
    void paint_theme(const DrawPrimitive &primitive);
    void draw_theme(const DrawPrimitive &primitive, const DrawColor &color, double shift_x,
                    double shift_y);
    void paint_image(const DrawPrimitive &primitive);
    void paint_text(const DrawPrimitive &primitive);

    cairo_surface_t *surface_;
    const OverlayTheme &theme_;
    std::vector<State> states_{1};
};

ContextPointer Painter::context(bool smooth, const DrawColor &color) const {
    ContextPointer cairo(cairo_create(surface_));
    const State &state = states_.back();
    cairo_set_antialias(cairo.get(),
                        state.antialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    for (const auto &[map, rect] : state.clips) {
        add_path(cairo.get(), rect_path(rect), map);
        cairo_clip(cairo.get());
    }
    cairo_set_antialias(cairo.get(), smooth ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_set_source_rgba(cairo.get(), unit(color.red), unit(color.green), unit(color.blue),
                          unit(color.alpha));
    return cairo;
}

/// In window pixels: far points are moved to the limit, which bends only what lies far outside.
void Painter::add_path(cairo_t *cairo, const DrawPath &path, const Affine &map) {
    const auto place = [&](const DrawPoint &point) {
        const Affine::Point moved = map(point.x, point.y);
        const auto limited = [](double value) {
            return value == value ? std::clamp(value, -kLimit, kLimit) : 0.0;
        };
        return Affine::Point{limited(moved.x), limited(moved.y)};
    };
    for (const PathStep &step : path) {
        const Affine::Point a = place(step.points[0]);
        switch (step.kind) {
            case PathStep::Kind::kMove:
                cairo_move_to(cairo, a.x, a.y);
                break;
            case PathStep::Kind::kLine:
                cairo_line_to(cairo, a.x, a.y);
                break;
            case PathStep::Kind::kCurve: {
                const Affine::Point b = place(step.points[1]), c = place(step.points[2]);
                cairo_curve_to(cairo, a.x, a.y, b.x, b.y, c.x, c.y);
                break;
            }
            case PathStep::Kind::kClose:
                cairo_close_path(cairo);
                break;
        }
    }
}

void Painter::fill(const DrawPath &path, const DrawColor &color, bool even_odd, bool smooth,
                   double shift_x, double shift_y) {
    if (!is_finite(path)) return;
    const ContextPointer cairo = context(smooth, color);
    const Affine shift{1, 0, 0, 1, shift_x, shift_y};
    add_path(cairo.get(), path, shift.after(now().transform));
    cairo_set_fill_rule(cairo.get(), even_odd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill(cairo.get());
}

void Painter::stroke(const DrawPath &path, const DrawColor &color, float width,
                     const std::vector<float> &dashes, bool smooth, double shift_x,
                     double shift_y) {
    if (!is_finite(path) || !(width > 0) || !is_usable(now().transform)) return;
    const ContextPointer cairo = context(smooth, color);
    const Affine shift{1, 0, 0, 1, shift_x, shift_y};
    add_path(cairo.get(), path, shift.after(now().transform));
    // The path stands in window pixels; the pen's width and dashes follow the transform.
    const cairo_matrix_t matrix = matrix_of(now().transform);
    cairo_set_matrix(cairo.get(), &matrix);
    cairo_set_line_width(cairo.get(), std::min<double>(width, kWidestStroke));
    std::vector<double> lengths;
    double pattern = 0;
    for (const float dash : dashes) {
        lengths.push_back(dash > 0 ? std::min<double>(dash, kLimit) : 0);
        pattern += lengths.back();
    }
    if (pattern >= kShortestDashes) {
        cairo_set_dash(cairo.get(), lengths.data(), static_cast<int>(lengths.size()), 0);
    }
    cairo_stroke(cairo.get());
}

void Painter::draw_theme(const DrawPrimitive &primitive, const DrawColor &color, double shift_x,
                         double shift_y) {
    if (primitive.kind == Kind::kThemeStroke) {
        stroke(primitive.path, color, theme_.stroke_width, {}, true, shift_x, shift_y);
    } else if (primitive.kind == Kind::kThemeFill) {
        fill(primitive.path, color, false, true, shift_x, shift_y);
    } else {
        const float side = theme_.vertex_size;
        const DrawPrimitive::Rect square{primitive.rect.left - side / 2,
                                         primitive.rect.top - side / 2, side, side};
        if (is_finite(square)) fill(rect_path(square), color, false, true, shift_x, shift_y);
    }
}

void Painter::paint_theme(const DrawPrimitive &primitive) {
    if (primitive.shadow) draw_theme(primitive, theme_.shadow, theme_.shadow_x, theme_.shadow_y);
    draw_theme(primitive, theme_.foreground, 0, 0);
}

std::vector<std::uint32_t> premultiplied(const DrawImage &image) {
    std::vector<std::uint32_t> pixels(image.argb);
    for (std::uint32_t &pixel : pixels) {
        const std::uint32_t alpha = pixel >> 24;
        const auto times = [&](int place) {
            return ((pixel >> place & 0xFF) * alpha + 127) / 255 << place;
        };
        pixel = alpha << 24 | times(16) | times(8) | times(0);
    }
    return pixels;
}

void Painter::paint_image(const DrawPrimitive &primitive) {
    const DrawImage &image = primitive.image;
    const float factor = image.scale_factor;
    const Affine place{1 / factor, 0, 0, 1 / factor, primitive.rect.left, primitive.rect.top};
    const Affine map = now().transform.after(place);
    const bool possible = image.width > 0 && image.height > 0 && factor > 0 && is_usable(map) &&
                          image.argb.size() == static_cast<std::size_t>(image.width) *
                                                   static_cast<std::size_t>(image.height);
    if (!possible) return;
    std::vector<std::uint32_t> pixels = premultiplied(image);
    const SurfacePointer source(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char *>(pixels.data()), CAIRO_FORMAT_ARGB32, image.width,
        image.height, image.width * 4));
    const ContextPointer cairo = context(now().antialias, {});
    const cairo_matrix_t matrix = matrix_of(map);
    cairo_set_matrix(cairo.get(), &matrix);
    cairo_set_source_surface(cairo.get(), source.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo.get()),
                             now().interpolate ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    cairo_paint_with_alpha(cairo.get(), unit(primitive.color.alpha));
}

void Painter::paint_text(const DrawPrimitive &primitive) {
    const double reach = std::max(std::abs(primitive.rect.left), std::abs(primitive.rect.top));
    if (!(reach <= kLimit) || !is_usable(now().transform)) return;
    const ContextPointer cairo = context(true, primitive.color);
    const cairo_matrix_t matrix = matrix_of(now().transform);
    cairo_set_matrix(cairo.get(), &matrix);
    show_text(cairo.get(), primitive);
}

void Painter::paint(const DrawPrimitive &primitive) {
    switch (primitive.kind) {
        case Kind::kPaintRect:
            if (is_finite(primitive.rect)) {
                fill(rect_path(primitive.rect), primitive.color, false, now().antialias);
            }
            break;
        case Kind::kFillPath:
            fill(primitive.path, primitive.color, primitive.even_odd, now().antialias);
            break;
        case Kind::kStrokePath:
            stroke(primitive.path, primitive.color, primitive.width, primitive.dashes,
                   now().antialias);
            break;
        case Kind::kThemeFill:
        case Kind::kThemeStroke:
        case Kind::kThemeVertex:
            paint_theme(primitive);
            break;
        case Kind::kImage:
            paint_image(primitive);
            break;
        case Kind::kText:
            paint_text(primitive);
            break;
        case Kind::kPushState:
            states_.push_back(now());
            break;
        case Kind::kPopState:
            if (states_.size() > 1) states_.pop_back();
            break;
        case Kind::kClip:
            if (is_finite(primitive.rect))
                now().clips.emplace_back(now().transform, primitive.rect);
            break;
        case Kind::kTransform:
            now().transform = now().transform.after(Affine::from_matrix(primitive.matrix));
            break;
        case Kind::kAntiAlias:
            now().antialias = primitive.on;
            break;
        case Kind::kInterpolation:
            now().interpolate = primitive.on;
            break;
    }
}

}  // namespace

void paint_overlay(std::uint32_t *pixels, int width, int height, const DrawList &list,
                   const OverlayTheme &theme) {
    if (width <= 0 || height <= 0 || list.primitives.empty()) return;
    const SurfacePointer surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char *>(pixels), CAIRO_FORMAT_ARGB32, width, height, width * 4));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return;
    Painter painter(surface.get(), theme);
    for (const DrawPrimitive &primitive : list.primitives) painter.paint(primitive);
    cairo_surface_flush(surface.get());
}

}  // namespace stage
