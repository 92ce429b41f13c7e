// Memory runs out inside each of the host's functions in turn, as the plug-in calls them: no
// exception comes back to it, and the host goes on.
#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "hostapi/constants.h"
#include "stage/desk/viewer/viewer.h"
#include "stage/effect/effect_instance.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

using testing::Contains;
using testing::Not;

constexpr int kMostCalls = 1000;

// Runs `command` with memory running out in its first call of the host, then in its second, and so
// on until it has no more. Returns how many it has.
int exhaust_each_call(stage::Host &host, const std::function<void()> &command) {
    for (int nth = 1; nth < kMostCalls; ++nth) {
        SCOPED_TRACE("call " + std::to_string(nth));
        host.strict.clear();
        host.faults.exhaust_memory(static_cast<std::uint64_t>(nth));
        command();
        const bool ran_out = host.faults.memory_ran_out();
        host.faults.reset();
        std::vector<std::string> checks;
        for (const stage::Finding &finding : host.strict.all()) checks.push_back(finding.check);
        host.strict.clear();
        EXPECT_THAT(checks, Not(Contains("exception.escaped")));
        if (!ran_out) return nth - 1;
        EXPECT_THAT(checks, Contains("host.exception"));
    }
    return kMostCalls;
}

class ShortMemory : public testing::Test {
  protected:
    ShortMemory() {
        flow.make_scene(random_image(5, 60, 76, oracle::Depth::kByte));
        flow.set_original(random_image(6, 40, 30, oracle::Depth::kByte));
        flow.set("Monitor Layout", 6);
        flow.set("Compare with Original", 25);
        flow.set("Show Slice Waveform", 1);
        flow.set("Show Histogram", 1);
    }

    void expect_calls(int least, int calls) {
        EXPECT_GE(calls, least);
        EXPECT_LT(calls, kMostCalls);
    }

    Flow flow;
};

TEST_F(ShortMemory, in_a_render) {
    const oracle::Image before = flow.frame();
    expect_calls(50, exhaust_each_call(flow.host(), [&] { flow.render(); }));
    const oracle::Image after = flow.frame();
    EXPECT_EQ(before.bytes8, after.bytes8);
}

TEST_F(ShortMemory, in_drawing_and_pressing) {
    stage::Viewer viewer(flow.session, *flow.effect, stage::WindowKind::kComp);
    stage::DrawList list;
    expect_calls(20, exhaust_each_call(flow.host(), [&] { viewer.draw(list); }));
    expect_calls(2, exhaust_each_call(flow.host(), [&] { viewer.press(20, 20); }));
    EXPECT_EQ(viewer.draw(list).error, 0);
}

TEST_F(ShortMemory, in_the_panel_and_the_dialog) {
    stage::Session &session = flow.session;
    expect_calls(1, exhaust_each_call(flow.host(), [&] { session.about(); }));
    session.panel_shown = true;
    expect_calls(5, exhaust_each_call(flow.host(), [&] { session.refresh_panel(*flow.effect); }));
    EXPECT_EQ(session.refresh_panel(*flow.effect).error, 0);
}

}  // namespace
}  // namespace ks::flow
