#include "scopes/traces/histogram_bars.h"

#include <gtest/gtest.h>

#include <array>

#include "plugin/support/test_world.h"

namespace ks {
namespace {

// A panel of 272 x 102: 60 rows for the bars, the last of them row 93, the first column 8.
template <class P>
struct BarsCase {
    TestWorld<P> panel{272, 102};
    std::array<std::uint32_t, 3 * kHistogramBins> bins{};
    ScopeSampleContext context;
    FrameScale frame{};
    double scale = 1.0;
    double scope_height = 60.0;

    std::int32_t draw() {
        context.pixelFormat = PixelTraits<P>::kCode;
        context.histogramBins = bins.data();
        for (std::size_t channel = 0; channel < 3; ++channel) {
            std::uint32_t &maximum = context.histogramMax[channel];
            maximum = 1;
            for (std::size_t i = 0; i < kHistogramBins; ++i) {
                maximum = std::max(maximum, bins[channel * kHistogramBins + i]);
            }
        }
        return draw_histogram_bars(context, panel.view(), layout_units(scale, frame), frame,
                                   scope_height);
    }
    void luma() { context.histogramRgb = HistogramMode::kLuma; }
    /// Green pixels of a column: their count; the rows they span must be without gaps.
    int height_of(int x) {
        int count = 0;
        for (int y = 0; y < 102; ++y) count += panel.at(x, y).green != 0 ? 1 : 0;
        return count;
    }
};

TEST(HistogramBars, EmptyBinsGiveNoBars) {
    BarsCase<Pixel8> c;
    EXPECT_EQ(c.draw(), 0);
    for (int y = 0; y < 102; ++y) {
        for (int x = 0; x < 272; ++x) EXPECT_EQ(c.panel.at(x, y).alpha, 0);
    }
}

TEST(HistogramBars, TheFullestBinTakesTheScopeHeight) {
    BarsCase<Pixel8> c;
    c.luma();
    c.bins[0] = 1000;
    EXPECT_EQ(c.draw(), 0);
    for (int y = 0; y < 102; ++y) {
        EXPECT_EQ(c.panel.at(8, y).green, y >= 34 && y <= 93 ? 255 : 0) << y;
    }
    EXPECT_EQ(c.panel.drawn(), 60);
}

TEST(HistogramBars, HeightsAreTruncated) {
    BarsCase<Pixel8> c;
    c.luma();
    c.bins[10] = 64;
    c.bins[20] = 63;  // 59.06
    c.bins[30] = 2;   // 1.9
    c.bins[40] = 1;   // 0.9: no bar
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.height_of(18), 60);
    EXPECT_EQ(c.height_of(28), 59);
    EXPECT_EQ(c.height_of(38), 1);
    EXPECT_EQ(c.height_of(48), 0);
    EXPECT_EQ(c.panel.at(38, 93).red, 255);
}

TEST(HistogramBars, LumaIsWhiteAndUsesTheFirstChannelOnly) {
    BarsCase<PixelF> c;
    c.luma();
    c.bins[3] = 5;
    c.bins[kHistogramBins + 7] = 5;
    EXPECT_EQ(c.draw(), 0);
    const PixelF &pixel = c.panel.at(11, 93);
    EXPECT_EQ(pixel.alpha, 1.0f);
    EXPECT_EQ(pixel.red, 1.0f);
    EXPECT_EQ(pixel.green, 1.0f);
    EXPECT_EQ(pixel.blue, 1.0f);
    EXPECT_EQ(c.height_of(15), 0);
}

TEST(HistogramBars, OverlappingChannelsAdd) {
    BarsCase<Pixel16> c;
    c.bins[100] = 9;
    c.bins[kHistogramBins + 100] = 9;
    c.bins[kHistogramBins + 101] = 9;
    c.bins[2 * kHistogramBins + 101] = 9;
    c.bins[102] = c.bins[2 * kHistogramBins + 102] = 9;
    EXPECT_EQ(c.draw(), 0);
    const auto rgb = [&](int x) {
        const Pixel16 &p = c.panel.at(x, 50);
        return std::array<int, 3>{p.red, p.green, p.blue};
    };
    EXPECT_EQ(rgb(108), (std::array<int, 3>{32768, 32768, 0}));
    EXPECT_EQ(rgb(109), (std::array<int, 3>{0, 32768, 32768}));
    EXPECT_EQ(rgb(110), (std::array<int, 3>{32768, 0, 32768}));
}

TEST(HistogramBars, EachChannelHasItsOwnScale) {
    BarsCase<Pixel8> c;
    c.bins[0] = 1000000;
    c.bins[kHistogramBins] = 1;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.panel.at(8, 34).red, 255);
    EXPECT_EQ(c.panel.at(8, 34).green, 255);
}

