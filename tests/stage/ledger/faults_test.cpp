#include "stage/ledger/faults.h"

#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::FailureForm;
using stage::Faults;

TEST(Faults, nothing_fails_until_armed_but_calls_are_counted) {
    Faults faults;
    for (int i = 0; i < 5; ++i) EXPECT_FALSE(faults.strikes("call", FailureForm::kCode));
    EXPECT_EQ(faults.count(), 5u);
    EXPECT_FALSE(faults.struck());
}

TEST(Faults, the_nth_call_after_arming_fails_once) {
    Faults faults;
    faults.strikes("before", FailureForm::kCode);
    faults.arm(3);
    EXPECT_EQ(faults.count(), 0u);
    EXPECT_FALSE(faults.strikes("one", FailureForm::kCode));
    EXPECT_FALSE(faults.strikes("two", FailureForm::kCode));
    EXPECT_FALSE(faults.struck());
    EXPECT_TRUE(faults.strikes("three", FailureForm::kNullResult));
    EXPECT_FALSE(faults.strikes("four", FailureForm::kCode));
    EXPECT_TRUE(faults.struck());
    EXPECT_EQ(faults.struck_name(), "three");
    EXPECT_EQ(faults.struck_form(), FailureForm::kNullResult);
    EXPECT_EQ(faults.code(), stage::kInjectedError);
}

TEST(Faults, persistent_failure_goes_on_and_names_the_first) {
    Faults faults;
    faults.arm(2, true, 99);
    EXPECT_FALSE(faults.strikes("one", FailureForm::kCode));
    EXPECT_TRUE(faults.strikes("two", FailureForm::kSuite));
    EXPECT_TRUE(faults.strikes("three", FailureForm::kCode));
    EXPECT_EQ(faults.struck_name(), "two");
    EXPECT_EQ(faults.struck_form(), FailureForm::kSuite);
    EXPECT_EQ(faults.code(), 99);
}

TEST(Faults, a_name_fails_every_time_and_no_other) {
    Faults faults;
    faults.arm_name("PF World Suite.PF_NewWorld", 4);
    EXPECT_FALSE(faults.strikes("PF World Suite.PF_DisposeWorld", FailureForm::kCode));
    EXPECT_TRUE(faults.strikes("PF World Suite.PF_NewWorld", FailureForm::kCode));
    EXPECT_TRUE(faults.strikes("PF World Suite.PF_NewWorld", FailureForm::kCode));
    EXPECT_EQ(faults.code(), 4);
}

TEST(Faults, reset_and_arming_anew_forget_everything) {
    Faults faults;
    faults.arm(1, true, 99);
    faults.strikes("one", FailureForm::kCode);
    faults.reset();
    EXPECT_EQ(faults.count(), 0u);
    EXPECT_FALSE(faults.struck());
    EXPECT_EQ(faults.struck_name(), "");
    EXPECT_EQ(faults.code(), stage::kInjectedError);
    EXPECT_FALSE(faults.strikes("one", FailureForm::kCode));
    faults.arm_name("one");
    faults.arm(5);
    EXPECT_FALSE(faults.strikes("one", FailureForm::kCode));
}

TEST(Faults, the_failing_call_returns_the_code_before_it_does_anything) {
    RogueSession rogue;
    rogue.open();
    for (const char *name :
         {"inter.checkout_param", "smart_render.checkout_output", "inter.abort",
          "AEGP Iterate Suite.AEGP_IterateGeneric", "PF Iterate8 Suite.iterate"}) {
        rogue.host().faults.arm_name(name, 4242);
        const stage::RenderResult result = rogue.render();
        EXPECT_EQ(result.error, 4242) << name;
        EXPECT_TRUE(rogue.host().faults.struck()) << name;
        EXPECT_TRUE(result.picture.argb.empty()) << name;
        rogue.host().faults.reset();
        EXPECT_EQ(rogue.render().error, 0) << name;
    }
    EXPECT_THAT(rogue.host().strict.all(), testing::IsEmpty());
}

TEST(Faults, a_failed_pre_render_is_not_followed_by_a_render) {
    RogueSession rogue;
    rogue.open();
    rogue.host().trace.enable(true);
    rogue.host().faults.arm_name("pre_render.checkout_layer");
    EXPECT_EQ(rogue.render().error, stage::kInjectedError);
    EXPECT_THAT(rogue.host().trace.calls(),
                testing::ElementsAre("> PF_Cmd_SMART_PRE_RENDER", "pre_render.checkout_layer",
                                     "< PF_Cmd_SMART_PRE_RENDER"));
}

TEST(Faults, every_call_of_an_applied_effect_has_its_number) {
    RogueSession rogue;
    rogue.session.start();
    const std::uint64_t before = rogue.host().faults.count();
    rogue.host().trace.enable(true);
    rogue.host().faults.reset();
    stage::Project &project = rogue.host().project;
    const stage::ItemId comp = project.add_comp("comp", 4, 4, 1, 1, 1);
    const stage::ItemId solid = project.add_solid_item("solid", 4, 4, {1, 0, 0, 0});
    ASSERT_NE(rogue.session.apply(project.add_layer(comp, solid, 0, "layer")), nullptr);
    // The suite once, a handle, its lock; releasing, unlocking and sizes cannot fail.
    EXPECT_EQ(rogue.host().faults.count(), 3u);
    EXPECT_GT(before, 0u);
}

}  // namespace
}  // namespace stage_test
