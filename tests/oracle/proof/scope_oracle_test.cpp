// The scopes' oracle against values worked out by hand. At label scale 1 the label band is 18
// pixels high, the vertical margin 8, the left margin 30, the right margin 8.
#include "oracle/scope_oracle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "oracle/draw_oracle.h"
#include "oracle/pixel_oracle.h"
#include "oracle/scope_oracle_pixels.h"

namespace ks::oracle {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

// Trace area of 100 columns times the divisor of each panel, 100 rows from 126 (value 0) up.
constexpr PanelExtents kPanels{
    {{0, 0}, {138, 134}, {216, 234}, {338, 134}, {138, 134}, {272, 102}}};

Image solid(int width, int height, Depth depth, const Colour &colour) {
    Image image = make_image(width, height, depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) save_colour(image, x, y, colour);
    }
    return image;
}

// One float pixel at `column` of a row of NaN, so that no other column leaves a trace.
Image lone_pixel(int width, int column, const Colour &colour) {
    Image image = solid(width, 1, Depth::kFloat, {1, kNan, kNan, kNan});
    save_colour(image, column, 0, colour);
    return image;
}

ScopeSettings only(int kind) {
    ScopeSettings s;
    s.show[static_cast<std::size_t>(kind)] = true;
    s.quality = 3;
    s.layer_width = 1920;
    s.output_width = 1920;
    return s;
}

ScopeTraces traces_of(const Image &source, const ScopeSettings &s, int parts = 1) {
    return scope_traces(source, s, kPanels, parts);
}

using Points = std::vector<std::array<int, 2>>;

// Pixels of the panel that are not transparent black, row by row.
Points lit(const Image &panel) {
    Points points;
    for (int y = 0; y < panel.height; ++y) {
        for (int x = 0; x < panel.width; ++x) {
            if (stored_pixel(panel, x, y) != Stored{}) points.push_back({x, y});
        }
    }
    return points;
}

TEST(ScopeLayout, units_at_full_resolution) {
    const LayoutUnits u = layout_units(only(kWaveform));
    EXPECT_EQ(u.label_scale, 1.0);
    EXPECT_EQ(u.label_band, 18);
    EXPECT_EQ(u.vertical_margin, 8);
    EXPECT_EQ(u.left_margin, 30);
    EXPECT_EQ(u.right_margin, 8);
    EXPECT_EQ(u.vectorscope_inset, 8);
    EXPECT_EQ(u.small_gap, 8);
}

TEST(ScopeLayout, half_resolution_scales_by_root_two_and_halves) {
    ScopeSettings s = only(kWaveform);
    s.output_width = 960;
    s.downsample_x_den = s.downsample_y_den = 2;
    const LayoutUnits u = layout_units(s);
    EXPECT_EQ(u.label_band, 12);        // 12.73
    EXPECT_EQ(u.vertical_margin, 5);    // 5.66
    EXPECT_EQ(u.left_margin, 21);       // 21.2
    EXPECT_EQ(u.vectorscope_inset, 5);  // (3.73 + 8) / 2
    EXPECT_EQ(u.small_gap, 4);
}

TEST(ScopeLayout, pixel_aspect_divides_horizontal_units_only) {
    ScopeSettings s = only(kWaveform);
    s.par_num = 2;
    EXPECT_EQ(layout_units(s).left_margin, 15);
    EXPECT_EQ(layout_units(s).label_band, 18);
    s.downsample_y_den = 3;
    EXPECT_EQ(layout_units(s).small_gap, 2);
}

TEST(ScopeLayout, label_scale_grows_with_wide_layers_up_to_three) {
    ScopeSettings s = only(kWaveform);
    s.layer_width = s.output_width = 3840;
    EXPECT_EQ(layout_units(s).label_scale, 1.5);
    EXPECT_EQ(layout_units(s).left_margin, 45);
    EXPECT_EQ(layout_units(s).vectorscope_inset, 12);  // 12.5
    s.layer_width = s.output_width = 15360;
    EXPECT_EQ(layout_units(s).label_scale, 3.0);
}

