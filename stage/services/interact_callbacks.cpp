#include "stage/services/interact_callbacks.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/complete_table.h"
#include "stage/host/host.h"

namespace stage {
namespace {

ActiveCommand *require_active(HostCall &call) {
    ActiveCommand *active = call.host().active;
    if (active == nullptr) {
        call.report("callback.outside", "an interaction callback was used outside any command");
    }
    return active;
}

PF_Err add_param(HostCall &call, PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
    ActiveCommand *active = require_active(call);
    if (active == nullptr || def == nullptr || active->cmd != PF_Cmd_PARAMS_SETUP || index != -1) {
        call.report("params.add", "add_param with index other than -1 or outside PARAMS_SETUP");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    try {
        active->plugin->catalog.append(*def);
    } catch (const std::runtime_error &refusal) {
        call.report("params.definition", refusal.what());
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    return PF_Err_NONE;
}
std::string describe_addition(PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
    if (def == nullptr) return "";
    return std::to_string(index) + ", " + param_type_name(def->param_type) + " \"" +
           std::string(def->name, ::strnlen(def->name, sizeof def->name)) + "\"";
}

PF_Err register_ui(HostCall &call, PF_ProgPtr, PF_CustomUIInfo &info) {
    ActiveCommand *active = require_active(call);
    if (active == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    active->plugin->custom_ui = true;
    active->plugin->ui_info = info;
    return PF_Err_NONE;
}
std::string describe_registration(PF_ProgPtr, PF_CustomUIInfo *info) {
    return info != nullptr ? "events " + std::to_string(info->events) : "";
}

/// In UI commands a set layer parameter gives a record of the right size with pixels that must not
/// be read; this one byte is their address.
std::uint8_t g_unreadable_pixel[16];

void fill_layer_param(ActiveCommand &active, PF_ParamIndex index, PF_ParamDef &def) {
    Host &host = Host::current();
    const auto &streams = effect_state(host.project, *active.instance).streams;
    const int chosen = streams.at(static_cast<std::size_t>(index)).value.layer;
    def.u.ld = PF_LayerDef{};
    if (active.frame != nullptr) {
        const World *world = index == 0 ? active.frame->input : active.frame->original_input;
        if (world != nullptr) def.u.ld = world->def;
        return;
    }
    const Layer *source = chosen != 0 ? host.project.layer(chosen) : nullptr;
    const Item *item = source != nullptr ? host.project.item(source->source) : nullptr;
    if (item == nullptr) return;
    def.u.ld.width = item->width;
    def.u.ld.height = item->height;
    def.u.ld.rowbytes = item->width * 4;
    def.u.ld.data = reinterpret_cast<PF_PixelPtr>(g_unreadable_pixel);
}

PF_Err checkout_param(HostCall &call, PF_ProgPtr effect_ref, PF_ParamIndex index, A_long, A_long,
                      A_u_long, PF_ParamDef *param) {
    ActiveCommand *active = require_active(call);
    if (active == nullptr || active->instance == nullptr || param == nullptr ||
        call.host().instance(effect_ref) != active->instance || index < 0 ||
        index >= active->plugin->catalog.count()) {
        call.report("params.checkout", "check-out of parameter " + std::to_string(index) +
                                           " without an instance or out of range");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    for (const PF_ParamDef *own : active->params_array) {
        if (own == param) call.report("params.checkout", "check-out into the params array");
    }
    *param = active->plugin->catalog.at(index).def;
    if (param->param_type == PF_Param_LAYER) {
        fill_layer_param(*active, index, *param);
    } else {
        const auto &streams = effect_state(call.host().project, *active->instance).streams;
        store_value(*param, streams.at(static_cast<std::size_t>(index)).value, active->scale);
    }
    active->param_checkouts.insert(param);
    return PF_Err_NONE;
}
std::string describe_checkout(PF_ProgPtr, PF_ParamIndex index, A_long what_time, A_long time_step,
                              A_u_long time_scale, PF_ParamDef *) {
    return std::to_string(index) + ", " + std::to_string(what_time) + "/" +
           std::to_string(time_scale) + " step " + std::to_string(time_step);
}

PF_Err checkin_param(HostCall &call, PF_ProgPtr, PF_ParamDef *param) {
    ActiveCommand *active = call.host().active;
    if (active == nullptr || active->param_checkouts.count(param) == 0) {
        call.report("params.checkin", "check-in of a parameter that was not checked out");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    active->param_checkouts.erase(active->param_checkouts.find(param));
    // What is read after the check-in must look wrong.
    std::memset(static_cast<void *>(param), 0xA5, sizeof *param);
    return PF_Err_NONE;
}

PF_Err abort_query(HostCall &call, PF_ProgPtr) {
    ActiveCommand *active = call.host().active;
    const std::int64_t number = active != nullptr ? ++active->abort_calls : 0;
    const HostOptions &options = call.host().options;
    const bool cancelled = options.user_cancels || (options.cancel_at_abort_call > 0 &&
                                                    number == options.cancel_at_abort_call);
    return cancelled ? PF_Err{PF_Interrupt_CANCEL} : PF_Err_NONE;
}

PF_Err progress(HostCall &, PF_ProgPtr, A_long, A_long) {
    return PF_Err_NONE;
}
std::string describe_progress(PF_ProgPtr, A_long current, A_long total) {
    return std::to_string(current) + "/" + std::to_string(total);
}

constexpr auto make_table() {
    CallTable<PF_InteractCallbacks, "inter"> table;
    KS_SERVE(checkout_param, checkout_param, describe_checkout);
    KS_SERVE_BY(table.kRules.that_release(), checkin_param, checkin_param);
    KS_SERVE(add_param, add_param, describe_addition);
    KS_SERVE(abort, abort_query);
    KS_SERVE(progress, progress, describe_progress);
    KS_SERVE(register_ui, register_ui, describe_registration);
    return with_all_callbacks(table);
}

}  // namespace

PF_InteractCallbacks interact_callbacks() {
    static constexpr auto kTable = make_table();
    return kTable.get();
}

}  // namespace stage
