#include "stage/desk/viewer/viewer.h"

#include "hostapi/constants.h"

namespace stage {
namespace {

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
    send(extra);
}

EventWindow Viewer::window() {
    return {kind_, &context_pointer_, viewport, frame, downsample};
}

EventReply Viewer::send(PF_EventExtra &extra) {
    return session_.send_event(instance_, extra, window());
}

EventReply Viewer::press(int x, int y, int clicks, PF_Modifiers modifiers) {
    if (dragging_) release(x, y, modifiers);  // the button's release got lost
    click_ = {};
    click_.screen_point = point_of(x, y);
    click_.num_clicks = clicks;
    click_.modifiers = modifiers;
    session_.history().begin_group("Drag Handle");
    PF_EventExtra extra{};
    extra.e_type = PF_Event_DO_CLICK;
    extra.u.do_click = click_;
    const EventReply reply = send(extra);
    click_ = extra.u.do_click;
    dragging_ = reply.error == 0 && reply.handled && click_.send_drag != 0;
    if (!dragging_) session_.history().end_group();
    return reply;
}

EventReply Viewer::send_drag(int x, int y, PF_Modifiers modifiers, bool last) {
    click_.screen_point = point_of(x, y);
    click_.num_clicks = 0;
    click_.modifiers = modifiers;
    click_.last_time = last ? 1 : 0;
    const HostOptions &options = session_.options();
    if (!options.carry_send_drag) click_.send_drag = 0;
    if (options.drags_as_clicks) click_.send_drag = 1;
    PF_EventExtra extra{};
    extra.e_type = options.drags_as_clicks ? PF_Event_DO_CLICK : PF_Event_DRAG;
    extra.u.do_click = click_;
    const EventReply reply = send(extra);
    click_ = extra.u.do_click;
    if (last || reply.error != 0 || click_.send_drag == 0) end_drag();
    return reply;
}

void Viewer::end_drag() {
    dragging_ = false;
    session_.history().end_group();
}

EventReply Viewer::move(int x, int y, PF_Modifiers modifiers) {
    if (dragging_) return send_drag(x, y, modifiers, false);
    PF_EventExtra extra{};
    extra.e_type = PF_Event_ADJUST_CURSOR;
    extra.u.adjust_cursor.screen_point = point_of(x, y);
    extra.u.adjust_cursor.modifiers = modifiers;
    const EventReply reply = send(extra);
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
    return send(extra);
}

EventReply Viewer::idle() {
    PF_EventExtra extra{};
    extra.e_type = PF_Event_IDLE;
    return send(extra);
}

EventReply Viewer::key(PF_KeyCode code, PF_Modifiers modifiers) {
    PF_EventExtra extra{};
    extra.e_type = PF_Event_KEYDOWN;
    extra.u.key_down.keycode = code;
    extra.u.key_down.modifiers = modifiers;
    return send(extra);
}

EventReply Viewer::draw(DrawList &list) {
    return session_.draw_event(instance_, window(), list);
}

}  // namespace stage
