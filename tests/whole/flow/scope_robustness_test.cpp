// Scopes on bad days: odd shapes, coarse resolutions, values that are no numbers, choices that do
// not exist.
#include "whole/support/frame_case.h"

namespace ks::flow {
namespace {

class ScopeRobustness : public testing::TestWithParam<stage::Depth> {};

// Five scopes over pictures of every odd shape and content; what they show is beside the point.
TEST_P(ScopeRobustness, odd_sizes_resolutions_aspects_and_values_are_survived) {
    struct Shape {
        int width, height;
        SceneOptions scene;
    };
    constexpr Shape kShapes[] = {
        {1, 75, {}},                       // one column
        {3, 76, {}},                       // narrower than any panel
        {301, 75, {}},                     // as low as a frame can be
        {37, 77, {20, 20, 1, 1, false}},   // panels of 10 by 6 pixels, margins of none
        {97, 83, {20, 1, 1, 1, false}},    // narrow panels
        {97, 83, {1, 20, 1, 1, false}},    // low panels
        {97, 83, {1, 1, 10, 1, false}},    // pixels ten times as wide as high
        {97, 83, {1, 1, 1, 10, false}},    // and ten times as high
        {97, 83, {100, 1, 10, 1, false}},  // nothing left to draw on
    };
    std::uint32_t seed = 500;
    for (const Shape &shape : kShapes) {
        for (const bool high : {false, true}) {
            FrameCase frame;
            frame.depth = GetParam();
            frame.scene = shape.scene;
            frame.input = random_image(++seed, shape.width, shape.height, oracle_depth(GetParam()),
                                       {true, true, true});
            frame.settings.show = {false, true, true, true, true, true};
            frame.settings.layout = 7;
            frame.settings.channels = 1 + static_cast<int>(seed % 2);
            frame.settings.aspect = 1 + static_cast<int>(seed % 4);
            frame.high_quality = high;
            SCOPED_TRACE(std::to_string(shape.width) + " by " + std::to_string(shape.height));
            expect_exact(frame);
        }
    }
}

TEST_P(ScopeRobustness, every_choice_a_popup_might_hold_is_survived) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(random_image(46, 90, 80, oracle_depth(GetParam()), {true, true, false}));
    flow.set("Show Slice Waveform", 1);
    flow.set("Show Histogram", 1);
    flow.set("Monitor Layout", 7);
    for (const char *name :
         {"Waveform Monitor/Show Channels", "Graticule Layout", "Calibrate For",
          "Slice Waveform/Show Channels", "Histogram/Show Channels", "Luminance Math's",
          "Waveform Scopes Scale", "Show Waveform Guides", "Sampling Quality", "View Channels"}) {
        for (const int choice : {-2147483647, -1, 0, 1, 2, 3, 4, 5, 2147483647}) {
            flow.set(name, choice);
            EXPECT_EQ(flow.render().error, 0) << name << " " << choice;
        }
        flow.set(name, 1);
    }
    const auto survives = [&](const char *name, const std::vector<double> &numbers) {
        for (const double number : numbers) {
            flow.set(name, number);
            const stage::RenderResult result = flow.render();
            EXPECT_FALSE(result.escaped) << name << " " << number;
            EXPECT_EQ(result.error, 0) << name << " " << number;
        }
        flow.set(name, 100);
    };
    for (const char *name : {"Waveform Monitor/Scope Brightness", "Vectorscope/Scope Brightness",
                             "Channel Parade/Scope Brightness", "Slice Position"}) {
        survives(name, {-1e300, -1.0, 0.0, 1e-300, 1e6, 1e300});
    }
    survives("Max Waveform Scale",
             {-1e300, -100.0, 0.0, 1e-300, 1.0, 50.0, 1000.0, 10000.0, 1e6, 1e300});
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, ScopeRobustness, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
