// Each failure: one line that begins with the file, and no file left behind.
#include <gtest/gtest.h>

#include <array>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

class PictureErrors : public ScratchTest {
  protected:
    // Checks the shape of the message and gives what follows the file name.
    template <typename F>
    std::string reason(const fs::path &path, F f) {
        const std::string message = error_of(f);
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        EXPECT_TRUE(message.starts_with(path.string() + ": ")) << message;
        return message.substr(std::min(message.size(), path.string().size() + 2));
    }
    std::string read_reason(const fs::path &path) {
        return reason(path, [&] { read_picture(path); });
    }
    std::string write_reason(const fs::path &path, const Picture &picture) {
        return reason(path, [&] { write_picture(path, picture, Depth::U8); });
    }
};

TEST_F(PictureErrors, a_missing_file) {
    for (const char *name : {"none.png", "none.pfm", "none.jpg", "none"}) {
        EXPECT_TRUE(read_reason(file(name)).starts_with("cannot be read: ")) << name;
    }
#ifndef _WIN32
    EXPECT_EQ(read_reason(file("none.png")), "cannot be read: No such file or directory");
#endif
}

TEST_F(PictureErrors, a_folder_instead_of_a_file) {
    fs::create_directory(file("a.png"));
    EXPECT_EQ(read_reason(file("a.png")), "cannot be read: it is a folder");
}

TEST_F(PictureErrors, a_sequence_without_files) {
    const fs::path path = file("f.%04d.png");
    EXPECT_EQ(reason(path, [&] { open_pictures(path); }), "there is no file of this sequence");
    const fs::path nowhere = file("none") / "f.%04d.png";
    EXPECT_TRUE(reason(nowhere, [&] { open_pictures(nowhere); }).starts_with("cannot be read: "));
}

TEST_F(PictureErrors, a_file_that_is_no_picture) {
    for (const char *name : {"a.png", "a.jpg", "a.hdr", "a.pfm", "a.pam"}) {
        write_bytes(file(name), "This is a letter, and not a picture at all.\n");
        EXPECT_FALSE(read_reason(file(name)).empty()) << name;
        write_bytes(file(name), "");
        EXPECT_FALSE(read_reason(file(name)).empty()) << name;
    }
}

TEST_F(PictureErrors, a_truncated_file) {
    const Picture chart = draw_chart("test-card", 160, 90);
    for (const char *name : {"a.png", "a.jpg", "a.pfm", "a.pam"}) {
        write_picture(file(name), chart, Depth::U8);
        const std::string whole = bytes_of(file(name));
        for (const std::size_t part : {1u, 4u, 7u}) {
            write_bytes(file(name), whole.substr(0, whole.size() * part / 8));
            EXPECT_FALSE(read_reason(file(name)).empty()) << name << " " << part << "/8";
        }
    }
}

TEST_F(PictureErrors, an_unknown_extension) {
    EXPECT_EQ(write_reason(file("a.xyz"), all_codes8()),
              "pictures are not written as \".xyz\": choose one of " + writable_extensions());
    EXPECT_EQ(write_reason(file("a"), all_codes8()),
              "pictures are not written as \"\": choose one of " + writable_extensions());
    EXPECT_EQ(files_in_folder(), 0u);
}

TEST_F(PictureErrors, a_picture_without_pixels) {
    EXPECT_EQ(write_reason(file("a.png"), Picture{}),
              "a picture of 0x0 is not possible: each side must be 1 to 30000 pixels");
    Picture damaged = all_codes8();
    damaged.argb.pop_back();
    EXPECT_EQ(write_reason(file("a.pfm"), damaged),
              "a picture of 16x16 needs 1024 samples and has 1023");
    EXPECT_EQ(files_in_folder(), 0u);
}

TEST_F(PictureErrors, a_folder_that_does_not_exist) {
    for (const char *name : {"a.png", "a.pam", "a.jpg"}) {
        EXPECT_TRUE(
            write_reason(file("none") / name, all_codes8()).starts_with("cannot be written: "));
    }
    EXPECT_EQ(files_in_folder(), 0u);
}

TEST_F(PictureErrors, a_file_in_the_place_of_the_folder) {
    write_bytes(file("plain"), "x");
    EXPECT_TRUE(
        write_reason(file("plain") / "a.png", all_codes8()).starts_with("cannot be written: "));
    EXPECT_EQ(files_in_folder(), 1u);
}

TEST_F(PictureErrors, a_final_place_that_cannot_be_replaced_leaves_no_temporary_file) {
    for (const char *name : {"a.png", "a.pam"}) {
        fs::create_directories(file(name) / "full");
        EXPECT_TRUE(write_reason(file(name), all_codes8()).starts_with("cannot be written: "));
    }
    EXPECT_EQ(files_in_folder(), 2u);
}

}  // namespace
}  // namespace stage::test
