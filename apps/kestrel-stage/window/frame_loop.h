// The window's life: events, frames, and what is written down after them.
#pragma once

#include <SDL.h>

#include <optional>

#include "kestrel-stage/window/picture_pane.h"
#include "kestrel-stage/window/view.h"
#include "kestrel-stage/window/widgets/effect_controls.h"
#include "kestrel-stage/window/widgets/menus.h"
#include "kestrel-stage/window/widgets/strips.h"
#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "kestrel-stage/window/window.h"

namespace stage_view {

/// Draws a frame for every batch of events, and a few more until the widgets have come to rest;
/// then it sleeps until the next event. Mouse moves that wait are taken as one. A press, a release
/// or a key ends a batch, so that no click is lost between two frames.
class FrameLoop {
  public:
    FrameLoop(WindowActs &acts, Window &window, const ViewOptions &options);

    /// Until the window is closed, "Quit" is chosen, or enough frames have settled.
    void run();

  private:
    using Event = SDL_Event;
    void take_events();
    /// True when the batch ends with it.
    bool take_event(const Event &event);
    void take_move();
    void take_button(const SDL_MouseButtonEvent &button);
    void take_key(const SDL_KeyboardEvent &key);
    void draw();
    void draw_widgets();
    void choose_cursor();
    void settled();

    WindowActs &acts_;
    Window &window_;
    const ViewOptions &options_;
    PicturePane pane_;
    EffectControls controls_;
    Menus menus_;
    WidgetLog log_;
    FrameTimes times_;

    std::optional<SDL_MouseMotionEvent> pending_move_;
    std::optional<Event> held_back_;  ///< the first event of the next batch
    float mouse_x_ = 0, mouse_y_ = 0;
    bool buttons_[3] = {};  ///< left, right, middle
    bool mouse_inside_ = false;
    bool space_down_ = false;
    bool popup_open_ = false;
    int unsettled_ = 0;
    int drawn_frames_ = 0;
    int settled_frames_ = 0;
};

}  // namespace stage_view
