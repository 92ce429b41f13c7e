// On the render thread project changes, streams, scripts and undo groups fail with 5.
#include "stage/services/project_suite_fixture.h"

namespace stage {
namespace {

using testing::Each;
using testing::IsEmpty;

constexpr AEGP_ColorVal kBlack{1, 0, 0, 0};

TEST_F(SuiteTest, RenderThreadMustNotChangeTheProject) {
    const ScopedThreadRole render(ThreadRole::kRender);
    AEGP_LayerH layer = nullptr;
    EXPECT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_LOCKED, 1),
              A_Err_WRONG_THREAD);
    EXPECT_EQ(layers().AEGP_ReorderLayer(layer_h(scopes), 1), A_Err_WRONG_THREAD);
    EXPECT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer),
              A_Err_WRONG_THREAD);
    EXPECT_EQ(utility().AEGP_ExecuteScript(0, "1", 0, nullptr, nullptr), A_Err_WRONG_THREAD);
    EXPECT_EQ(utility().AEGP_StartUndoGroup("x"), A_Err_WRONG_THREAD);
    EXPECT_EQ(host.project.item(comp)->layers.size(), 3u);
    EXPECT_FALSE(host.project.layer(scopes)->has_flag(layer_flag::kLocked));
    EXPECT_EQ(host.project.index_of(scopes), 0);
    EXPECT_EQ(host.undo.open_groups(), 0);
    EXPECT_THAT(checks(), Each("thread.render"));
    EXPECT_EQ(checks().size(), 5u);
}

TEST_F(SuiteTest, RenderThreadMustNotFetchStreams) {
    const AEGP_EffectRefH effect = new_effect();
    const ScopedThreadRole render(ThreadRole::kRender);
    AEGP_StreamRefH stream = nullptr;
    EXPECT_EQ(streams().AEGP_GetNewEffectStreamByIndex(0, effect, 1, &stream), A_Err_WRONG_THREAD);
    EXPECT_EQ(streams().AEGP_GetNewLayerStream(0, layer_h(scopes), 1, &stream), A_Err_WRONG_THREAD);
    EXPECT_EQ(stream, nullptr);
    EXPECT_THAT(checks(), Each("thread.render"));
}

TEST_F(SuiteTest, RenderThreadMayLook) {
    const ScopedThreadRole render(ThreadRole::kRender);
    AEGP_LayerFlags flags = 0;
    AEGP_LayerH layer = nullptr;
    EXPECT_EQ(effect_interface().AEGP_GetEffectLayer(instance->effect_ref(), &layer), 0);
    EXPECT_EQ(layers().AEGP_GetLayerFlags(layer, &flags), 0);
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, WorkersMustNotCallAtAll) {
    const ScopedThreadRole worker(ThreadRole::kWorker);
    AEGP_LayerFlags flags = 0;
    layers().AEGP_GetLayerFlags(layer_h(scopes), &flags);
    EXPECT_THAT(checks(), testing::ElementsAre("thread.worker"));
}

}  // namespace
}  // namespace stage
