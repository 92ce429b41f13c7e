#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/stream_value.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP Stream Suite." #function
#define KS_DYNAMIC(function) "AEGP Dynamic Stream Suite." #function

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
        host.strict.report("ref.unknown", call.command(), "this is no live stream reference");
        return nullptr;
    }
    const bool of_effect = target->kind == StreamTarget::Kind::kEffectParam;
    const bool gone = of_effect ? effect_of(host, target->owner) == nullptr
                                : host.project.layer(target->owner.layer) == nullptr;
    if (!gone) return target;
    host.strict.report("stale.stream", call.command(), "the stream's layer or effect is gone");
    return nullptr;
}

A_Err is_stream_legal(AEGP_LayerH layer, AEGP_LayerStream which, A_Boolean *result) {
    HostCall call(KS_NAME(AEGP_IsStreamLegal), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        if (layer_of(call, layer) == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = layer_stream(which) != nullptr ? 1 : 0;
        return A_Err_NONE;
    });
}

A_Err get_new_layer_stream(AEGP_PluginID plugin_id, AEGP_LayerH layer, AEGP_LayerStream which,
                           AEGP_StreamRefH *result) {
    HostCall call(KS_NAME(AEGP_GetNewLayerStream), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const Layer *found = layer_of(call, layer);
        const LayerStreamKind *kind = layer_stream(which);
        if (found == nullptr || kind == nullptr || result == nullptr) return A_Err_PARAMETER;
        if (call.traced()) call.arguments("\"" + found->name + "\", " + std::to_string(which));
        *result =
            call.host().refs.new_stream({kind->kind, {found->id, 0}, 0}, nullptr, call.command());
        return A_Err_NONE;
    });
}

A_Err get_effect_num_param_streams(AEGP_EffectRefH effect, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetEffectNumParamStreams), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const EffectTarget *target = call.host().refs.effect(effect);
        const EffectState *state = target == nullptr ? nullptr : effect_of(call.host(), *target);
        if (state == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = static_cast<A_long>(state->streams.size());
        return A_Err_NONE;
    });
}

A_Err get_new_effect_stream_by_index(AEGP_PluginID plugin_id, AEGP_EffectRefH effect,
                                     PF_ParamIndex index, AEGP_StreamRefH *result) {
    HostCall call(KS_NAME(AEGP_GetNewEffectStreamByIndex), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        if (call.traced()) call.arguments(std::to_string(index));
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        Host &host = call.host();
        const EffectTarget *target = host.refs.effect(effect);
        if (target == nullptr) {
            host.strict.report("ref.unknown", call.command(), "this is no live effect reference");
            return A_Err_PARAMETER;
        }
        const EffectState *state = effect_of(host, *target);
        if (state == nullptr || index < 0 ||
            static_cast<std::size_t>(index) >= state->streams.size()) {
            return A_Err_PARAMETER;
        }
        *result = host.refs.new_stream({StreamTarget::Kind::kEffectParam, *target, index}, effect,
                                       call.command());
        return A_Err_NONE;
    });
}

A_Err dispose_stream(AEGP_StreamRefH stream) {
    HostCall call(KS_NAME(AEGP_DisposeStream), Fallible::kCode, Threads::kUiOnly);
    return run_release(call, [&] {
        if (call.host().refs.dispose(stream)) return true;
        call.host().strict.report("ref.unknown", call.command(),
                                  "disposal of a stream that is not live");
        return false;
    });
}

A_Err get_stream_name(AEGP_PluginID plugin_id, AEGP_StreamRefH stream, A_Boolean,
                      AEGP_MemHandle *result) {
    HostCall call(KS_NAME(AEGP_GetStreamName), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const StreamTarget *target = stream_of(call, stream);
        if (target == nullptr || result == nullptr) return A_Err_PARAMETER;
        const bool given = give_utf16(call, stream_name(call.host(), *target), result);
        return given ? A_Err_NONE : A_Err_ALLOC;
    });
}

A_Err get_stream_type(AEGP_StreamRefH stream, AEGP_StreamType *result) {
    HostCall call(KS_NAME(AEGP_GetStreamType), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const StreamTarget *target = stream_of(call, stream);
        if (target == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = stream_type(call.host(), *target);
        return A_Err_NONE;
    });
}

A_Err is_stream_timevarying(AEGP_StreamRefH stream, A_Boolean *result) {
    // The project keeps one value for each stream: nothing varies, not even under an expression.
    HostCall call(KS_NAME(AEGP_IsStreamTimevarying), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        if (stream_of(call, stream) == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = 0;
        return A_Err_NONE;
    });
}

