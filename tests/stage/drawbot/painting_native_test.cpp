// Pixels of fills, strokes, images and text, and of the state around them.
#include "support/stage/painted.h"

namespace stage_test {
namespace {

using stage::DrawPrimitive;
using testing::ElementsAre;

DrawPrimitive filled(stage::DrawPath path, bool even_odd = false) {
    DrawPrimitive result = primitive(Kind::kFillPath);
    result.path = std::move(path);
    result.color = kGreenColor;
    result.even_odd = even_odd;
    return result;
}

DrawPrimitive stroked(stage::DrawPath path, float width) {
    DrawPrimitive result = primitive(Kind::kStrokePath);
    result.path = std::move(path);
    result.color = kRedColor;
    result.width = width;
    return result;
}

TEST(Painting, a_rectangle_covers_its_pixels_and_no_other) {
    const Painted picture({painted_rect({10, 5, 20, 8}, kRedColor)});
    EXPECT_THAT(picture.bounds(), ElementsAre(10, 5, 30, 13));
    EXPECT_EQ(picture.painted(), 20 * 8);
    EXPECT_EQ(picture.at(10, 5), kRed);
    EXPECT_EQ(picture.at(29, 12), kRed);
}

TEST(Painting, alpha_is_premultiplied_and_lays_over_what_is_there) {
    const Painted alone({painted_rect({0, 0, 5, 5}, {1, 0, 0, 0.5f})});
    EXPECT_EQ(alone.at(2, 2), 0x80800000u);
    const Painted over(
        {painted_rect({0, 0, 5, 5}, kGreenColor), painted_rect({0, 0, 5, 5}, {1, 0, 0, 0.5f})});
    EXPECT_EQ(over.at(2, 2) >> 24, 0xFFu);
    EXPECT_NEAR(static_cast<double>(over.at(2, 2) >> 16 & 0xFF), 128, 1);
    EXPECT_NEAR(static_cast<double>(over.at(2, 2) >> 8 & 0xFF), 127, 1);
}

TEST(Painting, a_fill_covers_the_inside_alone) {
    const Painted picture({filled(polygon({{10, 10}, {20, 10}, {10, 20}}))});
    EXPECT_EQ(picture.at(11, 11), kGreen);
    EXPECT_EQ(picture.at(17, 11), kGreen);
    EXPECT_EQ(picture.at(18, 18), kClear);
    EXPECT_EQ(picture.at(9, 11), kClear);
}

TEST(Painting, the_two_fill_rules_differ_where_figures_lie_over_each_other) {
    stage::DrawPath both = polygon({{5, 5}, {25, 5}, {25, 25}, {5, 25}});
    for (const stage::PathStep &step : polygon({{10, 10}, {20, 10}, {20, 20}, {10, 20}})) {
        both.push_back(step);
    }
    EXPECT_EQ(Painted({filled(both, false)}).at(15, 15), kGreen);
    EXPECT_EQ(Painted({filled(both, true)}).at(15, 15), kClear);
    EXPECT_EQ(Painted({filled(both, true)}).at(7, 15), kGreen);
}

TEST(Painting, curves_bulge) {
    stage::DrawPath path{{stage::PathStep::Kind::kMove, {{{5, 15}}}},
                         {stage::PathStep::Kind::kCurve, {{{5, 1}, {25, 1}, {25, 15}}}},
                         {stage::PathStep::Kind::kClose, {}}};
    const Painted picture({filled(path)});
    EXPECT_EQ(picture.at(15, 6), kGreen);
    EXPECT_EQ(picture.at(6, 5), kClear);
    EXPECT_EQ(picture.at(15, 3), kClear);
}

TEST(Painting, a_stroke_is_as_wide_as_its_pen) {
    for (const float width : {2.f, 4.f, 8.f}) {
        const Painted picture({stroked(line({5, 15}, {30, 15}), width)});
        const int half = static_cast<int>(width) / 2;
        EXPECT_THAT(picture.bounds(), ElementsAre(5, 15 - half, 30, 15 + half)) << width;
    }
}

TEST(Painting, dashes_leave_gaps) {
    DrawPrimitive dashed = stroked(line({0, 15}, {40, 15}), 2);
    dashed.dashes = {6, 4};
    const Painted picture({dashed});
    EXPECT_EQ(picture.at(3, 15), kRed);
    EXPECT_EQ(picture.at(8, 15), kClear);
    EXPECT_EQ(picture.at(12, 15), kRed);
    EXPECT_EQ(picture.at(18, 15), kClear);
}

TEST(Painting, antialiasing_is_off_until_asked_for) {
    const DrawPrimitive slanted = filled(polygon({{5, 5}, {30, 5}, {5, 12}}));
    const auto grades = [](const Painted &picture) {
        int count = 0;
        for (int y = 0; y < Painted::kHeight; ++y) {
            for (int x = 0; x < Painted::kWidth; ++x) {
                const std::uint32_t alpha = picture.at(x, y) >> 24;
                count += alpha != 0 && alpha != 0xFF;
            }
        }
        return count;
    };
    DrawPrimitive on = primitive(Kind::kAntiAlias), off = on;
    off.on = false;
    EXPECT_EQ(grades(Painted({slanted})), 0);
    EXPECT_GT(grades(Painted({on, slanted})), 10);
    EXPECT_EQ(grades(Painted({on, off, slanted})), 0);
}

TEST(Painting, a_clip_limits_and_clips_meet) {
    const DrawPrimitive all = painted_rect({0, 0, 40, 30}, kRedColor);
    EXPECT_THAT(Painted({clip({5, 6, 10, 10}), all}).bounds(), ElementsAre(5, 6, 15, 16));
    EXPECT_THAT(Painted({clip({5, 6, 10, 10}), clip({10, 0, 30, 10}), all}).bounds(),
                ElementsAre(10, 6, 15, 10));
}

TEST(Painting, push_and_pop_keep_clip_transform_and_antialiasing) {
    const DrawPrimitive all = painted_rect({0, 0, 40, 30}, kRedColor);
    const Painted picture({primitive(Kind::kPushState), clip({0, 0, 1, 1}),
                           transform(1, 0, 0, 1, 20, 0), primitive(Kind::kPopState), all});
    EXPECT_THAT(picture.bounds(), ElementsAre(0, 0, 40, 30));
}

TEST(Painting, a_transform_moves_scales_and_comes_in_front_of_the_one_before) {
    const DrawPrimitive square = painted_rect({0, 0, 4, 4}, kRedColor);
    EXPECT_THAT(Painted({transform(1, 0, 0, 1, 10, 5), square}).bounds(),
                ElementsAre(10, 5, 14, 9));
    EXPECT_THAT(
        Painted({transform(1, 0, 0, 1, 10, 5), transform(2, 0, 0, 3, 0, 0), square}).bounds(),
        ElementsAre(10, 5, 18, 17));
    EXPECT_THAT(
        Painted({transform(0, 1, -1, 0, 20, 5), painted_rect({0, 0, 8, 3}, kRedColor)}).bounds(),
        ElementsAre(17, 5, 20, 13));  // a quarter turn clockwise
}

TEST(Painting, a_clip_is_taken_in_the_transform_of_its_time) {
    const DrawPrimitive all = painted_rect({-40, -30, 80, 60}, kRedColor);
    EXPECT_THAT(Painted({transform(2, 0, 0, 2, 0, 0), clip({2, 2, 5, 5}), all}).bounds(),
                ElementsAre(4, 4, 14, 14));
    EXPECT_THAT(Painted({clip({2, 2, 5, 5}), transform(2, 0, 0, 2, 0, 0), all}).bounds(),
                ElementsAre(2, 2, 7, 7));
}

TEST(Painting, a_pen_follows_the_transform) {
    const Painted picture({transform(2, 0, 0, 2, 0, 0), stroked(line({2, 7}, {15, 7}), 2)});
    EXPECT_THAT(picture.bounds(), ElementsAre(4, 12, 30, 16));
}

DrawPrimitive image_at(float x, float y, float alpha = 1) {
    DrawPrimitive result = primitive(Kind::kImage);
    result.image = {2, 2, {kRed, kGreen, kBlue, 0x80FF0000}, 1};
    result.rect = {x, y, 0, 0};
    result.color.alpha = alpha;
    return result;
}

TEST(Painting, an_image_is_placed_pixel_by_pixel) {
    const Painted picture({image_at(10, 5)});
    EXPECT_EQ(picture.painted(), 4);
    EXPECT_EQ(picture.at(10, 5), kRed);
    EXPECT_EQ(picture.at(11, 5), kGreen);
    EXPECT_EQ(picture.at(10, 6), kBlue);
    EXPECT_EQ(picture.at(11, 6), 0x80800000u);
}

TEST(Painting, an_image_takes_an_alpha_of_its_own) {
    EXPECT_EQ(Painted({image_at(10, 5, 0.5f)}).at(10, 5) >> 24, 0x80u);
    EXPECT_EQ(Painted({image_at(10, 5, 0)}).painted(), 0);
}

TEST(Painting, an_image_of_scale_factor_two_is_drawn_at_half_its_size) {
    DrawPrimitive image = primitive(Kind::kImage);
    image.image = {8, 4, std::vector<std::uint32_t>(32, kRed), 2};
    image.rect = {10, 5, 0, 0};
    EXPECT_THAT(Painted({image}).bounds(), ElementsAre(10, 5, 14, 7));
}

TEST(Painting, interpolation_smooths_enlarged_images) {
    const DrawPrimitive scale = transform(10, 0, 0, 10, 0, 0);
    const std::uint32_t hard = Painted({scale, image_at(0, 0)}).at(9, 2);
    const std::uint32_t soft =
        Painted({primitive(Kind::kInterpolation), scale, image_at(0, 0)}).at(9, 2);
    EXPECT_EQ(hard, kRed);
    EXPECT_NE(soft, kRed);
}

DrawPrimitive text_at(float x, float y, const char *text, int alignment) {
    DrawPrimitive result = primitive(Kind::kText);
    result.text = text;
    result.rect = {x, y, 0, 0};
    result.width = 12;
    result.color = kRedColor;
    result.alignment = alignment;
    return result;
}

TEST(Painting, text_stands_on_its_base_line) {
    const std::vector<int> bounds = Painted({text_at(5, 20, "HH", 0)}).bounds();
    EXPECT_GE(bounds[0], 4);
    EXPECT_LE(bounds[3], 21);
    EXPECT_GE(bounds[3], 19);
    EXPECT_NEAR(bounds[1], 20 - 9, 2);
}

TEST(Painting, text_is_aligned_to_its_origin) {
    EXPECT_GE(Painted({text_at(20, 20, "HH", 0)}).bounds()[0], 19);
    EXPECT_LE(Painted({text_at(20, 20, "HH", 2)}).bounds()[2], 21);
    const std::vector<int> centred = Painted({text_at(20, 20, "HH", 1)}).bounds();
    EXPECT_NEAR(centred[0] + centred[2], 40, 3);
}

TEST(Painting, truncated_text_keeps_to_its_width) {
    for (const int truncation : {1, 2, 3}) {
        DrawPrimitive text = text_at(2, 20, "HHHHHHHHHHHH", 0);
        text.truncation = truncation;
        text.truncation_width = 30;
        const std::vector<int> bounds = Painted({text}).bounds();
        EXPECT_LE(bounds[2], 33) << truncation;
        EXPECT_GE(bounds[2], 15) << truncation;
    }
}

}  // namespace
}  // namespace stage_test
