// What both builds promise: PNG, JPEG, HDR, PFM and PAM, stills and sequences.
#include "stage/image/codecs/picture_io.h"

#include <gtest/gtest.h>

#include <limits>

#include "stage/image/charts/charts.h"
#include "stage/image/frame_pattern.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

class PictureIo : public ScratchTest {
  protected:
    Picture round_trip(const std::string &name, const Picture &picture, Depth depth) {
        write_picture(file(name), picture, depth);
        return read_picture(file(name));
    }
};

TEST_F(PictureIo, all_8_bit_codes_come_back_from_png_and_pam) {
    const Picture picture = all_codes8();
    for (const char *name : {"a.png", "a.pam", "A.PNG"}) {
        const Picture back = round_trip(name, picture, Depth::U8);
        EXPECT_EQ(back.native, SampleType::U8) << name;
        EXPECT_TRUE(same_bits(back, picture)) << name;
    }
}

TEST_F(PictureIo, all_16_bit_codes_of_the_host_come_back_from_png_and_pam) {
    const Picture picture = all_codes16();
    std::vector<std::uint16_t> expected(picture.argb.size());
    to_rows16(picture, expected.data(), picture.width * 8);
    for (const char *name : {"a.png", "a.pam"}) {
        const Picture back = round_trip(name, picture, Depth::U16);
        std::vector<std::uint16_t> codes(back.argb.size());
        to_rows16(back, codes.data(), back.width * 8);
        EXPECT_EQ(codes, expected) << name;
    }
}

TEST_F(PictureIo, all_65536_codes_of_16_bit_files_come_back) {
    Picture picture = make_picture(256, 256, SampleType::U16);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = static_cast<float>(i / 4 ^ (i % 4 * 0x1111)) / 65535.0f;
    }
    for (const char *name : {"a.png", "a.pam"}) {
        const Picture back = round_trip(name, picture, Depth::U16);
        EXPECT_EQ(back.native, SampleType::U16) << name;
        EXPECT_TRUE(same_bits(back, picture)) << name;
    }
}

TEST_F(PictureIo, only_pictures_in_host_codes_give_pam_files_up_to_32768) {
    Picture picture = make_picture(1, 1, SampleType::HostU16);
    write_picture(file("a.pam"), picture, Depth::U16);
    EXPECT_NE(bytes_of(file("a.pam")).find("MAXVAL 32768\n"), std::string::npos);
    picture.native = SampleType::U16;
    write_picture(file("a.pam"), picture, Depth::U16);
    EXPECT_NE(bytes_of(file("a.pam")).find("MAXVAL 65535\n"), std::string::npos);
}

TEST_F(PictureIo, pfm_keeps_every_bit_at_every_depth) {
    Picture picture = opaque_floats();
    picture.argb[0] = 0.25f;
    picture.argb[5] = std::numeric_limits<float>::quiet_NaN();
    picture.argb[6] = -std::numeric_limits<float>::infinity();
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        EXPECT_TRUE(same_bits(round_trip("a.pfm", picture, depth), picture));
    }
}

TEST_F(PictureIo, floats_in_integer_files_are_clamped_and_rounded_to_16_bits) {
    Picture picture = make_picture(2, 1, SampleType::Float);
    picture.argb = {1.0f,  -3.0f,
                    0.5f,  std::numeric_limits<float>::infinity(),
                    0.25f, std::numeric_limits<float>::quiet_NaN(),
                    7.0f,  1e-9f};
    const std::vector<float> expected = {1, 0, 32768.0f / 65535.0f, 1, 16384.0f / 65535.0f, 0,
                                         1, 0};
    for (const char *name : {"a.png", "a.pam"}) {
        EXPECT_EQ(round_trip(name, picture, Depth::Float).argb, expected) << name;
    }
}

TEST_F(PictureIo, png_keeps_straight_colour_under_transparent_alpha) {
    Picture picture = make_picture(1, 1, SampleType::U8);
    picture.argb = {0.0f, 1.0f, 0.2f, 0.6f};
    EXPECT_TRUE(same_bits(round_trip("a.png", picture, Depth::U8), picture));
}

