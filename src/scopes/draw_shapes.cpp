#include "scopes/draw_shapes.h"

#include <array>

#include "host/error_chain.h"

namespace ks {
namespace {

constexpr std::array<float, 2> kDashLengths{4.0f, 4.0f};
constexpr draw::DashPattern kDashes{kDashLengths.data(), 2};

static_assert(static_cast<int>(TextAnchor::kNear) == static_cast<int>(draw::TextAlign::kNear) &&
              static_cast<int>(TextAnchor::kCentre) == static_cast<int>(draw::TextAlign::kCentre) &&
              static_cast<int>(TextAnchor::kFar) == static_cast<int>(draw::TextAlign::kFar));

/// Draws each kind of shape on one surface.
struct ShapePainter {
    draw::DrawSurface &surface;

    PF_Err operator()(const LineShape &s) const {
        if (!s.dashed) return draw::draw_line(s.x1, s.y1, s.x2, s.y2, s.colour, s.width, surface);
        return draw::draw_dashed_line(s.x1, s.y1, s.x2, s.y2, s.colour, s.width, kDashes, surface);
    }
    PF_Err operator()(const RectangleShape &s) const {
        return draw::draw_rectangle(s.x, s.y, s.width, s.height, &s.fill,
                                    s.stroke ? &*s.stroke : nullptr, s.pen_width, surface);
    }
    PF_Err operator()(const EllipseShape &s) const {
        return draw::draw_ellipse(s.x, s.y, s.width, s.height, s.colour, s.pen_width, surface);
    }
    PF_Err operator()(const MarkerShape &s) const {
        return draw::draw_closed_curve(s.centre_x, s.centre_y, s.length, s.thickness, s.angle,
                                       &s.fill, nullptr, 0.0f, surface);
    }
    PF_Err operator()(const TextShape &s) const {
        return draw::draw_text(s.x, s.y, s.text, s.colour, static_cast<float>(s.size),
                               static_cast<draw::TextAlign>(s.anchor), surface);
    }
};

/// A surface that exists: released by close(), at the latest by the destructor when an exception
/// passes.
class OpenSurface {
  public:
    OpenSurface(PF_InData *in_data, PF_OutData *out_data, draw::DrawSurface &surface)
        : in_data_(in_data), out_data_(out_data), surface_(surface) {}
    ~OpenSurface() {
        if (closed_) return;
        try {
            close();
        } catch (...) {  // the exception under way is the command's result
        }
    }
    OpenSurface(const OpenSurface &) = delete;
    OpenSurface &operator=(const OpenSurface &) = delete;

    PF_Err close() {
        closed_ = true;
        return draw::release_surface(in_data_, out_data_, surface_);
    }

  private:
    PF_InData *in_data_;
    PF_OutData *out_data_;
    draw::DrawSurface &surface_;
    bool closed_ = false;
};

}  // namespace

PF_Err draw_shapes(PF_InData *in_data, PF_OutData *out_data, PF_PixelFormat format,
                   const PF_EffectWorld &panel, double scale, const ShapeList &shapes) {
    draw::DrawSurface surface = draw::describe_surface(*in_data, format, panel, scale);
    if (const PF_Err error = draw::create_surface(in_data, out_data, surface)) return error;
    OpenSurface open(in_data, out_data, surface);
    ErrorChain chain;
    for (const Shape &shape : shapes) {
        chain.step([&] { return std::visit(ShapePainter{surface}, shape); });
    }
    chain.always([&] { return open.close(); });
    return chain.result();
}

}  // namespace ks
