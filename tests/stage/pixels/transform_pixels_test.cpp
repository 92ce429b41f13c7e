#include "stage/pixels/transform_pixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "pixel_grid.h"

namespace stage_test {
namespace {

using stage::Box;
using stage::Compositing;
using stage::Depth;
using stage::Sampling;
using stage::transform_pixels;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

Compositing how(Depth depth, PF_ModeFlags flags = PF_MF_Alpha_STRAIGHT,
                PF_TransferMode xfer = PF_Xfer_IN_FRONT) {
    PF_CompositeMode mode{};
    mode.xfer = xfer;
    mode.opacity = 255;
    mode.opacitySu = 32768;
    return *stage::make_compositing(mode, flags, depth);
}

// Row vectors: the translation is the last row.
PF_FloatMatrix matrix(double sx, double sy, double tx, double ty) {
    return {{{sx, 0, 0}, {0, sy, 0}, {tx, ty, 1}}};
}

Grid8 ramp(int width, int height) {
    Grid8 grid(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            grid.set(x, y,
                     {255, static_cast<A_u_char>(10 * x), static_cast<A_u_char>(20 * y), 100});
        }
    }
    return grid;
}
constexpr PF_Pixel kOld{255, 9, 9, 9};

TEST(TransformPixels, identity_is_exact_at_both_qualities) {
    for (const Sampling sampling : {Sampling::kNearest, Sampling::kBilinear}) {
        Grid8 src = ramp(5, 4), dst(5, 4, kOld);
        transform_pixels(src.view(), dst.view(), {0, 0, 5, 4}, matrix(1, 1, 0, 0), how(Depth::U8),
                         sampling);
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 5; ++x) EXPECT_TRUE(same(dst.at(x, y), src.at(x, y)));
        }
        EXPECT_TRUE(dst.padding_intact());
    }
}

TEST(TransformPixels, float_identity_keeps_infinities_and_over_range) {
    GridF src(3, 3, {1, 0.5f, 0.5f, 0.5f}), dst(3, 3);
    src.set(1, 1, {1, std::numeric_limits<float>::infinity(), -1e30f, 0.1f});
    transform_pixels(src.view(), dst.view(), {0, 0, 3, 3}, matrix(1, 1, 0, 0), how(Depth::Float),
                     Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(1, 1), src.at(1, 1)));
    EXPECT_TRUE(same(dst.at(0, 0), src.at(0, 0)));
    EXPECT_TRUE(same(dst.at(2, 1), src.at(2, 1)));
}

TEST(TransformPixels, shift_along_one_axis_does_not_read_infinity_from_the_other) {
    GridF src(4, 3, {1, 0.5f, 0.5f, 0.5f}), dst(4, 3);
    src.set(1, 2, {1, std::numeric_limits<float>::infinity(), 0.5f, 0.5f});
    transform_pixels(src.view(), dst.view(), {0, 0, 4, 3}, matrix(1, 1, 0.5, 0), how(Depth::Float),
                     Sampling::kBilinear);
    EXPECT_EQ(dst.at(1, 1).red, 0.5f);
    EXPECT_TRUE(std::isinf(dst.at(1, 2).red));
}

TEST(TransformPixels, halving_averages_four_pixels) {
    Grid8 src = ramp(4, 4), dst(4, 4, kOld);
    // Destination centre 0.5 maps to source 1.0: the corner between the first four pixels.
    transform_pixels(src.view(), dst.view(), {0, 0, 4, 4}, matrix(2, 2, 0, 0), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{255, 5, 10, 100}));
    EXPECT_TRUE(same(dst.at(1, 1), PF_Pixel{255, 25, 50, 100}));
    // The rest maps outside and stays.
    EXPECT_TRUE(same(dst.at(2, 0), kOld));
    EXPECT_EQ(count_other(dst, kOld), 4);
}

TEST(TransformPixels, nearest_halving_takes_the_pixel_right_of_the_corner) {
    Grid8 src = ramp(4, 4), dst(2, 2, kOld);
    transform_pixels(src.view(), dst.view(), {0, 0, 2, 2}, matrix(2, 2, 0, 0), how(Depth::U8),
                     Sampling::kNearest);
    EXPECT_TRUE(same(dst.at(0, 0), src.at(1, 1)));
    EXPECT_TRUE(same(dst.at(1, 1), src.at(3, 3)));
}

TEST(TransformPixels, translation_lies_in_the_last_row) {
    Grid8 src = ramp(4, 4), dst(4, 4, kOld);
    // Destination (x, y) takes source (x - 2, y + 1).
    transform_pixels(src.view(), dst.view(), {0, 0, 4, 4}, matrix(1, 1, -2, 1), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(2, 0), src.at(0, 1)));
    EXPECT_TRUE(same(dst.at(3, 2), src.at(1, 3)));
    EXPECT_TRUE(same(dst.at(1, 0), kOld));
    EXPECT_TRUE(same(dst.at(2, 3), kOld));
}

