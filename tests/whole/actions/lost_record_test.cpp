// A host that keeps the handle it knows: RESET frees the record and hands back a new one where such
// a host does not look. The effect has lost its record then; nothing else may come of it.
#include <gtest/gtest.h>

#include <set>

#include "stage/effect/effect_instance.h"
#include "whole/actions/user.h"

namespace actions {
namespace {

Habits keeping_host() {
    Habits habits;
    habits.options.adopt_replaced_sequence = false;
    return habits;
}

class LostRecord : public testing::Test {
  protected:
    LostRecord() : user(keeping_host(), 1), instance(*user.effect()) {
        EXPECT_EQ(findings(), Checks{});
        EXPECT_EQ(set(kReset, 1), 0);
        // The new record is nobody's, and the panel's refresh is handed the freed one: it is asked
        // for and not touched. From then on the host has none.
        EXPECT_EQ(findings(), (Checks{"handle.dead", "leak.handle", "sequence.dead"}));
    }

    using Checks = std::set<std::string>;

    PF_Err set(int index, double number) {
        stage::ParamValue value = user.session.value(instance, index);
        value.number = number;
        return user.session.set_value(instance, index, value);
    }

    // Checks that were broken since the last call; the departures that are known do not count.
    Checks findings() {
        Checks checks;
        for (const stage::Finding &finding : user.session.findings()) {
            checks.insert(finding.check);
        }
        user.session.host.strict.clear();
        return checks;
    }

    User user;
    stage::EffectInstance &instance;
};

TEST_F(LostRecord, edits_of_the_order_say_so_and_others_work) {
    EXPECT_EQ(set(kShow[1], 0), 512);
    EXPECT_EQ(set(kPosition[2], 0), 512);
    EXPECT_EQ(set(kLayout, 6), 0);
    EXPECT_EQ(set(kLock, 0), 0);
    EXPECT_EQ(findings(), Checks{});
}

TEST_F(LostRecord, handles_are_dragged_as_ever) {
    ASSERT_EQ(set(kLayout, 1), 0);
    ASSERT_EQ(set(11, 50), 0);
    user.desk.viewport() = stage::Viewport{};
    EXPECT_TRUE(user.desk.press(80, 60).event.handled) << "the wipe, in the middle";
    EXPECT_EQ(user.desk.move(40, 60).event.changed, (std::vector<int>{11, 12}));
    user.desk.release(40, 60);
    EXPECT_EQ(user.number(instance, 11), 25);
    EXPECT_EQ(findings(), Checks{});
}

TEST_F(LostRecord, frames_fail_with_a_code) {
    const stage::ViewFrame &frame = user.desk.view();
    ASSERT_EQ(frame.effects.size(), 1u);
    EXPECT_EQ(frame.effects.front().error, 512);
    EXPECT_EQ(frame.effects.front().message, "Error: Sequence data has not been initialised");
    EXPECT_EQ(findings(), Checks{});
}

TEST_F(LostRecord, the_effect_applied_once_more_has_its_own) {
    user.desk.apply();
    ASSERT_NE(user.effect(), &instance);
    findings();
    user.edit(kShow[5], 1);
    EXPECT_EQ(user.session.sequence_bytes(*user.effect()).at(3080), 5);
    EXPECT_EQ(findings(), Checks{});
}

}  // namespace
}  // namespace actions
