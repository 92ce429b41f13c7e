// The Effect Controls panel as a user sees it: groups, values, what is hidden and what is greyed.
#pragma once

#include <string>
#include <vector>

#include "hostapi/param_def.h"
#include "stage/project/param_value.h"

namespace stage {

class EffectInstance;
class Session;

/// One line of the panel.
struct PanelEntry {
    enum class Kind { kGroup, kSlider, kPopup, kCheckbox, kColor, kPoint, kLayer };

    int index = 0;  ///< of the parameter
    int depth = 0;  ///< 0 at the top level, one more inside each group
    Kind kind = Kind::kSlider;
    std::string name;
    std::string label;                 ///< checkbox: the text beside the box
    std::vector<std::string> choices;  ///< popup: with its separators, "(-"
    ParamValue value;
    std::string text;  ///< the value as the panel writes it: "200.0", "100.0 %", "on"
    double minimum = 0, maximum = 0;                ///< slider: of what can be typed
    double slider_minimum = 0, slider_maximum = 0;  ///< slider: of its slider
    int precision = 0;                              ///< slider: digits behind the point
    bool percent = false;
    bool hidden = false;     ///< by itself, or with a group around it
    bool disabled = false;   ///< greyed: shown, not to be changed
    bool collapsed = false;  ///< group or parameter whose twirl is closed
};

/// All entries from the top down, hidden ones included; group ends have none. Values are those at
/// the moment, looks those of the last refresh of the instance.
std::vector<PanelEntry> panel_entries(const Session &session, const EffectInstance &instance);

/// The panel as text, one line an entry, indented by depth; hidden entries are left out unless
/// `with_hidden`, when they are marked; greyed ones are marked.
std::string panel_text(const std::vector<PanelEntry> &entries, bool with_hidden);

}  // namespace stage
