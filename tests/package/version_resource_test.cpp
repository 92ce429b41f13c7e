#include "stage/binary/version_resource.h"

#include <gtest/gtest.h>

#include "package/binary_fixtures.h"
#include "stage/binary/byte_view.h"

namespace {

using stage::BinaryError;
using Quad = std::array<std::uint16_t, 4>;

TEST(VersionResource, reads_the_numbers) {
    const auto version = stage::read_version_resource(ks::test::sample_version());
    EXPECT_EQ(version.file_version, (Quad{2, 0, 3, 1}));
    EXPECT_EQ(version.product_version, (Quad{4, 5, 6, 7}));
}

TEST(VersionResource, reads_the_strings_without_terminators) {
    const auto version = stage::read_version_resource(ks::test::sample_version());
    ASSERT_EQ(version.strings.size(), 1u);
    EXPECT_EQ(version.text("Key"), "Value");
    EXPECT_EQ(version.text("Other"), "");
}

TEST(VersionResource, refuses_a_wrong_key_and_a_wrong_signature) {
    ks::test::Bytes bytes = ks::test::sample_version();
    bytes[6] = 'X';
    EXPECT_THROW(stage::read_version_resource(bytes), BinaryError);
    bytes = ks::test::sample_version();
    bytes[40] = 0;
    EXPECT_THROW(stage::read_version_resource(bytes), BinaryError);
}

TEST(VersionResource, survives_every_truncation_and_every_flipped_bit) {
    ks::test::expect_robust(ks::test::sample_version(),
                            [](auto bytes) { stage::read_version_resource(bytes); });
}

}  // namespace
