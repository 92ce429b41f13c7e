// Random acts of a user, drawn from a seed, on the real plug-in: what must hold after every one.
//
// KS_RANDOM_ACTIONS sets how many there are over all cases together, KS_RANDOM_SEED another start,
// and KS_RANDOM_VERBOSE prints each.
#include <gtest/gtest.h>

#include <cstdlib>

#include "stage/effect/effect_instance.h"
#include "whole/actions/acts.h"
#include "whole/actions/promises.h"

namespace actions {
namespace {

#if defined(_WIN32)
constexpr int kActions = 2400;  // under Wine everything takes several times as long
#else
constexpr int kActions = 24000;
#endif

Habits with(const char *name, void (*change)(Habits &)) {
    Habits habits;
    habits.name = name;
    change(habits);
    return habits;
}

// Each is a case; the usual host has several, with compositions of different shapes.
const std::vector<Habits> &all_habits() {
    static const std::vector<Habits> list{
        with("usual", [](Habits &) {}),
        with("usual_wide_pixels", [](Habits &habits) { habits.par_num = 2; }),
        with("usual_tall",
             [](Habits &habits) {
                 habits.comp_width = 90;
                 habits.comp_height = 200;
             }),
        with("usual_large",
             [](Habits &habits) {
                 habits.comp_width = 960;
                 habits.comp_height = 160;
             }),
        with("usual_tiny",
             [](Habits &habits) {
                 habits.comp_width = 7;
                 habits.comp_height = 3;
             }),
        with("separate_render_copy",
             [](Habits &habits) { habits.options.separate_render_copy = true; }),
        with("own_handle_kept",
             [](Habits &habits) { habits.options.adopt_replaced_sequence = false; }),
        with("refresh_values_honoured",
             [](Habits &habits) { habits.options.honour_refresh_values = true; }),
        with("send_drag_not_carried",
             [](Habits &habits) { habits.options.carry_send_drag = false; }),
        with("drags_as_clicks", [](Habits &habits) { habits.options.drags_as_clicks = true; }),
        with("events_at_view_ratio",
             [](Habits &habits) { habits.options.events_at_view_ratio = true; }),
        with("points_clamped", [](Habits &habits) { habits.options.clamp_written_points = true; }),
        with("nothing_clamped",
             [](Habits &habits) {
                 habits.options.clamp_written_values = false;
                 habits.renders = false;
             }),
        with("null_drawing_reference",
             [](Habits &habits) {
                 habits.options.null_drawing_reference = true;
                 habits.options.events_say_dont_draw = true;
             }),
    };
    return list;
}

int number_from(const char *variable, int usual) {
    const char *text = std::getenv(variable);
    return text == nullptr ? usual : std::atoi(text);
}

constexpr int kSeedsEach = 2;

class RandomActions : public testing::TestWithParam<int> {};

TEST_P(RandomActions, keep_every_promise) {
    const auto &habits = all_habits();
    const int cases = static_cast<int>(habits.size()) * kSeedsEach;
    const int count = (number_from("KS_RANDOM_ACTIONS", kActions) + cases - 1) / cases;
    const std::uint32_t seed =
        static_cast<std::uint32_t>(number_from("KS_RANDOM_SEED", 1)) * 1000u +
        static_cast<std::uint32_t>(GetParam());
    User user(habits[static_cast<std::size_t>(GetParam() / kSeedsEach)], seed);
    expect_promises(user);
    while (user.actions < count && !HasFailure()) {
        act_once(user);
        expect_promises(user);
    }
    if (HasFailure()) {
        ADD_FAILURE() << "habits " << user.habits.name << ", seed " << seed << ", action "
                      << user.actions << "; the last actions:\n"
                      << user.log();
        return;
    }
    while (user.effect() != nullptr) user.desk.remove_effect();
    user.session.stop();
    expect_promises(user);
    EXPECT_EQ(user.session.host.handles.live_count(), 0u);
}

std::string case_name(const testing::TestParamInfo<int> &tested) {
    return std::string(all_habits()[static_cast<std::size_t>(tested.param / kSeedsEach)].name) +
           "_" + std::to_string(tested.param % kSeedsEach + 1);
}

INSTANTIATE_TEST_SUITE_P(Actions, RandomActions,
                         testing::Range(0, static_cast<int>(all_habits().size()) * kSeedsEach),
                         case_name);

}  // namespace
}  // namespace actions
