// The oracle against values worked out by hand: pixels, plotting and the host's picture services.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "oracle/draw_oracle.h"
#include "oracle/host_oracle.h"
#include "oracle/pixel_oracle.h"

namespace ks::oracle {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Image byte_image(int width, int height, std::vector<std::uint8_t> bytes) {
    Image image = make_image(width, height, Depth::kByte);
    image.bytes8 = std::move(bytes);
    return image;
}

Colour view_of(const Colour &in, int view, double gamma = 1.0, double gain = 1.0, int math = 1,
               int apply_curve = 1) {
    return view_colour(in, {view, gamma, gain, math, apply_curve}, gamma_tables(gamma));
}

TEST(Conversion, truncates_and_clamps_only_at_the_top) {
    EXPECT_EQ(bytes_from_colour({0.0f, 0.5f, 1.0f, 1.5f}), (Bytes{0, 127, 255, 255}));
    EXPECT_EQ(words_from_colour({0.0f, 0.5f, 1.0f, 1.5f}), (Words{0, 16384, 32768, 32768}));
}

TEST(Conversion, negative_values_keep_their_low_bits) {
    EXPECT_EQ(bytes_from_colour({-0.5f, -0.001f, -1.0f, -2.0f}), (Bytes{129, 0, 1, 2}));
    EXPECT_EQ(words_from_colour({-0.5f, 0.0f, -1.0f, -2.0f}), (Words{49152, 0, 32768, 0}));
}

TEST(Conversion, non_finite_values_are_defined) {
    EXPECT_EQ(bytes_from_colour({kNan, kInf, -kInf, 1e30f}), (Bytes{0, 255, 0, 255}));
    EXPECT_EQ(words_from_colour({kNan, kInf, -kInf, 1e30f}), (Words{0, 32768, 0, 32768}));
}

TEST(Conversion, every_byte_and_word_comes_back) {
    for (int v = 0; v < 256; ++v) {
        const auto b = static_cast<std::uint8_t>(v);
        EXPECT_EQ(bytes_from_colour(colour_from_bytes({b, b, b, b}))[0], b);
    }
    for (int v = 0; v <= 32768; ++v) {
        const auto w = static_cast<std::uint16_t>(v);
        ASSERT_EQ(words_from_colour(colour_from_words({w, w, w, w}))[3], w);
    }
}

TEST(Conversion, words_to_bytes_truncate) {
    EXPECT_EQ(bytes_from_words({0, 16384, 32767, 32768}), (Bytes{0, 127, 254, 255}));
}

TEST(Gamma, values_outside_the_curve_pass_unchanged) {
    const GammaTables t = gamma_tables(2.0);
    EXPECT_EQ(gamma_lookup(t, 0.0f), 0.0f);
    EXPECT_EQ(gamma_lookup(t, -0.25f), -0.25f);
    EXPECT_EQ(gamma_lookup(t, 8.0f), 8.0f);
    EXPECT_EQ(gamma_lookup(t, 9.5f), 9.5f);
    EXPECT_EQ(gamma_lookup(t, kInf), kInf);
    EXPECT_TRUE(std::isnan(gamma_lookup(t, kNan)));
}

TEST(Gamma, lookup_of_one_reads_the_first_high_entry) {
    EXPECT_NEAR(gamma_lookup(gamma_tables(2.0), 1.0f), 1.015504801, 1e-6);  // sqrt(1.03125)
    EXPECT_EQ(gamma_lookup(gamma_tables(1.0), 1.0f), 1.03125f);
}

TEST(Gamma, lookup_scale_and_build_step_differ) {
    EXPECT_NEAR(gamma_lookup(gamma_tables(2.0), 0.5f), 0.707798, 1e-5);   // sqrt(256 / 511)
    EXPECT_NEAR(gamma_lookup(gamma_tables(2.0), 0.001f), 0.0, 0.0);       // entry 0
    EXPECT_NEAR(gamma_lookup(gamma_tables(2.0), 1.5f), 1.237437, 1e-6);   // sqrt(1 + 17 / 32)
    EXPECT_NEAR(gamma_lookup(gamma_tables(2.0), 7.99f), 2.828427, 1e-6);  // sqrt(1 + 224 / 32)
}

TEST(Gamma, gamma_one_rebuilds_the_linear_tables) {
    EXPECT_EQ(gamma_tables(1.0), linear_tables());
}

TEST(Luma, weights_by_popup_value) {
    const Colour colour{1.0f, 1.0f, 0.5f, 0.25f};
    EXPECT_NEAR(luma(colour, 1), 0.621, 1e-6);
    EXPECT_NEAR(luma(colour, 2), 0.58825, 1e-6);
    for (const int other : {0, 3, -1, 255}) EXPECT_EQ(luma(colour, other), luma(colour, 1));
}

TEST(View, rgb_takes_curve_and_gain) {
    const Colour out = view_of({0.25f, 1.5f, 0.5f, -1.0f}, 1, 2.0, 0.5);
    EXPECT_EQ(out[0], 0.25f);
    EXPECT_NEAR(out[1], 0.6187184, 1e-6);
    EXPECT_NEAR(out[2], 0.353899, 1e-6);
    EXPECT_EQ(out[3], -0.5f);
}

TEST(View, alpha_of_a_transparent_pixel_is_opaque_black) {
    EXPECT_EQ(view_of({0.0f, 0.3f, 0.6f, 0.9f}, 2, 2.2, 3.0), (Colour{1.0f, 0.0f, 0.0f, 0.0f}));
}

TEST(View, luminance_takes_curve_and_gain_only_when_asked) {
    const Colour in{0.5f, 1.0f, 0.5f, 0.25f};
    EXPECT_NEAR(view_of(in, 3, 1.0, 2.0, 1, 2)[1], 0.621, 1e-6);
    // 0.621 * 512 = 317.9, entry 317 of 511, twice.
    EXPECT_NEAR(view_of(in, 3, 1.0, 2.0, 1, 1)[2], 1.240705, 1e-5);
    EXPECT_EQ(view_of(in, 3, 1.0, 2.0, 1, 1)[0], 0.5f);
}

TEST(View, channel_views_ignore_gamma_and_gain) {
    const Colour in{0.5f, 0.1f, 0.2f, 0.3f};
    EXPECT_EQ(view_of(in, 4, 3.0, 4.0), (Colour{0.5f, 0.1f, 0.1f, 0.1f}));
    EXPECT_EQ(view_of(in, 5, 3.0, 4.0), (Colour{0.5f, 0.2f, 0.2f, 0.2f}));
    EXPECT_EQ(view_of(in, 6, 3.0, 4.0), (Colour{0.5f, 0.3f, 0.3f, 0.3f}));
}

TEST(View, colour_differences_have_their_own_scales) {
    const Colour red{1.0f, 1.0f, 0.0f, 0.0f};
    EXPECT_NEAR(view_of(red, 7)[1], 0.3505, 1e-6);
    EXPECT_NEAR(view_of(red, 8)[1], 0.9206, 1e-6);
    EXPECT_NEAR(view_of(red, 7, 1.0, 1.0, 2)[1], 0.3937, 1e-6);
    EXPECT_NEAR(view_of(red, 8, 1.0, 1.0, 2)[1], 0.97244, 1e-6);
}

TEST(View, colour_differences_of_grey_are_one_half) {
    for (const float grey : {0.0f, 0.25f, 0.5f, 1.0f}) {
        EXPECT_NEAR(view_of({1.0f, grey, grey, grey}, 7)[1], 0.5, 1e-6);
        EXPECT_NEAR(view_of({1.0f, grey, grey, grey}, 8)[3], 0.5, 1e-6);
    }
}

TEST(View, unknown_modes_copy_the_pixel) {
    const Colour in{0.5f, 0.1f, 0.2f, 3.0f};
    for (const int view : {0, 9, -1, 1000}) EXPECT_EQ(view_of(in, view, 2.0, 2.0), in);
}

TEST(View, byte_picture_goes_through_the_tables_and_truncates) {
    const Image in = byte_image(1, 1, {255, 200, 100, 50});
    // Entries 401, 200 and 100 of 511, twice: 255 (clamped), 199.6, 99.8.
    EXPECT_EQ(convert_view(in, 1, 1.0, 2.0, 1, 1).bytes8,
              (std::vector<std::uint8_t>{255, 255, 199, 99}));
    // Luma 124.2 of 255 reads entry 249 of 511: 124.26, doubled 248.51.
    EXPECT_EQ(convert_view(in, 3, 1.0, 2.0, 1, 1).bytes8,
              (std::vector<std::uint8_t>{255, 248, 248, 248}));
}

TEST(View, word_picture_keeps_full_scale) {
    Image in = make_image(1, 1, Depth::kWord);
    in.words16 = {32768, 32768, 16384, 0};
    EXPECT_EQ(convert_view(in, 4, 1.0, 1.0, 1, 1).words16,
              (std::vector<std::uint16_t>{32768, 32768, 32768, 32768}));
    EXPECT_EQ(convert_view(in, 5, 1.0, 1.0, 1, 1).words16,
              (std::vector<std::uint16_t>{32768, 16384, 16384, 16384}));
}

TEST(Plot, over_blends_and_additive_adds) {
    Image image = byte_image(2, 1, {255, 101, 101, 101, 255, 101, 101, 101});
    plot(image, 0, 0, {0.75f, 1.0f, 0.0f, 0.0f}, kPlotOver);
    plot(image, 1, 0, {0.5f, 0.5f, 0.7f, 0.0f}, kPlotAdditive);
    EXPECT_EQ(image.bytes8, (std::vector<std::uint8_t>{255, 216, 25, 25, 255, 228, 255, 101}));
}

TEST(Plot, float_is_limited_only_with_the_mode_bit_but_alpha_always) {
    Image image = make_image(2, 1, Depth::kFloat);
    plot(image, 0, 0, {1.5f, 3.0f, 0.0f, 0.0f}, kPlotAdditive);
    plot(image, 1, 0, {1.5f, 3.0f, 0.0f, 0.0f}, kPlotAdditive | kPlotLimitFloat);
    EXPECT_EQ(image.floats, (std::vector<float>{1, 3, 0, 0, 1, 1, 0, 0}));
}

TEST(Plot, fractional_position_splits_between_neighbours) {
    const Colour white{1.0f, 1.0f, 1.0f, 1.0f};
    Image image = make_image(4, 3, Depth::kFloat);
    plot_fractional(image, 1.5, 0, white, kPlotAdditive);
    plot_fractional(image, 1.75, 1, white, kPlotAdditive);
    plot_fractional(image, 2.25, 2, white, kPlotAdditive);
    const auto red = [&](int x, int y) { return stored_pixel(image, x, y)[1]; };
    EXPECT_EQ(red(0, 0) + red(2, 0) + red(3, 0), 0.0);
    EXPECT_EQ(red(1, 0), 1.0);
    EXPECT_EQ(red(1, 1), 0.75);
    EXPECT_EQ(red(2, 1), 0.25);
    EXPECT_EQ(red(1, 2), 0.25);
    EXPECT_EQ(red(2, 2), 0.75);
}

TEST(Line, both_ends_are_drawn_in_either_order) {
    Image image = make_image(1, 5, Depth::kFloat);
    draw_line(image, 0, 3, 0, 1, {1, 1, 1, 1}, kPlotAdditive);
    std::string column;
    for (int y = 0; y < 5; ++y) column += stored_pixel(image, 0, y)[1] > 0 ? 'x' : '.';
    EXPECT_EQ(column, ".xxx.");
}

TEST(DashedLine, walks_dash_then_gap_inclusive_and_clips) {
    Image image = make_image(12, 1, Depth::kFloat);
    draw_dashed_line(image, 14, 0, -1, 0, 4, 5, {1, 0, 1, 0}, kPlotOver);
    draw_dashed_line(image, 0, 0, 3, 3, 4, 5, {1, 1, 0, 0}, kPlotOver);
    draw_dashed_line(image, 0, 0, 11, 0, 0, 1, {1, 1, 0, 0}, kPlotOver);
    std::string row;
    for (int x = 0; x < 12; ++x) row += stored_pixel(image, x, 0)[2] > 0 ? 'x' : '.';
    EXPECT_EQ(row, "xxx.....xxxx");
    EXPECT_EQ(stored_pixel(image, 0, 0)[1], 0.0);
}

TEST(Outline, is_two_pixels_inward_and_blends_each_pixel_once) {
    Image image = make_image(6, 6, Depth::kFloat);
    draw_outline(image, {0, 0, 6, 6}, 2, {0.75f, 1.0f, 0.0f, 0.0f});
    EXPECT_EQ(stored_pixel(image, 0, 0)[1], 0.75);
    EXPECT_EQ(stored_pixel(image, 1, 3)[1], 0.75);
    EXPECT_EQ(stored_pixel(image, 2, 2)[1], 0.0);
    EXPECT_EQ(stored_pixel(image, 4, 3)[0], 0.75);
    EXPECT_EQ(stored_pixel(image, 3, 3)[1], 0.0);
    EXPECT_EQ(stored_pixel(image, 3, 4)[1], 0.75);
}

TEST(HostFill, converts_the_colour_to_the_depth) {
    Image words = make_image(2, 1, Depth::kWord);
    Image floats = make_image(1, 1, Depth::kFloat);
    host_fill(words, {255, 30, 30, 30}, Rect{1, -5, 9, 9});
    host_fill(floats, {255, 30, 0, 255}, std::nullopt);
    EXPECT_EQ(words.words16, (std::vector<std::uint16_t>{0, 0, 0, 0, 32768, 3855, 3855, 3855}));
    EXPECT_EQ(floats.floats,
              (std::vector<float>{1.0f, static_cast<float>(30 / 255.0), 0.0f, 1.0f}));
}

TEST(HostTransferRect, composites_straight_alpha_in_front) {
    const Image source = byte_image(3, 1, {128, 255, 0, 0, 0, 9, 9, 9, 255, 1, 2, 3});
    Image target = byte_image(3, 1, {255, 0, 0, 0, 255, 7, 7, 7, 10, 200, 200, 200});
    host_transfer_rect(source, {0, 0, 99, 99}, {}, 0, 0, target);
    EXPECT_EQ(target.bytes8,
              (std::vector<std::uint8_t>{255, 128, 0, 0, 255, 7, 7, 7, 255, 1, 2, 3}));
}

TEST(HostTransferRect, transparent_target_takes_the_source_colour) {
    const Image source = byte_image(1, 1, {100, 200, 50, 25});
    Image target = byte_image(1, 1, {0, 255, 255, 255});
    host_transfer_rect(source, {0, 0, 1, 1}, {}, 0, 0, target);
    EXPECT_EQ(target.bytes8, source.bytes8);
}

TEST(HostTransferRect, clips_negative_positions_and_reads_the_opacity_of_its_depth) {
    Image source = make_image(2, 1, Depth::kWord);
    source.words16 = {32768, 1, 1, 1, 32768, 32768, 32768, 0};
    Image target = make_image(2, 1, Depth::kWord);
    target.words16 = {32768, 0, 0, 0, 32768, 5, 5, 5};
    host_transfer_rect(source, {0, 0, 2, 1}, {0, 16384}, -1, 0, target);
    EXPECT_EQ(target.words16, (std::vector<std::uint16_t>{32768, 16384, 16384, 0, 32768, 5, 5, 5}));
}

TEST(HostTransformWorld, nearest_takes_the_pixel_under_the_centre) {
    const Image source = byte_image(2, 1, {255, 10, 0, 0, 255, 20, 0, 0});
    Image target = make_image(6, 1, Depth::kByte);
    host_transform_world(source, Quality::kNearest, {0.5, 1.0, -0.5, 0.0}, {0, 0, 6, 1}, target);
    std::vector<int> reds;
    for (int x = 0; x < 6; ++x) reds.push_back(static_cast<int>(stored_pixel(target, x, 0)[1]));
    EXPECT_EQ(reds, (std::vector<int>{0, 10, 10, 20, 20, 0}));
}

TEST(HostTransformWorld, bilinear_blends_and_fades_into_transparency) {
    const Image source = byte_image(2, 1, {255, 0, 0, 0, 255, 100, 100, 100});
    Image target = make_image(4, 1, Depth::kByte);
    host_transform_world(source, Quality::kBilinear, {0.5, 1.0, 0.0, 0.0}, {0, 0, 4, 1}, target);
    EXPECT_EQ(target.bytes8, (std::vector<std::uint8_t>{191, 0, 0, 0, 255, 25, 25, 25, 255, 75, 75,
                                                        75, 191, 100, 100, 100}));
}

TEST(HostTransformWorld, bilinear_weights_colour_by_alpha) {
    const Image source = byte_image(2, 1, {0, 255, 255, 255, 255, 100, 100, 100});
    Image target = make_image(1, 1, Depth::kByte);
    host_transform_world(source, Quality::kBilinear, {2.0, 1.0, 0.0, 0.0}, {0, 0, 1, 1}, target);
    EXPECT_EQ(target.bytes8, (std::vector<std::uint8_t>{128, 100, 100, 100}));
}

TEST(HostTransformWorld, degenerate_matrix_draws_nothing) {
    const Image source = byte_image(1, 1, {255, 9, 9, 9});
    Image target = make_image(2, 2, Depth::kByte);
    const double inf = std::numeric_limits<double>::infinity();
    host_transform_world(source, Quality::kBilinear, {inf, inf, -inf, -inf}, {0, 0, 2, 2}, target);
    EXPECT_EQ(target.bytes8, make_image(2, 2, Depth::kByte).bytes8);
}

TEST(HostCopy, equal_sizes_are_exact_and_others_stretch) {
    const Image source = byte_image(2, 1, {0, 10, 20, 30, 255, 110, 120, 130});
    Image same = make_image(2, 1, Depth::kByte);
    Image wide = make_image(4, 1, Depth::kByte);
    host_copy(source, same, Quality::kBilinear);
    host_copy(source, wide, Quality::kNearest);
    EXPECT_EQ(same.bytes8, source.bytes8);
    EXPECT_EQ(wide.bytes8, (std::vector<std::uint8_t>{0, 10, 20, 30, 0, 10, 20, 30, 255, 110, 120,
                                                      130, 255, 110, 120, 130}));
}

}  // namespace
}  // namespace ks::oracle
