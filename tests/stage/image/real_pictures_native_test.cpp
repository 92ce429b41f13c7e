// A photograph and pictures of extreme values, as files from elsewhere; public test pictures where
// they lie beside the source tree.
#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <set>

#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"
#include "support/paths.h"
#include "support/pictures/test_pictures.h"

namespace stage::test {
namespace {

namespace pictures = ks::test_support;

class RealPictures : public ScratchTest {
  protected:
    static fs::path shared(const char *name) {
        return fs::path(paths::source()) / ".." / "shared" / "images" / name;
    }

    // An OpenEXR file of red, green and blue, written by OpenImageIO itself: floats, or half floats
    // from their bits.
    fs::path exr(OIIO::TypeDesc type, int width, int height, const void *samples) {
        fs::path path = file("foreign.exr");
        const auto output = OIIO::ImageOutput::create(path.string());
        EXPECT_TRUE(output && output->open(path.string(), OIIO::ImageSpec(width, height, 3, type)));
        EXPECT_TRUE(output && output->write_image(type, samples) && output->close());
        return path;
    }

    fs::path float_exr(const Picture &picture) {
        std::vector<float> samples;
        for (std::size_t i = 0; i < picture.argb.size(); ++i) {
            if (i % 4 != 0) samples.push_back(picture.argb[i]);
        }
        return exr(OIIO::TypeDesc::FLOAT, picture.width, picture.height, samples.data());
    }

    // Neither depth conversion nor any output format stumbles over the picture.
    void expect_survives_all_outputs(const Picture &picture) {
        std::vector<std::uint16_t> rows(picture.argb.size());
        to_rows8(picture, rows.data(), picture.width * 4);
        to_rows16(picture, rows.data(), picture.width * 8);
        for (const std::uint16_t code : rows) ASSERT_LE(code, 32768);
        for (const Depth depth : {Depth::U8, Depth::U16, Depth::Float}) {
            for (const char *name :
                 {"a.png", "a.tif", "a.dpx", "a.jpg", "a.exr", "a.hdr", "a.pam", "a.pfm"}) {
                EXPECT_NO_THROW(write_picture(file(name), picture, depth)) << name;
            }
        }
        EXPECT_TRUE(same_bits(read_picture(file("a.exr")), picture));
        EXPECT_TRUE(same_bits(read_picture(file("a.pfm")), picture));
    }

    void expect_not_finite_and_bright(const Picture &picture) {
        int nans = 0;
        int infinities = 0;
        int bright = 0;
        for (const float value : picture.argb) {
            nans += std::isnan(value);
            infinities += std::isinf(value);
            bright += value > 1000.0f && !std::isinf(value);
        }
        EXPECT_GT(nans, 0);
        EXPECT_GT(infinities, 0);
        EXPECT_GT(bright, 0);
        expect_survives_all_outputs(picture);
    }

    void expect_every_half(const Picture &picture) {
        EXPECT_EQ(picture.native, SampleType::Half);
        std::set<std::uint32_t> patterns;
        for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
            patterns.insert(std::bit_cast<std::uint32_t>(picture.argb[i + 2]));
        }
        // 63488 finite patterns and the two infinities; the 2046 NaNs may lose their payload.
        EXPECT_GE(patterns.size(), 63488u + 2u);
        expect_survives_all_outputs(picture);
    }

    static void expect_negative_components(const Picture &picture) {
        EXPECT_LT(*std::min_element(picture.argb.begin(), picture.argb.end()), 0.0f);
    }

    static void expect_opaque_8_bit(const Picture &picture, int width, int height) {
        EXPECT_EQ(picture.native, SampleType::U8);
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, height);
        for (std::size_t i = 0; i < picture.argb.size(); i += 4) ASSERT_EQ(picture.argb[i], 1.0f);
    }
};

TEST_F(RealPictures, nan_infinity_and_bright_values_are_read_as_they_are) {
    const Picture rings = pictures::bright_rings();
    const Picture picture = read_picture(float_exr(rings));
    EXPECT_EQ(picture.native, SampleType::Float);
    EXPECT_TRUE(same_bits(picture, rings));
    expect_not_finite_and_bright(picture);
}

TEST_F(RealPictures, every_half_value_is_read) {
    constexpr int kSide = pictures::kHalfSide;
    std::vector<std::uint16_t> bits;
    for (int i = 0; i < 3 * kSide * kSide; ++i) {
        bits.push_back(pictures::half_bits(i / 3 % kSide, i / 3 / kSide, i % 3));
    }
    const Picture picture = read_picture(exr(OIIO::TypeDesc::HALF, kSide, kSide, bits.data()));
    const Picture values = pictures::half_values();
    ASSERT_EQ(picture.argb.size(), values.argb.size());
    for (std::size_t i = 0; i < values.argb.size(); ++i) {
        if (std::isnan(values.argb[i])) {
            ASSERT_TRUE(std::isnan(picture.argb[i])) << i;
        } else {
            ASSERT_EQ(std::bit_cast<std::uint32_t>(picture.argb[i]),
                      std::bit_cast<std::uint32_t>(values.argb[i]))
                << i;
        }
    }
    expect_every_half(picture);
}

TEST_F(RealPictures, negative_and_over_range_components_are_kept) {
    const Picture gamut = pictures::wide_gamut();
    const Picture picture = read_picture(float_exr(gamut));
    EXPECT_TRUE(same_bits(picture, gamut));
    expect_negative_components(picture);
    EXPECT_GT(*std::max_element(picture.argb.begin(), picture.argb.end()), 1.5f);
    expect_survives_all_outputs(picture);
}

TEST_F(RealPictures, the_photograph_is_an_opaque_8_bit_picture) {
    expect_opaque_8_bit(read_picture(pictures::photograph_file()), 256, 168);
}

// ---- public pictures ----

#define KS_NEEDS(path) \
    if (!fs::exists(path)) GTEST_SKIP() << "the test picture " << (path).filename() << " is absent"

TEST_F(RealPictures, public_rings_with_nan_and_infinity) {
    const fs::path path = shared("BrightRingsNanInf.exr");
    KS_NEEDS(path);
    expect_not_finite_and_bright(read_picture(path));
}

TEST_F(RealPictures, public_half_values) {
    const fs::path path = shared("AllHalfValues.exr");
    KS_NEEDS(path);
    expect_every_half(read_picture(path));
}

TEST_F(RealPictures, public_wide_gamut) {
    const fs::path path = shared("WideColorGamut.exr");
    KS_NEEDS(path);
    expect_negative_components(read_picture(path));
}

TEST_F(RealPictures, public_photograph) {
    const fs::path path = shared("Desk.jpg");
    KS_NEEDS(path);
    expect_opaque_8_bit(read_picture(path), 644, 874);
}

}  // namespace
}  // namespace stage::test
