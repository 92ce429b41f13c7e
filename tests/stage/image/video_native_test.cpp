// Video files, frame by frame. The files are uncompressed AVI, so that every code can be checked.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "stage/image/codecs/picture_io.h"
#include "stage/image/coded_video.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

constexpr int kWidth = 16;
constexpr int kHeight = 8;
constexpr int kFrames = 30;

std::string u32(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

std::string u16(std::uint32_t value) {
    return u32(value).substr(0, 2);
}

std::string chunk(const std::string &type, const std::string &data) {
    return type + u32(static_cast<std::uint32_t>(data.size())) + data;
}

std::string list(const std::string &type, const std::string &data) {
    return chunk("LIST", type + data);
}

int code_at(int frame, int x, int y, int channel) {
    return (frame * 8 + x * 3 + y * 5 + channel * 40) & 255;
}

// One frame as AVI stores it: bottom row first, blue, green, red.
std::string frame_bytes(int frame) {
    std::string bytes;
    for (int y = kHeight - 1; y >= 0; --y) {
        for (int x = 0; x < kWidth; ++x) {
            for (int channel = 2; channel >= 0; --channel) {
                bytes += static_cast<char>(code_at(frame, x, y, channel));
            }
        }
    }
    return bytes;
}

// A whole file at 30000/1001 frames per second.
std::string avi_bytes() {
    const std::uint32_t size = kWidth * kHeight * 3;
    const std::string main_header = u32(33367) + u32(size * 30) + u32(0) + u32(0x10) +
                                    u32(kFrames) + u32(0) + u32(1) + u32(size) + u32(kWidth) +
                                    u32(kHeight) + std::string(16, '\0');
    const std::string stream_header = "vids" + u32(0) + u32(0) + u32(0) + u32(0) + u32(1001) +
                                      u32(30000) + u32(0) + u32(kFrames) + u32(size) + u32(0) +
                                      u32(0) + u16(0) + u16(0) + u16(kWidth) + u16(kHeight);
    const std::string format = u32(40) + u32(kWidth) + u32(kHeight) + u16(1) + u16(24) + u32(0) +
                               u32(size) + std::string(16, '\0');
    std::string movie;
    std::string index;
    for (int frame = 0; frame < kFrames; ++frame) {
        index += "00db" + u32(0x10) + u32(static_cast<std::uint32_t>(4 + movie.size())) + u32(size);
        movie += chunk("00db", frame_bytes(frame));
    }
    const std::string headers =
        list("hdrl", chunk("avih", main_header) +
                         list("strl", chunk("strh", stream_header) + chunk("strf", format)));
    return chunk("RIFF", "AVI " + headers + list("movi", movie) + chunk("idx1", index));
}

class Video : public ScratchTest {
  protected:
    Video() { write_bytes(file("a.avi"), avi_bytes()); }
};

void expect_frame(const Picture &picture, int frame) {
    ASSERT_EQ(picture.width, kWidth);
    ASSERT_EQ(picture.height, kHeight);
    ASSERT_EQ(picture.native, SampleType::U8);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const float *pixel = picture.at(x, y);
            ASSERT_EQ(pixel[0], 1.0f);
            for (int channel = 0; channel < 3; ++channel) {
                ASSERT_EQ(pixel[channel + 1],
                          static_cast<float>(code_at(frame, x, y, channel)) / 255.0f)
                    << "frame " << frame << " at " << x << "," << y;
            }
        }
    }
}

TEST_F(Video, says_how_many_frames_at_which_rate) {
    const auto source = open_pictures(file("a.avi"));
    EXPECT_FALSE(source->still());
    EXPECT_EQ(source->first_frame(), 0);
    EXPECT_EQ(source->frame_count(), kFrames);
    ASSERT_TRUE(source->frame_rate());
    EXPECT_EQ(source->frame_rate()->numerator, 30000);
    EXPECT_EQ(source->frame_rate()->denominator, 1001);
}

TEST_F(Video, every_frame_is_read_in_order) {
    const auto source = open_pictures(file("a.avi"));
    for (int frame = 0; frame < kFrames; ++frame) expect_frame(source->read(frame), frame);
}

