// The sampling pass at the edges: odd sources, odd panels, values beyond the scale.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "pixels/depth.h"
#include "plugin/scopes/merge/trace_promises.h"

namespace ks {
namespace {

using oracle::Depth;

constexpr Depth kDepths[] = {Depth::kByte, Depth::kWord, Depth::kFloat};

TraceCase all_scopes(oracle::Image source) {
    TraceCase c;
    c.settings.show = {false, true, true, true, false, true};
    c.settings.quality = 3;
    c.settings.layer_width = c.settings.output_width = 1920;
    c.source = std::move(source);
    c.extents[oracle::kWaveform] = {200, 130};
    c.extents[oracle::kVectorscope] = {200, 218};
    c.extents[oracle::kParade] = {210, 136};
    c.extents[oracle::kHistogram] = {272, 102};
    return c;
}

/// The case at both plotting ways and both parade views.
void expect_everywhere(TraceCase c) {
    for (const bool sub : {false, true}) {
        for (const int view : {1, 2}) {
            c.settings.sub_pixel = sub;
            c.settings.view_channels = view;
            c.settings.monochrome = view == 1;
            expect_promises(c);
        }
    }
}

MeasuredTraces measured(const TraceCase &c) {
    return measure(c.source, c.settings, c.extents, c.run);
}

/// Rows of column x of a panel that hold anything.
std::vector<int> lit_rows(TracePanel &panel, FormatCode format, int x) {
    std::vector<int> rows;
    const WorldView view = panel.view();
    visit_format(format, [&]<class P>(P) {
        for (int y = 0; y < panel.height; ++y) {
            const P &p = *view.pixel<P>(x, y);
            if (p.red != 0 || p.green != 0 || p.blue != 0) rows.push_back(y);
        }
        return 0;
    });
    return rows;
}

std::vector<int> lit_columns(TracePanel &panel, FormatCode format) {
    std::vector<int> columns;
    for (int x = 0; x < panel.width; ++x) {
        if (!lit_rows(panel, format, x).empty()) columns.push_back(x);
    }
    return columns;
}

bool untouched(const TracePanel &panel) {
    return std::all_of(panel.bytes.begin(), panel.bytes.end(),
                       [](std::byte b) { return b == std::byte{0}; });
}

TEST(TraceEdges, sources_narrower_than_the_scope) {
    for (const Depth depth : kDepths) {
        for (const int width : {1, 2, 3, 161, 162, 163}) {
            SCOPED_TRACE(width);
            expect_everywhere(all_scopes(noise_picture(width, 40, depth, 5)));
        }
    }
}

TEST(TraceEdges, sources_wider_than_16384) {
    for (const Depth depth : kDepths) {
        expect_everywhere(all_scopes(noise_picture(20000, 8, depth, 6)));
    }
}

TEST(TraceEdges, a_single_row) {
    for (const Depth depth : kDepths) {
        expect_everywhere(all_scopes(noise_picture(300, 1, depth, 7)));
    }
}

TEST(TraceEdges, fewer_rows_than_parts_sample_nothing) {
    for (const Depth depth : kDepths) {
        TraceCase c = all_scopes(noise_picture(100, 63, depth, 8));
        c.run.parts = 64;
        expect_everywhere(c);
        MeasuredTraces got = measured(c);
        for (const TracePanel &panel : got.panels) EXPECT_TRUE(untouched(panel));
        EXPECT_EQ(std::count(got.bins.begin(), got.bins.end(), 0u), 768);
        EXPECT_EQ(got.context.histogramMax, (std::array<std::uint32_t, 3>{1, 1, 1}));
        EXPECT_FALSE(got.over_range);
    }
}

TEST(TraceEdges, rows_behind_the_last_whole_part_are_not_sampled) {
    for (const Depth depth : kDepths) {
        TraceCase c = all_scopes(smooth_picture(90, 43, depth, 9));
        c.run.parts = 7;  // six rows each: row 42 belongs to none
        const MeasuredTraces without = measured(c);
        for (int x = 0; x < 90; ++x) oracle::store_pixel(c.source, x, 42, {1, 1, 0, 1});
        const MeasuredTraces with = measured(c);
        for (std::size_t kind = 1; kind <= 5; ++kind) {
            EXPECT_EQ(with.panels[kind].bytes, without.panels[kind].bytes);
        }
        EXPECT_EQ(with.bins, without.bins);
        expect_everywhere(c);
    }
}

TEST(TraceEdges, every_step_counts_from_the_start_of_its_part) {
    for (const int quality : {1, 2}) {
        for (const int parts : {1, 3, 10}) {
            TraceCase c = all_scopes(noise_picture(70, 53, Depth::kByte, 10));
            c.settings.quality = quality;
            c.run.parts = parts;
            expect_everywhere(c);
        }
    }
}

TEST(TraceEdges, codes_above_full_scale_at_16_bits) {
    TraceCase c = all_scopes(wild_picture(90, 60, Depth::kWord, 11));
    expect_everywhere(c);
    EXPECT_TRUE(measured(c).over_range);
    c.source = flat_picture(90, 60, Depth::kWord, {1, 1, 1, 1});
    EXPECT_FALSE(measured(c).over_range);
    oracle::store_pixel(c.source, 50, 50, {32768, 32768, 32768, 32772});  // 1.00012
    EXPECT_TRUE(measured(c).over_range);
}

TEST(TraceEdges, any_float) {
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        expect_everywhere(all_scopes(wild_picture(120, 80, Depth::kFloat, seed)));
    }
}

TEST(TraceEdges, infinities_land_on_the_ends_and_nan_nowhere) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    TraceCase c = all_scopes(oracle::make_image(1, 1, Depth::kFloat));
    c.settings.sub_pixel = false;
    c.settings.waveform_channels = 2;
    const auto rows = [&](float value) {
        oracle::store_pixel(c.source, 0, 0, {1.0, value, value, value});
        MeasuredTraces got = measured(c);
        return lit_rows(got.panels[oracle::kWaveform], kFormatF, got.context.waveformLeft);
    };
    EXPECT_EQ(rows(kInf), std::vector<int>{18});
    EXPECT_EQ(rows(3e38f), std::vector<int>{18});
    EXPECT_EQ(rows(-kInf), std::vector<int>{122});
    EXPECT_EQ(rows(-0.5f), std::vector<int>{122});
    EXPECT_EQ(rows(std::numeric_limits<float>::quiet_NaN()), std::vector<int>{});
}

