#include "model/param_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

const ks::ParamRow &row(int index) {
    return ks::kParamTable[static_cast<std::size_t>(index)];
}

TEST(ParamTable, has_69_rows_at_their_own_index) {
    ASSERT_EQ(ks::kParamTable.size(), 69u);
    for (int i = 0; i < 69; ++i) EXPECT_EQ(row(i).index, i);
}

TEST(ParamTable, ids_1_to_59_are_all_taken_but_43) {
    std::multiset<int> ids;
    for (const ks::ParamRow &r : ks::kParamTable) {
        if (r.id != 0) ids.insert(r.id);
    }
    std::multiset<int> expected;
    for (int id = 1; id <= 59; ++id) {
        if (id != 43) expected.insert(id);
    }
    EXPECT_EQ(ids, expected);
}

TEST(ParamTable, ids_that_stand_out_of_order) {
    EXPECT_EQ(row(24).id, 58);
    EXPECT_EQ(row(54).id, 55);
    EXPECT_EQ(row(59).id, 56);
    EXPECT_EQ(row(61).id, 54);
    EXPECT_EQ(row(65).id, 59);
    EXPECT_EQ(row(68).id, 57);
}

TEST(ParamTable, groups_nest_as_the_panel_shows_them) {
    std::vector<std::string> open;
    std::vector<std::string> groups;
    for (const ks::ParamRow &r : ks::kParamTable) {
        if (r.kind == ks::ParamKind::group_end) {
            ASSERT_FALSE(open.empty());
            open.pop_back();
        }
        if (r.kind != ks::ParamKind::group_start) continue;
        groups.push_back((open.empty() ? "" : open.back() + "/") + r.name);
        open.push_back(groups.back());
    }
    EXPECT_TRUE(open.empty());
    EXPECT_EQ(groups, (std::vector<std::string>{
                          "Monitor", "Monitor/Primary Monitor", "Monitor/Channels", "Scopes",
                          "Scopes/Waveform Monitor", "Scopes/Vectorscope", "Scopes/Channel Parade",
                          "Scopes/Slice Waveform", "Scopes/Histogram", "Scopes/Options"}));
    EXPECT_EQ(row(68).kind, ks::ParamKind::checkbox) << "RESET stands behind all groups";
}

TEST(ParamTable, mute_box_is_named_REN_and_shows_its_text_beside_the_box) {
    EXPECT_STREQ(row(24).name, "REN");
    EXPECT_STREQ(row(24).label, "Mute Active Scopes");
    for (const ks::ParamRow &r : ks::kParamTable) {
        if (r.index == 24) continue;
        EXPECT_STREQ(r.label, "") << r.name;
    }
}

TEST(ParamTable, left_hand_scopes_start_15_pixels_in_at_1920) {
    for (int index : {27, 38, 43, 50}) {
        EXPECT_DOUBLE_EQ(row(index).x_default / 65536.0 / 100.0 * 1920.0, 15.0) << index;
    }
    EXPECT_EQ(row(55).x_default, 50 << 16);
    EXPECT_EQ(row(55).y_default, 0);
}

TEST(ParamTable, three_sliders_start_with_a_closed_twirly) {
    std::vector<int> closed;
    for (const ks::ParamRow &r : ks::kParamTable) {
        if ((r.flags & ks::kFlagCollapseTwirly) != 0) closed.push_back(r.index);
    }
    EXPECT_EQ(closed, (std::vector<int>{5, 11, 12}));
}

}  // namespace
