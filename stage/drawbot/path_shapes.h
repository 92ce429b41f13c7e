// Shapes taken apart into steps of a path.
#pragma once

#include "stage/drawbot/draw_list.h"

namespace stage {

/// A coordinate as it is recorded: limited to ±1e30, so that it stays finite. `value` finite.
float window_coordinate(double value);

/// A closed figure of its own: upper left corner, then clockwise in window coordinates.
void add_rect(DrawPath &path, const DrawPrimitive::Rect &rect);

/// An arc as cubic curves of at most 90 degrees each (off by less than 0.03 % of the radius).
/// Angles are degrees, 0 at three o'clock, clockwise in the window; a sweep beyond one turn is one
/// turn. A figure that is open is joined to the arc's start by a line, else a figure starts there.
/// All arguments finite.
void add_arc(DrawPath &path, DrawPoint center, float radius, float start, float sweep);

/// Whether the next step of `path` continues a figure.
bool has_open_figure(const DrawPath &path);

}  // namespace stage
