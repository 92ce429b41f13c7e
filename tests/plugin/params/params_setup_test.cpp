#include "params/params_setup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "model/param_table.h"
#include "support/fake_host.h"

namespace {

class ParamsSetup : public testing::Test {
  protected:
    [[nodiscard]] const PF_ParamDef &param(int index) const {
        return host.added.at(static_cast<std::size_t>(index - 1));
    }
    [[nodiscard]] std::ptrdiff_t count(const std::string &call) const {
        return std::count(host.calls.log.begin(), host.calls.log.end(), call);
    }
    fake::FakeHost host;
};

TEST_F(ParamsSetup, appends_68_parameters_and_reports_69) {
    EXPECT_EQ(ks::params_setup(&host.in, &host.out), 0);
    EXPECT_EQ(host.added.size(), 68u);
    EXPECT_EQ(count("add_param -1"), 68);
    EXPECT_EQ(host.out.num_params, 69);
    EXPECT_EQ(param(68).uu.id, 57);
    EXPECT_EQ(param(24).uu.id, 58);
}

TEST_F(ParamsSetup, registers_the_ui_last_for_comp_and_layer_windows) {
    ks::params_setup(&host.in, &host.out);
    EXPECT_EQ(host.calls.log.back(), "register_ui");
    ASSERT_EQ(host.registered.size(), 1u);
    PF_CustomUIInfo expected{};
    expected.events = 3;
    EXPECT_EQ(std::memcmp(&host.registered[0], &expected, sizeof expected), 0);
}

TEST_F(ParamsSetup, names_come_through_the_hosts_strcpy_except_for_group_ends) {
    ks::params_setup(&host.in, &host.out);
    EXPECT_EQ(std::count_if(host.calls.log.begin(), host.calls.log.end(),
                            [](const std::string &call) { return call.starts_with("strcpy "); }),
              68 - 10);
    for (const PF_ParamDef &def : host.added) {
        EXPECT_EQ(def.name[0] == '\0', def.param_type == PF_Param_GROUP_END);
    }
}

TEST_F(ParamsSetup, layout_popup_counts_its_separators) {
    ks::params_setup(&host.in, &host.out);
    EXPECT_EQ(param(2).u.pd.num_choices, 7);
    EXPECT_EQ(param(2).u.pd.value, 4);
    EXPECT_EQ(param(2).u.pd.dephault, 4);
    EXPECT_STREQ(param(2).u.pd.u.namesptr,
                 "Single|(-|Four-Way Split|Four-Way Classic|(-|Windowed|Off (Scopes Only)");
}

TEST_F(ParamsSetup, every_checkbox_has_a_label_text_even_if_empty) {
    ks::params_setup(&host.in, &host.out);
    for (const PF_ParamDef &def : host.added) {
        if (def.param_type != PF_Param_CHECKBOX) continue;
        EXPECT_NE(def.u.bd.u.nameptr, nullptr) << def.name;
    }
    EXPECT_STREQ(param(24).u.bd.u.nameptr, "Mute Active Scopes");
}

TEST_F(ParamsSetup, slider_value_is_double_and_ranges_are_single) {
    ks::params_setup(&host.in, &host.out);
    const PF_FloatSliderDef &gamma = param(7).u.fs_d;
    EXPECT_EQ(gamma.value, 1.0);
    EXPECT_EQ(gamma.dephault, 1.0f);
    EXPECT_EQ(gamma.valid_min, 0.1f);
    EXPECT_EQ(gamma.slider_min, 0.1f);
    EXPECT_EQ(gamma.valid_max, 5.0f);
    EXPECT_EQ(gamma.slider_max, 5.0f);
    EXPECT_EQ(gamma.precision, 2);
    EXPECT_EQ(gamma.display_flags, 0);
    EXPECT_EQ(param(5).u.fs_d.display_flags, PF_ValueDisplayFlag_PERCENT);
}

TEST_F(ParamsSetup, points_start_at_their_default_and_stay_in_bounds) {
    ks::params_setup(&host.in, &host.out);
    const PF_PointDef &position = param(38).u.td;
    EXPECT_EQ(position.x_dephault, 0x0000C800);
    EXPECT_EQ(position.y_dephault, 0x001C5553);
    EXPECT_EQ(position.x_value, position.x_dephault);
    EXPECT_EQ(position.y_value, position.y_dephault);
    EXPECT_NE(position.restrict_bounds, 0);
}

TEST_F(ParamsSetup, original_source_starts_as_none) {
    ks::params_setup(&host.in, &host.out);
    EXPECT_EQ(param(10).param_type, PF_Param_LAYER);
    EXPECT_EQ(param(10).u.ld.dephault, PF_LayerDefault_NONE);
    EXPECT_EQ(param(10).flags, PF_ParamFlag_SUPERVISE);
    EXPECT_EQ(param(10).ui_flags, PF_PUI_ECW_SEPARATOR);
}

TEST_F(ParamsSetup, each_failing_add_stops_the_adding_but_not_the_filling) {
    for (int n = 1; n <= 68; ++n) {
        fake::FakeHost failing;
        failing.calls.fail_at = n;
        EXPECT_EQ(ks::params_setup(&failing.in, &failing.out), 77) << n;
        EXPECT_EQ(failing.added.size(), static_cast<std::size_t>(n - 1));
        EXPECT_EQ(failing.calls.fallible, n) << "no add and no registration after the failure";
        EXPECT_EQ(std::count(failing.calls.log.begin(), failing.calls.log.end(), "strcpy RESET"),
                  1);
        EXPECT_EQ(failing.out.num_params, 69);
    }
}

TEST_F(ParamsSetup, failing_registration_is_the_result) {
    host.calls.fails["register_ui"] = 5;
    EXPECT_EQ(ks::params_setup(&host.in, &host.out), 5);
    EXPECT_EQ(host.added.size(), 68u);
    EXPECT_EQ(host.out.num_params, 69);
}

}  // namespace
