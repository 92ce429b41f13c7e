// The host's schedules as a plug-in meets them, through the iterate suites.
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::Schedule;
using testing::IsEmpty;

stage::HostOptions scheduled(const Schedule &schedule, stage::Depth depth = stage::Depth::U8) {
    stage::HostOptions options = at_depth(depth);
    options.schedule = schedule;
    return options;
}

class SchedulesTest : public testing::TestWithParam<stage::Depth> {};

TEST_P(SchedulesTest, give_every_pixel_once_whatever_the_order) {
    const Schedule schedules[] = {Schedule::serial(),         Schedule::shuffled(1, 7),
                                  Schedule::shuffled(99, 96), Schedule::with_threads(1),
                                  Schedule::with_threads(2),  Schedule::with_threads(7),
                                  Schedule::with_threads(64), Schedule::with_threads(96)};
    for (const Schedule &schedule : schedules) {
        RogueSession rogue("", scheduled(schedule, GetParam()));
        rogue.open({31, 45});
        const stage::RenderResult result = rogue.render();
        EXPECT_EQ(result.error, 0);
        EXPECT_EQ(result.picture.argb, rogue.picture.argb);
        EXPECT_EQ(rogue.seen().worker_count, stage::reported_threads(schedule));
        EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Depths, SchedulesTest,
                         testing::Values(stage::Depth::U8, stage::Depth::U16, stage::Depth::Float),
                         [](const auto &row) {
                             return "bits" + std::to_string(static_cast<int>(row.param));
                         });

TEST(Schedules, a_user_who_cancels_ends_the_iteration_with_517) {
    for (Schedule schedule : {Schedule::serial(), Schedule::with_threads(4)}) {
        schedule.abort_after = 10;
        RogueSession rogue("", scheduled(schedule));
        rogue.open({4, 20});
        const stage::RenderResult result = rogue.render();
        EXPECT_EQ(result.error, PF_Interrupt_CANCEL);
        EXPECT_TRUE(result.picture.argb.empty());
        EXPECT_THAT(rogue.host().strict.all(), IsEmpty());
    }
}

TEST(Schedules, the_abort_callback_answers_517_on_the_chosen_call) {
    stage::HostOptions options;
    options.cancel_at_abort_call = 2;
    RogueSession rogue("", options);
    rogue.open();
    EXPECT_EQ(rogue.render().error, 0);  // one abort call in each render, and it counts anew
    rogue.host().options.cancel_at_abort_call = 1;
    EXPECT_EQ(rogue.render().error, PF_Interrupt_CANCEL);
    rogue.host().options.cancel_at_abort_call = 0;
    rogue.host().options.user_cancels = true;
    EXPECT_EQ(rogue.render().error, PF_Interrupt_CANCEL);
}

TEST(Schedules, a_host_call_from_a_worker_is_refused_under_each) {
    for (const Schedule &schedule :
         {Schedule::serial(), Schedule::shuffled(3, 5), Schedule::with_threads(4)}) {
        RogueSession rogue("call_from_worker", scheduled(schedule));
        rogue.open();
        EXPECT_EQ(rogue.render().error, 0);  // the callback fails if it gets a handle
        EXPECT_EQ(rogue.violations(), Names{"thread.worker in PF_Cmd_SMART_RENDER"});
    }
}

}  // namespace
}  // namespace stage_test
