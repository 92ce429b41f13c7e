// Layouts, markers, wipe.
#include "geometry/monitor_layout.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ks {
namespace {

constexpr IntSize kHd{1920, 1080};

void expect_size(IntSize size, int width, int height) {
    EXPECT_EQ(size.width, width);
    EXPECT_EQ(size.height, height);
}
void expect_point(IntPoint point, int x, int y) {
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
}
void expect_wipe(const WipeEdge &edge, int x, int top, int bottom) {
    EXPECT_EQ(edge.x, x);
    EXPECT_EQ(edge.top, top);
    EXPECT_EQ(edge.bottom, bottom);
}
void expect_slice(const SliceLine &line, int y, int left, int right) {
    EXPECT_EQ(line.y, y);
    EXPECT_EQ(line.left, left);
    EXPECT_EQ(line.right, right);
}

TEST(SingleLayout, markers_span_the_frame) {
    const Markers m = single_markers(kHd, 0.333, 0.5);
    expect_wipe(m.wipe, 639, 0, 1080);
    expect_slice(m.slice, 539, 0, 1920);  // (1080 - 1) * 0.5
}

TEST(FourWaySplit, is_a_two_by_two_grid) {
    const FourWayGrid grid = four_way_grid(false, kHd);
    EXPECT_EQ(grid.main_scale, 0.5);
    EXPECT_EQ(grid.main_left, 0.0);
    EXPECT_EQ(grid.tile_scale, 0.5);
    EXPECT_EQ(grid.tile_rect.right, 960);
    EXPECT_EQ(grid.tile_rect.bottom, 540);
    expect_point(grid.corners[0], 960, 0);
    expect_point(grid.corners[1], 0, 540);
    expect_point(grid.corners[2], 960, 540);
    expect_size(four_way_tile_size(grid, {1921, 1081}), 960, 540);
}

TEST(FourWayClassic, has_the_tiles_in_a_row_beneath) {
    const FourWayGrid grid = four_way_grid(true, {1921, 1081});
    EXPECT_EQ(grid.main_scale, 0.75);
    EXPECT_EQ(grid.main_left, 480.25);
    EXPECT_EQ(grid.tile_scale, 0.25);
    EXPECT_EQ(grid.tile_rect.right, 480);
    EXPECT_EQ(grid.tile_rect.bottom, 270);
    expect_point(grid.corners[0], 480, 810);
    expect_point(grid.corners[1], 960, 810);
    expect_point(grid.corners[2], 1440, 810);
}

TEST(FourWay, wipe_edge_is_one_pixel_at_the_row_of_the_tiles) {
    const FourWayGrid split = four_way_grid(false, kHd);
    expect_wipe(four_way_markers(split, kHd, 0.5, 0.0).wipe, 480, 540, 540);
    const FourWayGrid classic = four_way_grid(true, kHd);
    expect_wipe(four_way_markers(classic, kHd, 0.5, 0.0).wipe, 1200, 810, 810);
}

TEST(FourWay, slice_line_spans_the_main_view) {
    const FourWayGrid split = four_way_grid(false, kHd);
    expect_slice(four_way_markers(split, kHd, 0.0, 0.5).slice, 269, 0, 960);
    const FourWayGrid classic = four_way_grid(true, kHd);
    expect_slice(four_way_markers(classic, kHd, 0.0, 1.0).slice, 809, 480, 1920);
}

TEST(FourWay, a_few_pixels_of_input_leave_no_tile) {
    const FourWayGrid grid = four_way_grid(true, {3, 100});
    expect_size(four_way_tile_size(grid, {3, 100}), 0, 25);
}

TEST(Windowed, markers_move_and_scale_with_the_view) {
    const Markers m = windowed_markers({100, -20}, 0.5, {1921, 1081}, 0.25, 0.5);
    expect_wipe(m.wipe, 340, -20, 520);
    expect_slice(m.slice, 250, 100, 1060);
}

TEST(Windowed, slice_line_uses_the_scaled_height_without_minus_1) {
    const Markers m = windowed_markers({0, 0}, 1.0, kHd, 0.0, 1.0);
    EXPECT_EQ(m.slice.y, 1080);
    EXPECT_EQ(single_markers(kHd, 0.0, 1.0).slice.y, 1079);
}

TEST(Windowed, hostile_scales_and_positions_do_not_overflow) {
    for (const double scale : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {
        const Markers m = windowed_markers({32767, -32768}, scale, kHd, HUGE_VAL, HUGE_VAL);
        EXPECT_LE(m.wipe.bottom, (1 << 30) + 32767);
    }
}

TEST(Wipe, shows_the_left_part_of_the_frame) {
    const IntRect rect = wipe_rect({1921, 1080}, 0.5);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.top, 0);
    EXPECT_EQ(rect.right, 960);
    EXPECT_EQ(rect.bottom, 1080);
}

TEST(Wipe, centres_a_smaller_original_and_leaves_a_larger_one_in_the_corner) {
    expect_point(wipe_offset(kHd, {1001, 500}), 459, 290);
    expect_point(wipe_offset(kHd, {1920, 1079}), 0, 0);
    expect_point(wipe_offset(kHd, {4000, 3000}), 0, 0);
    expect_point(wipe_offset(kHd, {4000, 500}), 0, 290);
}

}  // namespace
}  // namespace ks