TEST_F(Video, frames_are_read_in_any_order) {
    const auto source = open_pictures(file("a.avi"));
    for (const int frame : {29, 0, 17, 17, 16, 3, 28, 1}) expect_frame(source->read(frame), frame);
}

TEST_F(Video, one_frame_is_read_at_once) {
    expect_frame(read_picture(file("a.avi"), 13), 13);
}

TEST_F(Video, a_frame_beyond_the_end_is_refused) {
    const auto source = open_pictures(file("a.avi"));
    for (const int frame : {-1, kFrames}) {
        EXPECT_EQ(error_of([&] { source->read(frame); }),
                  file("a.avi").string() + ": there is no frame " + std::to_string(frame) +
                      ", they are numbered 0 to 29");
    }
    expect_frame(source->read(2), 2);
}

TEST_F(Video, a_file_that_is_no_video_is_refused) {
    for (const char *name : {"b.avi", "b.mp4", "b.mov"}) {
        write_bytes(file(name), "This is a letter.");
        const std::string message = error_of([&] { open_pictures(file(name)); });
        EXPECT_TRUE(message.starts_with(file(name).string() + ": cannot be read")) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
}

TEST_F(Video, a_file_that_is_cut_off_never_repeats_a_frame) {
    const std::string whole = avi_bytes();
    for (const std::size_t part : {2u, 4u, 7u}) {
        write_bytes(file("cut.avi"), whole.substr(0, whole.size() * part / 8));
        const auto source = open_pictures(file("cut.avi"));
        EXPECT_LT(source->frame_count(), kFrames);
        EXPECT_GT(source->frame_count(), kFrames * static_cast<int>(part - 1) / 8);
        for (int frame = 0; frame + 1 < source->frame_count(); ++frame) {
            expect_frame(source->read(frame), frame);
        }
        // The last one may be there in part, and is then an error.
        const int last = source->frame_count() - 1;
        try {
            expect_frame(source->read(last), last);
        } catch (const PictureError &error) {
            EXPECT_EQ(error.what(), file("cut.avi").string() + ": cannot be read: frame " +
                                        std::to_string(last) + " is damaged");
        }
    }
}

int luma_of(int frame) {
    return 20 + frame * 4;
}

// Narrow range luma to full range, with room for the loss of the codec: half the step between
// frames.
void expect_luma(const Picture &picture, int frame) {
    const double expected = (luma_of(frame) - 16) / 219.0;
    for (int c = 1; c < 4; ++c) {
        EXPECT_NEAR(picture.at(32, 24)[c], expected, 2.0 / 219) << "frame " << frame;
    }
}

class CodedVideoFiles : public ScratchTest, public ::testing::WithParamInterface<const char *> {};

TEST_P(CodedVideoFiles, frames_between_key_frames_are_exact_in_any_order) {
    const fs::path path = file(GetParam());
    write_coded_video(path, {}, luma_of);
    const auto source = open_pictures(path);
    ASSERT_EQ(source->frame_count(), 50);
    EXPECT_EQ(source->frame_rate()->per_second(), 25.0);
    for (int frame = 0; frame < 50; ++frame) expect_luma(source->read(frame), frame);
    for (const int frame : {49, 0, 30, 31, 33, 33, 5, 11, 12, 13, 48, 1}) {
        expect_luma(source->read(frame), frame);
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, CodedVideoFiles,
                         ::testing::Values("a.mp4", "a.mov", "a.mkv", "a.avi"),
                         [](const auto &row) { return std::string(row.param).substr(2); });

TEST_F(Video, frames_are_counted_from_the_first_one_whatever_its_time) {
    CodedVideo video;
    video.first_time = 10;
    write_coded_video(file("late.mkv"), video, luma_of);
    const auto source = open_pictures(file("late.mkv"));
    ASSERT_EQ(source->frame_count(), 50);
    for (const int frame : {0, 49, 7}) expect_luma(source->read(frame), frame);
}

}  // namespace
}  // namespace stage::test
