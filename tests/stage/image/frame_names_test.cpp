#include <gtest/gtest.h>

#include "stage/image/frame_pattern.h"
#include "stage/image/frame_range.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

TEST(FrameRange, reads_one_frame_or_a_span) {
    EXPECT_EQ(parse_frame_range("0"), (FrameRange{0, 0}));
    EXPECT_EQ(parse_frame_range("17"), (FrameRange{17, 17}));
    EXPECT_EQ(parse_frame_range("10-24"), (FrameRange{10, 24}));
    EXPECT_EQ(parse_frame_range("0007-0007"), (FrameRange{7, 7}));
    EXPECT_EQ(parse_frame_range("10-24").count(), 15);
    EXPECT_EQ(parse_frame_range("0-2147483647").count(), 2147483648);
}

TEST(FrameRange, refuses_everything_else) {
    for (const char *text : {"", "-", "a", "1-", "-1", "1--2", "1-2-3", " 1", "1 ", "+1", "1.5",
                             "0x1", "2147483648", "1-99999999999999999999"}) {
        EXPECT_EQ(error_of([&] { parse_frame_range(text); }),
                  "\"" + std::string(text) +
                      "\" is not a range of frames: write A-B or A, for example 10-24");
    }
    EXPECT_EQ(error_of([] { parse_frame_range("5-4"); }),
              "\"5-4\" is not a range of frames: it ends before it starts");
}

TEST(FramePattern, a_plain_name_is_no_pattern) {
    for (const char *name :
         {"a.exr", "a.0001.exr", "100%.png", "a%%d.png", "dir%d/a.png", "%4d.png"}) {
        EXPECT_FALSE(FramePattern::parse(name)) << name;
        EXPECT_EQ(frame_file(name, 3), fs::path(name));
    }
}

TEST(FramePattern, writes_numbers_as_printf_does) {
    EXPECT_EQ(frame_file("a/f.%04d.exr", 7), fs::path("a/f.0007.exr"));
    EXPECT_EQ(frame_file("f.%04d.exr", 123456), fs::path("f.123456.exr"));
    EXPECT_EQ(frame_file("f%d.exr", 0), fs::path("f0.exr"));
    EXPECT_EQ(frame_file("50%%-%02d.exr", 3), fs::path("50%-03.exr"));
}

TEST(FramePattern, refuses_a_second_number_and_other_conversions) {
    for (const char *name : {"a%d%d.png", "a%04d.%d.png", "a%d%s.png", "%%d%d%"}) {
        EXPECT_EQ(error_of([&] { FramePattern::parse(name); }),
                  std::string(name) +
                      ": the name of a sequence has one frame number, %d or %04d for example");
    }
}

TEST(FramePattern, recognises_only_names_that_it_would_write) {
    const auto padded = *FramePattern::parse("f.%04d.exr");
    EXPECT_EQ(padded.number_in("f.0012.exr"), 12);
    EXPECT_EQ(padded.number_in("f.12345.exr"), 12345);
    for (const char *name :
         {"f.012.exr", "f.12.exr", "f.00012.exr", "f.-012.exr", "f..exr", "f.exr", "g.0012.exr",
          "f.0012.png", "f.0012.exr~", "f.99999999999.exr"}) {
        EXPECT_FALSE(padded.number_in(name)) << name;
    }
    const auto plain = *FramePattern::parse("f%d.exr");
    EXPECT_EQ(plain.number_in("f7.exr"), 7);
    EXPECT_FALSE(plain.number_in("f07.exr"));
}

}  // namespace
}  // namespace stage::test