TEST_F(PictureIo, grey_png_files_read_as_equal_colours) {
    // 2x1 pixels of 8-bit grey, codes 0x33 and 0xCC.
    const unsigned char bytes[] = {
        0x89, 'P',  'N',  'G',  '\r', '\n', 0x1A, '\n', 0,    0,    0,    13,   'I',  'H',  'D',
        'R',  0,    0,    0,    2,    0,    0,    0,    1,    8,    0,    0,    0,    0,    0xD1,
        0x49, 0x20, 0x56, 0,    0,    0,    14,   'I',  'D',  'A',  'T',  0x78, 0x01, 0x01, 0x03,
        0x00, 0xFC, 0xFF, 0x00, 0x33, 0xCC, 0x01, 0x35, 0x01, 0x00, 0xF2, 0x4A, 0x6A, 0xB7, 0,
        0,    0,    0,    'I',  'E',  'N',  'D',  0xAE, 0x42, 0x60, 0x82};
    write_bytes(file("grey.png"),
                std::string_view(reinterpret_cast<const char *>(bytes), sizeof bytes));
    EXPECT_EQ(read_picture(file("grey.png")).argb,
              (std::vector<float>{1, 0.2f, 0.2f, 0.2f, 1, 0.8f, 0.8f, 0.8f}));
}

TEST_F(PictureIo, jpeg_is_8_bit_opaque_and_close) {
    const Picture chart = draw_chart("skin", 192, 64);
    for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
        const Picture back = round_trip("a.jpg", chart, depth);
        ASSERT_EQ(back.native, SampleType::U8);
        ASSERT_EQ(back.width, 192);
        ASSERT_EQ(back.height, 64);
        // The middle of every patch: lossy, but far from the edges within 2 codes.
        for (int patch = 0; patch < 12; ++patch) {
            const int x = patch % 6 * 32 + 16;
            const int y = patch / 6 * 32 + 16;
            for (int c = 0; c < 4; ++c) EXPECT_NEAR(back.at(x, y)[c], chart.at(x, y)[c], 2.0 / 255);
        }
    }
}

TEST_F(PictureIo, hdr_keeps_values_to_one_part_in_128_and_limits_the_rest) {
    Picture picture = make_picture(3, 1, SampleType::Float);
    picture.argb = {1,      1000.0f,
                    900.0f, 800.0f,
                    1,      std::numeric_limits<float>::quiet_NaN(),
                    -5.0f,  0.5f,
                    0.5f,   std::numeric_limits<float>::infinity(),
                    0.0f,   0.0f};
    const Picture back = round_trip("a.hdr", picture, Depth::Float);
    EXPECT_EQ(back.native, SampleType::Float);
    EXPECT_NEAR(back.argb[1], 1000.0f, 8.0f);
    EXPECT_NEAR(back.argb[2], 900.0f, 8.0f);
    EXPECT_EQ(back.argb[5], 0.0f);
    EXPECT_EQ(back.argb[6], 0.0f);
    EXPECT_NEAR(back.argb[7], 0.5f, 0.004f);
    EXPECT_EQ(back.argb[8], 1.0f);
    EXPECT_NEAR(back.argb[9], 1e38f, 1e36f);
}

TEST_F(PictureIo, a_still_is_the_same_at_every_frame) {
    write_picture(file("a.png"), all_codes8(), Depth::U8);
    const auto source = open_pictures(file("a.png"));
    EXPECT_TRUE(source->still());
    EXPECT_EQ(source->first_frame(), 0);
    EXPECT_EQ(source->frame_count(), 1);
    EXPECT_FALSE(source->frame_rate());
    for (const int frame : {0, 5, 100000})
        EXPECT_TRUE(same_bits(source->read(frame), all_codes8()));
}

TEST_F(PictureIo, a_sequence_is_numbered_by_its_file_names) {
    const std::string pattern = file("f.%03d.pam").string();
    for (const int frame : {9, 10, 12}) {
        Picture picture = make_picture(1, 1, SampleType::U8);
        picture.argb[1] = static_cast<float>(frame) / 255.0f;
        write_picture(frame_file(pattern, frame), picture, Depth::U8);
    }
    write_bytes(file("f.1.pam"), "another file");
    write_bytes(file("f.0500.pam"), "another file");
    const auto source = open_pictures(pattern);
    EXPECT_FALSE(source->still());
    EXPECT_EQ(source->first_frame(), 9);
    EXPECT_EQ(source->frame_count(), 4);
    EXPECT_EQ(source->read(12).argb[1], 12.0f / 255.0f);
    EXPECT_EQ(read_picture(pattern, 9).argb[1], 9.0f / 255.0f);
    EXPECT_TRUE(error_of([&] { source->read(11); }).starts_with(file("f.011.pam").string() + ": "));
    EXPECT_EQ(error_of([&] { source->read(-1); }),
              file("f.009.pam").string() + ": the sequence has no frame -1");
}

TEST_F(PictureIo, a_written_picture_replaces_the_older_one_and_leaves_nothing_beside_it) {
    write_picture(file("a.png"), make_picture(3, 2, SampleType::U8), Depth::U8);
    write_picture(file("a.png"), all_codes8(), Depth::U8);
    EXPECT_TRUE(same_bits(read_picture(file("a.png")), all_codes8()));
    EXPECT_EQ(files_in_folder(), 1u);
}

}  // namespace
}  // namespace stage::test
