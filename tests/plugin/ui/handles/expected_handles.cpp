#include "plugin/ui/handles/expected_handles.h"

namespace expected {
namespace {

std::int32_t fixed(double pixels) {
    return static_cast<std::int32_t>(std::llround(pixels * 65536));
}

/// Which scope (0 to 4) handle `n` >= 3 belongs to.
int scope_of(int n) {
    return (n - 3) / 2;
}

bool is_bar(int n) {
    return n == 1 || n == 4 || n == 6 || n == 8 || n == 10 || n == 12;
}

double trace_aspect(const Scene &scene) {
    if (scene.aspect == 2) return 0.5625;
    if (scene.aspect == 3) return 0.75;
    if (scene.aspect == 4) return 1.0;
    const float denominators = static_cast<float>(scene.den_x) / static_cast<float>(scene.den_y);
    const float par = static_cast<float>(scene.par_num) / static_cast<float>(scene.par_den);
    return static_cast<double>(static_cast<float>(scene.height) /
                               (denominators * static_cast<float>(scene.width) * par));
}

}  // namespace

ks::HandleSettings settings_of(const Scene &scene) {
    ks::HandleSettings s;
    s.width = scene.width;
    s.height = scene.height;
    const ks::Ratio par{scene.par_num, static_cast<std::uint32_t>(scene.par_den)};
    s.frame = ks::make_frame_scale(par, {1, static_cast<std::uint32_t>(scene.den_x)},
                                   {1, static_cast<std::uint32_t>(scene.den_y)});
    s.inverse_par = ks::inverse_pixel_aspect(par);
    s.layout = static_cast<ks::MonitorLayout>(scene.layout);
    s.monitor = {
        scene.layout == 6, {fixed(scene.monitor_x), fixed(scene.monitor_y)}, scene.monitor_size};
    s.compare = scene.compare;
    s.opacity = scene.opacity;
    s.compare_disabled = scene.compare_disabled;
    s.aspect_choice = scene.aspect;
    for (std::size_t i = 0; i < 5; ++i) {
        const Scope &scope = scene.scopes[i];
        s.scopes[i] = {scope.on, {fixed(scope.x), fixed(scope.y)}, scope.size};
    }
    return s;
}

bool present(const Scene &scene, int n) {
    if (n == 0 || n == 1) return scene.layout == 6;
    if (n == 2) {
        return scene.layout == 1 || scene.layout == 3 || scene.layout == 4 || scene.layout == 6;
    }
    return scene.scopes[static_cast<std::size_t>(scope_of(n))].on;
}

Point handle_point(const Scene &scene, int n) {
    if (n == 0) {
        return {scene.monitor_x + scene.width * scene.monitor_size * 0.01 * scene.k(),
                scene.monitor_y + scene.height * scene.monitor_size * 0.01};
    }
    if (n == 2) {
        const Box r = region(scene, false).value();
        return {r.l + (r.r - r.l) * scene.compare * 0.01,
                r.t + (r.b - r.t) * ((100 - scene.opacity) * 0.004 + 0.5)};
    }
    const Scope &scope = scene.scopes[static_cast<std::size_t>(scope_of(n))];
    const double height = n == 5 ? scope.size : scope.size * trace_aspect(scene);
    return {scope.x + scope.size * scene.k(), scope.y + height + 18};
}

Box bar(const Scene &scene, int n, double tall) {
    double x = scene.monitor_x;
    double y = scene.monitor_y;
    double wide = scene.width * scene.monitor_size * 0.01;
    if (n != 1) {
        const Scope &scope = scene.scopes[static_cast<std::size_t>(scope_of(n))];
        x = scope.x;
        y = scope.y;
        wide = n == 12 ? 272 : scope.size;
    }
    x = std::floor(x);
    y = std::floor(y);
    return {x * scene.k(), y, (x + wide) * scene.k(), y + tall};
}

Box height_line(const Scene &scene) {
    const Scope &scope = scene.scopes[4];
    const double x = std::floor(scope.x);
    const double y = std::floor(scope.y) + scope.size + 42;
    return {x * scene.k(), y, (x + 272) * scene.k(), y};
}

std::optional<Box> region(const Scene &scene, bool drawn) {
    const double w = scene.width;
    const double h = scene.height;
    const double s = scene.monitor_size * 0.01;
    if (scene.layout == 1) return Box{0, 0, w, h};
    if (scene.layout == 3) return Box{0, 0, w / 2, h / 2};
    if (scene.layout == 4) return Box{w * 0.25, 0, w, h * 0.75};
    if (scene.layout != 6) return std::nullopt;
    if (drawn) {
        return Box{scene.monitor_x, scene.monitor_y, scene.monitor_x + w * s * scene.k(),
                   scene.monitor_y + h * s};
    }
    const double x = std::floor(scene.monitor_x);
    const double y = std::floor(scene.monitor_y);
    return Box{x * scene.k(), y, (x + w * s) * scene.k(), y + h * s};
}

std::int64_t Window::map(double layer, bool across) const {
    std::int64_t units = fixed(layer);
    if (composition) units += std::int64_t{across ? layer_x : layer_y} * 65536;
    return units * zoom_num / zoom_den + std::int64_t{across ? pan_x : pan_y} * 65536;
}

std::optional<ks::FixedPoint> Window::to_window(ks::LayerPoint point) const {
    return ks::FixedPoint{static_cast<std::int32_t>(map(point.x, true)),
                          static_cast<std::int32_t>(map(point.y, false))};
}

int hit(const Scene &scene, const Window &window, int x, int y, bool cursor) {
    const double px = x;
    const double py = y;
    const auto across = [&](double v) { return static_cast<double>(window.map(v, true)) / 65536; };
    const auto down = [&](double v) { return static_cast<double>(window.map(v, false)) / 65536; };
    for (int n = 0; n <= 12; ++n) {
        if (!present(scene, n) || (cursor && n == 2)) continue;
        bool inside = false;
        if (is_bar(n)) {
            const Box b = bar(scene, n, cursor ? 20 : 18);
            inside = across(b.l) <= px && px <= across(b.r) && down(b.t) <= py && py <= down(b.b);
        } else if (n == 11) {
            const Box b = height_line(scene);
            const double dy = std::abs(py - down(b.t));
            inside = across(b.l) <= px && px <= across(b.r) && (cursor ? dy < 16 : dy <= 15);
        } else {
            const Point p = handle_point(scene, n);
            inside = std::abs(px - across(p.x)) + std::abs(py - down(p.y)) < 16;
        }
        if (inside) return n;
    }
    return -1;
}

}  // namespace expected
