// Each fallible host call of each command failing in turn, alone and with all later ones.
#include "whole/faults/fault_loop.h"

#include <algorithm>
#include <memory>

#include "hostapi/constants.h"
#include "oracle/record_oracle.h"
#include "support/image_diff.h"
#include "support/paths.h"

namespace ks::flow {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr char kNewHandle[] = "PF Handle Suite.host_new_handle";
constexpr char kAbort[] = "inter.abort";
constexpr char kGraphics[] = "16";  // bytes of a graphics object, as traced
constexpr char kLockHandle[] = "PF Handle Suite.host_lock_handle";

oracle::Image small_image(stage::Depth depth = stage::Depth::U8) {
    return random_image(11, 60, 76, oracle_depth(depth), {true, false, false});
}

// A session whose PARAMS_SETUP has not been sent.
struct BareSession {
    BareSession() : session(paths::plugin()) {
        EXPECT_EQ(session.send(PF_Cmd_GLOBAL_SETUP).error, 0);
    }
    stage::Session session;
};

TEST(FaultLoop, global_setup_makes_no_call_that_could_fail) {
    BareSession bare;
    EXPECT_EQ(bare.session.host.faults.count(), 0u);
    EXPECT_TRUE(bare.session.host.strict.violations().empty());
}

TEST(FaultLoop, params_setup_stops_adding_at_the_first_failure_and_still_counts_69) {
    int nth = 1;
    for (bool struck = true; struck; ++nth) {
        BareSession bare;
        stage::Session &session = bare.session;
        session.host.faults.arm(static_cast<std::uint64_t>(nth));
        const PF_Err error = session.send(PF_Cmd_PARAMS_SETUP).error;
        struck = session.host.faults.struck();
        EXPECT_EQ(error, struck ? stage::kInjectedError : 0);
        EXPECT_EQ(session.plugin.num_params, 69);
        EXPECT_EQ(session.plugin.catalog.count(), std::min(nth, 69)) << nth;
        EXPECT_EQ(session.host.faults.count(), static_cast<std::uint64_t>(std::min(nth, 69)));
        EXPECT_EQ(session.plugin.custom_ui, !struck);
        EXPECT_TRUE(session.host.strict.violations().empty());
    }
    EXPECT_EQ(nth, 71) << "68 parameters, the custom UI, and one run without a failure";
}

TEST(FaultLoop, global_setdown_disposes_of_global_data_and_returns_516_without_the_suite) {
    Flow flow;
    const PF_Handle data = flow.host().handles.allocate(16, "the host");
    flow.host().handles.set_host_owned(data, true);
    flow.session.plugin.global_data = data;
    flow.host().faults.arm(1);
    EXPECT_EQ(flow.session.send(PF_Cmd_GLOBAL_SETDOWN).error, 516);
    flow.host().faults.reset();
    EXPECT_TRUE(flow.host().handles.is_live(data));
    EXPECT_EQ(flow.session.send(PF_Cmd_GLOBAL_SETDOWN).error, 0);
    EXPECT_FALSE(flow.host().handles.is_live(data));
    flow.session.plugin.global_data = nullptr;
}

// What set-up does to the project, in words.
std::string layers_text(Flow &flow) {
    std::string text;
    const stage::Project &project = flow.host().project;
    for (const stage::Layer &layer : project.comp(flow.comp)->layers) {
        const stage::Item *source = project.item(layer.source);
        text += layer.name + " " + std::to_string(layer.flags) + " " + layer.position_expression +
                " " + (source == nullptr ? "-" : source->name + std::to_string(source->width)) +
                "\n";
    }
    return text;
}

Bytes record_and_layers(Flow &flow) {
    Bytes bytes = flow.record();
    const std::string text = layers_text(flow);
    bytes.insert(bytes.end(), text.begin(), text.end());
    return bytes;
}

PF_Err set_up_again(Flow &flow) {
    const PF_Err error = flow.session.send(PF_Cmd_SEQUENCE_SETUP, flow.effect).error;
    const Bytes record = flow.record();
    EXPECT_TRUE(record.empty() || record == oracle::new_instance_record());
    return error;
}

std::optional<PF_Err> set_up_result(const Strike &strike) {
    if (strike.form == stage::FailureForm::kNullResult) return 512;
    // What becomes of the script's result text is nobody's error.
    if (strike.name == "AEGP Memory Suite.AEGP_FreeMemHandle" &&
        strike.previous == "AEGP Utility Suite.AEGP_ExecuteScript") {
        return 0;
    }
    return std::nullopt;
}

// Set-up over and over in the same project.
int set_up_loop(Flow &flow, const std::string &name) {
    const auto before = std::make_shared<stage::ProjectData>(flow.host().project.data());
    return run_fault_loop(flow, {name,
                                 set_up_again,
                                 record_and_layers,
                                 set_up_result,
                                 [before](Flow &f) { f.host().project.restore(*before); },
                                 {}});
}

TEST(FaultLoop, sequence_setup_on_footage) {
    Flow flow;
    flow.make_scene(small_image());
    EXPECT_GE(set_up_loop(flow, "footage"), 10);
}

TEST(FaultLoop, sequence_setup_on_an_adjustment_layer_over_a_full_frame) {
    Flow flow;
    SceneOptions options;
    options.adjustment = true;
    flow.make_scene(small_image(), options);
    EXPECT_GE(set_up_loop(flow, "adjustment over footage"), 15);
}

TEST(FaultLoop, sequence_setup_that_makes_the_backing_solid) {
    Flow flow;
    stage::Project &project = flow.host().project;
    flow.comp = project.add_comp("comp", 60, 76, 1, 1, 1);
    project.active_comp = flow.comp;
    flow.layer = project.add_adjustment_layer(flow.comp, 0, "monitor");
    project.layer(flow.layer)->selected = true;
    flow.effect = flow.session.apply(flow.layer);
    ASSERT_NE(flow.effect, nullptr);
    stage::ProjectData bare = project.data();
    for (stage::Item &item : bare.items) {
        std::erase_if(item.layers, [](const stage::Layer &l) { return l.name != "monitor"; });
    }
    project.restore(bare);
    EXPECT_GE(set_up_loop(flow, "adjustment over nothing"), 20);
}

int sequence_loop(const std::string &name, const std::function<PF_Err(Flow &)> &run,
                  const std::function<void(Flow &)> &prepare) {
    Flow flow;
    flow.make_scene(small_image());
    // The first lock is the old data's: what cannot be locked is left alone, without an error.
    const auto special = [](const Strike &strike) -> std::optional<PF_Err> {
        if (strike.form != stage::FailureForm::kNullResult) return std::nullopt;
        return strike.name == kLockHandle && strike.ordinal == 1 ? 0 : 512;
    };
    return run_fault_loop(flow,
                          {name, run, [](Flow &f) { return f.record(); }, special, prepare, {}});
}

TEST(FaultLoop, sequence_resetup) {
    EXPECT_EQ(sequence_loop(
                  "resetup", [](Flow &flow) { return flow.session.resetup(*flow.effect).error; },
                  [](Flow &flow) {
                      flow.session.set_flat_data(*flow.effect, {1, 3, 2, 1, 0, 0, 3, 1});
                  }),
              4);
}

TEST(FaultLoop, sequence_flatten) {
    EXPECT_EQ(sequence_loop(
                  "flatten", [](Flow &flow) { return flow.session.flatten(*flow.effect).error; },
                  [](Flow &flow) {
                      flow.restore({1, 3, 2, 1, 0, 0, 3, 1});
                  }),
              4);
}

TEST(FaultLoop, sequence_setdown) {
    EXPECT_EQ(sequence_loop(
                  "setdown",
                  [](Flow &flow) {
                      return flow.session.send(PF_Cmd_SEQUENCE_SETDOWN, flow.effect).error;
                  },
                  [](Flow &flow) {
                      flow.restore({1, 3, 2, 1, 0, 0, 3, 1});
                  }),
              1);
}

#if defined(_WIN32)
// Under Wine the loops take three times as long; what follows a wipe has its own loop without one.
constexpr int kWipedLayouts[] = {4};
#else
constexpr const auto &kWipedLayouts = kLayouts;
#endif

// Pre-render and render of one scene; the frame is the outcome.
class RenderFaults : public testing::TestWithParam<stage::Depth> {
  protected:
    RenderFaults() : flow(at_depth(GetParam())) {
        flow.make_scene(small_image(GetParam()));
        flow.set("Show Slice Waveform", 1);
        flow.set("Show Histogram", 1);
        for (const char *name : {"Waveform Monitor/Scope Width", "Vectorscope/Scope Size",
                                 "Channel Parade/Scope Width", "Slice Waveform/Scope Width"}) {
            flow.set(name, 20);
        }
        flow.set("Monitor Gamma", 2.2);
        flow.set("Compare with Original", 40);
        flow.set("Compare Opacity", 50);
    }

