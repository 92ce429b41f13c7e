// Where a viewer's window shows its source.
#pragma once

namespace stage {

/// Kinds of windows with effect events, values as the host's PF_Window_*.
enum class WindowKind { kComp = 0, kLayer = 1, kEffect = 2 };

/// Window point = pan + source point * zoom (times `stretch` across). Source points are pixels of
/// the comp, in a layer window of the layer, at full resolution whatever the viewer renders at.
struct Viewport {
    static constexpr double kMinZoom = 0.015, kMaxZoom = 64;

    int width = 1280, height = 720;  ///< of the window, pixels
    double zoom = 1;                 ///< kMinZoom..kMaxZoom
    double pan_x = 0, pan_y = 0;     ///< window point of the source's upper left corner
    double stretch = 1;              ///< the pixel aspect when the window corrects for it, else 1

    double window_x(double source_x) const { return pan_x + source_x * zoom * stretch; }
    double window_y(double source_y) const { return pan_y + source_y * zoom; }
    double source_x(double window_x) const { return (window_x - pan_x) / (zoom * stretch); }
    double source_y(double window_y) const { return (window_y - pan_y) / zoom; }

    /// Limits the zoom; `x`, `y` is the window point that stays where it is.
    void zoom_to(double new_zoom, double x, double y);
    /// The whole source of `source_width` × `source_height` pixels in the middle of the window, at
    /// most at zoom 1.
    void fit(int source_width, int source_height);

    bool operator==(const Viewport &) const = default;
};

}  // namespace stage
