#include "params/panel_refresh.h"

#include "plugin/params/panel_host.h"

namespace {

class PanelRefresh : public PanelTest {
  protected:
    PanelRefresh() { give_record(1, {1, 2, 3, 0, 0}, 3); }  // sized before

    PF_Err refresh() { return ks::update_params_ui(&host.in, &host.out, params.data()); }

    /// UI flags last handed to the host for `index`; -1 when it was not updated.
    int ui_flags(int index) {
        const auto look = looks.find(index);
        return look == looks.end() ? -1 : static_cast<int>(look->second.ui_flags);
    }
};

struct Group {
    int show;
    int first;
    int last;
    int position;
};
constexpr Group kGroups[] = {
    {19, 25, 29, 27}, {20, 31, 40, 38}, {21, 42, 45, 43}, {22, 47, 51, 50}, {23, 53, 56, 55}};

/// Every parameter that a refresh shows or hides.
std::vector<int> shown_or_hidden() {
    std::vector<int> order;
    for (const Group &group : kGroups) {
        for (int index = group.first; index <= group.last; ++index) order.push_back(index);
    }
    order.push_back(68);
    return order;
}

TEST_F(PanelRefresh, groups_are_hidden_with_their_headings_while_their_scope_is_not_shown) {
    for (unsigned shown = 0; shown < 32; ++shown) {
        std::map<PF_ParamIndex, bool> expected{{68, true}};
        for (unsigned i = 0; i < 5; ++i) {
            const bool on = (shown >> i & 1U) != 0;
            check(kGroups[i].show, on);
            for (int index = kGroups[i].first; index <= kGroups[i].last; ++index) {
                expected[index] = !on;
            }
        }
        hidden.clear();
        EXPECT_EQ(refresh(), 0);
        EXPECT_EQ(hidden, expected) << shown;
    }
    expect_nothing_left();
}

TEST_F(PanelRefresh, panel_changes_in_this_order) {
    EXPECT_EQ(refresh(), 0);
    Log expected;
    for (int index : shown_or_hidden()) {
        const bool hides = index >= 47;  // slice waveform and histogram are off by default
        expected.push_back((hides ? "hide " : "show ") + std::to_string(index));
    }
    for (const char *call :
         {"update 4", "update 5", "check out 10", "check in", "update 11", "update 12", "update 27",
          "update 38", "update 43", "update 50", "update 55", "update 37"}) {
        expected.push_back(call);
    }
    Log changes = host.calls.telling();
    std::erase_if(changes, [](const std::string &call) {
        return call.find("stream ") != std::string::npos || call.find("Effect") != call.npos;
    });
    EXPECT_EQ(changes, expected);
}

TEST_F(PanelRefresh, every_reference_is_used_while_held_and_given_back_once) {
    EXPECT_EQ(refresh(), 0);
    const auto &calls = host.calls;
    EXPECT_EQ(calls.count("GetNewEffectForEffect"), 1);
    EXPECT_EQ(calls.count("DisposeEffect"), 1);
    for (int index : shown_or_hidden()) {
        const std::string number = std::to_string(index);
        const std::size_t use =
            std::min(calls.first("hide " + number), calls.first("show " + number));
        EXPECT_EQ(calls.count("stream " + number), 1) << index;
        EXPECT_EQ(calls.count("dispose stream " + number), 1) << index;
        EXPECT_LT(calls.first("GetNewEffectForEffect"), calls.first("stream " + number)) << index;
        EXPECT_LT(calls.first("stream " + number), use) << index;
        EXPECT_LT(use, calls.first("dispose stream " + number)) << index;
        EXPECT_LT(calls.first("dispose stream " + number), calls.first("DisposeEffect")) << index;
    }
    EXPECT_EQ(calls.count("lock"), 1);
    EXPECT_EQ(calls.count("unlock"), 1);
    expect_nothing_left();
}

TEST_F(PanelRefresh, monitor_position_and_size_are_for_the_windowed_layout) {
    for (int layout = 1; layout <= 7; ++layout) {
        def(2).u.pd.value = layout;
        EXPECT_EQ(refresh(), 0);
        EXPECT_EQ(ui_flags(4), layout == 6 ? 0 : 32) << layout;
        EXPECT_EQ(ui_flags(5), layout == 6 ? 0 : 32) << layout;
    }
}

TEST_F(PanelRefresh, comparison_needs_an_original_and_a_monitor) {
    for (int layout = 1; layout <= 7; ++layout) {
        for (bool chosen : {false, true}) {
            def(2).u.pd.value = layout;
            has_original = chosen;
            EXPECT_EQ(refresh(), 0);
            const int expected = chosen && layout != 7 ? 0 : 32;
            EXPECT_EQ(ui_flags(11), expected) << layout << chosen;
            EXPECT_EQ(ui_flags(12), expected) << layout << chosen;
        }
    }
    expect_nothing_left();
}

TEST_F(PanelRefresh, scope_positions_are_for_scopes_that_are_shown) {
    for (const Group &group : kGroups) {
        for (bool on : {true, false}) {
            check(group.show, on);
            EXPECT_EQ(refresh(), 0);
            EXPECT_EQ(ui_flags(group.position), on ? 0 : 32) << group.position;
        }
    }
}

TEST_F(PanelRefresh, reference_colour_is_for_the_reference_line) {
    for (bool on : {true, false}) {
        check(36, on);
        EXPECT_EQ(refresh(), 0);
        EXPECT_EQ(ui_flags(37), on ? 0 : 32);
    }
}

TEST_F(PanelRefresh, all_ui_flags_are_replaced_by_exactly_0_or_32) {
    has_original = true;
    for (PF_ParamDef &each : defs) each.ui_flags = 0x7FFFFFFF;
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(ui_flags(4), 32);
    EXPECT_EQ(ui_flags(11), 0);
    EXPECT_EQ(ui_flags(27), 0);
    EXPECT_EQ(ui_flags(55), 32);
}

TEST_F(PanelRefresh, copies_are_handed_over_and_the_definitions_stay_as_they_are) {
    const std::array<PF_ParamDef, 69> before = defs;
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(std::memcmp(before.data(), defs.data(), sizeof before), 0);
    EXPECT_EQ(looks.size(), 10u);
    EXPECT_EQ(looks.count(10), 0u) << "the separator of \"Original Source\" is left alone";
    for (auto &[index, look] : looks) {
        look.ui_flags = def(index).ui_flags;
        EXPECT_EQ(std::memcmp(&look, &def(index), sizeof look), 0) << index;
    }
    expect_nothing_left();
}

TEST_F(PanelRefresh, first_error_is_kept_and_ends_the_refresh) {
    host.calls.fails = {{"hide 49", 5}, {"dispose stream 25", 9}, {"DisposeEffect", 11}};
    EXPECT_EQ(refresh(), 5);
    EXPECT_TRUE(looks.empty());
    EXPECT_EQ(host.calls.log.size() - 1, [&] {
        std::size_t last = 0;
        for (std::size_t i = 0; i < host.calls.log.size(); ++i) {
            if (host.calls.log[i].rfind("release ", 0) == 0) last = i;
        }
        return last;
    }());
    expect_nothing_left();
}

TEST_F(PanelRefresh, failing_disposal_is_reported_when_nothing_failed_before) {
    host.calls.fails = {{"dispose stream 31", 9}, {"DisposeEffect", 11}};
    EXPECT_EQ(refresh(), 9);
    expect_nothing_left();
}

TEST_F(PanelRefresh, failing_check_out_is_not_checked_in) {
    host.calls.fails["check out 10"] = 6;
    EXPECT_EQ(refresh(), 6);
    EXPECT_EQ(ui_flags(11), -1);
    expect_nothing_left();
}

TEST_F(PanelRefresh, host_without_a_reference_to_the_effect_gets_the_rest) {
    gives_effect = false;
    EXPECT_EQ(refresh(), 0);
    EXPECT_TRUE(hidden.empty());
    EXPECT_EQ(looks.size(), 10u);
    expect_nothing_left();
}

TEST_F(PanelRefresh, null_or_short_parameter_arrays_do_nothing) {
    EXPECT_EQ(ks::update_params_ui(&host.in, &host.out, nullptr), 0);
    params[68] = nullptr;
    EXPECT_EQ(refresh(), 0);
    params[1] = nullptr;
    EXPECT_EQ(refresh(), 0);
    EXPECT_TRUE(host.calls.log.empty());
}

TEST_F(PanelRefresh, missing_basic_suite_throws_516) {
    host.in.pica_basicP = nullptr;
    try {
        refresh();
        FAIL();
    } catch (PF_Err error) {
        EXPECT_EQ(error, 516);
    }
}

}  // namespace
