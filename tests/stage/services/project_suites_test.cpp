// Layers, comps, items and the effect's layer through the suites.
#include "stage/services/project_suite_fixture.h"

namespace stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SuiteTest, EffectLayerIsFoundAndNeighboursThroughTheComp) {
    AEGP_LayerH layer = nullptr;
    ASSERT_EQ(effect_interface().AEGP_GetEffectLayer(instance->effect_ref(), &layer), 0);
    EXPECT_EQ(layer, layer_h(scopes));
    AEGP_CompH parent = nullptr;
    ASSERT_EQ(layers().AEGP_GetLayerParentComp(layer, &parent), 0);
    A_long count = 0;
    ASSERT_EQ(layers().AEGP_GetCompNumLayers(parent, &count), 0);
    EXPECT_EQ(count, 3);
    const LayerId expected[] = {scopes, title, picture};
    for (A_long i = 0; i < count; ++i) {
        AEGP_LayerH at = nullptr;
        ASSERT_EQ(layers().AEGP_GetCompLayerByIndex(parent, i, &at), 0);
        AEGP_LayerIDVal id = 0;
        A_long index = -1;
        EXPECT_EQ(layers().AEGP_GetLayerID(at, &id), 0);
        EXPECT_EQ(id, expected[i]);
        EXPECT_EQ(layers().AEGP_GetLayerIndex(at, &index), 0);
        EXPECT_EQ(index, i);
    }
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, LayerIndexOutsideTheStackIsRefused) {
    AEGP_LayerH layer = nullptr;
    EXPECT_EQ(layers().AEGP_GetCompLayerByIndex(comp_h(), -1, &layer), A_Err_PARAMETER);
    EXPECT_EQ(layers().AEGP_GetCompLayerByIndex(comp_h(), 3, &layer), A_Err_PARAMETER);
    EXPECT_EQ(layer, nullptr);
}

TEST_F(SuiteTest, NamesComeAsUtf16InHandles) {
    host.project.layer(picture)->name = "Bild \xF0\x9F\x8E\xA8";
    AEGP_MemHandle own = nullptr;
    AEGP_MemHandle source = nullptr;
    ASSERT_EQ(layers().AEGP_GetLayerName(0, layer_h(picture), &own, &source), 0);
    EXPECT_EQ(take_text(own), u"Bild \U0001F3A8");
    EXPECT_EQ(take_text(source), u"Small solid");
    ASSERT_EQ(layers().AEGP_GetLayerName(0, layer_h(title), nullptr, &source), 0);
    EXPECT_EQ(take_text(source), u"");
    EXPECT_EQ(host.mem_handles.live_count(), 0u);
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, TextLayerHasANullItemWhoseSizeIsRefused) {
    AEGP_ItemH item = comp_h() == nullptr ? nullptr : host.refs.item(host.project, comp);
    ASSERT_EQ(layers().AEGP_GetLayerSourceItem(layer_h(title), &item), 0);
    EXPECT_EQ(item, nullptr);
    A_long width = 0;
    A_long height = 0;
    EXPECT_EQ(items().AEGP_GetItemDimensions(item, &width, &height), A_Err_PARAMETER);
    EXPECT_THAT(checks(), IsEmpty()) << "the null item is a host's answer, no fault";
}

TEST_F(SuiteTest, ItemsTellTheirSizeTypeAndName) {
    AEGP_ItemH item = nullptr;
    A_long width = 0;
    A_long height = 0;
    AEGP_ItemType type = 0;
    ASSERT_EQ(layers().AEGP_GetLayerSourceItem(layer_h(picture), &item), 0);
    ASSERT_EQ(items().AEGP_GetItemDimensions(item, &width, &height), 0);
    EXPECT_EQ(width, 32);
    EXPECT_EQ(height, 16);
    EXPECT_EQ(items().AEGP_GetItemType(item, &type), 0);
    EXPECT_EQ(type, AEGP_ItemType_FOOTAGE);
    ASSERT_EQ(comps().AEGP_GetItemFromComp(comp_h(), &item), 0);
    ASSERT_EQ(items().AEGP_GetItemDimensions(item, &width, &height), 0);
    EXPECT_EQ(width, 64);
    EXPECT_EQ(height, 48);
    EXPECT_EQ(items().AEGP_GetItemType(item, &type), 0);
    EXPECT_EQ(type, AEGP_ItemType_COMP);
    AEGP_MemHandle name = nullptr;
    ASSERT_EQ(items().AEGP_GetItemName(0, item, &name), 0);
    EXPECT_EQ(take_text(name), u"Comp");
    AEGP_CompH back = nullptr;
    ASSERT_EQ(comps().AEGP_GetCompFromItem(item, &back), 0);
    EXPECT_EQ(back, comp_h());
}