TEST(TransformPixels, skew_reads_the_off_diagonal_as_row_vectors_do) {
    Grid8 src = ramp(8, 3), dst(8, 3, kOld);
    // x' = x + 2y - 1, y' = y: at row 1 (centre 1.5) the shift is 2.
    const PF_FloatMatrix skew{{{1, 0, 0}, {2, 1, 0}, {-1, 0, 1}}};
    transform_pixels(src.view(), dst.view(), {0, 0, 8, 3}, skew, how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(1, 0), src.at(1, 0)));
    EXPECT_TRUE(same(dst.at(1, 1), src.at(3, 1)));
    EXPECT_TRUE(same(dst.at(1, 2), src.at(5, 2)));
}

TEST(TransformPixels, bilinear_edges_fade_into_transparency_nearest_ones_do_not) {
    Grid8 src(1, 1, {255, 200, 200, 200}), dst(3, 1, PF_Pixel{255, 0, 0, 0});
    // Shifted by a quarter pixel: 3/4 of the pixel at (0), 1/4 at (1).
    transform_pixels(src.view(), dst.view(), {0, 0, 3, 1}, matrix(1, 1, -0.25, 0), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_EQ(dst.at(0, 0).red, 150);
    EXPECT_EQ(dst.at(1, 0).red, 50);
    EXPECT_EQ(dst.at(2, 0).red, 0);
    EXPECT_EQ(dst.at(1, 0).alpha, 255);
    Grid8 hard(3, 1, PF_Pixel{255, 0, 0, 0});
    transform_pixels(src.view(), hard.view(), {0, 0, 3, 1}, matrix(1, 1, -0.25, 0), how(Depth::U8),
                     Sampling::kNearest);
    EXPECT_EQ(hard.at(0, 0).red, 200);
    EXPECT_EQ(hard.at(1, 0).red, 0);
}

TEST(TransformPixels, straight_interpolation_ignores_the_colour_of_transparent_neighbours) {
    Grid8 src(2, 1), dst(1, 1, PF_Pixel{0, 0, 0, 0});
    src.set(0, 0, {255, 100, 100, 100});
    src.set(1, 0, {0, 255, 255, 255});
    transform_pixels(src.view(), dst.view(), {0, 0, 1, 1}, matrix(1, 1, 0.5, 0), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{128, 100, 100, 100}));
}

TEST(TransformPixels, premultiplied_interpolation_is_plain) {
    Grid8 src(2, 1), dst(1, 1, PF_Pixel{0, 0, 0, 0});
    src.set(0, 0, {255, 100, 100, 100});
    src.set(1, 0, {0, 0, 0, 0});
    transform_pixels(src.view(), dst.view(), {0, 0, 1, 1}, matrix(1, 1, 0.5, 0),
                     how(Depth::U8, PF_MF_Alpha_PREMUL), Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{128, 50, 50, 50}));
}

TEST(TransformPixels, copy_mode_still_leaves_pixels_outside_the_source) {
    Grid8 src(1, 1, {0, 1, 2, 3}), dst(3, 1, kOld);
    for (const Sampling sampling : {Sampling::kNearest, Sampling::kBilinear}) {
        transform_pixels(src.view(), dst.view(), {0, 0, 3, 1}, matrix(1, 1, 0, 0),
                         how(Depth::U8, PF_MF_Alpha_STRAIGHT, PF_Xfer_COPY), sampling);
        EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{0, 1, 2, 3}));
        EXPECT_TRUE(same(dst.at(1, 0), kOld));
    }
}

TEST(TransformPixels, copy_mode_interpolates_translucent_pixels_with_their_alpha) {
    Grid8 src(4, 4, {100, 60, 60, 60}), dst(1, 1, kOld);
    src.set(1, 1, {0, 255, 255, 255});
    transform_pixels(src.view(), dst.view(), {0, 0, 1, 1}, matrix(1, 1, 0.5, 0.5),
                     how(Depth::U8, PF_MF_Alpha_STRAIGHT, PF_Xfer_COPY), Sampling::kBilinear);
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{75, 60, 60, 60}));
}

