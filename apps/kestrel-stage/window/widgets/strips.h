// What stands beneath the picture: zoom, layers, time, and the status line.
#pragma once

#include "kestrel-stage/window/desk.h"
#include "kestrel-stage/window/picture_pane.h"
#include "kestrel-stage/window/widget_log.h"

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

/// Draws the strips into `area`.
void draw_strips(Desk &desk, const PicturePane &pane, const FrameTimes &times,
                 const PixelRect &area, WidgetLog &log);

}  // namespace stage_view
