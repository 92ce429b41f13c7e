// The oracle's tables: parameters, records, property list.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

#include "oracle/param_oracle.h"
#include "oracle/record_oracle.h"

namespace ks::oracle {
namespace {

using ByteList = std::vector<std::uint8_t>;

ByteList slice(const ByteList &bytes, std::size_t at, std::size_t count) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(at),
            bytes.begin() + static_cast<std::ptrdiff_t>(at + count)};
}

TEST(ParamTable, indices_run_and_ids_are_1_to_59_without_43) {
    std::set<int> ids;
    int expected_index = 1;
    for (const ParamRow &row : param_rows()) {
        EXPECT_EQ(row.index, expected_index++);
        if (row.kind == ParamKind::kGroupEnd) {
            EXPECT_EQ(row.id, 0);
        } else {
            EXPECT_TRUE(ids.insert(row.id).second) << row.id;
        }
    }
    EXPECT_EQ(expected_index, kParamCount);
    EXPECT_EQ(ids.size(), 58u);
    EXPECT_EQ(*ids.begin(), 1);
    EXPECT_EQ(*ids.rbegin(), 59);
    EXPECT_EQ(ids.count(43), 0u);
    EXPECT_EQ(param_rows()[67].id, 57);
    EXPECT_EQ(param_rows()[23].id, 58);
}

TEST(ParamTable, groups_balance) {
    int depth = 0;
    int deepest = 0;
    for (const ParamRow &row : param_rows()) {
        if (row.kind == ParamKind::kGroupStart) deepest = std::max(deepest, ++depth);
        if (row.kind == ParamKind::kGroupEnd) --depth;
        ASSERT_GE(depth, 0) << row.index;
    }
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(deepest, 2);
}

TEST(ParamTable, counts_and_defaults_fit_the_texts_and_ranges) {
    for (const ParamRow &row : param_rows()) {
        EXPECT_LT(std::strlen(row.name), 32u);
        if (row.kind == ParamKind::kPopup) {
            const std::string text = row.popup_text;
            EXPECT_EQ(std::count(text.begin(), text.end(), '|') + 1, row.num_choices) << row.name;
            EXPECT_TRUE(row.choice >= 1 && row.choice <= row.num_choices) << row.name;
        }
        if (row.kind == ParamKind::kFloatSlider) {
            EXPECT_TRUE(row.value >= row.minimum && row.value <= row.maximum) << row.name;
        }
    }
}

TEST(ParamTable, left_hand_scopes_stand_15_pixels_from_the_edge_of_1920) {
    for (const std::size_t index : {27u, 38u, 43u, 50u}) {
        EXPECT_EQ(param_rows()[index - 1].x_percent / 65536.0 * 0.01 * 1920.0, 15.0);
    }
}

TEST(ParamTable, point_defaults_are_the_stated_percentages) {
    const std::vector<std::array<double, 3>> percentages{
        {4, 0, 0},           {27, 0.78125, 1.388885498046875}, {38, 0.78125, 28.333297729492188},
        {50, 0.78125, 75.0}, {43, 0.78125, 73.51849365234375}, {55, 50.0, 0.0}};
    for (const auto &[index, x, y] : percentages) {
        const ParamRow &row = param_rows()[static_cast<std::size_t>(index) - 1];
        EXPECT_EQ(row.kind, ParamKind::kPoint);
        EXPECT_NEAR(row.x_percent / 65536.0, x, 1e-9);
        EXPECT_NEAR(row.y_percent / 65536.0, y, 1e-9);
    }
}

TEST(ParamDifferences, finds_each_wrong_field_and_nothing_else) {
    PF_ParamDef def;
    std::memset(&def, 0, sizeof def);
    def.uu.id = 52;
    def.param_type = 7;
    std::memcpy(def.name, "Show Waveform Guides", 21);
    def.u.pd.value = 1;
    def.u.pd.dephault = 1;
    def.u.pd.num_choices = 3;
    def.u.pd.u.namesptr = "Off|7.5 IRE|16-235";
    const ParamRow &row = param_rows()[62];
    EXPECT_TRUE(param_differences(row, def).empty());
    def.u.pd.num_choices = 2;
    def.flags = 64;
    def.name[0] = 's';
    EXPECT_EQ(param_differences(row, def).size(), 3u);
    EXPECT_GE(param_differences(param_rows()[0], def).size(), 4u);
}

