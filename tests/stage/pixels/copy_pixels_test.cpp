#include "stage/pixels/copy_pixels.h"

#include <gtest/gtest.h>

#include <limits>

#include "pixel_grid.h"

namespace stage_test {
namespace {

using stage::copy_pixels;
using stage::Sampling;

// Pixel (x, y) reads {10x + y, x, y, 200}.
Grid8 numbered(int width, int height) {
    Grid8 grid(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            grid.set(x, y,
                     {static_cast<A_u_char>(10 * x + y), static_cast<A_u_char>(x),
                      static_cast<A_u_char>(y), 200});
        }
    }
    return grid;
}
constexpr PF_Pixel kOld{9, 9, 9, 9};

TEST(CopyPixels, equal_sizes_copy_exactly_transparent_pixels_included) {
    Grid8 src = numbered(4, 3), dst(4, 3, kOld);
    copy_pixels(src.view(), {0, 0, 4, 3}, dst.view(), {0, 0, 4, 3}, Sampling::kBilinear);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) EXPECT_TRUE(same(dst.at(x, y), src.at(x, y)));
    }
    EXPECT_TRUE(dst.padding_intact());
}

TEST(CopyPixels, float_copy_keeps_nan_and_infinity) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    GridF src(2, 1, {nan, inf, -inf, -1e30f}), dst(2, 1);
    copy_pixels(src.view(), {0, 0, 2, 1}, dst.view(), {0, 0, 2, 1}, Sampling::kNearest);
    EXPECT_TRUE(same(dst.at(1, 0), src.at(1, 0)));
}

TEST(CopyPixels, rectangles_of_one_size_are_clipped_against_both_worlds) {
    Grid8 src = numbered(3, 3), dst(3, 3, kOld);
    // Source (-1..2), destination (1..4): only source (0..1) exists at destination (2..3).
    copy_pixels(src.view(), {-1, -1, 2, 2}, dst.view(), {1, 1, 4, 4}, Sampling::kNearest);
    EXPECT_TRUE(same(dst.at(2, 2), src.at(0, 0)));
    EXPECT_EQ(count_other(dst, kOld), 1);
    EXPECT_TRUE(dst.padding_intact());
}

TEST(CopyPixels, nearest_takes_the_pixel_under_the_centre) {
    Grid8 src = numbered(2, 1), dst(5, 1, kOld);
    copy_pixels(src.view(), {0, 0, 2, 1}, dst.view(), {0, 0, 5, 1}, Sampling::kNearest);
    // Centres map to 0.2, 0.6, 1.0, 1.4, 1.8.
    const int expected[] = {0, 0, 1, 1, 1};
    for (int x = 0; x < 5; ++x) EXPECT_EQ(dst.at(x, 0).red, expected[x]) << x;
}

TEST(CopyPixels, bilinear_stretch_has_hand_computed_values) {
    Grid8 src(2, 1), dst(4, 1, kOld);
    src.set(0, 0, {0, 0, 100, 255});
    src.set(1, 0, {255, 100, 0, 255});
    copy_pixels(src.view(), {0, 0, 2, 1}, dst.view(), {0, 0, 4, 1}, Sampling::kBilinear);
    // Centres map to 0.25, 0.75, 1.25, 1.75; first and last repeat the edge. Alpha is a colour too:
    // 0.25 * 255 = 63.75.
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{0, 0, 100, 255}));
    EXPECT_TRUE(same(dst.at(1, 0), PF_Pixel{64, 25, 75, 255}));
    EXPECT_TRUE(same(dst.at(2, 0), PF_Pixel{191, 75, 25, 255}));
    EXPECT_TRUE(same(dst.at(3, 0), PF_Pixel{255, 100, 0, 255}));
}

TEST(CopyPixels, halving_averages_pairs) {
    Grid16 src(4, 2), dst(2, 1);
    for (int x = 0; x < 4; ++x) {
        src.set(x, 0, {32768, static_cast<A_u_short>(1000 * x), 1, 0});
        src.set(x, 1, {32768, static_cast<A_u_short>(1000 * x + 500), 2, 0});
    }
    copy_pixels(src.view(), {0, 0, 4, 2}, dst.view(), {0, 0, 2, 1}, Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel16{32768, 750, 2, 0}));  // 1.5 rounds up
    EXPECT_TRUE(same(dst.at(1, 0), PF_Pixel16{32768, 2750, 2, 0}));
}

TEST(CopyPixels, stretch_of_a_part_does_not_read_beyond_the_part) {
    Grid8 src(4, 1, {255, 255, 255, 255}), dst(4, 1, kOld);
    src.set(1, 0, {255, 10, 10, 10});
    copy_pixels(src.view(), {1, 0, 2, 1}, dst.view(), {0, 0, 4, 1}, Sampling::kBilinear);
    EXPECT_EQ(count_other(dst, PF_Pixel{255, 10, 10, 10}), 0);
}

TEST(CopyPixels, stretch_leaves_pixels_whose_source_does_not_exist) {
    Grid8 src(2, 1, {255, 50, 50, 50}), dst(8, 1, kOld);
    copy_pixels(src.view(), {0, 0, 4, 1}, dst.view(), {0, 0, 8, 1}, Sampling::kBilinear);
    for (int x = 0; x < 8; ++x) EXPECT_EQ(dst.at(x, 0).red, x < 4 ? 50 : 9) << x;
}

TEST(CopyPixels, stretched_float_infinity_does_not_become_nan) {
    GridF src(2, 1, {1, 1, 1, 1}), dst(1, 2);
    src.set(1, 0, {1, std::numeric_limits<float>::infinity(), 1, 1});
    copy_pixels(src.view(), {0, 0, 1, 1}, dst.view(), {0, 0, 1, 2}, Sampling::kBilinear);
    EXPECT_EQ(dst.at(0, 1).red, 1.0f);
}

TEST(CopyPixels, empty_rectangles_do_nothing) {
    Grid8 src = numbered(3, 3), dst(3, 3, kOld);
    copy_pixels(src.view(), {0, 0, 0, 3}, dst.view(), {0, 0, 3, 3}, Sampling::kBilinear);
    copy_pixels(src.view(), {0, 0, 3, 3}, dst.view(), {2, 2, 1, 3}, Sampling::kBilinear);
    EXPECT_EQ(count_other(dst, kOld), 0);
}

TEST(CopyPixels, moving_within_one_world_reads_before_it_writes) {
    for (const int step : {-1, 1}) {
        Grid8 grid = numbered(3, 4);
        const Grid8 before = grid;
        copy_pixels(grid.view(), {0, 0, 3, 4}, grid.view(), {0, step, 3, 4 + step},
                    Sampling::kNearest);
        for (int y = 0; y < 4; ++y) {
            if (y - step < 0 || y - step > 3) continue;
            EXPECT_TRUE(same(grid.at(1, y), before.at(1, y - step))) << step << " row " << y;
        }
    }
}

}  // namespace
}  // namespace stage_test