TEST_F(SuiteTest, ItemThatIsNoCompGivesANullComp) {
    AEGP_CompH none = comp_h();
    EXPECT_EQ(comps().AEGP_GetCompFromItem(host.refs.item(host.project, solid), &none), 0);
    EXPECT_EQ(none, nullptr);
}

TEST_F(SuiteTest, DurationAndRateFollowTheFrameRate) {
    host.project.item(comp)->rate_num = 30000;
    host.project.item(comp)->rate_den = 1001;
    A_Time time{};
    A_FpLong rate = 0;
    ASSERT_EQ(items().AEGP_GetItemDuration(host.refs.item(host.project, comp), &time), 0);
    EXPECT_EQ(time.value, 50 * 1001);
    EXPECT_EQ(time.scale, 30000u);
    ASSERT_EQ(comps().AEGP_GetCompFramerate(comp_h(), &rate), 0);
    EXPECT_DOUBLE_EQ(rate, 30000.0 / 1001);
    ASSERT_EQ(comps().AEGP_GetCompFrameDuration(comp_h(), &time), 0);
    EXPECT_EQ(time.value, 1001);
    EXPECT_EQ(time.scale, 30000u);
}

TEST_F(SuiteTest, LayerFlagsAreReadAndSetOneAtATime) {
    AEGP_LayerFlags flags = 0;
    ASSERT_EQ(layers().AEGP_GetLayerFlags(layer_h(scopes), &flags), 0);
    EXPECT_EQ(flags, AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_ADJUSTMENT_LAYER);
    ASSERT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_GUIDE_LAYER, 1), 0);
    EXPECT_TRUE(host.project.layer(scopes)->has_flag(layer_flag::kGuide));
    ASSERT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_GUIDE_LAYER, 0), 0);
    EXPECT_FALSE(host.project.layer(scopes)->has_flag(layer_flag::kGuide));
    for (const AEGP_LayerFlags bad : {0, 3, -1, 1 << 22, INT32_MIN}) {
        EXPECT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), bad, 1), A_Err_PARAMETER) << bad;
    }
    EXPECT_THAT(host.undo.steps(), ElementsAre("Layer Switch", "Layer Switch"));
}

TEST_F(SuiteTest, VideoSwitchAndObjectTypeAreTold) {
    A_Boolean on = 0;
    AEGP_ObjectType type = AEGP_ObjectType_NONE;
    ASSERT_EQ(layers().AEGP_IsLayerVideoReallyOn(layer_h(picture), &on), 0);
    EXPECT_EQ(on, 1);
    host.project.layer(picture)->flags = 0;
    ASSERT_EQ(layers().AEGP_IsLayerVideoReallyOn(layer_h(picture), &on), 0);
    EXPECT_EQ(on, 0);
    ASSERT_EQ(layers().AEGP_GetLayerObjectType(layer_h(title), &type), 0);
    EXPECT_EQ(type, AEGP_ObjectType_TEXT);
}

constexpr AEGP_ColorVal kBlack{1, 0, 0, 0};

