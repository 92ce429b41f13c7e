#include "stage/image/codecs/file_end.h"

#include <gtest/gtest.h>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

using namespace std::string_literals;

class FileEnd : public ScratchTest {
  protected:
    std::string whole(const std::string &name) {
        write_picture(file(name), draw_chart("zone", 64, 48), Depth::U8);
        return bytes_of(file(name));
    }
};

TEST_F(FileEnd, png_and_jpeg_files_are_cut_off_at_every_length_but_the_whole) {
    for (const char *name : {"a.png", "a.jpg"}) {
        const std::string bytes = whole(name);
        EXPECT_TRUE(may_be_cut_off(bytes.substr(0, 4))) << name;
        EXPECT_FALSE(cut_off(bytes)) << name;
        for (std::size_t length = 4; length < bytes.size(); ++length) {
            ASSERT_TRUE(cut_off(bytes.substr(0, length))) << name << " " << length;
        }
    }
}

TEST_F(FileEnd, bytes_after_the_end_mark_do_no_harm) {
    for (const char *name : {"a.png", "a.jpg"}) EXPECT_FALSE(cut_off(whole(name) + "trailer"));
}

TEST_F(FileEnd, the_end_mark_of_an_embedded_preview_does_not_count) {
    const std::string preview = "\xFF\xE1\0\x08 \xFF\xD9 \xFF\xD9"s;
    const std::string bytes = whole("a.jpg");
    const std::string with_preview = bytes.substr(0, 2) + preview + bytes.substr(2);
    EXPECT_FALSE(cut_off(with_preview));
    EXPECT_TRUE(cut_off(with_preview.substr(0, with_preview.size() - 2)));
}

TEST(FileEndOthers, other_files_are_not_judged) {
    for (const char *bytes : {"", "P7\n", "v/1\x01", "II*"}) {
        EXPECT_FALSE(may_be_cut_off(bytes));
        EXPECT_FALSE(cut_off(bytes));
    }
}

}  // namespace
}  // namespace stage::test