TEST(ScopeSetUp, steps_and_gains_follow_the_quality) {
    const Image source = make_image(100, 1, Depth::kByte);
    ScopeSettings s = only(kWaveform);
    s.show[kVectorscope] = s.show[kParade] = true;
    s.brightness = {0, 50, 150, 100, 0, 0};
    const ScopeContext high = set_up_scopes(s, source, kPanels);
    EXPECT_EQ(high.step, 1);
    EXPECT_FLOAT_EQ(high.waveform_gain, 0.09375f);
    EXPECT_FLOAT_EQ(high.vectorscope_gain, 0.28125f);
    EXPECT_FLOAT_EQ(high.parade_colours[0][1], 0.05f * 0.09375f);
    s.quality = 2;
    EXPECT_EQ(set_up_scopes(s, source, kPanels).step, 2);
    EXPECT_FLOAT_EQ(set_up_scopes(s, source, kPanels).waveform_gain, 0.375f);
    s.quality = 1;
    EXPECT_EQ(set_up_scopes(s, source, kPanels).step, 4);
    EXPECT_FLOAT_EQ(set_up_scopes(s, source, kPanels).waveform_gain, 1.5f);
}

TEST(ScopeSetUp, parade_columns_divide_toward_zero) {
    PanelExtents panels = kPanels;
    panels[kParade].width = 340;  // 302 / 3
    const ScopeContext c = set_up_scopes(only(kParade), make_image(50, 1, Depth::kByte), panels);
    EXPECT_EQ(c.parade_anchors, (std::array<int, 3>{30, 130, 230}));
    EXPECT_EQ(c.parade_x_scale, 2.0);
}

TEST(ScopeSetUp, calibration_gains) {
    ScopeSettings s = only(kVectorscope);
    const Image source = make_image(1, 1, Depth::kByte);
    const std::array<float, 4> gains{1.0f, 4.0f / 3.0f, 2.0f, 4.0f};
    for (int choice = 1; choice <= 4; ++choice) {
        s.calibrate = choice;
        EXPECT_FLOAT_EQ(set_up_scopes(s, source, kPanels).calibration_gain,
                        gains[static_cast<std::size_t>(choice - 1)]);
    }
}

TEST(ScopeSetUp, luma_is_needed_only_by_the_scopes_that_show_it) {
    const Image source = make_image(1, 1, Depth::kByte);
    const auto needed = [&](const ScopeSettings &s) {
        return set_up_scopes(s, source, kPanels).need_luma;
    };
    ScopeSettings s = only(kWaveform);
    EXPECT_TRUE(needed(s));
    s.waveform_channels = 2;
    EXPECT_FALSE(needed(s));
    s.view_channels = 2;
    EXPECT_FALSE(needed(s));
    s.show[kParade] = true;
    EXPECT_TRUE(needed(s));
    EXPECT_TRUE(needed(only(kVectorscope)));
    EXPECT_FALSE(needed(only(kHistogram)));
}

TEST(ScopePlot, agrees_with_the_additive_limited_plot_at_every_depth) {
    for (const Depth depth : {Depth::kByte, Depth::kWord, Depth::kFloat}) {
        Image literal = make_image(3, 2, depth);
        Image reference = literal;
        for (int i = 0; i < 200; ++i) {
            const float v = static_cast<float>(i % 23) * 0.0071f;
            const Colour colour{v * 0.5f, v, v * 0.3f, v * 2.0f};
            plot(reference, i % 4, i % 3, colour, kPlotAdditive | kPlotLimitFloat);
            with_depth(depth, [&](auto d) {
                plot_trace(TypedPicture<decltype(d)::value>(literal), i % 4, i % 3, colour);
            });
        }
        EXPECT_EQ(literal.bytes8, reference.bytes8);
        EXPECT_EQ(literal.words16, reference.words16);
        EXPECT_EQ(literal.floats, reference.floats);
        EXPECT_EQ(lit(literal).size(), 6u);
    }
}

TEST(ScopePass, fewer_rows_than_parts_samples_nothing) {
    const Image source = solid(4, 7, Depth::kByte, {1, 0.5f, 0.5f, 0.5f});
    EXPECT_TRUE(lit(traces_of(source, only(kWaveform), 8).panels[kWaveform]).empty());
    EXPECT_FALSE(lit(traces_of(source, only(kWaveform), 7).panels[kWaveform]).empty());
}

