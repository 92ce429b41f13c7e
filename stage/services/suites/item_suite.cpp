#include <algorithm>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

A_Err get_active_item(HostCall &call, AEGP_ItemH &result) {
    Host &host = call.host();
    result = host.refs.item(host.project, host.project.active_comp);
    return A_Err_NONE;
}

A_Err get_item_type(HostCall &call, AEGP_ItemH item, AEGP_ItemType &result) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    // Solids are footage: their own type is no longer in use.
    const bool comp = found->kind == ItemKind::kComp;
    result = comp ? AEGP_ItemType_COMP : AEGP_ItemType_FOOTAGE;
    return A_Err_NONE;
}

A_Err get_item_name(HostCall &call, AEGP_PluginID plugin_id, AEGP_ItemH item,
                    AEGP_MemHandle &result) {
    note_plugin_id(call, plugin_id);
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    return give_utf16(call, found->name, result) ? A_Err_NONE : A_Err_ALLOC;
}

A_Err get_item_id(HostCall &call, AEGP_ItemH item, A_long &result) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    result = found->id;
    return A_Err_NONE;
}

A_Err get_item_duration(HostCall &call, AEGP_ItemH item, A_Time &result) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    constexpr std::int64_t kLongest = INT32_MAX;
    const std::int64_t frames = std::min(found->frames, kLongest);
    result.value = static_cast<A_long>(std::min(frames * found->rate_den, kLongest));
    result.scale = static_cast<A_u_long>(found->rate_num);
    return A_Err_NONE;
}

A_Err get_item_dimensions(HostCall &call, AEGP_ItemH item, A_long &width, A_long &height) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    width = found->width;
    height = found->height;
    return A_Err_NONE;
}

A_Err get_item_pixel_aspect_ratio(HostCall &call, AEGP_ItemH item, A_Ratio &result) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    result = {found->par_num, static_cast<A_u_long>(found->par_den)};
    return A_Err_NONE;
}

template <class Suite>
constexpr auto item_table() {
    CallTable<Suite, kAEGPItemSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetActiveItem, get_active_item);
    KS_SERVE(AEGP_GetItemType, get_item_type);
    KS_SERVE(AEGP_GetItemName, get_item_name);
    KS_SERVE(AEGP_GetItemID, get_item_id);
    KS_SERVE(AEGP_GetItemDuration, get_item_duration);
    KS_SERVE(AEGP_GetItemDimensions, get_item_dimensions);
    KS_SERVE(AEGP_GetItemPixelAspectRatio, get_item_pixel_aspect_ratio);
    return table;
}

}  // namespace

void add_item_suite(SuiteRegistry &suites) {
    offer<item_table<AEGP_ItemSuite8>>(suites, kAEGPItemSuiteVersion8);
    offer<item_table<AEGP_ItemSuite9>>(suites, kAEGPItemSuiteVersion9);
}

}  // namespace stage
