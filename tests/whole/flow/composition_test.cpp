// What applying the effect does to the composition around it.
#include <algorithm>

#include "hostapi/constants.h"
#include "oracle/record_oracle.h"
#include "stage/project/project.h"
#include "whole/support/flow_fixture.h"

namespace ks::flow {
namespace {

constexpr char kWarning[] =
    "Warning: You have applied Kestrel Scopes to a source layer with different dimensions to the "
    "comp.\n\nIt is recommended that you apply Kestrel Scopes to an adjustment layer at the top of "
    "the stack";
constexpr char kCentred[] = "[thisComp.width / 2, thisComp.height / 2]";

class Composition : public testing::Test {
  protected:
    Composition() {
        comp = project().add_comp("comp", 320, 180, 1, 1, 50);
        project().active_comp = comp;
    }

    stage::Project &project() { return flow.host().project; }
    const std::vector<stage::Layer> &layers() { return project().comp(comp)->layers; }
    const stage::Layer &layer(stage::LayerId id) { return *project().layer(id); }

    stage::LayerId add_solid(int width, int height, int index = -1) {
        const stage::ItemId item = project().add_solid_item("plate", width, height, {1, 0, 0, 0});
        return project().add_layer(comp, item, index, "plate");
    }
    stage::LayerId add_adjustment() {
        const stage::LayerId id = project().add_adjustment_layer(comp, 0, "monitor");
        project().layer(id)->selected = true;
        return id;
    }
    stage::CommandResult apply(stage::LayerId id) {
        stage::CommandResult result;
        effect = flow.session.apply(id, &result);
        return result;
    }
    stage::LayerId add_named(const std::string &name, int index = -1) {
        const stage::LayerId id = add_solid(100, 100, index);
        project().layer(id)->name = name;
        return id;
    }
    // The calls of the last command that change layers or run scripts, in order.
    std::vector<std::string> changes() {
        std::vector<std::string> calls;
        for (const stage::TraceEntry &entry : flow.host().trace.entries()) {
            for (const char *slot : {"AEGP_SetLayerFlag", "AEGP_CreateSolidInComp",
                                     "AEGP_ReorderLayer", "AEGP_ExecuteScript"}) {
                if (entry.call.ends_with(slot)) calls.push_back(slot);
            }
        }
        return calls;
    }
    int backings() {
        return static_cast<int>(std::ranges::count_if(layers(), [&](const stage::Layer &each) {
            const stage::Item *source = project().item(each.source);
            return source != nullptr && source->name == "KSTR_Backing";
        }));
    }

    Flow flow;
    stage::ItemId comp = 0;
    stage::EffectInstance *effect = nullptr;
};

TEST_F(Composition, footage_of_another_width_or_height_is_warned_about_once_and_set_up) {
    for (const auto &[width, height] : {std::pair{319, 180}, {320, 181}, {640, 360}}) {
        flow.host().messages.clear();
        const stage::CommandResult result = apply(add_solid(width, height));
        EXPECT_EQ(result.error, 0);
        EXPECT_EQ(layers().back().flags, stage::layer_flag::kVideoActive) << "it is the user's";
        EXPECT_EQ(result.message, kWarning);
        EXPECT_NE(result.out_flags & 0x100, 0);
        ASSERT_EQ(flow.host().messages.size(), 1u);
        EXPECT_TRUE(flow.host().messages.front().as_error);
        ASSERT_NE(effect, nullptr);
        EXPECT_EQ(flow.session.sequence_bytes(*effect), oracle::new_instance_record());
    }
}

TEST_F(Composition, footage_of_the_comps_size_is_left_alone) {
    const stage::LayerId id = add_solid(320, 180);
    const stage::Layer before = layer(id);
    const stage::CommandResult result = apply(id);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.message, "");
    EXPECT_EQ(result.out_flags, 0);
    EXPECT_EQ(layer(id).flags, before.flags);
    EXPECT_EQ(layer(id).position_expression, "");
    EXPECT_EQ(layers().size(), 1u);
}

TEST_F(Composition, adjustment_layer_over_a_full_frame_becomes_a_guide_and_needs_no_backing) {
    add_solid(320, 180);
    const stage::LayerId id = add_adjustment();
    const stage::CommandResult result = apply(id);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.message, "");
    EXPECT_TRUE(layer(id).has_flag(stage::layer_flag::kGuide));
    EXPECT_TRUE(layer(id).has_flag(stage::layer_flag::kAdjustment));
    EXPECT_EQ(layers().size(), 2u);
    EXPECT_EQ(backings(), 0);
    EXPECT_EQ(layer(id).position_expression, kCentred);
}

