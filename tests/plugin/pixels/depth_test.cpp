// Conversions between the depths: every code, the clamp at the top only, and hostile floats.
#include "pixels/depth.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ks {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

std::uint8_t to_8(float v) {
    return from_colour<Pixel8>({v, v, v, v}).green;
}
std::uint16_t to_16(float v) {
    return from_colour<Pixel16>({v, v, v, v}).green;
}

TEST(Depth, every_8_bit_code_is_multiplied_by_single_precision_1_255th) {
    for (int i = 0; i < 256; ++i) {
        const auto code = static_cast<std::uint8_t>(i);
        const Colour c = to_colour(Pixel8{code, code, code, code});
        const float expected = static_cast<float>(i) * 0.003921569f;
        EXPECT_EQ(c.alpha, expected);
        EXPECT_EQ(c.red, expected);
        EXPECT_EQ(c.green, expected);
        EXPECT_EQ(c.blue, expected);
    }
}

TEST(Depth, every_8_bit_code_survives_the_way_to_float_and_back) {
    for (int i = 0; i < 256; ++i) {
        const auto code = static_cast<std::uint8_t>(i);
        EXPECT_EQ(to_8(to_colour(Pixel8{0, 0, code, 0}).green), code);
    }
}

TEST(Depth, every_16_bit_code_is_its_exact_fraction_and_survives_the_way_back) {
    for (int i = 0; i <= 32768; ++i) {
        const auto code = static_cast<std::uint16_t>(i);
        const Colour c = to_colour(Pixel16{code, code, code, code});
        ASSERT_EQ(c.red, std::ldexp(static_cast<float>(i), -15));
        ASSERT_EQ(c.alpha, c.red);
        ASSERT_EQ(to_16(c.blue), code);
    }
}

TEST(Depth, every_16_bit_code_to_8_bit_truncates_the_product) {
    for (int i = 0; i <= 32768; ++i) {
        const auto code = static_cast<std::uint16_t>(i);
        const Pixel8 p = to_8bit({code, code, code, code});
        ASSERT_EQ(p.alpha, i * 255 / 32768);
        ASSERT_EQ(p.red, p.alpha);
        ASSERT_EQ(p.green, p.alpha);
        ASSERT_EQ(p.blue, p.alpha);
    }
}

TEST(Depth, channels_keep_their_places) {
    const Pixel8 p8 = from_colour<Pixel8>(to_colour(Pixel8{1, 2, 3, 4}));
    EXPECT_EQ(p8.alpha, 1);
    EXPECT_EQ(p8.red, 2);
    EXPECT_EQ(p8.green, 3);
    EXPECT_EQ(p8.blue, 4);
    const Pixel16 p16 = from_colour<Pixel16>(to_colour(Pixel16{1, 20000, 32768, 4}));
    EXPECT_EQ(p16.alpha, 1);
    EXPECT_EQ(p16.red, 20000);
    EXPECT_EQ(p16.green, 32768);
    EXPECT_EQ(p16.blue, 4);
}

TEST(Depth, values_are_truncated_not_rounded) {
    EXPECT_EQ(to_8(0.999f), 254);
    EXPECT_EQ(to_16(0.99999f), 32767);
}

TEST(Depth, the_top_is_clamped) {
    EXPECT_EQ(to_8(1.5f), 255);
    EXPECT_EQ(to_16(1.5f), 32768);
    EXPECT_EQ(to_8(kInf), 255);
    EXPECT_EQ(to_16(kInf), 32768);
    EXPECT_EQ(to_8(1e30f), 255);
    EXPECT_EQ(to_16(1e30f), 32768);
}

TEST(Depth, negative_values_are_not_raised_to_0_but_keep_their_low_bits) {
    EXPECT_EQ(to_8(-0.001f), 0);                 // -0.255 truncates to 0
    EXPECT_EQ(to_8(-0.5f), 256 - 127);           // -127.5 truncates to -127
    EXPECT_EQ(to_8(-2.0f), (1024 - 510) % 256);  // -510
    EXPECT_EQ(to_16(-0.5f), 65536 - 16384);
    EXPECT_EQ(to_16(-2.0f), 0);  // -65536
}

TEST(Depth, nan_and_everything_below_32_bits_give_0) {
    for (const float v : {kNan, -kInf, -1e30f}) {
        EXPECT_EQ(to_8(v), 0) << v;
        EXPECT_EQ(to_16(v), 0) << v;
    }
}

TEST(Depth, float_pixels_pass_unchanged) {
    const PixelF p = from_colour<PixelF>(to_colour(PixelF{-3.0f, kNan, 7.5f, kInf}));
    EXPECT_EQ(p.alpha, -3.0f);
    EXPECT_TRUE(std::isnan(p.red));
    EXPECT_EQ(p.green, 7.5f);
    EXPECT_EQ(p.blue, kInf);
}

TEST(Depth, truncate_low_bits_is_defined_for_every_float) {
    EXPECT_EQ(truncate_low_bits<std::uint8_t>(510.9f), 254);
    EXPECT_EQ(truncate_low_bits<std::uint8_t>(-1.9f), 255);
    EXPECT_EQ(truncate_low_bits<std::uint16_t>(65537.0f), 1);
    for (const float v : {kNan, kInf, -kInf, 1e30f, -1e30f, 2147483648.0f}) {
        EXPECT_EQ(truncate_low_bits<std::uint16_t>(v), 0) << v;
    }
}

TEST(PixelFormat, visit_refuses_codes_it_does_not_know_with_516) {
    for (const FormatCode code : {kFormatInvalid, FormatCode{0}, FormatCode{0x61726762}}) {
        EXPECT_EQ(visit_format(code,
                               [](auto) -> std::int32_t {
                                   ADD_FAILURE();
                                   return 0;
                               }),
                  516);
    }
}

TEST(PixelFormat, visit_names_the_pixel_type_of_the_code) {
    const auto size = [](auto pixel) { return static_cast<std::int32_t>(sizeof pixel); };
    EXPECT_EQ(visit_format(0x62677261, size), 4);
    EXPECT_EQ(visit_format(0x36316561, size), 8);
    EXPECT_EQ(visit_format(0x32336561, size), 16);
}

}  // namespace
}  // namespace ks
