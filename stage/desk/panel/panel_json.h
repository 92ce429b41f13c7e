// The Effect Controls panel as JSON, for programs. docs/stage/manual.md describes it.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "stage/desk/panel/panel_model.h"

namespace stage {

/// A list with one object an entry, in the order of the panel; hidden entries are left out unless
/// `with_hidden`.
nlohmann::ordered_json panel_json(const std::vector<PanelEntry> &entries, bool with_hidden);

}  // namespace stage
