// One widget for each kind of parameter.
#pragma once

#include <optional>
#include <string>

#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "stage/desk/panel/panel_model.h"

namespace stage_view {

/// Draws the value of `entry` at ImGui's cursor, `width` pixels wide, writes it down in `log`, and
/// returns the value that the user gave it in this frame. `typed` keeps a number between the
/// keystrokes of one entry. Groups have no value and draw nothing.
std::optional<stage::ParamValue> value_widget(WindowActs &acts, const stage::PanelEntry &entry,
                                              float width, std::optional<double> &typed,
                                              WidgetLog &log);

}  // namespace stage_view
