#include <bit>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP Layer Suite." #function

namespace stage {
namespace {

/// Every flag that a layer can carry; SetLayerFlag takes one of them.
constexpr std::uint32_t kAllLayerFlags =
    static_cast<std::uint32_t>(AEGP_LayerFlag_ENVIRONMENT_LAYER) * 2 - 1;

/// Layer index that stands for the bottom of the stack.
constexpr A_long kToBottom = -1;

A_Err get_comp_num_layers(AEGP_CompH comp, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetCompNumLayers));
    return run_call(call, [&]() -> A_Err {
        const Item *item = comp_of(call, comp);
        if (item == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = static_cast<A_long>(item->layers.size());
        return A_Err_NONE;
    });
}

A_Err get_comp_layer_by_index(AEGP_CompH comp, A_long index, AEGP_LayerH *result) {
    HostCall call(KS_NAME(AEGP_GetCompLayerByIndex));
    return run_call(call, [&]() -> A_Err {
        const Item *item = comp_of(call, comp);
        if (item == nullptr || result == nullptr) return A_Err_PARAMETER;
        if (call.traced()) call.arguments("\"" + item->name + "\", " + std::to_string(index));
        if (index < 0 || static_cast<std::size_t>(index) >= item->layers.size()) {
            return A_Err_PARAMETER;
        }
        Host &host = call.host();
        *result = host.refs.layer(host.project, item->layers[static_cast<std::size_t>(index)].id);
        return A_Err_NONE;
    });
}

A_Err get_layer_index(AEGP_LayerH layer, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetLayerIndex));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = call.host().project.index_of(found->id);
        return A_Err_NONE;
    });
}

A_Err get_layer_source_item(AEGP_LayerH layer, AEGP_ItemH *result) {
    HostCall call(KS_NAME(AEGP_GetLayerSourceItem));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        // Text layers have none: a null item and no error.
        *result = call.host().refs.item(call.host().project, found->source);
        return A_Err_NONE;
    });
}

A_Err get_layer_source_item_id(AEGP_LayerH layer, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetLayerSourceItemID));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->source;
        return A_Err_NONE;
    });
}

A_Err get_layer_parent_comp(AEGP_LayerH layer, AEGP_CompH *result) {
    HostCall call(KS_NAME(AEGP_GetLayerParentComp));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        Host &host = call.host();
        *result = host.refs.comp(host.project, host.project.comp_of(found->id)->id);
        return A_Err_NONE;
    });
}

A_Err get_layer_name(AEGP_PluginID plugin_id, AEGP_LayerH layer, AEGP_MemHandle *layer_name,
                     AEGP_MemHandle *source_name) {
    HostCall call(KS_NAME(AEGP_GetLayerName));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const Layer *found = layer_of(call, layer);
        if (found == nullptr) return A_Err_PARAMETER;
        if (layer_name != nullptr && !give_utf16(call, found->name, layer_name)) return A_Err_ALLOC;
        if (source_name == nullptr) return A_Err_NONE;
        const Item *source = call.host().project.item(found->source);
        return give_utf16(call, source == nullptr ? "" : source->name, source_name) ? A_Err_NONE
                                                                                    : A_Err_ALLOC;
    });
}

A_Err get_layer_flags(AEGP_LayerH layer, AEGP_LayerFlags *result) {
    HostCall call(KS_NAME(AEGP_GetLayerFlags));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = static_cast<AEGP_LayerFlags>(found->flags);
        return A_Err_NONE;
    });
}

A_Err set_layer_flag(AEGP_LayerH layer, AEGP_LayerFlags flag, A_Boolean on) {
    HostCall call(KS_NAME(AEGP_SetLayerFlag), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
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
    });
}

A_Err is_layer_video_really_on(AEGP_LayerH layer, A_Boolean *result) {
    HostCall call(KS_NAME(AEGP_IsLayerVideoReallyOn));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->has_flag(layer_flag::kVideoActive) ? 1 : 0;
        return A_Err_NONE;
    });
}