TEST_F(Composition, lock_script_moves_the_selected_layers_and_no_other) {
    const stage::LayerId bottom = add_solid(320, 180);
    const stage::LayerId id = add_adjustment();
    project().layer(bottom)->selected = true;
    project().layer(id)->selected = false;
    EXPECT_EQ(apply(id).error, 0);
    EXPECT_EQ(layer(bottom).position_expression, kCentred);
    EXPECT_EQ(layer(id).position_expression, "");
}

void expect_backing(const stage::Project &project, const stage::Item &comp,
                    stage::LayerId effect_layer) {
    const stage::Layer &backing = comp.layers.back();
    const stage::Item *source = project.item(backing.source);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->name, "KSTR_Backing");
    EXPECT_EQ(source->width, comp.width);
    EXPECT_EQ(source->height, comp.height);
    EXPECT_EQ(source->color, (std::array<double, 4>{1, 0, 0, 0}));
    EXPECT_EQ(source->frames, comp.frames);
    EXPECT_EQ(backing.flags, stage::layer_flag::kVideoActive | stage::layer_flag::kLocked);
    EXPECT_GT(project.index_of(backing.id), project.index_of(effect_layer));
}

TEST_F(Composition, adjustment_layer_over_nothing_gets_a_locked_comp_sized_backing_beneath) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    ASSERT_EQ(layers().size(), 2u);
    EXPECT_EQ(backings(), 1);
    expect_backing(project(), *project().comp(comp), id);
    EXPECT_TRUE(layer(id).has_flag(stage::layer_flag::kGuide));
    EXPECT_FALSE(layer(id).has_flag(stage::layer_flag::kLocked));
}

TEST_F(Composition, adjustment_layer_over_layers_that_do_not_fill_the_frame_gets_a_backing) {
    add_solid(100, 180);
    add_solid(320, 179);
    project().add_text_layer(comp, -1, "title");
    project().layer(add_solid(320, 180))->flags |= stage::layer_flag::kGuide;
    project().layer(add_solid(320, 180))->flags &= ~stage::layer_flag::kVideoActive;
    const stage::LayerId id = add_adjustment();
    add_solid(320, 180, 0);  // above does not count
    EXPECT_EQ(apply(id).error, 0);
    EXPECT_EQ(backings(), 1);
    expect_backing(project(), *project().comp(comp), id);
}

TEST_F(Composition, larger_layer_beneath_is_enough_and_stays_as_it_is) {
    const stage::LayerId footage = add_solid(4096, 2160);
    EXPECT_EQ(apply(add_adjustment()).error, 0);
    EXPECT_EQ(layers().size(), 2u);
    EXPECT_EQ(layer(footage).flags, stage::layer_flag::kVideoActive);
}

TEST_F(Composition, layers_that_cannot_serve_as_backing) {
    using namespace stage::layer_flag;
    const struct {
        std::uint32_t flags;
        int width, height;
        const char *why;
    } unfit[] = {
        {0, 320, 180, "video off"},
        {kVideoActive | kGuide, 320, 180, "guide layer"},
        {kVideoActive | kAdjustment, 320, 180, "adjustment layer"},
        {kVideoActive | kNull, 320, 180, "null layer"},
        {kVideoActive, 319, 180, "too narrow"},
        {kVideoActive, 320, 179, "too low"},
    };
    const stage::ProjectData empty = project().data();
    for (const auto &each : unfit) {
        project().restore(empty);
        const stage::LayerId id = add_solid(each.width, each.height);
        project().layer(id)->flags = each.flags;
        EXPECT_EQ(apply(add_adjustment()).error, 0) << each.why;
        EXPECT_EQ(backings(), 1) << each.why;
        EXPECT_EQ(layer(id).flags, each.flags) << each.why;
        EXPECT_EQ(flow.session.remove(*effect).error, 0);
    }
}

