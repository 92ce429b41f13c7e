// Pixel buffers in each layout.
#include "stage/drawbot/image_layout.h"

#include <gmock/gmock.h>

#include <array>

namespace stage_test {
namespace {

using stage::image_from_buffer;
using stage::PixelLayout;
using testing::ElementsAre;

struct LayoutCase {
    PixelLayout layout;
    std::array<std::uint8_t, 4> bytes;
    std::uint32_t pixel;
};

const LayoutCase kCases[] = {
    {PixelLayout::k24Rgb, {10, 20, 30, 99}, 0xFF0A141E},
    {PixelLayout::k24Bgr, {10, 20, 30, 99}, 0xFF1E140A},
    {PixelLayout::k32Rgb, {99, 10, 20, 30}, 0xFF0A141E},
    {PixelLayout::k32Bgr, {10, 20, 30, 99}, 0xFF1E140A},
    {PixelLayout::k32ArgbStraight, {128, 10, 20, 30}, 0x800A141E},
    {PixelLayout::k32ArgbPremultiplied, {128, 64, 128, 0}, 0x8080FF00},
    {PixelLayout::k32BgraStraight, {10, 20, 30, 128}, 0x801E140A},
    {PixelLayout::k32BgraPremultiplied, {0, 128, 64, 128}, 0x8080FF00},
};

TEST(ImageLayout, each_layout_gives_the_same_kind_of_pixels) {
    for (const LayoutCase &row : kCases) {
        const auto number = static_cast<int>(row.layout);
        const auto image = image_from_buffer(1, 1, 4, number, row.bytes.data());
        ASSERT_TRUE(image.has_value()) << number;
        EXPECT_THAT(image->argb, ElementsAre(row.pixel)) << number;
    }
}

TEST(ImageLayout, premultiplied_colours_above_their_alpha_are_white_and_none_without_alpha) {
    const std::uint8_t bytes[] = {100, 200, 100, 50, 0, 9, 9, 9};
    const auto image =
        image_from_buffer(2, 1, 8, static_cast<int>(PixelLayout::k32ArgbPremultiplied), bytes);
    ASSERT_TRUE(image.has_value());
    EXPECT_THAT(image->argb, ElementsAre(0x64FFFF80, 0x00000000));
}

TEST(ImageLayout, rows_are_read_row_bytes_apart) {
    const std::uint8_t bytes[] = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12};
    const auto image = image_from_buffer(2, 2, 8, static_cast<int>(PixelLayout::k24Rgb), bytes);
    ASSERT_TRUE(image.has_value());
    EXPECT_THAT(image->argb, ElementsAre(0xFF010203, 0xFF040506, 0xFF070809, 0xFF0A0B0C));
}

TEST(ImageLayout, impossible_buffers_give_none) {
    const std::uint8_t bytes[16] = {};
    EXPECT_FALSE(image_from_buffer(0, 1, 4, 4, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(1, -1, 4, 4, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(30001, 1, 200000, 4, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(2, 1, 7, 4, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(2, 1, -8, 4, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(1, 1, 4, 8, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(1, 1, 4, -1, bytes).has_value());
    EXPECT_FALSE(image_from_buffer(1, 1, 4, 4, nullptr).has_value());
}

}  // namespace
}  // namespace stage_test
