#include <algorithm>
#include <cstddef>

#include "stage/desk/viewer/window_picture.h"
#include "stage/drawbot/overlay_painter.h"

namespace stage {

ViewImage window_picture(const ViewImage &frame, int source_width, int source_height,
                         const Viewport &viewport, const DrawList &overlay,
                         const OverlayTheme &theme) {
    ViewImage window = frame_in_window(frame, source_width, source_height, viewport);
    paint_overlay(window.pixels.data(), window.width, window.height, overlay, theme);
    return window;
}

std::vector<std::uint32_t> overlay_picture(int width, int height, const DrawList &overlay,
                                           const OverlayTheme &theme) {
    const auto columns = static_cast<std::size_t>(std::max(width, 0));
    std::vector<std::uint32_t> pixels(columns * static_cast<std::size_t>(std::max(height, 0)));
    paint_overlay(pixels.data(), width, height, overlay, theme);
    return pixels;
}

}  // namespace stage