    void add_original() {
        flow.set_original(random_image(12, 40, 30, oracle_depth(GetParam()), {}));
    }

    static std::optional<PF_Err> frame_result(const Strike &strike) {
        if (strike.form != stage::FailureForm::kNullResult) return std::nullopt;
        // Memory of the frame's own is locked as soon as it is made, and a panel's raster once more
        // after the host was asked whether to go on: no memory. Else it is the instance's record,
        // or the graphics object: no GDI+.
        const bool made = strike.previous == kNewHandle && strike.previous_arguments != kGraphics;
        return strike.name == kNewHandle || made || strike.previous == kAbort ? 4 : 512;
    }

    // Leaves the two scopes whose drawing takes least: what five scopes call has its own loop.
    void show_two_scopes() {
        for (const char *name :
             {"Show Waveform Monitor", "Show Channel Parade", "Show Slice Waveform"}) {
            flow.set(name, 0);
        }
    }

    int loop(const std::string &name) {
        Bytes pixels;
        const auto run = [&](Flow &f) {
            const stage::RenderResult result = f.render();
            const auto *data = reinterpret_cast<const std::uint8_t *>(result.picture.argb.data());
            pixels.assign(data, data + result.picture.argb.size() * sizeof(float));
            EXPECT_EQ(pixels.empty(), result.error != 0);
            return result.error;
        };
        const auto fresh = [](Flow &f) { f.restore({0, 1, 2, 3, 0, 0, 3, 1}); };
        return run_fault_loop(flow,
                              {name, run, [&](Flow &) { return pixels; }, frame_result, fresh, {}});
    }

