// Who owns the sequence data, from set-up to set-down, and what copies of an instance get.
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::SequenceState;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::uint8_t> kFlatBytes{'F', 4, 4, 4};

std::vector<std::uint8_t> live_bytes() {
    std::vector<std::uint8_t> bytes(16, 16);
    bytes[0] = 'L';
    return bytes;
}

TEST(SequenceData, is_live_after_set_up_flat_after_flatten_and_live_again) {
    RogueSession rogue;
    rogue.open();
    EXPECT_EQ(rogue.effect->state, SequenceState::kLive);
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect), live_bytes());
    rogue.session.flatten(*rogue.effect);
    EXPECT_EQ(rogue.effect->state, SequenceState::kFlat);
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect), kFlatBytes);
    rogue.session.resetup(*rogue.effect);
    EXPECT_EQ(rogue.effect->state, SequenceState::kLive);
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect), live_bytes());
    EXPECT_EQ(rogue.host().handles.live_count(), 1u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(SequenceData, is_handed_out_in_both_records_of_a_render) {
    RogueSession rogue;
    rogue.open();
    rogue.render();
    EXPECT_TRUE(rogue.seen().sequence_is_live);
}

TEST(SequenceData, survives_set_down_in_flat_state_and_resetup_of_live_data) {
    RogueSession rogue;
    rogue.open();
    rogue.session.resetup(*rogue.effect);
    rogue.session.resetup(*rogue.effect);
    rogue.session.flatten(*rogue.effect);
    rogue.session.remove(*rogue.effect);
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(SequenceData, may_be_given_up_by_flatten) {
    RogueSession rogue("flatten_to_null");
    rogue.open();
    rogue.session.flatten(*rogue.effect);
    EXPECT_THAT(rogue.session.sequence_bytes(*rogue.effect), IsEmpty());
    rogue.choose("");
    rogue.session.resetup(*rogue.effect);
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect), live_bytes());
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(SequenceData, may_be_set_down_through_the_input_record) {
    RogueSession rogue("null_in_record_only");
    rogue.open();
    rogue.session.remove(*rogue.effect);
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(SequenceData, of_any_bytes_can_be_loaded_and_none_as_well) {
    RogueSession rogue;
    rogue.open();
    rogue.session.set_flat_data(*rogue.effect, {1, 2, 3});
    EXPECT_EQ(rogue.effect->state, SequenceState::kFlat);
    EXPECT_THAT(rogue.session.sequence_bytes(*rogue.effect), ElementsAre(1, 2, 3));
    rogue.session.set_flat_data(*rogue.effect, {});
    EXPECT_EQ(rogue.effect->state, SequenceState::kNone);
    EXPECT_EQ(rogue.effect->sequence_data, nullptr);
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
}

TEST(SequenceData, replaced_where_the_host_does_not_look_is_adopted_or_not) {
    for (const bool adopt : {true, false}) {
        stage::HostOptions options;
        options.adopt_replaced_sequence = adopt;
        RogueSession rogue("replace_in_user_changed", options);
        rogue.open();
        const PF_Handle before = rogue.effect->sequence_data;
        rogue.session.set_value(*rogue.effect, rogue::kAmount, {});
        EXPECT_THAT(rogue.known(), ElementsAre("sequence.replaced in PF_Cmd_USER_CHANGED_PARAM"));
        rogue.choose("");
        if (adopt) {
            EXPECT_NE(rogue.effect->sequence_data, before);
            EXPECT_THAT(rogue.violations(), IsEmpty());
        } else {
            // The host keeps what the plug-in has freed, and the new record is nobody's.
            EXPECT_EQ(rogue.effect->sequence_data, before);
            EXPECT_THAT(rogue.violations(),
                        ElementsAre("leak.handle in PF_Cmd_USER_CHANGED_PARAM"));
            rogue.host().strict.clear();
            rogue.session.flatten(*rogue.effect);
            ASSERT_FALSE(rogue.violations().empty());
            EXPECT_EQ(rogue.violations()[0], "handle.dead in PF_Cmd_SEQUENCE_FLATTEN");
        }
    }
}

TEST(RenderCopy, is_made_by_flatten_and_two_resetups_and_rendered_with) {
    stage::HostOptions options;
    options.separate_render_copy = true;
    RogueSession rogue("", options);
    rogue.open();
    Names commands;
    rogue.host().trace.enable(true);
    rogue.render();
    for (const std::string &call : rogue.host().trace.calls()) {
        if (call.starts_with("> ")) commands.push_back(call.substr(9));
    }
    EXPECT_THAT(commands, ElementsAre("SEQUENCE_FLATTEN", "SEQUENCE_RESETUP", "SEQUENCE_RESETUP",
                                      "SMART_PRE_RENDER", "SMART_RENDER"));
    EXPECT_TRUE(rogue.seen().sequence_is_live);
    ASSERT_NE(rogue.effect->render_sequence_data, nullptr);
    EXPECT_NE(rogue.effect->render_sequence_data, rogue.effect->sequence_data);
    rogue.render();
    EXPECT_EQ(rogue.host().handles.live_count(), 2u);
    rogue.session.stop();
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Duplicate, has_its_own_data_and_values) {
    RogueSession rogue;
    rogue.open();
    rogue.value(rogue::kAmount).number = 61;
    stage::EffectInstance &copy = rogue.session.duplicate(*rogue.effect, rogue.layer);
    EXPECT_EQ(copy.effect, 1);
    EXPECT_NE(copy.sequence_data, rogue.effect->sequence_data);
    EXPECT_EQ(rogue.session.sequence_bytes(copy), live_bytes());
    EXPECT_EQ(rogue.session.value(copy, rogue::kAmount).number, 61);
    rogue.value(rogue::kAmount).number = 5;
    EXPECT_EQ(rogue.session.value(copy, rogue::kAmount).number, 61);
    // The copy moves up when the first goes.
    rogue.session.remove(*rogue.effect);
    EXPECT_EQ(copy.effect, 0);
    EXPECT_EQ(rogue.session.value(copy, rogue::kAmount).number, 61);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Duplicate, of_an_effect_that_will_not_flatten_is_refused) {
    RogueSession rogue("fail_flatten");
    rogue.open();
    EXPECT_THROW(rogue.session.duplicate(*rogue.effect, rogue.layer), stage::SessionError);
    EXPECT_EQ(rogue.host().instances.size(), 1u);
    EXPECT_EQ(rogue.host().project.layer(rogue.layer)->effects.size(), 1u);
}

TEST(Undo, takes_back_what_the_plug_in_changed_but_not_its_sequence_data) {
    RogueSession rogue("change_project");
    rogue.open();
    rogue.host().undo.clear();
    rogue.session.panel_shown = true;
    rogue.session.refresh_panel(*rogue.effect);
    const auto locked = [&] {
        return rogue.host().project.layer(rogue.layer)->has_flag(stage::layer_flag::kLocked);
    };
    EXPECT_TRUE(locked());
    EXPECT_THAT(rogue.host().undo.steps(), ElementsAre("Layer Switch"));
    const PF_Handle record = rogue.effect->sequence_data;
    *static_cast<char *>(*record) = 'x';
    EXPECT_TRUE(rogue.host().undo.undo());
    EXPECT_FALSE(locked());
    EXPECT_EQ(rogue.effect->sequence_data, record);
    EXPECT_EQ(rogue.session.sequence_bytes(*rogue.effect)[0], 'x');
    EXPECT_TRUE(rogue.host().undo.redo());
    EXPECT_TRUE(locked());
    rogue.session.panel_shown = false;
    EXPECT_EQ(rogue.render().error, 0);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Undo, in_a_locked_project_there_is_nothing_to_take_back) {
    stage::HostOptions options;
    options.project_locked = true;
    RogueSession rogue("change_project", options);
    rogue.open();
    rogue.host().undo.clear();
    rogue.session.panel_shown = true;
    EXPECT_EQ(rogue.session.refresh_panel(*rogue.effect).error, A_Err_CONST_PROJECT_MODIFICATION);
    EXPECT_THAT(rogue.host().undo.steps(), IsEmpty());
    EXPECT_FALSE(rogue.host().project.layer(rogue.layer)->has_flag(stage::layer_flag::kLocked));
}

}  // namespace
}  // namespace stage_test
