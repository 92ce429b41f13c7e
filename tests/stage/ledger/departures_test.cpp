// The table of known departures: what it covers, and that it covers nothing beside.
#include <map>
#include <set>

#include "stage/desk/viewer/viewer.h"
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using testing::IsEmpty;

/// A departure in its own command is known; the same check elsewhere is a violation.
struct Departure {
    const char *act;
    std::set<std::string> known;  ///< what the act must give, and nothing else
    const char *act_beside;       ///< breaks the same rules where it is not expected
    std::set<std::string> violations;
    const char *fault = "";  ///< host call that is made to fail
};

const Departure kDepartures[] = {
    {"write_version_in_set_up",
     {"in_data.write in PF_Cmd_GLOBAL_SETUP"},
     "write_version",
     {"in_data.write in PF_Cmd_SMART_RENDER"}},
    {"leave_live_record",
     {"sequence.unflat_left in PF_Cmd_SEQUENCE_FLATTEN"},
     "lose_record_in_set_down",
     {"sequence.lost in PF_Cmd_SEQUENCE_SETDOWN"}},
    {"leave_flat_record",
     {"sequence.flat_left in PF_Cmd_SEQUENCE_RESETUP"},
     "lose_record_in_set_down",
     {"sequence.lost in PF_Cmd_SEQUENCE_SETDOWN"}},
    {"use_id_zero",
     {"checkout.id_zero in PF_Cmd_SMART_PRE_RENDER"},
     "use_id_twice",
     {"checkout.id_twice in PF_Cmd_SMART_PRE_RENDER"}},
    {"leave_pixels_open",
     {"checkout.left_open in PF_Cmd_SMART_RENDER"},
     "leave_pixels_open",
     {"checkout.left_open in PF_Cmd_SMART_RENDER"},
     "smart_render.checkout_output"},
    {"check_in_ten",
     {"checkin.not_open in PF_Cmd_SMART_RENDER"},
     "check_in_unknown",
     {"checkin.not_open in PF_Cmd_SMART_RENDER"}},
    {"pass_id_zero",
     {"aegp.plugin_id in PF_Cmd_UPDATE_PARAMS_UI"},
     "register_late",
     {"aegp.register in PF_Cmd_UPDATE_PARAMS_UI"}},
    {"clear_alpha",
     {"solid.alpha in PF_Cmd_SMART_RENDER"},
     "leave_last_row",
     {"output.unwritten in PF_Cmd_SMART_RENDER"}},
    {"replace_in_user_changed",
     {"sequence.replaced in PF_Cmd_USER_CHANGED_PARAM"},
     "replace_in_render",
     {"sequence.replaced in PF_Cmd_SMART_RENDER"}},
    {"change_values_in_panel",
     {"params.refresh_value in PF_Cmd_UPDATE_PARAMS_UI"},
     "write_value",
     {"params.write in PF_Cmd_USER_CHANGED_PARAM"}},
    {"change_valid_range",
     {"params.update_ui_ignored in PF_Cmd_UPDATE_PARAMS_UI"},
     "change_default",
     {"params.update_ui_ignored in PF_Cmd_UPDATE_PARAMS_UI"}},
    {"change_valid_range_on_edit",
     {"params.update_ui_ignored in PF_Cmd_USER_CHANGED_PARAM"},
     "change_default_on_edit",
     {"params.update_ui_ignored in PF_Cmd_USER_CHANGED_PARAM"}},
    {"keep_surface_suite",
     {"leak.suite in PF_Cmd_EVENT"},
     "keep_second_surface_suite",
     {"leak.suite in PF_Cmd_EVENT"}},
    {"release_second_surface_suite",
     {"leak.suite in PF_Cmd_EVENT", "suite.release in PF_Cmd_EVENT"},
     "release_path_suite",
     {"leak.suite in PF_Cmd_EVENT", "suite.release in PF_Cmd_EVENT"}},
    {"release_surface_suite_as_second",
     {"leak.suite in PF_Cmd_EVENT", "suite.release in PF_Cmd_EVENT"},
     "release_wrong_version",
     {"leak.suite in PF_Cmd_SMART_RENDER", "suite.release in PF_Cmd_SMART_RENDER"}},
    {"keep_draw_suite_after_refusal",
     {"leak.suite in PF_Cmd_EVENT"},
     "keep_draw_suite",
     {"leak.suite in PF_Cmd_EVENT"}},
    {"keep_supplier_suite_after_refusal",
     {"leak.suite in PF_Cmd_EVENT"},
     "keep_path_suite_after_refusal",
     {"leak.suite in PF_Cmd_EVENT"}},
};

