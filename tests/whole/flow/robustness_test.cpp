// What hosts hand over on bad days: null worlds, tiny frames, partial regions, damaged records,
// missing suites, worlds laid out oddly.
#include <algorithm>
#include <optional>
#include <set>

#include "hostapi/constants.h"
#include "support/image_diff.h"
#include "whole/support/frame_case.h"
#include "whole/support/panel_capture.h"

namespace ks::flow {
namespace {

using test_support::images_equal;

class Robustness : public testing::TestWithParam<stage::Depth> {
  protected:
    oracle::Image opaque(std::uint32_t seed, int width, int height) const {
        return random_image(seed, width, height, oracle_depth(GetParam()), {true, true, false});
    }
    static void all_scopes(Flow &flow) {
        flow.set("Show Slice Waveform", 1);
        flow.set("Show Histogram", 1);
    }
    static PF_LRect intersection(const PF_LRect &a, const PF_LRect &b) {
        return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom)};
    }
    static oracle::FrameSettings plain() {
        oracle::FrameSettings settings;
        settings.show = {false, true, true, true, true, true};
        return settings;
    }
};

TEST_P(Robustness, null_input_gives_a_transparent_frame) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(1, 90, 80));
    stage::RenderSettings settings;
    settings.null_input = true;
    EXPECT_TRUE(images_equal("null input", oracle::make_image(90, 80, oracle_depth(GetParam())),
                             flow.frame(settings)));
}

TEST_P(Robustness, null_output_is_no_error) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(1, 90, 80));
    stage::RenderSettings settings;
    settings.null_output = true;
    EXPECT_EQ(flow.render(settings).error, 0);
    settings.null_input = true;
    EXPECT_EQ(flow.render(settings).error, 0);
}

TEST_P(Robustness, null_original_is_no_wipe) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(1, 90, 80));
    flow.set("Monitor Layout", 1);
    const oracle::Image without = flow.frame();
    flow.set_original(opaque(2, 90, 80));
    flow.set("Compare with Original", 50);
    EXPECT_FALSE(images_equal("with original", without, flow.frame()));
    stage::RenderSettings settings;
    settings.null_original = true;
    EXPECT_TRUE(images_equal("null original", without, flow.frame(settings)));
}

TEST_P(Robustness, pre_render_may_come_twice) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(1, 90, 80));
    stage::RenderSettings settings;
    const oracle::Image once = flow.frame(settings);
    settings.send_pre_render_twice = true;
    EXPECT_TRUE(images_equal("twice", once, flow.frame(settings)));
}

TEST_P(Robustness, frames_under_75_rows_come_through_unchanged) {
    constexpr int kSizes[][2] = {{1, 1}, {2, 1}, {1, 74}, {3, 74}, {200, 74}, {5, 3}};
    for (const auto &size : kSizes) {
        Flow flow(at_depth(GetParam()));
        const oracle::Image input =
            random_image(31, size[0], size[1], oracle_depth(GetParam()), {false, true, true});
        flow.make_scene(input);
        all_scopes(flow);
        flow.set("Primary Monitor View", 2);
        EXPECT_TRUE(images_equal("small", input, flow.frame()));
    }
}

TEST_P(Robustness, frames_a_few_pixels_wide_are_rendered_in_every_layout) {
    for (const int width : {1, 2, 3, 4, 7}) {
        for (const int height : {75, 76}) {
            for (const int layout : kLayouts) {
                FrameCase frame;
                frame.depth = GetParam();
                frame.input = opaque(32, width, height);
                frame.high_quality = false;
                frame.settings = plain();
                frame.settings.size = {0, 40, 40, 40, 40, 60};  // up to 75 times as high as wide
                frame.settings.layout = layout;
                frame.settings.monitor_size = 10;
                expect_exact(frame);
            }
        }
    }
}

TEST_P(Robustness, region_of_interest_is_a_frame_of_its_own) {
    const oracle::Image input = opaque(33, 160, 120);
    constexpr PF_LRect kRequests[] = {{0, 0, 160, 120},
                                      {10, 20, 150, 100},
                                      {40, 0, 41, 120},
                                      {-50, -50, 400, 400},
                                      {0, 0, 9, 74}};
    for (const PF_LRect &request : kRequests) {
        Flow flow(at_depth(GetParam()));
        flow.make_scene(input);
        oracle::FrameSettings values = plain();
        values.layout = 3;
        flow.set_values(values);
        place_scopes(flow, {});
        stage::RenderSettings settings;
        settings.high_quality = false;
        settings.request = request;
        values.quality = oracle::Quality::kNearest;
        values.order = flow.stacking_order();
        PanelCapture capture(flow);
        const auto made = [&](const PF_LRect &r) {
            return panel_kinds(values, r.right - r.left, r.bottom - r.top);
        };
        capture.begin(made(intersection(request, {0, 0, 160, 120})));
        const stage::RenderResult result = flow.render(settings);
        EXPECT_EQ(result.error, 0);
        EXPECT_EQ(result.max_result_rect.right, 160);
        EXPECT_TRUE(result.solid);
        for (std::size_t kind = 1; kind <= 5; ++kind) {
            const oracle::Image &panel = capture.panels[kind];
            values.panel_pictures[kind] = panel.width > 0 ? &panel : nullptr;
        }
        const oracle::Image part = cropped(input, result.result_rect);
        EXPECT_TRUE(images_equal("region", render_frame_oracle(part, nullptr, values).output,
                                 to_image(result.picture, GetParam())));
    }
}

