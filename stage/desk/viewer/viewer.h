// A comp or layer window in which the chosen effect draws and handles its handles.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "hostapi/events.h"
#include "stage/drawbot/draw_list.h"
#include "stage/drawbot/viewport.h"
#include "stage/session/session.h"

namespace stage {

/// Opening sends NEW_CONTEXT and ACTIVATE, closing DEACTIVATE and CLOSE_CONTEXT. All changes of one
/// click and its drags are one step of undo. The instance must outlive the viewer. Positions are
/// window pixels. [host thread]
class Viewer {
  public:
    Viewer(Session &session, EffectInstance &instance, WindowKind kind);
    ~Viewer();
    Viewer(const Viewer &) = delete;
    Viewer &operator=(const Viewer &) = delete;

    Viewport viewport;
    std::int64_t frame = 0;  ///< of the comp: time of the events
    int downsample = 1;      ///< of the view; reaches events with HostOptions::events_at_view_ratio

    /// DO_CLICK. A press without HANDLED starts no drag.
    EventReply press(int x, int y, int clicks = 1, PF_Modifiers modifiers = 0);
    /// DRAG while the effect asked for drags, else ADJUST_CURSOR.
    EventReply move(int x, int y, PF_Modifiers modifiers = 0);
    /// The last DRAG, with last_time, when one is going on.
    EventReply release(int x, int y, PF_Modifiers modifiers = 0);
    /// MOUSE_EXITED; the cursor becomes the host's.
    EventReply leave();
    EventReply idle();
    EventReply key(PF_KeyCode code, PF_Modifiers modifiers = 0);
    /// DRAW. What the effect drew replaces the contents of `list`.
    EventReply draw(DrawList &list);

    bool dragging() const { return dragging_; }
    /// The cursor type that the effect chose at the last move; 0 leaves it to the host.
    PF_CursorType cursor() const { return cursor_; }
    WindowKind kind() const { return kind_; }
    EffectInstance &instance() const { return instance_; }
    /// The four slots of a click-drag sequence, as the host carries them.
    const PF_DoClickEventInfo &click_record() const { return click_; }

  private:
    EventReply send(PF_EventExtra &extra);
    EventWindow window();
    EventReply send_drag(int x, int y, PF_Modifiers modifiers, bool last);
    void end_drag();
    void notify(PF_EventType type);

    Session &session_;
    EffectInstance &instance_;
    WindowKind kind_;
    PF_Context context_{};
    PF_Context *context_pointer_ = &context_;
    PF_DoClickEventInfo click_{};
    PF_CursorType cursor_ = 0;
    bool dragging_ = false;
};

}  // namespace stage