A_Err get_new_stream_value(AEGP_PluginID plugin_id, AEGP_StreamRefH stream, AEGP_LTimeMode,
                           const A_Time *, A_Boolean, AEGP_StreamValue2 *result) {
    HostCall call(KS_NAME(AEGP_GetNewStreamValue), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const StreamTarget *target = stream_of(call, stream);
        if (target == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = AEGP_StreamValue2{};
        if (!stream_value(call.host(), *target, &result->val)) return A_Err_PARAMETER;
        result->streamH = stream;
        return A_Err_NONE;
    });
}

A_Err dispose_stream_value(AEGP_StreamValue2 *value) {
    // Nothing in the values on offer is allocated.
    HostCall call(KS_NAME(AEGP_DisposeStreamValue), Fallible::kCode, Threads::kUiOnly);
    return run_release(call, [&] {
        if (value != nullptr) *value = AEGP_StreamValue2{};
        return value != nullptr;
    });
}

A_Err get_layer_stream_value(AEGP_LayerH layer, AEGP_LayerStream which, AEGP_LTimeMode,
                             const A_Time *, A_Boolean, AEGP_StreamVal2 *result,
                             AEGP_StreamType *type) {
    HostCall call(KS_NAME(AEGP_GetLayerStreamValue), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        const LayerStreamKind *kind = layer_stream(which);
        if (found == nullptr || kind == nullptr || result == nullptr) return A_Err_PARAMETER;
        const StreamTarget target{kind->kind, {found->id, 0}, 0};
        *result = AEGP_StreamVal2{};
        if (!stream_value(call.host(), target, result)) return A_Err_PARAMETER;
        if (type != nullptr) *type = stream_type(call.host(), target);
        return A_Err_NONE;
    });
}

/// Null for layer streams, which cannot be hidden here.
EffectStream *hideable_stream(Host &host, const StreamTarget &target) {
    if (target.kind != StreamTarget::Kind::kEffectParam) return nullptr;
    EffectState *effect = effect_of(host, target.owner);
    const auto index = static_cast<std::size_t>(target.param);
    return index < effect->streams.size() ? &effect->streams[index] : nullptr;
}

A_Err get_dynamic_stream_flags(AEGP_StreamRefH stream, AEGP_DynStreamFlags *result) {
    HostCall call(KS_DYNAMIC(AEGP_GetDynamicStreamFlags), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
        const StreamTarget *target = stream_of(call, stream);
        if (target == nullptr || result == nullptr) return A_Err_PARAMETER;
        const EffectStream *state = hideable_stream(call.host(), *target);
        *result = state != nullptr && state->hidden ? AEGP_DynStreamFlag_HIDDEN : 0;
        return A_Err_NONE;
    });
}

A_Err set_dynamic_stream_flag(AEGP_StreamRefH stream, AEGP_DynStreamFlags flag, A_Boolean undoable,
                              A_Boolean on) {
    HostCall call(KS_DYNAMIC(AEGP_SetDynamicStreamFlag), Fallible::kCode, Threads::kUiOnly);
    return run_call(call, [&]() -> A_Err {
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
    });
}

/// The slots used have the same types in all three structs.
template <class Suite>
Suite make_table() {
    Suite table{};
    table.AEGP_IsStreamLegal = is_stream_legal;
    table.AEGP_GetNewLayerStream = get_new_layer_stream;
    table.AEGP_GetEffectNumParamStreams = get_effect_num_param_streams;
    table.AEGP_GetNewEffectStreamByIndex = get_new_effect_stream_by_index;
    table.AEGP_DisposeStream = dispose_stream;
    table.AEGP_GetStreamName = get_stream_name;
    table.AEGP_GetStreamType = get_stream_type;
    table.AEGP_IsStreamTimevarying = is_stream_timevarying;
    table.AEGP_GetNewStreamValue = get_new_stream_value;
    table.AEGP_DisposeStreamValue = dispose_stream_value;
    table.AEGP_GetLayerStreamValue = get_layer_stream_value;
    return with_all_slots(table);
}

AEGP_DynamicStreamSuite4 make_dynamic_table() {
    AEGP_DynamicStreamSuite4 table{};
    table.AEGP_GetDynamicStreamFlags = get_dynamic_stream_flags;
    table.AEGP_SetDynamicStreamFlag = set_dynamic_stream_flag;
    return with_all_slots(table);
}

}  // namespace

void add_stream_suites(SuiteRegistry &suites) {
    static const auto table4 = make_table<AEGP_StreamSuite4>();
    static const auto table5 = make_table<AEGP_StreamSuite5>();
    static const auto table6 = make_table<AEGP_StreamSuite6>();
    static const auto dynamic = make_dynamic_table();
    suites.add(kAEGPStreamSuite, kAEGPStreamSuiteVersion4, &table4);
    suites.add(kAEGPStreamSuite, kAEGPStreamSuiteVersion5, &table5);
    suites.add(kAEGPStreamSuite, kAEGPStreamSuiteVersion6, &table6);
    suites.add(kAEGPDynamicStreamSuite, kAEGPDynamicStreamSuiteVersion4, &dynamic);
}

}  // namespace stage