void live(RogueSession &rogue, const char *fault) {
    rogue.open();
    rogue.session.panel_shown = true;
    rogue.session.set_value(*rogue.effect, rogue::kAmount, {});
    rogue.session.panel_shown = false;
    {
        stage::Viewer viewer(rogue.session, *rogue.effect, stage::WindowKind::kComp);
        stage::DrawList drawn;
        viewer.draw(drawn);
    }
    if (*fault != 0) rogue.host().faults.arm_name(fault);
    rogue.render();
    rogue.host().faults.reset();
    rogue.session.flatten(*rogue.effect);
    rogue.session.resetup(*rogue.effect);
    rogue.session.stop();
}

std::set<std::string> set_of(const Names &names) {
    return {names.begin(), names.end()};
}

class DepartureTest : public testing::TestWithParam<Departure> {};

TEST_P(DepartureTest, is_noted_as_known_and_is_no_violation) {
    RogueSession rogue(GetParam().act);
    live(rogue, GetParam().fault);
    EXPECT_EQ(set_of(rogue.known()), GetParam().known);
    EXPECT_THAT(rogue.violations(), IsEmpty());
    EXPECT_THAT(rogue.host().strict.violations(), IsEmpty());
}

TEST_P(DepartureTest, does_not_cover_the_act_beside_it) {
    RogueSession rogue(GetParam().act_beside);
    live(rogue, "");
    EXPECT_EQ(set_of(rogue.violations()), GetParam().violations);
    EXPECT_THAT(rogue.known(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rogue, DepartureTest, testing::ValuesIn(kDepartures),
                         [](const auto &row) { return std::string(row.param.act); });

TEST(KnownDepartures, each_has_a_reason_and_a_test_of_its_own) {
    std::set<std::string> tested;
    for (const Departure &departure : kDepartures) {
        for (const std::string &known : departure.known) {
            tested.insert(known.substr(0, known.find(' ')));
        }
    }
    for (const stage::KnownDeparture &departure : stage::known_departures()) {
        EXPECT_GT(std::string_view(departure.reason).size(), 20u) << departure.check;
        EXPECT_EQ(tested.count(departure.check), 1u) << departure.check;
    }
    EXPECT_EQ(stage::known_departures().size(), std::size(kDepartures));
}

TEST(Strict, matches_departures_by_check_command_and_text) {
    stage::Strict strict;
    strict.report("checkin.not_open", "PF_Cmd_SMART_RENDER", "check-in of id 10 without");
    strict.report("checkin.not_open", "PF_Cmd_SMART_RENDER", "check-in of id 101 without");
    strict.report("checkin.not_open", "PF_Cmd_SMART_PRE_RENDER", "check-in of id 10 without");
    strict.report("checkin.not_open.other", "PF_Cmd_SMART_RENDER", "check-in of id 10 without");
    const std::vector<stage::Finding> all = strict.all();
    ASSERT_EQ(all.size(), 4u);
    EXPECT_TRUE(all[0].known);
    EXPECT_FALSE(all[1].known);
    EXPECT_FALSE(all[2].known);
    EXPECT_FALSE(all[3].known);
    EXPECT_EQ(strict.violations().size(), 3u);
    strict.clear();
    EXPECT_THAT(strict.all(), IsEmpty());
}

TEST(Strict, keeps_every_violation_but_not_known_departures_without_end) {
    stage::Strict strict;
    for (std::size_t i = 0; i < stage::Strict::kMaxKnown + 5; ++i) {
        strict.report("aegp.plugin_id", "", "id 0");
    }
    strict.report("leak.handle", "PF_Cmd_ABOUT", "a handle");
    EXPECT_EQ(strict.all().size(), stage::Strict::kMaxKnown + 1);
    EXPECT_EQ(strict.violations().size(), 1u);
    strict.clear();
    EXPECT_THAT(strict.violations(), IsEmpty());
}

TEST(Strict, keeps_nothing_while_it_is_off) {
    stage::Strict strict;
    strict.enabled = false;
    strict.report("leak.handle", "PF_Cmd_ABOUT", "a handle");
    EXPECT_THAT(strict.all(), IsEmpty());
}

}  // namespace
}  // namespace stage_test
