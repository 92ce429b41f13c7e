#include "stage/effect/param_catalog.h"

#include <gmock/gmock.h>

#include <limits>

#include "stage/effect/param_defs.h"

namespace stage_test {
namespace {

using stage::ParamCatalog;
using stage::ParamValue;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr PF_Fixed kPercent = 65536;

std::string refusal_of(ParamCatalog &catalog, const PF_ParamDef &def) {
    const int before = catalog.count();
    try {
        catalog.append(def);
    } catch (const std::runtime_error &error) {
        EXPECT_EQ(catalog.count(), before) << "a refused parameter was kept";
        return error.what();
    }
    return "";
}

TEST(ParamCatalog, starts_with_the_input_layer) {
    const ParamCatalog catalog;
    EXPECT_EQ(catalog.count(), 1);
    EXPECT_EQ(catalog.at(0).def.param_type, PF_Param_LAYER);
    EXPECT_THROW(catalog.at(1), std::out_of_range);
}

TEST(ParamCatalog, copies_every_text_it_is_given) {
    ParamCatalog catalog;
    char choices[] = "One|(-|Three";
    char label[] = "tick";
    catalog.append(popup("Popup", 1, choices, 3, 1));
    catalog.append(checkbox("Box", 2, label, true));
    choices[0] = label[0] = 'X';
    EXPECT_THAT(catalog.at(1).choices, ElementsAre("One", "(-", "Three"));
    EXPECT_STREQ(catalog.at(1).def.u.pd.u.namesptr, "One|(-|Three");
    EXPECT_TRUE(catalog.at(1).is_separator(2));
    EXPECT_FALSE(catalog.at(1).is_separator(3));
    EXPECT_STREQ(catalog.at(2).def.u.bd.u.nameptr, "tick");
}

TEST(ParamCatalog, keeps_ids_apart_from_the_change_flags_that_share_their_bytes) {
    ParamCatalog catalog;
    catalog.append(slider("Slider", 4711, 0, 1, 0));
    EXPECT_EQ(catalog.at(1).id, 4711);
    EXPECT_EQ(catalog.at(1).def.uu.change_flags, 0);
}

TEST(ParamCatalog, paths_name_the_groups_around_a_parameter) {
    ParamCatalog catalog;
    catalog.append(group("Outer", 1));
    catalog.append(group("Inner", 2));
    catalog.append(slider("Amount", 3, 0, 1, 0));
    catalog.append(group_end());
    EXPECT_EQ(catalog.open_groups(), 1);
    catalog.append(slider("Amount", 4, 0, 1, 0));
    catalog.append(group_end());
    catalog.append(slider("Amount", 5, 0, 1, 0));
    EXPECT_EQ(catalog.at(3).path, "Outer/Inner/Amount");
    EXPECT_EQ(catalog.at(5).path, "Outer/Amount");
    EXPECT_EQ(catalog.at(7).path, "Amount");
    EXPECT_EQ(catalog.open_groups(), 0);
}

TEST(ParamCatalog, refuses_an_id_that_is_taken_but_lets_zero_repeat) {
    ParamCatalog catalog;
    catalog.append(group("Group", 7));
    catalog.append(group_end());
    EXPECT_EQ(refusal_of(catalog, slider("Again", 7, 0, 1, 0)),
              "parameter 3 \"Again\": its id is taken");
    catalog.append(group("Second", 8));
    EXPECT_EQ(refusal_of(catalog, group_end()), "");
}

TEST(ParamCatalog, refuses_what_a_host_cannot_show) {
    ParamCatalog catalog;
    EXPECT_THAT(refusal_of(catalog, popup("P", 1, "One|Two", 3, 1)), HasSubstr("count of choices"));
    EXPECT_THAT(refusal_of(catalog, popup("P", 1, "One|Two", 2, 0)), HasSubstr("no choice"));
    EXPECT_THAT(refusal_of(catalog, popup("P", 1, "One|Two", 2, 3)), HasSubstr("no choice"));
    EXPECT_THAT(refusal_of(catalog, popup("P", 1, nullptr, 1, 1)), HasSubstr("count of choices"));
    EXPECT_THAT(refusal_of(catalog, checkbox("C", 1, nullptr, true)), HasSubstr("label is null"));
    EXPECT_THAT(refusal_of(catalog, slider("S", 1, 1, 1, 1)), HasSubstr("dead range"));
    EXPECT_THAT(refusal_of(catalog, slider("S", 1, 2, 1, 1)), HasSubstr("dead range"));
    EXPECT_THAT(refusal_of(catalog, slider("S", 1, 0, 1, 1.5)), HasSubstr("outside the valid"));
    EXPECT_THAT(refusal_of(catalog, point("P", 1, 100 * kPercent + 1, 0, true)),
                HasSubstr("outside the bounds"));
    EXPECT_THAT(refusal_of(catalog, point("P", 1, 0, -1, true)), HasSubstr("outside the bounds"));
    EXPECT_THAT(refusal_of(catalog, group_end()), HasSubstr("did not start"));
    PF_ParamDef unending = slider("", 1, 0, 1, 0);
    std::memset(unending.name, 'x', sizeof unending.name);
    EXPECT_THAT(refusal_of(catalog, unending), HasSubstr("no terminator"));
}

TEST(ParamCatalog, takes_the_edges_of_what_is_allowed) {
    ParamCatalog catalog;
    EXPECT_EQ(refusal_of(catalog, popup("P", 1, "One", 1, 1)), "");
    EXPECT_EQ(refusal_of(catalog, checkbox("C", 2, "", false)), "");
    EXPECT_EQ(refusal_of(catalog, slider("S", 3, 0, 1, 1)), "");
    EXPECT_EQ(refusal_of(catalog, point("P", 4, 100 * kPercent, 0, true)), "");
    EXPECT_EQ(refusal_of(catalog, point("P", 5, 200 * kPercent, -kPercent, false)), "");
    EXPECT_EQ(refusal_of(catalog, slider("Thirty-one characters, no more.", 6, 0, 1, 0)), "");
}

TEST(ParamCatalog, looks_start_as_added) {
    ParamCatalog catalog;
    PF_ParamDef def = slider("S", 1, 0, 100, 5);
    def.ui_flags = PF_PUI_ECW_SEPARATOR;
    def.flags = PF_ParamFlag_SUPERVISE;
    catalog.append(def);
    EXPECT_EQ(catalog.looks().at(1).ui_flags, PF_PUI_ECW_SEPARATOR);
    EXPECT_EQ(catalog.looks().at(1).flags, PF_ParamFlag_SUPERVISE);
    EXPECT_EQ(catalog.looks().at(1).slider_max, 50.0f);
}

TEST(ParamCatalog, initial_values_come_from_the_definitions) {
    ParamCatalog catalog;
    catalog.append(slider("S", 1, 0, 100, 12.5));
    catalog.append(popup("P", 2, "One|Two", 2, 2));
    catalog.append(checkbox("C", 3, "", true));
    catalog.append(colour("T", 4, {0, 1, 2, 3}));
    EXPECT_EQ(catalog.initial_value(1, 10, 10).number, 12.5);
    EXPECT_EQ(catalog.initial_value(2, 10, 10).number, 2);
    EXPECT_EQ(catalog.initial_value(3, 10, 10).number, 1);
    EXPECT_THAT(catalog.initial_value(4, 10, 10).color, ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(catalog.initial_value(0, 10, 10), ParamValue{});
}

TEST(ParamCatalog, point_percentages_become_layer_pixels_to_the_nearest_65536th) {
    ParamCatalog catalog;
    catalog.append(point("Centre", 1, 50 * kPercent, 25 * kPercent, true));
    // 28.24 % of 1080 is just below 305 once it has been cut to 16.16.
    catalog.append(point("Odd", 2, 51200, static_cast<PF_Fixed>(28.24074 * 65536), true));
    EXPECT_EQ(catalog.initial_value(1, 1920, 1080), (ParamValue{0, 960, 270, {}, 0}));
    EXPECT_EQ(catalog.initial_value(1, 1921, 1081), (ParamValue{0, 960.5, 270.25, {}, 0}));
    const ParamValue odd = catalog.initial_value(2, 1920, 1080);
    EXPECT_EQ(odd.x, 15.0);
    EXPECT_LT(odd.y, 305.0);
    EXPECT_GT(odd.y, 304.999);
    EXPECT_EQ(odd.y * 65536, std::nearbyint(odd.y * 65536));
}

TEST(ParamCatalog, written_values_are_limited_to_the_valid_range) {
    ParamCatalog catalog;
    catalog.append(slider("S", 1, -1, 4, 0));
    catalog.append(popup("P", 2, "One|Two", 2, 2));
    catalog.append(checkbox("C", 3, "", true));
    catalog.append(point("P", 4, 0, 0, true));
    const auto limited = [&](int index, double number) {
        ParamValue value;
        value.number = number;
        return catalog.clamped(index, value).number;
    };
    EXPECT_EQ(limited(1, 5), 4);
    EXPECT_EQ(limited(1, -1e300), -1);
    EXPECT_EQ(limited(1, std::numeric_limits<double>::quiet_NaN()), -1);
    EXPECT_EQ(limited(1, 0.5), 0.5);
    EXPECT_EQ(limited(2, 0), 1);
    EXPECT_EQ(limited(2, 9), 2);
    EXPECT_EQ(limited(3, 7), 1);
    // Bounds of points hold in the panel only.
    const ParamValue far{0, -500, 1e6, {}, 0};
    EXPECT_EQ(catalog.clamped(4, far), far);
}

TEST(ParamCatalog, values_survive_the_way_into_a_definition_and_back) {
    ParamCatalog catalog;
    catalog.append(slider("S", 1, 0, 100, 0));
    catalog.append(popup("P", 2, "One|Two|Three", 3, 1));
    catalog.append(checkbox("C", 3, "", false));
    catalog.append(point("P", 4, 0, 0, false));
    catalog.append(colour("T", 5, {}));
    const ParamValue values[] = {
        {33.25, 0, 0, {}, 0},    {3, 0, 0, {}, 0},           {1, 0, 0, {}, 0},
        {0, 12.5, -7.25, {}, 0}, {0, 0, 0, {9, 8, 7, 6}, 0},
    };
    for (int index = 1; index <= 5; ++index) {
        PF_ParamDef def = catalog.at(index).def;
        stage::store_value(def, values[index - 1], {1, 1});
        EXPECT_EQ(stage::load_value(def, {1, 1}), values[index - 1]) << index;
    }
}

TEST(ParamCatalog, points_are_scaled_and_saturate_in_16_16) {
    PF_ParamDef def = point("P", 1, 0, 0, false);
    stage::store_value(def, {0, 400, 300, {}, 0}, {1.0 / 3, 0.25});
    EXPECT_EQ(def.u.td.x_value, 8738133);  // 133.33332...
    EXPECT_EQ(def.u.td.y_value, 75 * 65536);
    stage::store_value(def, {0, 40000, -40000, {}, 0}, {1, 1});
    EXPECT_EQ(def.u.td.x_value, std::numeric_limits<PF_Fixed>::max());
    EXPECT_EQ(def.u.td.y_value, std::numeric_limits<PF_Fixed>::min());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    stage::store_value(def, {0, nan, 1, {}, 0}, {1, 1});
    EXPECT_EQ(def.u.td.x_value, 0);
}

}  // namespace
}  // namespace stage_test
