#include "instance/sequence.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "model/record.h"
#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

using Log = std::vector<std::string>;

class Sequence : public testing::Test {
  protected:
    Sequence() { project.effect_layer = &project.add(AEGP_LayerFlag_VIDEO_ACTIVE, 1920, 1080); }
    void apply() {
        ASSERT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
        host.next_command();
    }
    ks::InstanceRecord record(PF_Handle handle) {
        ks::InstanceRecord copy;
        EXPECT_EQ(host.bytes(handle).size(), sizeof copy);
        std::memcpy(&copy, host.bytes(handle).data(), sizeof copy);
        return copy;
    }
    void expect_clean() {
        EXPECT_EQ(host.calls.misuse, Log{});
        EXPECT_EQ(host.calls.open_locks(), 0);
        EXPECT_EQ(host.suites_held(), 0);
    }
    PF_Handle flat_handle(const std::vector<char> &bytes) {
        return host.make_handle(bytes.data(), bytes.size());
    }

    fake::FakeHost host;
    fake::FakeProject project{host};
};

TEST_F(Sequence, setup_stores_the_record_of_a_new_instance) {
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
    ks::InstanceRecord expected;
    std::memset(&expected, 0, sizeof expected);
    ks::init_new_instance(expected);
    const ks::InstanceRecord stored = record(host.out.sequence_data);
    EXPECT_EQ(std::memcmp(&stored, &expected, sizeof expected), 0);
    expect_clean();
}

TEST_F(Sequence, setup_frees_the_old_record_first) {
    apply();
    const PF_Handle old = host.in.sequence_data;
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
    EXPECT_LT(host.calls.first("dispose"), host.calls.first("new_handle 3100"));
    EXPECT_EQ(host.calls.count("new_handle 3100"), 1);
    EXPECT_NE(host.out.sequence_data, old);
    EXPECT_EQ(host.in.sequence_data, nullptr);
    EXPECT_EQ(host.calls.live_blocks(), 1);
    expect_clean();
}

TEST_F(Sequence, setup_without_memory_is_512_and_leaves_no_data) {
    apply();
    host.refuse_memory = true;
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 512);
    EXPECT_EQ(host.out.sequence_data, nullptr);
    EXPECT_EQ(host.calls.live_blocks(), 0);
    expect_clean();
}

TEST_F(Sequence, setup_reads_the_layer_flags_even_when_it_checks_nothing) {
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, false), 0);
    EXPECT_EQ(host.calls.telling(), (Log{"GetEffectLayer", "GetLayerFlags"}));
    EXPECT_EQ(host.calls.count("new_handle 3100"), 1);
    expect_clean();
}

TEST_F(Sequence, reset_on_an_adjustment_layer_pins_it_but_changes_no_flag) {
    project.effect_layer->flags |= AEGP_LayerFlag_ADJUSTMENT_LAYER;
    const AEGP_LayerFlags before = project.effect_layer->flags;
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, false), 0);
    EXPECT_EQ(project.effect_layer->flags, before);
    ASSERT_EQ(project.scripts.size(), 1u);
    EXPECT_NE(project.scripts[0].find("[thisComp.width / 2, thisComp.height / 2]"),
              std::string::npos);
}

TEST_F(Sequence, setup_on_a_footage_layer_runs_no_script) {
    apply();
    EXPECT_TRUE(project.scripts.empty());
}

TEST_F(Sequence, setup_survives_an_effect_without_a_layer) {
    project.has_effect_layer = false;
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
    EXPECT_NE(host.out.sequence_data, nullptr);
    expect_clean();
}

TEST_F(Sequence, layer_outside_a_composition_is_left_alone) {
    project.has_comp = false;
    project.effect_layer->flags |= AEGP_LayerFlag_ADJUSTMENT_LAYER;
    const AEGP_LayerFlags before = project.effect_layer->flags;
    EXPECT_EQ(ks::sequence_setup(&host.in, &host.out, true), 0);
    EXPECT_EQ(project.effect_layer->flags, before);
    EXPECT_EQ(host.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);
    EXPECT_EQ(project.scripts.size(), 1u) << "an adjustment layer is pinned all the same";
    expect_clean();
}

