#include "scopes/graticule/waveform_graticule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "model/scope_kind.h"
#include "plugin/scopes/graticule/shape_list.h"

namespace ks {
namespace {

using Texts = std::vector<std::string>;

// A panel of 200 x 130 at full resolution: area from x 30 to 192, y 26 to 122, 96 pixels high.
constexpr IntSize kPanel{200, 130};

LayoutUnits full_resolution(double scale = 1.0) {
    return layout_units(scale, FrameScale{});
}

WaveformScale full_scale() {
    WaveformScale scale;
    scale.panel = kPanel;
    return scale;
}

WaveformScale extended(double percent, ScaleUnit unit = ScaleUnit::kIre) {
    WaveformScale scale = full_scale();
    scale.unit = unit;
    scale.format = kFormatF;
    scale.value_scale = 100.0 / percent;
    return scale;
}

ShapeList shapes_of(const WaveformScale &scale, const LayoutUnits &units = full_resolution()) {
    ShapeList shapes;
    add_waveform_scale(shapes, scale, units);
    return shapes;
}

std::vector<double> rows_of(const ShapeList &shapes) {
    std::vector<double> rows;
    for (const LineShape &line : all_of<LineShape>(shapes)) rows.push_back(line.y1);
    return rows;
}

Texts texts_of(const ShapeList &shapes) {
    Texts texts;
    for (const TextShape &text : all_of<TextShape>(shapes)) texts.push_back(text.text);
    return texts;
}

TEST(WaveformScaleLines, FiveLinesAQuarterApart) {
    const ShapeList shapes = shapes_of(full_scale());
    EXPECT_EQ(rows_of(shapes), (std::vector<double>{122, 98, 74, 50, 26}));
    EXPECT_EQ(texts_of(shapes), (Texts{"0", "25", "50", "75", "100"}));
}

TEST(WaveformScaleLines, RunFromBesideTheAreaToTheRightMargin) {
    for (const LineShape &line : all_of<LineShape>(shapes_of(full_scale()))) {
        EXPECT_EQ(line.x1, 26.0);
        EXPECT_EQ(line.x2, 192.0);
        EXPECT_EQ(line.y1, line.y2);
        EXPECT_EQ(line.width, 1.0f);
        EXPECT_FALSE(line.dashed);
    }
}

TEST(WaveformScaleLines, EvenLinesAreGreyOddOnesDark) {
    const auto lines = all_of<LineShape>(shapes_of(full_scale()));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const float grey = i % 2 == 0 ? 0.4f : 0.25f;
        expect_colour(lines[i].colour, {1.0f, grey, grey, grey});
    }
}

TEST(WaveformScaleLines, LabelsEndLeftOfTheirLineFourPixelsBeneath) {
    const auto labels = all_of<TextShape>(shapes_of(full_scale()));
    const std::vector<double> rows{122, 98, 74, 50, 26};
    ASSERT_EQ(labels.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(labels[i].x, 24.0);
        EXPECT_EQ(labels[i].y, rows[i] + 4.0);
        EXPECT_EQ(labels[i].size, 12.0);
        EXPECT_EQ(labels[i].anchor, TextAnchor::kFar);
        expect_colour(labels[i].colour, kWhite);
    }
}

TEST(WaveformScaleLines, NoTextStandsBeforeALine) {
    WaveformScale scale = extended(200.0);
    scale.guides = WaveformGuides::kStudioRange;
    bool text_met = false;
    for (const Shape &shape : shapes_of(scale)) {
        if (std::holds_alternative<TextShape>(shape)) text_met = true;
        EXPECT_FALSE(text_met && std::holds_alternative<LineShape>(shape));
    }
    EXPECT_TRUE(text_met);
}

TEST(WaveformScaleLines, LinesLieOnTheRowsWhereTracesPlotTheSameValue) {
    WaveformScale scale = full_scale();
    scale.panel.height = 133;  // a span of 99: quarters at fractions of a row
    const auto rows = rows_of(shapes_of(scale));
    ASSERT_EQ(rows.size(), 5u);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i], std::trunc(125.0 - 0.25 * static_cast<double>(i) * 99.0));
    }
}