TEST(ScopePass, last_rows_beyond_whole_parts_are_lost_and_every_part_starts_its_own_steps) {
    Image source = make_image(1, 11, Depth::kFloat);
    for (int y = 0; y < 11; ++y) save_colour(source, 0, y, {1, (float(y) + 0.5f) / 255.0f, 0, 0});
    ScopeSettings s = only(kHistogram);
    s.quality = 2;
    const ScopeTraces t = traces_of(source, s, 3);  // rows 0 to 8, three each: 0 2, 3 5, 6 8
    for (int y = 0; y < 11; ++y) {
        const bool sampled = y == 0 || y == 2 || y == 3 || y == 5 || y == 6 || y == 8;
        EXPECT_EQ(t.bins[static_cast<std::size_t>(y)], sampled ? 1u : 0u) << y;
    }
}

TEST(ScopePass, muted_leaves_everything_black) {
    ScopeSettings s = only(kWaveform);
    s.show.fill(true);
    s.muted = true;
    const ScopeTraces t = traces_of(solid(8, 8, Depth::kFloat, {1, 2, 2, 2}), s);
    for (const Image &panel : t.panels) EXPECT_TRUE(lit(panel).empty());
    EXPECT_FALSE(t.waveform_over_range || t.parade_over_range || t.slice_over_range);
    EXPECT_EQ(t.maxima, (std::array<std::uint32_t, 3>{1, 1, 1}));
}

TEST(ScopePass, panels_too_small_for_their_margins_do_no_harm) {
    ScopeSettings s = only(kWaveform);
    s.show.fill(true);
    s.sub_pixel = true;
    const Image source = solid(9, 9, Depth::kFloat, {1, 0.5f, kInf, -kInf});
    for (const int size : {0, 1, 7, 20, 35}) {
        PanelExtents panels;
        panels.fill({size, size});
        EXPECT_EQ(scope_traces(source, s, panels, 2).panels[kWaveform].width, size);
    }
    const ScopeTraces none = scope_traces(make_image(0, 0, Depth::kByte), s, kPanels, 1);
    for (const Image &panel : none.panels) EXPECT_TRUE(lit(panel).empty());
}

TEST(ScopeWaveform, three_modes_in_their_colours) {
    const Image source = lone_pixel(100, 10, {1, 0.75f, 0.5f, 0.25f});
    ScopeSettings s = only(kWaveform);
    const ScopeTraces all = traces_of(source, s);  // luma 0.299 + ... = 0.54625
    EXPECT_EQ(lit(all.panels[kWaveform]), (Points{{40, 51}, {40, 71}, {40, 76}, {40, 101}}));
    const float full = 0.05f * 0.1875f;
    EXPECT_EQ(load_colour(all.panels[kWaveform], 40, 51), (Colour{full, full, 0, 0}));
    EXPECT_EQ(load_colour(all.panels[kWaveform], 40, 76), (Colour{full, 0, full, 0}));
    EXPECT_EQ(load_colour(all.panels[kWaveform], 40, 101), (Colour{full, 0, 0, full}));
    EXPECT_EQ(load_colour(all.panels[kWaveform], 40, 71),
              (Colour{full, 0.032f * 0.1875f, full, 0.034f * 0.1875f}));
    s.waveform_channels = 2;
    EXPECT_EQ(lit(traces_of(source, s).panels[kWaveform]), (Points{{40, 51}, {40, 76}, {40, 101}}));
    s.waveform_channels = 3;
    EXPECT_EQ(lit(traces_of(source, s).panels[kWaveform]), (Points{{40, 71}}));
}

TEST(ScopeWaveform, every_plot_truncates_at_8_bit) {
    ScopeSettings s = only(kWaveform);
    s.waveform_channels = 2;
    s.quality = 1;  // colour 0.05 * 3.0: 38.25 of 255 per plot
    const Image source = solid(1, 12, Depth::kByte, {1, 1, 0, 0});
    const Stored three = stored_pixel(traces_of(source, s).panels[kWaveform], 30, 26);
    // Alpha: 38, then 0.85 * 38 + 38.25 = 70.55, then 0.85 * 70 + 38.25 = 97.75.
    EXPECT_EQ(three, (Stored{97, 114, 0, 0}));
}

TEST(ScopeWaveform, max_scale_places_its_value_at_the_top_of_the_span) {
    ScopeSettings s = only(kWaveform);
    s.waveform_channels = 2;
    s.max_waveform = 120;
    // 1.2 as a float is a little above 1.2, so the row is 25.999 rather than 26.
    const ScopeTraces t = traces_of(lone_pixel(100, 0, {1, 1.2f, 0, 0}), s);
    EXPECT_EQ(lit(t.panels[kWaveform]), (Points{{30, 25}, {30, 126}}));
    const Image white = solid(1, 1, Depth::kByte, {1, 1, 1, 1});
    EXPECT_EQ(lit(traces_of(white, s).panels[kWaveform]), (Points{{30, 26}}));
}

