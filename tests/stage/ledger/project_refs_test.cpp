#include "stage/ledger/project_refs.h"

#include <gtest/gtest.h>

namespace stage {
namespace {

struct RefsTest : testing::Test {
    Project project;
    ProjectRefs refs;
    ItemId comp = project.add_comp("Comp", 8, 8, 1, 1, 1);
    LayerId layer = project.add_text_layer(comp, 0, "Layer");
    LayerId other = project.add_text_layer(comp, 0, "Other");
};

TEST_F(RefsTest, SameObjectSameHandle) {
    EXPECT_EQ(refs.layer(project, layer), refs.layer(project, layer));
    EXPECT_NE(refs.layer(project, layer), refs.layer(project, other));
    EXPECT_EQ(refs.layer(project, 0), nullptr);
    EXPECT_EQ(refs.find(project, refs.layer(project, layer)).id, layer);
}

TEST_F(RefsTest, CompAndItsItemAreDifferentReferences) {
    const AEGP_CompH as_comp = refs.comp(project, comp);
    const AEGP_ItemH as_item = refs.item(project, comp);
    EXPECT_NE(static_cast<void *>(as_comp), static_cast<void *>(as_item));
    EXPECT_EQ(refs.find(project, reinterpret_cast<AEGP_ItemH>(as_comp)).state, RefState::kUnknown);
}

TEST_F(RefsTest, LayerReferencesDieWithTheNumberOfLayersAndNewOnesDiffer) {
    const AEGP_LayerH before = refs.layer(project, layer);
    const AEGP_CompH comp_before = refs.comp(project, comp);
    const AEGP_ItemH item_before = refs.item(project, comp);
    project.remove_layer(other);
    EXPECT_EQ(refs.find(project, before).state, RefState::kStale);
    const AEGP_LayerH after = refs.layer(project, layer);
    EXPECT_NE(after, before);
    EXPECT_EQ(refs.find(project, after).state, RefState::kGood);
    EXPECT_EQ(refs.find(project, before).state, RefState::kStale);
    EXPECT_EQ(refs.find(project, comp_before).state, RefState::kGood);
    EXPECT_EQ(refs.find(project, item_before).state, RefState::kGood);
}

TEST_F(RefsTest, ItemReferencesDieWithTheNumberOfItems) {
    const AEGP_ItemH item = refs.item(project, comp);
    const AEGP_CompH as_comp = refs.comp(project, comp);
    project.add_solid_item("Solid", 8, 8, {});
    EXPECT_EQ(refs.find(project, item).state, RefState::kStale);
    EXPECT_EQ(refs.find(project, as_comp).state, RefState::kGood);
    project.add_comp("Second", 8, 8, 1, 1, 1);
    EXPECT_EQ(refs.find(project, as_comp).state, RefState::kStale);
}

TEST_F(RefsTest, RestoreMakesEverythingStale) {
    const AEGP_LayerH handle = refs.layer(project, layer);
    project.restore(project.data());
    EXPECT_EQ(refs.find(project, handle).state, RefState::kStale);
}

TEST_F(RefsTest, DisposedHandlesStayDeadUntilTheCommandEnds) {
    const AEGP_EffectRefH effect = refs.new_effect({layer, 0}, "A");
    const AEGP_StreamRefH stream = refs.new_stream({}, effect, "A");
    EXPECT_EQ(refs.streams_of(effect), 1);
    EXPECT_TRUE(refs.dispose(stream));
    EXPECT_EQ(refs.streams_of(effect), 0);
    EXPECT_FALSE(refs.dispose(stream));
    EXPECT_EQ(refs.stream(stream), nullptr);
    EXPECT_NE(refs.new_stream({}, effect, "A"), stream);
    EXPECT_TRUE(refs.dispose(effect));
    EXPECT_EQ(refs.effect(effect), nullptr);
}

}  // namespace
}  // namespace stage
