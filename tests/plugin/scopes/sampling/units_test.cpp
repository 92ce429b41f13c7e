// The sampling pass's parts by themselves: rows, classes, slots, cells, tables, sums, memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "scopes/context/vector_map.h"
#include "scopes/merge/column_sums.h"
#include "scopes/merge/count_table.h"
#include "scopes/sampling/arena.h"
#include "scopes/sampling/column_slots.h"
#include "scopes/sampling/counting.h"
#include "scopes/sampling/value_classes.h"

namespace ks {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// Ordinary values, values on the maps' borders and everything else a float can hold.
std::vector<float> any_values() {
    std::vector<float> values{0.0f, -0.0f, 1.0f,     0.5f,   -1.0f, 1e30f, -1e30f, 3.4e38f,
                              kInf, -kInf, -3.4e38f, 1e-45f, kNan,  -kNan, 2.0f,   1e9f};
    std::mt19937 random(41);
    for (int i = 0; i < 4000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        float value;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);
        values.push_back(static_cast<float>(random() % 4096) / 2048.0f - 0.5f);
    }
    for (int row = 0; row <= 120; ++row) {
        const float edge = static_cast<float>(row) / 96.0f;
        for (const float v : {std::nextafterf(edge, -1.0f), edge, std::nextafterf(edge, 2.0f)}) {
            values.push_back(v);
        }
    }
    while (values.size() % 4 != 0) values.push_back(0.0f);
    return values;
}

// ---- rows ----

TEST(RowMapTest, four_at_once_are_the_same_as_one) {
    const RowMap maps[] = {{122.0, 1.0, 96.0, 0.0, 18, 122},  {122.0, 0.8, 96.0, 0.0, 18, 122},
                           {122.0, 1.0, 96.0, 48.0, 18, 122}, {122.0, 0.7, 96.0, 48.0, 18, 122},
                           {500.0, 1.0, 450.0, 0.0, 0, 500},  {20.0, 1.0, -3.0, 0.0, 18, 20},
                           {18.0, 1.0, 5.0, 0.0, 18, 18},     {122.0, 1.0, 0.0, 0.0, 18, 122}};
    const std::vector<float> values = any_values();
    for (const RowMap &map : maps) {
        for (std::size_t i = 0; i < values.size(); i += 4) {
            alignas(16) std::int32_t rows[4];
            const __m128 four = _mm_loadu_ps(values.data() + i);
            _mm_store_si128(reinterpret_cast<__m128i *>(rows),
                            map.plain() ? map.rows_of<true>(four) : map.rows_of<false>(four));
            for (std::size_t k = 0; k < 4; ++k) {
                ASSERT_EQ(rows[k], map.row(values[i + k])) << values[i + k];
                ASSERT_GE(rows[k], 0);
                ASSERT_LE(rows[k], map.spare());
                ASSERT_EQ(rows[k] == map.spare(), std::isnan(values[i + k]));
            }
        }
    }
}

TEST(RowMapTest, truncates_and_stops_at_the_ends) {
    const RowMap map{122.0, 1.0, 96.0, 0.0, 18, 122};
    EXPECT_EQ(map.rows(), 105);
    EXPECT_EQ(map.row(0.0f), 104);
    EXPECT_EQ(map.row(1.0f), 8);
    EXPECT_EQ(map.row(0.5f), 56);
    EXPECT_EQ(map.row(0.501f), 55);  // 73.904
    EXPECT_EQ(map.row(1.08f), 0);    // 18.32
    EXPECT_EQ(map.row(1.09f), 0);    // 17.36 is above the top
    EXPECT_EQ(map.row(-0.001f), 104);
    EXPECT_EQ(map.row(kNan), map.spare());
}

TEST(RowMapTest, an_area_whose_bottom_is_above_its_top_has_no_rows) {
    EXPECT_EQ((RowMap{17.0, 1.0, -9.0, 0.0, 18, 17}).rows(), 0);
    EXPECT_EQ(RowMap{}.rows(), 0);
}