TEST(TraceEdges, the_highest_value_of_the_scale_meets_the_top_of_the_span) {
    TraceCase c = all_scopes(flat_picture(10, 10, Depth::kFloat, {1.0, 1.2, 1.2, 1.2}));
    c.settings.max_waveform = 120.0;
    c.settings.waveform_channels = 2;
    MeasuredTraces got = measured(c);
    // A span of 96 above the bottom line at 122; 1.2f is slightly above 1.2, which costs no pixel.
    EXPECT_EQ(lit_rows(got.panels[oracle::kWaveform], kFormatF, 30), std::vector<int>{25});
    c.source = flat_picture(10, 10, Depth::kByte, {1, 1, 1, 1});
    got = measured(c);
    EXPECT_EQ(got.context.valueScale, 1.0);
    EXPECT_EQ(lit_rows(got.panels[oracle::kWaveform], kFormat8, 30), std::vector<int>{26});
}

TEST(TraceEdges, a_position_on_a_pixel_centre_lights_one_column) {
    TraceCase c = all_scopes(flat_picture(1, 8, Depth::kByte, {1, 0.5, 0.5, 0.5}));
    c.settings.sub_pixel = true;
    MeasuredTraces got = measured(c);
    EXPECT_EQ(lit_columns(got.panels[oracle::kWaveform], kFormat8), std::vector<int>{30});
}

TEST(TraceEdges, neutral_samples_stay_on_the_middle_lines_and_on_the_centre) {
    for (const Depth depth : kDepths) {
        for (const int math : {1, 2}) {
            TraceCase c = all_scopes(oracle::make_image(256, 2, depth));
            for (int x = 0; x < 256; ++x) {
                const double v = depth == Depth::kByte ? x
                                 : depth == Depth::kWord
                                     ? x * 128 + 3
                                     : static_cast<double>(static_cast<float>(x) / 199.0f);
                for (const int y : {0, 1}) oracle::store_pixel(c.source, x, y, {1, v, v, v});
            }
            c.settings.luma_math = math;
            c.settings.view_channels = 2;
            MeasuredTraces got = measured(c);
            const ScopeSampleContext &context = got.context;
            TracePanel &vectorscope = got.panels[oracle::kVectorscope];
            EXPECT_EQ(lit_columns(vectorscope, format_of(depth)),
                      std::vector<int>{context.vectorscopeCentreX});
            EXPECT_EQ(lit_rows(vectorscope, format_of(depth), context.vectorscopeCentreX),
                      std::vector<int>{context.vectorscopeCentreY});
            for (const std::size_t k : {1u, 2u}) {
                EXPECT_EQ(lit_rows(got.panels[oracle::kParade], format_of(depth),
                                   context.paradeColumns[k] + 5),
                          std::vector<int>{
                              static_cast<int>(context.paradeBottom - context.paradeCentreOffset)});
            }
        }
    }
}

