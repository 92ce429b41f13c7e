// Every rule that strict mode watches, broken once by a plug-in that keeps all the others.
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using testing::UnorderedElementsAreArray;

struct Misconduct {
    const char *act;
    const char *command;  ///< in which it must be noticed, without "PF_Cmd_"
    std::vector<const char *> checks;
    stage::Depth depth = stage::Depth::U8;
};

constexpr const char *kRender = "SMART_RENDER";
constexpr const char *kPre = "SMART_PRE_RENDER";
constexpr const char *kPanel = "UPDATE_PARAMS_UI";
constexpr const char *kChanged = "USER_CHANGED_PARAM";
constexpr const char *kSetup = "PARAMS_SETUP";
constexpr const char *kSetdown = "SEQUENCE_SETDOWN";

const Misconduct kMisconduct[] = {
    // Memory handles, suites, check-outs.
    {"leak_handle", kRender, {"leak.handle"}},
    {"leak_handle_in_set_up", "GLOBAL_SETUP", {"leak.handle"}},
    {"dispose_handle_twice", kRender, {"handle.double_dispose"}},
    {"dispose_own_memory", kRender, {"handle.dead"}},
    {"lock_dead_handle", kRender, {"handle.dead"}},
    {"size_of_dead_handle", kRender, {"handle.dead"}},
    {"resize_dead_handle", kRender, {"handle.dead"}},
    {"write_dead_handle", kRender, {"handle.use_after_free"}},
    {"write_before_handle", kRender, {"handle.guard"}},
    {"write_behind_handle", kRender, {"handle.guard"}},
    {"unlock_too_often", kRender, {"handle.unlock_balance"}},
    {"dispose_locked", kRender, {"handle.locked_dispose"}},
    {"leave_sequence_locked", kRender, {"handle.left_locked"}},
    {"unlock_sequence", kRender, {"handle.unlock_balance"}},
    {"write_behind_sequence", kRender, {"handle.guard"}},
    {"leak_suite", kRender, {"leak.suite"}},
    {"release_unheld_suite", kRender, {"suite.release", "leak.suite"}},
    {"release_wrong_version", kRender, {"suite.release", "leak.suite", "leak.suite"}},
    {"use_empty_slot", kRender, {"suite.unimplemented"}},
    {"leak_param", kRender, {"leak.param"}},
    {"check_in_unopened_param", kRender, {"params.checkin"}},
    {"check_out_of_range", kRender, {"params.checkout"}},
    {"check_out_into_array", kPanel, {"params.checkout"}},
    {"call_from_worker", kRender, {"thread.worker"}},
    // Worlds.
    {"leak_world", kRender, {"leak.world"}},
    {"dispose_world_twice", kRender, {"world.dead"}},
    {"write_dead_world", kRender, {"world.use_after_free"}},
    {"copy_from_dead_world", kRender, {"world.dead"}},
    {"ask_format_of_null", kRender, {"world.dead"}},
    {"widen_record", kRender, {"world.record"}},
    {"write_before_world", kRender, {"world.guard"}},
    {"write_world_padding", kRender, {"world.guard"}},
    {"write_behind_world", kRender, {"world.guard"}},
    {"write_input", kRender, {"world.read_only"}},
    {"write_row_padding", kRender, {"world.guard"}},
    {"write_below_output", kRender, {"world.guard"}},
    {"leave_last_row", kRender, {"output.unwritten"}},
    {"leave_last_row", kRender, {"output.unwritten"}, stage::Depth::U16},
    {"exceed_white", kRender, {"output.over_range"}, stage::Depth::U16},
    {"dispose_hosts_world", kRender, {"world.not_owned"}},
    // The smart-render protocol.
    {"leave_request", kPre, {"rect.result"}},
    {"shrink_max_rect", kPre, {"rect.max"}},
    {"use_id_twice", kPre, {"checkout.id_twice"}},
    {"check_out_slider_as_layer", kPre, {"checkout.index"}},
    {"leave_pre_render_data", kPre, {"pre_render.data"}},
    {"use_kept_callbacks", kRender, {"callback.outside"}},
    {"output_before_input", kRender, {"checkout.order"}},
    {"fetch_pixels_twice", kRender, {"checkout.pixels"}},
    {"fetch_pixels_again", kRender, {"checkout.pixels"}},
    {"fetch_unknown_pixels", kRender, {"checkout.pixels"}},
    {"leave_pixels_open", kRender, {"checkout.left_open"}},
    {"check_in_unopened", kRender, {"checkin.not_open"}},
    {"check_in_unknown", kRender, {"checkin.not_open"}},
    {"throw_number", kRender, {"exception.escaped"}},
    {"throw_exception", kRender, {"exception.escaped"}},
    {"throw_in_panel", kPanel, {"exception.escaped"}},
    // The project.
    {"leak_effect", kPanel, {"leak.aegp"}},
    {"leak_stream", kPanel, {"leak.aegp"}},
    {"dispose_effect_before_stream", kPanel, {"effect.streams_left"}},
    {"dispose_effect_twice", kPanel, {"ref.unknown"}},
    {"leak_mem_handle", kPanel, {"leak.mem_handle"}},
    {"free_mem_handle_twice", kPanel, {"mem.unknown"}},
    {"free_locked_mem_handle", kPanel, {"mem.locked"}},
    {"mix_handles", kPanel, {"handle.dead"}},
    {"change_project_in_render", kRender, {"thread.render"}},
    {"open_undo_group", kPanel, {"undo.unbalanced"}},
    {"close_undo_group", kPanel, {"undo.unbalanced"}},
    {"register_late", kPanel, {"aegp.register"}},
    // Sequence data, records, messages.
    {"lose_record_in_render", kRender, {"sequence.replaced", "sequence.lost"}},
    {"replace_in_render", kRender, {"sequence.replaced"}},
    {"lose_record_in_set_down", kSetdown, {"sequence.lost"}},
    {"keep_record_in_set_down", kSetdown, {"sequence.setdown"}},
    {"name_dead_record_in_set_down", kSetdown, {"sequence.dead"}},
    {"name_dead_record", "SEQUENCE_RESETUP", {"sequence.dead"}},
    {"write_in_sequence_field", kRender, {"in_data.write"}},
    {"write_version", kRender, {"in_data.write"}},
    {"write_width", kRender, {"in_data.write"}},
    {"write_effect_ref", kRender, {"in_data.write"}},
    {"write_callbacks", kRender, {"in_data.write"}},
    {"write_serial_num", kRender, {"in_data.write"}},
    {"write_shutter_phase", kRender, {"in_data.write"}},
    {"write_sound", kRender, {"in_data.write"}},
    {"unterminated_message", kRender, {"message.terminator"}},
    {"plain_message", kRender, {"message.plain"}},
    {"long_message", kRender, {"ansi.long_text"}},
    // Parameters.
    {"add_taken_id", kSetup, {"params.definition"}},
    {"add_miscounted_popup", kSetup, {"params.definition"}},
    {"add_popup_without_default", kSetup, {"params.definition"}},
    {"add_unlabelled_checkbox", kSetup, {"params.definition"}},
    {"add_dead_range", kSetup, {"params.definition"}},
    {"add_default_outside", kSetup, {"params.definition"}},
    {"add_point_outside", kSetup, {"params.definition"}},
    {"add_stray_group_end", kSetup, {"params.definition"}},
    {"name_too_long", kSetup, {"params.definition"}},
    {"add_in_the_middle", kSetup, {"params.add"}},
    {"add_late", kChanged, {"params.add"}},
    {"write_value", kChanged, {"params.write"}},
    {"write_default", kChanged, {"params.write"}},
    {"write_flags", kChanged, {"params.write"}},
    {"replace_entry", kChanged, {"params.write"}},
    {"update_original", kPanel, {"params.update_ui"}},
    {"update_input_layer", kPanel, {"params.update_ui"}},
    {"change_default", kPanel, {"params.update_ui_ignored"}},
};

