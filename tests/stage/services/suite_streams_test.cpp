// Streams, effect references and memory handles: values, flags, the ledgers.
#include "stage/services/project_suite_fixture.h"

namespace stage {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr AEGP_LayerStream kPosition = 1;
constexpr AEGP_LayerStream kScale = 2;
constexpr AEGP_LayerStream kOpacity = 4;

TEST_F(SuiteTest, HiddenFlagIsSetAndReadOnEffectStreams) {
    const AEGP_EffectRefH effect = new_effect();
    const AEGP_StreamRefH stream = new_stream(effect, 3);
    AEGP_DynStreamFlags flags = 99;
    ASSERT_EQ(dynamic().AEGP_GetDynamicStreamFlags(stream, &flags), 0);
    EXPECT_EQ(flags, 0u);
    ASSERT_EQ(dynamic().AEGP_SetDynamicStreamFlag(stream, AEGP_DynStreamFlag_HIDDEN, 0, 1), 0);
    EXPECT_TRUE(host.project.layer(scopes)->effects[0].streams[3].hidden);
    ASSERT_EQ(dynamic().AEGP_GetDynamicStreamFlags(stream, &flags), 0);
    EXPECT_EQ(flags, AEGP_DynStreamFlag_HIDDEN);
    EXPECT_THAT(host.undo.steps(), IsEmpty()) << "not undoable";
    ASSERT_EQ(dynamic().AEGP_SetDynamicStreamFlag(stream, AEGP_DynStreamFlag_HIDDEN, 1, 0), 0);
    EXPECT_FALSE(host.project.layer(scopes)->effects[0].streams[3].hidden);
    EXPECT_EQ(host.undo.steps().size(), 1u);
    EXPECT_EQ(dynamic().AEGP_SetDynamicStreamFlag(stream, AEGP_DynStreamFlag_DISABLED, 0, 1),
              A_Err_PARAMETER);
}

TEST_F(SuiteTest, StreamsOutsideTheParametersAreRefused) {
    const AEGP_EffectRefH effect = new_effect();
    A_long count = 0;
    ASSERT_EQ(streams().AEGP_GetEffectNumParamStreams(effect, &count), 0);
    EXPECT_EQ(count, 5);
    AEGP_StreamRefH stream = nullptr;
    for (const int bad : {-1, 5, INT32_MAX}) {
        EXPECT_EQ(streams().AEGP_GetNewEffectStreamByIndex(0, effect, bad, &stream),
                  A_Err_PARAMETER);
        EXPECT_EQ(stream, nullptr);
    }
}

TEST_F(SuiteTest, BalancedUseLeavesNoLeak) {
    const AEGP_EffectRefH effect = new_effect();
    const AEGP_StreamRefH stream = new_stream(effect, 2);
    EXPECT_THAT(host.refs.leaks(), testing::SizeIs(2));
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), 0);
    EXPECT_EQ(effects().AEGP_DisposeEffect(effect), 0);
    EXPECT_THAT(host.refs.leaks(), IsEmpty());
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, LeaksTellWhatAndFromWhere) {
    host.trace.set_command("PF_Cmd_UPDATE_PARAMS_UI");
    new_stream(new_effect(), 2);
    EXPECT_THAT(host.refs.leaks(),
                ElementsAre("effect reference from PF_Cmd_UPDATE_PARAMS_UI",
                            "stream of parameter 2 from PF_Cmd_UPDATE_PARAMS_UI"));
    host.refs.clear_command();
    EXPECT_THAT(host.refs.leaks(), IsEmpty());
}

TEST_F(SuiteTest, DoubleDisposalsAreFindings) {
    const AEGP_EffectRefH effect = new_effect();
    const AEGP_StreamRefH stream = new_stream(effect, 2);
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), 0);
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), A_Err_PARAMETER);
    EXPECT_EQ(effects().AEGP_DisposeEffect(effect), 0);
    EXPECT_EQ(effects().AEGP_DisposeEffect(effect), A_Err_PARAMETER);
    EXPECT_THAT(checks(), ElementsAre("ref.unknown", "ref.unknown"));
}

