// What the suites of the project share: resolving references, permission to change, fault order.
#pragma once

#include <exception>
#include <new>
#include <string>

#include "hostapi/aegp_types.h"
#include "hostapi/constants.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
#include "stage/project/project.h"

namespace stage {

/// Runs `body` (returning A_Err) unless the call must fail, before any effect of it. Nothing is
/// thrown: what the project refuses is A_Err_PARAMETER, missing memory A_Err_ALLOC, anything else a
/// finding and A_Err_GENERIC.
template <class Body>
A_Err run_call(HostCall &call, Body body) noexcept {
    if (call.must_fail()) return call.result(call.error());
    try {
        return call.result(body());
    } catch (const ProjectError &) {
        return call.result(A_Err_PARAMETER);
    } catch (const std::bad_alloc &) {
        return call.result(A_Err_ALLOC);
    } catch (const std::exception &error) {
        call.host().strict.report("stage.exception", call.command(), error.what());
        return call.result(A_Err_GENERIC);
    }
}

/// Like run_call, for releases: an injected failure still releases, since the plug-in has no second
/// try and must not be blamed for the leak.
template <class Body>
A_Err run_release(HostCall &call, Body body) noexcept {
    const A_Err released = body() ? A_Err_NONE : A_Err_PARAMETER;
    return call.result(call.must_fail() ? call.error() : released);
}

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
bool give_utf16(HostCall &call, const std::string &text, AEGP_MemHandle *handle);

}  // namespace stage
