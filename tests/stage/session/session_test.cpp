// The session: start and stop, refusals, the panel, messages, agreement with the property list.
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::SessionError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string start_error(const char *act) {
    RogueSession rogue(act);
    try {
        rogue.session.start();
    } catch (const SessionError &error) {
        return error.what();
    }
    return "started";
}

TEST(Session, a_plug_in_that_refuses_to_start_is_named_with_its_error) {
    EXPECT_EQ(start_error("fail_set_up"),
              "the plug-in answered PF_Cmd_GLOBAL_SETUP with error 1234");
    EXPECT_EQ(start_error("fail_params"),
              "the plug-in answered PF_Cmd_PARAMS_SETUP with error 1234");
}

TEST(Session, a_wrong_count_of_parameters_or_an_open_group_is_refused) {
    EXPECT_EQ(start_error("count_wrongly"),
              "the plug-in reports 13 parameters but added 11 to the input layer");
    EXPECT_EQ(start_error("leave_group_open"), "a parameter group is left open");
}

TEST(Session, commands_of_a_whole_life_come_in_the_hosts_order) {
    Names commands;
    {
        RogueSession rogue;
        stage::Trace &trace = rogue.host().trace;
        trace.enable(true);
        trace.set_sink([&](const stage::TraceEntry &entry) {
            if (entry.call.starts_with("> PF_Cmd_")) commands.push_back(entry.call.substr(9));
        });
        rogue.session.panel_shown = true;
        rogue.open();
        rogue.session.set_value(*rogue.effect, rogue::kAmount, {});
        rogue.session.set_value(*rogue.effect, rogue::kSecondAmount, {});
        rogue.render();
    }
    EXPECT_THAT(
        commands,
        ElementsAre("GLOBAL_SETUP", "PARAMS_SETUP", "SEQUENCE_SETUP", "UPDATE_PARAMS_UI",
                    "USER_CHANGED_PARAM", "UPDATE_PARAMS_UI",  // supervised
                    "UPDATE_PARAMS_UI",                        // not supervised
                    "SMART_PRE_RENDER", "SMART_RENDER", "SEQUENCE_SETDOWN", "GLOBAL_SETDOWN"));
}

TEST(Session, an_effect_whose_set_up_fails_is_taken_off_again) {
    RogueSession rogue("fail_sequence");
    rogue.session.start();
    stage::Project &project = rogue.host().project;
    const stage::ItemId comp = project.add_comp("comp", 4, 4, 1, 1, 1);
    const stage::ItemId solid = project.add_solid_item("solid", 4, 4, {1, 0, 0, 0});
    const stage::LayerId layer = project.add_layer(comp, solid, 0, "layer");
    stage::CommandResult result;
    EXPECT_EQ(rogue.session.apply(layer, &result), nullptr);
    EXPECT_EQ(result.error, 1234);
    EXPECT_THAT(project.layer(layer)->effects, IsEmpty());
    EXPECT_THAT(rogue.host().instances, IsEmpty());
    EXPECT_EQ(rogue.host().handles.live_count(), 0u);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
    EXPECT_THROW(rogue.session.apply(999), SessionError);
}

TEST(Session, an_escaped_exception_is_an_error_and_the_session_lives_on) {
    RogueSession rogue("throw_number");
    rogue.open();
    const stage::RenderResult result = rogue.render();
    EXPECT_TRUE(result.escaped);
    EXPECT_NE(result.error, 0);
    EXPECT_TRUE(result.picture.argb.empty());
    rogue.choose("");
    EXPECT_EQ(rogue.render().error, 0);
}

