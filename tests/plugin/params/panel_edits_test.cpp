#include "params/panel_edits.h"

#include "plugin/params/panel_host.h"

namespace {

class PanelEdits : public PanelTest {
  protected:
    PF_Err edit(int index) {
        const PF_UserChangedParamExtra extra{index};
        return ks::user_changed_param(&host.in, &host.out, params.data(), &extra);
    }
    PF_Err tick(int index, bool on) {
        check(index, on);
        return edit(index);
    }
};

struct Scope {
    int show;
    int position;
};
constexpr Scope kScopes[] = {{19, 27}, {20, 38}, {21, 43}, {22, 50}, {23, 55}};

TEST_F(PanelEdits, histogram_on_and_vectorscope_off_from_the_fresh_order) {
    EXPECT_EQ(tick(23, true), 0);
    EXPECT_EQ(order(), "5 1 2 3");
    EXPECT_EQ(record().scope_count, 4);
    EXPECT_EQ(tick(20, false), 0);
    EXPECT_EQ(order(), "5 1 3");
    EXPECT_EQ(record().scope_count, 3);
    expect_nothing_left();
}

TEST_F(PanelEdits, moving_the_parade_brings_it_to_the_front) {
    EXPECT_EQ(edit(43), 0);
    EXPECT_EQ(order(), "3 1 2");
}

TEST_F(PanelEdits, every_show_box_and_position_edits_its_own_scope) {
    for (int s = 1; s <= 5; ++s) {
        const Scope &scope = kScopes[s - 1];
        give_record(1, {0, 0, 0, 0, 0}, 0);
        EXPECT_EQ(tick(scope.show, true), 0);
        EXPECT_EQ(order(), std::to_string(s));
        EXPECT_EQ(tick(scope.show, false), 0);
        EXPECT_EQ(order(), "");
        give_record(1, {1, 2, 3, 4, 5}, 5);
        EXPECT_EQ(edit(scope.position), 0);
        EXPECT_EQ(record().scope_order[0], s);
        EXPECT_EQ(record().scope_count, 5);
    }
}

TEST_F(PanelEdits, only_the_order_and_the_count_change_in_the_record) {
    give_record(1, {1, 2, 3, 0, 0}, 3);
    ks::InstanceRecord expected = record();
    EXPECT_EQ(tick(22, true), 0);
    const std::int8_t order_now[5] = {4, 1, 2, 3, 0};
    std::memcpy(expected.scope_order, order_now, sizeof order_now);
    expected.scope_count = 4;
    const ks::InstanceRecord now = record();
    EXPECT_EQ(std::memcmp(&now, &expected, sizeof now), 0);
}

TEST_F(PanelEdits, any_other_parameter_is_left_to_the_host) {
    for (int index = -2; index <= 70; ++index) {
        if (index == 65 || index == 68) continue;
        bool served = false;
        for (const Scope &scope : kScopes) served |= index == scope.show || index == scope.position;
        if (served) continue;
        EXPECT_EQ(edit(index), 0) << index;
        EXPECT_TRUE(host.calls.log.empty()) << index;
    }
    EXPECT_EQ(edit(2147483647), 0);
    EXPECT_EQ(edit(-2147483647 - 1), 0);
}

TEST_F(PanelEdits, missing_record_is_512_for_boxes_and_positions) {
    const std::vector<char> before = host.bytes(host.out.sequence_data);
    PF_Handle data = host.out.sequence_data;
    for (const Scope &scope : kScopes) {
        host.refuse_locks = true;
        EXPECT_EQ(edit(scope.show), 512);
        EXPECT_EQ(edit(scope.position), 512);
        host.refuse_locks = false;
        host.out.sequence_data = nullptr;  // in_data's is not looked at
        EXPECT_EQ(edit(scope.show), 512);
        EXPECT_EQ(edit(scope.position), 512);
        host.out.sequence_data = data;
    }
    EXPECT_EQ(host.bytes(data), before);
    expect_nothing_left();
}

TEST_F(PanelEdits, flat_data_is_no_record) {
    const char flat[8] = {0, 1, 2, 3, 0, 0, 3, 1};
    host.in.sequence_data = host.out.sequence_data = host.make_handle(flat, sizeof flat);
    EXPECT_EQ(edit(27), 512);
    EXPECT_EQ(host.bytes(host.out.sequence_data), std::vector<char>(flat, flat + 8));
    expect_nothing_left();
}

TEST_F(PanelEdits, lock_box_runs_the_script_for_its_value) {
    EXPECT_EQ(tick(65, true), 0);
    EXPECT_EQ(tick(65, false), 0);
    ASSERT_EQ(project.scripts.size(), 2u);
    EXPECT_NE(project.scripts[0].find("thisComp.width / 2"), std::string::npos);
    EXPECT_NE(project.scripts[1].find("expression = ''"), std::string::npos);
    host.calls.fails["ExecuteScript"] = 3;
    EXPECT_EQ(tick(65, true), 3);
    expect_nothing_left();
}

TEST_F(PanelEdits, reset_switched_off_does_nothing) {
    give_record(1, {5, 4, 3, 0, 0}, 3);
    host.calls.log.clear();
    EXPECT_EQ(tick(68, false), 0);
    EXPECT_EQ(order(), "5 4 3");
    EXPECT_EQ(record().state, 1);
    EXPECT_TRUE(host.calls.log.empty());
}

class PanelReset : public PanelEdits {
  protected:
    PanelReset() {
        project.effect_layer =
            &project.add(AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_ADJUSTMENT_LAYER, 640, 480);
        give_record(1, {5, 4, 1, 3, 0}, 4);
        old_ = host.out.sequence_data;
        blocks_ = host.calls.live_blocks();
    }
    PF_Handle old_ = nullptr;
    int blocks_ = 0;
};

TEST_F(PanelReset, restores_the_order_and_sizes_the_scopes_again) {
    EXPECT_EQ(tick(68, true), 0);
    EXPECT_NE(host.out.sequence_data, old_);
    EXPECT_EQ(order(), "1 2 3");
    EXPECT_EQ(record().scope_count, 3);
    EXPECT_EQ(record().state, 1) << "the refresh follows at once";
    EXPECT_EQ(def(28).u.fs_d.value, 450.0);
    EXPECT_EQ(def(68).uu.change_flags, PF_ChangeFlag_CHANGED_VALUE);
    EXPECT_EQ(host.calls.live_blocks(), blocks_) << "the old record is freed";
    EXPECT_TRUE(hidden.at(68));
    expect_nothing_left();
}

TEST_F(PanelReset, pins_an_adjustment_layer_but_does_not_look_at_the_composition) {
    EXPECT_EQ(tick(68, true), 0);
    EXPECT_EQ(project.scripts.size(), 1u);
    EXPECT_EQ(host.out.return_msg[0], '\0');
}

TEST_F(PanelReset, failing_set_up_is_the_result_and_skips_the_refresh) {
    host.calls.fails["ExecuteScript"] = 6;
    EXPECT_EQ(tick(68, true), 6);
    EXPECT_EQ(order(), "1 2 3") << "the record is valid";
    EXPECT_EQ(record().state, 0);
    EXPECT_TRUE(hidden.empty());
    EXPECT_TRUE(looks.empty());
    expect_nothing_left();
}

TEST_F(PanelReset, failing_refresh_is_the_result) {
    host.calls.fails["GetNewEffectForEffect"] = 5;
    EXPECT_EQ(tick(68, true), 5);
    EXPECT_EQ(order(), "1 2 3");
    expect_nothing_left();
}

TEST_F(PanelEdits, null_records_of_the_host_are_survived) {
    EXPECT_EQ(ks::user_changed_param(&host.in, &host.out, params.data(), nullptr), 0);
    for (int index : {19, 65, 68}) {
        const PF_UserChangedParamExtra extra{index};
        EXPECT_EQ(ks::user_changed_param(&host.in, &host.out, nullptr, &extra), 0) << index;
        params[static_cast<std::size_t>(index)] = nullptr;
        EXPECT_EQ(edit(index), 0) << index;
    }
    EXPECT_TRUE(host.calls.log.empty());
    const PF_UserChangedParamExtra extra{43};
    EXPECT_EQ(ks::user_changed_param(&host.in, &host.out, nullptr, &extra), 0);
    EXPECT_EQ(order(), "3 1 2") << "a position needs no value";
}

}  // namespace
