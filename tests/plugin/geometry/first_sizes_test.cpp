#include "geometry/first_sizes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr auto kWide = ks::ScopeSizeRule::kWidthTimesAspect;
constexpr auto kSquare = ks::ScopeSizeRule::kSquare;

TEST(FirstSizes, of_a_full_hd_layer) {
    const ks::FirstSize wide = ks::first_size(kWide, 1920, {1, 1});
    EXPECT_EQ(wide.least, 200.0F);
    EXPECT_EQ(wide.most, 960.0F);
    EXPECT_EQ(wide.value, 450.0);
    const ks::FirstSize square = ks::first_size(kSquare, 1920, {1, 1});
    EXPECT_EQ(square.least, 150.0F);
    EXPECT_EQ(square.most, 960.0F);
    EXPECT_EQ(square.value, 450.0);
}

TEST(FirstSizes, least_is_capped_at_200_and_150) {
    EXPECT_EQ(ks::first_size(kWide, 999, {1, 1}).least, 200.0F);
    EXPECT_EQ(ks::first_size(kWide, 1000, {1, 1}).least, 200.0F);
    EXPECT_EQ(ks::first_size(kWide, 1001, {1, 1}).least, 200.0F);
    EXPECT_EQ(ks::first_size(kWide, 995, {1, 1}).least, 199.0F);
    EXPECT_EQ(ks::first_size(kSquare, 993, {1, 1}).least, 149.0F);
    EXPECT_EQ(ks::first_size(kSquare, 1000, {1, 1}).least, 150.0F);
    EXPECT_EQ(ks::first_size(kSquare, 30000, {1, 1}).least, 150.0F);
}

TEST(FirstSizes, ends_are_rounded_up_and_whole_products_stay) {
    EXPECT_EQ(ks::first_size(kWide, 641, {1, 1}).most, 321.0F);
    EXPECT_EQ(ks::first_size(kWide, 641, {1, 1}).least, 129.0F);
    EXPECT_EQ(ks::first_size(kSquare, 641, {1, 1}).least, 97.0F);
    for (int width = 20; width <= 980; width += 20) {
        EXPECT_EQ(ks::first_size(kWide, width, {1, 1}).least, static_cast<float>(width / 5));
        EXPECT_EQ(ks::first_size(kSquare, width, {1, 1}).least, static_cast<float>(width * 3 / 20));
    }
}

TEST(FirstSizes, value_is_15_64ths_of_the_width_in_square_pixels) {
    EXPECT_EQ(ks::first_size(kWide, 64, {1, 1}).value, 15.0);
    EXPECT_EQ(ks::first_size(kWide, 64, {2, 1}).value, 30.0);
    EXPECT_EQ(ks::first_size(kSquare, 100, {1, 2}).value, 11.71875);
}

TEST(FirstSizes, value_is_computed_in_single_precision) {
    // 720 pixels of 10/11: the ratio and the product are rounded to 24 bits.
    const float ratio = 10.0F / 11.0F;
    const float expected = ratio * 720.0F * 0.234375F;
    const double exact = 720.0 * 10.0 / 11.0 * 0.234375;
    EXPECT_EQ(ks::first_size(kWide, 720, {10, 11}).value, static_cast<double>(expected));
    EXPECT_NE(ks::first_size(kWide, 720, {10, 11}).value, exact);
}

TEST(FirstSizes, pixel_aspect_moves_the_value_alone) {
    const ks::FirstSize plain = ks::first_size(kWide, 720, {1, 1});
    const ks::FirstSize squeezed = ks::first_size(kWide, 720, {2, 1});
    EXPECT_EQ(squeezed.least, plain.least);
    EXPECT_EQ(squeezed.most, plain.most);
    EXPECT_EQ(squeezed.value, plain.value * 2.0);
}

TEST(FirstSizes, pixel_aspects_of_foreign_hosts_count_as_1) {
    for (ks::Ratio bad : {ks::Ratio{1, 0}, ks::Ratio{0, 1}, ks::Ratio{-1, 1}, ks::Ratio{0, 0}}) {
        EXPECT_EQ(ks::first_size(kWide, 1920, bad).value, 450.0);
    }
}

TEST(FirstSizes, layer_without_width_is_survived) {
    const ks::FirstSize none = ks::first_size(kSquare, 0, {1, 1});
    EXPECT_EQ(none.least, 0.0F);
    EXPECT_EQ(none.most, 0.0F);
    EXPECT_EQ(none.value, 0.0);
    EXPECT_TRUE(std::isfinite(ks::first_size(kWide, 2147483647, {2147483647, 1}).value));
}

}  // namespace
