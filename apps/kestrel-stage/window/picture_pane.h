// The picture: a comp or layer window with the effect's handles, and the mouse in it.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"
#include "kestrel-stage/window/window.h"

namespace stage_view {

/// What the last drag of a handle cost: whole frames, from the mouse event to the finished window.
struct DragTimes {
    int frames = 0;
    double milliseconds = 0;        ///< sum of all
    double worst_milliseconds = 0;  ///< of the slowest
};

/// The pane's pixels are the viewer's window pixels.
class PicturePane {
  public:
    PicturePane(WindowActs &acts, Window &window) : acts_(acts), window_(window) {}

    /// Where the pane lies from now on.
    void place(const PixelRect &area);
    const PixelRect &area() const { return area_; }

    // Events, in pixels of the whole window. `free`: nothing lies over the pane.
    void press(int x, int y, int button, int clicks, bool space_down, bool free);
    void move(int x, int y, bool free);
    void release(int x, int y, int button);
    /// The point is in the pane and free.
    void wheel(int x, int y, double steps);
    void leave();
    /// The pane has the mouse: a press in it is still held.
    bool holds_mouse() const { return holder_ != Holder::kNone; }
    bool under_pointer() const { return under_pointer_; }
    /// Shape of the pointer in the pane.
    SDL_SystemCursor cursor(bool space_down) const;

    /// Renders what changed and draws it. Nothing else is drawn into the pane's area.
    void draw();
    /// The frame whose drawing began with a drag event took this long.
    void finish_frame(double milliseconds);
    const DragTimes &drag_times() const { return drag_times_; }
    /// Wall time of the last rendered frame of the comp, milliseconds.
    double render_milliseconds() const { return render_milliseconds_; }
    std::int64_t renders() const { return renders_; }

  private:
    enum class Holder { kNone, kEffect, kPan };
    void refresh_texture();

    WindowActs &acts_;
    Window &window_;
    PixelRect area_;
    Holder holder_ = Holder::kNone;
    bool under_pointer_ = false;
    int last_x_ = 0, last_y_ = 0;

    TexturePtr texture_;
    int texture_width_ = 0, texture_height_ = 0;
    bool shown_ = false;
    std::uint64_t shown_version_ = 0;
    stage::Viewport shown_viewport_;
    stage::WindowKind shown_window_ = stage::WindowKind::kComp;

    bool dragged_ = false;
    DragTimes drag_times_;
    double render_milliseconds_ = 0;
    std::int64_t renders_ = 0;
};

}  // namespace stage_view