TEST(HistogramBars, TheLastBinStandsInColumn263) {
    BarsCase<Pixel8> c;
    c.luma();
    c.bins[255] = 1;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.height_of(263), 60);
    EXPECT_EQ(c.panel.drawn(), 60);
}

TEST(HistogramBars, HalfResolutionShowsEverySecondBin) {
    BarsCase<Pixel8> c;
    c.luma();
    c.frame = make_frame_scale({1, 1}, {1, 2}, {1, 2});
    c.panel = TestWorld<Pixel8>(136, 51);
    for (std::size_t i = 0; i < kHistogramBins; i += 2) c.bins[i] = 4;
    for (std::size_t i = 1; i < kHistogramBins; i += 2) c.bins[i] = 2;
    EXPECT_EQ(c.draw(), 0);
    // 128 columns from 4 on, each of an even bin: 30 rows, the last of them 51 - 4 - 1.
    for (int x = 0; x < 136; ++x) {
        for (int y = 0; y < 51; ++y) {
            const bool inside = x >= 4 && x < 132 && y >= 17 && y <= 46;
            EXPECT_EQ(c.panel.at(x, y).green, inside ? 255 : 0) << x << "," << y;
        }
    }
}

TEST(HistogramBars, NarrowPixelsRepeatBins) {
    BarsCase<Pixel8> c;
    c.luma();
    c.frame = make_frame_scale({1, 2}, {1, 1}, {1, 1});
    c.panel = TestWorld<Pixel8>(544, 102);
    c.bins[1] = 1;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.height_of(16 + 1), 0);
    EXPECT_EQ(c.height_of(16 + 2), 60);
    EXPECT_EQ(c.height_of(16 + 3), 60);
    EXPECT_EQ(c.height_of(16 + 4), 0);
}

TEST(HistogramBars, WidePixelsStepByTheNearestFixedPointNumber) {
    BarsCase<Pixel8> c;
    c.luma();
    c.frame = make_frame_scale({10, 11}, {1, 1}, {1, 1});
    c.panel = TestWorld<Pixel8>(300, 102);
    c.bins[59578 * 100 / 65536] = 1;  // column 100 of steps of 0.909088134765625
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.height_of(100 + 8), 60);  // 8.8 to the right, truncated with the column
}

TEST(HistogramBars, LabelScaleTakesItsStripFromTheBars) {
    BarsCase<Pixel8> c;
    c.luma();
    c.scale = 2.0;
    c.bins[0] = 7;
    EXPECT_EQ(c.draw(), 0);
    EXPECT_EQ(c.height_of(8), 42);
    EXPECT_EQ(c.panel.at(8, 102 - 16 - 1).green, 255);
    EXPECT_EQ(c.panel.at(8, 102 - 16).green, 0);
}

TEST(HistogramBars, StayInsideAnyPanel) {
    for (const double aspect : {1e-9, 0.01, 0.9, 40.0, 1e9}) {
        BarsCase<Pixel8> c;
        c.frame.pixel_aspect = aspect;
        c.bins.fill(3);
        c.scope_height = 5000.0;
        c.panel = TestWorld<Pixel8>(30, 20);
        EXPECT_EQ(c.draw(), 0);
        EXPECT_TRUE(c.panel.guards_intact());
    }
}

TEST(HistogramBars, AnUnknownFormatIsRefused) {
    BarsCase<Pixel8> c;
    c.bins.fill(3);
    EXPECT_EQ(c.draw(), 0);
    c.context.pixelFormat = 7;
    EXPECT_EQ(
        draw_histogram_bars(c.context, c.panel.view(), layout_units(1.0, c.frame), c.frame, 60.0),
        kUnknownFormatError);
}

TEST(HistogramBars, NoBinsOrNoPanelIsNoError) {
    ScopeSampleContext context;
    context.pixelFormat = kFormat8;
    EXPECT_EQ(draw_histogram_bars(context, {}, LayoutUnits{}, FrameScale{}, 60.0), 0);
}

}  // namespace
}  // namespace ks
