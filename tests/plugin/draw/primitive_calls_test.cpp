// Each primitive's calls of GDI+, their order and arguments.
#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "plugin/draw/calls_fixture.h"

namespace {

using namespace draw_test;
using namespace ks::draw;

constexpr ks::Colour kOrange{1.0f, 1.0f, 0.5f, 0.0f};  // packs to FF007FFF

class PrimitiveCalls : public CallsTest {
  protected:
    PrimitiveCalls() {
        EXPECT_EQ(create(), PF_Err_NONE);
        take_log();
    }
    ~PrimitiveCalls() override {
        release();
        host.expect_nothing_held();
    }
};

TEST(PackColour, exchanges_red_and_blue) {
    EXPECT_EQ(pack_colour({1.0f, 1.0f, 0.0f, 0.0f}), 0xFF0000FFu);
    EXPECT_EQ(pack_colour({1.0f, 0.0f, 1.0f, 0.0f}), 0xFF00FF00u);
    EXPECT_EQ(pack_colour({1.0f, 0.0f, 0.0f, 1.0f}), 0xFFFF0000u);
    EXPECT_EQ(pack_colour({0.25f, 0.0f, 0.0f, 0.0f}), 0x3F000000u);
}

TEST(PackColour, truncates) {
    EXPECT_EQ(pack_colour({0.0f, 0.5f, 0.999f, 0.0f}), 0x0000FE7Fu);  // 127.5 and 254.7
}

TEST(PackColour, clamps_above_one_only) {
    EXPECT_EQ(pack_colour({7.0f, 1.5f, 1e30f, std::numeric_limits<float>::infinity()}),
              0xFFFFFFFFu);
}

TEST(PackColour, negative_channels_wrap) {
    // -25.5 truncates to -25, which is 231 modulo 256; -255 is 1.
    EXPECT_EQ(pack_colour({1.0f, -0.1f, -1.0f, 0.0f}), 0xFF0001E7u);
}

TEST(PackColour, values_beyond_any_integer_are_nothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pack_colour({nan, -1e30f, -std::numeric_limits<float>::infinity(), 0.0f}), 0u);
}

TEST_F(PrimitiveCalls, clear) {
    EXPECT_EQ(clear_surface(kOrange, surface), 0);
    EXPECT_EQ(take_log(), Log{"GdipGraphicsClear graphics2 #FF007FFF"});
}

TEST_F(PrimitiveCalls, line) {
    EXPECT_EQ(draw_line(1.5, 2, -3, 4.25, kOrange, 1.5f, surface), 0);
    EXPECT_EQ(take_log(), (Log{"GdipCreatePen1 #FF007FFF 1.5 0",
                               "GdipDrawLine graphics2 pen3 1.5 2 -3 4.25", "GdipDeletePen pen3"}));
}

TEST_F(PrimitiveCalls, dashed_line_sets_the_pattern_before_drawing) {
    const float lengths[] = {4, 2.5};
    EXPECT_EQ(draw_dashed_line(0, 1, 2, 3, kOrange, 1, {lengths, 2}, surface), 0);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreatePen1 #FF007FFF 1 0", "GdipSetPenDashArray pen3 4.0 2.5  2",
                   "GdipDrawLine graphics2 pen3 0 1 2 3", "GdipDeletePen pen3"}));
}

TEST_F(PrimitiveCalls, gradient_line_draws_the_segment_with_a_pen_of_the_brush) {
    EXPECT_EQ(draw_gradient_line(10, 20, 30, 60, &kOrange, &kBlue, 2, surface), 0);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreateLineBrush (9,19) (31,61) #FF007FFF #FFFF0000 0",
                   "GdipCreatePen2 brush3 2 0", "GdipDrawLine graphics2 pen4 10 20 30 60",
                   "GdipDeletePen pen4", "GdipDeleteBrush brush3"}));
}

TEST_F(PrimitiveCalls, gradient_runs_from_one_pixel_beyond_each_end_whatever_the_direction) {
    draw_gradient_line(30, 60, 10, 20, &kRed, &kBlue, 1, surface);
    EXPECT_EQ(take_log()[0], "GdipCreateLineBrush (31,61) (9,19) #FF0000FF #FFFF0000 0");
    draw_gradient_line(10, 60, 30, 20, &kRed, &kBlue, 1, surface);
    EXPECT_EQ(take_log()[0], "GdipCreateLineBrush (9,61) (31,19) #FF0000FF #FFFF0000 0");
}

