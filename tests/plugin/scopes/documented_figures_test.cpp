// Figures that the documents state: how much memory the counters take, which panels are too small
// for a trace, where the histogram stands.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "geometry/first_sizes.h"
#include "geometry/scope_panel.h"
#include "scopes/context/context_setup.h"
#include "scopes/sampling/sample_plan.h"
#include "scopes/traces/histogram_bars.h"
#include "support/paths.h"

namespace ks {
namespace {

const FrameScale kFull = make_frame_scale({1, 1}, {1, 1}, {1, 1});

/// A frame whose pictures nobody reads.
struct PlannedFrame {
    SampledFrame frame;
    ScopeSettings settings;
    IntSize picture;
    double aspect = 1.0;
    std::vector<std::uint32_t> bins = std::vector<std::uint32_t>(768);
    char pixel = 0;

    PlannedFrame(IntSize size, FormatCode format)
        : picture(size), aspect(scope_aspect(1, size, kFull)) {
        frame.format = format;
        frame.high_quality = true;
        frame.source = {&pixel, 0, size.width, size.height};
        frame.histogram_bins = bins.data();
    }
    void show(ScopeKind kind, double size) {
        const std::size_t slot = scope_slot(kind);
        const IntSize panel = scope_panel_size(kScopeTable[slot].size_rule, size, aspect, kFull);
        frame.switches[slot] = 1;
        frame.panels[slot] = {&pixel, 0, panel.width, panel.height};
    }
    [[nodiscard]] double counters(int threads) const {
        const LayoutUnits units = layout_units(label_scale(picture.width, picture.width), kFull);
        const ScopeSampleContext context = make_sample_context(frame, settings, units);
        return static_cast<double>(make_sample_plan(context, threads).bytes) / (1 << 20);
    }
};

// ---- memory of the counters ----

double default_settings(IntSize picture, FormatCode format, int threads) {
    PlannedFrame planned(picture, format);
    planned.settings.quality = 2;
    for (const ScopeKind kind :
         {ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade}) {
        planned.show(kind, 200.0);
    }
    return planned.counters(threads);
}

double every_scope(IntSize picture, FormatCode format, int threads, double size) {
    PlannedFrame planned(picture, format);
    planned.settings.waveform_mode = TraceMode::kRgbAndLuma;
    for (const ScopeRow &row : kScopeTable) {
        planned.show(row.kind, row.size_rule == ScopeSizeRule::kFixedWidth ? 300.0 : size);
    }
    return planned.counters(threads);
}

/// One line of the table: what the counters take at the depth that needs most.
std::string memory_row(IntSize picture) {
    double figures[4]{};
    for (const FormatCode format : {kFormat8, kFormat16, kFormatF}) {
        const double now[] = {default_settings(picture, format, 2),
                              every_scope(picture, format, 2, 1000.0),
                              every_scope(picture, format, 64, 1000.0),
                              every_scope(picture, format, 64, picture.width / 2.0)};
        for (std::size_t i = 0; i < std::size(figures); ++i) {
            figures[i] = std::max(figures[i], now[i]);
        }
    }
    char line[100];
    std::snprintf(line, sizeof line, "| %dx%d | %.1f | %.0f | %.0f | %.0f |\n", picture.width,
                  picture.height, figures[0], figures[1], figures[2], figures[3]);
    return line;
}

TEST(DocumentedFigures, memory_of_the_counters) {
    std::string table =
        "| Frame | default, 2 threads | max, 2 threads | max, 64 threads | half as wide, 64 "
        "threads |\n"
        "|---|--:|--:|--:|--:|\n";
    for (const IntSize picture :
         {IntSize{1920, 1080}, IntSize{1080, 1920}, IntSize{3840, 2160}, IntSize{7680, 4320},
          IntSize{16384, 16384}, IntSize{30000, 30000}}) {
        table += memory_row(picture);
    }
    std::ifstream stream(paths::source() + "/docs/develop/performance.md");
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_NE(page.find("\n" + table + "\n"), std::string::npos) << "the page does not say\n"
                                                                 << table;
}

// ---- panels without a trace ----

struct Traces {
    bool waveform = false;
    bool parade = false;
};

/// Which of a waveform and a parade of that size get rows and columns, 1/`reduction` of the frame.
Traces traces(IntSize layer, double size, std::uint32_t reduction) {
    const FrameScale scale = make_frame_scale({1, 1}, {1, reduction}, {1, reduction});
    const int output = layer.width / static_cast<int>(reduction);
    PlannedFrame planned({output, layer.height / static_cast<int>(reduction)}, kFormat8);
    for (const ScopeKind kind : {ScopeKind::kWaveform, ScopeKind::kParade}) {
        const IntSize panel =
            scope_panel_size(ScopeSizeRule::kWidthTimesAspect, size, 0.5625, scale);
        planned.frame.switches[scope_slot(kind)] = 1;
        planned.frame.panels[scope_slot(kind)] = {&planned.pixel, 0, panel.width, panel.height};
    }
    const ScopeSampleContext context = make_sample_context(
        planned.frame, planned.settings, layout_units(label_scale(layer.width, output), scale));
    const SamplePlan plan = make_sample_plan(context, 1);
    return {plan.has(Consumer::kLumaRows), plan.rgb_uses.parade};
}

TEST(DocumentedFigures, panels_too_narrow_at_full_resolution) {
    const IntSize hd{1920, 1080};
    EXPECT_FALSE(traces(hd, 38.0, 1).waveform);
    EXPECT_TRUE(traces(hd, 39.0, 1).waveform);
    EXPECT_FALSE(traces(hd, 40.0, 1).parade);
    EXPECT_TRUE(traces(hd, 41.0, 1).parade);
}

TEST(DocumentedFigures, panels_too_low_at_full_resolution) {
    for (const int height : {25, 26}) {
        PlannedFrame planned({1920, 1080}, kFormat8);
        for (const ScopeKind kind : {ScopeKind::kWaveform, ScopeKind::kParade}) {
            planned.frame.switches[scope_slot(kind)] = 1;
            planned.frame.panels[scope_slot(kind)] = {&planned.pixel, 0, 200, height};
        }
        const ScopeSampleContext context =
            make_sample_context(planned.frame, planned.settings, layout_units(1.0, kFull));
        const SamplePlan plan = make_sample_plan(context, 1);
        EXPECT_EQ(plan.has(Consumer::kLumaRows), height == 26);
        EXPECT_EQ(plan.rgb_uses.parade, height == 26);
    }
}

TEST(DocumentedFigures, layers_whose_first_sizes_show_no_trace) {
    for (int width = 64; width <= 1920; ++width) {
        const double size = first_size(ScopeSizeRule::kWidthTimesAspect, width, {1, 1}).value;
        const Traces shown = traces({width, width * 9 / 16}, size, 1);
        ASSERT_EQ(shown.waveform, width > 166) << width;
        ASSERT_EQ(shown.parade, width > 174) << width;
    }
}

TEST(DocumentedFigures, panels_of_200_pixels_keep_their_traces_down_to_one_fortieth) {
    for (std::uint32_t reduction = 1; reduction <= 40; ++reduction) {
        const Traces shown = traces({1920, 1080}, 200.0, reduction);
        EXPECT_TRUE(shown.waveform && shown.parade) << reduction;
    }
    EXPECT_FALSE(traces({1920, 1080}, 200.0, 41).parade);
}

// ---- the histogram's baseline ----

TEST(DocumentedFigures, bars_stand_one_row_above_the_line_of_value_0) {
    for (const double scale : {1.0, 1.5, 3.0}) {
        const LayoutUnits units = layout_units(scale, kFull);
        constexpr int kWidth = 272, kHeight = 242;
        std::vector<std::uint8_t> bytes(std::size_t{4} * kWidth * kHeight);
        const WorldView panel{bytes.data(), std::int64_t{4} * kWidth, kWidth, kHeight};
        std::vector<std::uint32_t> bins(768, 1);
        ScopeSampleContext context;
        context.pixelFormat = kFormat8;
        context.histogramRgb = HistogramMode::kLuma;
        context.histogramBins = bins.data();
        context.histogramMax = {1, 1, 1};
        ASSERT_EQ(draw_histogram_bars(context, panel, units, kFull, 200.0), 0);
        int lowest = -1;
        for (int y = 0; y < kHeight; ++y) {
            if (panel.pixel<Pixel8>(100, y)->green != 0) lowest = y;
        }
        EXPECT_EQ(lowest, kHeight - units.margin_v - 1);
        EXPECT_EQ(lowest, trace_area({kWidth, kHeight}, units).bottom - 1);
    }
}

}  // namespace
}  // namespace ks
