// World to raster and back, byte by byte.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "pixels/raster_copy.h"
#include "plugin/support/test_world.h"

namespace {

using ks::Pixel16;
using ks::Pixel8;
using ks::PixelF;
using ks::draw::copy_from_raster;
using ks::draw::copy_to_raster;
template <class P>
using World = ks::TestWorld<P>;

using Bytes = std::vector<std::uint8_t>;

constexpr ks::FormatCode kForeignFormat =
    ks::format_code('b', 'g', 'r', 'a');  // the host's, never ours

// The four raster bytes of one world pixel.
template <class P>
Bytes in(const P &pixel) {
    World<P> world(1, 1);
    world.at(0, 0) = pixel;
    Bytes raster(4);
    EXPECT_EQ(copy_to_raster(ks::PixelTraits<P>::kCode, world.view(), raster.data()), 0);
    return raster;
}

// The world pixel of four raster bytes.
template <class P>
P out(const Bytes &raster) {
    World<P> world(1, 1);
    EXPECT_EQ(copy_from_raster(ks::PixelTraits<P>::kCode, raster.data(), world.view()), 0);
    EXPECT_TRUE(world.guards_intact());
    return world.at(0, 0);
}

TEST(CopyToRaster, eight_bit_channels_stay_as_they_are_alpha_last) {
    EXPECT_EQ(in(Pixel8{1, 2, 3, 250}), (Bytes{2, 3, 250, 1}));
}

TEST(CopyToRaster, sixteen_bit_channels_are_scaled_and_truncated) {
    // 32768 -> 255; 16384 -> 127.5; 129 -> 1.004, 128 -> 0.996.
    EXPECT_EQ(in(Pixel16{32768, 16384, 129, 128}), (Bytes{127, 1, 0, 255}));
}

TEST(CopyToRaster, sixteen_bit_codes_beyond_full_scale_keep_their_low_bits) {
    // 32897 -> 256.004 -> 0; 65535 -> 509.99 -> 253.
    EXPECT_EQ(in(Pixel16{65535, 32897, 32768, 0}), (Bytes{0, 255, 0, 253}));
}

TEST(CopyToRaster, every_sixteen_bit_code_is_the_single_precision_product_truncated) {
    for (int code = 0; code <= 65535; ++code) {
        const auto product = static_cast<int>(static_cast<float>(code) * 0.0077819824f);
        const auto channel = static_cast<std::uint16_t>(code);
        ASSERT_EQ(in(Pixel16{0, channel, 0, 0})[0], product & 0xFF) << code;
    }
}

TEST(CopyToRaster, float_channels_clamp_above_and_wrap_below) {
    EXPECT_EQ(in(PixelF{1.0f, 1.5f, -0.1f, 0.5f}), (Bytes{255, 231, 127, 255}));
    EXPECT_EQ(in(PixelF{-1.0f, -0.003f, 0.0f, 1e30f}), (Bytes{0, 0, 255, 1}));
}

TEST(CopyToRaster, float_values_without_an_integer_are_defined) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(in(PixelF{std::numeric_limits<float>::quiet_NaN(), kInf, -kInf, -1e30f}),
              (Bytes{255, 0, 0, 0}));
}

TEST(CopyFromRaster, eight_bit_is_as_it_is_and_opaque) {
    const Pixel8 pixel = out<Pixel8>({2, 3, 250, 0});
    EXPECT_EQ(pixel.alpha, 255);
    EXPECT_EQ(pixel.red, 2);
    EXPECT_EQ(pixel.green, 3);
    EXPECT_EQ(pixel.blue, 250);
}

TEST(CopyFromRaster, sixteen_bit_is_scaled_truncated_and_opaque) {
    const Pixel16 pixel = out<Pixel16>({255, 128, 1, 7});
    EXPECT_EQ(pixel.alpha, 32768);
    EXPECT_EQ(pixel.red, 32768);
    EXPECT_EQ(pixel.green, 16448);  // 16448.25
    EXPECT_EQ(pixel.blue, 128);     // 128.5
}

TEST(CopyFromRaster, every_byte_becomes_the_single_precision_product) {
    for (int byte = 0; byte <= 255; ++byte) {
        const auto value = static_cast<std::uint8_t>(byte);
        const auto code = static_cast<int>(static_cast<float>(byte) * 128.50197f);
        ASSERT_EQ(out<Pixel16>({0, value, 0, 0}).green, code) << byte;
        const float unit = static_cast<float>(byte) * 0.003921569f;
        ASSERT_EQ(out<PixelF>({0, value, 0, 0}).green, unit) << byte;
    }
}

TEST(CopyFromRaster, float_is_opaque_whatever_the_rasters_alpha) {
    const PixelF pixel = out<PixelF>({255, 0, 51, 0});
    EXPECT_EQ(pixel.alpha, 1.0f);
    EXPECT_EQ(pixel.red, 1.0f);
    EXPECT_EQ(pixel.green, 0.0f);
    EXPECT_EQ(pixel.blue, 51 * 0.003921569f);
}

