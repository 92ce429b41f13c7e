// The Effect Controls panel.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "stage/desk/panel/panel_model.h"

namespace stage_view {

/// Shows every entry that the plug-in does not hide; greyed ones cannot be changed. Twirls are the
/// user's: an entry starts as the panel says and stays as it was last clicked.
class EffectControls {
  public:
    explicit EffectControls(WindowActs &acts) : acts_(acts) {}

    /// Draws the panel into `area` and carries out the edits made in it.
    void draw(const PixelRect &area, WidgetLog &log);
    /// As drawn last.
    const std::vector<stage::PanelEntry> &entries() const { return entries_; }
    bool is_open(const stage::PanelEntry &group) const;

  private:
    void header(WidgetLog &log);
    void group_row(const stage::PanelEntry &entry, WidgetLog &log);
    void value_row(const stage::PanelEntry &entry, WidgetLog &log);
    void refresh_entries();

    WindowActs &acts_;
    std::vector<stage::PanelEntry> entries_;
    std::map<int, bool> twirls_;  ///< open or closed by hand, by parameter
    std::optional<double> typed_;
};

}  // namespace stage_view
