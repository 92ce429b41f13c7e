#include "stage/services/interact_callbacks.h"

#include <cstdint>
#include <cstring>
#include <exception>
#include <string>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"

namespace stage {
namespace {

ActiveCommand *require_active(HostCall &call) {
    ActiveCommand *active = call.host().active;
    if (active == nullptr) {
        call.host().strict.report("callback.outside", call.command(),
                                  "an interaction callback was used outside any command");
    }
    return active;
}

PF_Err add_param(PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
    HostCall call("inter.add_param");
    if (call.traced() && def != nullptr) {
        call.arguments(std::to_string(index) + ", " + param_type_name(def->param_type) + " \"" +
                       std::string(def->name, ::strnlen(def->name, sizeof def->name)) + "\"");
    }
    if (call.must_fail()) return call.result(call.error());
    ActiveCommand *active = require_active(call);
    if (active == nullptr || def == nullptr || active->cmd != PF_Cmd_PARAMS_SETUP || index != -1) {
        call.host().strict.report("params.add", call.command(),
                                  "add_param with index other than -1 or outside PARAMS_SETUP");
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    try {
        active->plugin->catalog.append(*def);
    } catch (const std::exception &refusal) {
        call.host().strict.report("params.definition", call.command(), refusal.what());
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    return call.result(PF_Err_NONE);
}

PF_Err register_ui(PF_ProgPtr, PF_CustomUIInfo *info) {
    HostCall call("inter.register_ui");
    if (call.traced() && info != nullptr) call.arguments("events " + std::to_string(info->events));
    if (call.must_fail()) return call.result(call.error());
    ActiveCommand *active = require_active(call);
    if (active == nullptr || info == nullptr) return call.result(PF_Err_BAD_CALLBACK_PARAM);
    active->plugin->custom_ui = true;
    active->plugin->ui_info = *info;
    return call.result(PF_Err_NONE);
}

/// In UI commands a set layer parameter gives a record of the right size with pixels that must not
/// be read; this one byte is their address.
std::uint8_t g_unreadable_pixel[16];

void fill_layer_param(ActiveCommand &active, PF_ParamIndex index, PF_ParamDef &def) {
    Host &host = Host::current();
    const Layer *layer = host.project.layer(active.instance->layer);
    const auto &streams =
        layer->effects.at(static_cast<std::size_t>(active.instance->effect)).streams;
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

PF_Err checkout_param(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                      A_long time_step, A_u_long time_scale, PF_ParamDef *param) {
    HostCall call("inter.checkout_param");
    if (call.traced()) {
        call.arguments(std::to_string(index) + ", " + std::to_string(what_time) + "/" +
                       std::to_string(time_scale) + " step " + std::to_string(time_step));
    }
    if (call.must_fail()) return call.result(call.error());
    ActiveCommand *active = require_active(call);
    if (active == nullptr || active->instance == nullptr || param == nullptr ||
        call.host().instance(effect_ref) != active->instance || index < 0 ||
        index >= active->plugin->catalog.count()) {
        call.host().strict.report("params.checkout", call.command(),
                                  "check-out of parameter " + std::to_string(index) +
                                      " without an instance or out of range");
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    for (const PF_ParamDef *own : active->params_array) {
        if (own == param) {
            call.host().strict.report("params.checkout", call.command(),
                                      "check-out into the params array");
        }
    }
    *param = active->plugin->catalog.at(index).def;
    if (param->param_type == PF_Param_LAYER) {
        fill_layer_param(*active, index, *param);
    } else {
        const Layer *layer = call.host().project.layer(active->instance->layer);
        const auto &streams =
            layer->effects.at(static_cast<std::size_t>(active->instance->effect)).streams;
        store_value(*param, streams.at(static_cast<std::size_t>(index)).value, active->scale);
    }
    active->param_checkouts.insert(param);
    return call.result(PF_Err_NONE);
}

PF_Err checkin_param(PF_ProgPtr, PF_ParamDef *param) {
    HostCall call("inter.checkin_param");
    ActiveCommand *active = call.host().active;
    // The check-in happens even when its result is made to fail: the host cannot keep the record.
    const bool was_open = active != nullptr && active->param_checkouts.count(param) > 0;
    if (was_open) {
        active->param_checkouts.erase(active->param_checkouts.find(param));
        // What is read after the check-in must look wrong.
        std::memset(static_cast<void *>(param), 0xA5, sizeof *param);
    } else {
        call.host().strict.report("params.checkin", call.command(),
                                  "check-in of a parameter that was not checked out");
    }
    if (call.must_fail()) return call.result(call.error());
    return call.result(was_open ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM);
}

PF_Err abort_query(PF_ProgPtr) {
    HostCall call("inter.abort");
    if (call.must_fail()) return call.result(call.error());
    ActiveCommand *active = call.host().active;
    const std::int64_t number = active != nullptr ? ++active->abort_calls : 0;
    const HostOptions &options = call.host().options;
    const bool cancelled = options.user_cancels || (options.cancel_at_abort_call > 0 &&
                                                    number == options.cancel_at_abort_call);
    return call.result(cancelled ? PF_Err{PF_Interrupt_CANCEL} : PF_Err{PF_Err_NONE});
}

PF_Err progress(PF_ProgPtr, A_long current, A_long total) {
    HostCall call("inter.progress");
    if (call.traced()) call.arguments(std::to_string(current) + "/" + std::to_string(total));
    if (call.must_fail()) return call.result(call.error());
    return call.result(PF_Err_NONE);
}

}  // namespace

PF_InteractCallbacks interact_callbacks() {
    PF_InteractCallbacks callbacks{};
    callbacks.checkout_param = checkout_param;
    callbacks.checkin_param = checkin_param;
    callbacks.add_param = add_param;
    callbacks.abort = abort_query;
    callbacks.progress = progress;
    callbacks.register_ui = register_ui;
    return callbacks;
}

}  // namespace stage
