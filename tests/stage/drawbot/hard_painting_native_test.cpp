// Lists that make no sense: nothing crashes, and the rest is painted.
#include <cmath>
#include <limits>

#include "support/stage/painted.h"

namespace stage_test {
namespace {

using stage::DrawPrimitive;
using testing::ElementsAre;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kHuge = std::numeric_limits<float>::max();

const DrawPrimitive kMark = painted_rect({10, 5, 4, 4}, kRedColor);

/// Everything in one list for each number: rectangles, paths, pens, images, text, clips.
std::vector<DrawPrimitive> everything_with(float number) {
    std::vector<DrawPrimitive> list;
    DrawPrimitive item = painted_rect({number, number, number, number}, {number, 0, 0, number});
    item.width = number;
    item.dashes = {number, number};
    item.path = polygon({{number, 0}, {0, number}, {number, number}});
    item.path.push_back({stage::PathStep::Kind::kCurve, {{{number, 0}, {0, number}, {1, 1}}}});
    item.image = {1, 1, {kRed}, number};
    item.text = "text";
    for (const Kind kind : {Kind::kPaintRect, Kind::kFillPath, Kind::kStrokePath, Kind::kThemeFill,
                            Kind::kThemeStroke, Kind::kThemeVertex, Kind::kImage, Kind::kText}) {
        item.kind = kind;
        list.push_back(item);
    }
    return list;
}

TEST(HardPainting, an_empty_list_paints_nothing) {
    EXPECT_EQ(Painted({}).painted(), 0);
}

TEST(HardPainting, empty_paths_images_and_texts_paint_nothing) {
    std::vector<DrawPrimitive> list;
    for (const Kind kind : {Kind::kPaintRect, Kind::kFillPath, Kind::kStrokePath, Kind::kThemeFill,
                            Kind::kThemeStroke, Kind::kImage, Kind::kText, Kind::kPopState}) {
        list.push_back(primitive(kind));
    }
    EXPECT_EQ(Painted(list).painted(), 0);
}

TEST(HardPainting, what_is_no_number_is_left_out_and_spoils_nothing) {
    for (const float number : {kNan, INFINITY, -INFINITY}) {
        std::vector<DrawPrimitive> list = everything_with(number);
        list.push_back(kMark);
        EXPECT_EQ(Painted(list).painted(), 16) << number;
    }
}

TEST(HardPainting, huge_numbers_are_survived) {
    for (const float number :
         {kHuge, -kHuge, 1e9f, -1e9f, 3e4f, std::numeric_limits<float>::min()}) {
        std::vector<DrawPrimitive> list = everything_with(number);
        list.push_back(painted_rect({10, 5, 4, 4}, kGreenColor));
        EXPECT_EQ(Painted(list).at(11, 6), kGreen) << number;
    }
}

TEST(HardPainting, a_rectangle_far_beyond_the_window_still_covers_it) {
    EXPECT_EQ(Painted({painted_rect({-1e9f, -1e9f, 2e9f, 2e9f}, kRedColor)}).painted(),
              Painted::kWidth * Painted::kHeight);
}

TEST(HardPainting, transforms_that_flatten_or_are_no_numbers_draw_no_lines_and_end_with_pop) {
    DrawPrimitive stroke = primitive(Kind::kStrokePath);
    stroke.path = line({0, 0}, {30, 30});
    for (const float number : {0.f, kNan, kHuge}) {
        const Painted picture({primitive(Kind::kPushState),
                               transform(number, number, number, number, number, number), stroke,
                               primitive(Kind::kPopState), kMark});
        EXPECT_EQ(picture.painted(), 16) << number;
    }
}

TEST(HardPainting, transforms_multiplied_beyond_all_bounds_are_survived) {
    std::vector<DrawPrimitive> list{primitive(Kind::kPushState)};
    for (int i = 0; i < 20; ++i) list.push_back(transform(kHuge, 0, 0, kHuge, kHuge, kHuge));
    for (const DrawPrimitive &item : everything_with(5)) list.push_back(item);
    list.push_back(clip({0, 0, 10, 10}));
    list.push_back(primitive(Kind::kPopState));
    list.push_back(kMark);
    EXPECT_EQ(Painted(list).at(11, 6), kRed);
}

TEST(HardPainting, pops_without_pushes_are_nothing) {
    EXPECT_EQ(Painted({primitive(Kind::kPopState), primitive(Kind::kPopState), kMark}).painted(),
              16);
}

TEST(HardPainting, a_clip_that_is_no_number_is_no_clip_and_an_empty_one_hides_all) {
    EXPECT_EQ(Painted({clip({kNan, 0, 1, 1}), kMark}).painted(), 16);
    EXPECT_EQ(Painted({clip({0, 0, 0, 0}), kMark}).painted(), 0);
}

TEST(HardPainting, dashes_too_short_to_see_are_a_solid_line) {
    DrawPrimitive stroke = primitive(Kind::kStrokePath);
    stroke.path = line({0, 15}, {1e6f, 15});
    stroke.width = 2;
    stroke.dashes = {1e-30f, 1e-30f};
    EXPECT_THAT(Painted({stroke}).bounds(), ElementsAre(0, 14, 40, 16));
}

TEST(HardPainting, an_image_without_all_its_pixels_is_left_out) {
    DrawPrimitive image = primitive(Kind::kImage);
    image.image = {100, 100, {kRed}, 1};
    EXPECT_EQ(Painted({image, kMark}).painted(), 16);
}

TEST(HardPainting, text_that_is_no_utf8_is_survived) {
    DrawPrimitive text = primitive(Kind::kText);
    text.text = "\xFF\xC0\x80 ok";
    text.width = 12;
    EXPECT_EQ(Painted({text, kMark}).at(11, 6), kRed);
}

TEST(HardPainting, windows_without_pixels_are_empty) {
    const stage::DrawList list{{kMark}};
    EXPECT_TRUE(stage::overlay_picture(0, 10, list, kTestTheme).empty());
    EXPECT_TRUE(stage::overlay_picture(10, -3, list, kTestTheme).empty());
}

TEST(HardPainting, windows_beyond_what_can_be_painted_on_stay_clear) {
    const stage::DrawList list{{kMark}};
    const auto pixels = stage::overlay_picture(40000, 10, list, kTestTheme);
    ASSERT_EQ(pixels.size(), 400000u);
    EXPECT_EQ(pixels[5u * 40000u + 11u], kClear);
}

}  // namespace
}  // namespace stage_test
