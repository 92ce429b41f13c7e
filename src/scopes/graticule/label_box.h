// The strip above every scope: title, over-range mark, subtitle and the colour legend. No host
// types.
#pragma once

#include <string>

#include "geometry/scope_layout.h"
#include "scopes/graticule/shapes.h"

namespace ks {

/// Which colours the legend's four chips show. The first three are the values of TraceMode, the
/// fourth is that of ParadeMode::kYCbCr. Any value not listed gives four black chips.
enum class LegendMode : int { kRgbAndLuma = 1, kRgb = 2, kLuma = 3, kYCbCr = 4, kNone = 5 };

struct LabelBox {
    std::string title;     ///< may be empty
    std::string subtitle;  ///< may be empty
    bool over_range = false;
    LegendMode legend = LegendMode::kNone;
};

/// Appends the label box of a panel `panel_width` pixels wide: band, title, red "!" when over
/// range, subtitle, chips. Chips that the mode does not need are black, not left out, so that the
/// box looks alike on every scope; the legend's green is 0.8, for its glare beside the others.
/// Lengths are not rounded. [host thread]
void add_label_box(ShapeList &shapes, const LabelBox &box, int panel_width,
                   const LayoutUnits &units);

}  // namespace ks
