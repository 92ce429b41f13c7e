// Text of overlays.
#pragma once

#include <cairo.h>

#include "stage/drawbot/draw_list.h"

namespace stage {

/// Shows a kText primitive in the source and matrix that `cairo` has, aligned and shortened as it
/// says. Nothing for letters that come out below 0.1 or beyond 2000 window pixels.
void show_text(cairo_t *cairo, const DrawPrimitive &text);

}  // namespace stage