TEST(TraceEdges, colours_outside_the_box_are_not_plotted) {
    TraceCase c = all_scopes(flat_picture(20, 20, Depth::kByte, {1, 1, 0, 0}));
    c.settings.calibrate = 4;
    EXPECT_TRUE(untouched(measured(c).panels[oracle::kVectorscope]));
    c.settings.calibrate = 1;
    EXPECT_FALSE(untouched(measured(c).panels[oracle::kVectorscope]));
}

TEST(TraceEdges, black_and_values_above_one_are_not_counted) {
    TraceCase c = all_scopes(oracle::make_image(4, 1, Depth::kFloat));
    const float values[] = {0.0f, 1.0f, 1.0001f, -0.5f};
    for (int x = 0; x < 4; ++x) {
        const auto v = static_cast<double>(values[x]);
        oracle::store_pixel(c.source, x, 0, {1, v, v, v});
    }
    const MeasuredTraces got = measured(c);
    EXPECT_EQ(got.bins[255], 1u);
    EXPECT_EQ(std::count(got.bins.begin(), got.bins.begin() + 255, 0u), 255);
}

TEST(TraceEdges, the_luma_histogram_of_green) {
    for (const Depth depth : kDepths) {
        TraceCase c = all_scopes(flat_picture(30, 10, depth, {1, 0, 1, 0}));
        c.settings.luma_math = 2;
        c.settings.histogram_channels = 2;
        const MeasuredTraces got = measured(c);
        EXPECT_EQ(got.bins[182], 300u);
        EXPECT_EQ(got.context.histogramMax[0], 300u);
    }
}

TEST(TraceEdges, large_and_portrait_panels) {
    for (const Depth depth : kDepths) {
        TraceCase c = all_scopes(smooth_picture(200, 150, depth, 13));
        c.settings.sub_pixel = true;
        for (const oracle::PanelExtent panel :
             {oracle::PanelExtent{1000, 596}, {1000, 1000}, {240, 700}, {500, 60}}) {
            for (const int kind : {oracle::kWaveform, oracle::kVectorscope, oracle::kParade}) {
                c.extents[static_cast<std::size_t>(kind)] = panel;
            }
            expect_promises(c);
        }
    }
}

TEST(TraceEdges, areas_with_a_span_of_zero_or_less_take_values_on_their_ends) {
    for (const int height : {35, 34, 33, 30, 27}) {  // spans of 1, 0, -1, -4, -7
        SCOPED_TRACE(height);
        TraceCase c = all_scopes(noise_picture(50, 20, Depth::kFloat, 14));
        c.extents[oracle::kWaveform].height = c.extents[oracle::kParade].height = height;
        expect_everywhere(c);
    }
}

TEST(TraceEdges, areas_without_rows_take_nothing) {
    for (const Depth depth : kDepths) {
        for (const int height : {25, 18, 8, 1}) {
            TraceCase c = all_scopes(noise_picture(50, 20, depth, 15));
            c.run.parts = 3;
            for (const int kind : {oracle::kWaveform, oracle::kVectorscope, oracle::kParade}) {
                c.extents[static_cast<std::size_t>(kind)].height = height;
            }
            const MeasuredTraces got = measured(c);
            for (const TracePanel &panel : got.panels) EXPECT_TRUE(untouched(panel));
        }
    }
}

TEST(TraceEdges, areas_without_columns_take_nothing) {
    for (const Depth depth : kDepths) {
        for (const int width : {38, 30, 1}) {
            TraceCase c = all_scopes(noise_picture(50, 20, depth, 16));
            for (const int kind : {oracle::kWaveform, oracle::kVectorscope, oracle::kParade}) {
                c.extents[static_cast<std::size_t>(kind)].width = width;
            }
            c.settings.show[oracle::kVectorscope] = width < 16;  // its margins are narrower
            const MeasuredTraces got = measured(c);
            EXPECT_EQ(got.context.waveformOn, 0);
            EXPECT_EQ(got.context.paradeOn, 0);
            for (const TracePanel &panel : got.panels) EXPECT_TRUE(untouched(panel));
        }
    }
}

}  // namespace
}  // namespace ks
