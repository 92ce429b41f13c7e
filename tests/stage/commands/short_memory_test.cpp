// Memory runs out inside each of the host's functions in turn, as a plug-in calls them.
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using testing::Contains;

/// Sends `command` with memory running out in its first call, then in its second, and so on until
/// it has no more; returns how many it has. `command` says whether an exception left the plug-in.
template <class Command>
int exhaust_each_call(RogueSession &rogue, Command command) {
    for (int nth = 1; nth < 1000; ++nth) {
        rogue.host().strict.clear();
        rogue.host().faults.exhaust_memory(static_cast<std::uint64_t>(nth));
        EXPECT_FALSE(command()) << "call " << nth;
        if (!rogue.host().faults.memory_ran_out()) return nth - 1;
        std::vector<std::string> checks;
        for (const stage::Finding &finding : rogue.host().strict.all()) {
            checks.push_back(finding.check);
        }
        EXPECT_THAT(checks, Contains("host.exception")) << "call " << nth;
    }
    return 0;
}

TEST(ShortMemory, stays_inside_the_calls_of_a_render) {
    RogueSession rogue;
    rogue.open();
    rogue.set_original({4, 4});
    const int calls = exhaust_each_call(rogue, [&] { return rogue.render().escaped; });
    EXPECT_GT(calls, 10);
    rogue.host().strict.clear();
    EXPECT_EQ(rogue.render().error, 0);
    EXPECT_THAT(rogue.violations(), testing::IsEmpty());
}

TEST(ShortMemory, stays_inside_the_calls_of_other_commands) {
    RogueSession rogue;
    rogue.open();
    stage::Session &session = rogue.session;
    EXPECT_GT(exhaust_each_call(rogue, [&] { return session.about().escaped; }), 0);
    EXPECT_GT(exhaust_each_call(rogue, [&] { return session.send(PF_Cmd_PARAMS_SETUP).escaped; }),
              int{rogue::kParamCount} - 2);
    EXPECT_GT(exhaust_each_call(rogue,
                                [&] {
                                    const bool escaped = session.flatten(*rogue.effect).escaped;
                                    return session.resetup(*rogue.effect).escaped || escaped;
                                }),
              3);
}

}  // namespace
}  // namespace stage_test
