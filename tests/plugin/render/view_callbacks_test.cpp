// The per-pixel functions handed to the iterate suites, at each depth, against the plain
// conversion.
#include "render/view_callbacks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "pixels/views.h"

namespace ks {
namespace {

/// The plain rule: float formulas and scalar lookups, no table of codes, no lanes.
Colour plain_view(std::int32_t mode, const Colour &c, const ConversionRecord &record) {
    const auto curve = [&record](float v) {
        return gamma_curve(v, record.low_table, record.high_table) * record.gain;
    };
    const auto grey = [&c](float v) { return Colour{c.alpha, v, v, v}; };
    const float y = luminance(c, record.luma_math);
    switch (mode) {
        case 1:
            return {c.alpha, curve(c.red), curve(c.green), curve(c.blue)};
        case 2:
            return {1.0f, curve(c.alpha), curve(c.alpha), curve(c.alpha)};
        case 3:
            return grey(record.apply_curve == 1 ? curve(y) : y);
        case 4:
            return grey(c.red);
        case 5:
            return grey(c.green);
        case 6:
            return grey(c.blue);
        case 7:
            return grey((c.blue - y + 1.0f) * 0.5f);
        case 8:
            return grey((c.red - y) * 0.6f + 0.5f);
        default:
            return c;
    }
}

/// The plain way back: low bits of the truncated value, top clamped; 64 bits hold every value met.
template <class Channel>
Channel plain_channel(float unit, float full) {
    const float v = unit * full;
    if (std::isnan(v)) return 0;
    return static_cast<Channel>(static_cast<std::int64_t>(v > full ? full : v));
}

class ViewCallbacksTest : public testing::TestWithParam<int> {
  protected:
    void set_up(FormatCode format, double gamma, float gain, std::uint8_t apply,
                std::uint8_t math) {
        tables_.assign(kCurveEntries, 0.0f);
        build_gamma_tables(tables_.data(), gamma, std::pow);
        record_ = {};
        record_.apply_curve = apply;
        record_.view_mode = GetParam();
        record_.low_table = tables_.data();
        record_.high_table = tables_.data() + kRampEntries;
        record_.gain = gain;
        record_.pixel_format = format;
        record_.luma_math = luma_math_of(math);
        prepare_record(record_);
    }

    template <class Check>
    void for_each_setting(FormatCode format, Check &&check) {
        for (const double gamma : {0.1, 1.0, 2.2, 5.0}) {
            for (const float gain : {0.0f, 0.5f, 1.0f, 4.0f, -1.0f, std::nanf("")}) {
                set_up(format, gamma, gain, 1, 1);
                check();
                set_up(format, gamma, gain, 2, 2);
                check();
            }
        }
    }

