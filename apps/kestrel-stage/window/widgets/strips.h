// What stands beneath the picture: zoom, layers, time, and the status line.
#pragma once

#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"

namespace stage_view {

/// Average of the last frames' times, milliseconds.
class FrameTimes {
  public:
    void add(double milliseconds);
    double last() const { return last_; }
    double average() const { return count_ > 0 ? average_ : 0; }
    int count() const { return count_; }

  private:
    double last_ = 0, average_ = 0;
    int count_ = 0;
};

/// Height that draw_strips() needs, pixels.
int strips_height();

/// Draws the strips into `area`. `render_milliseconds` is what the last frame of the comp took.
void draw_strips(WindowActs &acts, double render_milliseconds, const FrameTimes &times,
                 const PixelRect &area, WidgetLog &log);

}  // namespace stage_view
