#include "stage/pixels/fill_pixels.h"

#include <gtest/gtest.h>

#include "pixel_grid.h"

namespace stage_test {
namespace {

using stage::Box;
using stage::fill_pixels;

constexpr PF_Pixel kGrey{255, 30, 60, 1};

TEST(FillPixels, eight_bit_colour_is_taken_as_it_is) {
    Grid8 grid(3, 2);
    fill_pixels(grid.view(), {0, 0, 3, 2}, kGrey);
    EXPECT_EQ(count_other(grid, kGrey), 0);
    EXPECT_TRUE(grid.padding_intact());
}

TEST(FillPixels, sixteen_bit_world_gets_the_colour_scaled_to_32768_and_rounded) {
    Grid16 grid(1, 1);
    fill_pixels(grid.view(), {0, 0, 1, 1}, kGrey);
    // 30 * 32768 / 255 = 3855.06, 60 -> 7710.12, 1 -> 128.50
    EXPECT_TRUE(same(grid.at(0, 0), PF_Pixel16{32768, 3855, 7710, 129}));
}

TEST(FillPixels, float_world_gets_the_colour_divided_by_255) {
    GridF grid(1, 1);
    fill_pixels(grid.view(), {0, 0, 1, 1}, kGrey);
    EXPECT_TRUE(same(grid.at(0, 0), PF_PixelFloat{1.0f, 30 / 255.0f, 60 / 255.0f, 1 / 255.0f}));
    EXPECT_NEAR(grid.at(0, 0).red, 0.117647, 1e-6);
}

TEST(FillPixels, sixteen_bit_colour_is_converted_to_each_depth) {
    constexpr PF_Pixel16 colour{32768, 3855, 64, 65535};
    Grid8 eight(1, 1);
    fill_pixels(eight.view(), {0, 0, 1, 1}, colour);
    // 3855 * 255 / 32768 = 29.9995, 64 -> 0.498
    EXPECT_TRUE(same(eight.at(0, 0), PF_Pixel{255, 30, 0, 255}));
    GridF single(1, 1);
    fill_pixels(single.view(), {0, 0, 1, 1}, colour);
    EXPECT_EQ(single.at(0, 0).alpha, 1.0f);
    EXPECT_EQ(single.at(0, 0).green, 64 / 32768.0f);
}

TEST(FillPixels, only_the_rectangle_is_touched) {
    Grid8 grid(5, 4);
    fill_pixels(grid.view(), {1, 2, 4, 3}, kGrey);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            const bool inside = x >= 1 && x < 4 && y == 2;
            EXPECT_TRUE(same(grid.at(x, y), inside ? kGrey : PF_Pixel{})) << x << "," << y;
        }
    }
}

TEST(FillPixels, rectangle_is_clipped_to_the_world) {
    Grid8 grid(3, 3);
    fill_pixels(grid.view(), {-2147483648LL, -5, 2147483647LL, 1}, kGrey);
    EXPECT_EQ(count_other(grid, PF_Pixel{}), 3);
    EXPECT_TRUE(grid.padding_intact());
}

TEST(FillPixels, empty_and_inverted_rectangles_do_nothing) {
    Grid8 grid(3, 3);
    for (const Box box : {Box{1, 1, 1, 3}, Box{2, 0, 1, 3}, Box{3, 0, 9, 3}, Box{0, -4, 3, 0}}) {
        fill_pixels(grid.view(), box, kGrey);
    }
    EXPECT_EQ(count_other(grid, PF_Pixel{}), 0);
}

}  // namespace
}  // namespace stage_test