    std::vector<float> tables_;
    ConversionRecord record_{};
};

TEST_P(ViewCallbacksTest, eight_bit_equals_the_plain_conversion_for_every_code) {
    const auto callback = view_callback_8(GetParam());
    for_each_setting(kFormat8, [&] {
        for (int i = 0; i < 256; ++i) {
            const auto at = [i](int factor) { return static_cast<A_u_char>(i * factor + factor); };
            PF_Pixel in{at(1), at(3), at(5), at(7)};
            PF_Pixel out{};
            ASSERT_EQ(callback(&record_, i, i, &in, &out), 0);
            const Colour unit{static_cast<float>(in.alpha) * 0.003921569f,
                              static_cast<float>(in.red) * 0.003921569f,
                              static_cast<float>(in.green) * 0.003921569f,
                              static_cast<float>(in.blue) * 0.003921569f};
            const Colour c = plain_view(GetParam(), unit, record_);
            ASSERT_EQ(out.alpha, plain_channel<std::uint8_t>(c.alpha, 255.0f)) << i;
            ASSERT_EQ(out.red, plain_channel<std::uint8_t>(c.red, 255.0f)) << i;
            ASSERT_EQ(out.green, plain_channel<std::uint8_t>(c.green, 255.0f)) << i;
            ASSERT_EQ(out.blue, plain_channel<std::uint8_t>(c.blue, 255.0f)) << i;
        }
    });
}

TEST_P(ViewCallbacksTest, sixteen_bit_equals_the_plain_conversion) {
    const auto callback = view_callback_16(GetParam());
    for_each_setting(kFormat16, [&] {
        for (int i = 0; i <= 32768; i += 31) {
            const auto at = [i](int f) { return static_cast<A_u_short>(i * f % 32769); };
            PF_Pixel16 in{at(1), at(3), at(5), at(7)};
            PF_Pixel16 out{};
            ASSERT_EQ(callback(&record_, i, i, &in, &out), 0);
            constexpr float k = 1.0f / 32768.0f;
            const Colour unit{static_cast<float>(in.alpha) * k, static_cast<float>(in.red) * k,
                              static_cast<float>(in.green) * k, static_cast<float>(in.blue) * k};
            const Colour c = plain_view(GetParam(), unit, record_);
            ASSERT_EQ(out.alpha, plain_channel<std::uint16_t>(c.alpha, 32768.0f)) << i;
            ASSERT_EQ(out.red, plain_channel<std::uint16_t>(c.red, 32768.0f)) << i;
            ASSERT_EQ(out.green, plain_channel<std::uint16_t>(c.green, 32768.0f)) << i;
            ASSERT_EQ(out.blue, plain_channel<std::uint16_t>(c.blue, 32768.0f)) << i;
        }
    });
}

TEST_P(ViewCallbacksTest, float_equals_the_plain_conversion_hostile_values_included) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    const std::vector<float> values{0.0f, -0.0f, 0.3f,  1.0f, 1.2f,  7.99f,
                                    8.0f, -2.0f, 1e30f, kInf, -kInf, std::nanf("")};
    const auto same = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    const auto callback = view_callback_float(GetParam());
    std::mt19937 random(3);
    std::uniform_int_distribution<std::size_t> any(0, values.size() - 1);
    for_each_setting(kFormatF, [&] {
        for (int i = 0; i < 500; ++i) {
            PF_PixelFloat in{values[any(random)], values[any(random)], values[any(random)],
                             values[any(random)]};
            PF_PixelFloat out{};
            ASSERT_EQ(callback(&record_, 0, 0, &in, &out), 0);
            const Colour c = plain_view(GetParam(), {in.alpha, in.red, in.green, in.blue}, record_);
            ASSERT_TRUE(same(out.alpha, c.alpha)) << out.alpha << " " << c.alpha;
            ASSERT_TRUE(same(out.red, c.red)) << out.red << " " << c.red;
            ASSERT_TRUE(same(out.green, c.green)) << out.green << " " << c.green;
            ASSERT_TRUE(same(out.blue, c.blue)) << out.blue << " " << c.blue;
        }
    });
}

TEST_P(ViewCallbacksTest, in_place_gives_the_same_pixel) {
    set_up(kFormat8, 2.2, 1.1f, 1, 1);
    const auto callback = view_callback_8(GetParam());
    PF_Pixel in{10, 60, 130, 250};
    PF_Pixel out{};
    callback(&record_, 0, 0, &in, &out);
    callback(&record_, 0, 0, &in, &in);
    EXPECT_EQ(in.alpha, out.alpha);
    EXPECT_EQ(in.red, out.red);
    EXPECT_EQ(in.green, out.green);
    EXPECT_EQ(in.blue, out.blue);
}

INSTANTIATE_TEST_SUITE_P(AllModes, ViewCallbacksTest,
                         testing::Values(1, 2, 3, 4, 5, 6, 7, 8, 0, 9, -1, 2147483647));

TEST(ViewCallbacks, unlisted_modes_leave_every_8_bit_code_alone) {
    ConversionRecord record{};
    for (int i = 0; i < 256; ++i) {
        const auto c = static_cast<A_u_char>(i);
        PF_Pixel in{c, c, c, c};
        PF_Pixel out{};
        view_callback_8(99)(&record, 0, 0, &in, &out);
        EXPECT_EQ(out.alpha, c);
        EXPECT_EQ(out.blue, c);
    }
}

}  // namespace
}  // namespace ks