// ---- tables ----

template <class P>
void expect_table(const Colour &colour) {
    const CountTable<P> table(colour);
    P pixel{};
    for (std::size_t hits = 0; hits < 5000; ++hits) {
        const P &entry = table.after(hits);
        ASSERT_EQ(std::memcmp(&entry, &pixel, sizeof pixel), 0) << hits << " hits";
        blend_pixel(pixel, colour, kPlotAdditive | kPlotClampFloat);
    }
    const P &last = table.after(std::size_t{1} << 40);
    for (std::size_t hits = 5000; hits < 70000; ++hits) {
        blend_pixel(pixel, colour, kPlotAdditive | kPlotClampFloat);
    }
    EXPECT_EQ(std::memcmp(&last, &pixel, sizeof pixel), 0);
}

TEST(CountTableTest, equals_plotting_one_by_one) {
    // The faintest and the strongest traces, and one that 8 bits cannot show.
    for (const float gain : {0.046875f, 0.09375f, 0.1875f, 1.0f, 4.5f, 0.03f}) {
        const Colour colour{0.05f * gain, 0.032f * gain, 0.05f * gain, 0.034f * gain};
        expect_table<Pixel8>(colour);
        expect_table<Pixel16>(colour);
        expect_table<PixelF>(colour);
    }
}

TEST(CountTableTest, a_colour_of_nothing_leaves_nothing) {
    const CountTable<Pixel8> table({0.0f, 0.0f, 0.0f, 0.0f});
    EXPECT_EQ(table.after(0).red, 0);
    EXPECT_EQ(table.after(1000000).alpha, 0);
}

// ---- classes ----

TEST(ValueClassesTest, every_8_bit_code_reads_as_its_value) {
    const RowMap waveform{122.0, 1.0, 96.0, 0.0, 18, 122}, parade{90.0, 1.0, 60.0, 0.0, 18, 90};
    const ValueClasses classes = make_value_classes<Pixel8>(waveform, parade, true);
    ASSERT_EQ(classes.count, 256);
    for (std::size_t code = 0; code < 256; ++code) {
        const float value = static_cast<float>(code) * PixelTraits<Pixel8>::kToUnit;
        EXPECT_EQ(classes.waveform_row[code], waveform.row(value));
        EXPECT_EQ(classes.parade_row[code], parade.row(value));
        EXPECT_EQ(classes.bin[code], code == 0 ? -1 : static_cast<int>(code));
    }
}

TEST(ValueClassesTest, every_16_bit_code_reads_as_its_value) {
    const RowMap waveform{522.0, 1.0, 496.0, 0.0, 18, 522}, parade{90.0, 1.0, 60.0, 0.0, 18, 90};
    for (const bool histogram : {false, true}) {
        const ValueClasses classes = make_value_classes<Pixel16>(waveform, parade, histogram);
        ASSERT_EQ(classes.of_code.size(), 65536u);
        for (std::size_t code = 0; code < 65536; ++code) {
            const float value = static_cast<float>(code) / 32768.0f;
            const std::size_t c = classes.of_code[code];
            ASSERT_EQ(classes.waveform_row[c], waveform.row(value)) << code;
            ASSERT_EQ(classes.parade_row[c], parade.row(value)) << code;
            ASSERT_EQ(classes.bin[c], histogram ? histogram_bin(value) : -1) << code;
        }
        EXPECT_LT(classes.count, histogram ? 850 : 600);  // far fewer than codes
    }
}

TEST(ValueClassesTest, histogram_bins_end_at_their_limits) {
    EXPECT_EQ(histogram_bin(0.0f), -1);
    EXPECT_EQ(histogram_bin(1e-45f), 0);
    EXPECT_EQ(histogram_bin(1.0f), 255);
    EXPECT_EQ(histogram_bin(std::nextafterf(1.0f, 0.0f)), 254);
    EXPECT_EQ(histogram_bin(1.0001f), -1);
    EXPECT_EQ(histogram_bin(-0.5f), -1);
    EXPECT_EQ(histogram_bin(kNan), -1);
    EXPECT_EQ(histogram_bin(kInf), -1);
}

