// An instance's whole life: global commands, set-up, flat form, save and load, duplicate, removal.
#include <cstring>
#include <filesystem>

#include "hostapi/constants.h"
#include "hostapi/events.h"
#include "oracle/record_oracle.h"
#include "support/paths.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes flat_bytes(std::uint8_t state, std::array<std::int8_t, 5> order, std::int8_t count) {
    const auto flat = oracle::flat_record(state, order, count);
    return {flat.begin(), flat.end()};
}

oracle::Image small_image(int width = 96, int height = 80) {
    return random_image(3, width, height, oracle::Depth::kByte, {true, false, false});
}

TEST(Lifecycle, global_setup_reports_version_and_flags) {
    const Flow flow;
    EXPECT_EQ(flow.session.plugin.reported.my_version, 0x00101E01u);
    EXPECT_EQ(flow.session.plugin.reported.out_flags, 0x06008010);
    EXPECT_EQ(flow.session.plugin.reported.out_flags2, 0x00001408);
    EXPECT_EQ(flow.session.plugin.global_data, nullptr);
}

TEST(Lifecycle, global_setup_writes_the_input_records_version_and_the_host_knows_it) {
    Flow flow;
    PF_InData in{};
    PF_OutData out{};
    in.version = {77, 78};
    EXPECT_EQ(flow.session.plugin.entry(PF_Cmd_GLOBAL_SETUP, &in, &out, nullptr, nullptr, nullptr),
              0);
    std::uint32_t version = 0;
    std::memcpy(&version, &in.version, sizeof version);
    EXPECT_EQ(version, 13u);
    int known = 0;
    for (const stage::Finding &finding : flow.host().strict.all()) {
        known += finding.check == "in_data.write" && finding.known;
    }
    EXPECT_EQ(known, 1);
}

TEST(Lifecycle, about_text_has_both_carriage_returns_and_the_description) {
    Flow flow;
    const stage::CommandResult about = flow.session.about();
    EXPECT_EQ(about.error, 0);
    const std::string begin =
        "Kestrel Scopes v2.0.3.1\r\r"
        "Scopes and monitoring for grading and compositing.\n\n";
    EXPECT_EQ(about.message.substr(0, begin.size()), begin);
    EXPECT_GT(about.message.size(), begin.size()) << "the closing line is missing";
    EXPECT_LT(about.message.size(), 256u);
}

TEST(Lifecycle, commands_that_are_not_served_return_0_and_touch_nothing) {
    Flow flow;
    std::vector<PF_Cmd> commands{2, 9, 10, 11, 12, 16, 17, 18, 19, 20, 21, 22, -1};
    for (PF_Cmd cmd = 25; cmd <= 40; ++cmd) commands.push_back(cmd);
    for (const PF_Cmd cmd : commands) {
        PF_InData in, in_before;
        PF_OutData out, out_before;
        std::memset(static_cast<void *>(&in), 0x5A, sizeof in);
        std::memset(static_cast<void *>(&out), 0xA5, sizeof out);
        std::memcpy(static_cast<void *>(&in_before), &in, sizeof in);
        std::memcpy(static_cast<void *>(&out_before), &out, sizeof out);
        EXPECT_EQ(flow.session.plugin.entry(cmd, &in, &out, nullptr, nullptr, nullptr), 0) << cmd;
        EXPECT_EQ(std::memcmp(&in, &in_before, sizeof in), 0) << cmd;
        EXPECT_EQ(std::memcmp(&out, &out_before, sizeof out), 0) << cmd;
    }
}

TEST(Lifecycle, panel_commands_and_events_succeed) {
    Flow flow;
    flow.make_scene(small_image());
    flow.session.panel_shown = true;
    EXPECT_EQ(flow.session.refresh_panel(*flow.effect).error, 0);
    EXPECT_EQ(flow.session.set_value(*flow.effect, 6, stage::ParamValue{2, 0, 0, {}, 0}), 0);
    PF_EventExtra event{};
    event.e_type = PF_Event_NEW_CONTEXT;
    EXPECT_EQ(flow.session.send(PF_Cmd_EVENT, flow.effect, &event).error, 0);
}