TEST(RasterCopy, unknown_format_goes_in_as_opaque_black_and_comes_out_not_at_all) {
    World<Pixel8> world(3, 2);
    world.at(2, 1) = {9, 9, 9, 9};
    Bytes raster(24, 0x77);
    EXPECT_EQ(copy_to_raster(kForeignFormat, world.view(), raster.data()), 516);
    for (std::size_t i = 0; i < raster.size(); ++i) EXPECT_EQ(raster[i], i % 4 == 3 ? 255 : 0);
    EXPECT_EQ(copy_from_raster(kForeignFormat, raster.data(), world.view()), 516);
    EXPECT_EQ(world.at(2, 1).red, 9);
}

// Widths around the registers' four pixels, on padded rows.
template <class P>
class RasterWidths : public testing::Test {};
using Depths = testing::Types<Pixel8, Pixel16, PixelF>;
TYPED_TEST_SUITE(RasterWidths, Depths);

TYPED_TEST(RasterWidths, every_pixel_goes_its_way_and_nothing_else_is_touched) {
    using P = TypeParam;
    constexpr auto kFull =
        static_cast<typename ks::PixelTraits<P>::Channel>(ks::PixelTraits<P>::kFullScale);
    for (int width = 1; width <= 9; ++width) {
        World<P> world(width, 3);
        const auto lit = [width](int x, int y) { return (x + y * width) % 3 == 0; };
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) {
                world.at(x, y) = lit(x, y) ? P{0, kFull, 0, kFull} : P{0, 0, kFull, 0};
            }
        }
        const std::size_t size = static_cast<std::size_t>(width) * 12;
        Bytes raster(size + 16, 0x77);
        ASSERT_EQ(copy_to_raster(ks::PixelTraits<P>::kCode, world.view(), raster.data()), 0);
        for (std::size_t i = 0; i < size; i += 4) {
            const bool on = (i / 4) % 3 == 0;
            ASSERT_EQ(Bytes(raster.begin() + i, raster.begin() + i + 4),
                      on ? (Bytes{255, 0, 255, 0}) : (Bytes{0, 255, 0, 0}));
        }
        EXPECT_EQ(Bytes(raster.begin() + size, raster.end()), Bytes(16, 0x77));

        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) world.at(x, y) = P{};
        }
        ASSERT_EQ(copy_from_raster(ks::PixelTraits<P>::kCode, raster.data(), world.view()), 0);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) {
                const P pixel = world.at(x, y);
                ASSERT_EQ(pixel.alpha, kFull);
                ASSERT_EQ(pixel.red, lit(x, y) ? kFull : 0);
                ASSERT_EQ(pixel.green, lit(x, y) ? 0 : kFull);
                ASSERT_EQ(pixel.blue, lit(x, y) ? kFull : 0);
            }
        }
        EXPECT_TRUE(world.guards_intact());
    }
}

TEST(RasterCopy, eight_bit_colours_make_the_round_trip_unchanged) {
    World<Pixel8> world(256, 1);
    for (int x = 0; x < 256; ++x) {
        const auto value = static_cast<std::uint8_t>(x);
        world.at(x, 0) = {value, value, static_cast<std::uint8_t>(255 - x), 17};
    }
    Bytes raster(1024);
    copy_to_raster(ks::kFormat8, world.view(), raster.data());
    copy_from_raster(ks::kFormat8, raster.data(), world.view());
    for (int x = 0; x < 256; ++x) {
        EXPECT_EQ(world.at(x, 0).alpha, 255);
        EXPECT_EQ(world.at(x, 0).red, x);
        EXPECT_EQ(world.at(x, 0).green, 255 - x);
        EXPECT_EQ(world.at(x, 0).blue, 17);
    }
}

TEST(RasterCopy, upside_down_rows_are_followed) {
    World<Pixel8> world(2, 2);
    world.at(0, 0) = {0, 1, 1, 1};
    world.at(0, 1) = {0, 2, 2, 2};
    Bytes raster(16);
    ASSERT_EQ(copy_to_raster(ks::kFormat8, world.flipped(), raster.data()), 0);
    EXPECT_EQ(raster[0], 2);
    EXPECT_EQ(raster[8], 1);
}

TEST(RasterCopy, worlds_without_pixels_touch_nothing) {
    const std::array<ks::WorldView, 3> worlds = {ks::WorldView{nullptr, 8, 2, 0},
                                                 ks::WorldView{nullptr, 8, -2, 2},
                                                 ks::WorldView{nullptr, 8, 0, 2}};
    Bytes raster(16, 0x77);
    for (const ks::WorldView &world : worlds) {
        EXPECT_EQ(copy_to_raster(ks::kFormatF, world, raster.data()), 0);
        EXPECT_EQ(copy_to_raster(ks::kFormatInvalid, world, raster.data()), 516);
        EXPECT_EQ(copy_from_raster(ks::kFormatF, raster.data(), world), 0);
    }
    EXPECT_EQ(raster, Bytes(16, 0x77));
}

TEST(RasterCopy, world_without_data_is_transparent_black) {
    Bytes raster(16, 0x77);
    const ks::WorldView world{nullptr, 8, 2, 2};
    EXPECT_EQ(copy_to_raster(ks::kFormat8, world, raster.data()), 0);
    EXPECT_EQ(raster, Bytes(16, 0));
    EXPECT_EQ(copy_from_raster(ks::kFormat8, raster.data(), world), 0);
}

}  // namespace
