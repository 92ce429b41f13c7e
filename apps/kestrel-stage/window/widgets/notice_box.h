// The box in which messages are read and dismissed.
#pragma once

#include "kestrel-stage/window/desk.h"
#include "kestrel-stage/window/widget_log.h"

namespace stage_view {

/// Shows the first notice of the desk, if any, until OK is clicked or Return or Escape is pressed.
void draw_notice(Desk &desk, WidgetLog &log);

}  // namespace stage_view
