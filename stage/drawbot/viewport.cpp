#include "stage/drawbot/viewport.h"

#include <algorithm>

namespace stage {

void Viewport::zoom_to(double new_zoom, double x, double y) {
    const double kept_x = source_x(x);
    const double kept_y = source_y(y);
    zoom = std::clamp(new_zoom, kMinZoom, kMaxZoom);
    pan_x = x - kept_x * zoom * stretch;
    pan_y = y - kept_y * zoom;
}

void Viewport::fit(int source_width, int source_height) {
    const double across = width / (std::max(source_width, 1) * stretch);
    const double down = height / double(std::max(source_height, 1));
    zoom = std::clamp(std::min({across, down, 1.0}), kMinZoom, kMaxZoom);
    pan_x = (width - source_width * zoom * stretch) / 2;
    pan_y = (height - source_height * zoom) / 2;
}

}  // namespace stage
