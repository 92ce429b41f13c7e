// Whole pixels and scale factors.
#include "geometry/frame_scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ks {
namespace {

TEST(TruncToInt, truncates_toward_zero) {
    EXPECT_EQ(trunc_to_int(2.9), 2);
    EXPECT_EQ(trunc_to_int(-2.9), -2);
}

TEST(TruncToInt, survives_every_double) {
    EXPECT_EQ(trunc_to_int(std::nan("")), 0);
    EXPECT_EQ(trunc_to_int(HUGE_VAL), 1 << 30);
    EXPECT_EQ(trunc_to_int(-HUGE_VAL), -(1 << 30));
    EXPECT_EQ(trunc_to_int(1e300), 1 << 30);
}

TEST(WholePixels, shift_arithmetically) {
    EXPECT_EQ(whole_pixels(0x0001FFFF), 1);
    EXPECT_EQ(whole_pixels(-1), -1);
    EXPECT_EQ(whole_pixels(-65536), -1);
    EXPECT_EQ(whole_pixels(-65537), -2);
    EXPECT_EQ(whole_pixels(std::numeric_limits<std::int32_t>::min()), -32768);
}

TEST(FrameScale, uses_denominators_and_pixel_aspect) {
    const FrameScale scale = make_frame_scale({10, 11}, {1, 3}, {1, 4});
    EXPECT_EQ(scale.pixel_aspect, 10.0 / 11.0);
    EXPECT_EQ(scale.horizontal, (1.0 / 3.0) / (10.0 / 11.0));
    EXPECT_EQ(scale.den_x, 3u);
    EXPECT_EQ(scale.den_y, 4u);
}

TEST(FrameScale, ignores_downsample_numerators) {
    EXPECT_EQ(make_frame_scale({1, 1}, {2, 3}, {2, 3}).horizontal, 1.0 / 3.0);
}

TEST(FrameScale, takes_0_for_1) {
    const FrameScale scale = make_frame_scale({0, 1}, {1, 0}, {1, 0});
    EXPECT_EQ(scale.horizontal, 1.0);
    EXPECT_EQ(scale.den_y, 1u);
    EXPECT_EQ(make_frame_scale({1, 0}, {1, 1}, {1, 1}).pixel_aspect, 1.0);
    EXPECT_EQ(make_frame_scale({-1, 1}, {1, 1}, {1, 1}).pixel_aspect, 1.0);
}

}  // namespace
}  // namespace ks