TEST(Record, holds_its_fields_at_their_places) {
    const ByteList record = new_instance_record();
    ASSERT_EQ(record.size(), 3100u);
    EXPECT_EQ(slice(record, 0, 8), (ByteList{0, 0, 0, 0, 0, 0, 0x80, 0x3F}));
    EXPECT_EQ(slice(record, 8, 4), (ByteList{0, 0, 0, 0}));
    EXPECT_EQ(slice(record, 2052, 4), (ByteList{0, 0, 0x80, 0x3F}));  // entry 511 is 1.0
    EXPECT_EQ(slice(record, 2056, 4), (ByteList{0, 0, 0x84, 0x3F}));  // 1.03125
    EXPECT_EQ(slice(record, 3076, 4), (ByteList{0, 0, 0x10, 0x41}));  // 9.0
    EXPECT_EQ(slice(record, 3080, 8), (ByteList{1, 2, 3, 0, 0, 3, 0, 0}));
    EXPECT_EQ(slice(record, 3088, 12), (ByteList{0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0}));
}

TEST(Record, flat_form_of_a_fresh_instance) {
    const std::array<std::uint8_t, 8> fresh{0, 1, 2, 3, 0, 0, 3, 1};
    EXPECT_EQ(flat_record(0, {1, 2, 3, 0, 0}, 3), fresh);
    EXPECT_EQ(restored_instance_record(fresh), new_instance_record());
}

TEST(Record, restores_state_order_and_count_and_ignores_the_mark) {
    const ByteList record = restored_instance_record({7, 5, 4, 0, 0, 0, 2, 99});
    EXPECT_EQ(record[0], 7);
    EXPECT_EQ(slice(record, 3080, 8), (ByteList{5, 4, 0, 0, 0, 2, 0, 0}));
}

TEST(United, follows_the_rule_for_empty_rectangles) {
    const auto box = [](const Rect &r) {
        return std::array<int, 4>{r.left, r.top, r.right, r.bottom};
    };
    EXPECT_EQ(box(united({0, 0, 0, 0}, {5, 6, 7, 8})), (std::array<int, 4>{5, 6, 7, 8}));
    EXPECT_EQ(box(united({9, 0, 1, 5}, {3, 3, 3, 3})), (std::array<int, 4>{3, 3, 3, 3}));
    EXPECT_EQ(box(united({0, 0, 4, 4}, {9, 9, 9, 12})), (std::array<int, 4>{0, 0, 4, 4}));
    EXPECT_EQ(box(united({0, 0, 4, 4}, {-2, 3, 2, 9})), (std::array<int, 4>{-2, 0, 4, 9}));
}

TEST(PropertyList, has_310_bytes_with_its_properties_at_known_offsets) {
    const ByteList list = property_list();
    ASSERT_EQ(list.size(), 310u);
    EXPECT_EQ(slice(list, 0, 10), (ByteList{1, 0, 0, 0, 0, 0, 12, 0, 0, 0}));
    const std::string text(list.begin(), list.end());
    EXPECT_EQ(text.substr(10, 8), "MIB8dnik");
    EXPECT_EQ(text.substr(26, 4), "TKFe");
    EXPECT_EQ(text.substr(34, 4), "eman");
    EXPECT_EQ(text.substr(46, 17), "\x10Kestrel Scopes 2");
    EXPECT_EQ(text.substr(70, 4), "gtac");
    EXPECT_EQ(text.substr(106, 4), "4668");
    EXPECT_EQ(text.substr(118, 16), std::string("EntryPointFunc\0\0", 16));
    EXPECT_EQ(text.substr(138, 4), "RVPe");
    EXPECT_EQ(slice(list, 150, 4), (ByteList{2, 0, 0, 0}));
    EXPECT_EQ(slice(list, 170, 4), (ByteList{13, 0, 14, 0}));
    EXPECT_EQ(slice(list, 190, 4), (ByteList{0x01, 0x1E, 0x10, 0x00}));
    EXPECT_EQ(text.substr(198, 4), "FNIe");
    EXPECT_EQ(slice(list, 206, 8), (ByteList{2, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(slice(list, 230, 4), (ByteList{0x10, 0x80, 0x00, 0x06}));
    EXPECT_EQ(slice(list, 250, 4), (ByteList{0x08, 0x14, 0x00, 0x00}));
    EXPECT_EQ(text.substr(258, 4), "ANMe");
    EXPECT_EQ(text.substr(270, 18), "\x11KS_KestrelMonitor");
    EXPECT_EQ(text.substr(294, 4), "LFea");
}

}  // namespace
}  // namespace ks::oracle
