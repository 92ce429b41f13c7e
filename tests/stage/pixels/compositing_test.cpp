#include "stage/pixels/compositing.h"

#include <gtest/gtest.h>

#include <limits>

namespace stage {
namespace {

constexpr PF_ModeFlags kStraight = PF_MF_Alpha_STRAIGHT;
constexpr PF_ModeFlags kPremultiplied = PF_MF_Alpha_PREMUL;

PF_CompositeMode mode(PF_TransferMode xfer, int opacity8 = 255, int opacity16 = 32768) {
    PF_CompositeMode record{};
    record.xfer = xfer;
    record.opacity = static_cast<A_u_char>(opacity8);
    record.opacitySu = static_cast<A_u_short>(opacity16);
    return record;
}

template <Depth kDepth>
typename DepthTraits<kDepth>::Pixel lay(const PF_CompositeMode &record, PF_ModeFlags flags,
                                        typename DepthTraits<kDepth>::Pixel source,
                                        typename DepthTraits<kDepth>::Pixel destination) {
    const auto how = make_compositing(record, flags, kDepth);
    EXPECT_TRUE(how.has_value());
    return pixel_of<kDepth>(composite<kDepth>(*how, sample_of(source), sample_of(destination)));
}

#define EXPECT_PIXEL(actual, a, r, g, b) \
    do {                                 \
        const auto pixel = (actual);     \
        EXPECT_EQ(pixel.alpha, a);       \
        EXPECT_EQ(pixel.red, r);         \
        EXPECT_EQ(pixel.green, g);       \
        EXPECT_EQ(pixel.blue, b);        \
    } while (false)

TEST(Compositing, opaque_source_in_front_overwrites_exactly) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kStraight, {255, 1, 2, 3}, {77, 8, 9, 10}),
                 255, 1, 2, 3);
    EXPECT_PIXEL(
        lay<Depth::U16>(mode(PF_Xfer_IN_FRONT), kPremultiplied, {32768, 1, 2, 3}, {77, 8, 9, 10}),
        32768, 1, 2, 3);
}

TEST(Compositing, transparent_source_in_front_changes_nothing) {
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kStraight, {0, 255, 255, 255}, {77, 8, 9, 10}), 77,
        8, 9, 10);
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_ADD), kStraight, {0, 255, 255, 255}, {77, 8, 9, 10}),
                 77, 8, 9, 10);
}

TEST(Compositing, zero_opacity_changes_nothing_in_any_mode) {
    for (PF_TransferMode xfer = PF_Xfer_NONE; xfer <= PF_Xfer_DIFFERENCE; ++xfer) {
        if (xfer == PF_Xfer_DISSOLVE) continue;
        EXPECT_PIXEL(lay<Depth::U8>(mode(xfer, 0), kStraight, {255, 1, 2, 3}, {77, 8, 9, 10}), 77,
                     8, 9, 10);
    }
}

TEST(Compositing, mode_none_changes_nothing) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_NONE), kStraight, {255, 1, 2, 3}, {77, 8, 9, 10}), 77,
                 8, 9, 10);
}

TEST(Compositing, half_opaque_over_opaque_eight_bit) {
    // 128/255: (128 * 200 + 127 * 100) / 255 = 150.196
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kStraight, {128, 200, 0, 255}, {255, 100, 100, 0}),
        255, 150, 50, 128);
}

TEST(Compositing, opacity_multiplies_source_alpha_eight_bit) {
    // Opaque at opacity 51 of 255, a fifth: 0.2 * 250 + 0.8 * 50 = 90.
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT, 51), kStraight, {255, 250, 0, 50}, {255, 50, 50, 50}),
        255, 90, 40, 50);
}

TEST(Compositing, eight_bit_ignores_the_deep_opacity_and_the_deep_ones_ignore_the_other) {
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT, 255, 0), kStraight, {255, 1, 2, 3}, {255, 9, 9, 9}),
        255, 1, 2, 3);
    EXPECT_PIXEL(lay<Depth::U16>(mode(PF_Xfer_IN_FRONT, 0, 32768), kStraight, {32768, 1, 2, 3},
                                 {32768, 9, 9, 9}),
                 32768, 1, 2, 3);
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_IN_FRONT, 0, 16384), kStraight, {1, 1, 0, 3}, {1, 0, 1, 1}),
        1.0f, 0.5f, 0.5f, 2.0f);
}

TEST(Compositing, opacity_above_full_counts_as_full) {
    EXPECT_PIXEL(lay<Depth::U16>(mode(PF_Xfer_IN_FRONT, 255, 65535), kStraight, {32768, 5, 6, 7},
                                 {32768, 9, 9, 9}),
                 32768, 5, 6, 7);
}

