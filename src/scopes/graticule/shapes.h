// What a graticule consists of: an ordered list of shapes to draw. No host types, nothing drawn.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "pixels/pixel_format.h"

namespace ks {

// Opaque colours shared by the graticules.
inline constexpr Colour kGrey{1.0f, 0.4f, 0.4f, 0.4f};
inline constexpr Colour kDarkGrey{1.0f, 0.25f, 0.25f, 0.25f};
inline constexpr Colour kWhite{1.0f, 1.0f, 1.0f, 1.0f};

// All coordinates and lengths are panel pixels, y downwards.

struct LineShape {
    double x1, y1, x2, y2;
    Colour colour;
    float width = 1.0f;
    bool dashed = false;  ///< dashes and gaps of 4 pen widths
};

struct RectangleShape {
    double x, y, width, height;
    Colour fill;
    std::optional<Colour> stroke;
    float pen_width = 0.0f;
};

/// An outlined ellipse in its bounding box.
struct EllipseShape {
    double x, y, width, height;
    Colour colour;
    float pen_width = 1.0f;
};

/// A filled ellipse of `length` x `thickness`, its long axis turned counter-clockwise by `angle`
/// (radians) from the horizontal.
struct MarkerShape {
    double centre_x, centre_y, length, thickness;
    float angle;
    Colour fill;
};

/// Horizontal alignment of a text to its x; the drawing layer's numbers.
enum class TextAnchor { kNear = 0, kCentre = 1, kFar = 2 };

/// `y` is the bottom of the em box, `size` the em height.
struct TextShape {
    double x, y;
    std::string text;
    Colour colour;
    double size;
    TextAnchor anchor = TextAnchor::kNear;
};

using Shape = std::variant<LineShape, RectangleShape, EllipseShape, MarkerShape, TextShape>;

/// Drawn from the first to the last.
using ShapeList = std::vector<Shape>;

}  // namespace ks
