// What the suites of the project share: resolving references, permission to change.
#pragma once

#include <string>

#include "hostapi/aegp_types.h"
#include "hostapi/constants.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
#include "stage/project/project.h"

namespace stage {

/// Rules of most calls of the project services.
inline constexpr CallRules kProjectCall{.null_error = A_Err_PARAMETER};

/// The layer, comp or item behind a handle. Null for a stale or unknown one, which is a finding
/// ("stale.layer", "stale.comp", "stale.item"; "ref.unknown"); the call then returns
/// A_Err_PARAMETER. A null handle is no finding.
Layer *layer_of(HostCall &call, AEGP_LayerH handle);
Item *comp_of(HostCall &call, AEGP_CompH handle);
Item *item_of(HostCall &call, AEGP_ItemH handle);

/// 0, or A_Err_CONST_PROJECT_MODIFICATION (6) in a locked project. When 0 and `undo_name` is not
/// null, the state before the change becomes a step of undo.
A_Err begin_change(HostCall &call, const char *undo_name);

/// Id 0 is accepted; the first one is noted ("aegp.plugin_id", a known departure).
void note_plugin_id(HostCall &call, AEGP_PluginID id);

/// Stores UTF-8 `text` as UTF-16 in a new handle. False when memory is short.
bool give_utf16(HostCall &call, const std::string &text, AEGP_MemHandle &handle);

}  // namespace stage
