// Public test pictures beside the source tree; without them the tests are skipped.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <set>

#include "stage/image/codecs/picture_io.h"
#include "stage/image/scratch.h"

namespace stage::test {
namespace {

class RealPictures : public ScratchTest {
  protected:
    static fs::path shared(const char *name) {
        return fs::path(KS_SOURCE_DIR) / ".." / "shared" / "images" / name;
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
};

#define KS_NEEDS(path) \
    if (!fs::exists(path)) GTEST_SKIP() << "the test picture " << (path).filename() << " is absent"

TEST_F(RealPictures, nan_and_infinity_are_read_as_they_are) {
    const fs::path path = shared("BrightRingsNanInf.exr");
    KS_NEEDS(path);
    const Picture picture = read_picture(path);
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

TEST_F(RealPictures, every_half_value_is_read) {
    const fs::path path = shared("AllHalfValues.exr");
    KS_NEEDS(path);
    const Picture picture = read_picture(path);
    EXPECT_EQ(picture.native, SampleType::Half);
    std::set<std::uint32_t> patterns;
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        patterns.insert(std::bit_cast<std::uint32_t>(picture.argb[i + 2]));
    }
    // 63488 finite patterns and the two infinities; the 2046 NaNs may lose their payload.
    EXPECT_GE(patterns.size(), 63488u + 2u);
    expect_survives_all_outputs(picture);
}

TEST_F(RealPictures, negative_components_are_kept) {
    const fs::path path = shared("WideColorGamut.exr");
    KS_NEEDS(path);
    const Picture picture = read_picture(path);
    EXPECT_LT(*std::min_element(picture.argb.begin(), picture.argb.end()), 0.0f);
}

TEST_F(RealPictures, photographs_are_opaque_8_bit_pictures) {
    const fs::path path = shared("Desk.jpg");
    KS_NEEDS(path);
    const Picture picture = read_picture(path);
    EXPECT_EQ(picture.native, SampleType::U8);
    EXPECT_EQ(picture.width, 644);
    EXPECT_EQ(picture.height, 874);
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) ASSERT_EQ(picture.argb[i], 1.0f);
}

}  // namespace
}  // namespace stage::test
