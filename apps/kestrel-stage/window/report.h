// What an accessibility tool would tell of the window, as JSON.
#pragma once

#include <string>
#include <vector>

#include "kestrel-stage/window/picture_pane.h"
#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "stage/desk/panel/panel_model.h"

namespace stage_view {

/// Everything that a report tells; all of one settled frame.
struct ReportSources {
    WindowActs &acts;
    const PicturePane &pane;
    const std::vector<stage::PanelEntry> &panel;
    const WidgetLog &log;
    SDL_SystemCursor cursor;
    int window_width, window_height;
    int settled_frames;  ///< how many were settled before and with this one
    int drawn_frames;
};

/// The report's text. docs/stage/manual.md lists its fields.
std::string report_text(const ReportSources &sources);

}  // namespace stage_view
