// Each fallible host call of the panel's commands failing in turn, alone and with all later ones.
#include <algorithm>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "whole/faults/fault_loop.h"

namespace ks::flow {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr char kLockHandle[] = "PF Handle Suite.host_lock_handle";
constexpr char kNewHandle[] = "PF Handle Suite.host_new_handle";
constexpr int kLock = 65, kReset = 68;

// An adjustment layer over footage, selected, with two scopes and the reference line switched.
struct PanelScene {
    PanelScene() {
        SceneOptions options;
        options.adjustment = true;
        flow.make_scene(random_image(3, 60, 76, oracle::Depth::kByte), options);
        flow.host().project.layer(flow.layer)->selected = true;
        values = streams();
    }

    std::vector<stage::EffectStream> &streams() {
        return flow.host().project.layer(flow.layer)->effects.front().streams;
    }

    // Values, hiding and looks as they were, and this record.
    void restore(const Bytes &flat) {
        flow.restore(flat);
        streams() = values;
        flow.effect->looks = flow.session.plugin.catalog.looks();
        flow.host().project.layer(flow.layer)->position_expression = "";
    }

    // Everything that the panel's commands change, as bytes.
    Bytes outcome() {
        Bytes bytes = flow.record();
        for (const stage::EffectStream &stream : streams()) {
            bytes.push_back(stream.hidden);
            const auto *number = reinterpret_cast<const std::uint8_t *>(&stream.value.number);
            bytes.insert(bytes.end(), number, number + sizeof(double));
        }
        for (const stage::ParamLook &look : flow.effect->looks) {
            bytes.push_back(static_cast<std::uint8_t>(look.ui_flags));
            bytes.push_back(static_cast<std::uint8_t>(look.flags));
            const auto *most = reinterpret_cast<const std::uint8_t *>(&look.slider_max);
            bytes.insert(bytes.end(), most, most + sizeof(float));
        }
        const std::string &expression = flow.host().project.layer(flow.layer)->position_expression;
        bytes.insert(bytes.end(), expression.begin(), expression.end());
        return bytes;
    }

    // The edit alone, without the refresh that a shown panel adds.
    PF_Err edit(int index, double number) {
        stage::ParamValue value = flow.session.value(*flow.effect, index);
        value.number = number;
        return flow.session.set_value(*flow.effect, index, value);
    }

    PF_Err refresh() {
        flow.session.panel_shown = true;
        const PF_Err error = flow.session.refresh_panel(*flow.effect).error;
        flow.session.panel_shown = false;
        return error;
    }

    int loop(const std::string &name, const Bytes &flat, const std::function<PF_Err()> &run,
             const std::function<std::optional<PF_Err>(const Strike &)> &special) {
        return run_fault_loop(flow, {name,
                                     [&](Flow &) { return run(); },
                                     [&](Flow &) { return outcome(); },
                                     special,
                                     [&](Flow &) { restore(flat); },
                                     {}});
    }