A_Err is_video_active(AEGP_LayerH layer, AEGP_LTimeMode, const A_Time *, A_Boolean *result) {
    // Layers last as long as their comp, so the time makes no difference.
    HostCall call(KS_NAME(AEGP_IsVideoActive));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->has_flag(layer_flag::kVideoActive) ? 1 : 0;
        return A_Err_NONE;
    });
}

A_Err reorder_layer(AEGP_LayerH layer, A_long index) {
    HostCall call(KS_NAME(AEGP_ReorderLayer), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr) return A_Err_PARAMETER;
        if (call.traced()) call.arguments("\"" + found->name + "\", " + std::to_string(index));
        Project &project = call.host().project;
        const auto count = static_cast<A_long>(project.comp_of(found->id)->layers.size());
        if (index < kToBottom || index >= count) return A_Err_PARAMETER;
        if (const A_Err err = begin_change(call, "Layer Order")) return err;
        project.reorder_layer(found->id, index);
        return A_Err_NONE;
    });
}

A_Err get_layer_object_type(AEGP_LayerH layer, AEGP_ObjectType *result) {
    HostCall call(KS_NAME(AEGP_GetLayerObjectType));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->kind == LayerKind::kText ? AEGP_ObjectType_TEXT : AEGP_ObjectType_AV;
        return A_Err_NONE;
    });
}

A_Err get_layer_id(AEGP_LayerH layer, AEGP_LayerIDVal *result) {
    HostCall call(KS_NAME(AEGP_GetLayerID));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->id;
        return A_Err_NONE;
    });
}

A_Err get_layer_from_layer_id(AEGP_CompH comp, AEGP_LayerIDVal id, AEGP_LayerH *result) {
    HostCall call(KS_NAME(AEGP_GetLayerFromLayerID));
    return run_call(call, [&]() -> A_Err {
        const Item *item = comp_of(call, comp);
        if (item == nullptr || result == nullptr) return A_Err_PARAMETER;
        Host &host = call.host();
        if (host.project.comp_of(id) != item) return A_Err_PARAMETER;
        *result = host.refs.layer(host.project, id);
        return A_Err_NONE;
    });
}

/// The later structs only append, so the same slots serve all three.
template <class Suite>
Suite make_table() {
    Suite table{};
    table.AEGP_GetCompNumLayers = get_comp_num_layers;
    table.AEGP_GetCompLayerByIndex = get_comp_layer_by_index;
    table.AEGP_GetLayerIndex = get_layer_index;
    table.AEGP_GetLayerSourceItem = get_layer_source_item;
    table.AEGP_GetLayerSourceItemID = get_layer_source_item_id;
    table.AEGP_GetLayerParentComp = get_layer_parent_comp;
    table.AEGP_GetLayerName = get_layer_name;
    table.AEGP_GetLayerFlags = get_layer_flags;
    table.AEGP_SetLayerFlag = set_layer_flag;
    table.AEGP_IsLayerVideoReallyOn = is_layer_video_really_on;
    table.AEGP_IsVideoActive = is_video_active;
    table.AEGP_ReorderLayer = reorder_layer;
    table.AEGP_GetLayerObjectType = get_layer_object_type;
    table.AEGP_GetLayerID = get_layer_id;
    table.AEGP_GetLayerFromLayerID = get_layer_from_layer_id;
    return with_all_slots(table);
}

}  // namespace

void add_layer_suite(SuiteRegistry &suites) {
    static const auto table7 = make_table<AEGP_LayerSuite7>();
    static const auto table8 = make_table<AEGP_LayerSuite8>();
    static const auto table9 = make_table<AEGP_LayerSuite9>();
    suites.add(kAEGPLayerSuite, kAEGPLayerSuiteVersion7, &table7);
    suites.add(kAEGPLayerSuite, kAEGPLayerSuiteVersion8, &table8);
    suites.add(kAEGPLayerSuite, kAEGPLayerSuiteVersion9, &table9);
}

}  // namespace stage
