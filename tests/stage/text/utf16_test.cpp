#include "stage/text/utf16.h"

#include <gtest/gtest.h>

namespace stage {
namespace {

TEST(Utf16, EveryCodePointGoesThereAndBack) {
    for (char32_t c = 1; c <= 0x10FFFF; c += c < 0x11000 ? 1 : 0x101) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        std::u16string text;
        if (c < 0x10000) {
            text += static_cast<char16_t>(c);
        } else {
            text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        }
        ASSERT_EQ(utf16_from_utf8(utf8_from_utf16(text)), text) << static_cast<unsigned>(c);
    }
}

TEST(Utf16, KnownTexts) {
    EXPECT_EQ(utf16_from_utf8("KSTR_Backing"), u"KSTR_Backing");
    EXPECT_EQ(utf16_from_utf8("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xA8"), u"\u00E4\u20AC\U0001F3A8");
    EXPECT_EQ(utf8_from_utf16(u"\u00E4\u20AC\U0001F3A8"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xA8");
}

TEST(Utf16, BrokenTextBecomesReplacementCharacters) {
    EXPECT_EQ(utf16_from_utf8("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(utf16_from_utf8("\xC0\xAF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xE2\x82"), u"\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xED\xA0\x80"), u"\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xF5\x80\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xE0\x80\x80"), u"\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xF4\x90\x80\x80"), u"\uFFFD");
    EXPECT_EQ(utf16_from_utf8("\xF0\x9F\x8E!\x80"), u"\uFFFD!\uFFFD");
    EXPECT_EQ(utf8_from_utf16(std::u16string(1, u'\xD83C') + u"x"), "\xEF\xBF\xBDx");
    EXPECT_EQ(utf8_from_utf16(std::u16string(1, u'\xDC00')), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace stage
