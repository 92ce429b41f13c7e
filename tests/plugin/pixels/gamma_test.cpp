// The gamma curve: how its tables are built, and the oddities of its lookup.
#include "pixels/gamma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace ks {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

std::vector<float> tables_for(double gamma) {
    std::vector<float> tables(kCurveEntries, 0.0f);
    build_gamma_tables(tables.data(), gamma, std::pow);
    return tables;
}

float curve(const std::vector<float> &tables, float v) {
    return gamma_curve(v, tables.data(), tables.data() + kRampEntries);
}

TEST(GammaTables, low_entries_are_powers_of_i_over_511) {
    const std::vector<float> t = tables_for(2.2);
    for (int i = 1; i < 512; ++i) {
        EXPECT_NEAR(t[static_cast<std::size_t>(i)], std::pow(i / 511.0, 1.0 / 2.2), 2e-7) << i;
    }
    EXPECT_EQ(t[511], 1.0f);
}

TEST(GammaTables, high_entries_are_powers_of_steps_above_1) {
    const std::vector<float> t = tables_for(0.5);
    for (int k = 0; k < 256; ++k) {
        const double x = 1.0 + (k + 1) / 32.0;
        EXPECT_EQ(t[static_cast<std::size_t>(512 + k)], static_cast<float>(x * x)) << k;
    }
}

TEST(GammaTables, entry_0_is_never_written) {
    std::vector<float> tables(kCurveEntries, -5.0f);
    build_gamma_tables(tables.data(), 2.0, std::pow);
    EXPECT_EQ(tables[0], -5.0f);
    EXPECT_NE(tables[1], -5.0f);
    EXPECT_NE(tables[kCurveEntries - 1], -5.0f);
}

TEST(GammaTables, gamma_1_rebuilds_the_ramp_of_a_new_record) {
    const std::vector<float> t = tables_for(1.0);
    for (int i = 0; i < 512; ++i) {
        EXPECT_EQ(t[static_cast<std::size_t>(i)], static_cast<float>(i) * 0.0019569471f) << i;
    }
    for (int k = 0; k < 256; ++k) {
        const float step = static_cast<float>(k + 1) * 0.03125f;
        EXPECT_EQ(t[static_cast<std::size_t>(512 + k)], 1.0f + step) << k;
    }
}

TEST(GammaTables, only_767_powers_with_the_single_precision_inverse_gamma_are_asked_for) {
    static int calls;
    static bool exponent_right;
    calls = 0;
    exponent_right = true;
    std::vector<float> tables(kCurveEntries, 0.0f);
    build_gamma_tables(tables.data(), 2.2, [](double base, double exponent) {
        ++calls;
        exponent_right =
            exponent_right && exponent == static_cast<double>(static_cast<float>(1.0 / 2.2));
        return base;
    });
    EXPECT_EQ(calls, 767);
    EXPECT_TRUE(exponent_right);
}

TEST(GammaTables, hostile_gammas_are_survived) {
    for (const double gamma : {0.0, -1.0, std::nan(""), HUGE_VAL}) {
        const std::vector<float> t = tables_for(gamma);
        EXPECT_EQ(t[0], 0.0f);
    }
}

TEST(GammaCurve, black_and_below_pass_unchanged) {
    const std::vector<float> t = tables_for(2.2);
    for (const float v : {0.0f, -0.0f, -1e-30f, -0.5f, -8.0f, -kInf}) {
        EXPECT_EQ(curve(t, v), v);
    }
}

TEST(GammaCurve, eight_and_above_pass_unchanged) {
    const std::vector<float> t = tables_for(2.2);
    for (const float v : {8.0f, 8.5f, 1e30f, kInf}) EXPECT_EQ(curve(t, v), v);
    EXPECT_EQ(curve(t, std::nextafter(8.0f, 0.0f)), t[512 + 223]);
}

TEST(GammaCurve, nan_passes_unchanged) {
    EXPECT_TRUE(std::isnan(curve(tables_for(2.2), kNan)));
}

TEST(GammaCurve, lookup_scale_is_512_although_the_step_is_1_511th) {
    const std::vector<float> t = tables_for(1.0);
    EXPECT_EQ(curve(t, 0.5f), t[256]);  // 256/511, not 0.5
    EXPECT_NE(curve(t, 0.5f), 0.5f);
    EXPECT_EQ(curve(t, 1.0f / 1024.0f), 0.0f);  // entry 0
    EXPECT_EQ(curve(t, std::nextafter(1.0f, 0.0f)), t[511]);
}

TEST(GammaCurve, lookup_one_reads_first_high_entry) {
    const std::vector<float> t = tables_for(2.0);
    EXPECT_EQ(curve(t, 1.0f), static_cast<float>(std::pow(1.03125, 0.5)));
    EXPECT_NE(curve(t, 1.0f), 1.0f);
}

TEST(GammaCurve, above_one_reads_the_high_table_in_steps_of_a_32nd) {
    const std::vector<float> t = tables_for(2.0);
    EXPECT_EQ(curve(t, std::nextafter(1.0f, 2.0f)), t[512]);
    EXPECT_EQ(curve(t, 1.03124f), t[512]);
    EXPECT_EQ(curve(t, 1.03125f), t[513]);
    EXPECT_EQ(curve(t, 2.0f), t[512 + 32]);
}

TEST(GammaCurve, the_three_lane_form_equals_the_plain_one_bit_for_bit) {
    const std::vector<float> t = tables_for(2.2);
    std::vector<float> values{0.0f, -0.0f, 1.0f, 8.0f, -1.0f, kNan, kInf, -kInf, 1e30f, -1e30f};
    for (const float edge : {0.0f, 1.0f, 8.0f}) {
        values.push_back(std::nextafter(edge, -kInf));
        values.push_back(std::nextafter(edge, kInf));
    }
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(-1.0f, 9.0f);
    for (int i = 0; i < 100000; ++i) values.push_back(value(random));
    for (const float v : values) {
        alignas(16) float lanes[4];
        _mm_store_ps(lanes, gamma_curve_rgb(_mm_setr_ps(kNan, v, v, v), t.data()));
        const float expected = curve(t, v);
        for (int lane = 1; lane < 4; ++lane) {
            ASSERT_TRUE(lanes[lane] == expected ||
                        (std::isnan(expected) && std::isnan(lanes[lane])))
                << v << " in lane " << lane;
        }
    }
}

}  // namespace
}  // namespace ks