TEST_P(Robustness, empty_request_and_request_beside_the_layer_are_skipped) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(34, 90, 80));
    for (const PF_LRect &request : {PF_LRect{0, 0, 0, 0}, {500, 500, 600, 600}, {20, 20, 10, 10}}) {
        stage::RenderSettings settings;
        settings.request = request;
        const stage::RenderResult result = flow.render(settings);
        EXPECT_EQ(result.error, 0);
        EXPECT_TRUE(result.skipped);
        EXPECT_EQ(result.max_result_rect.bottom, 80);
    }
}

TEST_P(Robustness, coarsest_resolution_leaves_out_panels_without_pixels) {
    for (const int layout : kLayouts) {
        FrameCase frame;
        frame.depth = GetParam();
        frame.scene = {100, 1, 1, 1, false};
        frame.input = opaque(35, 3, 90);
        frame.high_quality = false;
        frame.settings = plain();
        frame.settings.layout = layout;
        frame.settings.size = {0, 50, 50, 50, 50, 60};  // half a pixel wide
        expect_exact(frame);
        frame.scene = {1, 100, 1, 1, false};
        expect_exact(frame);
    }
}

TEST_P(Robustness, extreme_pixel_aspects_are_rendered) {
    for (const auto &[num, den] : {std::pair{10, 1}, {1, 10}, {1, 1000}, {1000, 1}}) {
        for (const int layout : kLayouts) {
            FrameCase frame;
            frame.depth = GetParam();
            frame.scene = {1, 1, num, den, false};
            frame.input = opaque(36, 80, 76);
            frame.high_quality = false;
            frame.settings = plain();
            frame.settings.size = {0, 25, 25, 25, 25, 60};
            frame.settings.aspect = 2;
            // 272 pixels over an aspect of 1/1000 are more than a world may have.
            frame.settings.show[oracle::kHistogram] = num != 1 || den != 1000;
            frame.settings.layout = layout;
            expect_exact(frame);
        }
    }
}

TEST_P(Robustness, panel_larger_than_any_world_is_the_hosts_error) {
    Flow flow(at_depth(GetParam()));
    SceneOptions scene;
    scene.par_den = 1000;
    flow.make_scene(opaque(37, 80, 76), scene);
    EXPECT_EQ(flow.render().error, 516);
}

// Panels beside each other, so that a kind that is listed twice shows the same either way.
TEST_P(Robustness, damaged_counts_and_orders_in_a_project_are_survived) {
    FrameCase frame;
    frame.depth = GetParam();
    frame.input = opaque(38, 90, 75);
    frame.settings.layout = 7;
    frame.settings.size = {0, 25, 25, 25, 25, 60};
    frame.settings.aspect = 1;
    for (const int kind : {1, 2, 3}) {
        frame.scope_position[static_cast<std::size_t>(kind)] = {30.0 * (kind - 1), 0};
    }
    for (int count = -128; count <= 127; ++count) {
        const auto byte = static_cast<std::uint8_t>(count);
        frame.flat = {0, byte, 7, static_cast<std::uint8_t>(-count), 128, 1, byte, 1};
        expect_exact(frame);
    }
    frame.flat = {0, 200, 0, 99, 6, 127, 3, 1};  // a count that fits keeps its order
    expect_exact(frame);
    frame.flat = {0, 2, 2, 2, 2, 2, 3, 1};
    expect_exact(frame);
}

// Every suite that a render of this scene and its set-up take.
std::set<std::pair<std::string, int>> suites_taken(Flow &flow) {
    std::set<std::pair<std::string, int>> taken;
    for (const stage::TraceEntry &entry : flow.host().trace.entries()) {
        if (entry.call != "SPBasicSuite.AcquireSuite") continue;
        const std::size_t end = entry.arguments.rfind("\", ");
        taken.insert(
            {entry.arguments.substr(1, end - 1), std::stoi(entry.arguments.substr(end + 3))});
    }
    return taken;
}

