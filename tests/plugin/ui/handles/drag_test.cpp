// What a drag writes and what it leaves in the host's record.
#include "ui/handles/drag.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "plugin/ui/handles/expected_handles.h"

namespace {

using expected::Scene;

const ks::HandleRow &row_of(int n) {
    return ks::kHandleTable[static_cast<std::size_t>(n)];
}

ks::FixedPoint at(double x, double y) {
    return {static_cast<std::int32_t>(std::llround(x * 65536)),
            static_cast<std::int32_t>(std::llround(y * 65536))};
}

ks::ParamWrites drag(const Scene &scene, int n, ks::FixedPoint pointer, double grab_x = 0,
                     double grab_y = 0) {
    ks::DragState state;
    state.handle = n;
    state.slots = {std::llround(grab_x * 65536), std::llround(grab_y * 65536)};
    return ks::dragged_values(row_of(n), expected::settings_of(scene), pointer, state);
}

/// What is written, which has to be of that kind.
double number(const ks::ParamWrite &write) {
    return std::get<double>(write.value);
}
ks::FixedPoint point(const ks::ParamWrite &write) {
    return std::get<ks::FixedPoint>(write.value);
}

/// The parameter index that a handle's drag writes (the wipe's first), from the panel's list.
int written_index(int n) {
    constexpr int kIndex[] = {5, 4, 11, 28, 27, 39, 38, 44, 43, 51, 50, 56, 55};
    return kIndex[n];
}

// Points are steps of 1/65536 pixel, and the inverse aspect has single precision.
constexpr double kSteps = 1e-4;

constexpr int kAspects[][2] = {{1, 2}, {1, 1}, {2, 1}, {10, 11}};

TEST(Drag, corner_dragged_to_where_it_is_keeps_its_size) {
    for (const auto &aspect : kAspects) {
        for (int n : {0, 3, 5, 7, 9}) {
            Scene scene;
            scene.par_num = aspect[0];
            scene.par_den = aspect[1];
            scene.monitor_x = 300.25;
            scene.scopes[0].x = 15.75;
            const expected::Point corner = expected::handle_point(scene, n);
            const ks::ParamWrites writes = drag(scene, n, at(corner.x, corner.y));
            ASSERT_EQ(writes.count, 1u);
            EXPECT_EQ(writes.writes[0].param, written_index(n));
            const double size = n == 0 ? scene.monitor_size
                                       : scene.scopes[static_cast<std::size_t>(n - 3) / 2].size;
            EXPECT_NEAR(number(writes.writes[0]), size, kSteps) << n;
        }
    }
}

TEST(Drag, corner_size_is_the_distance_times_the_pixel_aspect) {
    Scene scene;
    scene.par_num = 2;
    EXPECT_EQ(number(drag(scene, 5, at(400 + 250.5, 0)).writes[0]), 501.0);
    EXPECT_EQ(number(drag(scene, 0, at(300 + 480, 0)).writes[0]), 50.0);
    EXPECT_EQ(number(drag(scene, 0, at(300 + 960, 0)).writes[0]), 100.0);
}

TEST(Drag, monitor_corner_at_aspect_2_lies_480_pixels_from_the_position) {
    Scene scene;
    scene.par_num = 2;
    EXPECT_EQ(ks::handle_shape(row_of(0), expected::settings_of(scene), 18).from.x, 300 + 480);
}

TEST(Drag, values_outside_the_ranges_are_left_to_the_host) {
    Scene scene;
    EXPECT_EQ(number(drag(scene, 5, at(300, 0)).writes[0]), -100.0);
    EXPECT_EQ(number(drag(scene, 0, at(300 + 3840, 0)).writes[0]), 200.0);
    EXPECT_EQ(number(drag(scene, 11, at(0, 600)).writes[0]), -142.0);
}

TEST(Drag, height_bar_dragged_to_where_it_is_keeps_the_height) {
    Scene scene;
    const ks::ParamWrites writes = drag(scene, 11, at(1100, expected::height_line(scene).t));
    ASSERT_EQ(writes.count, 1u);
    EXPECT_EQ(writes.writes[0].param, 56);
    EXPECT_EQ(number(writes.writes[0]), 80.0);
}

TEST(Drag, height_is_measured_from_the_position_with_its_fraction) {
    Scene scene;
    scene.scopes[4].y = 700.25;
    EXPECT_EQ(number(drag(scene, 11, at(1100, 822)).writes[0]), 79.75);
}

TEST(Drag, move_bar_dragged_to_where_it_is_keeps_the_position) {
    for (const auto &aspect : kAspects) {
        for (int n : {1, 4, 6, 8, 10, 12}) {
            Scene scene;
            scene.par_num = aspect[0];
            scene.par_den = aspect[1];
            const expected::Box bar = expected::bar(scene, n, 18);
            const ks::ParamWrites writes = drag(scene, n, at(bar.l + 33, bar.t + 7), 33, 7);
            ASSERT_EQ(writes.count, 1u);
            EXPECT_EQ(writes.writes[0].param, written_index(n));
            const double x =
                n == 1 ? scene.monitor_x : scene.scopes[static_cast<std::size_t>(n - 3) / 2].x;
            const double y =
                n == 1 ? scene.monitor_y : scene.scopes[static_cast<std::size_t>(n - 3) / 2].y;
            EXPECT_NEAR(point(writes.writes[0]).x / 65536.0, x, kSteps) << n;
            EXPECT_EQ(point(writes.writes[0]).y / 65536.0, y) << n;
        }
    }
}

TEST(Drag, move_bar_multiplies_x_after_taking_the_grab_offset_off) {
    Scene scene;
    scene.par_num = 2;
    const ks::FixedPoint moved = point(drag(scene, 4, at(110, 50), 10, 20).writes[0]);
    EXPECT_EQ(moved.x, 200 * 65536);
    EXPECT_EQ(moved.y, 30 * 65536);
}

TEST(Drag, move_bar_takes_window_pixels_off_layer_pixels) {
    // At 400 % the grab offset counts four times: 20 layer pixels in, 80 window pixels.
    Scene scene;
    EXPECT_EQ(point(drag(scene, 4, at(15 + 20, 14), 80, 0).writes[0]).x, (15 - 60) * 65536);
}

TEST(Drag, position_too_far_for_16_16_stays_at_its_end) {
    Scene scene;
    scene.par_num = 2;
    EXPECT_EQ(point(drag(scene, 4, at(30000, 0)).writes[0]).x, INT32_MAX);
    EXPECT_EQ(point(drag(scene, 4, at(-30000, 0)).writes[0]).x, INT32_MIN);
    ks::DragState state;
    state.slots = {INT64_MIN, INT64_MAX};
    const auto writes =
        ks::dragged_values(row_of(4), expected::settings_of(scene), at(0, 0), state);
    EXPECT_EQ(point(writes.writes[0]).x, INT32_MAX);
    EXPECT_EQ(point(writes.writes[0]).y, INT32_MIN);
}

TEST(Drag, wipe_dragged_to_where_it_is_keeps_both_values_in_every_layout) {
    for (const auto &aspect : kAspects) {
        for (int layout : {1, 3, 4, 6}) {
            Scene scene;
            scene.layout = layout;
            scene.par_num = aspect[0];
            scene.par_den = aspect[1];
            const expected::Point handle = expected::handle_point(scene, 2);
            const ks::ParamWrites writes = drag(scene, 2, at(handle.x, handle.y));
            ASSERT_EQ(writes.count, 2u);
            EXPECT_EQ(writes.writes[0].param, 11);
            EXPECT_NEAR(number(writes.writes[0]), 30, kSteps) << layout;
            EXPECT_EQ(writes.writes[1].param, 12);
            EXPECT_NEAR(number(writes.writes[1]), 60, kSteps) << layout;
        }
    }
}

TEST(Drag, wipe_opacity_is_100_in_the_middle_0_at_nine_tenths_and_runs_on_beyond) {
    Scene scene;
    scene.layout = 1;
    const auto opacity = [&](double y) { return number(drag(scene, 2, at(960, y)).writes[1]); };
    EXPECT_EQ(opacity(540), 100.0);
    EXPECT_EQ(opacity(972), 0.0);
    EXPECT_EQ(opacity(1080), -25.0);
    EXPECT_EQ(opacity(0), 225.0);
    EXPECT_DOUBLE_EQ(number(drag(scene, 2, at(-192, 540)).writes[0]), -10.0);
    EXPECT_DOUBLE_EQ(number(drag(scene, 2, at(2112, 540)).writes[0]), 110.0);
}

TEST(Drag, wipe_counts_from_a_half_height_cut_to_whole_pixels) {
    Scene scene;
    scene.layout = 1;
    scene.height = 1081;
    EXPECT_EQ(number(drag(scene, 2, at(960, 540)).writes[1]), 100.0);
}

TEST(Drag, wipe_without_a_region_or_without_extent_writes_nothing) {
    Scene scene;
    for (int layout : {2, 5, 7}) {
        scene.layout = layout;
        EXPECT_EQ(drag(scene, 2, at(10, 10)).count, 0u) << layout;
    }
    scene.layout = 1;
    scene.width = 0;
    scene.height = 1;
    EXPECT_EQ(drag(scene, 2, at(10, 10)).count, 0u);
    EXPECT_EQ(drag(scene, 0, at(10, 10)).count, 0u);
    scene.layout = 6;
    scene.width = 1920;
    scene.monitor_size = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(drag(scene, 2, at(10, 10)).count, 0u);
}

TEST(Drag, every_handle_writes_the_parameters_of_its_own_panel) {
    const Scene scene;
    for (int n = 0; n <= 12; ++n) {
        const ks::ParamWrites writes = drag(scene, n, at(500, 600));
        ASSERT_EQ(writes.count, n == 2 ? 2u : 1u);
        EXPECT_EQ(writes.writes[0].param, written_index(n));
    }
}

ks::DragState state_of(bool send, std::int64_t handle, std::int64_t a, std::int64_t b) {
    ks::DragState state;
    state.send_drag = send;
    state.handle = handle;
    state.slots = {a, b};
    return state;
}

void expect_state(const ks::DragState &state, bool send, std::int64_t handle, std::int64_t a,
                  std::int64_t b, int n) {
    EXPECT_EQ(state.send_drag, send) << n;
    EXPECT_EQ(state.handle, handle) << n;
    EXPECT_EQ(state.slots[0], a) << n;
    EXPECT_EQ(state.slots[1], b) << n;
}

TEST(DragRecord, click_asks_for_drags_and_keeps_what_the_handle_needs) {
    for (int n = 0; n <= 12; ++n) {
        ks::Hit hit;
        hit.handle = static_cast<ks::HandleNumber>(n);
        hit.origin = {11, 12};
        hit.grab_x = 21;
        hit.grab_y = 22;
        const ks::DragState state = ks::after_click(hit, state_of(false, 77, 5, 6));
        if (n == 11) {
            expect_state(state, true, n, 5, 6, n);
        } else if (n == 1 || (n >= 4 && n % 2 == 0)) {
            expect_state(state, true, n, 21, 22, n);
        } else {
            expect_state(state, true, n, 11, 12, n);
        }
    }
}

TEST(DragRecord, drag_renews_the_state_and_the_last_one_ends_it) {
    for (int n : {0, 3, 5, 7, 9, 11}) {
        const ks::DragState before = state_of(true, n, 5, 6);
        expect_state(ks::after_drag(row_of(n), ks::FixedPoint{31, 32}, false, before), true, n, 31,
                     32, n);
        expect_state(ks::after_drag(row_of(n), ks::FixedPoint{31, 32}, true, before), false, -1, 31,
                     32, n);
        expect_state(ks::after_drag(row_of(n), std::nullopt, true, before), false, -1, 5, 6, n);
    }
    for (int n : {1, 2}) {
        const ks::DragState before = state_of(true, n, 5, 6);
        expect_state(ks::after_drag(row_of(n), ks::FixedPoint{31, 32}, false, before), true, n, 5,
                     6, n);
        expect_state(ks::after_drag(row_of(n), ks::FixedPoint{31, 32}, true, before), false, -1, 5,
                     6, n);
    }
}

TEST(DragRecord, scopes_move_bars_leave_the_state_as_the_click_set_it) {
    for (int n : {4, 6, 8, 10, 12}) {
        for (bool last : {false, true}) {
            for (bool send : {false, true}) {
                expect_state(ks::after_drag(row_of(n), ks::FixedPoint{31, 32}, last,
                                            state_of(send, n, 5, 6)),
                             send, n, 5, 6, n);
            }
        }
    }
}

TEST(DragRecord, only_the_numbers_0_to_12_are_a_drag) {
    for (std::int64_t handle : {INT64_MIN, std::int64_t{-1}, std::int64_t{13}, INT64_MAX}) {
        EXPECT_EQ(ks::dragged_handle(state_of(true, handle, 0, 0)), nullptr);
    }
    for (int n = 0; n <= 12; ++n) {
        EXPECT_EQ(ks::dragged_handle(state_of(true, n, 0, 0))->number, n);
    }
}

}  // namespace
