#include <cstring>
#include <new>
#include <stdexcept>

#include "plugin/entry/entry_fixture.h"

namespace {

class Dispatch : public EntryTest {
  protected:
    PF_Err render_that(std::function<PF_Err()> act) {
        give_sequence_data();
        render_double().act = std::move(act);
        return send(PF_Cmd_SMART_RENDER, &render_extra);
    }
};

TEST_F(Dispatch, commands_that_the_effect_does_not_serve_return_0_and_touch_nothing) {
    PF_InData in_before;
    PF_OutData out_before;
    host.out.out_flags = 3;
    std::memcpy(&in_before, &host.in, sizeof in_before);
    std::memcpy(&out_before, &host.out, sizeof out_before);
    std::vector<PF_Cmd> commands{2, 9, 10, 11, 12, 16, 17, 18, 19, 20, 21, 22, -1, 1 << 30};
    for (PF_Cmd command = 25; command <= 64; ++command) commands.push_back(command);
    for (PF_Cmd command : commands) EXPECT_EQ(send(command), 0) << command;
    EXPECT_EQ(std::memcmp(&in_before, &host.in, sizeof in_before), 0);
    EXPECT_EQ(std::memcmp(&out_before, &host.out, sizeof out_before), 0);
    EXPECT_TRUE(host.calls.log.empty());
}

TEST_F(Dispatch, params_setup_reaches_the_parameter_table) {
    EXPECT_EQ(send(PF_Cmd_PARAMS_SETUP), 0);
    EXPECT_EQ(host.added.size(), 68u);
}

TEST_F(Dispatch, sequence_commands_run_a_whole_life) {
    project.effect_layer = &project.add(AEGP_LayerFlag_VIDEO_ACTIVE, 1280, 720);
    EXPECT_EQ(send(PF_Cmd_SEQUENCE_SETUP), 0);
    EXPECT_NE(host.out.return_msg[0], '\0') << "first application looks at the layer";
    host.next_command();
    EXPECT_EQ(send(PF_Cmd_SEQUENCE_FLATTEN), 0);
    EXPECT_EQ(host.bytes(host.out.sequence_data).size(), 8u);
    host.next_command();
    EXPECT_EQ(send(PF_Cmd_SEQUENCE_RESETUP), 0);
    EXPECT_EQ(host.bytes(host.out.sequence_data).size(), 3100u);
    host.next_command();
    EXPECT_EQ(send(PF_Cmd_SEQUENCE_SETDOWN), 0);
    EXPECT_EQ(host.out.sequence_data, nullptr);
}

TEST_F(Dispatch, panel_edits_reach_the_stacking_order) {
    project.effect_layer = &project.add(AEGP_LayerFlag_VIDEO_ACTIVE, 1920, 1080);
    ASSERT_EQ(send(PF_Cmd_SEQUENCE_SETUP), 0);
    host.next_command();
    PF_UserChangedParamExtra parade_moved{43};
    EXPECT_EQ(send(PF_Cmd_USER_CHANGED_PARAM, &parade_moved), 0);
    const std::vector<char> &record = host.bytes(host.out.sequence_data);
    EXPECT_EQ(std::vector<char>(record.begin() + 3080, record.begin() + 3086),
              (std::vector<char>{3, 1, 2, 0, 0, 3}));
}

TEST_F(Dispatch, panel_edit_without_a_record_is_512) {
    PF_UserChangedParamExtra parade_moved{43};
    EXPECT_EQ(send(PF_Cmd_USER_CHANGED_PARAM, &parade_moved), 512);
}

TEST_F(Dispatch, panel_refresh_gets_the_parameters) {
    EXPECT_EQ(send(PF_Cmd_UPDATE_PARAMS_UI), 0) << "there are none to refresh";
    EXPECT_TRUE(host.calls.log.empty());
    std::vector<PF_ParamDef> defs(69);
    std::vector<PF_ParamDef *> params;
    for (PF_ParamDef &def : defs) params.push_back(&def);
    params.push_back(nullptr);
    host.refused.insert(kAEGPPFInterfaceSuite);
    EXPECT_EQ(EntryPointFunc(PF_Cmd_UPDATE_PARAMS_UI, &host.in, &host.out, params.data(), nullptr,
                             nullptr),
              516);
}

TEST_F(Dispatch, missing_basic_suite_is_516_from_every_command_that_needs_suites) {
    give_sequence_data();
    host.in.pica_basicP = nullptr;
    for (PF_Cmd command : {PF_Cmd_GLOBAL_SETDOWN, PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP,
                           PF_Cmd_SEQUENCE_FLATTEN, PF_Cmd_SEQUENCE_SETDOWN}) {
        EXPECT_EQ(send(command), 516) << command;
    }
}

TEST_F(Dispatch, event_reaches_the_handles) {
    // Any drag in the composition window is marked as handled; slot 0 holds no drag.
    PF_Context context{};
    PF_Context *handle = &context;
    PF_EventExtra event{};
    event.contextH = &handle;
    event.e_type = PF_Event_DRAG;
    event.u.do_click.continue_refcon[0] = -1;
    PF_ParamDef *params[69]{};
    EXPECT_EQ(EntryPointFunc(PF_Cmd_EVENT, &host.in, &host.out, params, nullptr, &event), 0);
    EXPECT_EQ(event.evt_out_flags, PF_EO_HANDLED_EVENT);
}

TEST_F(Dispatch, event_that_needs_a_suite_that_is_refused_is_516) {
    PF_Context context{};
    PF_Context *handle = &context;
    PF_EventExtra event{};
    event.contextH = &handle;
    event.e_type = PF_Event_DRAW;
    PF_ParamDef definitions[69]{};
    PF_ParamDef *params[69];
    for (int i = 0; i < 69; ++i) params[i] = &definitions[i];
    EXPECT_EQ(EntryPointFunc(PF_Cmd_EVENT, &host.in, &host.out, params, nullptr, &event), 516);
}

TEST_F(Dispatch, thrown_integer_is_the_result) {
    EXPECT_EQ(render_that([]() -> PF_Err { throw PF_Err{516}; }), 516);
    EXPECT_EQ(render_that([]() -> PF_Err { throw PF_Err{-3}; }), -3);
}

TEST_F(Dispatch, exhausted_memory_is_4) {
    EXPECT_EQ(render_that([]() -> PF_Err { throw std::bad_alloc(); }), 4);
}

TEST_F(Dispatch, any_other_exception_is_512) {
    EXPECT_EQ(render_that([]() -> PF_Err { throw std::runtime_error("x"); }), 512);
    EXPECT_EQ(render_that([]() -> PF_Err { throw "x"; }), 512);
}

TEST_F(Dispatch, render_that_throws_checks_both_layers_in) {
    render_that([]() -> PF_Err { throw PF_Err{516}; });
    const Log &log = host.calls.log;
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[log.size() - 2], "checkin_layer_pixels 10");
    EXPECT_EQ(log[log.size() - 1], "checkin_layer_pixels 0");
}

}  // namespace
