#include "stage/image/picture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "stage/image/sample_codes.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

TEST(Rows, all_8_bit_codes_come_back) {
    std::vector<std::uint8_t> rows(256 * 4);
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<std::uint8_t>(i / 4 ^ i);
    const Picture picture = from_rows(Depth::U8, rows.data(), 64, 16, 16);
    EXPECT_EQ(picture.native, SampleType::U8);
    std::vector<std::uint8_t> back(rows.size());
    to_rows8(picture, back.data(), 64);
    EXPECT_EQ(back, rows);
}

TEST(Rows, all_32769_codes_of_16_bits_come_back) {
    for (int code = 0; code <= 32768; ++code) {
        const std::uint16_t pixel[4] = {static_cast<std::uint16_t>(code),
                                        static_cast<std::uint16_t>(32768 - code), 0, 32768};
        const Picture picture = from_rows(Depth::U16, pixel, 8, 1, 1);
        ASSERT_EQ(picture.argb[0], static_cast<float>(code) / 32768.0f);
        std::uint16_t back[4] = {};
        to_rows16(picture, back, 8);
        ASSERT_TRUE(std::equal(pixel, pixel + 4, back)) << code;
    }
}

TEST(Rows, all_8_bit_values_survive_a_16_bit_world) {
    for (int code = 0; code < 256; ++code) {
        EXPECT_EQ(code_of(value_of(code_of(value_of(code, 255), 32768), 32768), 255), code);
    }
}

TEST(Rows, host_16_bit_codes_above_white_are_kept_in_and_clamped_out) {
    const std::uint16_t pixel[4] = {32769, 40000, 65535, 32768};
    const Picture picture = from_rows(Depth::U16, pixel, 8, 1, 1);
    EXPECT_EQ(picture.argb[2], 65535.0f / 32768.0f);
    std::uint16_t back[4] = {};
    to_rows16(picture, back, 8);
    for (const std::uint16_t code : back) EXPECT_EQ(code, 32768);
}

TEST(Rows, codes_are_rounded_to_the_nearest_halves_upwards) {
    EXPECT_EQ(code_of(0.5f, 255), 128);             // 127.5
    EXPECT_EQ(code_of(0.49999997f, 255), 127);      // just below
    EXPECT_EQ(code_of(0.5f / 32768.0f, 32768), 1);  // exactly half a code
    EXPECT_EQ(code_of(0.49999997f / 32768.0f, 32768), 0);
}

TEST(Rows, integer_depths_survive_everything_a_float_can_be) {
    Picture picture = make_picture(2, 2, SampleType::Float);
    picture.argb = {kNan,
                    kInf,
                    -kInf,
                    1e38f,
                    -1e38f,
                    -0.0f,
                    1e-45f,
                    2.0f,
                    -1.0f,
                    1.0f,
                    0.0f,
                    kNan,
                    std::numeric_limits<float>::max(),
                    0.25f,
                    -kNan,
                    1.0001f};
    const std::vector<std::uint8_t> expected = {0, 255, 0, 255, 0,   0,  0, 255,
                                                0, 255, 0, 0,   255, 64, 0, 255};
    std::vector<std::uint8_t> rows8(16);
    to_rows8(picture, rows8.data(), 8);
    EXPECT_EQ(rows8, expected);
    std::vector<std::uint16_t> rows16(16);
    to_rows16(picture, rows16.data(), 16);
    for (std::size_t i = 0; i < rows16.size(); ++i) {
        EXPECT_EQ(rows16[i], i == 13 ? 8192 : expected[i] == 255 ? 32768 : 0) << i;
    }
}

TEST(Rows, float_rows_keep_every_bit) {
    Picture picture = make_picture(2, 1, SampleType::Float);
    picture.argb = {kNan, kInf, -kInf, -0.0f, 1e-45f, -3.0f, 1e38f, 1.0f};
    std::vector<float> rows(8);
    to_rowsf(picture, rows.data(), 32);
    EXPECT_TRUE(same_bits(from_rows(Depth::Float, rows.data(), 32, 2, 1), picture));
}

TEST(Rows, bytes_beyond_the_pixels_of_a_row_are_left_alone) {
    const Picture picture = opaque_floats();
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        const int pixel_size = static_cast<int>(depth) / 2;
        const int rowbytes = picture.width * pixel_size + 12;
        std::vector<std::uint8_t> rows(static_cast<std::size_t>(rowbytes * picture.height), 0xA5);
        to_rows(picture, depth, rows.data(), rowbytes);
        for (int y = 0; y < picture.height; ++y) {
            for (int i = picture.width * pixel_size; i < rowbytes; ++i) {
                ASSERT_EQ(rows[static_cast<std::size_t>(y * rowbytes + i)], 0xA5);
            }
        }
        const Picture back = from_rows(depth, rows.data(), rowbytes, picture.width, picture.height);
        EXPECT_EQ(back.at(4, 2)[0], 1.0f);
    }
}

TEST(Rows, a_world_may_be_stored_bottom_row_first) {
    std::uint8_t rows[2][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    const Picture picture = from_rows(Depth::U8, rows[1], -4, 1, 2);
    EXPECT_EQ(picture.at(0, 0)[0], 5.0f / 255.0f);
    std::uint8_t back[2][4] = {};
    to_rows8(picture, back[1], -4);
    EXPECT_EQ(std::memcmp(rows, back, sizeof rows), 0);
}

TEST(Alpha, colour_under_alpha_0_and_1_is_kept_both_ways) {
    Picture picture = make_picture(3, 1, SampleType::Float);
    picture.argb = {0.0f, 0.5f, kInf, -1.0f, 1.0f, 0.3f, kNan, 2.0f, 0.5f, 0.25f, 1.0f, -1.0f};
    const Picture original = picture;
    premultiply(picture);
    EXPECT_EQ(std::memcmp(picture.argb.data(), original.argb.data(), 8 * sizeof(float)), 0);
    EXPECT_EQ(picture.argb[9], 0.125f);
    unpremultiply(picture);
    EXPECT_TRUE(same_bits(picture, original));
}

TEST(MakePicture, refuses_sides_that_no_picture_has) {
    EXPECT_EQ(error_of([] { make_picture(0, 5, SampleType::U8); }),
              "a picture of 0x5 is not possible: each side must be 1 to 30000 pixels");
    EXPECT_THROW(make_picture(5, -1, SampleType::U8), PictureError);
    EXPECT_THROW(make_picture(30001, 1, SampleType::U8), PictureError);
    EXPECT_EQ(make_picture(30000, 1, SampleType::U8).argb.size(), 120000u);
}

TEST(DepthFromBits, takes_8_16_and_32_only) {
    EXPECT_EQ(depth_from_bits(8), Depth::U8);
    EXPECT_EQ(depth_from_bits(16), Depth::U16);
    EXPECT_EQ(depth_from_bits(32), Depth::Float);
    EXPECT_EQ(error_of([] { depth_from_bits(10); }),
              "a depth of 10 bits per channel is not possible: choose 8, 16 or 32");
}

}  // namespace
}  // namespace stage::test