Names expected(const Misconduct &misconduct) {
    Names names;
    for (const char *check : misconduct.checks) {
        names.push_back(std::string(check) + " in PF_Cmd_" + misconduct.command);
    }
    return names;
}

/// Everything an instance lives through, each command once.
void live(RogueSession &rogue) {
    rogue.open();
    rogue.session.panel_shown = true;
    stage::ParamValue amount;
    amount.number = 40;
    rogue.session.set_value(*rogue.effect, rogue::kAmount, amount);
    rogue.session.panel_shown = false;
    rogue.render();
    rogue.session.flatten(*rogue.effect);
    rogue.session.resetup(*rogue.effect);
}

class MisconductTest : public testing::TestWithParam<Misconduct> {};

TEST_P(MisconductTest, is_the_only_finding_and_the_host_goes_on) {
    RogueSession rogue(GetParam().act, at_depth(GetParam().depth));
    live(rogue);
    rogue.session.remove(*rogue.effect);
    EXPECT_THAT(rogue.violations(), UnorderedElementsAreArray(expected(GetParam())));
    EXPECT_THAT(rogue.known(), testing::IsEmpty());

    rogue.choose("");
    rogue.host().strict.clear();
    rogue.effect = rogue.session.apply(rogue.layer);
    ASSERT_NE(rogue.effect, nullptr);
    const stage::RenderResult again = rogue.render();
    EXPECT_EQ(again.error, 0);
    EXPECT_EQ(again.picture.argb, rogue.picture.argb);
    rogue.session.stop();
    EXPECT_THAT(rogue.violations(), testing::IsEmpty());
}

