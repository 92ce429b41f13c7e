#include "scopes/traces/slice_trace.h"

#include <gtest/gtest.h>

#include <limits>

#include "plugin/support/test_world.h"

namespace ks {
namespace {

// The panel: 20 x 40, area columns 4..15, rows 12..30: 18 pixels for 0..1.
constexpr TraceArea kArea{4, 16, 12, 30, 18.0};

template <class P>
struct SliceCase {
    TestWorld<P> source{12, 5};
    TestWorld<P> panel{20, 40};
    SliceSettings settings{};
    TraceArea area = kArea;
    SliceResult result{};

    std::int32_t draw() {
        return draw_slice_trace(source.view(), PixelTraits<P>::kCode, panel.view(), area, settings,
                                result);
    }
    void fill(const P &pixel) {
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 12; ++x) source.at(x, y) = pixel;
        }
    }
};

template <class P>
void expect_pixel(const P &actual, double a, double r, double g, double b) {
    EXPECT_EQ(actual.alpha, a);
    EXPECT_EQ(actual.red, r);
    EXPECT_EQ(actual.green, g);
    EXPECT_EQ(actual.blue, b);
}

TEST(SliceRow, IsTruncatedOverHeightLessOne) {
    EXPECT_EQ(slice_row(1080, 0.0), 0);
    EXPECT_EQ(slice_row(1080, 0.5), 539);
    EXPECT_EQ(slice_row(1080, 0.9999), 1078);
    EXPECT_EQ(slice_row(1080, 1.0), 1079);
}

TEST(SliceRow, StaysWithinTheSource) {
    EXPECT_EQ(slice_row(0, 1.0), 0);
    EXPECT_EQ(slice_row(1, 1.0), 0);
    EXPECT_EQ(slice_row(10, -3.0), 0);
    EXPECT_EQ(slice_row(10, 7.0), 9);
    EXPECT_EQ(slice_row(10, std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(SliceTrace, ReadsTheSlicesRowOnly) {
    SliceCase<Pixel8> c;
    for (int x = 0; x < 12; ++x) c.source.at(x, 2) = {255, 255, 255, 255};
    c.settings.mode = TraceMode::kLuma;
    c.settings.fraction = 0.5;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.result.row, 2);
    for (int x = 4; x < 16; ++x) expect_pixel(c.panel.at(x, 12), 255, 255, 255, 255);
    EXPECT_EQ(c.panel.drawn(), 12);
    c.settings.fraction = 0.74;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.result.row, 2);
    c.settings.fraction = 0.75;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.result.row, 3);
    for (int x = 4; x < 16; ++x) expect_pixel(c.panel.at(x, 30), 255, 255, 255, 255);
}

TEST(SliceTrace, ColumnsSkipByTruncation) {
    SliceCase<PixelF> c;
    c.settings.mode = TraceMode::kRgb;
    for (int x = 0; x < 12; ++x) {
        const float v = static_cast<float>(x) / 16.0f;
        c.source.at(x, 0) = {1.0f, v, v, v};
    }
    c.area = {0, 5, 12, 39, 16.0};
    EXPECT_EQ(c.draw(), 0);
    const int shown[5] = {0, 2, 4, 7, 9};
    for (int u = 0; u < 5; ++u) expect_pixel(c.panel.at(u, 39 - shown[u]), 1, 1, 1, 1);
    EXPECT_EQ(c.panel.drawn(), 5);
}

TEST(SliceTrace, ANarrowSourceIsStretched) {
    SliceCase<PixelF> c;
    c.settings.mode = TraceMode::kRgb;
    c.source = TestWorld<PixelF>(2, 1);
    c.source.at(1, 0) = {1.0f, 1.0f, 1.0f, 1.0f};
    c.area = {0, 5, 12, 30, 18.0};  // columns 0..2 show source column 0, 3 and 4 column 1
    EXPECT_EQ(c.draw(), 0);
    for (int u = 0; u < 5; ++u) expect_pixel(c.panel.at(u, u < 3 ? 30 : 12), 1, 1, 1, 1);
}