    Flow flow;
    std::vector<stage::EffectStream> values;
};

// State 0: the scopes are still to be sized.
const Bytes kNew{0, 1, 2, 3, 0, 0, 3, 1};
const Bytes kSized{1, 1, 2, 3, 0, 0, 3, 1};

// Without the record its state is not known: nothing is sized, and that is no error.
std::optional<PF_Err> refresh_result(const Strike &strike) {
    if (strike.form == stage::FailureForm::kNullResult) return 0;
    return std::nullopt;
}

TEST(PanelFaults, first_refresh) {
    PanelScene scene;
    EXPECT_GE(scene.loop(
                  "first refresh", kNew, [&] { return scene.refresh(); }, refresh_result),
              100);
}

TEST(PanelFaults, later_refresh) {
    PanelScene scene;
    EXPECT_GE(scene.loop(
                  "later refresh", kSized, [&] { return scene.refresh(); }, refresh_result),
              95);
}

// A refresh that fails midway is finished by the next one.
TEST(PanelFaults, first_refresh_that_fails_is_tried_again) {
    PanelScene scene;
    scene.restore(kNew);
    scene.flow.host().faults.arm_name("PF Param Utils Suite.PF_UpdateParamUI");
    EXPECT_EQ(scene.refresh(), stage::kInjectedError);
    EXPECT_EQ(scene.flow.record().front(), 0);
    scene.flow.host().faults.reset();
    EXPECT_EQ(scene.refresh(), 0);
    EXPECT_EQ(scene.flow.record().front(), 1);
    EXPECT_EQ(scene.flow.effect->looks.at(28).slider_max, 30.0f) << "half the layer";
}

std::optional<PF_Err> order_result(const Strike &strike) {
    if (strike.form == stage::FailureForm::kNullResult) return 512;
    return std::nullopt;
}

TEST(PanelFaults, switching_a_scope_on_and_off) {
    PanelScene scene;
    for (const double on : {1.0, 0.0}) {
        for (const int index : {19, 20, 21, 22, 23}) {
            EXPECT_EQ(scene.loop(
                          "show " + std::to_string(index), kSized,
                          [&] { return scene.edit(index, on); }, order_result),
                      2)
                << "the suite, and the lock";
        }
    }
}

TEST(PanelFaults, moving_a_scope) {
    PanelScene scene;
    for (const int index : {27, 38, 43, 50, 55}) {
        EXPECT_EQ(scene.loop(
                      "position " + std::to_string(index), kSized,
                      [&] { return scene.edit(index, 0); }, order_result),
                  2);
    }
}

// What becomes of the script's result text is nobody's error.
bool frees_script_result(const Strike &strike) {
    return strike.name == "AEGP Memory Suite.AEGP_FreeMemHandle";
}

TEST(PanelFaults, locking_and_freeing_the_position) {
    PanelScene scene;
    for (const double on : {1.0, 0.0}) {
        EXPECT_GE(scene.loop(
                      "lock", kSized, [&] { return scene.edit(kLock, on); },
                      [](const Strike &strike) -> std::optional<PF_Err> {
                          return frees_script_result(strike) ? std::optional<PF_Err>(0)
                                                             : std::nullopt;
                      }),
                  3)
            << on;
    }
}

TEST(PanelFaults, reset) {
    PanelScene scene;
    int ignored = 0;
    bool goes_on = false;
    const auto result = [&](const Strike &strike) -> std::optional<PF_Err> {
        goes_on = frees_script_result(strike);
        // Passed over, and then the first of all later ones is the refresh's first suite.
        if (goes_on) return ++ignored == 1 ? 0 : 516;
        if (strike.form != stage::FailureForm::kNullResult) return std::nullopt;
        // The first lock is the new record's, the second the refresh's.
        return strike.name == kLockHandle && strike.ordinal > 1 ? 0 : 512;
    };
    EXPECT_GE(run_fault_loop(scene.flow, {"RESET", [&](Flow &) { return scene.edit(kReset, 1); },
                                          [&](Flow &) { return scene.outcome(); }, result,
                                          [&](Flow &) { scene.restore(kSized); },
                                          [&](const std::string &) { return goes_on; }}),
              100);
    EXPECT_EQ(ignored, 2);
}

TEST(PanelFaults, reset_without_memory_leaves_no_record_and_works_again) {
    PanelScene scene;
    scene.restore(kSized);
    scene.flow.host().faults.arm_name(kNewHandle);
    EXPECT_EQ(scene.edit(kReset, 1), 512);
    EXPECT_TRUE(scene.flow.record().empty());
    // Until then a box has no list to change.
    EXPECT_EQ(scene.edit(19, 0), 512);
    EXPECT_EQ(scene.refresh(), 0);
    scene.flow.host().faults.reset();
    EXPECT_EQ(scene.edit(kReset, 1), 0);
    EXPECT_EQ(scene.flow.stacking_order().count, 3);
}

TEST(PanelFaults, edits_of_other_parameters_call_nothing) {
    PanelScene scene;
    scene.restore(kSized);
    for (const int index : {2, 5, 10, 24, 36, 64}) {
        scene.flow.host().faults.reset();
        EXPECT_EQ(scene.edit(index, 1), 0);
        EXPECT_EQ(scene.flow.host().faults.count(), 0u) << index;
    }
    scene.flow.host().faults.reset();
    EXPECT_EQ(scene.edit(kReset, 0), 0);
    EXPECT_EQ(scene.flow.host().faults.count(), 0u);
}

}  // namespace
}  // namespace ks::flow
