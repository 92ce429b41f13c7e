// Shared pixels, and the memory they come from.
#include "stage/pixels/host_pixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>
#include <vector>

namespace stage {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPoolKeeps = false;
#else
constexpr bool kPoolKeeps = true;
#endif

struct HostPixelsTest : testing::Test {
    std::shared_ptr<BytePool> pool = std::make_shared<BytePool>();
};

TEST_F(HostPixelsTest, pictures_go_in_and_out_at_every_depth) {
    Picture picture = make_picture(3, 2, SampleType::Float);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = static_cast<float>(i % 2);
    }
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        const HostPixels pixels = to_host_pixels(picture, depth, *pool);
        EXPECT_EQ(pixels.width, 3);
        EXPECT_EQ(pixels.height, 2);
        EXPECT_EQ(to_picture(pixels).argb, picture.argb);
    }
    EXPECT_TRUE(HostPixels{}.empty());
}

TEST_F(HostPixelsTest, writing_leaves_other_owners_alone) {
    HostPixels a = clear_host_pixels(4, 4, Depth::U8, *pool);
    const std::uint8_t *memory = a.data.get();
    a.writable(*pool);
    EXPECT_EQ(a.data.get(), memory) << "a single owner writes in place";
    HostPixels b = a;
    b.writable(*pool).row<PF_Pixel>(1)[2] = {1, 2, 3, 4};
    EXPECT_NE(b.data.get(), a.data.get());
    EXPECT_EQ(a.view().row<PF_Pixel>(1)[2].red, 0);
    EXPECT_EQ(b.view().row<PF_Pixel>(1)[2].red, 2);
}

TEST_F(HostPixelsTest, one_pixel_that_is_not_opaque_is_found_wherever_it_is) {
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        Picture picture = make_picture(19, 3, SampleType::Float);
        for (float &sample : picture.argb) sample = 1.0f;
        EXPECT_TRUE(is_opaque(to_host_pixels(picture, depth, *pool).view()));
        for (std::size_t i = 0; i < picture.argb.size(); ++i) {
            Picture holed = picture;
            holed.argb[i] = 0.5f;
            EXPECT_EQ(is_opaque(to_host_pixels(holed, depth, *pool).view()), i % 4 != 0) << i;
        }
    }
}

TEST_F(HostPixelsTest, alpha_beyond_white_is_opaque_and_nan_is_not) {
    HostPixels pixels = clear_host_pixels(1, 1, Depth::Float, *pool);
    auto *pixel = pixels.writable(*pool).row<PF_PixelFloat>(0);
    pixel->alpha = 3.0f;
    EXPECT_TRUE(is_opaque(pixels.view()));
    pixel->alpha = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(is_opaque(pixels.view()));
}

TEST_F(HostPixelsTest, memory_given_back_is_dealt_out_again) {
    if (!kPoolKeeps) GTEST_SKIP() << "the address sanitizer wants memory freed";
    const std::size_t size = BytePool::kSmallest * 4;
    const std::uint8_t *first = pool->take(size).get();
    EXPECT_EQ(pool->kept(), size);
    EXPECT_EQ(pool->take(size - 100).get(), first);
    EXPECT_EQ(pool->kept(), size);
    const Bytes larger = pool->take(size + 1);
    EXPECT_NE(larger.get(), first) << "too small for that";
    const Bytes smaller = pool->take(size / 2);
    EXPECT_NE(smaller.get(), first) << "too much would go unused";
    EXPECT_EQ(pool->kept(), size);
}

TEST_F(HostPixelsTest, the_best_block_is_taken) {
    if (!kPoolKeeps) GTEST_SKIP() << "the address sanitizer wants memory freed";
    const std::size_t size = BytePool::kSmallest * 8;
    const std::uint8_t *best = nullptr;
    {
        const Bytes wide = pool->take(size + 5000), tight = pool->take(size + 10);
        best = tight.get();
    }
    EXPECT_EQ(pool->take(size).get(), best);
}

TEST_F(HostPixelsTest, the_pool_keeps_no_more_than_its_budget) {
    if (!kPoolKeeps) GTEST_SKIP() << "the address sanitizer wants memory freed";
    {
        std::vector<Bytes> blocks;
        for (int i = 0; i < 5; ++i) blocks.push_back(pool->take(BytePool::kBudget / 4));
    }
    EXPECT_EQ(pool->kept(), BytePool::kBudget);
    pool->take(BytePool::kBudget + 1);
    EXPECT_EQ(pool->kept(), BytePool::kBudget);
}

TEST_F(HostPixelsTest, small_blocks_are_left_to_the_heap) {
    pool->take(BytePool::kSmallest - 1);
    EXPECT_EQ(pool->kept(), 0u);
}

TEST_F(HostPixelsTest, pixels_outlive_everybody_else_s_hold_on_the_pool) {
    HostPixels pixels = clear_host_pixels(512, 512, Depth::U8, *pool);
    pool.reset();
    EXPECT_EQ(pixels.data.get()[512 * 512 * 4 - 1], 0);
}

TEST_F(HostPixelsTest, threads_may_share_a_pool) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (std::size_t i = 1; i < 50; ++i) {
                const Bytes bytes = pool->take(BytePool::kSmallest + i * 512);
                bytes[i] = static_cast<std::uint8_t>(thread);
                EXPECT_EQ(bytes[i], thread);
            }
        });
    }
}

}  // namespace
}  // namespace stage
