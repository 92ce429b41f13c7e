// The geometry of a frame: scale factors, panel sizes, layouts, markers.
#include "geometry/layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ks {
namespace {

constexpr IntSize kHd{1920, 1080};
const FrameScale kFull = make_frame_scale({1, 1}, {1, 1}, {1, 1});
const FrameScale kHalf = make_frame_scale({1, 1}, {1, 2}, {1, 2});

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

TEST(TruncToInt, truncates_toward_zero) {
    EXPECT_EQ(trunc_to_int(2.9), 2);
    EXPECT_EQ(trunc_to_int(-2.9), -2);
}

TEST(TruncToInt, survives_every_double) {
    EXPECT_EQ(trunc_to_int(std::nan("")), 0);
    EXPECT_EQ(trunc_to_int(HUGE_VAL), 1 << 30);
    EXPECT_EQ(trunc_to_int(-HUGE_VAL), -(1 << 30));
    EXPECT_EQ(trunc_to_int(1e300), 1 << 30);
}

TEST(WholePixels, shift_arithmetically) {
    EXPECT_EQ(whole_pixels(0x0001FFFF), 1);
    EXPECT_EQ(whole_pixels(-1), -1);
    EXPECT_EQ(whole_pixels(-65536), -1);
    EXPECT_EQ(whole_pixels(-65537), -2);
    EXPECT_EQ(whole_pixels(std::numeric_limits<std::int32_t>::min()), -32768);
}

TEST(FrameScale, uses_denominators_and_pixel_aspect) {
    const FrameScale scale = make_frame_scale({10, 11}, {1, 3}, {1, 4});
    EXPECT_EQ(scale.pixel_aspect, 10.0 / 11.0);
    EXPECT_EQ(scale.horizontal, (1.0 / 3.0) / (10.0 / 11.0));
    EXPECT_EQ(scale.den_x, 3u);
    EXPECT_EQ(scale.den_y, 4u);
}

TEST(FrameScale, ignores_downsample_numerators) {
    EXPECT_EQ(make_frame_scale({1, 1}, {2, 3}, {2, 3}).horizontal, 1.0 / 3.0);
}

TEST(FrameScale, takes_0_for_1) {
    const FrameScale scale = make_frame_scale({0, 1}, {1, 0}, {1, 0});
    EXPECT_EQ(scale.horizontal, 1.0);
    EXPECT_EQ(scale.den_y, 1u);
    EXPECT_EQ(make_frame_scale({1, 0}, {1, 1}, {1, 1}).pixel_aspect, 1.0);
    EXPECT_EQ(make_frame_scale({-1, 1}, {1, 1}, {1, 1}).pixel_aspect, 1.0);
}

TEST(ScopeAspect, has_three_fixed_choices) {
    EXPECT_EQ(scope_aspect(2, kHd, kFull), 0.5625);
    EXPECT_EQ(scope_aspect(3, kHd, kFull), 0.75);
    EXPECT_EQ(scope_aspect(4, kHd, kFull), 1.0);
}

TEST(ScopeAspect, auto_is_the_shape_of_the_picture_at_any_resolution) {
    EXPECT_DOUBLE_EQ(scope_aspect(1, kHd, kFull), 0.5625);
    EXPECT_DOUBLE_EQ(scope_aspect(1, {960, 540}, kHalf), 0.5625);
    const FrameScale odd = make_frame_scale({1, 1}, {1, 2}, {1, 4});
    EXPECT_DOUBLE_EQ(scope_aspect(1, {960, 270}, odd), 270.0 / (0.5 * 960.0));
    const FrameScale wide = make_frame_scale({2, 1}, {1, 1}, {1, 1});
    EXPECT_DOUBLE_EQ(scope_aspect(1, {960, 1080}, wide), 1080.0 / 1920.0);
}

TEST(ScopeAspect, auto_forms_the_downsample_ratio_in_single_precision) {
    const FrameScale scale = make_frame_scale({1, 1}, {1, 1}, {1, 3});
    EXPECT_EQ(scope_aspect(1, {1920, 360}, scale),
              360.0 / (static_cast<double>(1.0f / 3.0f) * 1920.0 * 1.0));
}

TEST(ScopeAspect, survives_a_world_without_width) {
    EXPECT_EQ(scope_aspect(1, {0, 1080}, kFull), 1.0);
}

TEST(ScopePanel, waveform_height_follows_the_full_resolution_width) {
    const ScopeSizeRule rule = ScopeSizeRule::kWidthTimesAspect;
    expect_size(scope_panel_size(rule, 200.0, 0.5625, kFull), 200, 130);
    expect_size(scope_panel_size(rule, 201.0, 0.5625, kFull), 201, 131);
}

TEST(ScopePanel, half_resolution_halves_width_and_label_strip) {
    const ScopeSizeRule rule = ScopeSizeRule::kWidthTimesAspect;
    expect_size(scope_panel_size(rule, 200.0, 0.5, kHalf), 100, 59);
    const IntSize strip = scope_panel_size(rule, 0.0, 0.5, kHalf);
    EXPECT_EQ(strip.height, 9);
}

TEST(ScopePanel, vectorscope_is_square_and_the_histogram_272_wide) {
    expect_size(scope_panel_size(ScopeSizeRule::kSquare, 200.0, 0.5625, kFull), 200, 218);
    expect_size(scope_panel_size(ScopeSizeRule::kFixedWidth, 60.0, 0.5625, kFull), 272, 102);
    expect_size(scope_panel_size(ScopeSizeRule::kFixedWidth, 60.0, 0.5625, kHalf), 136, 51);
}

TEST(ScopePanel, pixel_aspect_narrows_the_width_only) {
    const FrameScale wide = make_frame_scale({2, 1}, {1, 1}, {1, 1});
    expect_size(scope_panel_size(ScopeSizeRule::kSquare, 200.0, 1.0, wide), 100, 218);
}

TEST(ScopePanel, extreme_downsampling_leaves_no_pixels) {
    const FrameScale tiny = make_frame_scale({1, 1}, {1, 999}, {1, 999});
    expect_size(scope_panel_size(ScopeSizeRule::kSquare, 200.0, 1.0, tiny), 0, 0);
}

TEST(ScopeKinds, walk_puts_the_parade_before_the_vectorscope) {
    ASSERT_EQ(kScopeWalkOrder.size(), 5u);
    const int expected[] = {1, 3, 2, 4, 5};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(static_cast<int>(kScopeWalkOrder[i]), expected[i]);
        EXPECT_EQ(static_cast<std::size_t>(kScopeTable[i].kind), i + 1);
    }
}

TEST(ScopeKinds, rows_name_their_parameters_by_index) {
    const int show[] = {19, 20, 21, 22, 23};
    const int position[] = {27, 38, 43, 50, 55};
    const int size[] = {28, 39, 44, 51, 56};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(kScopeTable[i].show, show[i]);
        EXPECT_EQ(kScopeTable[i].position, position[i]);
        EXPECT_EQ(kScopeTable[i].size, size[i]);
    }
}

TEST(ScopeKinds, codes_of_damaged_projects_are_told_apart) {
    for (int code = -128; code < 128; ++code) {
        EXPECT_EQ(is_scope_code(code), code >= 1 && code <= 5);
    }
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
