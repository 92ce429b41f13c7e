#include "model/stacking_order.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

#include "oracle/order_oracle.h"

namespace {

using ks::InstanceRecord;
using ks::ScopeKind;
using ks::oracle::OrderBytes;

constexpr ScopeKind kAllKinds[] = {ScopeKind::kWaveform, ScopeKind::kVectorscope,
                                   ScopeKind::kParade, ScopeKind::kSlice, ScopeKind::kHistogram};

InstanceRecord make(std::array<int, 5> order, int count) {
    InstanceRecord record;
    std::memset(&record, 0x5A, sizeof record);
    for (std::size_t i = 0; i < 5; ++i) record.scope_order[i] = static_cast<std::int8_t>(order[i]);
    record.scope_count = static_cast<std::int8_t>(count);
    return record;
}

/// The five places and the count, as "5 1 2 3 0 : 4".
std::string text(const InstanceRecord &record) {
    std::string text;
    for (std::int8_t code : record.scope_order) text += std::to_string(code) + " ";
    return text + ": " + std::to_string(record.scope_count);
}

using Edit = void (*)(InstanceRecord &, ScopeKind);
std::string after(Edit edit, ScopeKind kind, std::array<int, 5> order, int count) {
    InstanceRecord record = make(order, count);
    edit(record, kind);
    return text(record);
}

TEST(PanelOrder, adding_puts_the_scope_in_front) {
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kHistogram, {1, 2, 3, 0, 0}, 3), "5 1 2 3 0 : 4");
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kWaveform, {0, 0, 0, 0, 0}, 0), "1 0 0 0 0 : 1");
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kParade, {5, 1, 2, 4, 0}, 4), "3 5 1 2 4 : 5");
}

TEST(PanelOrder, adding_what_is_there_does_nothing) {
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kParade, {1, 2, 3, 0, 0}, 3), "1 2 3 0 0 : 3");
}

TEST(PanelOrder, only_valid_entries_count_as_being_there) {
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kSlice, {1, 2, 3, 4, 0}, 3), "4 1 2 3 0 : 4");
}

TEST(PanelOrder, adding_with_five_entries_does_nothing) {
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kHistogram, {1, 2, 3, 4, 4}, 5), "1 2 3 4 4 : 5");
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kHistogram, {1, 2, 3, 4, 4}, 127), "1 2 3 4 4 : 127");
}

TEST(PanelOrder, removing_closes_the_gap_with_the_byte_behind_the_last_entry) {
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kVectorscope, {5, 1, 2, 3, 0}, 4),
              "5 1 3 0 0 : 3");
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kWaveform, {1, 2, 3, 9, 0}, 3), "2 3 9 9 0 : 2");
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kParade, {1, 2, 3, 0, 0}, 3), "1 2 0 0 0 : 2");
}

TEST(PanelOrder, removing_from_five_entries_copies_the_count_into_the_last_place) {
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kVectorscope, {1, 2, 3, 4, 5}, 5),
              "1 3 4 5 5 : 4");
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kWaveform, {2, 3, 4, 5, 1}, 5), "2 3 4 5 5 : 4");
}

TEST(PanelOrder, removing_decreases_the_count_even_when_the_scope_is_absent) {
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kHistogram, {1, 2, 3, 0, 0}, 3), "1 2 3 0 0 : 2");
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kSlice, {1, 2, 3, 4, 0}, 3), "1 2 3 4 0 : 2");
}

TEST(PanelOrder, removing_from_an_empty_or_negative_order_does_nothing) {
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kWaveform, {1, 0, 0, 0, 0}, 0), "1 0 0 0 0 : 0");
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kWaveform, {1, 0, 0, 0, 0}, -128),
              "1 0 0 0 0 : -128");
}

TEST(PanelOrder, front_moves_the_scope_and_those_before_it) {
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kParade, {1, 2, 3, 0, 0}, 3),
              "3 1 2 0 0 : 3");
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kVectorscope, {1, 2, 3, 4, 5}, 5),
              "2 1 3 4 5 : 5");
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kWaveform, {1, 2, 3, 0, 0}, 3),
              "1 2 3 0 0 : 3");
}

TEST(PanelOrder, front_overwrites_position_0_when_the_scope_is_absent) {
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kHistogram, {1, 2, 3, 0, 0}, 3),
              "5 2 3 0 0 : 3");
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kSlice, {1, 2, 3, 4, 0}, 3),
              "4 2 3 4 0 : 3")
        << "an entry past the count is absent";
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kSlice, {0, 0, 0, 0, 0}, 0),
              "4 0 0 0 0 : 0")
        << "the count stays";
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kSlice, {1, 4, 0, 0, 0}, -3),
              "4 4 0 0 0 : -3");
}

TEST(PanelOrder, damaged_counts_are_stepped_as_they_are) {
    EXPECT_EQ(after(ks::remove_scope, ScopeKind::kVectorscope, {1, 2, 3, 4, 5}, 127),
              "1 3 4 5 127 : 126");
    EXPECT_EQ(after(ks::add_scope, ScopeKind::kHistogram, {1, 2, 3, 0, 0}, -128),
              "5 2 3 0 0 : -127");
    EXPECT_EQ(after(ks::bring_scope_to_front, ScopeKind::kHistogram, {1, 2, 3, 4, 5}, 127),
              "5 1 2 3 4 : 127");
}

TEST(PanelOrder, every_edit_of_every_order_and_count_changes_these_six_bytes_alone) {
    constexpr Edit kEdits[] = {ks::remove_scope, ks::add_scope, ks::bring_scope_to_front};
    constexpr void (*kRules[])(OrderBytes &, int) = {
        ks::oracle::order_remove, ks::oracle::order_add, ks::oracle::order_to_front};
    constexpr int kCounts[] = {-128, -1, 0, 1, 2, 3, 4, 5, 6, 127};
    int wrong = 0;
    for (int number = 0; number < 7776; ++number) {
        std::array<int, 5> order{};
        for (int i = 0, rest = number; i < 5; ++i, rest /= 6) {
            order[static_cast<std::size_t>(i)] = rest % 6;
        }
        for (int count : kCounts) {
            for (ScopeKind kind : kAllKinds) {
                for (std::size_t e = 0; e < 3; ++e) {
                    InstanceRecord record = make(order, count);
                    InstanceRecord expected = record;
                    OrderBytes bytes;
                    auto *at =
                        reinterpret_cast<char *>(&expected) + offsetof(InstanceRecord, scope_order);
                    std::memcpy(bytes.data(), at, bytes.size());
                    kRules[e](bytes, static_cast<int>(kind));
                    std::memcpy(at, bytes.data(), bytes.size());
                    kEdits[e](record, kind);
                    wrong += std::memcmp(&record, &expected, sizeof record) != 0;
                }
            }
        }
    }
    EXPECT_EQ(wrong, 0);
}

}  // namespace