TEST(Compositing, straight_over_half_transparent_destination_divides_by_the_new_alpha) {
    // s = d = 1/2: a = 3/4, colour = (1/2 * cs + 1/4 * cd) / (3/4).
    EXPECT_PIXEL(lay<Depth::U16>(mode(PF_Xfer_IN_FRONT), kStraight, {16384, 30000, 0, 3},
                                 {16384, 0, 30000, 3}),
                 24576, 20000, 10000, 3);
}

TEST(Compositing, straight_over_transparent_destination_takes_the_colour_unscaled) {
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kStraight, {100, 200, 50, 0}, {0, 255, 255, 255}),
        100, 200, 50, 0);
}

TEST(Compositing, premultiplied_over) {
    // colour = cs + cd * (1 - s), s = 51/255.
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kPremultiplied, {51, 40, 0, 51}, {255, 100, 100, 0}),
        255, 120, 80, 51);
}

TEST(Compositing, premultiplied_sum_is_clamped_at_the_integer_depths) {
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_IN_FRONT), kPremultiplied, {10, 255, 0, 0}, {255, 255, 0, 0}),
        255, 255, 0, 0);
}

TEST(Compositing, float_colours_are_not_clamped) {
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_IN_FRONT), kStraight, {0.5f, 4, -2, 0}, {1, 2, 0, 0}), 1.0f,
        3.0f, -1.0f, 0.0f);
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_ADD), kStraight, {1, 0.75f, 2, 0}, {1, 0.75f, 2, 0}), 1.0f,
        1.5f, 4.0f, 0.0f);
}

TEST(Compositing, behind_fills_only_where_the_destination_is_transparent) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_BEHIND), kStraight, {255, 1, 2, 3}, {255, 8, 9, 10}),
                 255, 8, 9, 10);
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_BEHIND), kStraight, {255, 1, 2, 3}, {0, 8, 9, 10}),
                 255, 1, 2, 3);
    // d = 51/255: (0.2 * 100 + 0.8 * 200) = 180.
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_BEHIND), kStraight, {255, 200, 0, 0}, {51, 100, 0, 255}), 255,
        180, 0, 51);
}

TEST(Compositing, behind_premultiplied) {
    // cd + cs * (1 - d), d = 51/255.
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_BEHIND), kPremultiplied, {255, 200, 0, 0}, {51, 20, 0, 51}),
        255, 180, 0, 51);
}

TEST(Compositing, copy_at_full_opacity_takes_transparent_pixels_too) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_COPY), kStraight, {0, 1, 2, 3}, {255, 8, 9, 10}), 0, 1,
                 2, 3);
}

TEST(Compositing, copy_at_part_opacity_fades_between_both) {
    // A fifth of an opaque source, the rest transparent: alpha 51, colour the source's.
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_COPY, 51), kStraight, {255, 10, 20, 30}, {0, 200, 200, 200}),
        51, 10, 20, 30);
    EXPECT_PIXEL(
        lay<Depth::U8>(mode(PF_Xfer_COPY, 51), kPremultiplied, {0, 0, 0, 0}, {255, 100, 200, 50}),
        204, 80, 160, 40);
}

struct Blend {
    PF_TransferMode xfer;
    double source, destination, expected;
};

// Opaque on opaque: the result is the blend function alone. Values by hand.
TEST(Compositing, blend_functions_on_opaque_pixels) {
    const Blend cases[] = {
        {PF_Xfer_ADD, 0.25, 0.5, 0.75},          {PF_Xfer_MULTIPLY, 0.25, 0.5, 0.125},
        {PF_Xfer_SCREEN, 0.25, 0.5, 0.625},      {PF_Xfer_OVERLAY, 0.25, 0.25, 0.125},
        {PF_Xfer_OVERLAY, 0.25, 0.75, 0.625},    {PF_Xfer_HARD_LIGHT, 0.25, 0.75, 0.375},
        {PF_Xfer_HARD_LIGHT, 0.75, 0.25, 0.625}, {PF_Xfer_SOFT_LIGHT, 0.25, 0.5, 0.375},
        {PF_Xfer_SOFT_LIGHT, 0.75, 0.25, 0.375}, {PF_Xfer_SOFT_LIGHT, 1.0, 0.125, 0.34375},
        {PF_Xfer_DARKEN, 0.25, 0.5, 0.25},       {PF_Xfer_LIGHTEN, 0.25, 0.5, 0.5},
        {PF_Xfer_DIFFERENCE, 0.25, 1.0, 0.75},   {PF_Xfer_DIFFERENCE, 1.0, 0.25, 0.75},
    };
    for (const Blend &c : cases) {
        const auto s = static_cast<float>(c.source), d = static_cast<float>(c.destination);
        const auto pixel = lay<Depth::Float>(mode(c.xfer), kStraight, {1, s, s, s}, {1, d, d, d});
        EXPECT_EQ(pixel.alpha, 1.0f) << c.xfer;
        EXPECT_FLOAT_EQ(pixel.red, static_cast<float>(c.expected)) << c.xfer;
        const auto code = [](double v) { return static_cast<A_u_short>(v * 32768); };
        const auto deep =
            lay<Depth::U16>(mode(c.xfer), kPremultiplied, {32768, code(c.source), 0, 0},
                            {32768, code(c.destination), 0, 0});
        EXPECT_EQ(deep.red, code(c.expected)) << c.xfer;
    }
}

