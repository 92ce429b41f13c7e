#include "stage/drawbot/viewport.h"

#include <gtest/gtest.h>

namespace stage {
namespace {

TEST(Viewport, points_go_both_ways) {
    Viewport port;
    port.zoom = 0.25;
    port.pan_x = -30;
    port.pan_y = 12;
    port.stretch = 2;
    EXPECT_EQ(port.window_x(100), 20);
    EXPECT_EQ(port.window_y(100), 37);
    EXPECT_EQ(port.source_x(20), 100);
    EXPECT_EQ(port.source_y(37), 100);
}

TEST(Viewport, zooming_keeps_the_point_under_the_pointer) {
    Viewport port;
    port.pan_x = 7;
    port.stretch = 1.5;
    const double x = port.source_x(400), y = port.source_y(300);
    port.zoom_to(3.7, 400, 300);
    EXPECT_EQ(port.zoom, 3.7);
    EXPECT_NEAR(port.source_x(400), x, 1e-9);
    EXPECT_NEAR(port.source_y(300), y, 1e-9);
}

TEST(Viewport, zoom_stays_within_the_hosts_limits) {
    Viewport port;
    port.zoom_to(1e9, 0, 0);
    EXPECT_EQ(port.zoom, Viewport::kMaxZoom);
    port.zoom_to(-1, 0, 0);
    EXPECT_EQ(port.zoom, Viewport::kMinZoom);
}

TEST(Viewport, fit_centres_and_never_enlarges) {
    Viewport port;
    port.width = 1000;
    port.height = 500;
    port.fit(2000, 500);
    EXPECT_EQ(port.zoom, 0.5);
    EXPECT_EQ(port.pan_x, 0);
    EXPECT_EQ(port.pan_y, 125);
    port.fit(100, 100);
    EXPECT_EQ(port.zoom, 1);
    EXPECT_EQ(port.pan_x, 450);
    port.fit(0, 0);
    EXPECT_EQ(port.zoom, 1) << "nothing to show is no division by zero";
}

}  // namespace
}  // namespace stage
