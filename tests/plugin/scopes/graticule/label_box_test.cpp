#include "scopes/graticule/label_box.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "plugin/scopes/graticule/shape_list.h"

namespace ks {
namespace {

LayoutUnits units_of(double scale, std::uint32_t den_x, std::uint32_t den_y, double aspect) {
    FrameScale frame;
    frame.den_x = den_x;
    frame.den_y = den_y;
    frame.pixel_aspect = aspect;
    return layout_units(scale, frame);
}

ShapeList shapes_of(const LabelBox &box, int width = 200,
                    const LayoutUnits &units = units_of(1.0, 1, 1, 1.0)) {
    ShapeList shapes;
    add_label_box(shapes, box, width, units);
    return shapes;
}

LabelBox box_with(LegendMode mode) {
    LabelBox box;
    box.title = "Title";
    box.legend = mode;
    return box;
}

constexpr Colour kBlack{1.0f, 0.0f, 0.0f, 0.0f};
constexpr Colour kRed{1.0f, 1.0f, 0.0f, 0.0f};
constexpr Colour kLegendGreen{1.0f, 0.0f, 0.8f, 0.0f};
constexpr Colour kBlue{1.0f, 0.0f, 0.0f, 1.0f};
constexpr Colour kYellow{1.0f, 1.0f, 1.0f, 0.0f};
constexpr Colour kCyan{1.0f, 0.0f, 1.0f, 1.0f};
constexpr Colour kLumaGrey{1.0f, 0.6f, 0.6f, 0.6f};

void expect_chips(LegendMode mode, const std::array<Colour, 4> &colours) {
    const auto rectangles = all_of<RectangleShape>(shapes_of(box_with(mode)));
    ASSERT_EQ(rectangles.size(), 5u);  // the band and four chips
    for (std::size_t i = 0; i < colours.size(); ++i) {
        expect_colour(rectangles[i + 1].fill, colours[i]);
    }
}

TEST(LabelBoxLegend, RgbAndLuma) {
    expect_chips(LegendMode::kRgbAndLuma, {kRed, kLegendGreen, kBlue, kLumaGrey});
}

TEST(LabelBoxLegend, RgbLeavesABlackChip) {
    expect_chips(LegendMode::kRgb, {kRed, kLegendGreen, kBlue, kBlack});
}

TEST(LabelBoxLegend, LumaLeavesThreeBlackChips) {
    expect_chips(LegendMode::kLuma, {kBlack, kBlack, kBlack, kLumaGrey});
}

TEST(LabelBoxLegend, CbIsYellowAndCrIsCyan) {
    expect_chips(LegendMode::kYCbCr, {kLumaGrey, kYellow, kCyan, kBlack});
}

TEST(LabelBoxLegend, UnknownModesHaveFourBlackChips) {
    for (const int mode : {-3, 0, 6, 200}) {
        expect_chips(static_cast<LegendMode>(mode), {kBlack, kBlack, kBlack, kBlack});
    }
}

TEST(LabelBoxLegend, NoneHasNoChips) {
    EXPECT_EQ(all_of<RectangleShape>(shapes_of(box_with(LegendMode::kNone))).size(), 1u);
}

TEST(LabelBoxLegend, ChipsStandSideBySideAtTheRight) {
    const auto rectangles = all_of<RectangleShape>(shapes_of(box_with(LegendMode::kRgb)));
    const std::array<double, 4> lefts{170.0, 176.0, 182.0, 188.0};
    for (std::size_t i = 0; i < lefts.size(); ++i) {
        const RectangleShape &chip = rectangles[i + 1];
        EXPECT_EQ(chip.x, lefts[i]);
        EXPECT_EQ(chip.y, 4.0);
        EXPECT_EQ(chip.width, 6.0);
        EXPECT_EQ(chip.height, 12.0);
        ASSERT_TRUE(chip.stroke.has_value());
        expect_colour(*chip.stroke, kBlack);
        EXPECT_EQ(chip.pen_width, 1.0f);
    }
}

TEST(LabelBox, BandTitleWarningSubtitleChipsInThisOrder) {
    LabelBox box = box_with(LegendMode::kRgb);
    box.subtitle = "Line 7";
    box.over_range = true;
    const ShapeList shapes = shapes_of(box);
    ASSERT_EQ(shapes.size(), 8u);
    EXPECT_TRUE(std::holds_alternative<RectangleShape>(shapes[0]));
    EXPECT_EQ(std::get<TextShape>(shapes[1]).text, "Title");
    EXPECT_EQ(std::get<TextShape>(shapes[2]).text, "!");
    EXPECT_EQ(std::get<TextShape>(shapes[3]).text, "Line 7");
    for (std::size_t i = 4; i < 8; ++i) {
        EXPECT_TRUE(std::holds_alternative<RectangleShape>(shapes[i]));
    }
}

TEST(LabelBox, Band) {
    const auto band = std::get<RectangleShape>(shapes_of(box_with(LegendMode::kNone))[0]);
    EXPECT_EQ(band.x, 2.0);
    EXPECT_EQ(band.y, 2.0);
    EXPECT_EQ(band.width, 194.0);
    EXPECT_EQ(band.height, 16.0);
    expect_colour(band.fill, {1.0f, 0.2f, 0.2f, 0.2f});
    EXPECT_FALSE(band.stroke.has_value());
    EXPECT_EQ(band.pen_width, 0.0f);
}

TEST(LabelBox, TextsShareBaselineAndSize) {
    LabelBox box = box_with(LegendMode::kRgb);
    box.subtitle = "Line 7";
    box.over_range = true;
    const auto texts = all_of<TextShape>(shapes_of(box));
    ASSERT_EQ(texts.size(), 3u);
    for (const TextShape &text : texts) {
        EXPECT_EQ(text.y, 15.0);
        EXPECT_EQ(text.size, 13.0);
    }
    EXPECT_EQ(texts[0].x, 4.0);
    EXPECT_EQ(texts[0].anchor, TextAnchor::kNear);
    expect_colour(texts[0].colour, {1.0f, 0.5f, 0.5f, 0.5f});
    EXPECT_EQ(texts[1].x, 194.0 - 4.25 * 6.0);
    EXPECT_EQ(texts[1].anchor, TextAnchor::kFar);
    expect_colour(texts[1].colour, kRed);
    EXPECT_EQ(texts[2].x, 194.0 - 5.0 * 6.0);
    EXPECT_EQ(texts[2].anchor, TextAnchor::kFar);
    expect_colour(texts[2].colour, {1.0f, 0.5f, 0.5f, 0.5f});
}

TEST(LabelBox, WithoutLegendTheTextsReachTheRightEdge) {
    LabelBox box = box_with(LegendMode::kNone);
    box.subtitle = "Line 7";
    box.over_range = true;
    const auto texts = all_of<TextShape>(shapes_of(box));
    EXPECT_EQ(texts[1].x, 194.0);
    EXPECT_EQ(texts[2].x, 194.0);
}

TEST(LabelBox, EmptyTextsAreNotDrawn) {
    EXPECT_EQ(shapes_of(LabelBox{}).size(), 1u);
}

TEST(LabelBox, LengthsFollowScaleResolutionAndAspectUnrounded) {
    const LayoutUnits units = units_of(1.5, 2, 4, 10.0 / 11.0);
    const double ux = 1.0 / (2.0 * (10.0 / 11.0));
    const double uy = 0.25;
    LabelBox box = box_with(LegendMode::kLuma);
    box.over_range = true;
    const ShapeList shapes = shapes_of(box, 110, units);
    const auto rectangles = all_of<RectangleShape>(shapes);
    const auto texts = all_of<TextShape>(shapes);
    const double right = 110.0 - 6.0 * ux;
    const double chip = 9.0 * ux;
    EXPECT_DOUBLE_EQ(rectangles[0].x, 2.0 * ux);
    EXPECT_DOUBLE_EQ(rectangles[0].y, 2.0 * uy);
    EXPECT_DOUBLE_EQ(rectangles[0].width, right);
    EXPECT_DOUBLE_EQ(rectangles[0].height, 24.0 * uy);
    EXPECT_DOUBLE_EQ(rectangles[1].x, right - 4.0 * chip);
    EXPECT_DOUBLE_EQ(rectangles[4].x, right - chip);
    EXPECT_DOUBLE_EQ(rectangles[1].width, chip);
    EXPECT_DOUBLE_EQ(rectangles[1].height, 24.0 * uy - 4.0 * uy);
    EXPECT_DOUBLE_EQ(texts[0].x, 6.0 * ux);
    EXPECT_DOUBLE_EQ(texts[0].size, 19.5 * uy);
    EXPECT_DOUBLE_EQ(texts[0].y, 19.5 * uy + 2.0 * uy);
    EXPECT_DOUBLE_EQ(texts[1].x, right - 4.25 * chip);
}

}  // namespace
}  // namespace ks
