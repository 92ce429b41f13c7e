#include "scopes/graticule/label_box.h"

#include <array>
#include <cstddef>

namespace ks {
namespace {

constexpr Colour kBand{1.0f, 0.2f, 0.2f, 0.2f};
constexpr Colour kCaption{1.0f, 0.5f, 0.5f, 0.5f};
constexpr Colour kWarning{1.0f, 1.0f, 0.0f, 0.0f};

constexpr Colour kBlack{1.0f, 0.0f, 0.0f, 0.0f};
constexpr Colour kRed{1.0f, 1.0f, 0.0f, 0.0f};
constexpr Colour kGreen{1.0f, 0.0f, 0.8f, 0.0f};
constexpr Colour kBlue{1.0f, 0.0f, 0.0f, 1.0f};
constexpr Colour kYellow{1.0f, 1.0f, 1.0f, 0.0f};
constexpr Colour kCyan{1.0f, 0.0f, 1.0f, 1.0f};
constexpr Colour kLuma{1.0f, 0.6f, 0.6f, 0.6f};

constexpr std::size_t kChips = 4;
using Chips = std::array<Colour, kChips>;

/// Row i belongs to legend mode i + 1. The parade's Cb and Cr chips are yellow and cyan like its
/// traces.
constexpr std::array<Chips, 4> kLegends{{
    {kRed, kGreen, kBlue, kLuma},
    {kRed, kGreen, kBlue, kBlack},
    {kBlack, kBlack, kBlack, kLuma},
    {kLuma, kYellow, kCyan, kBlack},
}};
constexpr Chips kUnknownLegend{kBlack, kBlack, kBlack, kBlack};

const Chips &legend_chips(LegendMode mode) {
    const int row = static_cast<int>(mode) - 1;
    const bool known = row >= 0 && row < static_cast<int>(kLegends.size());
    return known ? kLegends[static_cast<std::size_t>(row)] : kUnknownLegend;
}

}  // namespace

void add_label_box(ShapeList &shapes, const LabelBox &box, int panel_width,
                   const LayoutUnits &units) {
    const double s = units.scale;
    const double ux = units.kx;
    const double uy = units.ky;
    const double chip_width = 6.0 * s * ux;
    const double font_size = 13.0 * s * uy;
    const double chip_height = 16.0 * s * uy - 4.0 * uy;
    const double right = panel_width - 6.0 * ux;
    const double text_y = font_size + 2.0 * uy;
    const bool has_legend = box.legend != LegendMode::kNone;
    const auto left_of_legend = [&](double chips) {
        return has_legend ? right - chips * chip_width : right;
    };

    shapes.emplace_back(RectangleShape{2.0 * ux, 2.0 * uy, right, 16.0 * s * uy, kBand, {}, 0.0f});
    if (!box.title.empty()) {
        shapes.emplace_back(TextShape{4.0 * s * ux, text_y, box.title, kCaption, font_size});
    }
    if (box.over_range) {
        shapes.emplace_back(
            TextShape{left_of_legend(4.25), text_y, "!", kWarning, font_size, TextAnchor::kFar});
    }
    if (!box.subtitle.empty()) {
        shapes.emplace_back(TextShape{left_of_legend(5.0), text_y, box.subtitle, kCaption,
                                      font_size, TextAnchor::kFar});
    }
    if (!has_legend) return;
    const Chips &chips = legend_chips(box.legend);
    for (std::size_t i = 0; i < kChips; ++i) {
        const double x = right - static_cast<double>(kChips - i) * chip_width;
        shapes.emplace_back(
            RectangleShape{x, 4.0 * uy, chip_width, chip_height, chips[i], kBlack, 1.0f});
    }
}

}  // namespace ks
