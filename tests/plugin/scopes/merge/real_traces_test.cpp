// The traces of a photograph, of pictures of extreme values, and of public test pictures where
// there are any.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "plugin/scopes/merge/trace_promises.h"
#include "support/pictures/test_pictures.h"

namespace ks {
namespace {

using oracle::Depth;

/// Every second pixel each way, which is plenty.
oracle::Image to_image(const stage::Picture &picture, Depth depth) {
    oracle::Image image = oracle::make_image(picture.width / 2, picture.height / 2, depth);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            oracle::Stored pixel;
            for (std::size_t k = 0; k < 4; ++k) {
                const auto v = static_cast<double>(picture.at(2 * x, 2 * y)[k]);
                pixel[k] = depth == Depth::kFloat ? v
                                                  : std::floor((v > 0.0 ? std::min(v, 1.0) : 0.0) *
                                                               oracle::full_scale(depth));
            }
            oracle::store_pixel(image, x, y, pixel);
        }
    }
    return image;
}

class RealTraces : public testing::TestWithParam<std::string> {};

TEST_P(RealTraces, keep_the_promises) {
    const std::optional<stage::Picture> picture = test_support::picture_named(GetParam());
    if (!picture) GTEST_SKIP() << GetParam() << " is absent";
    for (const Depth depth : {Depth::kByte, Depth::kWord, Depth::kFloat}) {
        TraceCase c;
        c.source = to_image(*picture, depth);
        c.settings.show = {false, true, true, true, false, true};
        c.settings.quality = 3;
        c.settings.sub_pixel = true;
        c.settings.monochrome = depth != Depth::kByte;
        c.settings.max_waveform = 150.0;
        c.settings.layer_width = c.settings.output_width = c.source.width;
        c.extents[oracle::kWaveform] = {320, 214};
        c.extents[oracle::kVectorscope] = {200, 218};
        c.extents[oracle::kParade] = {320, 214};
        c.extents[oracle::kHistogram] = {272, 102};
        c.run = {4, PartOrder::kShuffled};
        EXPECT_GT(expect_promises(c).lit, 1000u);
    }
}

INSTANTIATE_TEST_SUITE_P(Pictures, RealTraces, testing::ValuesIn(test_support::picture_names()),
                         [](const auto &name) { return name.param; });

}  // namespace
}  // namespace ks
