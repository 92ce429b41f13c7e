// Units at check-out: points in pixels of the buffer, everything else as it was set.
#include <cmath>

#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

constexpr PF_LRect kCorner{0, 0, 4, 4};

stage::RenderSettings at_resolution(int dx, int dy) {
    stage::RenderSettings settings;
    settings.downsample_x = dx;
    settings.downsample_y = dy;
    settings.request = kCorner;
    return settings;
}

struct Units {
    int dx, dy;
    PF_Fixed x, y;         ///< point (400, 300) in 16.16
    A_long width, height;  ///< of the buffer
};

class UnitsTest : public testing::TestWithParam<Units> {};

TEST_P(UnitsTest, of_a_full_hd_frame) {
    const Units &units = GetParam();
    RogueSession rogue;
    rogue.open({1920, 1080});
    rogue.set_point(400, 300);
    rogue.value(rogue::kAmount).number = 77;
    rogue.render(at_resolution(units.dx, units.dy));
    const rogue::Seen &seen = rogue.seen();
    EXPECT_EQ(seen.point_x, units.x);
    EXPECT_EQ(seen.point_y, units.y);
    EXPECT_EQ(seen.amount, 77);
    EXPECT_EQ(seen.width, 1920);
    EXPECT_EQ(seen.height, 1080);
    EXPECT_EQ(seen.input_max.right, units.width);
    EXPECT_EQ(seen.input_max.bottom, units.height);
    EXPECT_EQ(seen.reference_width, 1920);
    EXPECT_EQ(seen.reference_height, 1080);
    EXPECT_EQ(seen.downsample_x.num, 1);
    EXPECT_EQ(seen.downsample_x.den, static_cast<A_u_long>(units.dx));
    EXPECT_EQ(seen.downsample_y.num, 1);
    EXPECT_EQ(seen.downsample_y.den, static_cast<A_u_long>(units.dy));
    EXPECT_THAT(rogue.host().strict.all(), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Resolutions, UnitsTest,
                         testing::Values(Units{1, 1, 400 * 65536, 300 * 65536, 1920, 1080},
                                         Units{2, 2, 200 * 65536, 150 * 65536, 960, 540},
                                         Units{3, 4, 8738133, 75 * 65536, 640, 270}),
                         [](const auto &row) {
                             return std::to_string(row.param.dx) + "x" +
                                    std::to_string(row.param.dy);
                         });

struct Aspect {
    int num, den;
};

class AspectTest : public testing::TestWithParam<Aspect> {};

// A point is kept in the layer's own pixels, so what the plug-in reads has been divided by the
// pixel aspect already: the middle of the layer is the middle of the buffer.
TEST_P(AspectTest, points_are_in_the_layers_own_pixels) {
    const auto [num, den] = GetParam();
    RogueSession rogue;
    rogue.open({200, 100, num, den});
    for (const auto &[dx, dy] : {std::pair{1, 1}, std::pair{2, 2}, std::pair{3, 4}}) {
        rogue.render(at_resolution(dx, dy));
        EXPECT_EQ(rogue.seen().point_x, std::lround(100.0 / dx * 65536)) << dx;
        EXPECT_EQ(rogue.seen().point_y, std::lround(25.0 / dy * 65536)) << dy;
        EXPECT_EQ(rogue.seen().pixel_aspect.num, num);
        EXPECT_EQ(rogue.seen().pixel_aspect.den, static_cast<A_u_long>(den));
        EXPECT_EQ(rogue.seen().input.par.num, num);
        EXPECT_EQ(rogue.seen().output.par.num, num);
        EXPECT_EQ(rogue.seen().width, 200);
    }
}

// Back to square pixels at full resolution, as a plug-in has to compute it.
TEST_P(AspectTest, points_go_back_to_square_pixels_of_full_size) {
    const auto [num, den] = GetParam();
    RogueSession rogue;
    rogue.open({200, 100, num, den});
    rogue.set_point(30, 40);
    rogue.render(at_resolution(3, 4));
    const rogue::Seen &seen = rogue.seen();
    const double par = double(seen.pixel_aspect.num) / seen.pixel_aspect.den;
    EXPECT_NEAR(seen.point_x / 65536.0 * par * seen.downsample_x.den, 30.0 * num / den, 1e-4);
    EXPECT_NEAR(seen.point_y / 65536.0 * seen.downsample_y.den, 40.0, 1e-4);
}

INSTANTIATE_TEST_SUITE_P(Aspects, AspectTest,
                         testing::Values(Aspect{1, 1}, Aspect{10, 11}, Aspect{2, 1}),
                         [](const auto &row) {
                             return std::to_string(row.param.num) + "to" +
                                    std::to_string(row.param.den);
                         });

TEST(PanelUnits, points_are_layer_pixels_whatever_the_last_render_was) {
    RogueSession rogue("change_values");
    rogue.open({200, 100, 2, 1});
    rogue.render(at_resolution(2, 2));
    rogue.session.set_value(*rogue.effect, rogue::kAmount, {});
    // The plug-in wrote x = -3 in the panel's units and left y as it found it there.
    EXPECT_EQ(rogue.value(rogue::kCentre).x, -3);
    EXPECT_EQ(rogue.value(rogue::kCentre).y, 25);
}

}  // namespace
}  // namespace stage_test
