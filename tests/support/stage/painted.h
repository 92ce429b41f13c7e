// Lists and pictures for tests of painting.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <vector>

#include "stage/desk/viewer/window_picture.h"
#include "stage/drawbot/draw_list.h"
#include "stage/drawbot/overlay_theme.h"

namespace stage_test {

using Kind = stage::DrawPrimitive::Kind;

/// Theme colours without a shadow's alpha to reckon with.
inline const stage::OverlayTheme kTestTheme{{1, 0, 0, 1}, {0, 0, 1, 1}, 2, 6, 3, 5};

stage::DrawPrimitive primitive(Kind kind);
stage::DrawPrimitive painted_rect(stage::DrawPrimitive::Rect rect, stage::DrawColor color);
stage::DrawPrimitive transform(float xx, float xy, float yx, float yy, float x0, float y0);
stage::DrawPrimitive clip(stage::DrawPrimitive::Rect rect);
/// A closed figure through the points.
stage::DrawPath polygon(std::vector<stage::DrawPoint> points);
stage::DrawPath line(stage::DrawPoint from, stage::DrawPoint to);

/// The overlay of 40 × 30 pixels.
class Painted {
  public:
    static constexpr int kWidth = 40, kHeight = 30;

    explicit Painted(std::vector<stage::DrawPrimitive> primitives,
                     const stage::OverlayTheme &theme = kTestTheme);

    std::uint32_t at(int x, int y) const;
    /// Pixels that are not transparent.
    int painted() const;
    /// Smallest rectangle around them: left, top, right, bottom (the last two exclusive).
    std::vector<int> bounds() const;

  private:
    std::vector<std::uint32_t> pixels_;
};

inline constexpr std::uint32_t kClear = 0, kRed = 0xFFFF0000, kGreen = 0xFF00FF00,
                               kBlue = 0xFF0000FF;
inline constexpr stage::DrawColor kRedColor{1, 0, 0, 1}, kGreenColor{0, 1, 0, 1};

}  // namespace stage_test
