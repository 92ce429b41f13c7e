// What the primitives leave in a world, with the real GDI+. Implementations smooth edges each in
// its own way, so that points are looked at well inside and well outside of what is drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "plugin/draw/draw_world.h"
#include "stage/binary/gdiplus_runtime.h"

namespace {

using namespace draw_test;
using namespace ks::draw;
using ks::Pixel8;

using Rgb = std::array<int, 3>;
constexpr Rgb kRedPixel{255, 0, 0};
constexpr Rgb kGreenPixel{0, 255, 0};
constexpr Rgb kBluePixel{0, 0, 255};
constexpr Rgb kWhitePixel{255, 255, 255};
constexpr Rgb kGround{10, 20, 30};

// Left, top, right, bottom of what differs from the ground; right and bottom exclusive.
struct Box {
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
    [[nodiscard]] bool empty() const { return right < left; }
    [[nodiscard]] int width() const { return right - left; }
};

class Pixels : public testing::Test {
  protected:
    static constexpr int kWidth = 160;
    static constexpr int kHeight = 100;

    Pixels() { world.fill({255, 10, 20, 30}); }

    void SetUp() override { ASSERT_TRUE(gdiplus.available()) << gdiplus.reason(); }

    // Draws with `draw` in one pass.
    template <class Draw>
    void pass(Draw draw) {
        surface = describe_surface(host.in, ks::kFormat8, world.world, 1.0);
        ASSERT_EQ(create_surface(&host.in, &host.out, surface), PF_Err_NONE);
        draw();
        status = surface.graphics->last_status;
        ASSERT_EQ(release_surface(&host.in, &host.out, surface), PF_Err_NONE);
        host.expect_nothing_held();
        EXPECT_TRUE(world.padding_untouched());
    }

    [[nodiscard]] Rgb at(int x, int y) const {
        const Pixel8 pixel = world.get(x, y);
        return {pixel.red, pixel.green, pixel.blue};
    }

    [[nodiscard]] Box painted() const {
        Box box;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                if (at(x, y) == kGround) continue;
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
        return box;
    }

    // What one text alone paints.
    Box text_box(double x, double y, const char *text, float size, TextAlign align) {
        world.fill({255, 10, 20, 30});
        pass([&] { draw_text(x, y, text, kWhite, size, align, surface); });
        EXPECT_EQ(status, 0);
        return painted();
    }

