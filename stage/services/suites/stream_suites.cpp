#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/stream_value.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// The layer streams on offer: AEGP_LayerStream_POSITION, _SCALE and _OPACITY.
struct LayerStreamKind {
    AEGP_LayerStream stream;
    StreamTarget::Kind kind;
};
constexpr LayerStreamKind kLayerStreams[] = {{1, StreamTarget::Kind::kPosition},
                                             {2, StreamTarget::Kind::kScale},
                                             {4, StreamTarget::Kind::kOpacity}};

const LayerStreamKind *layer_stream(AEGP_LayerStream stream) {
    for (const LayerStreamKind &row : kLayerStreams) {
        if (row.stream == stream) return &row;
    }
    return nullptr;
}

/// What a stream handle stands for; null, with a finding, when it is not live or the layer or
/// effect is gone ("stale.stream").
const StreamTarget *stream_of(HostCall &call, AEGP_StreamRefH handle) {
    Host &host = call.host();
    const StreamTarget *target = host.refs.stream(handle);
    if (target == nullptr) {
        call.report("ref.unknown", "this is no live stream reference");
        return nullptr;
    }
    const bool of_effect = target->kind == StreamTarget::Kind::kEffectParam;
    const bool gone = of_effect ? effect_of(host, target->owner) == nullptr
                                : host.project.layer(target->owner.layer) == nullptr;
    if (!gone) return target;
    call.report("stale.stream", "the stream's layer or effect is gone");
    return nullptr;
}

A_Err is_stream_legal(HostCall &call, AEGP_LayerH layer, AEGP_LayerStream which,
                      A_Boolean &result) {
    if (layer_of(call, layer) == nullptr) return A_Err_PARAMETER;
    result = layer_stream(which) != nullptr ? 1 : 0;
    return A_Err_NONE;
}

A_Err get_new_layer_stream(HostCall &call, AEGP_PluginID plugin_id, AEGP_LayerH layer,
                           AEGP_LayerStream which, AEGP_StreamRefH &result) {
    note_plugin_id(call, plugin_id);
    const Layer *found = layer_of(call, layer);
    const LayerStreamKind *kind = layer_stream(which);
    if (found == nullptr || kind == nullptr) return A_Err_PARAMETER;
    if (call.traced()) call.arguments("\"" + found->name + "\", " + std::to_string(which));
    result = call.host().refs.new_stream({kind->kind, {found->id, 0}, 0}, nullptr, call.command());
    return A_Err_NONE;
}

A_Err get_effect_num_param_streams(HostCall &call, AEGP_EffectRefH effect, A_long &result) {
    const EffectTarget *target = call.host().refs.effect(effect);
    const EffectState *state = target == nullptr ? nullptr : effect_of(call.host(), *target);
    if (state == nullptr) return A_Err_PARAMETER;
    result = static_cast<A_long>(state->streams.size());
    return A_Err_NONE;
}

A_Err get_new_effect_stream_by_index(HostCall &call, AEGP_PluginID plugin_id,
                                     AEGP_EffectRefH effect, PF_ParamIndex index,
                                     AEGP_StreamRefH &result) {
    note_plugin_id(call, plugin_id);
    if (call.traced()) call.arguments(std::to_string(index));
    result = nullptr;
    Host &host = call.host();
    const EffectTarget *target = host.refs.effect(effect);
    if (target == nullptr) {
        call.report("ref.unknown", "this is no live effect reference");
        return A_Err_PARAMETER;
    }
    const EffectState *state = effect_of(host, *target);
    if (state == nullptr || index < 0 || static_cast<std::size_t>(index) >= state->streams.size()) {
        return A_Err_PARAMETER;
    }
    result = host.refs.new_stream({StreamTarget::Kind::kEffectParam, *target, index}, effect,
                                  call.command());
    return A_Err_NONE;
}

A_Err dispose_stream(HostCall &call, AEGP_StreamRefH stream) {
    if (call.host().refs.dispose(stream)) return A_Err_NONE;
    call.report("ref.unknown", "disposal of a stream that is not live");
    return A_Err_PARAMETER;
}

A_Err get_stream_name(HostCall &call, AEGP_PluginID plugin_id, AEGP_StreamRefH stream, A_Boolean,
                      AEGP_MemHandle &result) {
    note_plugin_id(call, plugin_id);
    const StreamTarget *target = stream_of(call, stream);
    if (target == nullptr) return A_Err_PARAMETER;
    const bool given = give_utf16(call, stream_name(call.host(), *target), result);
    return given ? A_Err_NONE : A_Err_ALLOC;
}

A_Err get_stream_type(HostCall &call, AEGP_StreamRefH stream, AEGP_StreamType &result) {
    const StreamTarget *target = stream_of(call, stream);
    if (target == nullptr) return A_Err_PARAMETER;
    result = stream_type(call.host(), *target);
    return A_Err_NONE;
}

A_Err is_stream_timevarying(HostCall &call, AEGP_StreamRefH stream, A_Boolean &result) {
    // The project keeps one value for each stream: nothing varies, not even under an expression.
    if (stream_of(call, stream) == nullptr) return A_Err_PARAMETER;
    result = 0;
    return A_Err_NONE;
}

