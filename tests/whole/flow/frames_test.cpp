// Whole frames, the plug-in through the stage, against the oracle.
#include "whole/support/frame_case.h"

namespace ks::flow {
namespace {

constexpr double kGammas[] = {0.1, 0.45, 1.0, 2.2, 5.0};
constexpr double kGains[] = {0.0, 0.5, 1.0, 4.0};

// All our own arithmetic: no scope, no wipe, no interpolation.
FrameCase single_view(stage::Depth depth, std::uint32_t seed, int width, int height) {
    FrameCase frame;
    frame.depth = depth;
    frame.input = random_image(seed, width, height, oracle_depth(depth), {false, true, true});
    frame.settings.layout = 1;
    frame.settings.show = {};
    return frame;
}

// Every layout can be compared to the last bit when nothing is interpolated: an opaque picture,
// nearest-neighbour quality.
FrameCase opaque_draft(stage::Depth depth, std::uint32_t seed, int width, int height) {
    FrameCase frame;
    frame.depth = depth;
    frame.input = random_image(seed, width, height, oracle_depth(depth), {true, true, false});
    frame.high_quality = false;
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        frame.scope_position[kind] = {3.0 * static_cast<double>(kind), 5.0};
    }
    return frame;
}

class FramesAtDepth : public testing::TestWithParam<stage::Depth> {};

TEST_P(FramesAtDepth, single_layout_shows_every_view_gamma_gain_and_luma_exactly) {
    std::uint32_t seed = 1;
    for (const int view : {1, 2, 3}) {
        for (const double gamma : kGammas) {
            for (const double gain : kGains) {
                FrameCase frame = single_view(GetParam(), ++seed, 37, 76);
                frame.settings.view = view;
                frame.settings.gamma = gamma;
                frame.settings.gain = gain;
                frame.settings.luma_math = 1 + static_cast<int>(seed % 2);
                frame.settings.corrections = 1 + static_cast<int>(seed / 2 % 2);
                expect_exact(frame);
            }
        }
    }
}

TEST_P(FramesAtDepth, identity_hands_every_sample_through) {
    const FrameCase frame = single_view(GetParam(), 7, 91, 80);
    const FramePair pair = run(frame);
    EXPECT_TRUE(pair.actual.bytes8 == frame.input.bytes8);
    EXPECT_TRUE(pair.actual.words16 == frame.input.words16);
    ASSERT_EQ(pair.actual.floats.size(), frame.input.floats.size());
    for (std::size_t i = 0; i < frame.input.floats.size(); ++i) {
        const float is = pair.actual.floats[i];
        const float was = frame.input.floats[i];
        ASSERT_TRUE(is == was || (is != is && was != was)) << i;
    }
}

TEST_P(FramesAtDepth, four_way_tiles_are_exact_without_interpolation) {
    std::uint32_t seed = 100;
    for (const int layout : {3, 4}) {
        for (const int channels : {1, 2}) {
            for (const int luma : {1, 2}) {
                FrameCase frame = opaque_draft(GetParam(), ++seed, 97, 83);
                frame.settings.layout = layout;
                frame.settings.channels = channels;
                frame.settings.luma_math = luma;
                frame.settings.gamma = 2.2;
                frame.settings.gain = 0.5;
                expect_exact(frame);
            }
        }
    }
}

TEST_P(FramesAtDepth, wipes_over_originals_of_every_size_are_exact_at_full_opacity) {
    std::uint32_t seed = 200;
    constexpr int kSizes[][2] = {{90, 80}, {41, 33}, {91, 81}, {120, 140}, {60, 200}, {1, 1}};
    for (const auto &size : kSizes) {
        for (const double compare : {0.0, 0.4, 33.3, 50.0, 99.9, 100.0}) {
            FrameCase frame = opaque_draft(GetParam(), ++seed, 90, 80);
            frame.original = random_image(seed + 9000, size[0], size[1], oracle_depth(GetParam()),
                                          {true, true, false});
            frame.settings.layout = kLayouts[seed % 5];
            frame.settings.compare = compare;
            frame.settings.show[oracle::kSlice] = seed % 2 == 0;
            frame.settings.slice_position = static_cast<double>(seed % 101);
            frame.monitor_position = {11, 7};
            expect_exact(frame);
        }
    }
}

TEST_P(FramesAtDepth, partial_opacity_of_the_wipe_differs_by_rounding_at_most) {
    std::uint32_t seed = 300;
    for (const double opacity : {0.0, 0.3, 25.0, 50.0, 99.8}) {
        FrameCase frame = opaque_draft(GetParam(), ++seed, 90, 80);
        frame.original =
            random_image(seed + 9000, 77, 91, oracle_depth(GetParam()), {false, true, false});
        frame.settings.layout = 1;
        frame.settings.compare = 60.0;
        frame.settings.compare_opacity = opacity;
        expect_near(frame, 1, 2e-5, "a blend may be rounded differently by each host");
    }
}

TEST_P(FramesAtDepth, windowed_views_anywhere_and_of_any_size_are_exact_without_interpolation) {
    std::uint32_t seed = 400;
    constexpr LayerPoint kPoints[] = {{0, 0}, {13.75, 9.5}, {-20.25, -3.5}, {70, 60}, {500, 500}};
    for (const LayerPoint &point : kPoints) {
        for (const double size : {10.0, 25.0, 50.0, 100.0}) {
            FrameCase frame = opaque_draft(GetParam(), ++seed, 101, 79);
            frame.settings.layout = 6;
            frame.settings.monitor_size = size;
            frame.settings.show[oracle::kSlice] = true;
            frame.monitor_position = point;
            expect_exact(frame);
        }
    }
}

TEST_P(FramesAtDepth, resolutions_and_pixel_aspects_of_odd_sizes_are_exact) {
    std::uint32_t seed = 500;
    constexpr SceneOptions kScenes[] = {{2, 3, 1, 1, false},  {1, 1, 10, 11, false},
                                        {2, 2, 2, 1, false},  {3, 4, 10, 11, false},
                                        {1, 1, 59, 54, true}, {4, 1, 1, 2, false}};
    constexpr int kSizes[][2] = {{75, 75}, {131, 93}, {200, 77}, {81, 200}};
    for (const SceneOptions &scene : kScenes) {
        for (const auto &size : kSizes) {
            FrameCase frame = opaque_draft(GetParam(), ++seed, size[0], size[1]);
            frame.scene = scene;
            frame.settings.layout = kLayouts[seed % 5];
            frame.settings.aspect = 1 + static_cast<int>(seed % 4);
            frame.settings.show = {false, true, seed % 3 == 0, true, seed % 2 == 0, true};
            frame.monitor_position = {21, 33};
            expect_exact(frame);
        }
    }
}

TEST_P(FramesAtDepth, interpolated_layouts_differ_by_rounding_at_most) {
    std::uint32_t seed = 600;
    for (int round = 0; round < 2; ++round) {
        for (const int layout : kLayouts) {
            for (const int channels : {1, 2}) {
                FrameCase frame = opaque_draft(GetParam(), ++seed, 120 + 7 * round, 90);
                frame.input = random_image(seed, frame.input.width, 90, oracle_depth(GetParam()),
                                           {round == 0, true, false});
                frame.high_quality = true;
                frame.settings.layout = layout;
                frame.settings.channels = channels;
                frame.settings.monitor_size = 61.7;
                frame.monitor_position = {9, 4};
                frame.settings.show[oracle::kSlice] = true;
                expect_near(frame, 2, 2e-4,
                            "interpolation may round a code up or down, and a colour-difference "
                            "view truncates once more behind it");
            }
        }
    }
}

TEST_P(FramesAtDepth, settings_drawn_at_random_are_exact) {
    for (std::uint32_t seed = 1000; seed < 1060; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int count) {
            return static_cast<int>(random() % static_cast<unsigned>(count));
        };
        FrameCase frame = opaque_draft(GetParam(), seed, 75 + pick(90), 75 + pick(90));
        oracle::FrameSettings &s = frame.settings;
        s.layout = kLayouts[pick(5)];
        s.view = 1 + pick(3);
        s.channels = 1 + pick(2);
        s.corrections = 1 + pick(2);
        s.luma_math = 1 + pick(2);
        s.aspect = 1 + pick(4);
        s.gamma = kGammas[pick(5)];
        s.gain = kGains[pick(4)];
        for (std::size_t kind = 1; kind <= 5; ++kind) s.show[kind] = pick(2) == 1;
        s.size = {0, 200.0 + pick(800), 150.0 + pick(800), 200, 200.5, 60.0 + pick(240)};
        s.slice_position = pick(101);
        s.monitor_size = 10.0 + pick(91);
        frame.monitor_position = {pick(160) * 0.75 - 20, pick(160) * 0.75 - 20};
        frame.scene = {1 + pick(3), 1 + pick(3), 1 + pick(3), 1 + pick(3), pick(2) == 1};
        if (pick(2) == 1) {
            frame.original = random_image(seed + 77, 1 + pick(180), 1 + pick(180),
                                          oracle_depth(GetParam()), {true, false, false});
            s.compare = pick(101);
        }
        expect_exact(frame);
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, FramesAtDepth, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
