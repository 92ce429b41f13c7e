// The look of overlays in viewers: what the overlay theme suite answers and draws with.
#pragma once

#include "stage/drawbot/draw_list.h"

namespace stage {

/// Colours and sizes of the host's overlays; sizes in window pixels.
struct OverlayTheme {
    DrawColor foreground{0.93f, 0.76f, 0.29f, 1};
    DrawColor shadow{0, 0, 0, 0.75f};
    float stroke_width = 1.5f;
    float vertex_size = 6;
    int shadow_x = 1, shadow_y = 1;
};

}  // namespace stage