TEST(SliceTrace, ChannelsAndLumaEachAtTheirOwnRow) {
    SliceCase<Pixel8> c;
    c.fill({255, 255, 0, 0});
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 12), 255, 255, 0, 0);
    expect_pixel(c.panel.at(4, 24), 255, 255, 255, 255);  // 30 - 0.299 * 18 = 24.6
    expect_pixel(c.panel.at(4, 30), 255, 0, 255, 255);    // green and blue added
    EXPECT_EQ(c.panel.drawn(), 12 * 2);                   // the red row has no green
}

TEST(SliceTrace, RgbLeavesLumaOut) {
    SliceCase<Pixel8> c;
    c.fill({255, 255, 0, 0});
    c.settings.mode = TraceMode::kRgb;
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 12), 255, 255, 0, 0);
    expect_pixel(c.panel.at(4, 24), 0, 0, 0, 0);
    expect_pixel(c.panel.at(4, 30), 255, 0, 255, 255);
}

TEST(SliceTrace, LumaLeavesTheChannelsOut) {
    SliceCase<Pixel8> c;
    c.fill({255, 255, 0, 0});
    c.settings.mode = TraceMode::kLuma;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.panel.drawn(), 12);
    expect_pixel(c.panel.at(15, 24), 255, 255, 255, 255);
}

TEST(SliceTrace, LumaFollowsTheMath) {
    SliceCase<PixelF> c;
    c.fill({1.0f, 0.0f, 1.0f, 0.0f});
    c.settings.mode = TraceMode::kLuma;
    c.settings.luma_math = LumaMath::k709;
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 17), 1, 1, 1, 1);  // 30 - 0.7152 * 18 = 17.1
    c.settings.luma_math = LumaMath::k601;
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 19), 1, 1, 1, 1);  // 30 - 0.587 * 18 = 19.4
}

TEST(SliceTrace, SixteenBit) {
    SliceCase<Pixel16> c;
    c.fill({32768, 16384, 16384, 16384});
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 21), 32768, 32768, 32768, 32768);
    EXPECT_FALSE(c.result.over_range);
    EXPECT_TRUE(c.panel.guards_intact());
}

TEST(SliceTrace, TheHighestRowIs8NotTheLabelBands) {
    SliceCase<PixelF> c;
    c.fill({1.0f, 5.0f, 5.0f, 5.0f});
    EXPECT_EQ(c.draw(), 0);
    EXPECT_GT(c.area.top, kSliceTopRow);
    for (int x = 4; x < 16; ++x) expect_pixel(c.panel.at(x, 8), 1, 1, 1, 1);
    EXPECT_EQ(c.panel.drawn(), 12);
}

TEST(SliceTrace, NegativeValuesLieOnTheBottomLine) {
    SliceCase<PixelF> c;
    c.fill({1.0f, -2.0f, -2.0f, -2.0f});
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 30), 1, 1, 1, 1);
    EXPECT_EQ(c.panel.drawn(), 12);
}

TEST(SliceTrace, ValueScaleMakesRoomAboveOne) {
    SliceCase<PixelF> c;
    c.fill({1.0f, 2.0f, 2.0f, 2.0f});
    c.settings.mode = TraceMode::kRgb;
    c.settings.value_scale = 0.5;
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 12), 1, 1, 1, 1);
}

TEST(SliceTrace, InfinitiesLieOnTheLimitsAndNanIsNoValue) {
    const float inf = std::numeric_limits<float>::infinity();
    SliceCase<PixelF> c;
    c.settings.mode = TraceMode::kRgb;
    c.fill({1.0f, inf, -inf, std::numeric_limits<float>::quiet_NaN()});
    EXPECT_EQ(c.draw(), 0);
    expect_pixel(c.panel.at(4, 8), 1, 1, 0, 0);
    expect_pixel(c.panel.at(4, 30), 1, 0, 1, 0);
    EXPECT_TRUE(c.result.over_range);
}

