#include "stage/pixels/transfer_pixels.h"

#include <gtest/gtest.h>

#include "pixel_grid.h"

namespace stage_test {
namespace {

using stage::Compositing;
using stage::Depth;
using stage::transfer_pixels;

Compositing in_front(Depth depth, PF_TransferMode xfer = PF_Xfer_IN_FRONT) {
    PF_CompositeMode mode{};
    mode.xfer = xfer;
    mode.opacity = 255;
    mode.opacitySu = 32768;
    return *stage::make_compositing(mode, PF_MF_Alpha_STRAIGHT, depth);
}

constexpr PF_Pixel kRed{255, 255, 0, 0};
constexpr PF_Pixel kOld{200, 9, 9, 9};

struct Placement {
    const char *name;
    stage::Box from;
    std::int64_t x, y;
    stage::Box changed;  ///< of a 6x5 destination
};

TEST(TransferPixels, rectangle_lands_with_its_corner_at_the_point_and_is_clipped) {
    constexpr std::int64_t kFar = 2147483647;
    const Placement cases[] = {
        {"whole inside", {0, 0, 3, 2}, 1, 2, {1, 2, 4, 4}},
        {"part", {1, 1, 3, 2}, 0, 0, {0, 0, 2, 1}},
        {"negative position", {0, 0, 3, 2}, -2, -1, {0, 0, 1, 1}},
        {"over the far edges", {0, 0, 3, 2}, 5, 4, {5, 4, 6, 5}},
        {"larger than the source", {0, 0, 100, 100}, 1, 1, {1, 1, 4, 3}},
        {"rectangle before the source", {-2, -1, 3, 2}, 0, 0, {2, 1, 5, 3}},
        {"outside", {0, 0, 3, 2}, 6, 0, {}},
        {"far outside", {0, 0, 3, 2}, kFar, -kFar, {}},
        {"empty", {2, 0, 2, 2}, 0, 0, {}},
        {"inverted", {2, 2, 0, 0}, 3, 3, {}},
    };
    for (const Placement &c : cases) {
        Grid8 src(3, 2, kRed), dst(6, 5, kOld);
        transfer_pixels(src.view(), c.from, dst.view(), c.x, c.y, in_front(Depth::U8));
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 6; ++x) {
                const bool inside = x >= c.changed.left && x < c.changed.right &&
                                    y >= c.changed.top && y < c.changed.bottom;
                EXPECT_TRUE(same(dst.at(x, y), inside ? kRed : kOld))
                    << c.name << " at " << x << "," << y;
            }
        }
        EXPECT_TRUE(dst.padding_intact()) << c.name;
        EXPECT_EQ(count_other(src, kRed), 0) << c.name;
    }
}

TEST(TransferPixels, source_pixels_keep_their_places) {
    Grid16 src(2, 2), dst(3, 3);
    for (int i = 0; i < 4; ++i) src.set(i % 2, i / 2, {32768, static_cast<A_u_short>(i), 0, 0});
    transfer_pixels(src.view(), {0, 0, 2, 2}, dst.view(), 1, 1, in_front(Depth::U16));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(dst.at(1 + i % 2, 1 + i / 2).red, i);
}

TEST(TransferPixels, each_pixel_is_composited_by_its_own_alpha) {
    Grid8 src(2, 1), dst(2, 1, {255, 100, 100, 100});
    src.set(0, 0, {0, 255, 255, 255});
    src.set(1, 0, {51, 250, 0, 100});
    transfer_pixels(src.view(), {0, 0, 2, 1}, dst.view(), 0, 0, in_front(Depth::U8));
    EXPECT_TRUE(same(dst.at(0, 0), PF_Pixel{255, 100, 100, 100}));
    EXPECT_TRUE(same(dst.at(1, 0), PF_Pixel{255, 130, 80, 100}));
}

TEST(TransferPixels, mode_none_touches_nothing) {
    Grid8 src(2, 2, kRed), dst(2, 2, kOld);
    transfer_pixels(src.view(), {0, 0, 2, 2}, dst.view(), 0, 0, in_front(Depth::U8, PF_Xfer_NONE));
    EXPECT_EQ(count_other(dst, kOld), 0);
}

}  // namespace
}  // namespace stage_test