A_Err get_new_stream_value(HostCall &call, AEGP_PluginID plugin_id, AEGP_StreamRefH stream,
                           AEGP_LTimeMode, const A_Time *, A_Boolean, AEGP_StreamValue2 &result) {
    note_plugin_id(call, plugin_id);
    const StreamTarget *target = stream_of(call, stream);
    if (target == nullptr) return A_Err_PARAMETER;
    result = AEGP_StreamValue2{};
    if (!stream_value(call.host(), *target, &result.val)) return A_Err_PARAMETER;
    result.streamH = stream;
    return A_Err_NONE;
}

A_Err dispose_stream_value(HostCall &, AEGP_StreamValue2 &value) {
    // Nothing in the values on offer is allocated.
    value = AEGP_StreamValue2{};
    return A_Err_NONE;
}

A_Err get_layer_stream_value(HostCall &call, AEGP_LayerH layer, AEGP_LayerStream which,
                             AEGP_LTimeMode, const A_Time *, A_Boolean, AEGP_StreamVal2 &result,
                             AEGP_StreamType *type) {
    const Layer *found = layer_of(call, layer);
    const LayerStreamKind *kind = layer_stream(which);
    if (found == nullptr || kind == nullptr) return A_Err_PARAMETER;
    const StreamTarget target{kind->kind, {found->id, 0}, 0};
    result = AEGP_StreamVal2{};
    if (!stream_value(call.host(), target, &result)) return A_Err_PARAMETER;
    if (type != nullptr) *type = stream_type(call.host(), target);
    return A_Err_NONE;
}

/// Null for layer streams, which cannot be hidden here.
EffectStream *hideable_stream(Host &host, const StreamTarget &target) {
    if (target.kind != StreamTarget::Kind::kEffectParam) return nullptr;
    EffectState *effect = effect_of(host, target.owner);
    const auto index = static_cast<std::size_t>(target.param);
    return index < effect->streams.size() ? &effect->streams[index] : nullptr;
}

A_Err get_dynamic_stream_flags(HostCall &call, AEGP_StreamRefH stream,
                               AEGP_DynStreamFlags &result) {
    const StreamTarget *target = stream_of(call, stream);
    if (target == nullptr) return A_Err_PARAMETER;
    const EffectStream *state = hideable_stream(call.host(), *target);
    result = state != nullptr && state->hidden ? AEGP_DynStreamFlag_HIDDEN : 0;
    return A_Err_NONE;
}

A_Err set_dynamic_stream_flag(HostCall &call, AEGP_StreamRefH stream, AEGP_DynStreamFlags flag,
                              A_Boolean undoable, A_Boolean on) {
    const StreamTarget *target = stream_of(call, stream);
    if (target == nullptr || flag != AEGP_DynStreamFlag_HIDDEN) return A_Err_PARAMETER;
    if (call.traced()) {
        call.arguments(std::to_string(target->param) + (on != 0 ? ", hidden" : ", shown"));
    }
    if (hideable_stream(call.host(), *target) == nullptr) return A_Err_PARAMETER;
    if (const A_Err err = begin_change(call, undoable != 0 ? "Hide Property" : nullptr)) {
        return err;
    }
    hideable_stream(call.host(), *target)->hidden = on != 0;
    return A_Err_NONE;
}

/// The slots used have the same types in all three structs.
template <class Suite>
constexpr auto stream_table() {
    CallTable<Suite, kAEGPStreamSuite, kProjectCall.on_ui_thread()> table;
    KS_SERVE(AEGP_IsStreamLegal, is_stream_legal);
    KS_SERVE(AEGP_GetNewLayerStream, get_new_layer_stream);
    KS_SERVE(AEGP_GetEffectNumParamStreams, get_effect_num_param_streams);
    KS_SERVE(AEGP_GetNewEffectStreamByIndex, get_new_effect_stream_by_index);
    KS_SERVE_BY(table.kRules.that_release(), AEGP_DisposeStream, dispose_stream);
    KS_SERVE(AEGP_GetStreamName, get_stream_name);
    KS_SERVE(AEGP_GetStreamType, get_stream_type);
    KS_SERVE(AEGP_IsStreamTimevarying, is_stream_timevarying);
    KS_SERVE(AEGP_GetNewStreamValue, get_new_stream_value);
    KS_SERVE_BY(table.kRules.that_release(), AEGP_DisposeStreamValue, dispose_stream_value);
    KS_SERVE(AEGP_GetLayerStreamValue, get_layer_stream_value);
    return table;
}

constexpr auto dynamic_stream_table() {
    CallTable<AEGP_DynamicStreamSuite4, kAEGPDynamicStreamSuite, kProjectCall.on_ui_thread()> table;
    KS_SERVE(AEGP_GetDynamicStreamFlags, get_dynamic_stream_flags);
    KS_SERVE(AEGP_SetDynamicStreamFlag, set_dynamic_stream_flag);
    return table;
}

}  // namespace

void add_stream_suites(SuiteRegistry &suites) {
    offer<stream_table<AEGP_StreamSuite4>>(suites, kAEGPStreamSuiteVersion4);
    offer<stream_table<AEGP_StreamSuite5>>(suites, kAEGPStreamSuiteVersion5);
    offer<stream_table<AEGP_StreamSuite6>>(suites, kAEGPStreamSuiteVersion6);
    offer<dynamic_stream_table>(suites, kAEGPDynamicStreamSuiteVersion4);
}

}  // namespace stage
