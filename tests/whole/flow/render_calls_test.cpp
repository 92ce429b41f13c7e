// The order of host calls in every path of the smart-render pair.
#include <gmock/gmock.h>

#include <algorithm>

#include "whole/support/call_log.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

constexpr char kPreRender[] = "PF_Cmd_SMART_PRE_RENDER";
constexpr char kRender[] = "PF_Cmd_SMART_RENDER";

Calls operator+(Calls left, const Calls &right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// One value read: out and in at once.
Calls read(const std::vector<int> &indices) {
    Calls calls;
    for (const int index : indices) {
        calls.push_back("checkout_param " + std::to_string(index));
        calls.push_back("checkin_param");
    }
    return calls;
}

const Calls kOpen{"checkout_layer_pixels 0", "checkout_output", "checkout_layer_pixels 10", "abort",
                  "PF_GetPixelFormat"};
const Calls kClose{"checkin_layer_pixels 10", "checkin_layer_pixels 0"};
// Switches, layout, view, channels, gamma, gain, corrections, luma; sizes of the enabled scopes in
// walk order; the aspect choice.
const std::vector<int> kHead{19, 20, 21, 22, 23, 24, 2, 6, 15, 7, 8, 9, 59};
const Calls kIdentity{"copy"};

Calls settings(std::vector<int> sizes) {
    std::vector<int> all = kHead;
    all.insert(all.end(), sizes.begin(), sizes.end());
    all.push_back(61);
    return read(all);
}

Calls tile(const std::string &size, const std::string &at) {
    return {"new_world " + size,
            "transform_world",
            "abort",
            "iterate",
            "transfer_rect " + size + " at " + at,
            "dispose_world"};
}

Calls stacked(int index, const std::string &size, const std::string &at) {
    return {"checkout_param " + std::to_string(index), "transfer_rect " + size + " at " + at,
            "dispose_world", "checkin_param"};
}

// How to measure; the pass: counting, drawing; what only graticules depend on.
Calls measured(const std::vector<int> &measuring, const std::vector<int> &graticules) {
    const Calls pass{"AEGP_GetNumThreads", "AEGP_IterateGeneric", "AEGP_IterateGeneric"};
    return read(measuring) + pass + read(graticules);
}

// One panel's graticule: asked before it is made and before it is copied back.
Calls drawn() {
    return {"abort", "abort"};
}

// The scopes of a new instance: luma and quality; waveform, vectorscope, parade; scale and guides,
// layout and lines of the vectorscope.
const Calls kThreeScopes = measured({59, 64, 26, 29, 33, 34, 40, 15, 45}, {62, 63, 32, 35, 36}) +
                           drawn() + drawn() + drawn();

// The three scopes of a new instance for an output of 100 by 80: aspect 0.8, sizes 200.
const Calls kThreeWorlds{"new_world 200x178", "new_world 200x178", "new_world 200x218"};
const Calls kThreeStacked = stacked(43, "200x178", "(3,3)") + stacked(38, "200x218", "(2,2)") +
                            stacked(27, "200x178", "(1,1)");

class RenderCalls : public testing::Test {
  protected:
    void scene(int height = 80) {
        flow.make_scene(random_image(5, 100, height, oracle::Depth::kByte, {true, false, false}));
        flow.set_point("Waveform Monitor/Scope Position", 1, 1);
        flow.set_point("Vectorscope/Scope Position", 2, 2);
        flow.set_point("Channel Parade/Scope Position", 3, 3);
        flow.set_point("Slice Waveform/Scope Position", 4, 4);
        flow.set_point("Histogram/Scope Position", 5, 5);
    }
    void no_scopes() {
        for (const char *name :
             {"Show Waveform Monitor", "Show Vectorscope", "Show Channel Parade"}) {
            flow.set(name, 0);
        }
        flow.restore({0, 0, 0, 0, 0, 0, 0, 1});
    }
    void add_original() {
        flow.set_original(random_image(6, 60, 50, oracle::Depth::kByte, {true, false, false}));
    }
    Calls render_calls(const stage::RenderSettings &render = {}, PF_Err error = 0) {
        flow.host().trace.clear();
        flow.host().trace.enable(true);
        const stage::RenderResult result = flow.render(render);
        EXPECT_EQ(result.error, error);
        flow.host().trace.enable(false);
        return calls_of(flow.host().trace.entries(), kRender);
    }

    // Of the last frame.
    std::vector<std::size_t> handles() {
        return handles_made(flow.host().trace.entries(), kRender);
    }
    int locked(const std::string &slot) {
        return locked_during(flow.host().trace.entries(), kRender, slot);
    }

    Flow flow;
};

TEST_F(RenderCalls, pre_render_checks_out_input_and_original_and_nothing_else) {
    scene();
    render_calls();
    const Calls expected{"checkout_layer 0 as 0", "checkout_layer 10 as 10"};
    EXPECT_EQ(calls_of(flow.host().trace.entries(), kPreRender), expected);
}

TEST_F(RenderCalls, frame_without_sequence_data_only_writes_its_message) {
    scene();
    flow.session.set_flat_data(*flow.effect, {});
    EXPECT_EQ(render_calls({}, 512), (Calls{"strcpy"}));
}

TEST_F(RenderCalls, frame_of_74_rows_is_copied_and_one_of_75_is_rendered) {
    scene(74);
    EXPECT_EQ(render_calls(), (Calls{"checkout_layer_pixels 0", "checkout_output", "copy",
                                     "checkin_layer_pixels 0"}));
    const oracle::Image input =
        random_image(5, 100, 74, oracle::Depth::kByte, {true, false, false});
    EXPECT_EQ(flow.frame().bytes8, input.bytes8);
}

TEST_F(RenderCalls, frame_of_75_rows_is_rendered) {
    scene(75);
    const Calls calls = render_calls();
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + 5), kOpen);
}