    stage::GdiplusRuntime gdiplus;
    DrawHost host;
    World<Pixel8> world{kWidth, kHeight};
    DrawSurface surface;
    std::int32_t status = 0;
};

TEST_F(Pixels, nothing_drawn_changes_nothing) {
    pass([] {});
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(painted().empty());
}

TEST_F(Pixels, clear_fills_all_with_the_right_colour) {
    pass([&] { clear_surface({1.0f, 1.0f, 0.5f, 0.25f}, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(0, 0), (Rgb{255, 127, 63}));
    EXPECT_EQ(at(kWidth - 1, kHeight - 1), (Rgb{255, 127, 63}));
}

TEST_F(Pixels, transparent_clear_comes_back_opaque) {
    pass([&] { clear_surface({0.0f, 0.0f, 0.0f, 0.0f}, surface); });
    const Pixel8 pixel = world.get(5, 5);
    EXPECT_EQ(pixel.alpha, 255);
    EXPECT_EQ(at(5, 5), (Rgb{0, 0, 0}));
}

TEST_F(Pixels, line_has_its_colour_place_and_width) {
    pass([&] { draw_line(20, 40, 120, 40, kRed, 4, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(70, 39), kRedPixel);
    EXPECT_EQ(at(70, 40), kRedPixel);
    EXPECT_EQ(at(70, 36), kGround);
    EXPECT_EQ(at(70, 44), kGround);
    EXPECT_EQ(at(17, 40), kGround);
    EXPECT_EQ(at(123, 40), kGround);
}

TEST_F(Pixels, half_transparent_line_lies_over_the_ground) {
    pass([&] { draw_line(20, 40, 120, 40, {0.5f, 0.0f, 1.0f, 0.0f}, 6, surface); });
    const Rgb pixel = at(70, 40);
    EXPECT_NEAR(pixel[0], 5, 2);
    EXPECT_NEAR(pixel[1], 137, 2);
    EXPECT_NEAR(pixel[2], 15, 2);
}

TEST_F(Pixels, dashes_and_gaps_are_multiples_of_the_pen_width) {
    const float lengths[] = {5, 5};  // 20 on, 20 off
    pass([&] { draw_dashed_line(20, 40, 120, 40, kBlue, 4, {lengths, 2}, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(30, 40), kBluePixel);
    EXPECT_EQ(at(50, 40), kGround);
    EXPECT_EQ(at(70, 40), kBluePixel);
    EXPECT_EQ(at(90, 40), kGround);
    EXPECT_EQ(at(110, 40), kBluePixel);
}

TEST_F(Pixels, empty_dash_pattern_is_noted_and_the_line_is_drawn) {
    pass([&] { draw_dashed_line(20, 40, 120, 40, kBlue, 4, {nullptr, 0}, surface); });
    EXPECT_NE(status, 0);
    EXPECT_EQ(at(50, 40), kBluePixel);
}

TEST_F(Pixels, gradient_line_shows_both_colours_at_its_ends) {
    pass([&] { draw_gradient_line(40, 10, 40, 90, &kRed, &kBlue, 6, surface); });
    EXPECT_EQ(status, 0);
    const Rgb top = at(40, 11);
    const Rgb middle = at(40, 50);
    const Rgb bottom = at(40, 88);
    EXPECT_GE(top[0], 240);
    EXPECT_LE(top[2], 15);
    EXPECT_NEAR(middle[0], 127, 12);
    EXPECT_NEAR(middle[2], 127, 12);
    EXPECT_LE(bottom[0], 15);
    EXPECT_GE(bottom[2], 240);
}

TEST_F(Pixels, outline_of_a_rectangle_covers_its_fill) {
    pass([&] { draw_rectangle(40, 20, 60, 40, &kGreen, &kWhite, 8, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(70, 40), kGreenPixel);
    EXPECT_EQ(at(42, 40), kWhitePixel) << "inner half of the outline";
    EXPECT_EQ(at(38, 40), kWhitePixel) << "outer half";
    EXPECT_EQ(at(70, 22), kWhitePixel);
    EXPECT_EQ(at(34, 40), kGround);
}

TEST_F(Pixels, fill_of_a_closed_curve_covers_the_inner_half_of_its_outline) {
    pass([&] { draw_closed_curve(70, 50, 60, 40, 0.0f, &kGreen, &kWhite, 8, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(70, 50), kGreenPixel);
    EXPECT_EQ(at(97, 50), kGreenPixel) << "inner half of the outline";
    EXPECT_EQ(at(102, 50), kWhitePixel) << "outer half";
    EXPECT_EQ(at(106, 50), kGround);
}

TEST_F(Pixels, filled_rectangle_covers_its_pixels) {
    pass([&] { draw_rectangle(40, 20, 60, 40, &kRed, nullptr, 1, surface); });
    EXPECT_EQ(at(41, 21), kRedPixel);
    EXPECT_EQ(at(98, 58), kRedPixel);
    EXPECT_EQ(at(38, 40), kGround);
    EXPECT_EQ(at(101, 40), kGround);
}

TEST_F(Pixels, shapes_without_colours_leave_the_world_alone) {
    pass([&] {
        draw_rectangle(40, 20, 60, 40, nullptr, nullptr, 3, surface);
        draw_closed_curve(70, 50, 60, 40, 1.0f, nullptr, nullptr, 3, surface);
    });
    EXPECT_TRUE(painted().empty());
}

TEST_F(Pixels, ellipse_fits_its_box) {
    pass([&] { draw_ellipse(40, 20, 60, 40, kWhite, 4, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(40, 40), kWhitePixel);
    EXPECT_EQ(at(99, 40), kWhitePixel);
    EXPECT_EQ(at(70, 20), kWhitePixel);
    EXPECT_EQ(at(70, 59), kWhitePixel);
    EXPECT_EQ(at(70, 40), kGround);
    EXPECT_EQ(at(45, 24), kGround);
}

TEST_F(Pixels, circle_is_narrower_where_pixels_are_wider) {
    host.in.pixel_aspect_ratio = {2, 1};
    pass([&] { draw_circle(80, 50, 40, kWhite, 4, surface); });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(at(60, 50), kWhitePixel);
    EXPECT_EQ(at(80, 10), kWhitePixel);
    EXPECT_EQ(at(40, 50), kGround);
}

TEST_F(Pixels, drawing_beyond_the_edges_stays_inside) {
    pass([&] {
        draw_line(-50, -50, 500, 500, kRed, 9, surface);
        draw_rectangle(-20, 80, 1000, 1000, &kGreen, &kBlue, 5, surface);
        draw_text(-40, 2, "outside", kWhite, 30, TextAlign::kNear, surface);
    });
    EXPECT_EQ(at(0, kHeight - 1), kGreenPixel);
    EXPECT_EQ(at(kWidth - 1, kHeight - 1), kGreenPixel);
}

TEST_F(Pixels, text_stands_on_the_bottom_of_its_em_box) {
    const Box box = text_box(20, 60, "H5", 24, TextAlign::kNear);
    ASSERT_FALSE(box.empty());
    EXPECT_GE(box.top, 36 - 1);
    EXPECT_LE(box.bottom, 60 + 2);
    EXPECT_GE(box.bottom - box.top, 14) << "capitals are about 0.72 em high";
}

TEST_F(Pixels, text_is_aligned_at_x) {
    const Box near_box = text_box(80, 60, "0000", 16, TextAlign::kNear);
    const Box centre = text_box(80, 60, "0000", 16, TextAlign::kCentre);
    const Box far_box = text_box(80, 60, "0000", 16, TextAlign::kFar);
    EXPECT_NEAR(near_box.left, 80, 5);
    EXPECT_NEAR(far_box.right, 80, 5);
    EXPECT_NEAR((centre.left + centre.right) / 2.0, 80, 3);
    EXPECT_NEAR(near_box.width(), far_box.width(), 1);
}

TEST_F(Pixels, text_has_its_colour) {
    pass([&] { draw_text(20, 80, "I", kRed, 60, TextAlign::kNear, surface); });
    const Box box = painted();
    EXPECT_EQ(at((box.left + box.right) / 2, (box.top + box.bottom) / 2), kRedPixel);
}

// One character: libgdiplus narrows the glyphs, but spaces them as if it had not.
TEST_F(Pixels, wide_pixels_narrow_glyphs) {
    const Box plain = text_box(40, 60, "H", 48, TextAlign::kNear);
    host.in.pixel_aspect_ratio = {2, 1};
    const Box narrow = text_box(40, 60, "H", 48, TextAlign::kNear);
    EXPECT_NEAR(narrow.width(), plain.width() / 2.0, 2);
    EXPECT_NEAR(narrow.top, plain.top, 1);
    EXPECT_NEAR(narrow.bottom, plain.bottom, 1);
}

TEST_F(Pixels, wide_pixels_keep_the_end_of_text_that_is_aligned_far) {
    host.in.pixel_aspect_ratio = {2, 1};
    EXPECT_NEAR(text_box(140, 60, "1", 16, TextAlign::kFar).right, 140, 8);
}

TEST_F(Pixels, wide_pixels_move_text_that_is_not_aligned_far) {
    host.in.pixel_aspect_ratio = {2, 1};
    EXPECT_NEAR(text_box(100, 60, "0000", 24, TextAlign::kNear).left, 50, 5);
    const Box centre = text_box(100, 60, "0000", 24, TextAlign::kCentre);
    EXPECT_NEAR((centre.left + centre.right) / 2.0, 50, 3);
}

TEST_F(Pixels, transform_of_a_text_does_not_reach_what_follows) {
    host.in.pixel_aspect_ratio = {2, 1};
    pass([&] {
        draw_text(0, 20, "1", kWhite, 12, TextAlign::kNear, surface);
        draw_line(100, 50, 150, 50, kRed, 4, surface);
    });
    EXPECT_EQ(at(145, 50), kRedPixel);
    EXPECT_EQ(at(95, 50), kGround);
}

TEST_F(Pixels, low_quality_text_is_drawn_too) {
    host.in.quality = PF_Quality_LO;
    EXPECT_FALSE(text_box(20, 60, "100", 16, TextAlign::kNear).empty());
}

TEST_F(Pixels, empty_text_draws_nothing) {
    EXPECT_TRUE(text_box(20, 60, "", 16, TextAlign::kNear).empty());
}

TEST_F(Pixels, world_without_pixels_is_survived_by_every_primitive) {
    surface = describe_surface(host.in, ks::kFormat8, world.world, 1.0);
    surface.world.width = 0;
    ASSERT_EQ(create_surface(&host.in, &host.out, surface), PF_Err_NONE);
    const float lengths[] = {1, 1};
    clear_surface(kRed, surface);
    draw_line(0, 0, 9, 9, kRed, 1, surface);
    draw_dashed_line(0, 0, 9, 9, kRed, 1, {lengths, 2}, surface);
    draw_gradient_line(0, 0, 9, 9, &kRed, &kBlue, 1, surface);
    draw_rectangle(0, 0, 9, 9, &kRed, &kBlue, 1, surface);
    draw_ellipse(0, 0, 9, 9, kRed, 1, surface);
    draw_circle(0, 0, 9, kRed, 1, surface);
    draw_closed_curve(0, 0, 9, 9, 1, &kRed, &kBlue, 1, surface);
    draw_text(0, 9, "9", kRed, 9, TextAlign::kFar, surface);
    EXPECT_NE(surface.graphics->last_status, 0);
    EXPECT_EQ(release_surface(&host.in, &host.out, surface), PF_Err_NONE);
    EXPECT_TRUE(painted().empty());
    host.expect_nothing_held();
}

// The same drawing at every depth.
template <class P>
class DepthPixels : public testing::Test {};
using Depths = testing::Types<Pixel8, ks::Pixel16, ks::PixelF>;
TYPED_TEST_SUITE(DepthPixels, Depths);

TYPED_TEST(DepthPixels, rectangle_lands_in_the_right_colours_on_an_opaque_world) {
    using P = TypeParam;
    const stage::GdiplusRuntime gdiplus;
    constexpr auto kFull =
        static_cast<typename ks::PixelTraits<P>::Channel>(ks::PixelTraits<P>::kFullScale);
    DrawHost host;
    World<P> world(33, 21);
    world.fill(P{0, 0, kFull, 0});
    auto surface = describe_surface(host.in, ks::PixelTraits<P>::kCode, world.world, 1.0);
    ASSERT_EQ(create_surface(&host.in, &host.out, surface), PF_Err_NONE);
    draw_rectangle(4, 4, 20, 10, &kBlue, nullptr, 1, surface);
    ASSERT_EQ(release_surface(&host.in, &host.out, surface), PF_Err_NONE);
    const P inside = world.get(12, 9);
    EXPECT_EQ(inside.alpha, kFull);
    EXPECT_EQ(inside.red, 0);
    EXPECT_EQ(inside.green, 0);
    EXPECT_EQ(inside.blue, kFull);
    const P outside = world.get(30, 18);
    EXPECT_EQ(outside.alpha, kFull);
    EXPECT_EQ(outside.green, kFull);
    EXPECT_EQ(outside.blue, 0);
    EXPECT_TRUE(world.padding_untouched());
    host.expect_nothing_held();
}

}  // namespace
