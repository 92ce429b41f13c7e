// The formats of the native build alone: TIFF, DPX and OpenEXR.
#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <limits>

#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

class NativeFormats : public ScratchTest {
  protected:
    Picture round_trip(const std::string &name, const Picture &picture, Depth depth) {
        write_picture(file(name), picture, depth);
        return read_picture(file(name));
    }

    // Writes a file as other programs do, one sample per element of `samples`.
    void write_foreign(const std::string &name, const OIIO::ImageSpec &spec,
                       const std::vector<float> &samples) {
        auto output = OIIO::ImageOutput::create(file(name).string());
        ASSERT_TRUE(output);
        ASSERT_TRUE(output->open(file(name).string(), spec)) << output->geterror();
        ASSERT_TRUE(output->write_image(OIIO::TypeDesc::FLOAT, samples.data()));
        ASSERT_TRUE(output->close());
    }
};

TEST_F(NativeFormats, all_8_bit_codes_come_back_from_tiff_and_dpx) {
    for (const char *name : {"a.tif", "a.tiff", "a.dpx"}) {
        const Picture back = round_trip(name, all_codes8(), Depth::U8);
        EXPECT_EQ(back.native, SampleType::U8) << name;
        EXPECT_TRUE(same_bits(back, all_codes8())) << name;
    }
}

TEST_F(NativeFormats, all_16_bit_codes_of_the_host_come_back_from_tiff_and_dpx) {
    const Picture picture = all_codes16();
    std::vector<std::uint16_t> expected(picture.argb.size());
    to_rows16(picture, expected.data(), picture.width * 8);
    for (const char *name : {"a.tif", "a.dpx"}) {
        const Picture back = round_trip(name, picture, Depth::U16);
        EXPECT_EQ(back.native, SampleType::U16) << name;
        std::vector<std::uint16_t> codes(back.argb.size());
        to_rows16(back, codes.data(), back.width * 8);
        EXPECT_EQ(codes, expected) << name;
    }
}

TEST_F(NativeFormats, opaque_floats_come_back_bit_by_bit_from_exr_and_tiff) {
    Picture picture = opaque_floats();
    picture.argb[1] = kNan;
    picture.argb[2] = kInf;
    picture.argb[3] = -kInf;
    for (const char *name : {"a.exr", "a.tif"}) {
        const Picture back = round_trip(name, picture, Depth::Float);
        EXPECT_EQ(back.native, SampleType::Float) << name;
        EXPECT_TRUE(same_bits(back, picture)) << name;
    }
}

TEST_F(NativeFormats, opaque_codes_come_back_from_exr_at_the_integer_depths) {
    Picture picture = all_codes8();
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) picture.argb[i] = 1.0f;
    EXPECT_TRUE(same_bits(round_trip("a.exr", picture, Depth::U8), picture));
}

TEST_F(NativeFormats, exr_stores_premultiplied_colour_and_reads_back_straight) {
    Picture picture = make_picture(3, 1, SampleType::Float);
    picture.argb = {0.5f, 0.5f, -2.0f, 8.0f, 0.0f, 0.75f, 0.5f, 0.25f, 0.25f, 1.0f, kInf, 0.0f};
    EXPECT_TRUE(same_bits(round_trip("a.exr", picture, Depth::Float), picture));
    auto input = OIIO::ImageInput::open(file("a.exr").string());
    ASSERT_TRUE(input);
    std::vector<float> stored(12);
    ASSERT_TRUE(input->read_image(0, 0, 0, 4, OIIO::TypeDesc::FLOAT, stored.data()));
    EXPECT_EQ(stored[0], 0.25f);  // red of the first pixel, times alpha
    EXPECT_EQ(stored[3], 0.5f);
    EXPECT_EQ(stored[4], 0.75f);  // alpha 0 keeps its colour
    EXPECT_EQ(stored[7], 0.0f);
}

