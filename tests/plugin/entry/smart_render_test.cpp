#include "plugin/entry/entry_fixture.h"

namespace {

class SmartRender : public EntryTest {
  protected:
    SmartRender() { give_sequence_data(); }
    PF_Err render() { return send(PF_Cmd_SMART_RENDER, &render_extra); }
};

TEST_F(SmartRender, whole_order_of_host_calls) {
    EXPECT_EQ(render(), 0);
    EXPECT_EQ(host.calls.log,
              (Log{"checkout_layer_pixels 0", "checkout_output", "checkout_layer_pixels 10",
                   "abort", "render", "checkin_layer_pixels 10", "checkin_layer_pixels 0"}));
    EXPECT_EQ(render_double().input, &input_world);
    EXPECT_EQ(render_double().original, &original_world);
    EXPECT_EQ(render_double().output, &output_world);
}

TEST_F(SmartRender, without_sequence_data_shows_the_message_and_returns_512) {
    host.out.sequence_data = nullptr;
    EXPECT_EQ(render(), 512);
    EXPECT_STREQ(host.out.return_msg, "Error: Sequence data has not been initialised");
    EXPECT_EQ(host.out.out_flags, PF_OutFlag_DISPLAY_ERROR_MESSAGE);
    EXPECT_EQ(host.calls.log, Log{"strcpy Error: Sequence data has not been initialised"});
}

TEST_F(SmartRender, looks_at_the_output_records_handle_not_the_input_records) {
    host.in.sequence_data = nullptr;
    EXPECT_EQ(render(), 0);
    EXPECT_STREQ(host.out.return_msg, "");
}

TEST_F(SmartRender, output_of_74_rows_is_a_copy_of_the_input) {
    for (A_long height : {74, 1, 0, -1}) {
        host.next_command();
        host.out.sequence_data = host.in.sequence_data;
        output_world.height = height;
        EXPECT_EQ(render(), 0);
        EXPECT_EQ(host.calls.log, (Log{"checkout_layer_pixels 0", "checkout_output", "copy whole",
                                       "checkin_layer_pixels 0"}));
    }
}

TEST_F(SmartRender, output_of_75_rows_is_rendered) {
    output_world.height = 75;
    EXPECT_EQ(render(), 0);
    EXPECT_EQ(render_double().output, &output_world);
}

TEST_F(SmartRender, failing_input_is_returned_at_once) {
    host.calls.fails["checkout_layer_pixels 0"] = 9;
    EXPECT_EQ(render(), 9);
    EXPECT_EQ(host.calls.log, Log{"checkout_layer_pixels 0"});
}

TEST_F(SmartRender, failing_output_is_returned_at_once_with_the_input_left_to_the_host) {
    host.calls.fails["checkout_output"] = 9;
    EXPECT_EQ(render(), 9);
    EXPECT_EQ(host.calls.log, (Log{"checkout_layer_pixels 0", "checkout_output"}));
}

TEST_F(SmartRender, failing_copy_is_kept_and_the_input_checked_in) {
    output_world.height = 74;
    host.calls.fails["copy whole"] = 9;
    host.calls.fails["checkin_layer_pixels 0"] = 8;
    EXPECT_EQ(render(), 9);
    EXPECT_EQ(host.calls.log.back(), "checkin_layer_pixels 0");
}

TEST_F(SmartRender, failing_original_skips_the_render_and_is_checked_in_all_the_same) {
    host.calls.fails["checkout_layer_pixels 10"] = 9;
    EXPECT_EQ(render(), 9);
    EXPECT_EQ(host.calls.log,
              (Log{"checkout_layer_pixels 0", "checkout_output", "checkout_layer_pixels 10",
                   "checkin_layer_pixels 10", "checkin_layer_pixels 0"}));
}

TEST_F(SmartRender, cancelled_by_the_user_skips_the_render) {
    host.calls.fails["abort"] = PF_Interrupt_CANCEL;
    EXPECT_EQ(render(), PF_Interrupt_CANCEL);
    EXPECT_EQ(host.calls.log,
              (Log{"checkout_layer_pixels 0", "checkout_output", "checkout_layer_pixels 10",
                   "abort", "checkin_layer_pixels 10", "checkin_layer_pixels 0"}));
}

TEST_F(SmartRender, first_error_wins_over_those_of_the_check_ins) {
    host.calls.fails["render"] = 9;
    host.calls.fails["checkin_layer_pixels 10"] = 8;
    host.calls.fails["checkin_layer_pixels 0"] = 7;
    EXPECT_EQ(render(), 9);
    host.calls.fails.erase("render");
    EXPECT_EQ(render(), 8);
    host.calls.fails.erase("checkin_layer_pixels 10");
    EXPECT_EQ(render(), 7);
}

TEST_F(SmartRender, each_host_call_failing_in_turn_is_the_result) {
    for (int n = 1; n <= 7; ++n) {
        host.next_command();
        host.out.sequence_data = host.in.sequence_data;
        host.calls.fail_at = n;
        EXPECT_EQ(render(), 77) << n;
        // From the output on, the input is checked in whatever fails.
        EXPECT_EQ(host.calls.log.back() == "checkin_layer_pixels 0", n > 2) << n;
    }
    host.next_command();
    host.out.sequence_data = host.in.sequence_data;
    host.calls.fail_at = 0;
    EXPECT_EQ(render(), 0) << "the next frame renders";
}

TEST_F(SmartRender, no_original_is_normal) {
    original = nullptr;
    EXPECT_EQ(render(), 0);
    EXPECT_EQ(render_double().original, nullptr);
    EXPECT_EQ(render_double().input, &input_world);
}

TEST_F(SmartRender, null_input_leaves_a_transparent_output) {
    input = nullptr;
    EXPECT_EQ(render(), 0);
    EXPECT_EQ(host.calls.log, (Log{"checkout_layer_pixels 0", "checkout_output", "clear",
                                   "checkin_layer_pixels 0"}));
}

TEST_F(SmartRender, null_output_has_nothing_to_draw_into) {
    for (PF_EffectWorld *any_input : {&input_world, static_cast<PF_EffectWorld *>(nullptr)}) {
        host.next_command();
        host.out.sequence_data = host.in.sequence_data;
        input = any_input;
        output = nullptr;
        EXPECT_EQ(render(), 0);
        EXPECT_EQ(host.calls.log,
                  (Log{"checkout_layer_pixels 0", "checkout_output", "checkin_layer_pixels 0"}));
    }
}

}  // namespace
