// Which events are taken in which window, what they leave in the record, and whole drags.
#include <gtest/gtest.h>

#include "plugin/ui/event_host.h"
#include "ui/events.h"

namespace {

class Events : public testing::Test {
  protected:
    PF_Err send() {
        return ks::handle_event(&fake.host.in, &fake.host.out, fake.params.data(), &fake.extra);
    }
    PF_Err send(PF_EventType type, A_long x, A_long y, bool last = false) {
        fake.pointer_event(type, x, y).u.do_click.last_time = last ? 1 : 0;
        return send();
    }
    PF_Err send_cursor(A_long x, A_long y) {
        fake.event(PF_Event_ADJUST_CURSOR).u.adjust_cursor.screen_point.h = x;
        fake.extra.u.adjust_cursor.screen_point.v = y;
        fake.extra.u.adjust_cursor.set_cursor = 9;
        return send();
    }
    [[nodiscard]] bool handled() const { return fake.extra.evt_out_flags == 1; }
    [[nodiscard]] const PF_DoClickEventInfo &record() const { return fake.extra.u.do_click; }
    [[nodiscard]] double number(std::size_t i) const { return fake.definitions[i].u.fs_d.value; }
    [[nodiscard]] double x_of(std::size_t i) const {
        return fake.definitions[i].u.td.x_value / 65536.0;
    }
    [[nodiscard]] double y_of(std::size_t i) const {
        return fake.definitions[i].u.td.y_value / 65536.0;
    }
    void expect_clean() {
        EXPECT_TRUE(fake.host.calls.misuse.empty());
        EXPECT_TRUE(fake.live_paths.empty());
    }

