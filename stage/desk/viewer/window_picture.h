// A viewer's window as a user sees it: the frame at the viewer's zoom and pan, what the effect drew
// over it. Drawing over it is cairo's, so only frame_in_window exists in every build.
#pragma once

#include <cstdint>
#include <vector>

#include "stage/desk/viewer/view_image.h"
#include "stage/drawbot/draw_list.h"
#include "stage/drawbot/overlay_theme.h"
#include "stage/drawbot/viewport.h"

namespace stage {

/// Window background around the source.
inline constexpr std::uint32_t kPasteboard = 0xFF232323;

/// `frame`, which covers source_width × source_height source pixels whatever its own size, in the
/// window. A window pixel shows the source when its centre lies on it. Where the window has at
/// least as many pixels as the frame, along an axis, the nearest; where it has fewer, their mean,
/// weighted by how much of each it covers (within 1 code). An empty frame leaves the source black.
/// Everything the viewport may hold is survived; a window without pixels gives an empty image.
ViewImage frame_in_window(const ViewImage &frame, int source_width, int source_height,
                          const Viewport &viewport);

/// frame_in_window with `overlay` on top. Native builds only.
ViewImage window_picture(const ViewImage &frame, int source_width, int source_height,
                         const Viewport &viewport, const DrawList &overlay,
                         const OverlayTheme &theme);

/// The overlay alone on a transparent window: premultiplied 0xAARRGGBB, rows from the top. Empty
/// for a window without pixels. Native builds only.
std::vector<std::uint32_t> overlay_picture(int width, int height, const DrawList &overlay,
                                           const OverlayTheme &theme);

}  // namespace stage
