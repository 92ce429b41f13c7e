#include "params/first_refresh.h"

#include "params/panel_refresh.h"
#include "plugin/params/panel_host.h"

namespace {

class FirstRefresh : public PanelTest {
  protected:
    PF_Err refresh() { return ks::update_params_ui(&host.in, &host.out, params.data()); }

    std::vector<int> changed() const {
        std::vector<int> indices;
        for (std::size_t i = 0; i < defs.size(); ++i) {
            if (defs[i].uu.change_flags == PF_ChangeFlag_CHANGED_VALUE) {
                indices.push_back(static_cast<int>(i));
            }
        }
        return indices;
    }
    void expect_range(int index, float least, float most, double value) {
        const PF_FloatSliderDef &look = looks.at(index).u.fs_d;
        EXPECT_EQ(look.valid_min, least) << index;
        EXPECT_EQ(look.slider_min, least) << index;
        EXPECT_EQ(look.valid_max, most) << index;
        EXPECT_EQ(look.slider_max, most) << index;
        EXPECT_EQ(look.value, value) << index;
        EXPECT_EQ(looks.at(index).flags, PF_ParamFlag_COLLAPSE_TWIRLY) << index;
        EXPECT_EQ(def(index).u.fs_d.value, value) << index;
    }
};

TEST_F(FirstRefresh, sizes_four_scopes_from_the_layer_and_marks_them_and_reset) {
    EXPECT_EQ(refresh(), 0);
    for (int index : {28, 44, 51}) expect_range(index, 200.0F, 960.0F, 450.0);
    expect_range(39, 150.0F, 960.0F, 450.0);
    EXPECT_EQ(changed(), (std::vector<int>{28, 39, 44, 51, 68}));
    EXPECT_EQ(record().state, 1);
    expect_nothing_left();
}

TEST_F(FirstRefresh, small_anamorphic_layer) {
    host.in.width = 720;
    host.in.pixel_aspect_ratio = {64, 45};
    EXPECT_EQ(refresh(), 0);
    const double size = static_cast<double>(64.0F / 45.0F * 720.0F * 0.234375F);
    for (int index : {28, 44, 51}) expect_range(index, 144.0F, 360.0F, size);
    expect_range(39, 108.0F, 360.0F, size);
}

TEST_F(FirstRefresh, histogram_height_is_not_touched) {
    const PF_ParamDef before = def(56);
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(std::memcmp(&before, &def(56), sizeof before), 0);
    EXPECT_EQ(looks.count(56), 0u);
}

TEST_F(FirstRefresh, definitions_change_in_value_and_change_flag_alone) {
    const std::array<PF_ParamDef, 69> before = defs;
    EXPECT_EQ(refresh(), 0);
    for (int index : changed()) {
        def(index).uu.change_flags = 0;
        if (index != 68) def(index).u.fs_d.value = 200.0;
    }
    EXPECT_EQ(std::memcmp(before.data(), defs.data(), sizeof before), 0);
}

TEST_F(FirstRefresh, comes_last_and_in_this_order) {
    EXPECT_EQ(refresh(), 0);
    const Log calls = host.calls.telling();
    EXPECT_EQ(Log(std::find(calls.begin(), calls.end(), "DisposeEffect"), calls.end()),
              (Log{"DisposeEffect", "update 28", "update 39", "update 44", "update 51"}));
}

TEST_F(FirstRefresh, record_is_locked_for_this_use_only) {
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(host.calls.count("lock"), 1);
    EXPECT_EQ(host.calls.count("unlock"), 1);
    EXPECT_GT(host.calls.first("lock"), host.calls.first("DisposeEffect"));
    EXPECT_EQ(host.calls.open_locks(), 0);
}

TEST_F(FirstRefresh, happens_once) {
    EXPECT_EQ(refresh(), 0);
    for (PF_ParamDef &each : defs) each.uu.change_flags = 0;
    def(28).u.fs_d.value = 321.0;
    looks.clear();
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(def(28).u.fs_d.value, 321.0);
    EXPECT_EQ(changed(), std::vector<int>{});
    EXPECT_EQ(looks.count(28), 0u);
}

TEST_F(FirstRefresh, reloaded_instance_keeps_its_sizes) {
    for (int state : {1, 2, 255}) {
        give_record(static_cast<std::uint8_t>(state), {1, 2, 3, 0, 0}, 3);
        EXPECT_EQ(refresh(), 0);
        EXPECT_EQ(changed(), std::vector<int>{});
        EXPECT_EQ(record().state, state);
    }
}

TEST_F(FirstRefresh, nothing_but_the_state_changes_in_the_record) {
    ks::InstanceRecord expected = record();
    expected.state = 1;
    EXPECT_EQ(refresh(), 0);
    const ks::InstanceRecord now = record();
    EXPECT_EQ(std::memcmp(&now, &expected, sizeof now), 0);
}

TEST_F(FirstRefresh, missing_record_is_survived) {
    host.in.sequence_data = host.out.sequence_data = nullptr;
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(looks.size(), 10u) << "the rest of the panel is refreshed";
    EXPECT_EQ(changed(), std::vector<int>{});
    expect_nothing_left();
}

TEST_F(FirstRefresh, record_that_cannot_be_locked_is_survived) {
    host.refuse_locks = true;
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(changed(), std::vector<int>{});
    EXPECT_EQ(record().state, 0);
}

TEST_F(FirstRefresh, flat_data_is_read_and_written_within_its_8_bytes) {
    const char flat[8] = {0, 1, 2, 3, 0, 0, 3, 1};
    host.in.sequence_data = host.out.sequence_data = host.make_handle(flat, sizeof flat);
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(host.bytes(host.out.sequence_data), (std::vector<char>{1, 1, 2, 3, 0, 0, 3, 1}));
}

TEST_F(FirstRefresh, the_output_record_s_data_counts) {
    host.in.sequence_data = nullptr;  // as a reset leaves it
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(record().state, 1);
}

TEST_F(FirstRefresh, failing_host_is_asked_again_at_the_next_refresh) {
    host.calls.fails["update 44"] = 8;
    EXPECT_EQ(refresh(), 8);
    EXPECT_EQ(changed(), (std::vector<int>{28, 39, 68}));
    EXPECT_EQ(def(44).u.fs_d.value, 200.0);
    EXPECT_EQ(record().state, 0);
    host.calls.fails.clear();
    EXPECT_EQ(refresh(), 0);
    EXPECT_EQ(changed(), (std::vector<int>{28, 39, 44, 51, 68}));
    EXPECT_EQ(record().state, 1);
    expect_nothing_left();
}

TEST_F(FirstRefresh, does_not_happen_after_an_error) {
    host.calls.fails["update 37"] = 8;
    EXPECT_EQ(refresh(), 8);
    EXPECT_EQ(changed(), std::vector<int>{});
    EXPECT_EQ(record().state, 0);
}

}  // namespace