TEST(Lifecycle, setup_makes_the_new_instance_record) {
    Flow flow;
    flow.make_scene(small_image());
    EXPECT_EQ(flow.record(), oracle::new_instance_record());
}

TEST(Lifecycle, flattening_a_fresh_instance_yields_its_eight_bytes) {
    Flow flow;
    flow.make_scene(small_image());
    EXPECT_EQ(flow.session.flatten(*flow.effect).error, 0);
    EXPECT_EQ(flow.record(), (Bytes{0, 1, 2, 3, 0, 0, 3, 1}));
}

TEST(Lifecycle, flatten_then_resetup_restores_state_order_and_count_and_rebuilds_the_tables) {
    Flow flow;
    flow.make_scene(small_image());
    const Bytes flat = flat_bytes(1, {5, 3, 1, 2, 4}, 5);
    flow.restore(flat);
    const auto record =
        oracle::restored_instance_record(oracle::flat_record(1, {5, 3, 1, 2, 4}, 5));
    EXPECT_EQ(flow.record(), record);
    flow.set("Monitor Gamma", 2.2);
    flow.set("Show Slice Waveform", 1);
    flow.set("Show Histogram", 1);
    flow.frame();
    EXPECT_NE(flow.record(), record) << "the frame must have rebuilt the tables for its gamma";
    EXPECT_EQ(flow.session.flatten(*flow.effect).error, 0);
    EXPECT_EQ(flow.record(), flat);
    EXPECT_EQ(flow.session.resetup(*flow.effect).error, 0);
    EXPECT_EQ(flow.record(), record);
}

TEST(Lifecycle, setup_of_an_instance_with_a_record_frees_the_old_one) {
    Flow flow;
    flow.make_scene(small_image());
    flow.restore(flat_bytes(1, {3, 2, 1, 0, 0}, 3));
    const std::size_t live = flow.host().handles.live_count();
    const PF_Handle old = flow.effect->sequence_data;
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, flow.effect).error, 0);
    EXPECT_FALSE(flow.host().handles.is_live(old));
    EXPECT_EQ(flow.host().handles.live_count(), live);
    EXPECT_EQ(flow.record(), oracle::new_instance_record());
}

TEST(Lifecycle, resetup_and_setdown_without_data_succeed_and_flatten_is_512) {
    Flow flow;
    flow.make_scene(small_image());
    flow.session.set_flat_data(*flow.effect, {});
    EXPECT_EQ(flow.session.resetup(*flow.effect).error, 0);
    EXPECT_EQ(flow.effect->sequence_data, nullptr);
    EXPECT_EQ(flow.session.flatten(*flow.effect).error, 512);
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETDOWN, flow.effect).error, 0);
}

TEST(Lifecycle, render_without_data_shows_its_message_and_is_512) {
    Flow flow;
    flow.make_scene(small_image());
    flow.session.set_flat_data(*flow.effect, {});
    const stage::RenderResult result = flow.render();
    EXPECT_EQ(result.error, 512);
    EXPECT_EQ(result.message, "Error: Sequence data has not been initialised");
    ASSERT_FALSE(flow.host().messages.empty());
    EXPECT_TRUE(flow.host().messages.back().as_error);
}

TEST(Lifecycle, resetup_of_a_record_that_was_never_flattened_reads_it_as_flat) {
    Flow flow;
    flow.make_scene(small_image());
    EXPECT_EQ(flow.session.resetup(*flow.effect).error, 0);
    // Bytes 4 to 6 of a live record belong to the gamma key 1.0f: 00 00 80.
    const std::int8_t count = -128;
    const auto flat = oracle::flat_record(0, {0, 0, 0, 0, 0}, count);
    EXPECT_EQ(flow.record(), oracle::restored_instance_record(flat));
    flow.frame();
    EXPECT_EQ(flow.stacking_order().count, 3) << "the frame replaces a count that does not fit";
}

