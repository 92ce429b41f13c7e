#include "stage/drawbot/painter_text_cairo.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "hostapi/constants.h"
#include "stage/drawbot/overlay_painter.h"
#include "stage/text/utf16.h"

namespace stage {
namespace {

constexpr const char *kFamily = "sans-serif";
constexpr double kSmallest = 0.1, kLargest = 2000;  // window pixels
constexpr char16_t kEllipsis = u'\u2026';

double scale_of(cairo_t *cairo) {
    cairo_matrix_t m;
    cairo_get_matrix(cairo, &m);
    return std::max({std::abs(m.xx), std::abs(m.yx), std::abs(m.xy), std::abs(m.yy)});
}

double width_of(cairo_t *cairo, const std::u16string &text) {
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, utf8_from_utf16(text).c_str(), &extents);
    return extents.x_advance;
}

/// The first `count` units, or for an ellipsis inside as many of both ends, with the mark where
/// some are missing.
std::u16string shortened(const std::u16string &text, std::size_t count, int truncation) {
    if (truncation == kDRAWBOT_TextTruncation_End) return text.substr(0, count);
    if (truncation == kDRAWBOT_TextTruncation_EndEllipsis) return text.substr(0, count) + kEllipsis;
    const std::size_t tail = count / 2;
    return text.substr(0, count - tail) + kEllipsis + text.substr(text.size() - tail);
}

/// The longest form that is no wider than the primitive says.
std::u16string fitted(cairo_t *cairo, const std::u16string &text, const DrawPrimitive &primitive) {
    const double limit = primitive.truncation_width;
    if (primitive.truncation == kDRAWBOT_TextTruncation_None || width_of(cairo, text) <= limit) {
        return text;
    }
    std::size_t fits = 0, too_long = text.size();
    while (too_long - fits > 1) {
        const std::size_t middle = fits + (too_long - fits) / 2;
        const bool is_short =
            width_of(cairo, shortened(text, middle, primitive.truncation)) <= limit;
        (is_short ? fits : too_long) = middle;
    }
    return shortened(text, fits, primitive.truncation);
}

/// Part of the text's width that lies left of the origin.
double part_before(int alignment) {
    if (alignment == kDRAWBOT_TextAlignment_Center) return 0.5;
    return alignment == kDRAWBOT_TextAlignment_Right ? 1.0 : 0.0;
}

}  // namespace

void show_text(cairo_t *cairo, const DrawPrimitive &primitive) {
    const double size = primitive.width * scale_of(cairo);
    if (!(size >= kSmallest && size <= kLargest)) return;
    cairo_select_font_face(cairo, kFamily, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, primitive.width);
    const std::u16string text = fitted(cairo, utf16_from_utf8(primitive.text), primitive);
    const double before = width_of(cairo, text) * part_before(primitive.alignment);
    cairo_move_to(cairo, primitive.rect.left - before, primitive.rect.top);
    cairo_show_text(cairo, utf8_from_utf16(text).c_str());
}

void forget_fonts() {
    cairo_debug_reset_static_data();
    FcFini();
}

}  // namespace stage
