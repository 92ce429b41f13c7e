// Lines, dashes and outlines.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "pixels/plot.h"
#include "plugin/support/test_world.h"

namespace ks {
namespace {

constexpr Colour kWhite{1.0f, 1.0f, 1.0f, 1.0f};
constexpr int kFar = std::numeric_limits<int>::max();
constexpr int kFarBelow = std::numeric_limits<int>::min();

/// Row `y` as text, '#' where green is not 0.
template <class P>
std::string row(TestWorld<P> &world, int y) {
    std::string text;
    const int width = world.view().width;
    for (int x = 0; x < width; ++x) text += world.at(x, y).green != 0 ? '#' : '.';
    return text;
}

TEST(Line, horizontal_is_inclusive_at_both_ends_in_either_direction) {
    for (const bool swapped : {false, true}) {
        TestWorld<Pixel8> world(8, 3);
        const IntPoint a{2, 1};
        const IntPoint b{5, 1};
        EXPECT_EQ(
            draw_line(world.view(), kFormat8, swapped ? b : a, swapped ? a : b, kWhite, kPlotOver),
            0);
        EXPECT_EQ(row(world, 1), "..####..");
        EXPECT_EQ(world.drawn(), 4);
    }
}

TEST(Line, vertical_is_inclusive_at_both_ends) {
    TestWorld<Pixel16> world(3, 6);
    draw_line(world.view(), kFormat16, {1, 4}, {1, 2}, kWhite, kPlotOver);
    EXPECT_EQ(world.drawn(), 3);
    for (int y = 2; y <= 4; ++y) EXPECT_EQ(row(world, y), ".#.");
}

TEST(Line, a_single_point_is_one_pixel) {
    TestWorld<PixelF> world(3, 3);
    draw_line(world.view(), kFormatF, {1, 1}, {1, 1}, kWhite, kPlotAdditive);
    EXPECT_EQ(world.drawn(), 1);
    EXPECT_EQ(world.at(1, 1).green, 1.0f);
}

TEST(Line, is_clipped_to_the_world_however_long) {
    TestWorld<Pixel8> world(5, 5);
    draw_line(world.view(), kFormat8, {kFarBelow, 2}, {kFar, 2}, kWhite, kPlotOver);
    draw_line(world.view(), kFormat8, {3, kFarBelow}, {3, kFar}, kWhite, kPlotOver);
    draw_line(world.view(), kFormat8, {0, 7}, {4, 7}, kWhite, kPlotOver);
    EXPECT_EQ(world.drawn(), 9);
    EXPECT_TRUE(world.guards_intact());
}

TEST(Line, a_diagonal_plots_one_pixel_per_step) {
    TestWorld<Pixel8> world(5, 5);
    draw_line(world.view(), kFormat8, {4, 0}, {0, 4}, kWhite, kPlotOver);
    EXPECT_EQ(world.drawn(), 5);
    for (int i = 0; i < 5; ++i) EXPECT_NE(world.at(4 - i, i).green, 0);
}

TEST(Line, shallow_and_steep_slopes_step_along_their_longer_axis) {
    TestWorld<Pixel8> shallow(7, 3);
    draw_line(shallow.view(), kFormat8, {0, 0}, {6, 2}, kWhite, kPlotOver);
    EXPECT_EQ(row(shallow, 0), "##.....");
    EXPECT_EQ(row(shallow, 1), "..###..");
    EXPECT_EQ(row(shallow, 2), ".....##");
    TestWorld<Pixel8> steep(3, 7);
    draw_line(steep.view(), kFormat8, {2, 6}, {0, 0}, kWhite, kPlotOver);
    EXPECT_EQ(steep.drawn(), 7);
    EXPECT_NE(steep.at(0, 0).green, 0);
    EXPECT_NE(steep.at(1, 3).green, 0);
    EXPECT_NE(steep.at(2, 6).green, 0);
}

TEST(Line, a_sloped_line_across_the_whole_range_stays_in_the_world) {
    TestWorld<Pixel8> world(5, 5);
    draw_line(world.view(), kFormat8, {kFarBelow, kFarBelow}, {kFar, kFar}, kWhite, kPlotOver);
    EXPECT_TRUE(world.guards_intact());
    EXPECT_EQ(world.drawn(), 5);
}

TEST(DashedLine, starts_with_a_dash_and_alternates_to_the_end) {
    TestWorld<Pixel8> world(20, 1);
    draw_dashed_line(world.view(), kFormat8, {0, 0}, {19, 0}, kWhite, 4, 5, kPlotOver);
    EXPECT_EQ(row(world, 0), "####.....####.....##");
}

TEST(DashedLine, orders_its_end_points) {
    TestWorld<Pixel8> world(10, 1);
    draw_dashed_line(world.view(), kFormat8, {9, 0}, {1, 0}, kWhite, 2, 1, kPlotOver);
    EXPECT_EQ(row(world, 0), ".##.##.##.");
}

TEST(DashedLine, works_vertically) {
    TestWorld<Pixel8> world(1, 7);
    draw_dashed_line(world.view(), kFormat8, {0, 0}, {0, 6}, kWhite, 1, 2, kPlotOver);
    for (int y = 0; y < 7; ++y) EXPECT_EQ(world.at(0, y).green != 0, y % 3 == 0);
}

TEST(DashedLine, keeps_its_phase_where_the_start_is_outside) {
    TestWorld<Pixel8> world(6, 1);
    draw_dashed_line(world.view(), kFormat8, {-2, 0}, {5, 0}, kWhite, 3, 2, kPlotOver);
    EXPECT_EQ(row(world, 0), "#..###");
    EXPECT_TRUE(world.guards_intact());
}

TEST(DashedLine, a_sloped_one_draws_nothing_and_succeeds) {
    TestWorld<Pixel8> world(6, 6);
    EXPECT_EQ(draw_dashed_line(world.view(), kFormat8, {0, 0}, {5, 5}, kWhite, 3, 2, kPlotOver), 0);
    EXPECT_EQ(world.drawn(), 0);
}

TEST(DashedLine, dash_0_draws_nothing_and_gap_0_is_solid) {
    TestWorld<Pixel8> world(6, 2);
    draw_dashed_line(world.view(), kFormat8, {0, 0}, {5, 0}, kWhite, 0, 0, kPlotOver);
    draw_dashed_line(world.view(), kFormat8, {0, 0}, {5, 0}, kWhite, 0, 3, kPlotOver);
    draw_dashed_line(world.view(), kFormat8, {0, 0}, {5, 0}, kWhite, -4, 3, kPlotOver);
    EXPECT_EQ(world.drawn(), 0);
    draw_dashed_line(world.view(), kFormat8, {0, 1}, {5, 1}, kWhite, 1, 0, kPlotOver);
    EXPECT_EQ(row(world, 1), "######");
}

TEST(Outline, grows_inward_and_stays_inside_the_rectangle) {
    TestWorld<Pixel8> world(9, 8);
    outline_rect(world.view(), kFormat8, {1, 1, 8, 7}, 2, kWhite, kPlotOver);
    EXPECT_EQ(row(world, 0), ".........");
    EXPECT_EQ(row(world, 1), ".#######.");
    EXPECT_EQ(row(world, 2), ".#######.");
    EXPECT_EQ(row(world, 3), ".##...##.");
    EXPECT_EQ(row(world, 4), ".##...##.");
    EXPECT_EQ(row(world, 5), ".#######.");
    EXPECT_EQ(row(world, 6), ".#######.");
    EXPECT_EQ(row(world, 7), ".........");
}

TEST(Outline, blends_each_pixel_once) {
    TestWorld<PixelF> world(6, 6);
    outline_rect(world.view(), kFormatF, {0, 0, 6, 6}, 2, {0.75f, 0.0f, 1.0f, 0.0f}, kPlotOver);
    for (const IntPoint p : {IntPoint{0, 0}, {1, 1}, {5, 5}, {4, 1}, {0, 3}, {3, 0}}) {
        EXPECT_EQ(world.at(p.x, p.y).green, 0.75f);
        EXPECT_EQ(world.at(p.x, p.y).alpha, 0.75f);
    }
    EXPECT_EQ(world.at(2, 2).green, 0.0f);
}

TEST(Outline, thicker_than_the_rectangle_fills_it_once) {
    TestWorld<PixelF> world(5, 5);
    outline_rect(world.view(), kFormatF, {1, 1, 4, 4}, 2, {0.5f, 0.0f, 1.0f, 0.0f}, kPlotOver);
    EXPECT_EQ(world.drawn(), 9);
    for (int y = 1; y < 4; ++y) {
        for (int x = 1; x < 4; ++x) EXPECT_EQ(world.at(x, y).green, 0.5f);
    }
}

TEST(Outline, is_clipped_and_empty_rectangles_draw_nothing) {
    TestWorld<Pixel8> world(4, 4);
    outline_rect(world.view(), kFormat8, {kFarBelow, kFarBelow, kFar, kFar}, 2, kWhite, kPlotOver);
    outline_rect(world.view(), kFormat8, {2, 2, 2, 2}, 2, kWhite, kPlotOver);
    outline_rect(world.view(), kFormat8, {3, 3, 1, 1}, 2, kWhite, kPlotOver);
    outline_rect(world.view(), kFormat8, {0, 0, 4, 4}, 0, kWhite, kPlotOver);
    EXPECT_EQ(world.drawn(), 0);
    outline_rect(world.view(), kFormat8, {-3, -3, 2, 2}, 2, kWhite, kPlotOver);
    EXPECT_EQ(world.drawn(), 4);
    EXPECT_TRUE(world.guards_intact());
}

}  // namespace
}  // namespace ks
