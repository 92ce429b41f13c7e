// A photograph, pictures of extreme values, and public test pictures where there are any, through
// the whole pipeline.
#include "oracle/pixel_oracle.h"
#include "support/image_diff.h"
#include "support/pictures/test_pictures.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

struct RealCase {
    std::string name;
    stage::Depth depth;
};

class RealPicture : public testing::TestWithParam<RealCase> {
  protected:
    void SetUp() override {
        const std::optional<stage::Picture> picture = test_support::picture_named(GetParam().name);
        if (!picture) GTEST_SKIP() << GetParam().name << " is absent";
        image = to_image(*picture, GetParam().depth);
        // Enough of it for every kind of value in it.
        const PF_LRect part{0, 0, std::min(image.width, 400), std::min(image.height, 300)};
        image = cropped(image, part);
    }
    static void hide_scopes(Flow &flow) {
        flow.restore({0, 0, 0, 0, 0, 0, 0, 1});
        for (const char *name :
             {"Show Waveform Monitor", "Show Vectorscope", "Show Channel Parade"}) {
            flow.set(name, 0);
        }
    }
    oracle::Image image;
};

TEST_P(RealPicture, identity_hands_it_through) {
    Flow flow(at_depth(GetParam().depth));
    flow.make_scene(image);
    flow.set("Monitor Layout", 1);
    hide_scopes(flow);
    EXPECT_TRUE(test_support::images_equal("identity", image, flow.frame()));
}

TEST_P(RealPicture, corrected_view_is_exact) {
    Flow flow(at_depth(GetParam().depth));
    flow.make_scene(image);
    flow.set("Monitor Layout", 1);
    hide_scopes(flow);
    flow.set("Monitor Gamma", 2.2);
    flow.set("Monitor Gain", 0.5);
    const oracle::Image frame = flow.frame();
    EXPECT_TRUE(test_support::images_equal("corrected",
                                           oracle::convert_view(image, 1, 2.2, 0.5, 1, 1), frame));
}

TEST_P(RealPicture, every_layout_with_every_scope_renders_in_both_qualities) {
    Flow flow(at_depth(GetParam().depth));
    flow.make_scene(image);
    flow.set_original(cropped(image, {0, 0, image.width / 2, image.height / 2}));
    flow.set("Show Slice Waveform", 1);
    flow.set("Show Histogram", 1);
    flow.set("Compare with Original", 30);
    flow.set("Compare Opacity", 70);
    flow.set("Monitor Gamma", 0.45);
    for (const int layout : kLayouts) {
        for (const int channels : {1, 2}) {
            for (const bool high : {false, true}) {
                flow.set("Monitor Layout", layout);
                flow.set("View Channels", channels);
                stage::RenderSettings settings;
                settings.high_quality = high;
                const oracle::Image frame = flow.frame(settings);
                EXPECT_EQ(frame.width, image.width);
            }
        }
    }
}

std::vector<RealCase> real_cases() {
    std::vector<RealCase> cases;
    for (const std::string &name : test_support::picture_names()) {
        for (const stage::Depth depth : kDepths) cases.push_back({name, depth});
    }
    return cases;
}

std::string real_label(const testing::TestParamInfo<RealCase> &tested) {
    return tested.param.name + std::to_string(static_cast<int>(tested.param.depth));
}

INSTANTIATE_TEST_SUITE_P(Flow, RealPicture, testing::ValuesIn(real_cases()), real_label);

}  // namespace
}  // namespace ks::flow
