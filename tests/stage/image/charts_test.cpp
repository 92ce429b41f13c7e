#include "stage/image/charts/charts.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

#include "stage/image/scratch.h"

namespace stage::test {
namespace {

void expect_rgb(const Picture &picture, int x, int y, float red, float green, float blue) {
    const float *pixel = picture.at(x, y);
    EXPECT_EQ(pixel[0], 1.0f);
    EXPECT_EQ(pixel[1], red) << x << "," << y;
    EXPECT_EQ(pixel[2], green) << x << "," << y;
    EXPECT_EQ(pixel[3], blue) << x << "," << y;
}

TEST(Charts, names_are_unique_and_the_first_is_the_test_card) {
    std::set<std::string_view> names;
    for (const Chart &chart : charts()) {
        EXPECT_TRUE(names.insert(chart.name).second) << chart.name;
        EXPECT_FALSE(chart.description.empty());
    }
    EXPECT_EQ(charts()[0].name, "test-card");
}

TEST(Charts, all_are_opaque_at_any_size) {
    const std::array<std::array<int, 2>, 6> sizes = {
        {{1, 1}, {2, 1}, {1, 7}, {13, 5}, {64, 3}, {321, 200}}};
    for (const Chart &chart : charts()) {
        for (const auto &[width, height] : sizes) {
            const Picture picture = draw_chart(chart.name, width, height);
            ASSERT_EQ(picture.width, width);
            ASSERT_EQ(picture.height, height);
            ASSERT_EQ(picture.argb.size(), static_cast<std::size_t>(width * height * 4));
            for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
                ASSERT_EQ(picture.argb[i], 1.0f) << chart.name;
                for (std::size_t c = 1; c < 4; ++c) {
                    ASSERT_GE(picture.argb[i + c], -0.25f) << chart.name;
                    ASSERT_LE(picture.argb[i + c], 2.0f) << chart.name;
                }
            }
        }
    }
}

TEST(Charts, default_size_is_full_hd) {
    const Picture picture = draw_chart("ramp");
    EXPECT_EQ(picture.width, 1920);
    EXPECT_EQ(picture.height, 1080);
}

TEST(Charts, bars_run_from_white_to_black_at_their_level) {
    constexpr std::array<std::array<float, 3>, 8> kBars = {
        {{1, 1, 1}, {1, 1, 0}, {0, 1, 1}, {0, 1, 0}, {1, 0, 1}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0}}};
    const std::array<std::pair<const char *, float>, 2> levels = {
        {{"bars75", 0.75f}, {"bars100", 1.0f}}};
    for (const auto &[name, level] : levels) {
        const Picture picture = draw_chart(name, 80, 2);
        for (int bar = 0; bar < 8; ++bar) {
            const auto &lit = kBars[static_cast<std::size_t>(bar)];
            for (const int x : {bar * 10, bar * 10 + 9}) {
                expect_rgb(picture, x, 1, lit[0] * level, lit[1] * level, lit[2] * level);
            }
        }
    }
}

TEST(Charts, ramp_reaches_both_ends) {
    const Picture picture = draw_chart("ramp", 256, 2);
    for (int x = 0; x < 256; ++x) {
        const float value = static_cast<float>(x) / 255.0f;
        expect_rgb(picture, x, 1, value, value, value);
    }
}

TEST(Charts, ramps_are_red_green_blue_and_grey) {
    const Picture picture = draw_chart("ramps", 11, 8);
    expect_rgb(picture, 5, 0, 0.5f, 0, 0);
    expect_rgb(picture, 5, 3, 0, 0.5f, 0);
    expect_rgb(picture, 10, 5, 0, 0, 1);
    expect_rgb(picture, 5, 7, 0.5f, 0.5f, 0.5f);
}

TEST(Charts, grey_steps_are_tenths) {
    const Picture picture = draw_chart("grey-steps", 110, 1);
    for (int step = 0; step <= 10; ++step) {
        const float value = static_cast<float>(step) / 10.0f;
        expect_rgb(picture, step * 10, 0, value, value, value);
        expect_rgb(picture, step * 10 + 9, 0, value, value, value);
    }
}

TEST(Charts, over_range_runs_from_minus_a_quarter_to_two) {
    const Picture picture = draw_chart("over-range", 10, 1);
    expect_rgb(picture, 0, 0, -0.25f, -0.25f, -0.25f);
    expect_rgb(picture, 1, 0, 0.0f, 0.0f, 0.0f);
    expect_rgb(picture, 9, 0, 2.0f, 2.0f, 2.0f);
}

TEST(Charts, skin_patches_darken_on_a_neutral_surround) {
    const Picture picture = draw_chart("skin", 600, 200);
    expect_rgb(picture, 0, 0, 0.46f, 0.46f, 0.46f);
    float last = 1.0f;
    for (int patch = 0; patch < 12; ++patch) {
        const float *pixel = picture.at(patch % 6 * 100 + 50, patch / 6 * 100 + 50);
        EXPECT_GT(pixel[1], pixel[2]);
        EXPECT_GT(pixel[2], pixel[3]);
        EXPECT_LT(pixel[1], last);
        last = pixel[1];
    }
}

TEST(Charts, zone_plate_is_white_in_the_middle_and_mirrored) {
    const Picture picture = draw_chart("zone", 201, 101);
    expect_rgb(picture, 100, 50, 1, 1, 1);
    for (int x = 0; x < 100; ++x) EXPECT_EQ(picture.at(x, 20)[1], picture.at(200 - x, 80)[1]);
}

TEST(Charts, test_card_holds_its_bands) {
    const Picture card = draw_chart("test-card", 960, 540);
    expect_rgb(card, 10, 100, 0.75f, 0.75f, 0.75f);  // 75 % bars
    expect_rgb(card, 130, 100, 0.75f, 0.75f, 0.0f);
    expect_rgb(card, 130, 210, 0.0f, 0.0f, 1.0f);  // 100 % bars the other way round
    expect_rgb(card, 959, 230, 1.0f, 0.0f, 0.0f);  // red ramp
    expect_rgb(card, 959, 340, 1.0f, 1.0f, 1.0f);  // last grey step
    expect_rgb(card, 1, 400, 247.0f / 255.0f, 226.0f / 255.0f, 209.0f / 255.0f);
    expect_rgb(card, 0, 460, 0.9f, 0.9f, 0.9f);  // finest grating
    expect_rgb(card, 1, 460, 0.1f, 0.1f, 0.1f);
    expect_rgb(card, 640, 500, 1.0f, 0.0f, 0.0f);  // hues from red to red
    expect_rgb(card, 959, 500, 1.0f, 0.0f, 0.0f);
    const float *circle = card.at(480, 21);  // top of the circle
    EXPECT_GT(circle[2], 0.6f);
}

TEST(Charts, an_unknown_name_lists_the_known_ones) {
    const std::string message = error_of([] { draw_chart("smpte"); });
    EXPECT_EQ(message,
              "there is no chart \"smpte\": choose one of test-card, bars75, bars100, ramp, ramps, "
              "grey-steps, skin, over-range, zone");
}

TEST(Charts, sides_that_no_picture_has_are_refused) {
    for (const Chart &chart : charts()) {
        EXPECT_THROW(draw_chart(chart.name, 0, 10), PictureError) << chart.name;
        EXPECT_THROW(draw_chart(chart.name, 10, 30001), PictureError) << chart.name;
    }
}

}  // namespace
}  // namespace stage::test
