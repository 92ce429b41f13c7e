#include "stage/desk/viewer/viewer.h"

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/services/event_callbacks.h"
#include "stage/session/session.h"

namespace stage {
namespace {

/// Bit of PF_CustomUIInfo::events for each kind of window: comp 1, layer 2, effect 4.
bool takes_events(const Plugin &plugin, WindowKind kind) {
    return plugin.custom_ui && (plugin.ui_info.events & (1 << static_cast<int>(kind))) != 0;
}

PF_Point point_of(int x, int y) {
    PF_Point point{};
    point.h = x;
    point.v = y;
    return point;
}

}  // namespace

Viewer::Viewer(Session &session, EffectInstance &instance, WindowKind kind)
    : session_(session), instance_(instance), kind_(kind) {
    context_.w_type = static_cast<PF_WindowType>(kind);
    for (const PF_EventType type : {PF_Event_NEW_CONTEXT, PF_Event_ACTIVATE}) notify(type);
}

Viewer::~Viewer() {
    if (dragging_) end_drag();
    for (const PF_EventType type : {PF_Event_DEACTIVATE, PF_Event_CLOSE_CONTEXT}) notify(type);
}

void Viewer::notify(PF_EventType type) {
    PF_EventExtra extra{};
    extra.e_type = type;
    send(extra, false);
}

EventReply Viewer::send(PF_EventExtra &extra, bool takes_values) {
    EventReply reply;
    Host &host = session_.host;
    if (!takes_events(session_.plugin, kind_)) return reply;
    reply.sent = true;
    EventConversion conversion{&context_pointer_, layer_map(host.project, instance_.layer),
                               viewport};
    extra.contextH = &context_pointer_;
    extra.cbs = event_callbacks(conversion);
    extra.evt_in_flags = host.options.events_say_dont_draw ? PF_EI_DONT_DRAW : PF_EI_NONE;
    extra.evt_out_flags = PF_EO_NONE;
    const CommandResult result =
        session_.send_event(instance_, extra, frame, downsample, takes_values, reply.changed);
    reply.error = result.error;
    reply.message = result.message;
    reply.handled = (extra.evt_out_flags & PF_EO_HANDLED_EVENT) != 0;
    if (!reply.changed.empty()) {
        if (!reply.handled) {
            host.strict.report("event.unhandled_change", command_name(PF_Cmd_EVENT),
                               "values were changed in an event that was not marked as handled");
        }
        session_.refresh_panel(instance_);
    }
    return reply;
}

EventReply Viewer::press(int x, int y, int clicks, PF_Modifiers modifiers) {
    if (dragging_) release(x, y, modifiers);  // the button's release got lost
    click_ = {};
    click_.screen_point = point_of(x, y);
    click_.num_clicks = clicks;
    click_.modifiers = modifiers;
    session_.host.undo.begin_group("Drag Handle");
    PF_EventExtra extra{};
    extra.e_type = PF_Event_DO_CLICK;
    extra.u.do_click = click_;
    const EventReply reply = send(extra, true);
    click_ = extra.u.do_click;
    dragging_ = reply.error == 0 && reply.handled && click_.send_drag != 0;
    if (!dragging_) session_.host.undo.end_group();
    return reply;
}

EventReply Viewer::send_drag(int x, int y, PF_Modifiers modifiers, bool last) {
    click_.screen_point = point_of(x, y);
    click_.num_clicks = 0;
    click_.modifiers = modifiers;
    click_.last_time = last ? 1 : 0;
    const HostOptions &options = session_.host.options;
    if (!options.carry_send_drag) click_.send_drag = 0;
    if (options.drags_as_clicks) click_.send_drag = 1;
    PF_EventExtra extra{};
    extra.e_type = options.drags_as_clicks ? PF_Event_DO_CLICK : PF_Event_DRAG;
    extra.u.do_click = click_;
    const EventReply reply = send(extra, true);
    click_ = extra.u.do_click;
    if (last || reply.error != 0 || click_.send_drag == 0) end_drag();
    return reply;
}

void Viewer::end_drag() {
    dragging_ = false;
    session_.host.undo.end_group();
}

EventReply Viewer::move(int x, int y, PF_Modifiers modifiers) {
    if (dragging_) return send_drag(x, y, modifiers, false);
    PF_EventExtra extra{};
    extra.e_type = PF_Event_ADJUST_CURSOR;
    extra.u.adjust_cursor.screen_point = point_of(x, y);
    extra.u.adjust_cursor.modifiers = modifiers;
    const EventReply reply = send(extra, false);
    cursor_ = reply.error == 0 ? extra.u.adjust_cursor.set_cursor : PF_CursorType{0};
    return reply;
}

EventReply Viewer::release(int x, int y, PF_Modifiers modifiers) {
    return dragging_ ? send_drag(x, y, modifiers, true) : EventReply{};
}

EventReply Viewer::leave() {
    cursor_ = 0;
    PF_EventExtra extra{};
    extra.e_type = PF_Event_MOUSE_EXITED;
    return send(extra, false);
}

EventReply Viewer::idle() {
    PF_EventExtra extra{};
    extra.e_type = PF_Event_IDLE;
    return send(extra, false);
}

EventReply Viewer::key(PF_KeyCode code, PF_Modifiers modifiers) {
    PF_EventExtra extra{};
    extra.e_type = PF_Event_KEYDOWN;
    extra.u.key_down.keycode = code;
    extra.u.key_down.modifiers = modifiers;
    return send(extra, true);
}

EventReply Viewer::draw(DrawList &list) {
    list.primitives.clear();
    Host &host = session_.host;
    PF_EventExtra extra{};
    extra.e_type = PF_Event_DRAW;
    extra.u.draw.depth = 32;
    extra.u.draw.update_rect = {0, 0, viewport.width, viewport.height};
    host.drawbot.begin(list, host.options.null_drawing_reference, viewport.width, viewport.height);
    const EventReply reply = send(extra, false);
    host.drawbot.end(command_name(PF_Cmd_EVENT));
    return reply;
}

}  // namespace stage