TEST(SliceTrace, NanAloneIsNotOverRange) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    SliceCase<PixelF> c;
    c.fill({nan, nan, nan, nan});
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.panel.drawn(), 0);
    EXPECT_FALSE(c.result.over_range);
}

bool over_range(const PixelF &pixel, TraceMode mode) {
    SliceCase<PixelF> c;
    c.source.at(11, 0) = pixel;
    c.settings.mode = mode;
    EXPECT_EQ(c.draw(), 0);
    return c.result.over_range;
}

TEST(SliceOverRange, StartsAboveOneAndATenThousandth) {
    EXPECT_FALSE(over_range({1.0f, 1.0f, 1.0f, 1.0f}, TraceMode::kRgbAndLuma));
    EXPECT_FALSE(over_range({1.0f, 0.0f, 1.0001f, 0.0f}, TraceMode::kRgbAndLuma));
    EXPECT_TRUE(over_range({1.0f, 0.0f, 1.00011f, 0.0f}, TraceMode::kRgbAndLuma));
}

TEST(SliceOverRange, AnyChannelCountsInEveryMode) {
    for (const TraceMode mode : {TraceMode::kRgbAndLuma, TraceMode::kRgb, TraceMode::kLuma}) {
        EXPECT_TRUE(over_range({1.0f, 1.5f, 0.0f, 0.0f}, mode));
        EXPECT_TRUE(over_range({1.0f, 0.0f, 1.5f, 0.0f}, mode));
        EXPECT_TRUE(over_range({1.0f, 0.0f, 0.0f, 1.5f}, mode));
        EXPECT_FALSE(over_range({1.0f, 0.9f, 0.9f, 0.9f}, mode));
    }
}

TEST(SliceTrace, ReportsTheModeForTheLegend) {
    SliceCase<Pixel8> c;
    c.settings.mode = TraceMode::kLuma;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.result.mode, TraceMode::kLuma);
}

TEST(SliceTrace, AnUnknownFormatIsRefused) {
    SliceCase<Pixel8> c;
    c.fill({255, 255, 255, 255});
    EXPECT_EQ(draw_slice_trace(c.source.view(), 7, c.panel.view(), kArea, c.settings, c.result),
              kUnknownFormatError);
    EXPECT_EQ(c.panel.drawn(), 0);
}

TEST(SliceTrace, NothingToShowIsNoError) {
    SliceCase<Pixel8> c;
    c.fill({255, 255, 255, 255});
    c.area.right = c.area.left;
    EXPECT_EQ(c.draw(), 0);
    c.area.right = c.area.left - 5;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(draw_slice_trace({}, kFormat8, c.panel.view(), kArea, c.settings, c.result), 0);
    EXPECT_EQ(c.panel.drawn(), 0);
}

TEST(SliceTrace, WhatLiesOutsideThePanelIsDropped) {
    SliceCase<Pixel8> c;
    c.fill({255, 200, 100, 50});
    for (const TraceArea area : {TraceArea{-5, 40, 0, 30, 18.0}, TraceArea{0, 20, 0, 90, 5.0},
                                 TraceArea{0, 20, 0, 4, -3.0}}) {
        c.area = area;
        EXPECT_EQ(c.draw(), 0);
        EXPECT_TRUE(c.panel.guards_intact());
    }
}

TEST(SliceTrace, ReadsUpsideDownWorlds) {
    SliceCase<Pixel8> c;
    for (int x = 0; x < 12; ++x) c.source.at(x, 4) = {255, 255, 255, 255};
    c.settings.mode = TraceMode::kLuma;
    EXPECT_EQ(
        draw_slice_trace(c.source.flipped(), kFormat8, c.panel.view(), kArea, c.settings, c.result),
        0);
    EXPECT_EQ(c.panel.at(4, 12).green, 255);
}

}  // namespace
}  // namespace ks
