#include "stage/binary/pipl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "package/binary_fixtures.h"
#include "stage/binary/byte_view.h"

namespace {

using ks::test::Bytes;
using stage::BinaryError;
using stage::Pipl;
using stage::PiplVersion;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Offsets in the sample list.
constexpr std::size_t kNameLength = 42;
constexpr std::size_t kNameValue = 46;
constexpr std::size_t kCategoryKey = 58;
constexpr std::size_t kCategoryValue = 70;

std::vector<std::string> findings(const Bytes &bytes) {
    return stage::check_pipl(stage::parse_pipl(bytes), bytes);
}

TEST(Pipl, reads_every_property) {
    const Pipl pipl = stage::parse_pipl(ks::test::sample_pipl(2));
    EXPECT_EQ(pipl.version, 1);
    EXPECT_EQ(pipl.reserved, 0u);
    EXPECT_EQ(pipl.properties.size(), 12u);
    EXPECT_EQ(pipl.kind, "eFKT");
    EXPECT_EQ(pipl.name, "Sample");
    EXPECT_EQ(pipl.category, "Group");
    EXPECT_EQ(pipl.entry_point, "Go");
    EXPECT_EQ(pipl.list_version, (PiplVersion{2, 0}));
    EXPECT_EQ(pipl.spec_version, (PiplVersion{13, 14}));
    EXPECT_EQ(pipl.effect_version, 0x101E01u);
    EXPECT_EQ(pipl.info_flags, 0u);
    EXPECT_EQ(pipl.out_flags, 0x11u);
    EXPECT_EQ(pipl.out_flags2, 0x22u);
    EXPECT_EQ(pipl.match_name, "M");
    EXPECT_EQ(pipl.reserved_info, 0u);
}

TEST(Pipl, reads_info_flags_of_two_bytes_and_of_four) {
    for (const std::uint32_t length : {2u, 4u}) {
        const Bytes bytes = ks::test::sample_pipl(length);
        const Pipl pipl = stage::parse_pipl(bytes);
        EXPECT_EQ(pipl.info_flags, 0u) << length;
        EXPECT_EQ(pipl.match_name, "M") << length;
        EXPECT_THAT(stage::check_pipl(pipl, bytes), IsEmpty()) << length;
    }
}

TEST(Pipl, reads_text_lengths_that_leave_the_padding_out) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[kNameLength] = 7;  // count byte and six characters
    const Pipl pipl = stage::parse_pipl(bytes);
    EXPECT_EQ(pipl.name, "Sample");
    EXPECT_EQ(pipl.category, "Group");
    EXPECT_THAT(stage::check_pipl(pipl, bytes), IsEmpty());
}

TEST(Pipl, every_truncation_is_an_error) {
    const Bytes whole = ks::test::sample_pipl(2);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THROW(stage::parse_pipl(std::span(whole).first(length)), BinaryError) << length;
    }
}

TEST(Pipl, survives_every_flipped_bit) {
    ks::test::expect_robust(ks::test::sample_pipl(2),
                            [](auto bytes) { stage::check_pipl(stage::parse_pipl(bytes), bytes); });
}

TEST(Pipl, refuses_a_text_longer_than_its_property) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[kNameValue] = 8;
    EXPECT_THROW(stage::parse_pipl(bytes), BinaryError);
}

TEST(PiplCheck, reports_padding_that_is_not_zero) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[kCategoryValue + 7] = 1;
    EXPECT_THAT(findings(bytes), ElementsAre(HasSubstr("'catg' has padding that is not zero")));
}

TEST(PiplCheck, reports_a_property_that_is_missing_or_unknown) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[kCategoryKey] = 'x';
    EXPECT_THAT(findings(bytes),
                ElementsAre(HasSubstr("'catg' occurs 0 times"), HasSubstr("in the host's order"),
                            HasSubstr("'catx' is not one that an effect has")));
}

TEST(PiplCheck, reports_properties_out_of_order) {
    Bytes bytes = ks::test::sample_pipl(2);
    // Name and category take the same room in the sample, so the two can change places.
    std::swap_ranges(bytes.begin() + 30, bytes.begin() + 54, bytes.begin() + 54);
    EXPECT_THAT(findings(bytes), ElementsAre(HasSubstr("in the host's order")));
}

TEST(PiplCheck, reports_a_wrong_vendor_and_id) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[10] = 'X';
    bytes[18] = 5;
    EXPECT_THAT(findings(bytes), ElementsAre(HasSubstr("vendor 8BIX"), HasSubstr("id 5")));
}

TEST(PiplCheck, reports_a_wrong_header) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[0] = 2;
    bytes[2] = 1;
    EXPECT_THAT(findings(bytes),
                ElementsAre(HasSubstr("list version is 2"), HasSubstr("reserved field")));
}

TEST(PiplCheck, reports_bytes_behind_the_end) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes.resize(bytes.size() + 4);
    EXPECT_THAT(findings(bytes), ElementsAre(HasSubstr("4 bytes behind the last property")));
}

TEST(PiplCheck, reports_another_kind_of_plug_in) {
    Bytes bytes = ks::test::sample_pipl(2);
    bytes[26] = 'X';
    EXPECT_THAT(findings(bytes), ElementsAre(HasSubstr("kind is eFKX")));
}

TEST(DescribeEffectVersion, unpacks_the_bits) {
    EXPECT_EQ(stage::describe_effect_version(0x00101E01), "2.0.3 release build 1");
    EXPECT_EQ(stage::describe_effect_version(0), "0.0.0 development build 0");
    // Versions above 7 keep their high bits apart.
    EXPECT_EQ(stage::describe_effect_version(1u << 26 | 1u << 19 | 2u << 15),
              "9.2.0 development build 0");
}

}  // namespace
