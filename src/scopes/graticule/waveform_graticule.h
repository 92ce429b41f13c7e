// The scale of the waveform-type scopes: scale lines with their labels, guide lines. No host types.
#pragma once

#include <cstdint>
#include <string>

#include "geometry/int_rect.h"
#include "geometry/scope_layout.h"
#include "pixels/pixel_format.h"
#include "scopes/graticule/shapes.h"

namespace ks {

/// "Waveform Scopes Scale".
enum class ScaleUnit : std::int32_t { kIre = 1, kBitDepth = 2 };

/// "Show Waveform Guides".
enum class WaveformGuides : std::int32_t { kOff = 1, kSetup = 2, kStudioRange = 3 };

struct WaveformScale {
    IntSize panel;
    ScaleUnit unit = ScaleUnit::kIre;
    FormatCode format = 0;  ///< of the panels, which is the project's; read for kBitDepth only
    double value_scale = 1.0;
    bool first_column_only = false;  ///< the lines cover the first third: a parade of Y, Cb, Cr
    WaveformGuides guides = WaveformGuides::kOff;
};

/// Title of the scope with that kind code: "ERROR" for any code but those of the waveform-type
/// scopes. [host thread]
std::string waveform_title(int kind);

/// Appends the scale lines from 0 upwards, the line at the top of an extended scale and the guide
/// lines; then their labels in the same order. All lines come before all texts: text on non-square
/// pixels scales the drawing and back, and the rounding that this leaves would soften lines drawn
/// later. Lines lie on whole pixel rows, the ones on which traces plot the same values.
/// [host thread]
void add_waveform_scale(ShapeList &shapes, const WaveformScale &scale, const LayoutUnits &units);

/// Top of the scale in whole percent, trunc(100 / value_scale). [host thread]
int top_percent(double value_scale);

/// Text of the label at the top of an extended scale: whole percent in IRE, else the value with two
/// decimals, trailing zeros dropped as in the other labels ("1.5", "2"). [host thread]
std::string top_label(ScaleUnit unit, double value_scale);

}  // namespace ks