TEST(Lifecycle, resetup_of_short_data_reads_no_further_than_it_goes) {
    Flow flow;
    flow.make_scene(small_image());
    const Bytes whole = flat_bytes(1, {3, 2, 1, 4, 5}, 5);
    for (std::size_t length = 1; length < whole.size(); ++length) {
        flow.restore({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        std::array<std::uint8_t, 8> expected{};
        std::copy_n(whole.begin(), length, expected.begin());
        EXPECT_EQ(flow.record(), oracle::restored_instance_record(expected)) << length;
        flow.frame();
    }
}

TEST(Lifecycle, setdown_frees_flat_data_too) {
    Flow flow;
    flow.make_scene(small_image());
    EXPECT_EQ(flow.session.flatten(*flow.effect).error, 0);
    const PF_Handle flat = flow.effect->sequence_data;
    EXPECT_EQ(flow.session.remove(*flow.effect).error, 0);
    EXPECT_FALSE(flow.host().handles.is_live(flat));
    EXPECT_EQ(flow.host().handles.live_count(), 0u);
}

TEST(Lifecycle, duplicate_has_the_same_state_of_its_own) {
    Flow flow;
    flow.make_scene(small_image());
    flow.restore(flat_bytes(1, {2, 3, 1, 0, 0}, 3));
    flow.set("Monitor Layout", 6);
    const oracle::Image frame = flow.frame();
    stage::EffectInstance &copy = flow.session.duplicate(*flow.effect, flow.layer);
    EXPECT_NE(copy.sequence_data, flow.effect->sequence_data);
    EXPECT_EQ(flow.session.sequence_bytes(copy), flow.record());
    flow.effect = &copy;
    EXPECT_EQ(flow.frame().bytes8, frame.bytes8);
    flow.restore(flat_bytes(0, {1, 2, 3, 0, 0}, 3));
    flow.effect = flow.host().instances.front().get();
    EXPECT_EQ(flow.stacking_order().kinds, (std::array<std::int8_t, 5>{2, 3, 1, 0, 0}));
}

// A scene of a solid, which a project file holds by itself.
void make_solid_scene(Flow &flow) {
    stage::Project &project = flow.host().project;
    flow.comp = project.add_comp("comp", 120, 90, 1, 1, 1);
    project.active_comp = flow.comp;
    const stage::ItemId solid = project.add_solid_item("solid", 120, 90, {1, 0.25, 0.5, 0.75});
    flow.layer = project.add_layer(flow.comp, solid, 0, "solid");
    flow.effect = flow.session.apply(flow.layer);
    ASSERT_NE(flow.effect, nullptr);
}

TEST(Lifecycle, saved_instance_comes_back_in_a_new_session_with_the_same_state_and_frame) {
    const std::filesystem::path file = std::filesystem::path(paths::build()) / "flow-save.json";
    oracle::Image before;
    Bytes record;
    {
        Flow flow;
        make_solid_scene(flow);
        flow.restore(flat_bytes(1, {3, 1, 2, 0, 0}, 3));
        flow.set("Monitor Layout", 3);
        flow.set("View Channels", 2);
        flow.set_point("Vectorscope/Scope Position", 12.5, 60);
        before = flow.frame();
        record = flow.record();
        flow.session.save(file);
        EXPECT_EQ(flow.record(), record) << "the saved instance goes on";
    }
    Flow flow;
    flow.session.load(file);
    std::filesystem::remove(file);
    ASSERT_EQ(flow.host().instances.size(), 1u);
    flow.effect = flow.host().instances.front().get();
    EXPECT_EQ(flow.record(), record);
    EXPECT_EQ(flow.frame().bytes8, before.bytes8);
}

TEST(Lifecycle, session_end_leaves_no_handle) {
    Flow flow;
    flow.make_scene(small_image());
    flow.frame();
    flow.session.stop();
    EXPECT_EQ(flow.host().handles.live_count(), 0u);
    EXPECT_TRUE(flow.host().instances.empty());
}

}  // namespace
}  // namespace ks::flow
