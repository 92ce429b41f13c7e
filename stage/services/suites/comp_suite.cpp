#include <algorithm>
#include <cstdio>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"
#include "stage/text/utf16.h"

namespace stage {
namespace {

A_Err get_comp_from_item(HostCall &call, AEGP_ItemH item, AEGP_CompH &result) {
    const Item *found = item_of(call, item);
    if (found == nullptr) return A_Err_PARAMETER;
    // Null, without an error, for an item that is no comp.
    const ItemId comp = found->kind == ItemKind::kComp ? found->id : 0;
    result = call.host().refs.comp(call.host().project, comp);
    return A_Err_NONE;
}

A_Err get_item_from_comp(HostCall &call, AEGP_CompH comp, AEGP_ItemH &result) {
    const Item *found = comp_of(call, comp);
    if (found == nullptr) return A_Err_PARAMETER;
    result = call.host().refs.item(call.host().project, found->id);
    return A_Err_NONE;
}

A_Err get_comp_framerate(HostCall &call, AEGP_CompH comp, A_FpLong &result) {
    const Item *found = comp_of(call, comp);
    if (found == nullptr) return A_Err_PARAMETER;
    result = static_cast<A_FpLong>(found->rate_num) / found->rate_den;
    return A_Err_NONE;
}

A_Err get_comp_frame_duration(HostCall &call, AEGP_CompH comp, A_Time &result) {
    const Item *found = comp_of(call, comp);
    if (found == nullptr) return A_Err_PARAMETER;
    result = {found->rate_den, static_cast<A_u_long>(found->rate_num)};
    return A_Err_NONE;
}

A_Err get_most_recently_used_comp(HostCall &call, AEGP_CompH &result) {
    Host &host = call.host();
    result = host.refs.comp(host.project, host.project.active_comp);
    return A_Err_NONE;
}

/// Frames that a duration of A_Time lasts in `comp`; all of it for an invalid time scale.
std::int64_t frames_of(const A_Time &duration, const Item &comp) {
    if (duration.scale == 0) return comp.frames;
    const double seconds = static_cast<double>(duration.value) / duration.scale;
    const double frames = seconds * comp.rate_num / comp.rate_den;
    return static_cast<std::int64_t>(std::clamp(frames, 1.0, 1e9));
}

std::string describe_solid(const std::string &name, A_long width, A_long height,
                           const AEGP_ColorVal &color) {
    char text[128];
    std::snprintf(text, sizeof text, "%dx%d, argb %g %g %g %g", static_cast<int>(width),
                  static_cast<int>(height), color.alphaF, color.redF, color.greenF, color.blueF);
    return "\"" + name + "\", " + text;
}

A_Err create_solid_in_comp(HostCall &call, const A_UTF16Char *name, A_long width, A_long height,
                           const AEGP_ColorVal &color, AEGP_CompH comp, const A_Time *duration,
                           AEGP_LayerH &result) {
    const Item *found = comp_of(call, comp);
    if (found == nullptr || name == nullptr) return A_Err_PARAMETER;
    result = nullptr;
    const std::string text = utf8_from_utf16(name);
    if (call.traced()) call.arguments(describe_solid(text, width, height, color));
    const bool possible =
        width >= 1 && height >= 1 && width <= kMaxPictureSide && height <= kMaxPictureSide;
    if (!possible) return A_Err_PARAMETER;
    if (const A_Err err = begin_change(call, "New Solid")) return err;
    Project &project = call.host().project;
    const ItemId solid = project.add_solid_item(
        text, width, height, {color.alphaF, color.redF, color.greenF, color.blueF});
    Item *item = project.item(solid);
    item->par_num = found->par_num;
    item->par_den = found->par_den;
    item->rate_num = found->rate_num;
    item->rate_den = found->rate_den;
    // Without a duration the user's preference for stills counts: as long as the comp.
    item->frames = duration == nullptr ? found->frames : frames_of(*duration, *found);
    result = call.host().refs.layer(project, project.add_layer(found->id, solid, 0, text));
    return A_Err_NONE;
}

/// The slots used have the same types in all four structs.
template <class Suite>
constexpr auto comp_table() {
    CallTable<Suite, kAEGPCompSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetCompFromItem, get_comp_from_item);
    KS_SERVE(AEGP_GetItemFromComp, get_item_from_comp);
    KS_SERVE(AEGP_GetCompFramerate, get_comp_framerate);
    KS_SERVE(AEGP_GetCompFrameDuration, get_comp_frame_duration);
    KS_SERVE(AEGP_GetMostRecentlyUsedComp, get_most_recently_used_comp);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_CreateSolidInComp, create_solid_in_comp);
    return table;
}

}  // namespace

void add_comp_suite(SuiteRegistry &suites) {
    offer<comp_table<AEGP_CompSuite7>>(suites, kAEGPCompSuiteVersion7);
    offer<comp_table<AEGP_CompSuite10>>(suites, kAEGPCompSuiteVersion10);
    offer<comp_table<AEGP_CompSuite11>>(suites, kAEGPCompSuiteVersion11);
    offer<comp_table<AEGP_CompSuite12>>(suites, kAEGPCompSuiteVersion12);
}

}  // namespace stage
