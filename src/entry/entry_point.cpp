// The edge to the host: one table of commands, one place where failures become results.
#include "hostapi/entry_point.h"

#include <new>
#include <string_view>

#include "entry/global_commands.h"
#include "entry/identity.h"
#include "entry/smart_render.h"
#include "hostapi/constants.h"
#include "instance/sequence.h"
#include "params/panel_edits.h"
#include "params/panel_refresh.h"
#include "params/params_setup.h"
#include "ui/events.h"

#if defined(_WIN32)
// The module definition file exports it.
#define KS_EXPORT extern "C"
#else
#define KS_EXPORT extern "C" [[gnu::visibility("default")]]
#endif

namespace ks {
namespace {

struct Call {
    PF_InData *in_data;
    PF_OutData *out_data;
    PF_ParamDef **params;
    void *extra;
};

struct Command {
    PF_Cmd number;
    PF_Err (*handle)(const Call &);
};

constexpr Command kCommands[] = {
    {PF_Cmd_ABOUT, [](const Call &c) { return about(c.in_data, c.out_data); }},
    {PF_Cmd_GLOBAL_SETUP, [](const Call &c) { return global_setup(c.in_data, c.out_data); }},
    {PF_Cmd_GLOBAL_SETDOWN, [](const Call &c) { return global_setdown(c.in_data); }},
    {PF_Cmd_PARAMS_SETUP, [](const Call &c) { return params_setup(c.in_data, c.out_data); }},
    {PF_Cmd_SEQUENCE_SETUP,
     [](const Call &c) { return sequence_setup(c.in_data, c.out_data, true); }},
    {PF_Cmd_SEQUENCE_RESETUP,
     [](const Call &c) { return sequence_resetup(c.in_data, c.out_data); }},
    {PF_Cmd_SEQUENCE_FLATTEN,
     [](const Call &c) { return sequence_flatten(c.in_data, c.out_data); }},
    {PF_Cmd_SEQUENCE_SETDOWN,
     [](const Call &c) { return sequence_setdown(c.in_data, c.out_data); }},
    {PF_Cmd_USER_CHANGED_PARAM,
     [](const Call &c) {
         return user_changed_param(c.in_data, c.out_data, c.params,
                                   static_cast<PF_UserChangedParamExtra *>(c.extra));
     }},
    {PF_Cmd_UPDATE_PARAMS_UI,
     [](const Call &c) { return update_params_ui(c.in_data, c.out_data, c.params); }},
    {PF_Cmd_EVENT,
     [](const Call &c) {
         return handle_event(c.in_data, c.out_data, c.params,
                             static_cast<PF_EventExtra *>(c.extra));
     }},
    {PF_Cmd_SMART_PRE_RENDER,
     [](const Call &c) {
         return smart_pre_render(c.in_data, static_cast<PF_PreRenderExtra *>(c.extra));
     }},
    {PF_Cmd_SMART_RENDER,
     [](const Call &c) {
         return smart_render(c.in_data, c.out_data, static_cast<PF_SmartRenderExtra *>(c.extra));
     }},
};

/// Runs the handler of `number`; a command that is not in the table succeeds and touches nothing.
PF_Err dispatch(PF_Cmd number, const Call &call) {
    for (const Command &command : kCommands) {
        if (command.number == number) return command.handle(call);
    }
    return PF_Err_NONE;
}

/// dispatch() with every failure as a result. Errors of the host are thrown as their numbers;
/// whatever else is thrown, chiefly by the standard library when memory runs out, would crash the
/// host if it crossed the edge.
PF_Err run(PF_Cmd number, const Call &call) noexcept {
    try {
        return dispatch(number, call);
    } catch (PF_Err error) {
        return error;
    } catch (const std::bad_alloc &) {
        return PF_Err_OUT_OF_MEMORY;
    } catch (...) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}

static_assert(std::string_view(KS_ENTRY_POINT) == "EntryPointFunc");

}  // namespace
}  // namespace ks

KS_EXPORT PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData *in_data, PF_OutData *out_data,
                                PF_ParamDef *params[], PF_LayerDef *, void *extra) {
    return ks::run(cmd, {in_data, out_data, params, extra});
}
