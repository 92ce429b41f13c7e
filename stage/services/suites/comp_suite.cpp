#include <algorithm>
#include <cstdio>

#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"
#include "stage/text/utf16.h"

#define KS_NAME(function) "AEGP Comp Suite." #function

namespace stage {
namespace {

A_Err get_comp_from_item(AEGP_ItemH item, AEGP_CompH *result) {
    HostCall call(KS_NAME(AEGP_GetCompFromItem));
    return run_call(call, [&]() -> A_Err {
        const Item *found = item_of(call, item);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        // Null, without an error, for an item that is no comp.
        const ItemId comp = found->kind == ItemKind::kComp ? found->id : 0;
        *result = call.host().refs.comp(call.host().project, comp);
        return A_Err_NONE;
    });
}

A_Err get_item_from_comp(AEGP_CompH comp, AEGP_ItemH *result) {
    HostCall call(KS_NAME(AEGP_GetItemFromComp));
    return run_call(call, [&]() -> A_Err {
        const Item *found = comp_of(call, comp);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = call.host().refs.item(call.host().project, found->id);
        return A_Err_NONE;
    });
}

A_Err get_comp_framerate(AEGP_CompH comp, A_FpLong *result) {
    HostCall call(KS_NAME(AEGP_GetCompFramerate));
    return run_call(call, [&]() -> A_Err {
        const Item *found = comp_of(call, comp);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = static_cast<A_FpLong>(found->rate_num) / found->rate_den;
        return A_Err_NONE;
    });
}

A_Err get_comp_frame_duration(AEGP_CompH comp, A_Time *result) {
    HostCall call(KS_NAME(AEGP_GetCompFrameDuration));
    return run_call(call, [&]() -> A_Err {
        const Item *found = comp_of(call, comp);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = {found->rate_den, static_cast<A_u_long>(found->rate_num)};
        return A_Err_NONE;
    });
}

A_Err get_most_recently_used_comp(AEGP_CompH *result) {
    HostCall call(KS_NAME(AEGP_GetMostRecentlyUsedComp));
    return run_call(call, [&]() -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        Host &host = call.host();
        *result = host.refs.comp(host.project, host.project.active_comp);
        return A_Err_NONE;
    });
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

A_Err create_solid_in_comp(const A_UTF16Char *name, A_long width, A_long height,
                           const AEGP_ColorVal *color, AEGP_CompH comp, const A_Time *duration,
                           AEGP_LayerH *result) {
    HostCall call(KS_NAME(AEGP_CreateSolidInComp), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const Item *found = comp_of(call, comp);
        if (found == nullptr || name == nullptr || color == nullptr || result == nullptr) {
            return A_Err_PARAMETER;
        }
        *result = nullptr;
        const std::string text = utf8_from_utf16(name);
        if (call.traced()) call.arguments(describe_solid(text, width, height, *color));
        const bool possible =
            width >= 1 && height >= 1 && width <= kMaxPictureSide && height <= kMaxPictureSide;
        if (!possible) return A_Err_PARAMETER;
        if (const A_Err err = begin_change(call, "New Solid")) return err;
        Project &project = call.host().project;
        const ItemId solid = project.add_solid_item(
            text, width, height, {color->alphaF, color->redF, color->greenF, color->blueF});
        Item *item = project.item(solid);
        item->par_num = found->par_num;
        item->par_den = found->par_den;
        item->rate_num = found->rate_num;
        item->rate_den = found->rate_den;
        // Without a duration the user's preference for stills counts: as long as the comp.
        item->frames = duration == nullptr ? found->frames : frames_of(*duration, *found);
        *result = call.host().refs.layer(project, project.add_layer(found->id, solid, 0, text));
        return A_Err_NONE;
    });
}

/// The slots used have the same types in all four structs.
template <class Suite>
Suite make_table() {
    Suite table{};
    table.AEGP_GetCompFromItem = get_comp_from_item;
    table.AEGP_GetItemFromComp = get_item_from_comp;
    table.AEGP_GetCompFramerate = get_comp_framerate;
    table.AEGP_GetCompFrameDuration = get_comp_frame_duration;
    table.AEGP_GetMostRecentlyUsedComp = get_most_recently_used_comp;
    table.AEGP_CreateSolidInComp = create_solid_in_comp;
    return with_all_slots(table);
}

}  // namespace

void add_comp_suite(SuiteRegistry &suites) {
    static const auto table7 = make_table<AEGP_CompSuite7>();
    static const auto table10 = make_table<AEGP_CompSuite10>();
    static const auto table11 = make_table<AEGP_CompSuite11>();
    static const auto table12 = make_table<AEGP_CompSuite12>();
    suites.add(kAEGPCompSuite, kAEGPCompSuiteVersion7, &table7);
    suites.add(kAEGPCompSuite, kAEGPCompSuiteVersion10, &table10);
    suites.add(kAEGPCompSuite, kAEGPCompSuiteVersion11, &table11);
    suites.add(kAEGPCompSuite, kAEGPCompSuiteVersion12, &table12);
}

}  // namespace stage