TEST_F(Composition, backing_is_locked_in_its_place_and_before_the_script_runs) {
    add_solid(100, 100);
    flow.host().trace.enable(true);
    EXPECT_EQ(apply(add_adjustment()).error, 0);
    EXPECT_EQ(changes(), (std::vector<std::string>{"AEGP_SetLayerFlag", "AEGP_CreateSolidInComp",
                                                   "AEGP_ReorderLayer", "AEGP_SetLayerFlag",
                                                   "AEGP_ExecuteScript"}));
}

TEST_F(Composition, backing_that_lost_its_lock_is_locked_again_in_its_place) {
    const stage::LayerId backing = add_named("KSTR_Backing");
    add_solid(100, 100);
    project().layer(backing)->flags = 0;
    EXPECT_EQ(apply(add_adjustment()).error, 0);
    EXPECT_EQ(layer(backing).flags, stage::layer_flag::kLocked) << "hidden by the user: it stays";
    EXPECT_EQ(project().index_of(backing), 1);
    EXPECT_EQ(layers().size(), 3u);
}

TEST_F(Composition, layers_own_name_counts_before_its_sources) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    const stage::LayerId renamed = layers().back().id;
    project().layer(renamed)->name = "Dust";
    project().layer(renamed)->flags = 0;
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, effect).error, 0);
    EXPECT_EQ(layer(renamed).flags, 0u) << "renamed by the user, so it is the user's";
    EXPECT_EQ(backings(), 2);
}

TEST_F(Composition, names_that_only_begin_alike_are_not_the_backings) {
    const stage::LayerId longer = add_named("KSTR_Backing 2");
    const stage::LayerId shorter = add_named("KSTR_Back");
    EXPECT_EQ(apply(add_adjustment()).error, 0);
    EXPECT_EQ(layer(longer).flags, stage::layer_flag::kVideoActive);
    EXPECT_EQ(layer(shorter).flags, stage::layer_flag::kVideoActive);
    EXPECT_EQ(backings(), 1);
}

TEST_F(Composition, effect_on_a_frame_over_nothing_renders_once_there_is_a_backing) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    ASSERT_NE(effect, nullptr);
    const stage::RenderResult result = flow.session.render(*effect, {});
    EXPECT_EQ(result.error, 0);
    EXPECT_FALSE(result.skipped);
}

TEST_F(Composition, backing_is_never_made_twice) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, effect).error, 0);
    EXPECT_EQ(apply(id).error, 0);
    EXPECT_EQ(apply(add_adjustment()).error, 0);
    EXPECT_EQ(backings(), 1);
}

TEST_F(Composition, backing_that_was_moved_above_goes_beneath_again) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    project().reorder_layer(layers().back().id, 0);
    EXPECT_EQ(apply(id).error, 0);
    EXPECT_EQ(backings(), 1);
    expect_backing(project(), *project().comp(comp), id);
}

TEST_F(Composition, text_layer_without_a_source_is_set_up_without_a_warning) {
    const stage::CommandResult result = apply(project().add_text_layer(comp, 0, "title"));
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.message, "");
    ASSERT_NE(effect, nullptr);
}

TEST_F(Composition, set_up_in_a_locked_project_returns_the_hosts_code_with_a_valid_record) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    ASSERT_NE(effect, nullptr);
    flow.host().options.project_locked = true;
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, effect).error, 6);
    EXPECT_EQ(flow.session.sequence_bytes(*effect), oracle::new_instance_record());
    flow.host().options.project_locked = false;
    EXPECT_EQ(flow.session.render(*effect, {}).error, 0);
}

TEST_F(Composition, set_up_with_a_failing_script_returns_its_code_with_a_valid_record) {
    const stage::LayerId id = add_adjustment();
    EXPECT_EQ(apply(id).error, 0);
    flow.host().options.scripts_fail = true;
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, effect).error, 1);
    EXPECT_EQ(flow.session.sequence_bytes(*effect), oracle::new_instance_record());
    flow.host().options.scripts_fail = false;
    project().layer(id)->separated_position = true;  // the script itself throws
    EXPECT_EQ(flow.session.send(PF_Cmd_SEQUENCE_SETUP, effect).error, 1);
}

TEST_F(Composition, layer_other_than_an_adjustment_layer_runs_no_script) {
    flow.host().options.scripts_fail = true;
    EXPECT_EQ(apply(add_solid(320, 180)).error, 0);
}

}  // namespace
}  // namespace ks::flow
