// Where the handles lie on the layer. Layer pixels throughout, origin at the layer's top left
// corner, nothing rounded. No host types.
#pragma once

#include <optional>

#include "geometry/scope_panel.h"
#include "ui/handles/handle_settings.h"
#include "ui/handles/handle_table.h"

namespace ks {

struct LayerPoint {
    double x = 0.0;
    double y = 0.0;
};

/// `from` is the left top corner, `to` the right bottom one.
struct LayerRect {
    LayerPoint from;
    LayerPoint to;
};

/// Height of the strip that moves a panel. The pointer gets the move cursor on two pixels more than
/// a click can grab: deliberate.
inline constexpr double kBarHeight = kLabelStrip;
inline constexpr double kCursorBarHeight = 20.0;

/// The histogram's height bar lies this far below position + "Scope Height".
inline constexpr double kHeightBarOffset = kLabelStrip + kHistogramFootRoom;

/// The monitor window as drawn: the position unscaled, only the size times the inverse pixel
/// aspect.
LayerRect drawn_monitor(const HandleSettings &settings);

/// The monitor window as clicked and dragged: both edges times the inverse pixel aspect, from the
/// position's whole pixels. It differs from drawn_monitor() on purpose: users aim at it.
LayerRect clicked_monitor(const HandleSettings &settings);

/// The part of the layer that the compare wipe covers, with `monitor` as the Windowed layout's;
/// none without a monitor view.
std::optional<LayerRect> wipe_region(const HandleSettings &settings, const LayerRect &monitor);

/// Height / width of a waveform-type trace area, in single precision throughout (a frame's panels
/// take only the denominators' ratio in single precision).
float waveform_aspect(const HandleSettings &settings);

/// The setting of the panel that the handle belongs to.
const PanelSetting &panel_of(const HandleRow &row, const HandleSettings &settings);

/// True when the handle can be clicked. The wipe's stays clickable while its parameters are
/// disabled in the panel.
bool is_present(const HandleRow &row, const HandleSettings &settings);

/// What a click or the cursor is compared with: a corner or wipe handle's point in both corners, a
/// bar's rectangle `bar_height` tall, the height bar's line with both corners on one level. Of a
/// handle that is present.
LayerRect handle_shape(const HandleRow &row, const HandleSettings &settings, double bar_height);

}  // namespace ks
