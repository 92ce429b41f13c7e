// Single-pixel drawing: blending, clamps, fractional positions, the alpha write, bounds.
#include "pixels/plot.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "plugin/support/test_world.h"

namespace ks {
namespace {

constexpr int kFar = std::numeric_limits<int>::max();
constexpr int kFarBelow = std::numeric_limits<int>::min();

TEST(Plot, over_blends_colours_and_alpha) {
    TestWorld<PixelF> world(4, 4);
    world.at(1, 2) = {0.5f, 0.2f, 0.4f, 2.0f};
    EXPECT_EQ(plot(world.view(), kFormatF, 1, 2, {0.25f, 1.0f, 0.0f, 0.5f}, kPlotOver), 0);
    const PixelF p = world.at(1, 2);
    EXPECT_EQ(p.alpha, 0.75f * 0.5f + 0.25f);
    EXPECT_EQ(p.red, 0.25f * 1.0f + 0.75f * 0.2f);
    EXPECT_EQ(p.green, 0.25f * 0.0f + 0.75f * 0.4f);
    EXPECT_EQ(p.blue, 0.25f * 0.5f + 0.75f * 2.0f);
    EXPECT_TRUE(world.guards_intact());
}

TEST(Plot, additive_adds_colours_and_blends_alpha) {
    TestWorld<PixelF> world(2, 2);
    world.at(0, 0) = {0.5f, 0.9f, 0.4f, 0.0f};
    plot(world.view(), kFormatF, 0, 0, {0.5f, 0.25f, 0.5f, 0.0f}, kPlotAdditive);
    const PixelF p = world.at(0, 0);
    EXPECT_EQ(p.alpha, 0.75f);
    EXPECT_EQ(p.red, 0.9f + 0.25f);
    EXPECT_EQ(p.green, 0.9f);
    EXPECT_EQ(p.blue, 0.0f);
}

TEST(Plot, float_colours_are_limited_only_with_mode_bit_1) {
    TestWorld<PixelF> world(2, 1);
    const Colour bright{1.0f, 3.0f, 3.0f, 3.0f};
    plot(world.view(), kFormatF, 0, 0, bright, kPlotAdditive);
    plot(world.view(), kFormatF, 1, 0, bright, kPlotAdditive | kPlotClampFloat);
    EXPECT_EQ(world.at(0, 0).red, 3.0f);
    EXPECT_EQ(world.at(1, 0).red, 1.0f);
}

TEST(Plot, alpha_is_limited_to_1_at_every_depth) {
    TestWorld<PixelF> world(1, 1);
    world.at(0, 0).alpha = 3.0f;
    plot(world.view(), kFormatF, 0, 0, {0.25f, 0.0f, 0.0f, 0.0f}, kPlotOver);
    EXPECT_EQ(world.at(0, 0).alpha, 1.0f);
}

TEST(Plot, integer_colours_are_always_limited_and_truncated) {
    TestWorld<Pixel8> world8(1, 1);
    world8.at(0, 0) = {0, 200, 10, 0};
    plot(world8.view(), kFormat8, 0, 0, {0.5f, 0.5f, 0.1f, 0.999f}, kPlotAdditive);
    EXPECT_EQ(world8.at(0, 0).alpha, 127);
    EXPECT_EQ(world8.at(0, 0).red, 255);
    EXPECT_EQ(world8.at(0, 0).green, 35);
    EXPECT_EQ(world8.at(0, 0).blue, 254);
    TestWorld<Pixel16> world16(1, 1);
    world16.at(0, 0) = {0, 30000, 1, 0};
    plot(world16.view(), kFormat16, 0, 0, {0.5f, 0.5f, 0.25f, 0.5f}, kPlotAdditive);
    EXPECT_EQ(world16.at(0, 0).alpha, 16384);
    EXPECT_EQ(world16.at(0, 0).red, 32768);
    EXPECT_EQ(world16.at(0, 0).green, 8193);
    EXPECT_EQ(world16.at(0, 0).blue, 16384);
}

TEST(Plot, outside_the_world_nothing_is_written) {
    TestWorld<Pixel8> world(3, 3);
    const Colour white{1.0f, 1.0f, 1.0f, 1.0f};
    for (const int far : {-1, 3, kFar, kFarBelow}) {
        EXPECT_EQ(plot(world.view(), kFormat8, far, 1, white, kPlotOver), 0);
        EXPECT_EQ(plot(world.view(), kFormat8, 1, far, white, kPlotOver), 0);
    }
    EXPECT_EQ(world.drawn(), 0);
    EXPECT_TRUE(world.guards_intact());
    EXPECT_EQ(plot(WorldView{}, kFormat8, 0, 0, white, kPlotOver), 0);
}

TEST(Plot, negative_row_bytes_address_upwards) {
    TestWorld<Pixel16> world(2, 3);
    plot(world.flipped(), kFormat16, 1, 0, {1.0f, 1.0f, 1.0f, 1.0f}, kPlotOver);
    EXPECT_EQ(world.at(1, 2).green, 32768);
    EXPECT_EQ(world.drawn(), 1);
}

TEST(Plot, unknown_formats_give_516_everywhere_and_write_nothing) {
    TestWorld<PixelF> world(4, 4);
    const Colour white{1.0f, 1.0f, 1.0f, 1.0f};
    const WorldView view = world.view();
    for (const FormatCode code : {kFormatInvalid, FormatCode{0}}) {
        EXPECT_EQ(write_alpha(view, code, 1, 1, 1.0f), 516);
        EXPECT_EQ(plot(view, code, 1, 1, white, kPlotOver), 516);
        EXPECT_EQ(plot_fractional(view, code, 1.2, 1, white, kPlotOver), 516);
        EXPECT_EQ(plot_fractional(view, code, std::nan(""), 1, white, kPlotOver), 516);
        EXPECT_EQ(draw_line(view, code, {0, 1}, {3, 1}, white, kPlotOver), 516);
        EXPECT_EQ(draw_dashed_line(view, code, {0, 1}, {3, 1}, white, 1, 1, kPlotOver), 516);
        EXPECT_EQ(outline_rect(view, code, {0, 0, 4, 4}, 1, white, kPlotOver), 516);
    }
    EXPECT_EQ(world.drawn(), 0);
}

TEST(WriteAlpha, converts_per_depth_and_leaves_colours) {
    TestWorld<Pixel8> world8(1, 1);
    world8.at(0, 0) = {9, 8, 7, 6};
    write_alpha(world8.view(), kFormat8, 0, 0, 0.5f);
    EXPECT_EQ(world8.at(0, 0).alpha, 127);
    EXPECT_EQ(world8.at(0, 0).red, 8);
    TestWorld<Pixel16> world16(1, 1);
    write_alpha(world16.view(), kFormat16, 0, 0, 0.5f);
    EXPECT_EQ(world16.at(0, 0).alpha, 16384);
    TestWorld<PixelF> world_f(1, 1);
    write_alpha(world_f.view(), kFormatF, 0, 0, -2.5f);
    EXPECT_EQ(world_f.at(0, 0).alpha, -2.5f);
}

TEST(WriteAlpha, does_not_clamp_but_survives_every_value) {
    TestWorld<Pixel8> world(1, 1);
    write_alpha(world.view(), kFormat8, 0, 0, 2.0f);
    EXPECT_EQ(world.at(0, 0).alpha, 510 % 256);
    write_alpha(world.view(), kFormat8, 0, 0, std::nanf(""));
    EXPECT_EQ(world.at(0, 0).alpha, 0);
    write_alpha(world.view(), kFormat8, 5, 0, 1.0f);
    EXPECT_TRUE(world.guards_intact());
}

/// Alpha written by a fractional plot of opaque white into each of 5 empty pixels.
std::vector<float> fractional(double x) {
    TestWorld<PixelF> world(5, 1);
    EXPECT_EQ(
        plot_fractional(world.view(), kFormatF, x, 0, {1.0f, 1.0f, 1.0f, 1.0f}, kPlotAdditive), 0);
    std::vector<float> result;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(world.at(i, 0).alpha, world.at(i, 0).blue);
        result.push_back(world.at(i, 0).alpha);
    }
    EXPECT_TRUE(world.guards_intact());
    return result;
}

TEST(PlotFractional, right_of_a_centre_spills_into_the_next_pixel) {
    EXPECT_EQ(fractional(2.75), (std::vector<float>{0, 0, 0.75f, 0.25f, 0}));
}
TEST(PlotFractional, exactly_on_a_centre_lights_one_pixel) {
    EXPECT_EQ(fractional(2.5), (std::vector<float>{0, 0, 1, 0, 0}));
}
TEST(PlotFractional, left_of_a_centre_spills_into_the_previous_pixel) {
    EXPECT_EQ(fractional(2.25), (std::vector<float>{0, 0.25f, 0.75f, 0, 0}));
}
TEST(PlotFractional, a_whole_position_is_shared_in_halves) {
    EXPECT_EQ(fractional(2.0), (std::vector<float>{0, 0.5f, 0.5f, 0, 0}));
}
TEST(PlotFractional, negative_positions_use_floor) {
    EXPECT_EQ(fractional(-0.25), (std::vector<float>{0.25f, 0, 0, 0, 0}));
}
TEST(PlotFractional, hostile_positions_draw_nothing) {
    for (const double x : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e18, -1e18}) {
        EXPECT_EQ(fractional(x), (std::vector<float>{0, 0, 0, 0, 0}));
    }
}

}  // namespace
}  // namespace ks
