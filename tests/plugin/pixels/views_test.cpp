// The eight monitor views on float pixels, against plain formulas.
#include "pixels/views.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace ks {
namespace {

class ViewsTest : public testing::Test {
  protected:
    ViewsTest() : tables_(kCurveEntries, 0.0f) {
        build_gamma_tables(tables_.data(), 2.0, std::pow);
        record_.apply_curve = kCurveOnLuma;
        record_.low_table = tables_.data();
        record_.high_table = tables_.data() + kRampEntries;
        record_.gain = 1.5f;
        record_.pixel_format = kFormatF;
        record_.luma_math = LumaMath::k601;
    }

    template <View V>
    Colour view(const Colour &in) const {
        return colour_of(convert_view<V>(lanes_of(in), record_));
    }
    float curve(float v) const { return gamma_curve(v, record_.low_table, record_.high_table); }

    static void expect_grey(const Colour &c, float alpha, float value) {
        EXPECT_EQ(c.alpha, alpha);
        EXPECT_EQ(c.red, value);
        EXPECT_EQ(c.green, value);
        EXPECT_EQ(c.blue, value);
    }

    std::vector<float> tables_;
    ConversionRecord record_{};
    const Colour in_{0.6f, 0.25f, 0.5f, 1.25f};
};

TEST_F(ViewsTest, rgb_takes_curve_and_gain_and_keeps_alpha) {
    const Colour c = view<View::kRgb>(in_);
    EXPECT_EQ(c.alpha, 0.6f);
    EXPECT_EQ(c.red, curve(0.25f) * 1.5f);
    EXPECT_EQ(c.green, curve(0.5f) * 1.5f);
    EXPECT_EQ(c.blue, curve(1.25f) * 1.5f);
}

TEST_F(ViewsTest, rgb_keeps_a_nan_alpha_out_of_the_colours) {
    const Colour c = view<View::kRgb>({std::nanf(""), 0.5f, 0.5f, 0.5f});
    EXPECT_TRUE(std::isnan(c.alpha));
    EXPECT_EQ(c.red, curve(0.5f) * 1.5f);
}

TEST_F(ViewsTest, alpha_takes_curve_and_gain_and_is_opaque) {
    expect_grey(view<View::kAlpha>(in_), 1.0f, curve(0.6f) * 1.5f);
}

TEST_F(ViewsTest, alpha_of_a_transparent_pixel_is_opaque_black) {
    expect_grey(view<View::kAlpha>({0.0f, 1.0f, 1.0f, 1.0f}), 1.0f, 0.0f);
}

TEST_F(ViewsTest, luminance_601_goes_through_curve_and_gain) {
    const float luma = 0.299f * 0.25f + 0.587f * 0.5f + 0.114f * 1.25f;
    expect_grey(view<View::kLuminance>(in_), 0.6f, curve(luma) * 1.5f);
}

TEST_F(ViewsTest, luminance_709_has_its_own_weights) {
    record_.luma_math = LumaMath::k709;
    const float luma = 0.2126f * 0.25f + 0.7152f * 0.5f + 0.0722f * 1.25f;
    expect_grey(view<View::kLuminance>(in_), 0.6f, curve(luma) * 1.5f);
}

TEST_F(ViewsTest, every_other_luminance_math_value_means_601) {
    const float luma = 0.299f * 0.25f + 0.587f * 0.5f + 0.114f * 1.25f;
    for (const int value : {0, 1, 3, 255}) {
        EXPECT_EQ(luminance(in_, luma_math_of(value)), luma) << value;
    }
}

TEST_F(ViewsTest, luminance_of_the_tiles_is_raw) {
    for (const int value : {0, 2, 255}) {
        record_.apply_curve = static_cast<std::uint8_t>(value);
        expect_grey(view<View::kLuminance>(in_), 0.6f, luminance(in_, LumaMath::k601));
    }
}

TEST_F(ViewsTest, channel_views_ignore_gamma_and_gain) {
    expect_grey(view<View::kRed>(in_), 0.6f, 0.25f);
    expect_grey(view<View::kGreen>(in_), 0.6f, 0.5f);
    expect_grey(view<View::kBlue>(in_), 0.6f, 1.25f);
}

TEST_F(ViewsTest, cb_adds_one_and_halves) {
    const float luma = luminance(in_, LumaMath::k601);
    expect_grey(view<View::kCb>(in_), 0.6f, (1.25f - luma + 1.0f) * 0.5f);
}

TEST_F(ViewsTest, cr_scales_by_0_6_and_then_adds_a_half) {
    const float luma = luminance(in_, LumaMath::k601);
    expect_grey(view<View::kCr>(in_), 0.6f, (0.25f - luma) * 0.6f + 0.5f);
}

TEST_F(ViewsTest, neutral_grey_is_in_the_middle_of_cb_and_cr) {
    for (int i = 0; i <= 100; ++i) {
        const float v = static_cast<float>(i) * 0.01f;
        // The weights add up to 1 only to within rounding.
        EXPECT_NEAR(view<View::kCb>({1.0f, v, v, v}).red, 0.5f, 1e-7f);
        EXPECT_NEAR(view<View::kCr>({1.0f, v, v, v}).red, 0.5f, 1e-7f);
    }
}

TEST_F(ViewsTest, unlisted_views_copy_the_pixel) {
    const Colour c = view<View::kUnchanged>(in_);
    EXPECT_EQ(c.alpha, in_.alpha);
    EXPECT_EQ(c.red, in_.red);
    EXPECT_EQ(c.green, in_.green);
    EXPECT_EQ(c.blue, in_.blue);
}

TEST_F(ViewsTest, channel_views_need_no_tables) {
    record_.low_table = nullptr;
    record_.high_table = nullptr;
    record_.apply_curve = kRawLuma;
    EXPECT_EQ(view<View::kRed>(in_).blue, 0.25f);
    EXPECT_EQ(view<View::kLuminance>(in_).blue, luminance(in_, LumaMath::k601));
}

TEST_F(ViewsTest, nan_gain_makes_colours_nan_and_leaves_alpha) {
    record_.gain = std::nanf("");
    const Colour c = view<View::kRgb>(in_);
    EXPECT_EQ(c.alpha, 0.6f);
    EXPECT_TRUE(std::isnan(c.green));
}

}  // namespace
}  // namespace ks