TEST(ScopeWaveform, values_outside_land_on_the_clamps) {
    ScopeSettings s = only(kWaveform);
    s.waveform_channels = 2;
    const auto rows = [&](float r, float g) {
        return lit(traces_of(lone_pixel(100, 0, {1, r, g, kNan}), s).panels[kWaveform]);
    };
    EXPECT_EQ(rows(1.5f, -0.25f), (Points{{30, 18}, {30, 126}}));
    EXPECT_EQ(rows(1e30f, -1e30f), (Points{{30, 18}, {30, 126}}));
    EXPECT_EQ(rows(kInf, -kInf), (Points{{30, 18}, {30, 126}}));
    EXPECT_EQ(rows(kNan, kNan), Points{});
}

TEST(ScopeWaveform, sub_pixel_splits_around_the_pixel_centre) {
    ScopeSettings s = only(kWaveform);
    s.waveform_channels = 2;
    s.sub_pixel = true;
    const float full = 0.05f * 0.1875f;
    const auto red_row = [&](int width, int column) {
        return traces_of(lone_pixel(width, column, {1, 0.5f, kNan, kNan}), s).panels[kWaveform];
    };
    const Image centred = red_row(100, 5);  // x = 35.5
    EXPECT_EQ(lit(centred), (Points{{35, 76}}));
    EXPECT_EQ(load_colour(centred, 35, 76), (Colour{full, full, 0, 0}));
    const Image right = red_row(400, 1);  // x = 30.75
    EXPECT_EQ(lit(right), (Points{{30, 76}, {31, 76}}));
    EXPECT_EQ(load_colour(right, 30, 76), (Colour{full * 0.75f, full * 0.75f, 0, 0}));
    EXPECT_EQ(load_colour(right, 31, 76), (Colour{full * 0.25f, full * 0.25f, 0, 0}));
    const Image left = red_row(400, 3);  // x = 31.25
    EXPECT_EQ(lit(left), (Points{{30, 76}, {31, 76}}));
    EXPECT_EQ(load_colour(left, 30, 76), (Colour{full * 0.25f, full * 0.25f, 0, 0}));
    s.sub_pixel = false;
    EXPECT_EQ(lit(red_row(400, 3)), (Points{{31, 76}}));
}

TEST(ScopeWaveform, faint_weights_truncate_to_nothing_at_8_bit) {
    ScopeSettings s = only(kWaveform);
    s.waveform_channels = 2;
    s.sub_pixel = true;  // 2.39 of 255 per plot; a quarter of it is below 1
    const Image source = solid(400, 1, Depth::kByte, {1, 1, 0, 0});
    const ScopeTraces t = traces_of(source, s);
    // Columns 2, 3 (x = 31.0, 31.25), 4 and 5 (x = 31.5, 31.75): weights 0.5, 0.75, 1 and 0.75
    // fall on pixel 31, then 0.5 of column 6: 1, 1, 2, 1 and 1.
    EXPECT_EQ(stored_pixel(t.panels[kWaveform], 31, 26)[1], 6.0);
}

TEST(ScopeOverRange, only_above_1_0001_and_only_of_shown_scopes) {
    ScopeSettings s = only(kWaveform);
    const auto flags = [&](float value) {
        const ScopeTraces t = traces_of(solid(8, 8, Depth::kFloat, {1, 0, 0, value}), s);
        return std::array<bool, 2>{t.waveform_over_range, t.parade_over_range};
    };
    EXPECT_EQ(flags(1.0001f), (std::array<bool, 2>{false, false}));
    EXPECT_EQ(flags(1.001f), (std::array<bool, 2>{true, false}));
    EXPECT_EQ(flags(kInf), (std::array<bool, 2>{true, false}));
    EXPECT_EQ(flags(kNan), (std::array<bool, 2>{false, false}));
    s.show[kParade] = true;
    EXPECT_EQ(flags(1.001f), (std::array<bool, 2>{true, true}));
}

TEST(ScopeParade, rgb_columns) {
    const ScopeTraces t = traces_of(lone_pixel(100, 10, {1, 0.75f, 0.5f, -1.0f}), only(kParade));
    EXPECT_EQ(lit(t.panels[kParade]), (Points{{40, 51}, {140, 76}, {240, 126}}));
    const float full = 0.05f * 0.09375f;
    EXPECT_EQ(load_colour(t.panels[kParade], 140, 76), (Colour{full, 0, full, 0}));
}