TEST_F(SuiteTest, EffectDisposedBeforeItsStreamsIsAFinding) {
    const AEGP_EffectRefH effect = new_effect();
    const AEGP_StreamRefH stream = new_stream(effect, 2);
    EXPECT_EQ(effects().AEGP_DisposeEffect(effect), 0);
    EXPECT_THAT(checks(), ElementsAre("effect.streams_left"));
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), 0);
    EXPECT_THAT(host.refs.leaks(), IsEmpty());
}

TEST_F(SuiteTest, InjectedFailureOfADisposalStillDisposes) {
    const AEGP_StreamRefH stream = new_stream(new_effect(), 2);
    host.faults.arm_name("AEGP Stream Suite.AEGP_DisposeStream");
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), kInjectedError);
    EXPECT_THAT(host.refs.leaks(), testing::SizeIs(1)) << "only the effect reference";
}

TEST_F(SuiteTest, StreamOfARemovedEffectIsStaleButDisposable) {
    const AEGP_StreamRefH stream = new_stream(new_effect(), 2);
    host.project.layer(scopes)->effects.clear();
    AEGP_DynStreamFlags flags = 0;
    EXPECT_EQ(dynamic().AEGP_GetDynamicStreamFlags(stream, &flags), A_Err_PARAMETER);
    EXPECT_THAT(checks(), ElementsAre("stale.stream"));
    EXPECT_EQ(streams().AEGP_DisposeStream(stream), 0);
}

TEST_F(SuiteTest, LayerStreamsGiveTheLayersGeometry) {
    Layer &layer = *host.project.layer(picture);
    layer.position_x = 10.5;
    layer.position_y = -3;
    layer.scale = 50;
    layer.opacity = 75;
    AEGP_StreamRefH stream = nullptr;
    AEGP_StreamValue2 value{};
    const A_Time start{0, 1};
    const auto read = [&](AEGP_LayerStream which) {
        EXPECT_EQ(streams().AEGP_GetNewLayerStream(0, layer_h(picture), which, &stream), 0);
        EXPECT_EQ(streams().AEGP_GetNewStreamValue(0, stream, AEGP_LTimeMode_LayerTime, &start, 0,
                                                   &value),
                  0);
        EXPECT_EQ(value.streamH, stream);
        const AEGP_StreamVal2 result = value.val;
        EXPECT_EQ(streams().AEGP_DisposeStreamValue(&value), 0);
        EXPECT_EQ(streams().AEGP_DisposeStream(stream), 0);
        return result;
    };
    EXPECT_EQ(read(kPosition).two_d.x, 10.5);
    EXPECT_EQ(read(kPosition).two_d.y, -3);
    EXPECT_EQ(read(kScale).two_d.y, 50);
    EXPECT_EQ(read(kOpacity).one_d, 75);
    EXPECT_EQ(streams().AEGP_GetNewLayerStream(0, layer_h(picture), 11, &stream), A_Err_PARAMETER);
    EXPECT_THAT(host.refs.leaks(), IsEmpty());
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, LayerStreamValueNeedsNoStream) {
    host.project.layer(picture)->opacity = 12;
    AEGP_StreamVal2 value{};
    AEGP_StreamType type = AEGP_StreamType_NO_DATA;
    const A_Time start{0, 1};
    ASSERT_EQ(streams().AEGP_GetLayerStreamValue(layer_h(picture), kOpacity,
                                                 AEGP_LTimeMode_CompTime, &start, 0, &value, &type),
              0);
    EXPECT_EQ(value.one_d, 12);
    EXPECT_EQ(type, AEGP_StreamType_OneD);
}

TEST_F(SuiteTest, LaterStreamSuitesWorkToo) {
    const AEGP_EffectRefH effect = new_effect();
    AEGP_StreamRefH stream = nullptr;
    const auto &streams5 = get<AEGP_StreamSuite5>(kAEGPStreamSuite, 10);
    ASSERT_EQ(streams5.AEGP_GetNewEffectStreamByIndex(0, effect, 1, &stream), 0);
    const auto &streams6 = get<AEGP_StreamSuite6>(kAEGPStreamSuite, 11);
    EXPECT_EQ(streams6.AEGP_DisposeStream(stream), 0);
    EXPECT_EQ(get<AEGP_EffectSuite4>(kAEGPEffectSuite, 4).AEGP_DisposeEffect(effect), 0);
    EXPECT_EQ(get<AEGP_EffectSuite5>(kAEGPEffectSuite, 5).AEGP_DisposeEffect(new_effect()), 0);
    EXPECT_THAT(host.refs.leaks(), IsEmpty());
}

