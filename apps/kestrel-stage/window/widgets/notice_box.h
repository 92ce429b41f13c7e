// The box in which messages are read and dismissed.
#pragma once

#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"

namespace stage_view {

/// Shows the first notice, if any, until OK is clicked or Return or Escape is pressed.
void draw_notice(WindowActs &acts, WidgetLog &log);

}  // namespace stage_view