TEST(WaveformScaleLines, HalfResolutionHalvesLengthsButNotTheFourPixels) {
    FrameScale half;
    half.den_x = half.den_y = 2;
    half.horizontal = 0.5;
    WaveformScale scale = full_scale();
    scale.panel = {100, 65};
    const ShapeList shapes = shapes_of(scale, layout_units(1.0, half));
    const auto lines = all_of<LineShape>(shapes);
    const auto labels = all_of<TextShape>(shapes);
    EXPECT_EQ(rows_of(shapes), (std::vector<double>{61, 49, 37, 25, 13}));
    EXPECT_EQ(lines[0].x1, 13.0);
    EXPECT_EQ(lines[0].x2, 96.0);
    EXPECT_EQ(labels[0].x, 12.0);
    EXPECT_EQ(labels[0].y, 65.0);
    EXPECT_EQ(labels[0].size, 6.0);
}

TEST(WaveformScaleLines, WidePixelsShortenAcrossOnly) {
    FrameScale wide;
    wide.pixel_aspect = 2.0;
    wide.horizontal = 0.5;
    WaveformScale scale = full_scale();
    scale.panel = {100, 130};
    const ShapeList shapes = shapes_of(scale, layout_units(1.0, wide));
    EXPECT_EQ(rows_of(shapes), (std::vector<double>{122, 98, 74, 50, 26}));
    EXPECT_EQ(all_of<LineShape>(shapes)[0].x1, 13.0);
    EXPECT_EQ(all_of<TextShape>(shapes)[0].x, 12.0);
    EXPECT_EQ(all_of<TextShape>(shapes)[0].size, 12.0);
}

TEST(WaveformScaleLines, LabelsGrowWithTheLabelScale) {
    WaveformScale scale = full_scale();
    scale.panel = {600, 400};
    const auto labels = all_of<TextShape>(shapes_of(scale, full_resolution(3.0)));
    EXPECT_EQ(labels[0].x, 72.0);
    EXPECT_EQ(labels[0].size, 36.0);
    EXPECT_EQ(labels[0].y, 380.0);
}

TEST(WaveformScaleLines, AParadeOfYCbCrHasItsScaleOnTheFirstColumnOnly) {
    WaveformScale scale = full_scale();
    scale.panel.width = 201;  // 163 / 3, the rest is dropped
    scale.first_column_only = true;
    EXPECT_EQ(all_of<LineShape>(shapes_of(scale))[0].x2, 84.0);
}

TEST(WaveformScaleLines, APanelWithoutAreaIsHarmless) {
    for (const IntSize panel : {IntSize{0, 0}, IntSize{1, 1}, IntSize{40, 30}}) {
        WaveformScale scale = extended(200.0);
        scale.panel = panel;
        scale.guides = WaveformGuides::kStudioRange;
        for (const LineShape &line : all_of<LineShape>(shapes_of(scale))) {
            EXPECT_TRUE(std::isfinite(line.x2) && std::isfinite(line.y1));
        }
    }
}

struct ExtendedCase {
    double percent;
    std::vector<double> rows;
    Texts ire;
    Texts values;
};

class ExtendedScale : public testing::TestWithParam<ExtendedCase> {};

TEST_P(ExtendedScale, LinesAndLabels) {
    const ExtendedCase &c = GetParam();
    EXPECT_EQ(rows_of(shapes_of(extended(c.percent))), c.rows);
    EXPECT_EQ(texts_of(shapes_of(extended(c.percent))), c.ire);
    EXPECT_EQ(texts_of(shapes_of(extended(c.percent, ScaleUnit::kBitDepth))), c.values);
}