TEST_F(RenderCalls, cancelled_frame_renders_nothing_and_checks_both_layers_in) {
    scene();
    flow.host().options.user_cancels = true;
    const Calls asked{"checkout_layer_pixels 0", "checkout_output", "checkout_layer_pixels 10",
                      "abort"};
    EXPECT_EQ(render_calls({}, 517), asked + kClose);
}

TEST_F(RenderCalls, single_layout_with_the_scopes_of_a_new_instance) {
    scene();
    flow.set("Monitor Layout", 1);
    const Calls head = kOpen + settings({28, 44, 39}) + kThreeWorlds;
    const Calls corrected = Calls{"new_world 100x80"} + kIdentity;
    const Calls foot = Calls{"copy"} + kThreeStacked + Calls{"dispose_world"} + kClose;
    EXPECT_EQ(render_calls(), head + corrected + kThreeScopes + foot);
    flow.set("Apply Corrections", 2);
    EXPECT_EQ(render_calls(), head + kThreeScopes + corrected + foot);
}

TEST_F(RenderCalls, four_way_layouts_make_three_tiles_one_after_the_other) {
    scene();
    const Calls head = kOpen + settings({28, 44, 39}) + kThreeWorlds + Calls{"new_world 100x80"} +
                       kIdentity + kThreeScopes + Calls{"fill", "transform_world"};
    const Calls foot = kThreeStacked + Calls{"dispose_world"} + kClose;
    flow.set("Monitor Layout", 4);
    EXPECT_EQ(render_calls(), head + tile("25x20", "(25,60)") + tile("25x20", "(50,60)") +
                                  tile("25x20", "(75,60)") + foot);
    flow.set("Monitor Layout", 3);
    EXPECT_EQ(render_calls(), head + tile("50x40", "(50,0)") + tile("50x40", "(0,40)") +
                                  tile("50x40", "(50,40)") + foot);
}

TEST_F(RenderCalls, windowed_layout_reads_its_position_and_size) {
    scene();
    flow.set("Monitor Layout", 6);
    const Calls expected = kOpen + settings({28, 44, 39}) + kThreeWorlds +
                           Calls{"new_world 100x80"} + kIdentity + kThreeScopes + read({4, 5}) +
                           Calls{"fill", "transform_world"} + kThreeStacked +
                           Calls{"dispose_world"} + kClose;
    EXPECT_EQ(render_calls(), expected);
}