    Flow flow;
};

TEST_P(RenderFaults, every_call_of_every_layout_fails_in_turn) {
    show_two_scopes();
    for (const int layout : kLayouts) {
        flow.set("Monitor Layout", layout);
        EXPECT_GE(loop("layout " + std::to_string(layout)), 60);
    }
}

TEST_P(RenderFaults, every_call_of_every_layout_with_an_original_fails_in_turn) {
    show_two_scopes();
    add_original();
    for (const int layout : kWipedLayouts) {
        flow.set("Monitor Layout", layout);
        EXPECT_GE(loop("layout " + std::to_string(layout) + " with original"), 60);
    }
}

TEST_P(RenderFaults, copying_a_small_frame_fails_in_turn) {
    Flow *const held = &flow;
    held->session.remove(*held->effect);
    held->make_scene(random_image(13, 60, 74, oracle_depth(GetParam())));
    EXPECT_EQ(loop("small frame"), 6);
}

TEST_P(RenderFaults, frame_whose_suite_is_refused_says_so) {
    flow.host().suites.refuse("PF World Suite", 2);
    const stage::RenderResult result = flow.render();
    EXPECT_EQ(result.error, 516);
    EXPECT_EQ(result.message, "Couldn't load suite PF_WorldSuite2.");
    EXPECT_TRUE(flow.host().messages.back().as_error);
}

TEST_P(RenderFaults, user_who_cancels_at_any_question_gets_517_and_the_next_frame_is_whole) {
    flow.set("Monitor Layout", 3);
    add_original();
    const oracle::Image healthy = flow.frame();
    int questions = 0;
    for (PF_Err error = 517; error != 0; ++questions) {
        flow.host().options.cancel_at_abort_call = questions + 1;
        error = flow.render().error;
        EXPECT_TRUE(error == 0 || error == 517) << error;
        flow.expect_clean("cancelled at question " + std::to_string(questions + 1));
        ASSERT_LT(questions, 100);
        flow.host().options.cancel_at_abort_call = 0;
        EXPECT_TRUE(test_support::images_equal("after a cancelled frame", healthy, flow.frame()));
    }
    EXPECT_EQ(questions - 1, 15) << "the frame, the corrected world, three tiles, and before and "
                                    "after each of the five scopes' drawings";
}

TEST_P(RenderFaults, user_who_cancels_within_an_iteration_gets_517) {
    const oracle::Image healthy = flow.frame();
    for (const std::int64_t rows : {0, 1, 40}) {
        flow.host().options.schedule.abort_after = rows;
        EXPECT_EQ(flow.render().error, 517) << rows;
        flow.expect_clean("cancelled after " + std::to_string(rows) + " iterations");
    }
    flow.host().options.schedule.abort_after = -1;
    EXPECT_TRUE(test_support::images_equal("after a cancelled frame", healthy, flow.frame()));
}

TEST_P(RenderFaults, user_who_cancels_within_the_sampling_pass_gets_517) {
    flow.set("Monitor Layout", 7);
    flow.host().options.schedule = stage::Schedule::with_threads(7);
    const oracle::Image healthy = flow.frame();
    for (const std::int64_t parts : {0, 1, 3, 6}) {
        flow.host().options.schedule.abort_after = parts;
        EXPECT_EQ(flow.render().error, 517) << parts;
        flow.expect_clean("cancelled after " + std::to_string(parts) + " parts");
    }
    flow.host().options.schedule.abort_after = -1;
    EXPECT_TRUE(test_support::images_equal("after a cancelled frame", healthy, flow.frame()));
}

// Defaults as a user has them: panels of their usual sizes, several processors.
TEST_P(RenderFaults, every_call_of_five_scopes_at_their_usual_size_fails_in_turn) {
    for (const char *name : {"Waveform Monitor/Scope Width", "Vectorscope/Scope Size",
                             "Channel Parade/Scope Width", "Slice Waveform/Scope Width"}) {
        flow.set(name, 200);
    }
    flow.set("Monitor Layout", 7);
    flow.set("Show Reference Line", 1);
    flow.set("Waveform Scopes Aspect Ratio", 2);
    flow.host().options.schedule = stage::Schedule::shuffled(3, 4);
    EXPECT_GE(loop("five scopes"), 150);
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, RenderFaults, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
