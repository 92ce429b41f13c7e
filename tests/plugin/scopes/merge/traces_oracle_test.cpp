// The traces against the oracle's, which plots every sample in order: every combination of what
// chooses the counters, then chance.
#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "plugin/scopes/merge/trace_promises.h"

namespace ks {
namespace {

using oracle::Depth;

enum class Picture { kNoise, kSmooth };
// depth, picture, sub-pixel, waveform mode, view channels, quality
using Case = std::tuple<Depth, Picture, bool, int, int, int>;

const char *name_of(Depth depth) {
    return depth == Depth::kByte ? "byte" : depth == Depth::kWord ? "word" : "float";
}

std::string case_name(const testing::TestParamInfo<Case> &info) {
    const auto [depth, picture, sub, mode, view, quality] = info.param;
    return std::string(name_of(depth)) + (picture == Picture::kNoise ? "_noise" : "_smooth") +
           (sub ? "_split" : "_whole") + "_mode" + std::to_string(mode) + "_view" +
           std::to_string(view) + "_quality" + std::to_string(quality);
}

TraceCase all_scopes(oracle::Image source) {
    TraceCase c;
    c.settings.show = {false, true, true, true, false, true};
    c.settings.layer_width = c.settings.output_width = source.width;
    c.source = std::move(source);
    c.extents[oracle::kWaveform] = {200, 130};
    c.extents[oracle::kVectorscope] = {200, 218};
    c.extents[oracle::kParade] = {210, 136};
    c.extents[oracle::kHistogram] = {272, 102};
    return c;
}

class TracesOracleTest : public testing::TestWithParam<Case> {};

TEST_P(TracesOracleTest, Agree) {
    const auto [depth, picture, sub, mode, view, quality] = GetParam();
    TraceCase c = all_scopes(picture == Picture::kNoise ? noise_picture(317, 203, depth, 11)
                                                        : smooth_picture(317, 203, depth, 12));
    c.settings.quality = quality;
    c.settings.sub_pixel = sub;
    c.settings.waveform_channels = mode;
    c.settings.view_channels = view;
    c.settings.luma_math = mode == 2 ? 2 : 1;
    c.settings.histogram_channels = view;
    c.settings.max_waveform = 130.0;
    c.settings.monochrome = mode != 3;
    c.run = {3, PartOrder::kShuffled, 2, 0};
    EXPECT_GT(expect_promises(c).lit, 1000u);
}

INSTANTIATE_TEST_SUITE_P(
    All, TracesOracleTest,
    testing::Combine(testing::Values(Depth::kByte, Depth::kWord, Depth::kFloat),
                     testing::Values(Picture::kNoise, Picture::kSmooth), testing::Bool(),
                     testing::Values(1, 2, 3), testing::Values(1, 2), testing::Values(1, 2, 3)),
    case_name);

/// Sizes, layouts, parameters and pictures drawn by chance; each number is one reproducible case.
class RandomTraces {
  public:
    explicit RandomTraces(std::uint32_t seed) : random_(seed) {}

    TraceCase make() {
        const Depth depth = pick({Depth::kByte, Depth::kWord, Depth::kFloat});
        TraceCase c = all_scopes(picture(depth));
        set_parameters(c.settings);
        set_layout(c);
        c.run.parts = pick({1, 1, 2, 3, 7, 64});
        c.run.order = pick({PartOrder::kSerial, PartOrder::kReversed, PartOrder::kShuffled});
        return c;
    }

  private:
    template <class T>
    T pick(std::initializer_list<T> values) {
        return values.begin()[random_() % values.size()];
    }
    int between(int low, int high) {
        return low + static_cast<int>(random_() % static_cast<std::uint32_t>(high - low + 1));
    }

    oracle::Image picture(Depth depth) {
        const int width = pick({1, 2, 3, 17, 64, 65, 128, 131, 300, between(1, 500)});
        const int height = pick({1, 2, 5, 64, 71, between(1, 200)});
        const auto seed = static_cast<std::uint32_t>(random_());
        oracle::Image image = pick({0, 1, 2}) == 0 ? noise_picture(width, height, depth, seed)
                              : pick({0, 1}) == 0  ? smooth_picture(width, height, depth, seed)
                                                   : wild_picture(width, height, depth, seed);
        if (pick({true, false})) make_opaque(image);
        return image;
    }

    void set_parameters(oracle::ScopeSettings &s) {
        for (const int kind :
             {oracle::kWaveform, oracle::kVectorscope, oracle::kParade, oracle::kHistogram}) {
            s.show[static_cast<std::size_t>(kind)] = between(0, 4) != 0;
            s.brightness[static_cast<std::size_t>(kind)] =
                pick({50.0, 100.0, 150.0, between(500, 1500) * 0.1});
        }
        s.quality = between(1, 3);
        s.luma_math = between(1, 2);
        s.waveform_channels = between(1, 3);
        s.view_channels = between(1, 2);
        s.histogram_channels = between(1, 2);
        s.calibrate = between(1, 4);
        s.monochrome = pick({true, false});
        s.max_waveform = pick({100.0, 120.0, 200.0, 100.0 + between(0, 1000) * 0.1});
        s.sub_pixel = pick({true, false});
    }

    /// Panels of 20 to 300 pixels, now and then one of 1000, at any scale whose margins leave room.
    void set_layout(TraceCase &c) {
        oracle::ScopeSettings &s = c.settings;
        s.downsample_x_den = pick({1, 1, 2, 3, 4});
        s.downsample_y_den = pick({1, 1, 2, 3, 4});
        s.par_num = pick({1, 10, 2, 1});
        s.par_den = pick({1, 11, 1, 2});
        s.layer_width = pick({320, 1920, 3840, 8192});
        s.output_width = std::max(1, s.layer_width / s.downsample_x_den);
        const oracle::LayoutUnits units = oracle::layout_units(s);
        for (const int kind : {oracle::kWaveform, oracle::kVectorscope, oracle::kParade}) {
            const int least_width = units.left_margin + units.right_margin + 3;
            const int least_height = units.label_band + 2 * units.vertical_margin + 1;
            const bool large = between(0, 40) == 0;
            c.extents[static_cast<std::size_t>(kind)] = {
                std::max(large ? 1000 : between(20, 300), least_width),
                std::max(large ? between(500, 1000) : between(20, 300), least_height)};
        }
        oracle::PanelExtent &vector = c.extents[oracle::kVectorscope];
        vector.height = std::max(vector.height, units.label_band + 2 * units.small_gap + 1);
        vector.width = std::max(vector.width, 2 * units.vectorscope_inset + 1);
    }

    std::mt19937 random_;
};

TEST(RandomTracesTest, agree) {
    PromiseCount sum;
    for (std::uint32_t seed = 1; seed <= 1000 && !testing::Test::HasFailure(); ++seed) {
        const TraceCase c = RandomTraces(seed).make();
        SCOPED_TRACE("case " + std::to_string(seed) + ", " + name_of(c.source.depth) + ", " +
                     std::to_string(c.source.width) + "x" + std::to_string(c.source.height));
        const PromiseCount count = expect_promises(c);
        sum.lit += count.lit;
        sum.uncertain += count.uncertain;
        sum.off += count.off;
    }
    // The bounded promises were put to the test, and the bound is needed.
    EXPECT_GT(sum.lit, 100000u);
    EXPECT_GT(sum.uncertain, 100u);
    EXPECT_GT(sum.off, 0u);
}

}  // namespace
}  // namespace ks
