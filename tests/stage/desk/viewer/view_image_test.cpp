// Pixels of every depth as a monitor shows them.
#include "stage/desk/viewer/view_image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace stage {
namespace {

template <class Pixel>
std::uint32_t shown(Depth depth, Pixel pixel) {
    ViewImage image;
    show_over_black({reinterpret_cast<std::byte *>(&pixel), sizeof pixel, 1, 1, depth}, image);
    return image.at(0, 0);
}

std::uint32_t nearest(double value) {
    return static_cast<std::uint32_t>(std::floor(value + 0.5));
}

TEST(ViewImage, every_8_bit_code_under_every_alpha) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int code = 0; code < 256; ++code) {
            const auto a = static_cast<A_u_char>(alpha), c = static_cast<A_u_char>(code);
            const std::uint32_t expected = nearest(code * alpha / 255.0);
            const std::uint32_t is = shown(Depth::U8, PF_Pixel{a, c, 0, 0});
            ASSERT_EQ(is, 0xFF000000u | expected << 16) << code << " under " << alpha;
        }
    }
}

TEST(ViewImage, channels_are_red_green_blue) {
    EXPECT_EQ(shown(Depth::U8, PF_Pixel{255, 1, 2, 3}), 0xFF010203u);
    EXPECT_EQ(shown(Depth::U16, PF_Pixel16{32768, 32768, 16384, 0}), 0xFFFF8000u);
    EXPECT_EQ(shown(Depth::Float, PF_PixelFloat{1, 0, 0.5f, 1}), 0xFF0080FFu);
}

TEST(ViewImage, every_16_bit_code_is_rounded_once) {
    for (int code = 0; code <= 32768; ++code) {
        for (const int alpha : {32768, 16384, 12345, 1, 0}) {
            const PF_Pixel16 pixel{static_cast<A_u_short>(alpha), 0, static_cast<A_u_short>(code),
                                   0};
            const double exact = code * static_cast<double>(alpha) / (32768.0 * 32768.0) * 255.0;
            ASSERT_EQ(shown(Depth::U16, pixel), 0xFF000000u | nearest(exact) << 8)
                << code << " under " << alpha;
        }
    }
    EXPECT_EQ(shown(Depth::U16, PF_Pixel16{65535, 65535, 40000, 0}), 0xFFFFFF00u);
}

TEST(ViewImage, floats_beyond_the_range_are_cut_off) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(shown(Depth::Float, PF_PixelFloat{1, 7.0f, -3.0f, 1e30f}), 0xFFFF00FFu);
    EXPECT_EQ(shown(Depth::Float, PF_PixelFloat{kInf, kInf, -kInf, kNan}), 0xFFFF0000u);
    EXPECT_EQ(shown(Depth::Float, PF_PixelFloat{kNan, 1, 1, 1}), 0xFF000000u);
    EXPECT_EQ(shown(Depth::Float, PF_PixelFloat{0.5f, 1, 0.5f, 0}), 0xFF804000u);
}

TEST(ViewImage, rows_with_padding_and_one_translucent_pixel) {
    constexpr int kWidth = 37, kHeight = 3, kRow = kWidth + 5;
    std::vector<PF_Pixel> pixels(kRow * kHeight, PF_Pixel{9, 9, 9, 9});
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            pixels[static_cast<std::size_t>(y * kRow + x)] = {255, static_cast<A_u_char>(x),
                                                              static_cast<A_u_char>(y), 200};
        }
    }
    pixels[kRow + 36] = {0, 255, 255, 255};
    ViewImage image{1, 1, {5}};
    show_over_black(
        {reinterpret_cast<std::byte *>(pixels.data()), kRow * 4, kWidth, kHeight, Depth::U8},
        image);
    ASSERT_EQ(image.pixels.size(), std::size_t{kWidth * kHeight});
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool hole = y == 1 && x == 36;
            const std::uint32_t expected = 0xFF0000C8u | static_cast<std::uint32_t>(x) << 16 |
                                           static_cast<std::uint32_t>(y) << 8;
            EXPECT_EQ(image.at(x, y), hole ? 0xFF000000u : expected);
        }
    }
}

}  // namespace
}  // namespace stage
