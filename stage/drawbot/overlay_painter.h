// Painting what an effect drew. Native builds only: the drawing is cairo's.
#pragma once

#include <cstdint>

#include "stage/drawbot/draw_list.h"
#include "stage/drawbot/overlay_theme.h"

namespace stage {

/// Paints `list` over `width` × `height` pixels, premultiplied 0xAARRGGBB, rows from the top
/// without padding. Theme primitives are smooth; their shadow lies beneath, shadow_x and shadow_y
/// pixels away. Everything a list may hold is survived: colours are limited to 0..1, coordinates to
/// ±131072 window pixels, and what is not a number or cannot be drawn is left out. Windows beyond
/// 32767 pixels a side stay as they are.
void paint_overlay(std::uint32_t *pixels, int width, int height, const DrawList &list,
                   const OverlayTheme &theme);

/// Gives back the fonts that painting text has cached for the life of the process. For the end of
/// programs that look for leaks; nothing may be painted meanwhile.
void forget_fonts();

}  // namespace stage
