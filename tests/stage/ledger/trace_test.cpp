#include "stage/ledger/trace.h"

#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::Trace;
using stage::TraceEntry;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Trace, lines_show_number_command_call_arguments_and_result) {
    EXPECT_EQ(Trace::to_line(
                  {12, "PF_Cmd_SMART_RENDER", "PF World Suite.PF_NewWorld", "200x130 argb8", "0"}),
              "    12 PF_Cmd_SMART_RENDER  PF World Suite.PF_NewWorld(200x130 argb8) -> 0");
}

TEST(Trace, lines_leave_out_what_is_empty) {
    EXPECT_EQ(Trace::to_line({1, "", "> PF_Cmd_ABOUT", "", ""}), "     1 -  > PF_Cmd_ABOUT");
    EXPECT_EQ(Trace::to_line({1234567, "c", "x", "", "ok"}), "1234567 c  x -> ok");
}

TEST(Trace, records_nothing_while_it_is_off) {
    Trace trace;
    trace.record("call", "", "");
    EXPECT_THAT(trace.entries(), IsEmpty());
    trace.enable(true);
    trace.record("call", "", "");
    EXPECT_EQ(trace.entries().size(), 1u);
}

TEST(Trace, entries_carry_the_command_under_way_and_rising_numbers) {
    Trace trace;
    trace.enable(true);
    trace.record("one", "", "");
    trace.set_command("PF_Cmd_ABOUT");
    trace.record("two", "a", "b");
    trace.clear();
    trace.record("three", "", "");
    ASSERT_EQ(trace.entries().size(), 1u);
    EXPECT_EQ(trace.entries()[0].command, "PF_Cmd_ABOUT");
    EXPECT_EQ(trace.entries()[0].number, 3u);
    EXPECT_THAT(trace.calls(), ElementsAre("three"));
}

TEST(Trace, the_sink_gets_every_entry_as_it_is_written) {
    Trace trace;
    trace.enable(true);
    Names lines;
    trace.set_sink([&](const TraceEntry &entry) { lines.push_back(Trace::to_line(entry)); });
    trace.record("one", "", "0");
    trace.record("two", "", "1");
    EXPECT_THAT(lines, ElementsAre("     1 -  one -> 0", "     2 -  two -> 1"));
    EXPECT_EQ(trace.entries().size(), 2u);
}

TEST(Trace, a_render_is_logged_call_by_call) {
    RogueSession rogue;
    rogue.open();
    rogue.host().trace.enable(true);
    rogue.render();
    EXPECT_THAT(
        rogue.host().trace.calls(),
        ElementsAre(
            "> PF_Cmd_SMART_PRE_RENDER", "pre_render.checkout_layer", "pre_render.checkout_layer",
            "< PF_Cmd_SMART_PRE_RENDER", "> PF_Cmd_SMART_RENDER",
            "smart_render.checkout_layer_pixels", "smart_render.checkout_layer_pixels",
            "smart_render.checkout_output", "inter.checkout_param", "inter.checkin_param",
            "inter.checkout_param", "inter.checkin_param", "SPBasicSuite.AcquireSuite",
            "AEGP Iterate Suite.AEGP_GetNumThreads", "AEGP Iterate Suite.AEGP_IterateGeneric",
            "SPBasicSuite.ReleaseSuite", "utils.fill", "SPBasicSuite.AcquireSuite",
            "PF World Suite.PF_GetPixelFormat", "SPBasicSuite.ReleaseSuite",
            "SPBasicSuite.AcquireSuite", "PF Iterate8 Suite.iterate", "SPBasicSuite.ReleaseSuite",
            "inter.abort", "smart_render.checkin_layer_pixels", "smart_render.checkin_layer_pixels",
            "< PF_Cmd_SMART_RENDER"));
    const TraceEntry &checkout = rogue.host().trace.entries()[1];
    EXPECT_EQ(checkout.command, "PF_Cmd_SMART_PRE_RENDER");
    EXPECT_EQ(checkout.arguments, "parameter 0, id 1, [0,0 8,6]");
    EXPECT_EQ(checkout.result, "0");
    EXPECT_EQ(rogue.host().trace.command(), "");
}

}  // namespace
}  // namespace stage_test
