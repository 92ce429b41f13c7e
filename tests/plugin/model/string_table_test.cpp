#include "model/string_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>

namespace {

TEST(StringTable, has_77_slots_of_260_zero_terminated_bytes) {
    EXPECT_EQ(sizeof ks::kStrings, 77u * 260u);
    for (const auto &slot : ks::kStrings) EXPECT_EQ(slot[259], '\0');
}

TEST(StringTable, slot_0_is_empty_and_every_other_slot_has_text) {
    EXPECT_STREQ(ks::string_at(0), "");
    for (int slot = 1; slot < ks::kStringCount; ++slot) EXPECT_STRNE(ks::string_at(slot), "");
}

TEST(StringTable, texts_are_printable_ascii) {
    for (const auto &slot : ks::kStrings) {
        for (const char *c = slot; *c != '\0'; ++c) {
            EXPECT_TRUE((*c >= 0x20 && *c < 0x7F) || *c == '\n') << slot;
        }
    }
}

TEST(StringTable, description_ends_in_two_line_feeds_and_a_closing_line) {
    const std::string text = ks::string_at(ks::kStringDescription);
    const std::string head = "Scopes and monitoring for grading and compositing.\n\n";
    ASSERT_TRUE(text.starts_with(head));
    EXPECT_GT(text.size(), head.size());
    EXPECT_LE(text.size() - head.size(), 178u) << "what the About text leaves of return_msg";
    EXPECT_EQ(text.find('\n', head.size()), std::string::npos);
}

TEST(StringTable, fixed_texts_of_code_and_panel) {
    EXPECT_STREQ(ks::string_at(ks::kStringEffectName), "Kestrel Scopes");
    EXPECT_STREQ(ks::string_at(ks::kStringSuiteLoadError), "Error loading suite.");
    EXPECT_STREQ(ks::string_at(ks::kStringSuiteReleaseError), "Error releasing suite.");
    EXPECT_STREQ(ks::string_at(62), "Luminance Math's");
    EXPECT_STREQ(ks::string_at(74), "Lock Layer Position");
}

TEST(StringTable, retired_slots_keep_their_texts) {
    EXPECT_STREQ(ks::string_at(52), "Smoothing");
    EXPECT_STREQ(ks::string_at(53), "None|Low|Medium|High");
    EXPECT_STREQ(ks::string_at(71), "Label Text Scale");
}

TEST(StringTable, numbers_outside_read_as_empty) {
    EXPECT_STREQ(ks::string_at(-1), "");
    EXPECT_STREQ(ks::string_at(77), "");
}

TEST(CountChoices, counts_separators_too) {
    EXPECT_EQ(ks::count_choices(""), 0);
    EXPECT_EQ(ks::count_choices("one"), 1);
    EXPECT_EQ(ks::count_choices("one|(-|two"), 3);
}

}  // namespace
