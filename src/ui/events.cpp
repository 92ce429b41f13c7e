#include "ui/events.h"

#include "host/suite_cache.h"
#include "hostapi/constants.h"
#include "ui/draw_event.h"
#include "ui/event_settings.h"
#include "ui/event_window.h"
#include "ui/handles/drag.h"

namespace ks {
namespace {

struct Event {
    PF_InData *in_data;
    PF_OutData *out_data;
    PF_ParamDef *const *params;
    PF_EventExtra &extra;
    const EventWindow &window;
};

struct EventRow {
    PF_EventType type;
    void (*handle)(const Event &);
};

WindowPoint window_point(const PF_Point &point) {
    return {point.h, point.v};
}

DragState load(const PF_DoClickEventInfo &info) {
    return {info.send_drag != 0,
            info.continue_refcon[0],
            {info.continue_refcon[1], info.continue_refcon[2]}};
}

void store(const DragState &state, PF_DoClickEventInfo &info) {
    info.send_drag = state.send_drag ? 1 : 0;
    info.continue_refcon[0] = state.handle;
    info.continue_refcon[1] = state.slots[0];
    info.continue_refcon[2] = state.slots[1];
}

void mark_handled(const Event &event) {
    event.extra.evt_out_flags |= PF_EO_HANDLED_EVENT;
}

void click(const Event &event) {
    SuiteCache suites(event.in_data->pica_basicP);
    PF_DoClickEventInfo &info = event.extra.u.do_click;
    const std::optional<Hit> hit =
        clicked_handle(read_handle_settings(*event.in_data, event.params), event.window,
                       window_point(info.screen_point), suites.ansi().fabs);
    if (!hit) return;
    store(after_click(*hit, load(info)), info);
    mark_handled(event);
}

void drag(const Event &event) {
    PF_DoClickEventInfo &info = event.extra.u.do_click;
    const DragState state = load(info);
    if (const HandleRow *row = dragged_handle(state)) {
        const std::optional<FixedPoint> pointer =
            event.window.to_layer(window_point(info.screen_point));
        if (pointer) {
            const HandleSettings settings = read_handle_settings(*event.in_data, event.params);
            write_params(event.params, dragged_values(*row, settings, *pointer, state));
        }
        store(after_drag(*row, pointer, info.last_time != 0, state), info);
    }
    mark_handled(event);
}

void draw(const Event &event) {
    draw_handles(event.in_data, event.out_data, event.extra,
                 read_handle_settings(*event.in_data, event.params), event.window);
    mark_handled(event);
}

void adjust_cursor(const Event &event) {
    SuiteCache suites(event.in_data->pica_basicP);
    PF_AdjustCursorEventInfo &info = event.extra.u.adjust_cursor;
    info.set_cursor = cursor_at(read_handle_settings(*event.in_data, event.params), event.window,
                                window_point(info.screen_point), suites.ansi().fabs);
}

constexpr EventRow kEvents[] = {
    {PF_Event_DO_CLICK, click},
    {PF_Event_DRAG, drag},
    {PF_Event_DRAW, draw},
    {PF_Event_ADJUST_CURSOR, adjust_cursor},
};

/// A click that still asks for drags is a drag in the host's old form.
PF_EventType event_type(const PF_EventExtra &extra) {
    const bool drags = extra.e_type == PF_Event_DO_CLICK && extra.u.do_click.send_drag != 0;
    return drags ? PF_Event_DRAG : extra.e_type;
}

}  // namespace

PF_Err handle_event(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *params[],
                    PF_EventExtra *extra) {
    if (extra == nullptr || params == nullptr) return PF_Err_NONE;
    const EventWindow window(*in_data, *extra);
    if (!window.shows_handles()) return PF_Err_NONE;
    const PF_EventType type = event_type(*extra);
    for (const EventRow &row : kEvents) {
        if (row.type == type) row.handle({in_data, out_data, params, *extra, window});
    }
    return PF_Err_NONE;
}

}  // namespace ks
