// The callbacks that the host calls, against a second implementation that shares nothing with them:
// eight views and one unknown, every gamma, gain, luma and curve flag, at each depth, every 8-bit
// code and float values of all kinds.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "oracle/pixel_oracle.h"
#include "pixels/gamma.h"
#include "pixels/views.h"
#include "render/view_callbacks.h"
#include "support/image_diff.h"

namespace {

using ks::oracle::Depth;
using ks::oracle::Image;

constexpr int kWidth = 64;
constexpr int kHeight = 48;

Image codes_and_noise(Depth depth) {
    Image image = ks::oracle::make_image(kWidth, kHeight, depth);
    std::mt19937 random(71);
    std::uniform_real_distribution<float> value(-0.5f, 9.0f);
    const float special[] = {0.0f,
                             -0.0f,
                             1.0f,
                             8.0f,
                             7.9999995f,
                             1e30f,
                             -1e30f,
                             1e-42f,
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN()};
    for (std::size_t i = 0; i < image.bytes8.size(); ++i) {
        image.bytes8[i] = static_cast<std::uint8_t>(i < 1024 ? (i / 4) : random());
    }
    for (std::size_t i = 0; i < image.words16.size(); ++i) {
        image.words16[i] = static_cast<std::uint16_t>(i < 1024 ? i * 32 : random() % 32769u);
    }
    for (std::size_t i = 0; i < image.floats.size(); ++i) {
        image.floats[i] = i % 7 == 0 ? special[random() % std::size(special)] : value(random);
    }
    return image;
}

template <class Pixel, class Component, class Callback>
void run_callback(const ks::ConversionRecord &record, Callback callback,
                  const std::vector<Component> &in, std::vector<Component> &out) {
    for (std::size_t i = 0; i < in.size(); i += 4) {
        Pixel from{in[i], in[i + 1], in[i + 2], in[i + 3]};
        Pixel to{};
        ASSERT_EQ(callback(const_cast<ks::ConversionRecord *>(&record), 0, 0, &from, &to), 0);
        out[i] = to.alpha;
        out[i + 1] = to.red;
        out[i + 2] = to.green;
        out[i + 3] = to.blue;
    }
}

Image converted(const Image &image, ks::ConversionRecord record) {
    Image result = ks::oracle::make_image(image.width, image.height, image.depth);
    const std::int32_t view = record.view_mode;
    switch (image.depth) {
        case Depth::kByte:
            record.pixel_format = ks::kFormat8;
            ks::prepare_record(record);
            run_callback<PF_Pixel>(record, ks::view_callback_8(view), image.bytes8, result.bytes8);
            break;
        case Depth::kWord:
            record.pixel_format = ks::kFormat16;
            ks::prepare_record(record);
            run_callback<PF_Pixel16>(record, ks::view_callback_16(view), image.words16,
                                     result.words16);
            break;
        case Depth::kFloat:
            record.pixel_format = ks::kFormatF;
            ks::prepare_record(record);
            run_callback<PF_PixelFloat>(record, ks::view_callback_float(view), image.floats,
                                        result.floats);
            break;
    }
    return result;
}

class ViewsAgainstOracle : public testing::TestWithParam<Depth> {};

TEST_P(ViewsAgainstOracle, every_view_gamma_gain_luma_and_curve_flag_is_exact) {
    const Image image = codes_and_noise(GetParam());
    for (const double gamma : {0.1, 0.45, 1.0, 2.2, 5.0}) {
        std::vector<float> tables(ks::kCurveEntries, 0.0f);
        ks::build_gamma_tables(tables.data(), gamma, std::pow);
        for (const double gain : {0.0, 0.5, 1.0, 4.0}) {
            for (int view = 1; view <= 9; ++view) {
                for (const int luma : {1, 2, 3}) {
                    for (const int curve : {1, 2}) {
                        ks::ConversionRecord record{};
                        record.apply_curve = static_cast<std::uint8_t>(curve);
                        record.view_mode = view;
                        record.inverse_gamma = static_cast<float>(1.0 / gamma);
                        record.low_table = tables.data();
                        record.high_table = tables.data() + ks::kRampEntries;
                        record.gain = static_cast<float>(gain);
                        record.luma_math = ks::luma_math_of(luma);
                        const Image expected =
                            ks::oracle::convert_view(image, view, gamma, gain, luma, curve);
                        ASSERT_TRUE(ks::test_support::images_equal("view", expected,
                                                                   converted(image, record)))
                            << "view " << view << " gamma " << gamma << " gain " << gain << " luma "
                            << luma << " curve flag " << curve;
                    }
                }
            }
        }
    }
}

std::string depth_name(const testing::TestParamInfo<Depth> &depth) {
    if (depth.param == Depth::kByte) return "at_8_bit";
    return depth.param == Depth::kWord ? "at_16_bit" : "at_float";
}

INSTANTIATE_TEST_SUITE_P(Depths, ViewsAgainstOracle,
                         testing::Values(Depth::kByte, Depth::kWord, Depth::kFloat), depth_name);

}  // namespace