TEST_F(SuiteTest, EffectsOfALayerAreListed) {
    A_long count = 0;
    AEGP_EffectRefH effect = nullptr;
    ASSERT_EQ(effects().AEGP_GetLayerNumEffects(layer_h(scopes), &count), 0);
    EXPECT_EQ(count, 1);
    ASSERT_EQ(effects().AEGP_GetLayerEffectByIndex(0, layer_h(scopes), 0, &effect), 0);
    EXPECT_EQ(effects().AEGP_DisposeEffect(effect), 0);
    EXPECT_EQ(effects().AEGP_GetLayerEffectByIndex(0, layer_h(scopes), 1, &effect),
              A_Err_PARAMETER);
}

TEST_F(SuiteTest, PluginIdZeroIsNotedOnceAndKnown) {
    const AEGP_EffectRefH effect = new_effect();
    new_stream(effect, 1);
    new_stream(effect, 2);
    ASSERT_THAT(host.strict.all(), testing::SizeIs(1));
    EXPECT_EQ(host.strict.all()[0].check, "aegp.plugin_id");
    EXPECT_TRUE(host.strict.all()[0].known);
}

TEST_F(SuiteTest, MemoryHandlesKeepTheirContents) {
    AEGP_MemHandle handle = nullptr;
    ASSERT_EQ(memory().AEGP_NewMemHandle(0, "buffer", 8, AEGP_MemFlag_CLEAR, &handle), 0);
    void *data = nullptr;
    ASSERT_EQ(memory().AEGP_LockMemHandle(handle, &data), 0);
    EXPECT_EQ(data, static_cast<void *>(*handle)) << "one dereference gives the same";
    auto *bytes = static_cast<unsigned char *>(data);
    EXPECT_THAT(std::vector<int>(bytes, bytes + 8), testing::Each(0));
    bytes[7] = 42;
    ASSERT_EQ(memory().AEGP_UnlockMemHandle(handle), 0);
    ASSERT_EQ(memory().AEGP_ResizeMemHandle("buffer", 4000, handle), 0);
    AEGP_MemSize size = 0;
    ASSERT_EQ(memory().AEGP_GetMemHandleSize(handle, &size), 0);
    EXPECT_EQ(size, 4000u);
    ASSERT_EQ(memory().AEGP_LockMemHandle(handle, &data), 0);
    EXPECT_EQ(static_cast<unsigned char *>(data)[7], 42);
    ASSERT_EQ(memory().AEGP_UnlockMemHandle(handle), 0);
    ASSERT_EQ(memory().AEGP_FreeMemHandle(handle), 0);
    EXPECT_THAT(checks(), IsEmpty());
}

TEST_F(SuiteTest, MisuseOfMemoryHandlesIsAFinding) {
    AEGP_MemHandle handle = nullptr;
    void *data = nullptr;
    ASSERT_EQ(memory().AEGP_NewMemHandle(0, "buffer", 8, 0, &handle), 0);
    EXPECT_THAT(host.mem_handles.leaks(), ElementsAre(HasSubstr("buffer of 8 bytes")));
    EXPECT_NE(memory().AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(memory().AEGP_LockMemHandle(handle, &data), 0);
    EXPECT_EQ(memory().AEGP_FreeMemHandle(handle), 0);
    EXPECT_NE(memory().AEGP_FreeMemHandle(handle), 0);
    EXPECT_NE(memory().AEGP_LockMemHandle(reinterpret_cast<AEGP_MemHandle>(&data), &data), 0);
    EXPECT_THAT(checks(), ElementsAre("mem.unlock", "mem.locked", "mem.unknown", "mem.unknown"));
    EXPECT_EQ(memory().AEGP_FreeMemHandle(nullptr), 0);
}

}  // namespace
}  // namespace stage
