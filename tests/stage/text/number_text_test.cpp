// Numbers and colours as text.
#include "stage/text/number_text.h"

#include <gtest/gtest.h>

namespace {

TEST(NumberText, has_ten_digits_and_no_idle_ones) {
    EXPECT_EQ(stage::number_text(0.1), "0.1");
    EXPECT_EQ(stage::number_text(-200), "-200");
    EXPECT_EQ(stage::number_text(1.0 / 3), "0.3333333333");
    EXPECT_EQ(stage::number_text(double{0.1f}), "0.1000000015");
    EXPECT_EQ(stage::number_text(1e20), "1e+20");
    EXPECT_EQ(stage::number_text(2.5e-7), "2.5e-07");
}

TEST(ColorText, has_two_digits_for_each_channel) {
    EXPECT_EQ(stage::color_text(0x0a0bff), "#0a0bff");
    EXPECT_EQ(stage::color_text(0xff000001), "#000001") << "alpha is left out";
}

}  // namespace
