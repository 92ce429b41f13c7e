#include "stage/project/project.h"

#include <gmock/gmock.h>

namespace stage {
namespace {

using testing::ElementsAre;

std::vector<std::string> names(const Project &project, ItemId comp) {
    std::vector<std::string> result;
    for (const Layer &layer : project.item(comp)->layers) result.push_back(layer.name);
    return result;
}

/// A comp of 200x100 with layers A (top), B, C over one solid.
struct ThreeLayers : testing::Test {
    Project project;
    ItemId comp = project.add_comp("Comp", 200, 100, 1, 1, 10);
    ItemId solid = project.add_solid_item("Solid", 20, 10, {1, 0.5, 0.5, 0.5});
    LayerId c = project.add_layer(comp, solid, 0, "C");
    LayerId b = project.add_layer(comp, solid, 0, "B");
    LayerId a = project.add_layer(comp, solid, 0, "A");
};

TEST_F(ThreeLayers, NewLayersStandAtTheIndexAskedFor) {
    EXPECT_THAT(names(project, comp), ElementsAre("A", "B", "C"));
    project.add_layer(comp, solid, 1, "X");
    project.add_layer(comp, solid, -1, "Y");
    project.add_layer(comp, solid, 99, "Z");
    EXPECT_THAT(names(project, comp), ElementsAre("A", "X", "B", "C", "Y", "Z"));
}

TEST_F(ThreeLayers, NewLayerIsCentredVisibleAndNotSelected) {
    const Layer &layer = *project.layer(a);
    EXPECT_EQ(layer.position_x, 100);
    EXPECT_EQ(layer.position_y, 50);
    EXPECT_EQ(layer.scale, 100);
    EXPECT_EQ(layer.opacity, 100);
    EXPECT_EQ(layer.flags, layer_flag::kVideoActive);
    EXPECT_FALSE(layer.selected);
}

TEST_F(ThreeLayers, ReorderMovesDownUpAndToTheBottom) {
    project.reorder_layer(a, 1);
    EXPECT_THAT(names(project, comp), ElementsAre("B", "A", "C"));
    project.reorder_layer(c, 0);
    EXPECT_THAT(names(project, comp), ElementsAre("C", "B", "A"));
    project.reorder_layer(c, -1);
    EXPECT_THAT(names(project, comp), ElementsAre("B", "A", "C"));
    project.reorder_layer(b, 7);
    EXPECT_THAT(names(project, comp), ElementsAre("A", "C", "B"));
    project.reorder_layer(c, 1);
    EXPECT_THAT(names(project, comp), ElementsAre("A", "C", "B"));
}

TEST_F(ThreeLayers, IndexAndCompAreFound) {
    EXPECT_EQ(project.index_of(a), 0);
    EXPECT_EQ(project.index_of(c), 2);
    EXPECT_EQ(project.index_of(12345), -1);
    EXPECT_EQ(project.comp_of(b)->id, comp);
    EXPECT_EQ(project.comp_of(12345), nullptr);
    EXPECT_EQ(project.comp(solid), nullptr);
    EXPECT_EQ(project.item(0), nullptr);
    EXPECT_EQ(project.layer(0), nullptr);
}

TEST_F(ThreeLayers, IdsAreNeverReused) {
    project.remove_layer(a);
    const LayerId next = project.add_layer(comp, solid, 0, "A");
    EXPECT_GT(next, a);
    EXPECT_EQ(project.layer(a), nullptr);
}

TEST_F(ThreeLayers, StructureVersionCountsNumbersButNotOrder) {
    const std::uint64_t before = project.structure_version();
    project.reorder_layer(a, 2);
    EXPECT_EQ(project.structure_version(), before);
    project.remove_layer(a);
    EXPECT_EQ(project.structure_version(), before + 1);
    project.add_solid_item("S", 1, 1, {});
    EXPECT_EQ(project.structure_version(), before + 2);
    project.add_text_layer(comp, 0, "T");
    EXPECT_EQ(project.structure_version(), before + 3);
}

TEST_F(ThreeLayers, RemovedLayerLeavesTheOthers) {
    project.remove_layer(b);
    EXPECT_THAT(names(project, comp), ElementsAre("A", "C"));
    EXPECT_NE(project.item(solid), nullptr);
    EXPECT_THROW(project.remove_layer(b), ProjectError);
    EXPECT_THROW(project.reorder_layer(b, 0), ProjectError);
}

TEST_F(ThreeLayers, AdjustmentLayerHasACompSizedSource) {
    const LayerId id = project.add_adjustment_layer(comp, 0, "Scopes");
    const Layer &layer = *project.layer(id);
    EXPECT_TRUE(layer.has_flag(layer_flag::kAdjustment));
    const Item &source = *project.item(layer.source);
    EXPECT_EQ(source.kind, ItemKind::kSolid);
    EXPECT_EQ(source.width, 200);
    EXPECT_EQ(source.height, 100);
}

TEST_F(ThreeLayers, TextLayerHasNoSource) {
    const Layer &layer = *project.layer(project.add_text_layer(comp, 0, "Title"));
    EXPECT_EQ(layer.kind, LayerKind::kText);
    EXPECT_EQ(layer.source, 0);
}

TEST_F(ThreeLayers, RestoreKeepsUsedIdsAndRaisesTheVersion) {
    const ProjectData before = project.data();
    const LayerId later = project.add_layer(comp, solid, 0, "later");
    const std::uint64_t version = project.structure_version();
    project.restore(before);
    EXPECT_GT(project.structure_version(), version);
    EXPECT_EQ(project.layer(later), nullptr);
    EXPECT_THAT(names(project, comp), ElementsAre("A", "B", "C"));
    EXPECT_GT(project.add_layer(comp, solid, 0, "again"), later);
}

TEST(Project, FirstCompBecomesActive) {
    Project project;
    EXPECT_EQ(project.active_comp, 0);
    const ItemId first = project.add_comp("One", 10, 10, 1, 1, 1);
    project.add_comp("Two", 10, 10, 1, 1, 1);
    EXPECT_EQ(project.active_comp, first);
}

TEST(Project, RefusesSizesAspectsAndDurationsOutOfRange) {
    Project project;
    EXPECT_THROW(project.add_comp("C", 0, 10, 1, 1, 1), ProjectError);
    EXPECT_THROW(project.add_comp("C", 10, kMaxPictureSide + 1, 1, 1, 1), ProjectError);
    EXPECT_THROW(project.add_comp("C", 10, 10, 0, 1, 1), ProjectError);
    EXPECT_THROW(project.add_comp("C", 10, 10, 1, -1, 1), ProjectError);
    EXPECT_THROW(project.add_comp("C", 10, 10, 1, 1, 0), ProjectError);
    EXPECT_THROW(project.add_footage("F", -1, 10, 1, 1, 1, {}), ProjectError);
    EXPECT_THROW(project.add_solid_item("S", 10, 0, {}), ProjectError);
    EXPECT_TRUE(project.items().empty());
}

TEST(Project, RefusesLayersWithoutCompOrSource) {
    Project project;
    const ItemId comp = project.add_comp("C", 10, 10, 1, 1, 1);
    const ItemId solid = project.add_solid_item("S", 10, 10, {});
    EXPECT_THROW(project.add_layer(solid, comp, 0, "x"), ProjectError);
    EXPECT_THROW(project.add_layer(99, solid, 0, "x"), ProjectError);
    EXPECT_THROW(project.add_layer(comp, 99, 0, "x"), ProjectError);
    EXPECT_THROW(project.add_text_layer(99, 0, "x"), ProjectError);
}

TEST(Project, CompCannotContainItself) {
    Project project;
    const ItemId outer = project.add_comp("Outer", 10, 10, 1, 1, 1);
    const ItemId middle = project.add_comp("Middle", 10, 10, 1, 1, 1);
    const ItemId inner = project.add_comp("Inner", 10, 10, 1, 1, 1);
    project.add_layer(outer, middle, 0, "Middle");
    project.add_layer(middle, inner, 0, "Inner");
    EXPECT_THROW(project.add_layer(outer, outer, 0, "x"), ProjectError);
    EXPECT_THROW(project.add_layer(inner, outer, 0, "x"), ProjectError);
    EXPECT_NO_THROW(project.add_layer(outer, inner, 0, "x"));
}

EffectStream stream(int id, const std::string &name, double number, bool hidden = false) {
    EffectStream result;
    result.id = id;
    result.name = name;
    result.value.number = number;
    result.hidden = hidden;
    return result;
}

TEST(MatchStreams, ValuesFollowTheIdAcrossReorderingAndRenaming) {
    const std::vector<EffectStream> saved = {stream(7, "Old name", 70, true), stream(3, "Gone", 1),
                                             stream(0, "Group", 5, true)};
    const std::vector<EffectStream> current = {stream(0, "Group", 0), stream(9, "Gone", 90),
                                               stream(7, "New name", 0)};
    const std::vector<EffectStream> matched = match_streams(saved, current);
    EXPECT_THAT(matched, ElementsAre(stream(0, "Group", 5, true), stream(9, "Gone", 90),
                                     stream(7, "New name", 70, true)));
}

}  // namespace
}  // namespace stage
