#include "whole/support/frame_case.h"

#include "support/image_diff.h"
#include "whole/support/panel_capture.h"

namespace ks::flow {
namespace {

constexpr const char *kPosition[6] = {"",
                                      "Waveform Monitor/Scope Position",
                                      "Vectorscope/Scope Position",
                                      "Channel Parade/Scope Position",
                                      "Slice Waveform/Scope Position",
                                      "Histogram/Scope Position"};

oracle::FrameSettings resolved(const FrameCase &frame, const oracle::StackingOrder &order) {
    oracle::FrameSettings settings = frame.settings;
    const auto fixed = [&](const LayerPoint &point) {
        return checked_out_point(point.x, point.y, frame.scene);
    };
    settings.monitor_position = fixed(frame.monitor_position);
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        settings.position[kind] = fixed(frame.scope_position[kind]);
    }
    settings.downsample_x_den = frame.scene.downsample_x;
    settings.downsample_y_den = frame.scene.downsample_y;
    settings.par_num = frame.scene.par_num;
    settings.par_den = frame.scene.par_den;
    settings.quality = frame.high_quality ? oracle::Quality::kBilinear : oracle::Quality::kNearest;
    settings.order = order;
    return settings;
}

void expect_same_order(const oracle::StackingOrder &expected, const oracle::StackingOrder &actual) {
    EXPECT_EQ(expected.kinds, actual.kinds);
    EXPECT_EQ(expected.count, actual.count);
}

std::string test_name() {
    const auto *info = testing::UnitTest::GetInstance()->current_test_info();
    return std::string(info->test_suite_name()) + "-" + info->name();
}

}  // namespace

void place_scopes(Flow &flow, const std::array<LayerPoint, 6> &positions) {
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        flow.set_point(kPosition[kind], positions[kind].x, positions[kind].y);
    }
}

FramePair run(const FrameCase &frame, stage::HostOptions options) {
    options.depth = frame.depth;
    Flow flow(options);
    flow.make_scene(frame.input, frame.scene);
    if (frame.original) flow.set_original(*frame.original);
    flow.set_values(frame.settings);
    flow.set_point("Monitor Position", frame.monitor_position.x, frame.monitor_position.y);
    place_scopes(flow, frame.scope_position);
    if (!frame.flat.empty()) flow.restore(frame.flat);
    oracle::FrameSettings settings = resolved(frame, flow.stacking_order());
    stage::RenderSettings render;
    render.high_quality = frame.high_quality;
    FramePair pair;
    pair.actual = frame_with_panels(flow, settings, frame.input.width, frame.input.height,
                                    pair.panels, render);
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        const bool composited = pair.panels[kind].width > 0;
        settings.panel_pictures[kind] = composited ? &pair.panels[kind] : nullptr;
    }
    pair.expected =
        render_frame_oracle(frame.input, frame.original ? &*frame.original : nullptr, settings);
    expect_same_order(pair.expected.order, flow.stacking_order());
    return pair;
}

void expect_exact(const FrameCase &frame) {
    const FramePair pair = run(frame);
    EXPECT_TRUE(test_support::images_equal(test_name(), pair.expected.output, pair.actual))
        << describe(frame.settings, frame.depth);
}

void expect_near(const FrameCase &frame, double codes, double absolute, const char *reason) {
    const FramePair pair = run(frame);
    const double amount = frame.depth == stage::Depth::Float ? absolute : codes;
    EXPECT_TRUE(
        test_support::images_near(test_name(), pair.expected.output, pair.actual, {amount, reason}))
        << describe(frame.settings, frame.depth);
}

}  // namespace ks::flow
