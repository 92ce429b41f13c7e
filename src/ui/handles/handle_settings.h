// What the handles' geometry depends on: the parameters and the layer, without host types.
#pragma once

#include <array>
#include <cstdint>

#include "geometry/frame_scale.h"
#include "geometry/monitor_layout.h"
#include "model/scope_kind.h"

namespace ks {

/// 16.16 coordinates, of the layer or of a window.
struct FixedPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// 65536 times `pixels`, to the nearest unit, limited to what 32 bits hold; NaN gives 0.
std::int32_t to_fixed(double pixels);

/// `fixed` in pixels, exact.
constexpr double to_pixels(std::int32_t fixed) {
    return fixed / 65536.0;
}

/// One panel as its parameters place it, in layer pixels of a square-pixel layer.
struct PanelSetting {
    bool shown = false;
    FixedPoint position;
    double size = 0.0;  ///< scopes: "Scope Width", "Scope Size" or "Scope Height", full resolution
                        ///< pixels; monitor: percent of the layer
};

/// A snapshot of one event. Values may lie outside the parameters' ranges.
struct HandleSettings {
    int width = 0;  ///< of the layer, pixels
    int height = 0;
    FrameScale frame;         ///< pixel aspect and downsample denominators, all above 0
    float inverse_par = 1.f;  ///< pixel height / width, in single precision
    MonitorLayout layout = MonitorLayout::kScopesOnly;
    PanelSetting monitor;   ///< shown in the Windowed layout only
    double compare = 0.0;   ///< "Compare with Original", percent
    double opacity = 100.;  ///< "Compare Opacity", percent
    bool compare_disabled = false;
    int aspect_choice = 1;                         ///< "Waveform Scopes Aspect Ratio"
    std::array<PanelSetting, kScopeKinds> scopes;  ///< by scope_slot()
};

/// Pixel height / width from the host's ratio, formed in single precision; 1 for a ratio that is
/// not above 0, as in make_frame_scale().
float inverse_pixel_aspect(Ratio pixel_aspect);

}  // namespace ks
