// Where a handle's reach ends, one by one, and which of two handles wins.
#include <gtest/gtest.h>

#include <cmath>

#include "plugin/ui/handles/hit_probe.h"

namespace {

using expected::absolute;
using expected::clicked;
using expected::cursor;
using expected::Scene;
using expected::Window;

class HitBoundary : public testing::Test {
  protected:
    HitBoundary() {
        scene.layout = 7;
        for (auto &scope : scene.scopes) scope.on = false;
    }
    expected::Scope &show(std::size_t slot) {
        scene.scopes[slot].on = true;
        return scene.scopes[slot];
    }
    int click(int x, int y) { return clicked(scene, window, x, y); }
    int cursor_number(int x, int y) { return cursor(scene, window, x, y); }

    Scene scene;
    Window window;
};

TEST_F(HitBoundary, corner_is_hit_below_16_pixels_and_missed_at_16) {
    show(1) = {true, 400, 500, 180};  // corner at (580, 698)
    EXPECT_EQ(click(580, 698), 5);
    for (int d = 0; d < 16; ++d) {
        EXPECT_EQ(click(580 + d, 698 + (15 - d)), 5) << d;
        EXPECT_EQ(click(580 - d, 698 - (16 - d)), -1) << d;
        EXPECT_EQ(cursor_number(580 + d, 698 - (15 - d)), 22) << d;
        EXPECT_EQ(cursor_number(580 + d, 698 + (16 - d)), 0) << d;
    }
    EXPECT_EQ(click(596, 698), -1);
    EXPECT_EQ(click(580, 714), -1);
}

TEST_F(HitBoundary, corner_distance_is_in_window_pixels_at_every_zoom) {
    show(1) = {true, 400, 500, 180};
    window.zoom_num = 4;
    EXPECT_EQ(click(4 * 580 + 15, 4 * 698), 5);
    EXPECT_EQ(click(4 * 580 + 16, 4 * 698), -1);
    window.zoom_num = 1;
    window.zoom_den = 4;
    EXPECT_EQ(click(145 + 15, 174), 5);
    EXPECT_EQ(click(145 + 17, 174), -1);
}

TEST_F(HitBoundary, histogram_height_bar_is_hit_at_15_pixels_and_missed_at_16) {
    show(4) = {true, 1000, 700, 80};  // the bar at y = 822, x 1000 to 1272
    for (int x : {1000, 1100, 1272}) {
        EXPECT_EQ(click(x, 822 - 15), 11);
        EXPECT_EQ(click(x, 822 + 15), 11);
        EXPECT_EQ(click(x, 822 - 16), -1);
        EXPECT_EQ(click(x, 822 + 16), -1);
        EXPECT_EQ(cursor_number(x, 822 + 15), 21);
        EXPECT_EQ(cursor_number(x, 822 + 16), 0);
    }
    EXPECT_EQ(click(999, 822), -1);
    EXPECT_EQ(click(1273, 822), -1);
}

TEST_F(HitBoundary, height_bar_cursor_reaches_further_than_the_click_between_15_and_16) {
    show(4) = {true, 1000, 700, 80.5};  // the bar at y = 822.5
    EXPECT_EQ(click(1100, 807), -1) << "15.5 pixels";
    EXPECT_EQ(cursor_number(1100, 807), 21);
}

TEST_F(HitBoundary, move_bar_edges_are_included) {
    show(0) = {true, 15, 14, 220};
    for (int x : {15, 120, 235}) {
        for (int y : {14, 20, 32}) EXPECT_EQ(click(x, y), 4) << x << ", " << y;
    }
    EXPECT_EQ(click(14, 20), -1);
    EXPECT_EQ(click(236, 20), -1);
    EXPECT_EQ(click(120, 13), -1);
    EXPECT_EQ(click(120, 33), -1);
}

TEST_F(HitBoundary, move_bar_is_20_pixels_for_the_cursor_and_18_for_the_click) {
    show(0) = {true, 15, 14, 220};
    for (int below : {19, 20}) {
        EXPECT_EQ(cursor_number(120, 14 + below), 75) << below;
        EXPECT_EQ(click(120, 14 + below), -1) << below;
    }
    EXPECT_EQ(cursor_number(120, 14 + 21), 0);
}

TEST_F(HitBoundary, lower_numbered_handle_wins_where_two_overlap) {
    scene.layout = 6;
    show(0) = {true, 300, 200, 220};  // its bar on the monitor's
    EXPECT_EQ(click(400, 210), 1);
    // A corner placed on its own panel's move bar.
    scene.layout = 7;
    show(0) = {true, 300, 200, 220};
    scene.aspect = 2;
    scene.scopes[0].size = 0;
    EXPECT_EQ(click(300, 210), 3) << "corner before the move bar of the same panel";
    // The monitor's corner on a scope's bar.
    scene.layout = 6;
    scene.scopes[0] = {true, 1200, 730, 220};
    EXPECT_EQ(click(1260, 740), 0) << "monitor before scopes";
}

TEST_F(HitBoundary, wipe_has_no_cursor_and_lets_the_handle_beneath_give_it) {
    scene.layout = 1;
    scene.compare = 50;
    scene.opacity = 100;
    EXPECT_EQ(click(960, 540), 2);
    EXPECT_EQ(cursor_number(960, 540), 0);
    show(2) = {true, 900, 530, 300};
    EXPECT_EQ(click(960, 540), 2);
    EXPECT_EQ(cursor_number(960, 540), 75);
}

TEST_F(HitBoundary, scopes_only_has_no_wipe_handle) {
    scene.compare = 50;
    scene.opacity = 100;
    for (int layout : {2, 5, 7, 0, 8, -1}) {
        scene.layout = layout;
        EXPECT_EQ(click(960, 540), -1) << layout;
    }
}

TEST_F(HitBoundary, wipe_can_be_clicked_while_its_parameter_is_disabled) {
    scene.layout = 1;
    scene.compare = 50;
    scene.opacity = 100;
    scene.compare_disabled = true;
    EXPECT_EQ(click(960, 540), 2);
}

TEST_F(HitBoundary, wipe_point_runs_from_the_middle_to_nine_tenths) {
    scene.layout = 3;
    scene.compare = 25;
    scene.opacity = 100;
    EXPECT_EQ(click(240, 270), 2);
    EXPECT_EQ(click(240, 270 + 16), -1);
    scene.opacity = 0;
    EXPECT_EQ(click(240, 486), 2) << "0.9 of 540";
    EXPECT_EQ(click(240, 486 - 16), -1);
}

TEST_F(HitBoundary, monitor_is_clicked_at_the_position_times_the_inverse_aspect) {
    scene.layout = 6;
    scene.par_num = 2;
    scene.monitor_x = 300;
    scene.monitor_y = 200;
    // The bar from 300 * 0.5 to (300 + 960) * 0.5; the corner at 300 + 480: two different rules.
    EXPECT_EQ(click(150, 200), 1);
    EXPECT_EQ(click(630, 200), 1);
    EXPECT_EQ(click(149, 200), -1);
    EXPECT_EQ(click(631, 200), -1);
    EXPECT_EQ(click(780, 740), 0);
}

TEST_F(HitBoundary, corner_uses_the_fraction_of_the_position_and_the_bar_does_not) {
    show(1) = {true, 400.75, 500.75, 180};
    EXPECT_EQ(click(400, 500), 6);
    EXPECT_EQ(click(580, 518), 6);
    EXPECT_EQ(click(581, 518), -1);
    EXPECT_EQ(click(580 + 16, 699), 5) << "15.5 pixels from (580.75, 698.75)";
    EXPECT_EQ(click(580 - 15, 698), -1) << "16.5 pixels";
}

TEST_F(HitBoundary, negative_positions_round_down_for_the_bar) {
    show(1) = {true, -0.5, -0.5, 180};
    EXPECT_EQ(click(-1, -1), 6);
    EXPECT_EQ(click(-2, -1), -1);
    EXPECT_EQ(click(-1, -2), -1);
}

TEST_F(HitBoundary, mirrored_layer_keeps_its_bars) {
    show(4) = {true, 1000, 700, 80};
    window.zoom_num = -1;
    EXPECT_EQ(click(-1100, -710), 12);
    EXPECT_EQ(click(-1100, -822), 11);
    EXPECT_EQ(click(-999, -710), -1);
}

TEST_F(HitBoundary, window_that_shows_nothing_is_never_hit) {
    struct Blind final : ks::WindowMap {
        std::optional<ks::FixedPoint> to_window(ks::LayerPoint) const override {
            return std::nullopt;
        }
    };
    scene = Scene{};
    EXPECT_FALSE(ks::clicked_handle(expected::settings_of(scene), Blind{}, {0, 0}, absolute));
    EXPECT_EQ(ks::cursor_at(expected::settings_of(scene), Blind{}, {0, 0}, absolute), 0);
}

TEST_F(HitBoundary, move_bar_hit_tells_the_grab_offset_in_window_pixels) {
    show(0) = {true, 15, 14, 220};
    window.zoom_num = 4;
    window.pan_x = -3;
    const auto hit = ks::clicked_handle(expected::settings_of(scene), window, {77, 60}, absolute);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->handle, 4);
    EXPECT_EQ(hit->grab_x, (77 - 57) * 65536);
    EXPECT_EQ(hit->grab_y, (60 - 56) * 65536);
}

TEST_F(HitBoundary, extreme_pointers_and_values_do_no_harm) {
    scene = Scene{};
    scene.monitor_size = 1e300;
    scene.compare = -1e300;
    scene.opacity = std::nan("");
    scene.scopes[0].size = std::nan("");
    scene.scopes[1].size = -1e18;
    ks::HandleSettings settings = expected::settings_of(scene);
    settings.scopes[2].position = {INT32_MIN, INT32_MAX};
    struct Plain final : ks::WindowMap {
        std::optional<ks::FixedPoint> to_window(ks::LayerPoint p) const override {
            return ks::FixedPoint{ks::to_fixed(p.x), ks::to_fixed(p.y)};
        }
    };
    for (std::int32_t at : {INT32_MIN, -1, 0, INT32_MAX}) {
        ks::clicked_handle(settings, Plain{}, {at, at}, absolute);
        ks::cursor_at(settings, Plain{}, {at, -(at / 2)}, absolute);
    }
    EXPECT_EQ(ks::to_fixed(std::nan("")), 0);
    EXPECT_EQ(ks::to_fixed(1e300), INT32_MAX);
    EXPECT_EQ(ks::to_fixed(-1e300), INT32_MIN);
}

}  // namespace