std::string name_of(const testing::TestParamInfo<Misconduct> &row) {
    return std::string(row.param.act) + "_" + std::to_string(static_cast<int>(row.param.depth));
}

INSTANTIATE_TEST_SUITE_P(Rogue, MisconductTest, testing::ValuesIn(kMisconduct), name_of);

/// Without checks nothing freed is kept aside: a write to it would be a real one.
std::vector<Misconduct> harmless_without_checks() {
    std::vector<Misconduct> rows(std::begin(kMisconduct), std::end(kMisconduct));
    std::erase_if(rows, [](const Misconduct &row) {
        return std::string_view(row.act).starts_with("write_dead_");
    });
    return rows;
}

class ChecksOffTest : public testing::TestWithParam<Misconduct> {};

TEST_P(ChecksOffTest, notice_nothing) {
    stage::HostOptions options = at_depth(GetParam().depth);
    options.strict = false;
    RogueSession rogue(GetParam().act, options);
    live(rogue);
    rogue.session.stop();
    EXPECT_THAT(rogue.host().strict.all(), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rogue, ChecksOffTest, testing::ValuesIn(harmless_without_checks()),
                         name_of);

class GoodConductTest : public testing::TestWithParam<stage::Depth> {};

TEST_P(GoodConductTest, gives_no_finding_at_all_and_the_picture_it_was_given) {
    RogueSession rogue("", at_depth(GetParam()));
    live(rogue);
    const stage::RenderResult frame = rogue.render();
    EXPECT_EQ(frame.picture.argb, rogue.picture.argb);
    rogue.session.remove(*rogue.effect);
    rogue.session.stop();
    EXPECT_THAT(rogue.host().strict.all(), testing::IsEmpty());
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
}

TEST_P(GoodConductTest, holds_for_null_worlds_and_a_layer_parameter) {
    RogueSession rogue("", at_depth(GetParam()));
    rogue.open();
    rogue.set_original({5, 9});
    for (const int null : {1, 2, 3}) {
        stage::RenderSettings settings;
        settings.null_input = null == 1;
        settings.null_output = null == 2;
        settings.null_original = null == 3;
        EXPECT_EQ(rogue.render(settings).error, 0) << null;
        EXPECT_EQ(rogue.seen().input.width, null == 1 ? 0 : 8);
        EXPECT_EQ(rogue.seen().output.width, null == 2 ? 0 : 8);
        EXPECT_EQ(rogue.seen().original.width, null == 3 ? 0 : 5);
    }
    rogue.session.stop();
    // Over a null input the output stays transparent, which was not foreseen in the pre-render.
    EXPECT_THAT(rogue.known(), testing::ElementsAre("solid.alpha in PF_Cmd_SMART_RENDER"));
    EXPECT_THAT(rogue.violations(), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rogue, GoodConductTest,
                         testing::Values(stage::Depth::U8, stage::Depth::U16, stage::Depth::Float),
                         [](const testing::TestParamInfo<stage::Depth> &row) {
                             return "bits" + std::to_string(static_cast<int>(row.param));
                         });

}  // namespace
}  // namespace stage_test
