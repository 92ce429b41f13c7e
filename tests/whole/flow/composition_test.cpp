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
        comp = project().add_comp("comp", 320, 180, 1, 1, 1);
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
    EXPECT_TRUE(backing.has_flag(stage::layer_flag::kLocked));
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
