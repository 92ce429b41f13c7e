#include <bit>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// Every flag that a layer can carry; SetLayerFlag takes one of them.
constexpr std::uint32_t kAllLayerFlags =
    static_cast<std::uint32_t>(AEGP_LayerFlag_ENVIRONMENT_LAYER) * 2 - 1;

/// Layer index that stands for the bottom of the stack.
constexpr A_long kToBottom = -1;

A_Err get_comp_num_layers(HostCall &call, AEGP_CompH comp, A_long &result) {
    const Item *item = comp_of(call, comp);
    if (item == nullptr) return A_Err_PARAMETER;
    result = static_cast<A_long>(item->layers.size());
    return A_Err_NONE;
}

A_Err get_comp_layer_by_index(HostCall &call, AEGP_CompH comp, A_long index, AEGP_LayerH &result) {
    const Item *item = comp_of(call, comp);
    if (item == nullptr) return A_Err_PARAMETER;
    if (call.traced()) call.arguments("\"" + item->name + "\", " + std::to_string(index));
    if (index < 0 || static_cast<std::size_t>(index) >= item->layers.size()) {
        return A_Err_PARAMETER;
    }
    Host &host = call.host();
    result = host.refs.layer(host.project, item->layers[static_cast<std::size_t>(index)].id);
    return A_Err_NONE;
}

A_Err get_layer_index(HostCall &call, AEGP_LayerH layer, A_long &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = call.host().project.index_of(found->id);
    return A_Err_NONE;
}

A_Err get_layer_source_item(HostCall &call, AEGP_LayerH layer, AEGP_ItemH &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    // Text layers have none: a null item and no error.
    result = call.host().refs.item(call.host().project, found->source);
    return A_Err_NONE;
}

A_Err get_layer_source_item_id(HostCall &call, AEGP_LayerH layer, A_long &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->source;
    return A_Err_NONE;
}

A_Err get_layer_parent_comp(HostCall &call, AEGP_LayerH layer, AEGP_CompH &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    Host &host = call.host();
    result = host.refs.comp(host.project, host.project.comp_of(found->id)->id);
    return A_Err_NONE;
}

A_Err get_layer_name(HostCall &call, AEGP_PluginID plugin_id, AEGP_LayerH layer,
                     AEGP_MemHandle *layer_name, AEGP_MemHandle *source_name) {
    note_plugin_id(call, plugin_id);
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    if (layer_name != nullptr && !give_utf16(call, found->name, *layer_name)) return A_Err_ALLOC;
    if (source_name == nullptr) return A_Err_NONE;
    const Item *source = call.host().project.item(found->source);
    return give_utf16(call, source == nullptr ? "" : source->name, *source_name) ? A_Err_NONE
                                                                                 : A_Err_ALLOC;
}

A_Err get_layer_flags(HostCall &call, AEGP_LayerH layer, AEGP_LayerFlags &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = static_cast<AEGP_LayerFlags>(found->flags);
    return A_Err_NONE;
}

A_Err set_layer_flag(HostCall &call, AEGP_LayerH layer, AEGP_LayerFlags flag, A_Boolean on) {
    const Layer *found = layer_of(call, layer);
    const auto bit = static_cast<std::uint32_t>(flag);
    if (found == nullptr || !std::has_single_bit(bit) || (bit & kAllLayerFlags) == 0) {
        return A_Err_PARAMETER;
    }
    if (call.traced()) {
        call.arguments("\"" + found->name + "\", " + std::to_string(flag) +
                       (on != 0 ? ", on" : ", off"));
    }
    if (const A_Err err = begin_change(call, "Layer Switch")) return err;
    Layer *changed = call.host().project.layer(found->id);
    changed->flags = on != 0 ? changed->flags | bit : changed->flags & ~bit;
    return A_Err_NONE;
}

A_Err is_layer_video_really_on(HostCall &call, AEGP_LayerH layer, A_Boolean &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->has_flag(layer_flag::kVideoActive) ? 1 : 0;
    return A_Err_NONE;
}

A_Err is_video_active(HostCall &call, AEGP_LayerH layer, AEGP_LTimeMode, const A_Time *,
                      A_Boolean &result) {
    // Layers last as long as their comp, so the time makes no difference.
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->has_flag(layer_flag::kVideoActive) ? 1 : 0;
    return A_Err_NONE;
}

A_Err reorder_layer(HostCall &call, AEGP_LayerH layer, A_long index) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    if (call.traced()) call.arguments("\"" + found->name + "\", " + std::to_string(index));
    Project &project = call.host().project;
    const auto count = static_cast<A_long>(project.comp_of(found->id)->layers.size());
    if (index < kToBottom || index >= count) return A_Err_PARAMETER;
    if (const A_Err err = begin_change(call, "Layer Order")) return err;
    project.reorder_layer(found->id, index);
    return A_Err_NONE;
}

A_Err get_layer_object_type(HostCall &call, AEGP_LayerH layer, AEGP_ObjectType &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->kind == LayerKind::kText ? AEGP_ObjectType_TEXT : AEGP_ObjectType_AV;
    return A_Err_NONE;
}

A_Err get_layer_id(HostCall &call, AEGP_LayerH layer, AEGP_LayerIDVal &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->id;
    return A_Err_NONE;
}

A_Err get_layer_from_layer_id(HostCall &call, AEGP_CompH comp, AEGP_LayerIDVal id,
                              AEGP_LayerH &result) {
    const Item *item = comp_of(call, comp);
    if (item == nullptr) return A_Err_PARAMETER;
    Host &host = call.host();
    if (host.project.comp_of(id) != item) return A_Err_PARAMETER;
    result = host.refs.layer(host.project, id);
    return A_Err_NONE;
}

/// The later structs only append, so the same slots serve all three.
template <class Suite>
constexpr auto layer_table() {
    CallTable<Suite, kAEGPLayerSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetCompNumLayers, get_comp_num_layers);
    KS_SERVE(AEGP_GetCompLayerByIndex, get_comp_layer_by_index);
    KS_SERVE(AEGP_GetLayerIndex, get_layer_index);
    KS_SERVE(AEGP_GetLayerSourceItem, get_layer_source_item);
    KS_SERVE(AEGP_GetLayerSourceItemID, get_layer_source_item_id);
    KS_SERVE(AEGP_GetLayerParentComp, get_layer_parent_comp);
    KS_SERVE(AEGP_GetLayerName, get_layer_name);
    KS_SERVE(AEGP_GetLayerFlags, get_layer_flags);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_SetLayerFlag, set_layer_flag);
    KS_SERVE(AEGP_IsLayerVideoReallyOn, is_layer_video_really_on);
    KS_SERVE(AEGP_IsVideoActive, is_video_active);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_ReorderLayer, reorder_layer);
    KS_SERVE(AEGP_GetLayerObjectType, get_layer_object_type);
    KS_SERVE(AEGP_GetLayerID, get_layer_id);
    KS_SERVE(AEGP_GetLayerFromLayerID, get_layer_from_layer_id);
    return table;
}

}  // namespace

void add_layer_suite(SuiteRegistry &suites) {
    offer<layer_table<AEGP_LayerSuite7>>(suites, kAEGPLayerSuiteVersion7);
    offer<layer_table<AEGP_LayerSuite8>>(suites, kAEGPLayerSuiteVersion8);
    offer<layer_table<AEGP_LayerSuite9>>(suites, kAEGPLayerSuiteVersion9);
}

}  // namespace stage
