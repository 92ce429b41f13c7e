// Histogram counts and bars and the slice trace of the oracle, worked out by hand.
#include <gtest/gtest.h>

#include <limits>

#include "oracle/pixel_oracle.h"
#include "oracle/scope_oracle.h"

namespace ks::oracle {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

// Slice: area of 100 x 100 pixels from (30, 126) up. Histogram: "Scope Height" 60.
constexpr PanelExtents kPanels{{{0, 0}, {0, 0}, {0, 0}, {0, 0}, {138, 134}, {272, 102}}};

const Stored kWhite{255, 255, 255, 255};

Image solid(int width, int height, Depth depth, const Colour &colour) {
    Image image = make_image(width, height, depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) save_colour(image, x, y, colour);
    }
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

ScopeTraces traces_of(const Image &source, const ScopeSettings &s) {
    return scope_traces(source, s, kPanels, 1);
}

// Number of pixels of the column that are not transparent black.
int lit_in_column(const Image &panel, int x) {
    int count = 0;
    for (int y = 0; y < panel.height; ++y) count += stored_pixel(panel, x, y) != Stored{} ? 1 : 0;
    return count;
}

int lit_in_panel(const Image &panel) {
    int count = 0;
    for (int x = 0; x < panel.width; ++x) count += lit_in_column(panel, x);
    return count;
}

TEST(ScopeHistogram, black_counts_nothing_and_draws_nothing) {
    const ScopeTraces t = traces_of(solid(8, 8, Depth::kByte, {1, 0, 0, 0}), only(kHistogram));
    EXPECT_EQ(t.bins, std::vector<std::uint32_t>(768, 0));
    EXPECT_EQ(t.maxima, (std::array<std::uint32_t, 3>{1, 1, 1}));
    EXPECT_EQ(lit_in_panel(t.panels[kHistogram]), 0);
}

TEST(ScopeHistogram, white_counts_into_the_last_bin_and_nothing_above) {
    const ScopeTraces bytes = traces_of(solid(4, 4, Depth::kByte, {1, 1, 1, 1}), only(kHistogram));
    EXPECT_EQ(bytes.bins[255], 16u);
    EXPECT_EQ(bytes.bins[511], 16u);
    EXPECT_EQ(bytes.bins[767], 16u);
    Image floats = make_image(6, 1, Depth::kFloat);
    const std::array<float, 6> values{1.0f, 1.0001f, -0.5f, kInf, kNan, 1e-6f};
    for (int x = 0; x < 6; ++x) {
        save_colour(floats, x, 0, {1, values[static_cast<std::size_t>(x)], 0, 0});
    }
    const ScopeTraces t = traces_of(floats, only(kHistogram));
    EXPECT_EQ(t.bins[255], 1u);
    EXPECT_EQ(t.bins[0], 1u);  // just above black
    EXPECT_EQ(t.maxima, (std::array<std::uint32_t, 3>{1, 1, 1}));
}

TEST(ScopeHistogram, pure_green_by_709_luma_fills_bin_182) {
    ScopeSettings s = only(kHistogram);
    s.histogram_channels = 2;
    s.luma_math = 2;
    const ScopeTraces t = traces_of(solid(8, 8, Depth::kByte, {1, 0, 1, 0}), s);
    EXPECT_EQ(t.bins[182], 64u);
    EXPECT_EQ(t.maxima[0], 64u);
    const Image &panel = t.panels[kHistogram];
    EXPECT_EQ(lit_in_panel(panel), 60);
    EXPECT_EQ(stored_pixel(panel, 190, 93), kWhite);  // above the vertical margin
    EXPECT_EQ(stored_pixel(panel, 190, 34), kWhite);
}

TEST(ScopeHistogram, overlapping_bars_add_to_white) {
    const float v = 100.5f / 255.0f;
    const ScopeTraces t = traces_of(solid(2, 2, Depth::kFloat, {1, v, v, v}), only(kHistogram));
    EXPECT_EQ(load_colour(t.panels[kHistogram], 108, 93), (Colour{1, 1, 1, 1}));
    const ScopeTraces yellow =
        traces_of(solid(2, 2, Depth::kFloat, {1, v, v, 0}), only(kHistogram));
    EXPECT_EQ(load_colour(yellow.panels[kHistogram], 108, 93), (Colour{1, 1, 1, 0}));
}

TEST(ScopeHistogram, bar_area_is_256_square_pixels_wide) {
    ScopeSettings s = only(kHistogram);
    s.histogram_channels = 2;
    const std::vector<std::uint32_t> bins(768, 1);
    const auto columns = [&] {
        Image panel = make_image(272, 102, Depth::kByte);
        draw_histogram_bars(panel, bins, {1, 1, 1}, s, histogram_bar_area(s, 102));
        std::vector<int> lit;
        for (int x = 0; x < 272; ++x) {
            if (lit_in_column(panel, x) > 0) lit.push_back(x);
        }
        return std::array<int, 3>{lit.front(), lit.back(), static_cast<int>(lit.size())};
    };
    EXPECT_EQ(columns(), (std::array<int, 3>{8, 263, 256}));
    s.par_num = 2;
    EXPECT_EQ(columns(), (std::array<int, 3>{4, 131, 128}));
    s.par_num = 1;
    s.par_den = 2;  // every bin twice
    s.downsample_x_den = 1;
    EXPECT_EQ(columns(), (std::array<int, 3>{16, 271, 256}));
}

TEST(ScopeHistogram, half_resolution_halves_columns_and_heights_and_skips_odd_bins) {
    ScopeSettings s = only(kHistogram);
    s.histogram_channels = 2;
    s.output_width = 960;
    s.downsample_x_den = s.downsample_y_den = 2;
    std::vector<std::uint32_t> bins(768, 0);
    bins[100] = 10;
    bins[201] = 10;
    Image panel = make_image(136, 51, Depth::kByte);
    draw_histogram_bars(panel, bins, {10, 1, 1}, s, histogram_bar_area(s, 51));
    // Height (60 - 0.4142 * 18) / 2 = 26.27; the vertical margin is 5.
    EXPECT_EQ(lit_in_panel(panel), 26);
    EXPECT_EQ(lit_in_column(panel, 54), 26);
    EXPECT_EQ(stored_pixel(panel, 54, 45), kWhite);
}

TEST(ScopeHistogram, label_scale_takes_its_growth_from_the_bars) {
    ScopeSettings s = only(kHistogram);
    s.histogram_channels = 2;
    s.layer_width = s.output_width = 15360;  // label scale 3: 60 - 2 * 18
    Image panel = make_image(272, 102, Depth::kByte);
    draw_histogram_bars(panel, std::vector<std::uint32_t>(768, 8), {8, 1, 1}, s, {8.0, 90});
    EXPECT_EQ(lit_in_column(panel, 8), 24);
}

TEST(ScopeHistogram, bars_below_one_pixel_are_not_drawn) {
    ScopeSettings s = only(kHistogram);
    s.histogram_channels = 2;
    std::vector<std::uint32_t> bins(768, 0);
    bins[0] = 1;
    bins[1] = 100;
    Image panel = make_image(272, 102, Depth::kWord);
    draw_histogram_bars(panel, bins, {100, 1, 1}, s, {20.0, 80});
    EXPECT_EQ(lit_in_column(panel, 20), 0);
    EXPECT_EQ(lit_in_column(panel, 21), 60);
    EXPECT_NE(stored_pixel(panel, 21, 80), Stored{});
    EXPECT_EQ(stored_pixel(panel, 21, 81), Stored{});
}

TEST(ScopeSlice, samples_its_row_once_per_column) {
    Image source = solid(50, 11, Depth::kByte, {1, 0, 0, 0});
    store_pixel(source, 20, 7, kWhite);
    ScopeSettings s = only(kSlice);
    s.slice_channels = 3;
    s.slice_fraction = 0.79;  // trunc(7.9)
    const ScopeTraces t = traces_of(source, s);
    const Image &panel = t.panels[kSlice];
    EXPECT_EQ(set_up_scopes(s, source, kPanels).slice_row, 7);
    for (int x = 0; x < 138; ++x) {
        const bool white = x == 70 || x == 71;  // two panel columns per source column
        EXPECT_EQ(lit_in_column(panel, x), x >= 30 && x < 130 ? 1 : 0) << x;
        EXPECT_EQ(stored_pixel(panel, x, 26), white ? kWhite : Stored{}) << x;
    }
}

TEST(ScopeSlice, three_modes_in_opaque_colours) {
    const Image source = solid(3, 1, Depth::kFloat, {1, 0.75f, 0.5f, 0.25f});
    ScopeSettings s = only(kSlice);
    const Image all = traces_of(source, s).panels[kSlice];
    EXPECT_EQ(lit_in_column(all, 30), 4);
    EXPECT_EQ(load_colour(all, 30, 51), (Colour{1, 1, 0, 0}));
    EXPECT_EQ(load_colour(all, 30, 71), (Colour{1, 1, 1, 1}));
    EXPECT_EQ(load_colour(all, 30, 76), (Colour{1, 0, 1, 0}));
    EXPECT_EQ(load_colour(all, 30, 101), (Colour{1, 0, 0, 1}));
    s.slice_channels = 2;
    EXPECT_EQ(lit_in_column(traces_of(source, s).panels[kSlice], 30), 3);
    s.slice_channels = 3;
    EXPECT_EQ(lit_in_column(traces_of(source, s).panels[kSlice], 30), 1);
}

TEST(ScopeSlice, limits_to_row_8_and_the_bottom_line_whatever_the_label_band) {
    ScopeSettings s = only(kSlice);
    const Image source = solid(3, 1, Depth::kFloat, {1, kInf, -0.5f, kNan});
    const ScopeTraces t = traces_of(source, s);
    EXPECT_EQ(lit_in_column(t.panels[kSlice], 30), 2);
    EXPECT_EQ(load_colour(t.panels[kSlice], 30, 8), (Colour{1, 1, 0, 0}));
    EXPECT_EQ(load_colour(t.panels[kSlice], 30, 126), (Colour{1, 0, 1, 0}));
    EXPECT_TRUE(t.slice_over_range);
}

TEST(ScopeSlice, over_range_follows_the_plotted_values) {
    ScopeSettings s = only(kSlice);
    const Image source = solid(3, 1, Depth::kFloat, {1, 1.2f, 0, 0});
    EXPECT_TRUE(traces_of(source, s).slice_over_range);
    s.slice_channels = 3;  // luma 0.36
    EXPECT_FALSE(traces_of(source, s).slice_over_range);
}

TEST(ScopeSlice, value_scale_applies_to_float_pictures) {
    ScopeSettings s = only(kSlice);
    s.slice_channels = 3;
    s.max_waveform = 200;
    const Image bright = traces_of(solid(3, 1, Depth::kFloat, {1, 1, 1, 1}), s).panels[kSlice];
    EXPECT_EQ(load_colour(bright, 30, 76), (Colour{1, 1, 1, 1}));
    const Image words = traces_of(solid(3, 1, Depth::kWord, {1, 1, 1, 1}), s).panels[kSlice];
    EXPECT_NE(stored_pixel(words, 30, 26), Stored{});
}

}  // namespace
}  // namespace ks::oracle