TEST_F(NativeFormats, straight_and_associated_tiff_files_are_told_apart) {
    const Picture picture = all_codes8();
    EXPECT_TRUE(same_bits(round_trip("straight.tif", picture, Depth::U8), picture));
    OIIO::ImageSpec spec(1, 1, 4, OIIO::TypeDesc::FLOAT);
    write_foreign("associated.tif", spec, {0.25f, 0.125f, 0.5f, 0.5f});
    EXPECT_EQ(read_picture(file("associated.tif")).argb,
              (std::vector<float>{0.5f, 0.5f, 0.25f, 1.0f}));
}

TEST_F(NativeFormats, half_floats_are_named) {
    write_foreign("half.exr", OIIO::ImageSpec(1, 1, 3, OIIO::TypeDesc::HALF),
                  {0.5f, -2.0f, 65504.0f});
    const Picture picture = read_picture(file("half.exr"));
    EXPECT_EQ(picture.native, SampleType::Half);
    EXPECT_EQ(picture.argb, (std::vector<float>{1.0f, 0.5f, -2.0f, 65504.0f}));
}

TEST_F(NativeFormats, channels_are_found_by_name) {
    OIIO::ImageSpec spec(1, 1, 5, OIIO::TypeDesc::FLOAT);
    spec.channelnames = {"Z", "B", "G", "R", "A"};
    spec.alpha_channel = 4;
    write_foreign("named.exr", spec, {9.0f, 0.1f, 0.2f, 0.3f, 1.0f});
    EXPECT_EQ(read_picture(file("named.exr")).argb, (std::vector<float>{1.0f, 0.3f, 0.2f, 0.1f}));
    OIIO::ImageSpec grey(1, 1, 1, OIIO::TypeDesc::FLOAT);
    grey.channelnames = {"Y"};
    write_foreign("grey.exr", grey, {0.4f});
    EXPECT_EQ(read_picture(file("grey.exr")).argb, (std::vector<float>{1.0f, 0.4f, 0.4f, 0.4f}));
}

TEST_F(NativeFormats, the_display_window_of_an_exr_file_is_the_picture) {
    OIIO::ImageSpec spec(2, 1, 3, OIIO::TypeDesc::FLOAT);
    spec.x = 12;
    spec.y = 21;
    spec.full_x = 10;
    spec.full_y = 20;
    spec.full_width = 3;
    spec.full_height = 2;
    // Data window x 12..13 of a display window x 10..12: the second pixel lies outside.
    write_foreign("window.exr", spec, {1, 2, 3, 4, 5, 6});
    const Picture picture = read_picture(file("window.exr"));
    ASSERT_EQ(picture.width, 3);
    ASSERT_EQ(picture.height, 2);
    std::vector<float> expected(24);
    const float pixel[] = {1, 1, 2, 3};
    std::copy(pixel, pixel + 4, expected.begin() + 20);
    EXPECT_EQ(picture.argb, expected);
}

TEST_F(NativeFormats, pixel_aspect_is_kept_by_exr_and_tiff) {
    Picture picture = all_codes8();
    EXPECT_EQ(round_trip("square.exr", picture, Depth::U8).pixel_aspect, 1.0);
    picture.pixel_aspect = 2.0;
    EXPECT_EQ(round_trip("wide.exr", picture, Depth::U8).pixel_aspect, 2.0);
    EXPECT_EQ(round_trip("wide.tif", picture, Depth::U8).pixel_aspect, 2.0);
}

TEST_F(NativeFormats, truncated_files_are_refused_with_one_line) {
    const Picture picture = all_codes16();
    for (const char *name : {"a.tif", "a.dpx", "a.exr"}) {
        write_picture(file(name), picture, Depth::U16);
        const std::string whole = bytes_of(file(name));
        for (const std::size_t part : {1u, 4u, 7u}) {
            write_bytes(file(name), whole.substr(0, whole.size() * part / 8));
            const std::string message = error_of([&] { read_picture(file(name)); });
            EXPECT_TRUE(message.starts_with(file(name).string() + ": cannot be read")) << message;
            EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        }
    }
}

}  // namespace
}  // namespace stage::test