TEST(TransformPixels, only_the_area_is_touched_and_it_is_clipped) {
    Grid8 src(10, 10, {255, 1, 2, 3}), dst(4, 4, kOld);
    transform_pixels(src.view(), dst.view(), {2, -5, 900, 1}, matrix(1, 1, 0, 0), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_EQ(count_other(dst, kOld), 2);
    EXPECT_TRUE(same(dst.at(3, 0), PF_Pixel{255, 1, 2, 3}));
    transform_pixels(src.view(), dst.view(), {3, 3, 3, 9}, matrix(1, 1, 0, 0), how(Depth::U8),
                     Sampling::kBilinear);
    EXPECT_EQ(count_other(dst, kOld), 2);
}

TEST(TransformPixels, source_to_destination_is_inverted) {
    const auto inverse = stage::destination_to_source(matrix(0.5, 0.25, 10, -20), true);
    ASSERT_TRUE(inverse);
    EXPECT_DOUBLE_EQ(inverse->mat[0][0], 2);
    EXPECT_DOUBLE_EQ(inverse->mat[1][1], 4);
    EXPECT_DOUBLE_EQ(inverse->mat[2][0], -20);
    EXPECT_DOUBLE_EQ(inverse->mat[2][1], 80);
    EXPECT_DOUBLE_EQ(inverse->mat[2][2], 1);
}

TEST(TransformPixels, inverse_of_a_full_matrix_times_it_is_the_identity) {
    const PF_FloatMatrix m{{{2, 0.5, 0.001}, {-1, 3, 0.002}, {7, -4, 1}}};
    const auto inverse = stage::destination_to_source(m, true);
    ASSERT_TRUE(inverse);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            double sum = 0;
            for (int k = 0; k < 3; ++k) sum += m.mat[r][k] * inverse->mat[k][c];
            EXPECT_NEAR(sum, r == c ? 1 : 0, 1e-12);
        }
    }
}

TEST(TransformPixels, matrices_that_cannot_be_used_are_none) {
    for (const bool inverted : {false, true}) {
        EXPECT_FALSE(stage::destination_to_source(matrix(0, 0, 0, 0), inverted));
        EXPECT_FALSE(stage::destination_to_source(matrix(1, 0, 0, 0), inverted));
        EXPECT_FALSE(stage::destination_to_source(matrix(kInf, kInf, 0, 0), inverted));
        EXPECT_FALSE(stage::destination_to_source(matrix(1, 1, kNan, 0), inverted));
        EXPECT_FALSE(stage::destination_to_source(matrix(1e200, 1e200, 0, 0), inverted));
    }
}

TEST(TransformPixels, huge_coordinates_draw_nothing) {
    Grid8 src = ramp(3, 3), dst(3, 3, kOld);
    for (const double t : {1e300, -1e300, 2147483648.0, -2147483649.0}) {
        transform_pixels(src.view(), dst.view(), {0, 0, 3, 3}, matrix(1, 1, t, t), how(Depth::U8),
                         Sampling::kBilinear);
        transform_pixels(src.view(), dst.view(), {0, 0, 3, 3}, matrix(1e154, 1e154, t, 0),
                         how(Depth::U8), Sampling::kNearest);
    }
    EXPECT_EQ(count_other(dst, kOld), 0);
}

TEST(TransformPixels, points_just_inside_the_outer_half_pixel_stay_in_the_source) {
    // The nearest number above -0.5: taking off another half rounds to exactly -1.
    Grid8 src = ramp(3, 3), dst(1, 1, kOld);
    for (const double t : {std::nextafter(-0.5, 0.0), std::nextafter(3.5, 0.0)}) {
        transform_pixels(src.view(), dst.view(), {0, 0, 1, 1}, matrix(1e-100, 1e-100, t, t),
                         how(Depth::U8), Sampling::kBilinear);
        EXPECT_TRUE(same(dst.at(0, 0), kOld));
    }
}

TEST(TransformPixels, perspective_divides_and_skips_what_lies_behind) {
    Grid8 src = ramp(8, 1), dst(8, 1, kOld);
    // w = x - 2: positive from column 2 on; x' = 4x / (x - 2), at centre 4.5: 18 / 2.5 = 7.2.
    const PF_FloatMatrix perspective{{{4, 0, 1}, {0, 1, 0}, {0, 0, -2}}};
    transform_pixels(src.view(), dst.view(), {0, 0, 8, 1}, perspective, how(Depth::U8),
                     Sampling::kNearest);
    EXPECT_TRUE(same(dst.at(4, 0), src.at(7, 0)));
    EXPECT_TRUE(same(dst.at(0, 0), kOld));
    EXPECT_TRUE(same(dst.at(1, 0), kOld));
}

TEST(TransformPixels, sixteen_bit_rounds_to_the_nearest_code) {
    Grid16 src(2, 2, {32768, 1, 0, 32768}), dst(1, 1);
    src.set(1, 1, {32768, 3, 3, 32768});
    transform_pixels(src.view(), dst.view(), {0, 0, 1, 1}, matrix(1, 1, 0.5, 0.5), how(Depth::U16),
                     Sampling::kBilinear);
    // (1 + 1 + 1 + 3) / 4 = 1.5 and 3 / 4.
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel16{32768, 2, 1, 32768}));
}

}  // namespace
}  // namespace stage_test
