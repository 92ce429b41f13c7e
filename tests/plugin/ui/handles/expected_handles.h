// A second statement of where the handles are and what takes hold of them, in plain arithmetic over
// plain values. It shares nothing with the code that it judges but the conversion of a scene into
// that code's own record.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "ui/handles/hit_test.h"

namespace expected {

/// One scope's parameters.
struct Scope {
    bool on = true;
    double x = 0;  ///< pixels
    double y = 0;
    double size = 200;
};

/// The parameters and the layer of one case.
struct Scene {
    int layout = 6;
    double monitor_x = 300;
    double monitor_y = 200;
    double monitor_size = 50;
    double compare = 30;
    double opacity = 60;
    int aspect = 1;
    int width = 1920;
    int height = 1080;
    int par_num = 1;
    int par_den = 1;
    int den_x = 1;
    int den_y = 1;
    bool compare_disabled = false;
    /// Waveform, vectorscope, parade, slice, histogram.
    std::array<Scope, 5> scopes{{{true, 15, 14, 220},
                                 {true, 400, 500, 180},
                                 {true, 900, 40, 300},
                                 {true, 1300, 300, 240},
                                 {true, 1000, 700, 80}}};

    [[nodiscard]] double k() const {
        return static_cast<double>(static_cast<float>(par_den) / static_cast<float>(par_num));
    }
    [[nodiscard]] double par() const { return static_cast<double>(par_num) / par_den; }
};

/// The scene in the form that the code under test takes.
ks::HandleSettings settings_of(const Scene &scene);

struct Point {
    double x;
    double y;
};

/// Left, top, right, bottom.
struct Box {
    double l;
    double t;
    double r;
    double b;
};

/// True when handle `n` (0 to 12) exists in the scene.
bool present(const Scene &scene, int n);
/// Layer point of handle 0, 2, 3, 5, 7 or 9.
Point handle_point(const Scene &scene, int n);
/// Layer rectangle of the move bar 1, 4, 6, 8, 10 or 12, `tall` pixels high.
Box bar(const Scene &scene, int n, double tall);
/// Layer line (t == b) of handle 11.
Box height_line(const Scene &scene);
/// The compare region as clicked (`drawn` false) or drawn.
std::optional<Box> region(const Scene &scene, bool drawn);

/// A window that shows a layer: zoom as a fraction, pan in whole pixels; in a composition the layer
/// is moved and scaled first. Coordinates are 1/65536 pixels.
class Window final : public ks::WindowMap {
  public:
    int zoom_num = 1;
    int zoom_den = 1;
    int pan_x = 0;
    int pan_y = 0;
    bool composition = false;
    int layer_x = 0;  ///< of the layer in the composition, pixels
    int layer_y = 0;

    [[nodiscard]] std::optional<ks::FixedPoint> to_window(ks::LayerPoint point) const override;
    /// Exact when it has to be: an int64 window coordinate of a layer coordinate.
    [[nodiscard]] std::int64_t map(double layer, bool across) const;
};

/// The handle that a click (`cursor` false) at the window pixel takes hold of, or the one that
/// gives the cursor; -1 for none.
int hit(const Scene &scene, const Window &window, int x, int y, bool cursor);

}  // namespace expected
