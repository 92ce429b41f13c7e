// What an effect drew into a window with Drawbot and the overlay theme: primitives in order, as
// plain values. Coordinates are window pixels, y downward; pixel (x, y) covers x..x+1.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace stage {

/// 0..1 each, straight alpha.
struct DrawColor {
    float red = 0, green = 0, blue = 0, alpha = 1;
    bool operator==(const DrawColor &) const = default;
};

struct DrawPoint {
    float x = 0, y = 0;
    bool operator==(const DrawPoint &) const = default;
};

/// One step of a path. kMove and kLine use points[0], kCurve all three (cubic), kClose none.
/// Rectangles and arcs are taken apart when they are added.
struct PathStep {
    enum class Kind { kMove, kLine, kCurve, kClose };
    Kind kind = Kind::kMove;
    std::array<DrawPoint, 3> points{};
    bool operator==(const PathStep &) const = default;
};
using DrawPath = std::vector<PathStep>;

/// Pixels of an image as handed over, straight alpha, 0xAARRGGBB, rows from the top.
struct DrawImage {
    int width = 0, height = 0;
    std::vector<std::uint32_t> argb;
    float scale_factor = 1;  ///< image pixels per window pixel
    bool operator==(const DrawImage &) const = default;
};

/// One thing drawn, or one change of the drawing state. Which members count follows from the kind.
struct DrawPrimitive {
    enum class Kind {
        kPaintRect,    ///< rect, color
        kFillPath,     ///< path, color (of the brush), even_odd
        kStrokePath,   ///< path, color and width (of the pen), dashes
        kThemeFill,    ///< path, shadow: theme colours
        kThemeStroke,  ///< path, shadow: theme colours and stroke width
        kThemeVertex,  ///< rect.left, rect.top: the centre; shadow: a square of the theme's size
        kImage,        ///< image, rect.left, rect.top, color.alpha
        kText,         ///< text at the base line's point rect.left, rect.top; width: font size;
                       ///< color, alignment, truncation, truncation_width
        kPushState,    ///< clip, transform and antialiasing are kept
        kPopState,
        kClip,           ///< rect
        kTransform,      ///< matrix is put in front of the present one
        kAntiAlias,      ///< on; off at first. The theme's drawing is always smooth
        kInterpolation,  ///< on: images are smoothed; off at first
    };
    struct Rect {
        float left = 0, top = 0, width = 0, height = 0;
        bool operator==(const Rect &) const = default;
    };

    Kind kind = Kind::kPaintRect;
    Rect rect;
    DrawColor color;
    DrawPath path;
    float width = 1;  ///< of the pen, or the font's size, pixels
    std::vector<float> dashes;
    bool even_odd = false;
    bool shadow = false;
    bool on = true;
    std::string text;            ///< UTF-8
    int alignment = 0;           ///< kDRAWBOT_TextAlignment_*
    int truncation = 0;          ///< kDRAWBOT_TextTruncation_*
    float truncation_width = 0;  ///< pixels
    DrawImage image;
    /// Row vectors: [x y 1] * matrix, so the translation is matrix[2][0], matrix[2][1].
    std::array<std::array<float, 3>, 3> matrix{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

    bool operator==(const DrawPrimitive &) const = default;
};

/// Everything drawn in one draw event, in order.
struct DrawList {
    std::vector<DrawPrimitive> primitives;
    bool operator==(const DrawList &) const = default;
};

/// "theme fill, shadow: move 10 20, line 10 8, close"; numbers as short as %g writes them.
std::string to_text(const DrawPrimitive &primitive);
/// One line a primitive.
std::string to_text(const DrawList &list);

}  // namespace stage