// ---- slots ----

TEST(ColumnSlotsTest, neighbours_with_one_key_share_a_slot_within_their_strip) {
    const ColumnSlots slots =
        make_column_slots(200, 4, 100, [](int column) { return std::int64_t{column / 40}; });
    for (std::size_t j = 0; j < 200; ++j) {
        const std::uint32_t slot = slots.of_column[j];
        const std::size_t first = slots.column[slot] / 4;
        EXPECT_LE(first, j);
        EXPECT_EQ(first * 4 / 40, j * 4 / 40);
        EXPECT_EQ(first / kStripColumns, j / kStripColumns);
        EXPECT_LE(slot - slots.of_column[j == 0 ? 0 : j - 1], 1u);
    }
    // 20 keys; the strips' borders at 64, 128 and 192 cut three more.
    EXPECT_EQ(slots.count(), 23);
}

TEST(ColumnSlotsTest, a_16_bit_counter_of_a_slot_cannot_overflow) {
    const auto one = [](int) { return std::int64_t{0}; };
    EXPECT_EQ(make_column_slots(64, 1, 1000, one).count(), 1);
    EXPECT_EQ(make_column_slots(64, 1, 2160, one).count(), 3);    // 30 columns each
    EXPECT_EQ(make_column_slots(64, 1, 65535, one).count(), 64);  // one
}

TEST(ColumnSlotsTest, a_sample_is_split_as_the_plot_splits_it) {
    ScopeSampleContext context;
    context.waveformLeft = 30;
    const auto split = [&](double x_scale, bool sub_pixel) {
        context.waveformXScale = x_scale;
        context.subPixel = sub_pixel ? 1 : 0;
        return split_column(context, 1);
    };
    const auto expect = [](const ColumnSplit &s, int first, float a, float b) {
        EXPECT_EQ(s.first, first);
        EXPECT_FLOAT_EQ(s.weight_first, a);
        EXPECT_FLOAT_EQ(s.weight_second, b);
    };
    expect(split(0.25, true), 30, 0.75f, 0.25f);  // 30.75
    expect(split(0.75, true), 30, 0.25f, 0.75f);  // 31.25: the left one first
    expect(split(0.5, true), 30, 0.5f, 0.5f);     // 31.0
    expect(split(1.0, true), 31, 1.0f, 0.0f);     // 31.5: a pixel's centre
    expect(split(0.25, false), 30, 1.0f, 0.0f);
    expect(split(0.75, false), 31, 1.0f, 0.0f);
}

// ---- vectorscope cells ----

ScopeSampleContext vector_context(int width, int height, LumaMath math, float calibration) {
    ScopeSampleContext c;
    c.lumaMath = math;
    c.vectorscopeCentreX = width / 2;
    c.vectorscopeCentreY = static_cast<int>((height - 18) * 0.5 + 18);
    c.vectorscopeLeft = 8;
    c.vectorscopeRight = width - 8;
    c.vectorscopeTop = 26;
    c.vectorscopeBottom = height - 8;
    c.cbGain = c.vectorscopeRight - c.vectorscopeLeft;
    c.crGain = c.vectorscopeBottom - c.vectorscopeTop;
    c.calibrationGain = calibration;
    return c;
}