TEST_F(RenderCalls, scopes_only_makes_no_corrected_world) {
    scene();
    flow.set("Monitor Layout", 7);
    add_original();
    flow.set("Compare with Original", 50);
    for (const int corrections : {1, 2}) {
        flow.set("Apply Corrections", corrections);
        EXPECT_EQ(render_calls(), kOpen + settings({28, 44, 39}) + kThreeWorlds + kThreeScopes +
                                      Calls{"fill"} + kThreeStacked + kClose);
    }
}

TEST_F(RenderCalls, all_scopes_off_makes_no_scope_world) {
    scene();
    no_scopes();
    flow.set("Monitor Layout", 1);
    EXPECT_EQ(render_calls(), kOpen + settings({}) + Calls{"new_world 100x80"} + kIdentity +
                                  Calls{"copy"} + Calls{"dispose_world"} + kClose);
}

TEST_F(RenderCalls, five_scopes_are_made_in_walk_order_and_stacked_from_the_back) {
    scene();
    flow.set("Show Slice Waveform", 1);
    flow.set("Show Histogram", 1);
    flow.set("Monitor Layout", 7);
    const Calls worlds = kThreeWorlds + Calls{"new_world 200x178", "new_world 272x102"};
    const Calls placed = stacked(55, "272x102", "(5,5)") + stacked(50, "200x178", "(4,4)") +
                         stacked(38, "200x218", "(2,2)") + stacked(43, "200x178", "(3,3)") +
                         stacked(27, "200x178", "(1,1)");
    const Calls scopes =
        measured({59, 64, 26, 29, 33, 34, 40, 15, 45, 48, 54, 56}, {62, 63, 32, 35, 36}) + drawn() +
        drawn() + drawn() + drawn() + drawn();
    EXPECT_EQ(render_calls(), kOpen + settings({28, 44, 39, 51, 49, 56}) + worlds + scopes +
                                  Calls{"fill"} + placed + kClose);
}

TEST_F(RenderCalls, stored_order_is_kept_while_its_count_fits_and_replaced_otherwise) {
    scene();
    flow.set("Monitor Layout", 7);
    flow.restore({0, 2, 1, 3, 0, 0, 3, 1});
    const Calls head = kOpen + settings({28, 44, 39}) + kThreeWorlds + kThreeScopes + Calls{"fill"};
    EXPECT_EQ(render_calls(), head + stacked(43, "200x178", "(3,3)") +
                                  stacked(27, "200x178", "(1,1)") +
                                  stacked(38, "200x218", "(2,2)") + kClose);
    flow.restore({0, 2, 1, 3, 4, 0, 4, 1});
    EXPECT_EQ(render_calls(), head + stacked(38, "200x218", "(2,2)") +
                                  stacked(43, "200x178", "(3,3)") +
                                  stacked(27, "200x178", "(1,1)") + kClose);
    EXPECT_EQ(flow.stacking_order().kinds, (std::array<std::int8_t, 5>{1, 3, 2, 0, 0}));
}

TEST_F(RenderCalls, original_without_a_wipe_reads_no_opacity) {
    scene();
    no_scopes();
    add_original();
    flow.set("Monitor Layout", 1);
    const Calls head = kOpen + settings({}) + Calls{"new_world 100x80"} + kIdentity;
    const Calls foot = Calls{"copy"} + Calls{"dispose_world"} + kClose;
    EXPECT_EQ(render_calls(), head + read({11}) + foot);
    flow.set("Compare with Original", 50);
    EXPECT_EQ(render_calls(),
              head + read({11, 12}) + Calls{"transfer_rect 60x50 at (20,15)"} + foot);
}

TEST_F(RenderCalls, frame_without_an_original_reads_neither_wipe_nor_opacity) {
    scene();
    no_scopes();
    flow.set("Monitor Layout", 1);
    flow.set("Compare with Original", 50);
    const Calls expected = kOpen + settings({}) + Calls{"new_world 100x80"} + kIdentity +
                           Calls{"copy"} + Calls{"dispose_world"} + kClose;
    EXPECT_EQ(render_calls(), expected);
    add_original();
    stage::RenderSettings null_original;
    null_original.null_original = true;
    EXPECT_EQ(render_calls(null_original), expected);
}

