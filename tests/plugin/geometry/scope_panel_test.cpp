// Sizes of the panels.
#include "geometry/scope_panel.h"

#include <gtest/gtest.h>

namespace ks {
namespace {

constexpr IntSize kHd{1920, 1080};
const FrameScale kFull = make_frame_scale({1, 1}, {1, 1}, {1, 1});
const FrameScale kHalf = make_frame_scale({1, 1}, {1, 2}, {1, 2});

void expect_size(IntSize size, int width, int height) {
    EXPECT_EQ(size.width, width);
    EXPECT_EQ(size.height, height);
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

}  // namespace
}  // namespace ks