TEST(Session, messages_are_shown_once_with_the_way_they_were_meant) {
    RogueSession rogue("error_message");
    rogue.open();
    rogue.session.about();
    EXPECT_EQ(rogue.render().message, "By the way");
    rogue.choose("");
    EXPECT_EQ(rogue.render().message, "");
    ASSERT_EQ(rogue.host().messages.size(), 2u);
    EXPECT_EQ(rogue.host().messages[0].text, "Rogue 1.0");
    EXPECT_FALSE(rogue.host().messages[0].as_error);
    EXPECT_EQ(rogue.host().messages[0].command, "PF_Cmd_ABOUT");
    EXPECT_EQ(rogue.host().messages[1].text, "By the way");
    EXPECT_TRUE(rogue.host().messages[1].as_error);
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(Session, a_message_without_an_end_is_cut_at_its_256_bytes) {
    RogueSession rogue("unterminated_message");
    rogue.open();
    EXPECT_EQ(rogue.render().message, std::string(256, 'x'));
}

TEST(Panel, looks_are_taken_over_and_nothing_else) {
    RogueSession rogue("change_valid_range");
    rogue.open();
    EXPECT_EQ(rogue.effect->looks.at(rogue::kMode).ui_flags, 0);
    rogue.session.panel_shown = true;
    rogue.session.refresh_panel(*rogue.effect);
    const stage::ParamCatalog &catalog = rogue.session.plugin.catalog;
    EXPECT_EQ(rogue.effect->looks.at(rogue::kMode).ui_flags, PF_PUI_DISABLED);
    EXPECT_EQ(rogue.effect->looks.at(rogue::kAmount).slider_max, 80.0f);
    EXPECT_EQ(catalog.at(rogue::kAmount).def.u.fs_d.valid_max, 100.0f);
}

TEST(Panel, values_written_in_user_changed_param_are_taken_over_and_limited) {
    RogueSession rogue("change_values");
    rogue.open();
    stage::ParamValue amount;
    amount.number = 12;
    EXPECT_EQ(rogue.session.set_value(*rogue.effect, rogue::kAmount, amount), 0);
    EXPECT_EQ(rogue.value(rogue::kAmount).number, 12);
    EXPECT_EQ(rogue.value(rogue::kSecondAmount).number, 1);  // 5 was written
    EXPECT_EQ(rogue.value(rogue::kCentre).x, -3);            // points are not limited
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
    rogue.host().options.clamp_written_values = false;
    rogue.session.set_value(*rogue.effect, rogue::kAmount, amount);
    EXPECT_EQ(rogue.value(rogue::kSecondAmount).number, 5);
}

TEST(Panel, values_written_in_a_refresh_count_only_when_the_host_is_told_so) {
    RogueSession rogue("change_values_in_panel");
    rogue.open();
    rogue.session.panel_shown = true;
    rogue.session.refresh_panel(*rogue.effect);
    EXPECT_EQ(rogue.value(rogue::kSecondAmount).number, 0);
    rogue.host().options.honour_refresh_values = true;
    rogue.session.refresh_panel(*rogue.effect);
    EXPECT_EQ(rogue.value(rogue::kSecondAmount).number, 1);
}

stage::Pipl list_of(std::uint32_t version, std::uint32_t flags, std::uint32_t flags2) {
    stage::Pipl pipl;
    pipl.effect_version = version;
    pipl.out_flags = flags;
    pipl.out_flags2 = flags2;
    return pipl;
}

constexpr std::uint32_t kVersion = 1u << 19;
constexpr std::uint32_t kFlags = 1u << 25 | 1u << 26 | 1u << 15 | 1u << 4;
constexpr std::uint32_t kFlags2 = 1u << 10 | 1u << 12;

TEST(PropertyList, that_agrees_with_global_set_up_is_no_finding) {
    RogueSession rogue;
    rogue.session.plugin.pipl = list_of(kVersion, kFlags, kFlags2);
    rogue.session.start();
    EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
}

TEST(PropertyList, that_disagrees_is_reported_with_both_numbers) {
    RogueSession rogue;
    rogue.session.plugin.pipl = list_of(kVersion + 1, kFlags | 1, kFlags2 & ~(1u << 12));
    rogue.session.start();
    Names texts;
    for (const stage::Finding &finding : rogue.host().strict.violations()) {
        EXPECT_EQ(finding.check, "pipl.agreement");
        EXPECT_EQ(finding.command, "PF_Cmd_GLOBAL_SETUP");
        texts.push_back(finding.text);
    }
    EXPECT_THAT(texts, ElementsAre("version: code 00080000, property list 00080001",
                                   "out_flags: code 06008010, property list 06008011",
                                   "out_flags2: code 00001400, property list 00000400"));
}

TEST(PropertyList, with_a_property_missing_is_compared_in_the_others) {
    RogueSession rogue;
    rogue.session.plugin.pipl = list_of(kVersion, kFlags, kFlags2 + 1);
    rogue.session.plugin.pipl->effect_version.reset();
    rogue.session.plugin.pipl->out_flags.reset();
    rogue.session.start();
    ASSERT_EQ(rogue.host().strict.all().size(), 1u);
    EXPECT_THAT(rogue.host().strict.all()[0].text, HasSubstr("out_flags2"));
}

}  // namespace
}  // namespace stage_test