TEST_F(RenderCalls, corrections_build_their_tables_once_per_gamma_and_ask_for_abort) {
    scene();
    no_scopes();
    flow.set("Monitor Layout", 1);
    flow.set("Monitor Gamma", 2);
    const Calls head = kOpen + settings({}) + Calls{"new_world 100x80"};
    const Calls foot = Calls{"abort", "iterate", "copy"} + Calls{"dispose_world"} + kClose;
    EXPECT_EQ(render_calls(), head + Calls{"pow x767"} + foot);
    EXPECT_GE(locked("pow"), 1) << "the record that the tables are part of";
    EXPECT_GE(locked("iterate"), 1);
    EXPECT_EQ(render_calls(), head + foot) << "the tables of the last frame serve";
    EXPECT_GE(locked("iterate"), 1);
    flow.set("Monitor Gamma", 1.5);
    EXPECT_EQ(render_calls(), head + Calls{"pow x767"} + foot);
    flow.set("Monitor Gamma", 2);
    EXPECT_EQ(render_calls(), head + Calls{"pow x767"} + foot) << "back again is built again";
}

TEST_F(RenderCalls, muted_scopes_are_not_measured_and_the_vectorscope_is_not_drawn) {
    scene();
    flow.set("Monitor Layout", 7);
    flow.set("REN", 1);
    const Calls scopes = read({59, 64, 26, 29, 33, 34, 40, 15, 45, 62, 63}) + drawn() + drawn();
    EXPECT_EQ(render_calls(), kOpen + settings({28, 44, 39}) + kThreeWorlds + scopes +
                                  Calls{"fill"} + kThreeStacked + kClose);
}

TEST_F(RenderCalls, float_waveforms_read_their_scale_and_a_reference_line_its_colour) {
    flow.host().options.depth = stage::Depth::Float;
    scene();
    flow.set("Monitor Layout", 7);
    flow.set("Show Reference Line", 1);
    const Calls scopes =
        measured({59, 64, 60, 26, 29, 33, 34, 40, 15, 45}, {62, 63, 32, 35, 36, 37}) + drawn() +
        drawn() + drawn();
    EXPECT_EQ(render_calls(), kOpen + settings({28, 44, 39}) + kThreeWorlds + scopes +
                                  Calls{"fill"} + kThreeStacked + kClose);
}

TEST_F(RenderCalls, large_buffers_are_handles_that_are_locked_while_they_are_worked_on) {
    scene();
    flow.set("Show Histogram", 1);
    flow.set("Monitor Layout", 7);
    render_calls();
    // The bins; for each panel the raster, the bitmap over it and its graphics.
    EXPECT_THAT(handles(), testing::IsSupersetOf(std::vector<std::size_t>{
                               3072, 200 * 178 * 4, 200 * 178 * 4, 200 * 218 * 4, 272 * 102 * 4, 24,
                               24, 24, 24, 16, 16, 16, 16}));
    EXPECT_GE(locked("AEGP_IterateGeneric"), 2) << "bins and counters";
}

TEST_F(RenderCalls, nothing_is_a_handle_where_no_scope_is_drawn) {
    scene();
    no_scopes();
    render_calls();
    EXPECT_THAT(handles(), testing::IsEmpty());
}

// The drawing surface takes the handle suite for itself: it is made and released on its own.
TEST_F(RenderCalls, each_suite_is_acquired_once_per_frame_by_the_render_and_by_the_scopes) {
    scene();
    flow.set("Monitor Gamma", 2);
    flow.set("Monitor Layout", 3);
    render_calls();
    std::vector<std::string> acquired;
    for (const stage::TraceEntry &entry : flow.host().trace.entries()) {
        if (entry.call == "SPBasicSuite.AcquireSuite") acquired.push_back(entry.arguments);
    }
    std::sort(acquired.begin(), acquired.end());
    const std::string handle = "\"PF Handle Suite\", 2";
    EXPECT_EQ(acquired,
              (std::vector<std::string>{"\"AEGP Iterate Suite\", 1", handle, handle, handle, handle,
                                        handle, "\"PF Iterate8 Suite\", 1", "\"PF World Suite\", 2",
                                        "\"PF World Transform Suite\", 1"}));
}

}  // namespace
}  // namespace ks::flow
