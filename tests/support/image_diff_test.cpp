#include "support/image_diff.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

#include "support/paths.h"

namespace ks::test_support {
namespace {

using oracle::Depth;
using oracle::Image;
using oracle::make_image;

std::string file_bytes(const std::string &name) {
    std::ifstream stream(std::filesystem::path(paths::build()) / "image-diff" / name,
                         std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

TEST(ImageDiff, equal_pictures_pass) {
    EXPECT_TRUE(
        images_equal("equal", make_image(3, 2, Depth::kWord), make_image(3, 2, Depth::kWord)));
}

TEST(ImageDiff, shape_and_depth_count) {
    const Image image = make_image(3, 2, Depth::kByte);
    EXPECT_FALSE(images_equal("shape", image, make_image(2, 3, Depth::kByte)));
    EXPECT_FALSE(images_equal("shape", image, make_image(3, 2, Depth::kWord)));
}

TEST(ImageDiff, reports_count_places_greatest_and_sum) {
    const Image expected = make_image(4, 2, Depth::kByte);
    Image actual = expected;
    oracle::store_pixel(actual, 2, 1, {0, 5, 0, 2});
    oracle::store_pixel(actual, 3, 1, {1, 0, 0, 0});
    const Difference found = measure_difference(expected, actual, 0.0);
    EXPECT_EQ(found.count, 3u);
    EXPECT_EQ(found.greatest, 5.0);
    EXPECT_EQ(found.sum, 8.0);
    ASSERT_EQ(found.first.size(), 2u);
    EXPECT_EQ(found.first[0], "at (2, 1): expected (0, 0, 0, 0), is (0, 5, 0, 2)");
    EXPECT_EQ(measure_difference(expected, actual, 2.0).count, 1u);
}

TEST(ImageDiff, failure_writes_three_pictures) {
    const Image expected = make_image(2, 1, Depth::kByte);
    Image actual = expected;
    oracle::store_pixel(actual, 1, 0, {0, 4, 2, 0});
    const auto result = images_equal("writes three", expected, actual);
    ASSERT_FALSE(result);
    const std::string message = result.message();
    for (const char *part :
         {"writes_three-expected.ppm", "writes_three-actual.ppm", "writes_three-difference.ppm"}) {
        EXPECT_NE(message.find(part), std::string::npos) << part;
    }
    const std::string head = "P6\n2 1\n255\n";
    EXPECT_EQ(file_bytes("writes_three-expected.ppm"), head + std::string(6, '\0'));
    EXPECT_EQ(file_bytes("writes_three-actual.ppm"), head + std::string("\0\0\0\x04\x02\0", 6));
    EXPECT_EQ(file_bytes("writes_three-difference.ppm"), head + std::string("\0\0\0\xFF\x7F\0", 6));
}

TEST(ImageDiff, deep_pictures_keep_their_values_in_the_files) {
    Image words = make_image(1, 1, Depth::kWord);
    words.words16 = {32768, 32768, 1, 0};
    ASSERT_FALSE(images_equal("deep", words, make_image(1, 1, Depth::kWord)));
    EXPECT_EQ(file_bytes("deep-expected.ppm"),
              "P6\n1 1\n32768\n" + std::string("\x80\0\0\x01\0\0", 6));
    Image floats = make_image(1, 2, Depth::kFloat);
    floats.floats = {1, 1, 0, 0, 1, 0, 0, 2};
    ASSERT_FALSE(images_equal("float", floats, make_image(1, 2, Depth::kFloat)));
    const std::string one("\0\0\x80\x3F", 4);
    const std::string two("\0\0\0\x40", 4);
    EXPECT_EQ(file_bytes("float-expected.pfm"),
              "PF\n1 2\n-1.0\n" + std::string(8, '\0') + two + one + std::string(8, '\0'));
}

TEST(ImageDiff, nan_equals_nan_and_nothing_else) {
    Image nan = make_image(1, 1, Depth::kFloat);
    nan.floats[1] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(images_equal("nan", nan, nan));
    EXPECT_FALSE(images_near("nan", nan, make_image(1, 1, Depth::kFloat), {1e30, "a test of NaN"}));
}

TEST(ImageDiff, tolerance_needs_a_reason) {
    Image near = make_image(1, 1, Depth::kByte);
    near.bytes8[2] = 1;
    const Image image = make_image(1, 1, Depth::kByte);
    EXPECT_FALSE(images_near("reason", image, image, {1.0, ""}));
    EXPECT_TRUE(images_near("reason", image, near, {1.0, "interpolation rounds"}));
    EXPECT_FALSE(images_near("reason", image, near, {0.5, "interpolation rounds"}));
}

}  // namespace
}  // namespace ks::test_support