/// Cell of one difference pair, or the spare one, by the formulas in double precision.
std::uint32_t cell_of(const ScopeSampleContext &c, const VectorMap &map, float b_y, float r_y) {
    const VectorGains gains = vector_gains(c.lumaMath);
    const auto calibration = static_cast<double>(c.calibrationGain);
    const double x =
        static_cast<double>(b_y) * gains.blue_y * c.cbGain * calibration + c.vectorscopeCentreX;
    const double y =
        c.vectorscopeCentreY - static_cast<double>(r_y) * gains.red_y * c.crGain * calibration;
    const double u = std::trunc(x) - c.vectorscopeLeft, v = std::trunc(y) - c.vectorscopeTop;
    if (!(u >= 0 && u < map.width && v >= 0 && v < map.height)) return map.width * map.height;
    return static_cast<std::uint32_t>(v) * map.width + static_cast<std::uint32_t>(u);
}

TEST(VectorMapTest, four_cells_at_once_follow_the_formulas) {
    const std::vector<float> values = any_values();
    std::mt19937 random(43);
    for (const LumaMath math : {LumaMath::k601, LumaMath::k709}) {
        for (const float calibration : {1.0f, 4.0f / 3.0f, 2.0f, 4.0f}) {
            const ScopeSampleContext c = vector_context(201, 220, math, calibration);
            const VectorMap map(c);
            for (int i = 0; i < 3000; ++i) {
                alignas(16) float b[4], r[4];
                for (std::size_t k = 0; k < 4; ++k) {
                    b[k] = values[random() % values.size()];
                    r[k] = values[random() % values.size()];
                }
                const auto cells = map.cells_of(b, r);
                for (std::size_t k = 0; k < 4; ++k) {
                    ASSERT_EQ(cells[k], cell_of(c, map, b[k], r[k])) << b[k] << " " << r[k];
                }
            }
        }
    }
}

TEST(VectorMapTest, all_four_edges_of_the_box_are_inside) {
    const ScopeSampleContext c = vector_context(200, 218, LumaMath::k601, 1.0f);
    const VectorMap map(c);
    EXPECT_EQ(map.width, 185u);   // 8 to 192
    EXPECT_EQ(map.height, 185u);  // 26 to 210
    const auto cell = [&](double x, double y) {
        alignas(16) float b[4]{}, r[4]{};
        b[0] = static_cast<float>((x - c.vectorscopeCentreX) / (map.gains.blue_y * c.cbGain));
        r[0] = static_cast<float>((c.vectorscopeCentreY - y) / (map.gains.red_y * c.crGain));
        return map.cells_of(b, r)[0];
    };
    const std::uint32_t spare = 185 * 185;
    EXPECT_EQ(cell(8.5, 26.5), 0u);
    EXPECT_EQ(cell(192.5, 26.5), 184u);
    EXPECT_EQ(cell(8.5, 210.5), 184u * 185);
    EXPECT_EQ(cell(192.5, 210.5), spare - 1);
    for (const auto &[x, y] :
         {std::pair{7.5, 100.0}, {193.5, 100.0}, {100.0, 25.5}, {100.0, 211.5}}) {
        EXPECT_EQ(cell(x, y), spare);
    }
}

TEST(VectorMapTest, no_difference_is_the_centre_in_panels_of_any_size) {
    for (const int width : {200, 201, 203, 500}) {
        for (const int height : {218, 219, 221}) {
            for (const LumaMath math : {LumaMath::k601, LumaMath::k709}) {
                const ScopeSampleContext c = vector_context(width, height, math, 4.0f);
                const VectorMap map(c);
                alignas(16) const float none[4]{};
                const std::uint32_t cell = map.cells_of(none, none)[2];
                EXPECT_EQ(cell % map.width, static_cast<std::uint32_t>(c.vectorscopeCentreX - 8));
                EXPECT_EQ(cell / map.width, static_cast<std::uint32_t>(c.vectorscopeCentreY - 26));
            }
        }
    }
}

TEST(VectorMapTest, a_box_without_an_inside_has_the_spare_cell_only) {
    const ScopeSampleContext c = vector_context(12, 30, LumaMath::k601, 1.0f);
    EXPECT_EQ(VectorMap(c).cells(), 1u);
}

}  // namespace
}  // namespace ks
