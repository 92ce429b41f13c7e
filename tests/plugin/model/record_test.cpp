#include "model/record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

ks::InstanceRecord zeroed() {
    ks::InstanceRecord record;
    std::memset(&record, 0, sizeof record);
    return record;
}

TEST(InstanceRecord, ramp_is_linear_from_0_to_exactly_1) {
    ks::InstanceRecord record = zeroed();
    ks::init_instance_record(record);
    for (int i = 0; i < 512; ++i) {
        EXPECT_EQ(record.ramp_table()[i], static_cast<float>(i) * 0.0019569471f);
    }
    EXPECT_EQ(record.ramp_table()[0], 0.0f);
    EXPECT_EQ(record.ramp_table()[511], 1.0f);
}

TEST(InstanceRecord, step_table_runs_from_1_03125_to_9_behind_the_ramp) {
    ks::InstanceRecord record = zeroed();
    ks::init_instance_record(record);
    for (int j = 0; j < 256; ++j) {
        EXPECT_EQ(record.step_table()[j], 1.0f + static_cast<float>(j + 1) * 0.03125f);
    }
    EXPECT_EQ(record.step_table()[0], 1.03125f);
    EXPECT_EQ(record.step_table()[255], 9.0f);
    EXPECT_EQ(record.ramp_table() + 512, record.step_table());
}

TEST(InstanceRecord, init_sets_cached_values_and_leaves_state_and_order_alone) {
    ks::InstanceRecord record = zeroed();
    record.state = 1;
    record.scope_order[0] = 5;
    record.scope_count = 1;
    record.cached_flags = 9;
    ks::init_instance_record(record);
    EXPECT_EQ(record.ramp_key, 1.0f);
    EXPECT_EQ(record.cached_value, 1.0);
    EXPECT_EQ(record.cached_flags, 0u);
    EXPECT_EQ(record.state, 1);
    EXPECT_EQ(record.scope_order[0], 5);
    EXPECT_EQ(record.scope_count, 1);
}

TEST(InstanceRecord, new_instance_shows_three_scopes) {
    ks::InstanceRecord record = zeroed();
    ks::init_new_instance(record);
    const std::vector<int> order(record.scope_order, record.scope_order + 5);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 0, 0}));
    EXPECT_EQ(record.scope_count, 3);
    EXPECT_EQ(record.state, 0);
}

TEST(FlatRecord, of_a_fresh_instance_is_00_01_02_03_00_00_03_01) {
    ks::InstanceRecord record = zeroed();
    ks::init_new_instance(record);
    const ks::FlatRecord flat = ks::flatten(record);
    const unsigned char expected[8] = {0x00, 0x01, 0x02, 0x03, 0x00, 0x00, 0x03, 0x01};
    EXPECT_EQ(std::memcmp(&flat, expected, 8), 0);
}

TEST(FlatRecord, round_trip_keeps_any_state_order_and_count) {
    for (int value = -128; value <= 127; ++value) {
        ks::InstanceRecord record = zeroed();
        record.state = static_cast<std::uint8_t>(value);
        record.scope_count = static_cast<std::int8_t>(value);
        for (std::int8_t &scope : record.scope_order) scope = static_cast<std::int8_t>(-value - 1);
        ks::InstanceRecord restored = zeroed();
        ks::unflatten(ks::flatten(record), restored);
        EXPECT_EQ(restored.state, record.state);
        EXPECT_EQ(restored.scope_count, record.scope_count);
        EXPECT_EQ(std::memcmp(restored.scope_order, record.scope_order, 5), 0);
        EXPECT_EQ(restored.ramp_table()[511], 1.0f);
        EXPECT_EQ(restored.step_table()[255], 9.0f);
        EXPECT_EQ(restored.ramp_key, 1.0f);
    }
}

TEST(FlatRecord, flat_mark_is_not_looked_at) {
    ks::FlatRecord flat{1, {5, 4, 3, 2, 1}, 5, 0};
    ks::InstanceRecord record = zeroed();
    ks::unflatten(flat, record);
    EXPECT_EQ(record.state, 1);
    EXPECT_EQ(record.scope_order[0], 5);
    EXPECT_EQ(record.scope_count, 5);
}

TEST(ReadableScopes, never_leaves_0_to_5) {
    ks::InstanceRecord record = zeroed();
    for (int count = -128; count <= 127; ++count) {
        record.scope_count = static_cast<std::int8_t>(count);
        EXPECT_EQ(ks::readable_scopes(record), count < 0 ? 0 : count > 5 ? 5 : count);
    }
}

}  // namespace