    fake::EventHost fake;
};

TEST_F(Events, other_events_and_windows_leave_everything_untouched) {
    for (PF_WindowType window : {-1, 0, 1, 2, 3}) {
        for (PF_EventType type = -1; type <= 12; ++type) {
            const bool ours =
                (window == 0 || window == 1) && (type == 2 || type == 3 || type == 4 || type == 9);
            if (ours) continue;
            fake.context_data.w_type = window;
            fake.event(type);
            std::memset(&fake.extra.u, 0x5A, sizeof fake.extra.u);
            fake.extra.u.do_click.send_drag = 0;
            std::array<unsigned char, sizeof(PF_EventExtra)> before{};
            std::memcpy(before.data(), &fake.extra, sizeof fake.extra);
            EXPECT_EQ(send(), 0);
            EXPECT_EQ(std::memcmp(before.data(), &fake.extra, sizeof fake.extra), 0)
                << "event " << type << " in window " << window;
        }
    }
    EXPECT_TRUE(fake.host.calls.log.empty());
    EXPECT_TRUE(fake.changed().empty());
}

TEST_F(Events, ignored_events_need_no_suites) {
    fake.host.in.pica_basicP = nullptr;
    fake.event(PF_Event_IDLE);
    EXPECT_EQ(send(), 0);
    fake.context_data.w_type = PF_Window_EFFECT;
    fake.event(PF_Event_DRAW);
    EXPECT_EQ(send(), 0);
}

TEST_F(Events, missing_record_context_or_parameters_is_survived) {
    EXPECT_EQ(ks::handle_event(&fake.host.in, &fake.host.out, fake.params.data(), nullptr), 0);
    fake.event(PF_Event_DRAW);
    EXPECT_EQ(ks::handle_event(&fake.host.in, &fake.host.out, nullptr, &fake.extra), 0);
    fake.extra.contextH = nullptr;
    EXPECT_EQ(send(), 0);
    fake.context = nullptr;
    fake.extra.contextH = &fake.context;
    EXPECT_EQ(send(), 0);
    EXPECT_TRUE(fake.host.calls.log.empty());
}

TEST_F(Events, click_on_a_handle_is_handled_and_asks_for_drags) {
    for (PF_WindowType window : {PF_Window_COMP, PF_Window_LAYER}) {
        fake.context_data.w_type = window;
        fake.fresh_record();
        EXPECT_EQ(send(PF_Event_DO_CLICK, 1260, 740), 0);
        EXPECT_TRUE(handled());
        EXPECT_EQ(record().send_drag, 1);
        EXPECT_EQ(record().continue_refcon[0], 0);
        EXPECT_EQ(record().continue_refcon[1], 1260 * 65536);
        EXPECT_EQ(record().continue_refcon[2], 740 * 65536);
    }
    EXPECT_TRUE(fake.suites_balanced(0));
    EXPECT_TRUE(fake.changed().empty()) << "a click alone changes no value";
}

TEST_F(Events, click_beside_the_handles_is_left_to_the_host) {
    fake.extra.u.do_click.continue_refcon[0] = -1;
    EXPECT_EQ(send(PF_Event_DO_CLICK, 5, 1000), 0);
    EXPECT_FALSE(handled());
    EXPECT_EQ(record().send_drag, 0);
    EXPECT_EQ(record().continue_refcon[0], -1);
}

TEST_F(Events, composition_window_converts_through_the_composition_at_the_current_time) {
    fake.window.layer_x = 100;
    fake.window.layer_y = 50;
    send(PF_Event_DO_CLICK, 1360, 790);
    EXPECT_TRUE(handled());
    EXPECT_TRUE(fake.logged("layer_to_comp at -7/2400"));
    send(PF_Event_DRAG, 1360, 790);
    EXPECT_TRUE(fake.logged("comp_to_layer at -7/2400"));
    EXPECT_NEAR(number(5), 50, 1e-9);
}

TEST_F(Events, layer_window_does_not_pass_through_the_composition) {
    fake.window.layer_x = 100;
    fake.context_data.w_type = PF_Window_LAYER;
    send(PF_Event_DO_CLICK, 1260, 740);
    EXPECT_TRUE(handled());
    send(PF_Event_DRAG, 1260, 740);
    EXPECT_NEAR(number(5), 50, 1e-9);
    EXPECT_FALSE(fake.logged("layer_to_comp"));
    EXPECT_FALSE(fake.logged("comp_to_layer"));
}

TEST_F(Events, distances_are_taken_with_the_hosts_fabs) {
    send(PF_Event_DO_CLICK, 1260, 740);
    EXPECT_TRUE(fake.logged("fabs"));
    fake.host.calls.log.clear();
    send_cursor(1260, 740);
    EXPECT_TRUE(fake.logged("fabs"));
}

TEST_F(Events, click_with_send_drag_set_is_a_drag) {
    fake.extra.u.do_click.send_drag = 1;
    fake.extra.u.do_click.continue_refcon[0] = 5;
    EXPECT_EQ(send(PF_Event_DO_CLICK, 700, 0), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(number(39), 300.0);
    EXPECT_EQ(fake.changed(), (std::set<int>{39}));
}

TEST_F(Events, every_drag_is_handled_even_when_none_is_in_progress) {
    fake.extra.u.do_click.continue_refcon[0] = -1;
    fake.extra.u.do_click.continue_refcon[1] = 7;
    EXPECT_EQ(send(PF_Event_DRAG, 700, 0), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(record().continue_refcon[0], -1);
    EXPECT_EQ(record().continue_refcon[1], 7);
    EXPECT_EQ(record().send_drag, 0);
    EXPECT_TRUE(fake.changed().empty());
}

TEST_F(Events, corner_from_click_to_release) {
    send(PF_Event_DO_CLICK, 583, 698);
    EXPECT_EQ(record().continue_refcon[0], 5);
    send(PF_Event_DRAG, 650, 760);
    EXPECT_EQ(number(39), 250.0);
    EXPECT_EQ(record().continue_refcon[0], 5);
    EXPECT_EQ(record().continue_refcon[1], 650 * 65536);
    EXPECT_EQ(record().continue_refcon[2], 760 * 65536);
    EXPECT_EQ(record().send_drag, 1);
    send(PF_Event_DRAG, 700, 765, true);
    EXPECT_EQ(number(39), 300.0);
    EXPECT_EQ(record().continue_refcon[0], -1);
    EXPECT_EQ(record().send_drag, 0);
    EXPECT_EQ(fake.changed(), (std::set<int>{39}));
}

TEST_F(Events, monitor_bar_keeps_the_grab_offset_and_ends_with_the_last_event) {
    send(PF_Event_DO_CLICK, 310, 205);
    EXPECT_EQ(record().continue_refcon[0], 1);
    send(PF_Event_DRAG, 410, 105);
    EXPECT_EQ(x_of(4), 400);
    EXPECT_EQ(y_of(4), 100);
    EXPECT_EQ(record().continue_refcon[1], 10 * 65536);
    EXPECT_EQ(record().continue_refcon[2], 5 * 65536);
    send(PF_Event_DRAG, 411, 104, true);
    EXPECT_EQ(x_of(4), 401);
    EXPECT_EQ(record().continue_refcon[0], -1);
    EXPECT_EQ(record().send_drag, 0);
}

TEST_F(Events, scope_bar_leaves_the_record_as_the_click_set_it_even_at_the_end) {
    send(PF_Event_DO_CLICK, 25, 20);
    EXPECT_EQ(record().continue_refcon[0], 4);
    for (bool last : {false, true}) {
        send(PF_Event_DRAG, 125, 120, last);
        EXPECT_TRUE(handled());
        EXPECT_EQ(x_of(27), 115);
        EXPECT_EQ(y_of(27), 114);
        EXPECT_EQ(record().continue_refcon[0], 4);
        EXPECT_EQ(record().continue_refcon[1], 10 * 65536);
        EXPECT_EQ(record().continue_refcon[2], 6 * 65536);
        EXPECT_EQ(record().send_drag, 1);
    }
    EXPECT_EQ(fake.changed(), (std::set<int>{27}));
}

TEST_F(Events, wipe_writes_both_its_parameters) {
    expected::Scene scene;
    scene.layout = 1;
    scene.scopes = {};
    fake.show(scene);
    send(PF_Event_DO_CLICK, 576, 713);
    EXPECT_EQ(record().continue_refcon[0], 2);
    send(PF_Event_DRAG, 960, 1080, true);
    EXPECT_EQ(number(11), 50.0);
    EXPECT_EQ(number(12), -25.0);
    EXPECT_EQ(fake.changed(), (std::set<int>{11, 12}));
    EXPECT_EQ(record().continue_refcon[0], -1);
}

TEST_F(Events, change_flag_joins_the_flags_that_are_there) {
    fake.definitions[39].uu.change_flags = 4;
    fake.extra.u.do_click.continue_refcon[0] = 5;
    send(PF_Event_DRAG, 700, 0);
    EXPECT_EQ(fake.definitions[39].uu.change_flags, 5);
}

TEST_F(Events, refused_conversion_of_the_pointer_writes_nothing_and_still_ends_the_drag) {
    for (const char *call : {"frame_to_source", "comp_to_layer at -7/2400"}) {
        fake.host.calls.fails = {{call, 9}};
        fake.extra.u.do_click.continue_refcon[0] = 5;
        fake.extra.u.do_click.continue_refcon[1] = 7;
        EXPECT_EQ(send(PF_Event_DRAG, 700, 0, true), 0);
        EXPECT_TRUE(handled());
        EXPECT_TRUE(fake.changed().empty());
        EXPECT_EQ(record().continue_refcon[0], -1);
        EXPECT_EQ(record().continue_refcon[1], 7);
    }
}

TEST_F(Events, refused_conversion_of_a_handle_passes_it_over) {
    fake.host.calls.fails = {{"source_to_frame", 9}};
    EXPECT_EQ(send(PF_Event_DO_CLICK, 1260, 740), 0);
    EXPECT_FALSE(handled());
    send_cursor(1260, 740);
    EXPECT_EQ(fake.extra.u.adjust_cursor.set_cursor, 0);
}

TEST_F(Events, cursor_numbers) {
    const int at[][3] = {{1260, 740, 22}, {400, 205, 75},  {235, 156, 22},  {100, 20, 75},
                         {580, 698, 22},  {450, 505, 75},  {1200, 227, 22}, {1000, 45, 75},
                         {1540, 453, 22}, {1400, 305, 75}, {1100, 822, 21}, {1200, 705, 75},
                         {5, 1000, 0}};
    expected::Scene scene;
    scene.aspect = 2;  // 16:9: the waveform corners at width * 0.5625 + 18
    fake.show(scene);
    for (const auto &each : at) {
        EXPECT_EQ(send_cursor(each[0], each[1]), 0);
        EXPECT_EQ(fake.extra.u.adjust_cursor.set_cursor, each[2]) << each[0] << ", " << each[1];
        EXPECT_EQ(fake.extra.evt_out_flags, 0) << "never marked handled";
    }
    EXPECT_TRUE(fake.suites_balanced(0));
}

TEST_F(Events, cursor_changes_two_pixels_below_where_the_click_ends) {
    send_cursor(100, 14 + 19);
    EXPECT_EQ(fake.extra.u.adjust_cursor.set_cursor, 75);
    fake.fresh_record();
    send(PF_Event_DO_CLICK, 100, 14 + 19);
    EXPECT_FALSE(handled());
}

TEST_F(Events, refused_ansi_suite_is_516_for_click_and_cursor_and_no_matter_to_a_drag) {
    fake.host.refused = {kPFANSISuite};
    const auto thrown = [&]() -> PF_Err {
        try {
            return send();
        } catch (PF_Err error) {
            return error;
        }
    };
    fake.pointer_event(PF_Event_DO_CLICK, 1260, 740);
    EXPECT_EQ(thrown(), 516);
    EXPECT_EQ(record().send_drag, 0);
    fake.event(PF_Event_ADJUST_CURSOR);
    EXPECT_EQ(thrown(), 516);
    fake.extra.u.do_click = {};
    fake.extra.u.do_click.continue_refcon[0] = 5;
    fake.pointer_event(PF_Event_DRAG, 700, 0);
    EXPECT_EQ(thrown(), 0);
    EXPECT_TRUE(fake.suites_balanced(0));
}

TEST_F(Events, every_call_of_click_drag_and_cursor_failing_in_turn_is_survived) {
    const auto run = [&](int n) {
        fake.host.calls.fail_at = n;
        fake.host.calls.fallible = 0;
        for (PF_EventType type : {PF_Event_DO_CLICK, PF_Event_DRAG, PF_Event_ADJUST_CURSOR}) {
            fake.pointer_event(type, 1100, 822);
            if (type == PF_Event_ADJUST_CURSOR)
                fake.extra.u.adjust_cursor = {{{1100}, {822}}, 0, 9};
            fake.host.calls.failed.clear();
            try {
                EXPECT_EQ(send(), 0);
            } catch (PF_Err error) {
                EXPECT_EQ(error, 516);
                EXPECT_EQ(fake.host.calls.failed, "acquire PF ANSI Suite 1");
            }
        }
        return fake.host.calls.fallible;
    };
    const int calls = run(0);
    ASSERT_GT(calls, 20);
    for (int n = 1; n <= calls; ++n) {
        fake.fresh_record();
        run(n);
    }
    EXPECT_TRUE(fake.suites_balanced(0));
    expect_clean();
}

TEST_F(Events, drag_to_where_the_handle_is_keeps_the_value_through_every_view) {
    const int points[][4] = {{0, 1260, 740, 5}, {5, 580, 698, 39}, {11, 1100, 822, 56}};
    for (const auto &each : points) {
        for (int zoom : {1, 4}) {
            for (PF_WindowType in : {PF_Window_COMP, PF_Window_LAYER}) {
                fake.context_data.w_type = in;
                fake.window.zoom_num = zoom;
                fake.window.pan_x = -50;
                fake.window.layer_x = 8;
                const int shift = in == PF_Window_COMP ? 8 : 0;
                const double before = number(static_cast<std::size_t>(each[3]));
                const A_long x = (each[1] + shift) * zoom - 50;
                fake.fresh_record();
                send(PF_Event_DO_CLICK, x, each[2] * zoom);
                ASSERT_EQ(record().continue_refcon[0], each[0]);
                send(PF_Event_DRAG, x, each[2] * zoom, true);
                EXPECT_NEAR(number(static_cast<std::size_t>(each[3])), before, 1e-9);
            }
        }
    }
    expect_clean();
}

}  // namespace
