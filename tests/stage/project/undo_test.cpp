#include "stage/project/undo.h"

#include <gmock/gmock.h>

namespace stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct UndoTest : testing::Test {
    Project project;
    Undo undo{project};
    ItemId comp = project.add_comp("Comp", 64, 64, 1, 1, 1);
    LayerId layer = project.add_text_layer(comp, 0, "Title");

    void rename(const std::string &name) {
        undo.before_change("Rename");
        project.layer(layer)->name = name;
    }
    std::string name() const { return project.layer(layer)->name; }
};

TEST_F(UndoTest, EachChangeIsAStep) {
    rename("one");
    rename("two");
    EXPECT_THAT(undo.steps(), ElementsAre("Rename", "Rename"));
    EXPECT_TRUE(undo.undo());
    EXPECT_EQ(name(), "one");
    EXPECT_TRUE(undo.undo());
    EXPECT_EQ(name(), "Title");
    EXPECT_FALSE(undo.undo());
}

TEST_F(UndoTest, RedoGoesForwardUntilAnotherChange) {
    rename("one");
    rename("two");
    undo.undo();
    undo.undo();
    EXPECT_TRUE(undo.redo());
    EXPECT_EQ(name(), "one");
    rename("other");
    EXPECT_FALSE(undo.redo());
    EXPECT_EQ(name(), "other");
}

TEST_F(UndoTest, GroupMakesOneStepUnderTheOutermostName) {
    undo.begin_group("Apply effect");
    rename("one");
    undo.begin_group("inner");
    rename("two");
    EXPECT_TRUE(undo.end_group());
    EXPECT_FALSE(undo.undo()) << "a group is open";
    EXPECT_TRUE(undo.end_group());
    EXPECT_THAT(undo.steps(), ElementsAre("Apply effect"));
    EXPECT_TRUE(undo.undo());
    EXPECT_EQ(name(), "Title");
}

TEST_F(UndoTest, TwoGroupsAreTwoSteps) {
    for (const char *group : {"first", "second"}) {
        undo.begin_group(group);
        rename(group);
        undo.end_group();
    }
    EXPECT_THAT(undo.steps(), ElementsAre("first", "second"));
}

TEST_F(UndoTest, EmptyGroupLeavesNothingAndUnbalancedEndIsRefused) {
    undo.begin_group("nothing");
    EXPECT_EQ(undo.open_groups(), 1);
    EXPECT_TRUE(undo.end_group());
    EXPECT_THAT(undo.steps(), IsEmpty());
    EXPECT_FALSE(undo.end_group());
    EXPECT_EQ(undo.open_groups(), 0);
}

TEST_F(UndoTest, SequenceDataIsNoPartOfAStep) {
    project.layer(layer)->effects.push_back({"effect", {}, {1, 2, 3}, 7});
    rename("one");
    project.layer(layer)->effects[0].flat_sequence = {9};
    undo.undo();
    EXPECT_EQ(name(), "Title");
    EXPECT_THAT(project.layer(layer)->effects[0].flat_sequence, ElementsAre(9));
}

TEST_F(UndoTest, ParameterValuesAreUndone) {
    EffectState effect;
    effect.match_name = "effect";
    effect.streams.resize(2);
    project.layer(layer)->effects.push_back(effect);
    undo.before_change("Value");
    project.layer(layer)->effects[0].streams[1].value.number = 5;
    undo.undo();
    EXPECT_EQ(project.layer(layer)->effects[0].streams[1].value.number, 0);
}

TEST_F(UndoTest, UndoneRemovalBringsBackTheSameLayer) {
    undo.before_change("Delete");
    project.remove_layer(layer);
    EXPECT_EQ(project.layer(layer), nullptr);
    undo.undo();
    EXPECT_EQ(name(), "Title");
}

TEST_F(UndoTest, OldStepsAreDropped) {
    for (std::size_t i = 0; i < Undo::kMaxSteps + 5; ++i) rename(std::to_string(i));
    EXPECT_EQ(undo.steps().size(), Undo::kMaxSteps);
    while (undo.undo()) {
    }
    EXPECT_EQ(name(), "4");
}

}  // namespace
}  // namespace stage
