// Events of viewers: one command of the plug-in each, with all that the host makes of the answer.
#include <algorithm>

#include "hostapi/constants.h"
#include "stage/drawbot/draw_list.h"
#include "stage/services/event_callbacks.h"
#include "stage/session/session.h"

namespace stage {
namespace {

/// Bit of PF_CustomUIInfo::events for each kind of window: comp 1, layer 2, effect 4.
bool takes_events(const Plugin &plugin, WindowKind window) {
    return plugin.custom_ui && (plugin.ui_info.events & (1 << static_cast<int>(window))) != 0;
}

/// Events in which an effect may change values.
bool takes_values(PF_EventType event) {
    return event == PF_Event_DO_CLICK || event == PF_Event_DRAG || event == PF_Event_KEYDOWN;
}

bool marks_values(const std::vector<PF_ParamDef> &params) {
    return std::ranges::any_of(params, [](const PF_ParamDef &def) {
        return (def.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) != 0;
    });
}

}  // namespace

std::vector<int> Session::event_values(EffectInstance &instance, PF_EventType event,
                                       const std::vector<PF_ParamDef> &params) {
    if (takes_values(event)) return adopt_values(instance, params);
    if (marks_values(params)) {
        host.strict.report("event.value", host.command(),
                           "a value was changed in an event that takes none");
    }
    return {};
}

EventReply Session::send_event(EffectInstance &instance, PF_EventExtra &extra,
                               const EventWindow &window) {
    EventReply reply;
    if (!takes_events(plugin, window.kind)) return reply;
    reply.sent = true;
    EventConversion conversion{window.context, layer_map(host.project, instance.layer),
                               window.viewport};
    extra.contextH = window.context;
    extra.cbs = event_callbacks(conversion);
    extra.evt_in_flags = host.options.events_say_dont_draw ? PF_EI_DONT_DRAW : PF_EI_NONE;
    extra.evt_out_flags = PF_EO_NONE;
    CommandContext context = context_of(instance);
    context.current_time = static_cast<A_long>(window.frame);
    context.extra = &extra;
    context.with_params = true;
    if (host.options.events_at_view_ratio) {
        context.downsample_x = {1, static_cast<A_u_long>(window.downsample)};
        context.downsample_y = context.downsample_x;
    }
    const PF_EventType event = extra.e_type;
    CommandResult result =
        caller.call(PF_Cmd_EVENT, context, [&](const std::vector<PF_ParamDef> &params) {
            reply.changed = event_values(instance, event, params);
        });
    reply.error = result.error;
    reply.message = std::move(result.message);
    reply.handled = (extra.evt_out_flags & PF_EO_HANDLED_EVENT) != 0;
    if (reply.changed.empty()) return reply;
    if (!reply.handled) {
        host.strict.report("event.unhandled_change", command_name(PF_Cmd_EVENT),
                           "values were changed in an event that was not marked as handled");
    }
    refresh_panel(instance);
    return reply;
}

EventReply Session::draw_event(EffectInstance &instance, const EventWindow &window,
                               DrawList &list) {
    list.primitives.clear();
    const int width = window.viewport.width, height = window.viewport.height;
    PF_EventExtra extra{};
    extra.e_type = PF_Event_DRAW;
    extra.u.draw.depth = 32;
    extra.u.draw.update_rect = {0, 0, width, height};
    host.drawbot.begin(list, host.options.null_drawing_reference, width, height);
    EventReply reply = send_event(instance, extra, window);
    host.drawbot.end(command_name(PF_Cmd_EVENT));
    return reply;
}

}  // namespace stage
