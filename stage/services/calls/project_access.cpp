#include "stage/services/calls/project_access.h"

#include "stage/text/utf16.h"

namespace stage {
namespace {

/// The id behind a handle, or 0 with a finding.
template <class Handle>
int resolve(HostCall &call, Handle handle, const char *what) {
    Host &host = call.host();
    const FoundRef found = host.refs.find(host.project, handle);
    if (found.state == RefState::kGood || handle == nullptr) return found.id;
    if (found.state == RefState::kStale) {
        call.report(
            ("stale." + std::string(what)).c_str(),
            std::string(what) + " reference used after the number of " + what + "s changed");
    } else {
        call.report("ref.unknown", std::string("this is no ") + what + " reference of the host's");
    }
    return 0;
}

}  // namespace

Layer *layer_of(HostCall &call, AEGP_LayerH handle) {
    Layer *layer = call.host().project.layer(resolve(call, handle, "layer"));
    if (layer != nullptr && call.traced()) call.arguments("\"" + layer->name + "\"");
    return layer;
}

Item *comp_of(HostCall &call, AEGP_CompH handle) {
    Item *comp = call.host().project.comp(resolve(call, handle, "comp"));
    if (comp != nullptr && call.traced()) call.arguments("\"" + comp->name + "\"");
    return comp;
}

Item *item_of(HostCall &call, AEGP_ItemH handle) {
    Item *item = call.host().project.item(resolve(call, handle, "item"));
    if (item != nullptr && call.traced()) call.arguments("\"" + item->name + "\"");
    return item;
}

A_Err begin_change(HostCall &call, const char *undo_name) {
    if (call.host().options.project_locked) return A_Err_CONST_PROJECT_MODIFICATION;
    if (undo_name != nullptr) call.host().undo.before_change(undo_name);
    return A_Err_NONE;
}

void note_plugin_id(HostCall &call, AEGP_PluginID id) {
    if (id != 0 || !call.host().refs.first_zero_plugin_id()) return;
    call.report("aegp.plugin_id", "plug-in id 0 was passed");
}

bool give_utf16(HostCall &call, const std::string &text, AEGP_MemHandle &handle) {
    handle = call.host().mem_handles.allocate_text(utf16_from_utf8(text), call.command());
    return handle != nullptr;
}

}  // namespace stage