TEST_F(SuiteTest, NewSolidStandsOnTopUnselectedAndMakesLayersStale) {
    const AEGP_LayerH old = layer_h(scopes);
    const AEGP_CompH comp_before = comp_h();
    AEGP_LayerH backing = nullptr;
    ASSERT_EQ(comps().AEGP_CreateSolidInComp(u"KSTR_Backing", 64, 48, &kBlack, comp_before, nullptr,
                                             &backing),
              0);
    const Layer &layer = host.project.item(comp)->layers[0];
    EXPECT_EQ(layer.name, "KSTR_Backing");
    EXPECT_FALSE(layer.selected);
    EXPECT_EQ(backing, layer_h(layer.id));
    EXPECT_EQ(host.project.item(layer.source)->width, 64);
    EXPECT_EQ(host.project.item(layer.source)->frames, 50);
    EXPECT_EQ(host.project.index_of(scopes), 1);

    A_long index = 0;
    EXPECT_EQ(layers().AEGP_GetLayerIndex(old, &index), A_Err_PARAMETER);
    EXPECT_THAT(checks(), ElementsAre("stale.layer"));
    EXPECT_EQ(layers().AEGP_GetLayerIndex(layer_h(scopes), &index), 0);
    EXPECT_EQ(layers().AEGP_GetCompNumLayers(comp_before, &index), 0) << "comps are as many";
    EXPECT_EQ(index, 4);
}

TEST_F(SuiteTest, ReorderedLayerKeepsItsReference) {
    const AEGP_LayerH layer = layer_h(scopes);
    ASSERT_EQ(layers().AEGP_ReorderLayer(layer, -1), 0);
    EXPECT_EQ(host.project.index_of(scopes), 2);
    ASSERT_EQ(layers().AEGP_ReorderLayer(layer, 1), 0);
    EXPECT_EQ(host.project.index_of(scopes), 1);
    EXPECT_EQ(layers().AEGP_ReorderLayer(layer, 3), A_Err_PARAMETER);
    EXPECT_EQ(layers().AEGP_ReorderLayer(layer, -2), A_Err_PARAMETER);
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, SolidsOfImpossibleSizeAreRefused) {
    AEGP_LayerH layer = nullptr;
    const auto &suite = comps();
    EXPECT_EQ(suite.AEGP_CreateSolidInComp(u"x", 0, 48, &kBlack, comp_h(), nullptr, &layer),
              A_Err_PARAMETER);
    EXPECT_EQ(suite.AEGP_CreateSolidInComp(u"x", 64, 30001, &kBlack, comp_h(), nullptr, &layer),
              A_Err_PARAMETER);
    EXPECT_EQ(suite.AEGP_CreateSolidInComp(nullptr, 64, 48, &kBlack, comp_h(), nullptr, &layer),
              A_Err_PARAMETER);
    EXPECT_EQ(host.project.item(comp)->layers.size(), 3u);
    EXPECT_THAT(host.undo.steps(), IsEmpty());
}

TEST_F(SuiteTest, SolidLastsAsLongAsAskedFor) {
    AEGP_LayerH layer = nullptr;
    const A_Time second{1, 1};
    const A_Time invalid{5, 0};
    ASSERT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), &second, &layer), 0);
    EXPECT_EQ(host.project.items().back()->frames, 25);
    ASSERT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), &invalid, &layer), 0);
    EXPECT_EQ(host.project.items().back()->frames, 50);
}

TEST_F(SuiteTest, LockedProjectRefusesEveryChangeWithSix) {
    host.options.project_locked = true;
    AEGP_LayerH layer = nullptr;
    const AEGP_StreamRefH stream = new_stream(new_effect(), 1);
    EXPECT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_LOCKED, 1),
              A_Err_CONST_PROJECT_MODIFICATION);
    EXPECT_EQ(layers().AEGP_ReorderLayer(layer_h(scopes), 0), A_Err_CONST_PROJECT_MODIFICATION);
    EXPECT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer),
              A_Err_CONST_PROJECT_MODIFICATION);
    EXPECT_EQ(dynamic().AEGP_SetDynamicStreamFlag(stream, AEGP_DynStreamFlag_HIDDEN, 0, 1),
              A_Err_CONST_PROJECT_MODIFICATION);
    EXPECT_FALSE(host.project.layer(scopes)->has_flag(layer_flag::kLocked));
    EXPECT_EQ(host.project.item(comp)->layers.size(), 3u);
}