TEST_F(Sequence, refused_suite_throws_516_and_the_record_stays) {
    host.refused.insert(kAEGPLayerSuite);
    PF_Err thrown = 0;
    try {
        ks::sequence_setup(&host.in, &host.out, true);
    } catch (PF_Err error) {
        thrown = error;
    }
    EXPECT_EQ(thrown, 516);
    EXPECT_EQ(record(host.out.sequence_data).scope_count, 3);
    expect_clean();
}

TEST_F(Sequence, setdown_disposes_and_nulls_both_fields) {
    apply();
    EXPECT_EQ(ks::sequence_setdown(&host.in, &host.out), 0);
    EXPECT_EQ(host.in.sequence_data, nullptr);
    EXPECT_EQ(host.out.sequence_data, nullptr);
    EXPECT_EQ(host.calls.live_blocks(), 0);
    expect_clean();
}

TEST_F(Sequence, setdown_takes_flat_data_and_no_data) {
    EXPECT_EQ(ks::sequence_setdown(&host.in, &host.out), 0);
    host.in.sequence_data = host.out.sequence_data = flat_handle({0, 1, 2, 3, 0, 0, 3, 1});
    EXPECT_EQ(ks::sequence_setdown(&host.in, &host.out), 0);
    EXPECT_EQ(host.calls.live_blocks(), 0);
    expect_clean();
}

TEST_F(Sequence, setdown_without_the_handle_suite_throws_516_and_keeps_the_data) {
    apply();
    const PF_Handle data = host.in.sequence_data;
    host.refused.insert(kPFHandleSuite);
    try {
        ks::sequence_setdown(&host.in, &host.out);
        ADD_FAILURE() << "nothing was thrown";
    } catch (PF_Err error) {
        EXPECT_EQ(error, 516);
    }
    EXPECT_EQ(host.in.sequence_data, data);
    host.refused.clear();
    EXPECT_EQ(ks::sequence_setdown(&host.in, &host.out), 0);
    EXPECT_EQ(host.calls.live_blocks(), 0);
    expect_clean();
}

TEST_F(Sequence, flatten_of_a_fresh_instance_is_00_01_02_03_00_00_03_01) {
    apply();
    EXPECT_EQ(ks::sequence_flatten(&host.in, &host.out), 0);
    EXPECT_EQ(host.bytes(host.out.sequence_data), (std::vector<char>{0, 1, 2, 3, 0, 0, 3, 1}));
    expect_clean();
}

TEST_F(Sequence, flatten_leaves_the_record_to_the_host) {
    apply();
    const PF_Handle unflat = host.in.sequence_data;
    ks::sequence_flatten(&host.in, &host.out);
    EXPECT_EQ(host.in.sequence_data, unflat);
    EXPECT_EQ(record(unflat).scope_count, 3);
    EXPECT_EQ(host.calls.live_blocks(), 2);
}

TEST_F(Sequence, flatten_without_data_is_512) {
    EXPECT_EQ(ks::sequence_flatten(&host.in, &host.out), 512);
    EXPECT_TRUE(host.calls.log.empty());
}

TEST_F(Sequence, flatten_that_cannot_lock_is_0_and_stores_nothing) {
    apply();
    const PF_Handle unflat = host.in.sequence_data;
    host.refuse_locks = true;
    EXPECT_EQ(ks::sequence_flatten(&host.in, &host.out), 0);
    EXPECT_EQ(host.out.sequence_data, unflat);
    EXPECT_EQ(host.calls.live_blocks(), 1);
    expect_clean();
}

TEST_F(Sequence, flatten_without_memory_is_512_and_unlocks) {
    apply();
    host.refuse_memory = true;
    EXPECT_EQ(ks::sequence_flatten(&host.in, &host.out), 512);
    expect_clean();
}

TEST_F(Sequence, flatten_of_flat_data_copies_it) {
    host.in.sequence_data = flat_handle({1, 5, 4, 0, 0, 0, 2, 1});
    EXPECT_EQ(ks::sequence_flatten(&host.in, &host.out), 0);
    EXPECT_EQ(host.bytes(host.out.sequence_data), (std::vector<char>{1, 5, 4, 0, 0, 0, 2, 1}));
    expect_clean();
}

