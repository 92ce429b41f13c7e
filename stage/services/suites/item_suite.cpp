#include <algorithm>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP Item Suite." #function

namespace stage {
namespace {

A_Err get_active_item(AEGP_ItemH *result) {
    HostCall call(KS_NAME(AEGP_GetActiveItem));
    return run_call(call, [&]() -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        Host &host = call.host();
        *result = host.refs.item(host.project, host.project.active_comp);
        return A_Err_NONE;
    });
}

A_Err get_item_type(AEGP_ItemH item, AEGP_ItemType *result) {
    HostCall call(KS_NAME(AEGP_GetItemType));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        // Solids are footage: their own type is no longer in use.
        const bool comp = found->kind == ItemKind::kComp;
        *result = comp ? AEGP_ItemType_COMP : AEGP_ItemType_FOOTAGE;
        return A_Err_NONE;
    });
}

A_Err get_item_name(AEGP_PluginID plugin_id, AEGP_ItemH item, AEGP_MemHandle *result) {
    HostCall call(KS_NAME(AEGP_GetItemName));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        return give_utf16(call, found->name, result) ? A_Err_NONE : A_Err_ALLOC;
    });
}

A_Err get_item_id(AEGP_ItemH item, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetItemID));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = found->id;
        return A_Err_NONE;
    });
}

A_Err get_item_duration(AEGP_ItemH item, A_Time *result) {
    HostCall call(KS_NAME(AEGP_GetItemDuration));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        constexpr std::int64_t kLongest = INT32_MAX;
        const std::int64_t frames = std::min(found->frames, kLongest);
        result->value = static_cast<A_long>(std::min(frames * found->rate_den, kLongest));
        result->scale = static_cast<A_u_long>(found->rate_num);
        return A_Err_NONE;
    });
}

A_Err get_item_dimensions(AEGP_ItemH item, A_long *width, A_long *height) {
    HostCall call(KS_NAME(AEGP_GetItemDimensions));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || width == nullptr || height == nullptr) return A_Err_PARAMETER;
        *width = found->width;
        *height = found->height;
        return A_Err_NONE;
    });
}

A_Err get_item_pixel_aspect_ratio(AEGP_ItemH item, A_Ratio *result) {
    HostCall call(KS_NAME(AEGP_GetItemPixelAspectRatio));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = {found->par_num, static_cast<A_u_long>(found->par_den)};
        return A_Err_NONE;
    });
}

template <class Suite>
Suite make_table() {
    Suite table{};
    table.AEGP_GetActiveItem = get_active_item;
    table.AEGP_GetItemType = get_item_type;
    table.AEGP_GetItemName = get_item_name;
    table.AEGP_GetItemID = get_item_id;
    table.AEGP_GetItemDuration = get_item_duration;
    table.AEGP_GetItemDimensions = get_item_dimensions;
    table.AEGP_GetItemPixelAspectRatio = get_item_pixel_aspect_ratio;
    return with_all_slots(table);
}

}  // namespace

void add_item_suite(SuiteRegistry &suites) {
    static const auto table8 = make_table<AEGP_ItemSuite8>();
    static const auto table9 = make_table<AEGP_ItemSuite9>();
    suites.add(kAEGPItemSuite, kAEGPItemSuiteVersion8, &table8);
    suites.add(kAEGPItemSuite, kAEGPItemSuiteVersion9, &table9);
}

}  // namespace stage