TEST(Compositing, add_clamps_at_white_eight_bit) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_ADD), kStraight, {255, 200, 0, 1}, {255, 100, 0, 1}),
                 255, 255, 0, 2);
}

TEST(Compositing, multiply_by_a_fifth_opacity) {
    // B = 100 * 127.5/255... with source 51: B = 20; 0.2 * 20 + 0.8 * 100 = 84.
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_MULTIPLY, 51), kStraight, {255, 51, 255, 0},
                                {255, 100, 100, 100}),
                 255, 84, 100, 80);
}

TEST(Compositing, blend_over_transparent_destination_is_the_source) {
    EXPECT_PIXEL(lay<Depth::U8>(mode(PF_Xfer_MULTIPLY), kStraight, {100, 200, 50, 7}, {0, 0, 0, 0}),
                 100, 200, 50, 7);
}

TEST(Compositing, rgb_only_keeps_destination_alpha) {
    PF_CompositeMode record = mode(PF_Xfer_IN_FRONT);
    record.rgb_only = 1;
    EXPECT_PIXEL(lay<Depth::U8>(record, kStraight, {255, 1, 2, 3}, {51, 8, 9, 10}), 51, 1, 2, 3);
}

TEST(Compositing, unknown_modes_are_refused) {
    for (const PF_TransferMode xfer : {-2, 3, 13, 26, 38, 41, 1000}) {
        EXPECT_FALSE(make_compositing(mode(xfer), kStraight, Depth::U8)) << xfer;
    }
}

TEST(Compositing, hidden_nan_does_not_leak) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_IN_FRONT), kStraight, {0.5f, 1, 2, 3}, {0, nan, nan, nan}),
        0.5f, 1.0f, 2.0f, 3.0f);
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_IN_FRONT), kStraight, {0, nan, nan, nan}, {0.5f, 1, 2, 3}),
        0.5f, 1.0f, 2.0f, 3.0f);
    EXPECT_PIXEL(
        lay<Depth::Float>(mode(PF_Xfer_BEHIND), kStraight, {1, nan, nan, nan}, {1, 1, 2, 3}), 1.0f,
        1.0f, 2.0f, 3.0f);
}

TEST(Compositing, illegal_sixteen_bit_codes_stay_in_range) {
    const auto pixel = lay<Depth::U16>(mode(PF_Xfer_SCREEN), kStraight, {65535, 65535, 0, 0},
                                       {65535, 65535, 40000, 0});
    EXPECT_LE(pixel.alpha, 32768);
    EXPECT_LE(pixel.red, 32768);
    EXPECT_LE(pixel.green, 32768);
}

// The stated rule, checked against exact integers: the quotient rounded to nearest, halves up.
TEST(Compositing, eight_bit_in_front_is_the_exact_quotient_rounded) {
    const auto how = make_compositing(mode(PF_Xfer_IN_FRONT, 201), kStraight, Depth::U8);
    const auto rounded = [](std::int64_t n, std::int64_t d) { return (2 * n + d) / (2 * d); };
    constexpr std::int64_t kUnit = 255 * 255;
    for (int sa = 0; sa <= 255; sa += 3) {
        for (int da = 0; da <= 255; da += 5) {
            for (const int cs : {0, 1, 128, 254, 255}) {
                for (const int cd : {0, 7, 200, 255}) {
                    const std::int64_t s = sa * 201;
                    const std::int64_t n = s * 255 + da * (kUnit - s);
                    const auto colour =
                        n == 0 ? cd : rounded(s * 255 * cs + da * (kUnit - s) * cd, n);
                    const auto pixel = pixel_of<Depth::U8>(composite<Depth::U8>(
                        *how, {double(sa), double(cs), 0, 0}, {double(da), double(cd), 0, 0}));
                    ASSERT_EQ(pixel.red, colour) << sa << " " << da << " " << cs << " " << cd;
                    ASSERT_EQ(pixel.alpha, rounded(n, kUnit));
                }
            }
        }
    }
}

}  // namespace
}  // namespace stage