TEST_F(SuiteTest, LaterVersionsAnswerAlike) {
    A_long count = 0;
    const auto &layers8 = get<AEGP_LayerSuite8>(kAEGPLayerSuite, 14);
    const auto &layers9 = get<AEGP_LayerSuite9>(kAEGPLayerSuite, 15);
    EXPECT_EQ(layers8.AEGP_GetCompNumLayers(comp_h(), &count), 0);
    EXPECT_EQ(layers9.AEGP_GetCompNumLayers(comp_h(), &count), 0);
    AEGP_LayerH layer = nullptr;
    const auto &comps10 = get<AEGP_CompSuite10>(kAEGPCompSuite, 21);
    const auto &comps11 = get<AEGP_CompSuite11>(kAEGPCompSuite, 25);
    const auto &comps12 = get<AEGP_CompSuite12>(kAEGPCompSuite, 26);
    EXPECT_EQ(comps10.AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer), 0);
    EXPECT_EQ(comps11.AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer), 0);
    EXPECT_EQ(comps12.AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer), 0);
    EXPECT_EQ(host.project.item(comp)->layers.size(), 6u);
    A_long height = 0;
    const auto &items9 = get<AEGP_ItemSuite9>(kAEGPItemSuite, 14);
    EXPECT_EQ(items9.AEGP_GetItemDimensions(host.refs.item(host.project, comp), &count, &height),
              0);
    EXPECT_EQ(height, 48);
}

TEST_F(SuiteTest, UnofferedSlotIsAFindingAndAnError) {
    A_Boolean is = 0;
    EXPECT_EQ(layers().AEGP_IsLayer3D(layer_h(scopes), &is), PF_Err_BAD_CALLBACK_PARAM);
    ASSERT_THAT(checks(), ElementsAre("suite.unimplemented"));
    EXPECT_THAT(host.strict.violations()[0].text,
                testing::HasSubstr("AEGP_LayerSuite7.AEGP_IsLayer3D"));
}

TEST_F(SuiteTest, ForeignReferencesAreFindings) {
    A_long index = 0;
    int elsewhere = 0;
    EXPECT_EQ(layers().AEGP_GetLayerIndex(reinterpret_cast<AEGP_LayerH>(&elsewhere), &index),
              A_Err_PARAMETER);
    EXPECT_EQ(layers().AEGP_GetLayerIndex(reinterpret_cast<AEGP_LayerH>(comp_h()), &index),
              A_Err_PARAMETER);
    AEGP_LayerH layer = nullptr;
    EXPECT_EQ(
        effect_interface().AEGP_GetEffectLayer(reinterpret_cast<PF_ProgPtr>(&elsewhere), &layer),
        A_Err_PARAMETER);
    EXPECT_THAT(checks(), ElementsAre("ref.unknown", "ref.unknown", "ref.unknown"));
}

TEST_F(SuiteTest, InjectedFailureComesBeforeAnyEffect) {
    host.faults.arm_name("AEGP Layer Suite.AEGP_SetLayerFlag");
    EXPECT_EQ(layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_LOCKED, 1),
              kInjectedError);
    EXPECT_FALSE(host.project.layer(scopes)->has_flag(layer_flag::kLocked));
    host.faults.arm_name("AEGP Comp Suite.AEGP_CreateSolidInComp");
    AEGP_LayerH layer = nullptr;
    EXPECT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer),
              kInjectedError);
    EXPECT_EQ(host.project.item(comp)->layers.size(), 3u);
}

TEST_F(SuiteTest, CallsAreTraced) {
    host.trace.enable(true);
    layers().AEGP_SetLayerFlag(layer_h(scopes), AEGP_LayerFlag_LOCKED, 1);
    ASSERT_EQ(host.trace.entries().size(), 1u);
    const TraceEntry &entry = host.trace.entries()[0];
    EXPECT_EQ(entry.call, "AEGP Layer Suite.AEGP_SetLayerFlag");
    EXPECT_EQ(entry.arguments, "\"Scopes\", 32, on");
    EXPECT_EQ(entry.result, "0");
}

TEST_F(SuiteTest, UndoneSolidIsGoneAgain) {
    AEGP_LayerH layer = nullptr;
    ASSERT_EQ(comps().AEGP_CreateSolidInComp(u"x", 9, 9, &kBlack, comp_h(), nullptr, &layer), 0);
    EXPECT_TRUE(host.undo.undo());
    EXPECT_EQ(host.project.item(comp)->layers.size(), 3u);
    A_long index = 0;
    EXPECT_EQ(layers().AEGP_GetLayerIndex(layer, &index), A_Err_PARAMETER);
}

}  // namespace
}  // namespace stage
