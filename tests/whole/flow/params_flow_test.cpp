// The parameters as the host holds them after set-up.
#include <set>

#include "oracle/param_oracle.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

TEST(ParamsFlow, every_added_parameter_is_as_required_field_by_field) {
    const Flow flow;
    const stage::ParamCatalog &catalog = flow.session.plugin.catalog;
    ASSERT_EQ(catalog.count(), oracle::kParamCount);
    EXPECT_EQ(flow.session.plugin.num_params, oracle::kParamCount);
    for (const oracle::ParamRow &row : oracle::param_rows()) {
        const stage::ParamInfo &info = catalog.at(row.index);
        PF_ParamDef def = info.def;
        def.uu.id = info.id;  // the catalog keeps it apart: the field means change flags later
        for (const std::string &difference : param_differences(row, def)) {
            ADD_FAILURE() << row.index << " \"" << row.name << "\": " << difference;
        }
        EXPECT_EQ(info.name, row.name);
    }
}

TEST(ParamsFlow, ids_are_unique_and_43_is_not_among_them) {
    const Flow flow;
    std::multiset<int> ids;
    for (int index = 1; index < flow.session.plugin.catalog.count(); ++index) {
        ids.insert(flow.session.plugin.catalog.at(index).id);
    }
    EXPECT_EQ(ids.count(43), 0u);
    for (int id = 1; id <= 59; ++id) EXPECT_EQ(ids.count(id), id == 43 ? 0u : 1u) << id;
    EXPECT_EQ(flow.session.plugin.catalog.at(68).id, 57);
    EXPECT_EQ(flow.session.plugin.catalog.at(24).id, 58);
}

TEST(ParamsFlow, custom_ui_draws_in_the_composition_and_layer_windows_only) {
    const Flow flow;
    EXPECT_TRUE(flow.session.plugin.custom_ui);
    EXPECT_EQ(flow.session.plugin.ui_info.events, 3);
}

TEST(ParamsFlow, layout_choices_count_their_separators) {
    const Flow flow;
    const stage::ParamInfo &layout = flow.session.plugin.catalog.at(2);
    ASSERT_EQ(layout.choices.size(), 7u);
    EXPECT_TRUE(layout.is_separator(2));
    EXPECT_TRUE(layout.is_separator(5));
    EXPECT_EQ(layout.choices[3], "Four-Way Classic");
    EXPECT_EQ(layout.def.u.pd.dephault, 4);
}

// Where the scopes of a new instance land in a frame of 1920 by 1080: 15.0 exactly at the left, and
// rows just below 15, 306 and 794, which whole pixels cut to 14, 305 and 793.
TEST(ParamsFlow, default_points_place_the_scopes_of_a_full_hd_frame) {
    Flow flow;
    flow.make_scene(oracle::make_image(1920, 1080, oracle::Depth::kByte));
    flow.set("Show Slice Waveform", 1);
    flow.set("Show Histogram", 1);
    flow.set("Monitor Layout", 7);
    flow.host().trace.enable(true);
    stage::RenderSettings draft;
    draft.high_quality = false;
    flow.frame(draft);
    std::vector<std::string> places;
    for (const stage::TraceEntry &entry : flow.host().trace.entries()) {
        if (entry.call != "PF World Transform Suite.transfer_rect") continue;
        const std::size_t at = entry.arguments.find(" at (") + 4;
        places.push_back(entry.arguments.substr(at, entry.arguments.find(')') + 1 - at));
    }
    // Bottom of the walk order first: histogram, slice waveform, vectorscope, parade, waveform.
    EXPECT_EQ(places,
              (std::vector<std::string>{"(960,0)", "(15,810)", "(15,305)", "(15,793)", "(15,14)"}));
}

}  // namespace
}  // namespace ks::flow