TEST_F(PrimitiveCalls, gradient_of_an_upright_line_leans_by_its_two_extra_pixels) {
    // Equal coordinates count as running backwards.
    draw_gradient_line(10, 20, 10, 60, &kRed, &kBlue, 1, surface);
    EXPECT_EQ(take_log()[0], "GdipCreateLineBrush (11,19) (9,61) #FF0000FF #FFFF0000 0");
    draw_gradient_line(10, 20, 60, 20, &kRed, &kBlue, 1, surface);
    EXPECT_EQ(take_log()[0], "GdipCreateLineBrush (9,21) (61,19) #FF0000FF #FFFF0000 0");
}

TEST_F(PrimitiveCalls, missing_gradient_colours_are_all_zero) {
    draw_gradient_line(0, 0, 1, 1, nullptr, nullptr, 1, surface);
    EXPECT_EQ(take_log()[0], "GdipCreateLineBrush (-1,-1) (2,2) #00000000 #00000000 0");
}

TEST_F(PrimitiveCalls, rectangle_is_filled_before_it_is_outlined) {
    EXPECT_EQ(draw_rectangle(1, 2, 3.5, 4, &kOrange, &kWhite, 2, surface), 0);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreateSolidFill #FF007FFF", "GdipFillRectangle graphics2 brush3 1 2 3.5 4",
                   "GdipDeleteBrush brush3", "GdipCreatePen1 #FFFFFFFF 2 0",
                   "GdipDrawRectangle graphics2 pen4 1 2 3.5 4", "GdipDeletePen pen4"}));
}

TEST_F(PrimitiveCalls, rectangle_with_one_colour_only) {
    draw_rectangle(1, 2, 3, 4, &kOrange, nullptr, 2, surface);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreateSolidFill #FF007FFF", "GdipFillRectangle graphics2 brush3 1 2 3 4",
                   "GdipDeleteBrush brush3"}));
    draw_rectangle(1, 2, 3, 4, nullptr, &kOrange, 2, surface);
    EXPECT_EQ(take_log(), (Log{"GdipCreatePen1 #FF007FFF 2 0",
                               "GdipDrawRectangle graphics2 pen4 1 2 3 4", "GdipDeletePen pen4"}));
}

TEST_F(PrimitiveCalls, shapes_without_colours_are_not_drawn) {
    EXPECT_EQ(draw_rectangle(1, 2, 3, 4, nullptr, nullptr, 2, surface), 0);
    EXPECT_EQ(draw_closed_curve(1, 2, 3, 4, 0, nullptr, nullptr, 2, surface), 0);
    EXPECT_EQ(take_log(), Log{});
}

TEST_F(PrimitiveCalls, ellipse) {
    EXPECT_EQ(draw_ellipse(1, 2, 30, 40, kOrange, 2, surface), 0);
    EXPECT_EQ(take_log(), (Log{"GdipCreatePen1 #FF007FFF 2 0",
                               "GdipDrawEllipse graphics2 pen3 1 2 30 40", "GdipDeletePen pen3"}));
}

TEST_F(PrimitiveCalls, circle_is_the_ellipse_around_its_centre) {
    EXPECT_EQ(draw_circle(100, 50, 20, kOrange, 2, surface), 0);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreatePen1 #FF007FFF 2 0", "GdipDrawEllipse graphics2 pen3 80 30 40 40",
                   "GdipDeletePen pen3"}));
}

TEST_F(PrimitiveCalls, circle_is_round_in_full_resolution_square_pixels) {
    surface.den_x = 2;
    surface.den_y = 4;
    surface.pixel_aspect = 1.25;
    draw_circle(100, 50, 20, kOrange, 2, surface);  // radii 20 / 2.5 and 20 / 4
    EXPECT_EQ(take_log()[1], "GdipDrawEllipse graphics2 pen3 92 45 16 10");
}

TEST_F(PrimitiveCalls, closed_curve_is_outlined_before_it_is_filled) {
    EXPECT_EQ(draw_closed_curve(50, 40, 20, 10, 0.0f, &kOrange, &kWhite, 3, surface), 0);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreatePen1 #FFFFFFFF 3 0",
                   "GdipDrawClosedCurve2 graphics2 pen3 (40,40)(50,45)(60,40)(50,35) 1",
                   "GdipDeletePen pen3", "GdipCreateSolidFill #FF007FFF",
                   "GdipFillClosedCurve2 graphics2 brush4 (40,40)(50,45)(60,40)(50,35) 1 0",
                   "GdipDeleteBrush brush4"}));
}

TEST_F(PrimitiveCalls, closed_curve_turns_counter_clockwise) {
    constexpr auto kThirty = static_cast<float>(std::numbers::pi / 6);
    draw_closed_curve(0, 0, 20, 10, kThirty, &kOrange, nullptr, 1, surface);
    EXPECT_EQ(take_log(), (Log{"GdipCreateSolidFill #FF007FFF",
                               "GdipFillClosedCurve2 graphics2 brush3 (-8.66025,5)(2.5,4.33013)"
                               "(8.66025,-5)(-2.5,-4.33013) 1 0",
                               "GdipDeleteBrush brush3"}));
}

