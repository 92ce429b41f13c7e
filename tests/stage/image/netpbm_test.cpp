#include "stage/image/codecs/netpbm.h"

#include <gtest/gtest.h>

#include <limits>

#include "stage/image/scratch.h"

namespace stage::test {
namespace {

using namespace std::string_literals;

TEST(Pfm, every_bit_comes_back_with_and_without_alpha) {
    Picture picture = opaque_floats();
    picture.argb[1] = std::numeric_limits<float>::quiet_NaN();
    picture.argb[2] = -std::numeric_limits<float>::infinity();
    EXPECT_TRUE(netpbm::encode_pfm(picture).starts_with("PF\n5 3\n-1.0\n"));
    EXPECT_TRUE(same_bits(netpbm::decode(netpbm::encode_pfm(picture)), picture));
    picture.argb[4] = -0.5f;
    picture.argb[8] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(netpbm::encode_pfm(picture).starts_with("PF4\n5 3\n-1.0\n"));
    EXPECT_TRUE(same_bits(netpbm::decode(netpbm::encode_pfm(picture)), picture));
}

TEST(Pfm, rows_are_stored_from_the_bottom) {
    // 1.0 is 3F800000, 2.0 is 40000000; grey, big-endian.
    const Picture picture = netpbm::decode("Pf\n1 2\n1.0\n\x3F\x80\0\0\x40\0\0\0"s);
    EXPECT_EQ(picture.argb, (std::vector<float>{1, 2, 2, 2, 1, 1, 1, 1}));
    EXPECT_EQ(picture.native, SampleType::Float);
}

TEST(Pfm, both_byte_orders_are_read) {
    const Picture little = netpbm::decode("PF\n1 1\n-1\n\0\0\x80\x3F\0\0\0\x40\0\0\x80\xBF"s);
    EXPECT_EQ(little.argb, (std::vector<float>{1, 1, 2, -1}));
    const Picture big = netpbm::decode("PF\n1 1\n1\n\x3F\x80\0\0\x40\0\0\0\xBF\x80\0\0"s);
    EXPECT_TRUE(same_bits(big, little));
}

TEST(Pam, all_8_bit_codes_come_back) {
    const Picture picture = all_codes8();
    const Picture back = netpbm::decode(netpbm::encode_pam(picture, 255));
    EXPECT_EQ(back.native, SampleType::U8);
    EXPECT_TRUE(same_bits(back, picture));
}

TEST(Pam, all_host_16_bit_codes_come_back) {
    const Picture picture = all_codes16();
    const Picture back = netpbm::decode(netpbm::encode_pam(picture, 32768));
    EXPECT_EQ(back.native, SampleType::HostU16);
    EXPECT_TRUE(same_bits(back, picture));
}

TEST(Pam, the_bytes_are_those_of_the_format) {
    Picture picture = make_picture(1, 1, SampleType::U16);
    picture.argb = {1.0f, 0.0f, 258.0f / 65535.0f, 0.5f};
    EXPECT_EQ(netpbm::encode_pam(picture, 65535),
              "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 65535\nTUPLTYPE RGB_ALPHA\nENDHDR\n"
              "\0\0\x01\x02\x80\0\xFF\xFF"s);
    EXPECT_EQ(netpbm::encode_pam(picture, 255),
              "P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n"
              "\0\x01\x80\xFF"s);
}

TEST(Pam, one_to_four_channels_are_read) {
    const auto decoded = [](int depth) {
        const std::string samples = "\x33\x66\x99\xCC";
        return netpbm::decode("P7\n# made by hand\nWIDTH 1\nHEIGHT 1\nMAXVAL 255\nDEPTH " +
                              std::to_string(depth) + "\nENDHDR\n" +
                              samples.substr(0, static_cast<std::size_t>(depth)))
            .argb;
    };
    EXPECT_EQ(decoded(1), (std::vector<float>{1, 0.2f, 0.2f, 0.2f}));
    EXPECT_EQ(decoded(2), (std::vector<float>{0.4f, 0.2f, 0.2f, 0.2f}));
    EXPECT_EQ(decoded(3), (std::vector<float>{1, 0.2f, 0.4f, 0.6f}));
    EXPECT_EQ(decoded(4), (std::vector<float>{0.8f, 0.2f, 0.4f, 0.6f}));
}

TEST(Netpbm, damaged_files_are_refused_at_every_length) {
    for (const std::string &whole :
         {netpbm::encode_pfm(opaque_floats()), netpbm::encode_pam(all_codes8(), 255)}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            ASSERT_THROW(netpbm::decode(whole.substr(0, length)), PictureError) << length;
        }
    }
}

TEST(Netpbm, impossible_headers_are_refused_with_a_reason) {
    const auto reason = [](const char *bytes) { return error_of([&] { netpbm::decode(bytes); }); };
    EXPECT_EQ(reason("P6\n1 1\n255\nabc"), "it is neither a PFM nor a PAM file");
    EXPECT_EQ(reason("PF\nx 1\n-1\n"), "\"x\" in the header is not a number");
    EXPECT_EQ(reason("PF\n0 1\n-1\n"),
              "a picture of 0x1 is not possible: each side must be 1 to 30000 pixels");
    EXPECT_EQ(reason("PF\n4 1\n-1\nabc"), "the file is cut off: 3 of 48 bytes of samples");
    EXPECT_EQ(reason("P7\nWIDTH 1\nHEIGHT 1\nDEPTH 5\nMAXVAL 255\nENDHDR\n"),
              "a PAM file with 5 channels and the maximum 255 is not possible");
    EXPECT_EQ(reason("P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 0\nENDHDR\n"),
              "a PAM file with 4 channels and the maximum 0 is not possible");
    EXPECT_EQ(reason("P7\nWIDTH\nENDHDR\n"), "the header has a field without value");
    EXPECT_EQ(reason("P7\nWIDTH 1\n"), "the header is cut off");
}

}  // namespace
}  // namespace stage::test