INSTANTIATE_TEST_SUITE_P(
    Percents, ExtendedScale,
    testing::Values(ExtendedCase{102,
                                 {122, 98, 74, 51, 27},
                                 {"0", "25", "50", "75", "100"},
                                 {"0", "0.25", "0.5", "0.75", "1"}},
                    ExtendedCase{103,
                                 {122, 98, 75, 52, 28, 26},
                                 {"0", "25", "50", "75", "100", "103"},
                                 {"0", "0.25", "0.5", "0.75", "1", "1.03"}},
                    ExtendedCase{125,
                                 {122, 102, 83, 64, 45, 26},
                                 {"0", "25", "50", "75", "100", "125"},
                                 {"0", "0.25", "0.5", "0.75", "1", "1.25"}},
                    ExtendedCase{150,
                                 {122, 106, 90, 74, 58, 42, 26},
                                 {"0", "25", "50", "75", "100", "125", "150"},
                                 {"0", "0.25", "0.5", "0.75", "1", "1.25", "1.5"}},
                    ExtendedCase{200,
                                 {122, 110, 98, 86, 74, 62, 50, 38, 26},
                                 {"0", "25", "50", "75", "100", "125", "150", "175", "200"},
                                 {"0", "0.25", "0.5", "0.75", "1", "1.25", "1.5", "1.75", "2"}}),
    [](const auto &param) { return std::to_string(static_cast<int>(param.param.percent)); });

TEST(ExtendedScaleLines, TheTopLineIsGrey) {
    expect_colour(all_of<LineShape>(shapes_of(extended(150.0))).back().colour, kGrey);
}

TEST(ExtendedScaleLines, AboveFullScaleALineNeedsEightAndAHalfPixelsToTheTop) {
    WaveformScale scale = full_scale();
    scale.value_scale = 0.75;
    scale.panel.height = 170;  // line 5 lies at 34.5, exactly 8.5 beneath the top line at 26
    EXPECT_EQ(rows_of(shapes_of(scale)), (std::vector<double>{162, 136, 111, 85, 60, 34, 26}));
    scale.panel.height = 169;  // at 34.4375: too close
    EXPECT_EQ(rows_of(shapes_of(scale)).size(), 6u);
}

TEST(ExtendedScaleLines, UpToFullScaleNoLineIsLeftOut) {
    const auto rows = rows_of(shapes_of(extended(103.0)));
    EXPECT_EQ(rows[4], 28.0);  // 2.8 pixels beneath the top line
}

TEST(ExtendedScaleLines, TheTopLabelMovesToTheLinesEndWhereItWouldHitTheNextOne) {
    const TextShape near = all_of<TextShape>(shapes_of(extended(103.0))).back();
    EXPECT_EQ(near.x, 192.0);
    EXPECT_NEAR(near.y, 26.0 + 0.14 * 12.0, 1e-9);
    const TextShape far = all_of<TextShape>(shapes_of(extended(110.0))).back();
    EXPECT_EQ(far.text, "110");
    EXPECT_NE(far.x, 24.0);  // 8 pixels apart, digits are 8.6 high
    const TextShape apart = all_of<TextShape>(shapes_of(extended(112.0))).back();
    EXPECT_EQ(apart.x, 24.0);
    EXPECT_EQ(apart.y, 30.0);
}

TEST(ExtendedScaleLines, EveryWholePercentageIsReadBackExactly) {
    for (int percent = 100; percent <= 200; ++percent) {
        EXPECT_EQ(top_percent(100.0 / percent), percent);
    }
}

TEST(ExtendedScaleLines, FractionsOfAPercentAreCutOff) {
    EXPECT_EQ(top_percent(100.0 / 102.99), 102);
    EXPECT_EQ(top_label(ScaleUnit::kIre, 100.0 / 103.7), "103");
}

TEST(ExtendedScaleLines, FloatLabelsHaveTwoDecimalsWithoutTrailingZeros) {
    EXPECT_EQ(top_label(ScaleUnit::kBitDepth, 0.5), "2");
    EXPECT_EQ(top_label(ScaleUnit::kBitDepth, 100.0 / 110.0), "1.1");
    EXPECT_EQ(top_label(ScaleUnit::kBitDepth, 100.0 / 103.0), "1.03");
    EXPECT_EQ(top_label(ScaleUnit::kBitDepth, 1.0), "1");
}

TEST(ScaleLabels, FollowTheProjectsDepth) {
    WaveformScale scale = full_scale();
    scale.unit = ScaleUnit::kBitDepth;
    scale.format = kFormat8;
    EXPECT_EQ(texts_of(shapes_of(scale)), (Texts{"0", "64", "128", "192", "255"}));
    scale.format = kFormat16;
    EXPECT_EQ(texts_of(shapes_of(scale)), (Texts{"0", "8192", "16384", "24576", "32768"}));
    scale.format = kFormatF;
    EXPECT_EQ(texts_of(shapes_of(scale)), (Texts{"0", "0.25", "0.5", "0.75", "1"}));
}