TEST_F(Sequence, flatten_and_resetup_restore_the_persisted_fields_and_both_tables) {
    apply();
    auto *live = reinterpret_cast<ks::InstanceRecord *>(host.bytes(host.in.sequence_data).data());
    live->state = 1;
    live->scope_order[0] = 5;
    live->scope_order[3] = 3;
    live->scope_count = 4;
    live->ramp_key = 2.2f;
    live->ramp_table()[7] = 99.0f;
    live->step_table()[7] = 99.0f;
    ASSERT_EQ(ks::sequence_flatten(&host.in, &host.out), 0);
    host.next_command();
    ASSERT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
    const ks::InstanceRecord restored = record(host.out.sequence_data);
    EXPECT_EQ(restored.state, 1);
    EXPECT_EQ(restored.scope_count, 4);
    EXPECT_EQ(restored.scope_order[0], 5);
    EXPECT_EQ(restored.scope_order[3], 3);
    EXPECT_EQ(restored.ramp_key, 1.0f);
    EXPECT_EQ(restored.gamma_tables[7], 7.0f * 0.0019569471f);
    EXPECT_EQ(restored.gamma_tables[ks::kRampEntries + 7], 1.25f);
    expect_clean();
}

TEST_F(Sequence, resetup_leaves_the_flat_handle_to_the_host) {
    const PF_Handle flat = flat_handle({0, 1, 2, 3, 0, 0, 3, 1});
    host.in.sequence_data = host.out.sequence_data = flat;
    EXPECT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
    EXPECT_EQ(host.in.sequence_data, flat);
    EXPECT_NE(host.out.sequence_data, flat);
    EXPECT_EQ(host.calls.live_blocks(), 2);
    expect_clean();
}

TEST_F(Sequence, resetup_without_data_is_0_and_builds_nothing) {
    EXPECT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
    EXPECT_EQ(host.out.sequence_data, nullptr);
    EXPECT_TRUE(host.calls.log.empty());
}

TEST_F(Sequence, resetup_that_cannot_lock_is_0) {
    host.in.sequence_data = host.out.sequence_data = flat_handle({0, 1, 2, 3, 0, 0, 3, 1});
    host.refuse_locks = true;
    EXPECT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
    EXPECT_EQ(host.out.sequence_data, host.in.sequence_data);
    expect_clean();
}

TEST_F(Sequence, resetup_without_memory_is_512) {
    host.in.sequence_data = flat_handle({0, 1, 2, 3, 0, 0, 3, 1});
    host.refuse_memory = true;
    EXPECT_EQ(ks::sequence_resetup(&host.in, &host.out), 512);
    expect_clean();
}

TEST_F(Sequence, resetup_reads_no_more_than_a_short_handle_holds) {
    for (std::size_t size = 1; size < 8; ++size) {
        const std::vector<char> whole{1, 5, 4, 3, 2, 1, 5, 1};
        host.in.sequence_data =
            flat_handle({whole.begin(), whole.begin() + static_cast<long>(size)});
        ASSERT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
        const ks::InstanceRecord restored = record(host.out.sequence_data);
        EXPECT_EQ(restored.state, 1);
        EXPECT_EQ(restored.scope_order[4], size > 5 ? 1 : 0);
        EXPECT_EQ(restored.scope_count, size > 6 ? 5 : 0);
    }
    expect_clean();
}

TEST_F(Sequence, resetup_of_a_record_that_was_never_flattened_reads_its_first_bytes) {
    apply();
    ASSERT_EQ(ks::sequence_resetup(&host.in, &host.out), 0);
    // Bytes 4 to 7 are the key 1.0f, so that the count reads as -128. No loop may follow it.
    const ks::InstanceRecord restored = record(host.out.sequence_data);
    EXPECT_EQ(restored.scope_count, -128);
    EXPECT_EQ(ks::readable_scopes(restored), 0);
    EXPECT_EQ(restored.scope_order[0], 0);
    expect_clean();
}

}  // namespace
