// Primitives as lines of text, for recordings and messages.
#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "stage/drawbot/draw_list.h"

namespace stage {
namespace {

using Kind = DrawPrimitive::Kind;

std::string number(double value) {
    return fmt::format("{:g}", value);
}

template <class... Numbers>
std::string numbers(Numbers... values) {
    std::string text;
    ((text += (text.empty() ? "" : " ") + number(values)), ...);
    return text;
}

std::string color_text(const DrawColor &color) {
    return "color " + numbers(color.red, color.green, color.blue, color.alpha);
}

std::string step_text(const PathStep &step) {
    const auto &[a, b, c] = step.points;
    switch (step.kind) {
        case PathStep::Kind::kMove:
            return "move " + numbers(a.x, a.y);
        case PathStep::Kind::kLine:
            return "line " + numbers(a.x, a.y);
        case PathStep::Kind::kCurve:
            return "curve " + numbers(a.x, a.y, b.x, b.y, c.x, c.y);
        case PathStep::Kind::kClose:
            break;
    }
    return "close";
}

std::string path_text(const DrawPath &path) {
    std::string text;
    for (const PathStep &step : path) text += (text.empty() ? ": " : ", ") + step_text(step);
    return text.empty() ? ": empty" : text;
}

std::string rect_text(const DrawPrimitive::Rect &rect) {
    return numbers(rect.left, rect.top, rect.width, rect.height);
}

std::string shadow_text(const DrawPrimitive &primitive) {
    return primitive.shadow ? ", shadow" : "";
}

std::string stroke_text(const DrawPrimitive &primitive) {
    std::string text = "stroke " + number(primitive.width);
    for (const float dash : primitive.dashes) text += ", dash " + number(dash);
    return text + ", " + color_text(primitive.color) + path_text(primitive.path);
}

std::string image_text(const DrawPrimitive &primitive) {
    const DrawImage &image = primitive.image;
    std::string text = "image " + std::to_string(image.width) + "x" + std::to_string(image.height) +
                       " at " + numbers(primitive.rect.left, primitive.rect.top) + ", alpha " +
                       number(primitive.color.alpha);
    if (image.scale_factor != 1) text += ", scale " + number(image.scale_factor);
    return text;
}

std::string string_text(const DrawPrimitive &primitive) {
    constexpr std::string_view kAlignments[] = {"", ", centred", ", right"};
    constexpr std::string_view kTruncations[] = {"", ", cut", ", ellipsis", ", ellipsis inside"};
    const auto pick = [](const auto &names, int index) {
        return std::string(index >= 0 && index < static_cast<int>(std::size(names)) ? names[index]
                                                                                    : ", ?");
    };
    std::string text = "text \"" + primitive.text + "\" at " +
                       numbers(primitive.rect.left, primitive.rect.top) + ", size " +
                       number(primitive.width) + pick(kAlignments, primitive.alignment);
    if (primitive.truncation != 0) {
        text +=
            pick(kTruncations, primitive.truncation) + " at " + number(primitive.truncation_width);
    }
    return text + ", " + color_text(primitive.color);
}

std::string matrix_text(const DrawPrimitive &primitive) {
    std::string text = "transform";
    for (const auto &row : primitive.matrix) text += " " + numbers(row[0], row[1], row[2]);
    return text;
}

}  // namespace

std::string to_text(const DrawPrimitive &primitive) {
    const DrawPrimitive &p = primitive;
    switch (p.kind) {
        case Kind::kPaintRect:
            return "paint rect " + rect_text(p.rect) + ", " + color_text(p.color);
        case Kind::kFillPath:
            return (p.even_odd ? "fill even-odd, " : "fill, ") + color_text(p.color) +
                   path_text(p.path);
        case Kind::kStrokePath:
            return stroke_text(p);
        case Kind::kThemeFill:
            return "theme fill" + shadow_text(p) + path_text(p.path);
        case Kind::kThemeStroke:
            return "theme stroke" + shadow_text(p) + path_text(p.path);
        case Kind::kThemeVertex:
            return "theme vertex" + shadow_text(p) + ": " + numbers(p.rect.left, p.rect.top);
        case Kind::kImage:
            return image_text(p);
        case Kind::kText:
            return string_text(p);
        case Kind::kPushState:
            return "push state";
        case Kind::kPopState:
            return "pop state";
        case Kind::kClip:
            return "clip " + rect_text(p.rect);
        case Kind::kTransform:
            return matrix_text(p);
        case Kind::kAntiAlias:
            return p.on ? "antialias on" : "antialias off";
        case Kind::kInterpolation:
            return p.on ? "interpolation on" : "interpolation off";
    }
    return "?";
}

std::string to_text(const DrawList &list) {
    std::string text;
    for (const DrawPrimitive &primitive : list.primitives) text += to_text(primitive) + "\n";
    return text;
}

}  // namespace stage