TEST(ScopeParade, neutral_grey_stays_on_the_middle_line) {
    ScopeSettings s = only(kParade);
    s.view_channels = 2;
    for (int value = 0; value < 256; ++value) {
        Image source = make_image(1, 1, Depth::kByte);
        store_pixel(source, 0, 0, {255, double(value), double(value), double(value)});
        const ScopeTraces t = traces_of(source, s);
        EXPECT_NE(stored_pixel(t.panels[kParade], 130, 76), Stored{}) << value;
        EXPECT_NE(stored_pixel(t.panels[kParade], 230, 76), Stored{}) << value;
    }
}

TEST(ScopeParade, colour_differences_are_lifted_by_half_the_span) {
    ScopeSettings s = only(kParade);
    s.view_channels = 2;
    // Y 0.114, (1 - Y) * 0.5 = 0.443, (0 - Y) * 0.6 = -0.0684.
    const ScopeTraces t = traces_of(lone_pixel(100, 0, {1, 0, 0, 1}), s);
    EXPECT_EQ(lit(t.panels[kParade]), (Points{{130, 31}, {230, 82}, {30, 114}}));
    const float full = 0.05f * 0.09375f;
    EXPECT_EQ(load_colour(t.panels[kParade], 130, 31), (Colour{full, full, full, 0}));
    EXPECT_EQ(load_colour(t.panels[kParade], 230, 82), (Colour{full, 0, full, full}));
}

// Panel of 216 x 234: centre (108, 126), box 200 x 200.
TEST(ScopeVectorscope, neutral_samples_stay_on_the_centre) {
    for (const float v : {0.0f, 0.1f, 0.3f, 1.0f, 7.7f, -0.4f, kInf}) {
        const ScopeTraces t = traces_of(lone_pixel(1, 0, {1, v, v, v}), only(kVectorscope));
        EXPECT_EQ(lit(t.panels[kVectorscope]), (Points{{108, 126}})) << v;
    }
}

TEST(ScopeVectorscope, red_reaches_its_target_at_100_and_75_percent) {
    ScopeSettings s = only(kVectorscope);
    const auto red = [&](float v) {
        return lit(traces_of(lone_pixel(1, 0, {1, v, 0, 0}), s).panels[kVectorscope]);
    };
    // 108 - 0.102258 * 200 = 87.5 and 126 - 0.4293625 * 200 = 40.1.
    EXPECT_EQ(red(1.0f), (Points{{87, 40}}));
    s.calibrate = 2;
    EXPECT_EQ(red(0.75f), (Points{{87, 40}}));
    s.calibrate = 1;
    s.luma_math = 2;  // 94.1 and 40.1
    EXPECT_EQ(red(1.0f), (Points{{94, 40}}));
}

TEST(ScopeVectorscope, samples_outside_the_box_are_dropped_and_its_edges_belong_to_it) {
    ScopeSettings s = only(kVectorscope);
    const auto blue = [&](float v) {
        return lit(traces_of(lone_pixel(1, 0, {1, 0, 0, v}), s).panels[kVectorscope]);
    };
    EXPECT_EQ(blue(1.651f), (Points{{208, 149}}));  // x = 208.05
    EXPECT_EQ(blue(1.67f), Points{});               // x = 209.2
    EXPECT_EQ(blue(kInf), Points{});
    EXPECT_EQ(blue(kNan), Points{});
    s.calibrate = 4;
    EXPECT_EQ(blue(1.0f), Points{});
}

TEST(ScopeVectorscope, monochrome_or_the_samples_own_colour) {
    ScopeSettings s = only(kVectorscope);
    const Image source = lone_pixel(1, 0, {0.5f, 0.25f, 0.25f, 0.25f});
    const float gain = 0.1875f;
    EXPECT_EQ(load_colour(traces_of(source, s).panels[kVectorscope], 108, 126),
              (Colour{0.05f * gain, 0.032f * gain, 0.05f * gain, 0.034f * gain}));
    s.monochrome = false;
    const float own = gain * 0.2f;
    EXPECT_EQ(load_colour(traces_of(source, s).panels[kVectorscope], 108, 126),
              (Colour{0.5f * own, 0.25f * own, 0.25f * own, 0.25f * own}));
}

}  // namespace
}  // namespace ks::oracle