TEST_P(Robustness, each_missing_suite_is_516_and_the_next_command_works) {
    Flow flow(at_depth(GetParam()));
    SceneOptions adjustment;
    adjustment.adjustment = true;
    flow.make_scene(opaque(39, 76, 75), adjustment);
    all_scopes(flow);
    flow.set("Monitor Gamma", 2.2);
    const auto life = [&] {
        PF_Err first = flow.session.send(PF_Cmd_SEQUENCE_SETUP, flow.effect).error;
        const stage::RenderResult frame = flow.render();
        return first != 0 ? first : frame.error;
    };
    flow.host().trace.enable(true);
    EXPECT_EQ(life(), 0);
    flow.host().trace.enable(false);
    const auto taken = suites_taken(flow);
    EXPECT_GE(taken.size(), 9u);
    for (const auto &[name, number] : taken) {
        for (const bool null_table : {false, true}) {
            flow.host().suites.refuse(name, number, null_table);
            EXPECT_EQ(life(), 516) << name;
            flow.expect_clean("without \"" + name + "\"");
            flow.host().suites.accept_all();
            EXPECT_EQ(life(), 0) << "after \"" << name << "\" came back";
        }
    }
}

TEST_P(Robustness, null_basic_suite_is_516_wherever_suites_are_needed) {
    Flow flow(at_depth(GetParam()));
    flow.make_scene(opaque(40, 76, 75));
    flow.host().options.null_basic_suite = true;
    for (const PF_Cmd cmd : {PF_Cmd_GLOBAL_SETDOWN, PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP,
                             PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_SEQUENCE_SETDOWN}) {
        EXPECT_EQ(flow.session.send(cmd, flow.effect).error, 516) << cmd;
    }
    const stage::RenderResult frame = flow.render();
    EXPECT_EQ(frame.error, 516);
    EXPECT_EQ(frame.message, "Couldn't load suite PF_WorldSuite2.");
    EXPECT_EQ(flow.session.about().error, 0);
    flow.host().options.null_basic_suite = false;
    flow.frame();
}

TEST_P(Robustness, separate_render_copy_gives_the_same_frame_and_leaves_the_panels_record) {
    oracle::Image frames[2];
    for (const bool separate : {false, true}) {
        stage::HostOptions options = at_depth(GetParam());
        options.separate_render_copy = separate;
        Flow flow(options);
        flow.make_scene(opaque(41, 90, 80));
        all_scopes(flow);
        flow.set("Monitor Gamma", 2.2);
        const std::vector<std::uint8_t> before = flow.record();
        frames[separate] = flow.frame();
        flow.frame();
        EXPECT_EQ(flow.record() == before, separate);
    }
    EXPECT_TRUE(images_equal("separate copies", frames[0], frames[1]));
}

TEST_P(Robustness, layout_of_worlds_in_memory_makes_no_difference) {
    std::optional<oracle::Image> first;
    for (const int padding : {0, 16, 60}) {
        for (const int offset : {0, 4, 20}) {
            stage::HostOptions options = at_depth(GetParam());
            options.worlds.row_padding = padding;
            options.worlds.base_offset = offset;
            Flow flow(options);
            flow.make_scene(opaque(42, 91, 77));
            flow.set_original(opaque(43, 50, 60));
            all_scopes(flow);
            flow.set("Monitor Gain", 2);
            flow.set("Compare with Original", 50);
            const oracle::Image frame = flow.frame();
            if (!first) first = frame;
            EXPECT_TRUE(images_equal("padding", *first, frame)) << padding << " " << offset;
        }
    }
}

TEST_P(Robustness, out_of_range_values_that_a_host_does_not_clamp_are_rendered_as_they_are) {
    for (const double number : {-1e300, -1.0, 0.0, 1e-300, 1e300, 4e9}) {
        for (const int layout : kLayouts) {
            FrameCase frame;
            frame.depth = GetParam();
            frame.input = opaque(44, 76, 75);
            frame.original = opaque(45, 30, 90);
            frame.high_quality = false;
            frame.settings.layout = layout;
            frame.settings.show[oracle::kSlice] = true;
            frame.settings.gamma = number;
            frame.settings.monitor_size = number;
            frame.settings.compare = number;
            frame.settings.slice_position = number;
            // Negative results are not raised to 0 on their way to 16-bit codes, so a negative gain
            // or opacity would leave codes above 32768, which no host accepts.
            frame.settings.gain = std::max(number, 0.0);
            frame.settings.compare_opacity = std::max(number, 0.0);
            expect_exact(frame);
        }
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, Robustness, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
