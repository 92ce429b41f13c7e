#include "scopes/graticule/waveform_graticule.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>

#include "geometry/frame_scale.h"
#include "model/scope_kind.h"

namespace ks {
namespace {

/// Guide lines and their labels: amber, a hue that no trace has and that stands out from the grey
/// scale.
constexpr Colour kAmber{1.0f, 0.9f, 0.6f, 0.1f};

constexpr std::size_t kMaxLabels = 9;

/// Labels of one scale, bottom to top, a quarter of full scale apart.
struct LabelSet {
    std::size_t count;
    std::array<const char *, kMaxLabels> text;
};

constexpr LabelSet kIreLabels{9, {"0", "25", "50", "75", "100", "125", "150", "175", "200"}};
constexpr LabelSet kLabels8{5, {"0", "64", "128", "192", "255"}};
constexpr LabelSet kLabels16{5, {"0", "8192", "16384", "24576", "32768"}};
constexpr LabelSet kLabelsF{9, {"0", "0.25", "0.5", "0.75", "1", "1.25", "1.5", "1.75", "2"}};

const LabelSet &label_set(ScaleUnit unit, FormatCode format) {
    if (unit != ScaleUnit::kBitDepth) return kIreLabels;
    if (format == kFormat8) return kLabels8;
    return format == kFormat16 ? kLabels16 : kLabelsF;
}

/// A guide line at `value`, 1.0 being full scale.
struct Guide {
    WaveformGuides group;
    double value;
    const char *label;
    bool label_above;
};

/// The studio range takes 16 of 256 for black but 235 of 255 for white: deliberate. Labels stand on
/// the side of their line that is away from the nearest scale line.
constexpr std::array<Guide, 3> kGuides{{
    {WaveformGuides::kSetup, 0.075, "7.5 IRE", true},
    {WaveformGuides::kStudioRange, 0.0625, "(16)", true},
    {WaveformGuides::kStudioRange, 0.9216, "(235)", false},
}};

constexpr int kExtendedPercent = 103;  ///< from here on the top of the scale has its own line
constexpr std::size_t kFullScaleLine = 4;
constexpr double kBandClearance = 8.5;  ///< pixels that lines above 100 % keep from the top line

/// Part of the em height that digits take up.
constexpr double kDigitHeight = 0.72;

/// Lengths and positions in panel pixels.
struct ScaleGeometry {
    double line_left = 0.0;
    double line_right = 0.0;
    double label_x = 0.0;
    double font_size = 0.0;
    double bottom = 0.0;
    double top = 0.0;        ///< of the area
    double full_span = 0.0;  ///< from value 0 to value 1.0
    double quarter = 0.0;    ///< from one scale line to the next
};

ScaleGeometry scale_geometry(const WaveformScale &scale, const LayoutUnits &units) {
    const TraceArea area = trace_area(scale.panel, units);
    const int right =
        scale.first_column_only ? area.left + (area.right - area.left) / 3 : area.right;
    ScaleGeometry g;
    g.line_left = area.left - 4.0 * units.kx;
    g.line_right = right;
    g.label_x = units.scale * 24.0 * units.kx;
    g.font_size = units.scale * 12.0 * units.ky;
    g.bottom = area.bottom;
    g.top = units.label_band + units.margin_v;
    g.full_span = area.span * scale.value_scale;
    g.quarter = g.full_span * 0.25;
    return g;
}

LineShape scale_line(const ScaleGeometry &g, double y, const Colour &colour) {
    return {g.line_left, y, g.line_right, y, colour, 1.0f, false};
}

/// A scale label left of its line. Numbers end before the line starts; those too long for the
/// margin are centred instead, so that no digit is cut off.
TextShape scale_label(const ScaleGeometry &g, double y, const char *text) {
    const bool fits = std::string(text).find_first_not_of("0123456789") != std::string::npos ||
                      std::string(text).size() <= 3;
    return {g.label_x, y + 4.0,     text,
            kWhite,    g.font_size, fits ? TextAnchor::kFar : TextAnchor::kCentre};
}

/// Where a label at the right end of a line stands.
enum class EndLabel { kOnLine, kAbove, kBelow };

/// Bottom of the em box of such a label, from the line's row, in font sizes. Digits stand a tenth
/// of the em above the box's bottom, parentheses reach as far below it, a fifth is free at the top.
double end_label_drop(EndLabel place) {
    if (place == EndLabel::kOnLine) return 0.14;
    return place == EndLabel::kAbove ? -0.15 : 0.95;
}

TextShape end_label(const ScaleGeometry &g, double y, const std::string &text, const Colour &colour,
                    EndLabel place) {
    return {g.line_right,    y + end_label_drop(place) * g.font_size, text, colour, g.font_size,
            TextAnchor::kFar};
}

/// Lines and their labels, kept apart until all are known.
struct ScaleParts {
    ShapeList lines;
    ShapeList labels;
};

/// Returns the row of the highest scale line that is drawn.
double add_scale_lines(ScaleParts &parts, const ScaleGeometry &g, const WaveformScale &scale) {
    const LabelSet &labels = label_set(scale.unit, scale.format);
    const auto last = static_cast<std::size_t>(top_percent(scale.value_scale) / 25 + 1);
    double highest = g.bottom;
    for (std::size_t i = 0; i <= last && i < labels.count; ++i) {
        const double exact = g.bottom - static_cast<double>(i) * g.quarter;
        if (i > kFullScaleLine && exact < g.top + kBandClearance) continue;
        const double y = std::trunc(exact);
        parts.lines.emplace_back(scale_line(g, y, i % 2 == 0 ? kGrey : kDarkGrey));
        parts.labels.emplace_back(scale_label(g, y, labels.text[i]));
        highest = y;
    }
    return highest;
}

/// The line at the top of an extended scale. Its label stands beside it like the others', or, where
/// it would run into that of the line beneath, on the line's right end.
void add_top_line(ScaleParts &parts, const ScaleGeometry &g, const WaveformScale &scale,
                  double highest) {
    if (top_percent(scale.value_scale) < kExtendedPercent) return;
    const std::string text = top_label(scale.unit, scale.value_scale);
    parts.lines.emplace_back(scale_line(g, g.top, kGrey));
    const bool beside = highest - g.top >= kDigitHeight * g.font_size;
    parts.labels.emplace_back(beside ? scale_label(g, g.top, text.c_str())
                                     : end_label(g, g.top, text, kWhite, EndLabel::kOnLine));
}

void add_guides(ScaleParts &parts, const ScaleGeometry &g, WaveformGuides group) {
    for (const Guide &guide : kGuides) {
        if (guide.group != group) continue;
        const double y = std::trunc(g.bottom - g.full_span * guide.value);
        parts.lines.emplace_back(LineShape{g.line_left, y, g.line_right, y, kAmber, 1.0f, true});
        const EndLabel place = guide.label_above ? EndLabel::kAbove : EndLabel::kBelow;
        parts.labels.emplace_back(end_label(g, y, guide.label, kAmber, place));
    }
}

}  // namespace

std::string waveform_title(int kind) {
    for (const ScopeKind known : {ScopeKind::kWaveform, ScopeKind::kParade, ScopeKind::kSlice}) {
        if (static_cast<int>(known) == kind) return kScopeTable[scope_slot(known)].title;
    }
    return "ERROR";
}

int top_percent(double value_scale) {
    // 100 / value_scale may come out an ulp below the whole percentage that value_scale was made
    // from (1 / (100 / 109.0) * 100 does), which would label the scale one percent short.
    return trunc_to_int(1.0 / value_scale * 100.0 + 1e-9);
}

std::string top_label(ScaleUnit unit, double value_scale) {
    if (unit != ScaleUnit::kBitDepth) return std::to_string(top_percent(value_scale));
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", 1.0 / value_scale);
    std::string label = text.data();
    label.erase(label.find_last_not_of('0') + 1);
    if (label.back() == '.') label.pop_back();
    return label;
}

void add_waveform_scale(ShapeList &shapes, const WaveformScale &scale, const LayoutUnits &units) {
    const ScaleGeometry g = scale_geometry(scale, units);
    ScaleParts parts;
    const double highest = add_scale_lines(parts, g, scale);
    add_top_line(parts, g, scale, highest);
    add_guides(parts, g, scale.guides);
    shapes.insert(shapes.end(), parts.lines.begin(), parts.lines.end());
    shapes.insert(shapes.end(), parts.labels.begin(), parts.labels.end());
}

}  // namespace ks