TEST(ScaleLabels, LongNumbersAreCentredSoThatNoDigitIsCutOff) {
    WaveformScale scale = full_scale();
    scale.unit = ScaleUnit::kBitDepth;
    scale.format = kFormat16;
    for (const TextShape &label : all_of<TextShape>(shapes_of(scale))) {
        EXPECT_EQ(label.anchor, label.text == "0" ? TextAnchor::kFar : TextAnchor::kCentre);
        EXPECT_EQ(label.x, 24.0);
    }
}

std::vector<LineShape> guide_lines(WaveformGuides guides, double value_scale = 1.0) {
    WaveformScale scale = full_scale();
    scale.guides = guides;
    scale.value_scale = value_scale;
    std::vector<LineShape> dashed;
    for (const LineShape &line : all_of<LineShape>(shapes_of(scale))) {
        if (line.dashed) dashed.push_back(line);
    }
    return dashed;
}

TEST(GuideLines, OffDrawsNone) {
    EXPECT_TRUE(guide_lines(WaveformGuides::kOff).empty());
    EXPECT_TRUE(guide_lines(static_cast<WaveformGuides>(0)).empty());
    EXPECT_TRUE(guide_lines(static_cast<WaveformGuides>(9)).empty());
}

TEST(GuideLines, SetupLevel) {
    const auto lines = guide_lines(WaveformGuides::kSetup);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].y1, std::trunc(122.0 - 96.0 * 0.075));
    EXPECT_EQ(lines[0].y2, lines[0].y1);
    EXPECT_EQ(lines[0].x1, 26.0);
    EXPECT_EQ(lines[0].x2, 192.0);
    EXPECT_EQ(lines[0].width, 1.0f);
}

TEST(GuideLines, StudioRangeTakes16Of256But235Of255) {
    WaveformScale scale = full_scale();
    scale.panel.height = 10034;  // a span of 10000
    scale.guides = WaveformGuides::kStudioRange;
    const auto lines = all_of<LineShape>(shapes_of(scale));
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[5].y1, 10026.0 - 625.0);
    EXPECT_EQ(lines[6].y1, 10026.0 - 9216.0);
}

TEST(GuideLines, FollowTheExtendedScale) {
    const auto lines = guide_lines(WaveformGuides::kStudioRange, 0.5);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].y1, 119.0);
    EXPECT_EQ(lines[1].y1, 77.0);
}

TEST(GuideLines, LabelsStandAtTheRightEndInTheLinesColour) {
    WaveformScale scale = full_scale();
    scale.guides = WaveformGuides::kStudioRange;
    const ShapeList shapes = shapes_of(scale);
    const auto lines = all_of<LineShape>(shapes);
    const auto labels = all_of<TextShape>(shapes);
    ASSERT_EQ(labels.size(), 7u);
    EXPECT_EQ(labels[5].text, "(16)");
    EXPECT_EQ(labels[6].text, "(235)");
    for (const std::size_t i : {5u, 6u}) {
        EXPECT_EQ(labels[i].x, 192.0);
        EXPECT_EQ(labels[i].anchor, TextAnchor::kFar);
        EXPECT_TRUE(same_colour(labels[i].colour, lines[i].colour));
    }
    EXPECT_LT(labels[5].y, lines[5].y1);                       // above the lower line
    EXPECT_GT(labels[6].y - labels[6].size, lines[6].y1 - 1);  // beneath the upper one
}

TEST(GuideLines, SetupLabel) {
    WaveformScale scale = full_scale();
    scale.guides = WaveformGuides::kSetup;
    EXPECT_EQ(texts_of(shapes_of(scale)).back(), "7.5 IRE");
}

TEST(WaveformTitles, AnyOtherKindIsAnError) {
    EXPECT_EQ(waveform_title(1), "Waveform Monitor");
    EXPECT_EQ(waveform_title(3), "Channel Parade");
    EXPECT_EQ(waveform_title(4), "Slice Waveform");
    for (const int kind : {-1, 0, 2, 5, 6, 99}) EXPECT_EQ(waveform_title(kind), "ERROR");
}

}  // namespace
}  // namespace ks