TEST_F(PrimitiveCalls, drawing_scale_changes_nothing) {
    surface.scale = 3.0;
    draw_circle(100, 50, 20, kOrange, 2, surface);
    EXPECT_EQ(take_log(),
              (Log{"GdipCreatePen1 #FF007FFF 2 0", "GdipDrawEllipse graphics2 pen3 80 30 40 40",
                   "GdipDeletePen pen3"}));
}

TEST_F(PrimitiveCalls, failures_are_noted_and_drawing_goes_on) {
    gdiplus().fails["GdipDrawLine"] = 5;
    EXPECT_EQ(draw_line(0, 0, 1, 1, kWhite, 1, surface), 0);
    EXPECT_EQ(surface.graphics->last_status, 5);
    EXPECT_EQ(draw_ellipse(0, 0, 1, 1, kWhite, 1, surface), 0);
    EXPECT_EQ(surface.graphics->last_status, 5) << "success does not clear it";
    gdiplus().fails["GdipDrawEllipse"] = 7;
    EXPECT_EQ(draw_ellipse(0, 0, 1, 1, kWhite, 1, surface), 0);
    EXPECT_EQ(surface.graphics->last_status, 7);
}

// Every function that a primitive calls on the way to its drawing can fail; its status is kept.
struct Primitive {
    const char *name;
    PF_Err (*draw)(DrawSurface &);
    std::vector<const char *> functions;
};

class PrimitiveFailure : public PrimitiveCalls, public testing::WithParamInterface<Primitive> {};

TEST_P(PrimitiveFailure, keeps_the_status_and_leaves_no_object) {
    for (const char *function : GetParam().functions) {
        surface.graphics->last_status = 0;
        gdiplus().fails = {{function, 3}};
        EXPECT_EQ(GetParam().draw(surface), 0);
        EXPECT_EQ(surface.graphics->last_status, 3) << function;
        EXPECT_EQ(gdiplus().alive.size(), 1u) << function;
    }
    gdiplus().fails.clear();
}
constexpr float kDashes[] = {1, 2};
INSTANTIATE_TEST_SUITE_P(
    Primitives, PrimitiveFailure,
    testing::Values(
        Primitive{
            "clear", [](DrawSurface &s) { return clear_surface(kRed, s); }, {"GdipGraphicsClear"}},
        Primitive{"line",
                  [](DrawSurface &s) { return draw_line(0, 0, 1, 1, kRed, 1, s); },
                  {"GdipCreatePen1", "GdipDrawLine"}},
        Primitive{"dashed_line",
                  [](DrawSurface &s) {
                      return draw_dashed_line(0, 0, 1, 1, kRed, 1, {kDashes, 2}, s);
                  },
                  {"GdipCreatePen1", "GdipSetPenDashArray", "GdipDrawLine"}},
        Primitive{
            "gradient_line",
            [](DrawSurface &s) { return draw_gradient_line(0, 0, 1, 1, &kRed, &kBlue, 1, s); },
            {"GdipCreateLineBrush", "GdipCreatePen2", "GdipDrawLine"}},
        Primitive{
            "rectangle",
            [](DrawSurface &s) { return draw_rectangle(0, 0, 1, 1, &kRed, &kBlue, 1, s); },
            {"GdipCreateSolidFill", "GdipFillRectangle", "GdipCreatePen1", "GdipDrawRectangle"}},
        Primitive{"ellipse",
                  [](DrawSurface &s) { return draw_ellipse(0, 0, 1, 1, kRed, 1, s); },
                  {"GdipCreatePen1", "GdipDrawEllipse"}},
        Primitive{"circle",
                  [](DrawSurface &s) { return draw_circle(0, 0, 1, kRed, 1, s); },
                  {"GdipCreatePen1", "GdipDrawEllipse"}},
        Primitive{
            "closed_curve",
            [](DrawSurface &s) { return draw_closed_curve(0, 0, 1, 1, 0, &kRed, &kBlue, 1, s); },
            {"GdipCreatePen1", "GdipDrawClosedCurve2", "GdipCreateSolidFill",
             "GdipFillClosedCurve2"}},
        Primitive{"text",
                  [](DrawSurface &s) {
                      s.den_x = 2;
                      return draw_text(0, 0, "7", kRed, 12, TextAlign::kFar, s);
                  },
                  {"GdipCreateSolidFill", "GdipCreateFontFamilyFromName", "GdipCreateFont",
                   "GdipCreateStringFormat", "GdipSetStringFormatAlign", "GdipScaleWorldTransform",
                   "GdipDrawString"}}),
    [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace
