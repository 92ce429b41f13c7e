#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

A_Err get_layer_num_effects(HostCall &call, AEGP_LayerH layer, A_long &result) {
    const Layer *found = layer_of(call, layer);
    if (found == nullptr) return A_Err_PARAMETER;
    result = static_cast<A_long>(found->effects.size());
    return A_Err_NONE;
}

A_Err get_layer_effect_by_index(HostCall &call, AEGP_PluginID plugin_id, AEGP_LayerH layer,
                                AEGP_EffectIndex index, AEGP_EffectRefH &result) {
    note_plugin_id(call, plugin_id);
    const Layer *found = layer_of(call, layer);
    if (found == nullptr || index < 0 || static_cast<std::size_t>(index) >= found->effects.size()) {
        return A_Err_PARAMETER;
    }
    result = call.host().refs.new_effect({found->id, index}, call.command());
    return A_Err_NONE;
}

A_Err dispose_effect(HostCall &call, AEGP_EffectRefH effect) {
    ProjectRefs &refs = call.host().refs;
    if (const int streams = refs.streams_of(effect); streams > 0) {
        call.report("effect.streams_left", "an effect reference was disposed of before " +
                                               std::to_string(streams) + " of its streams");
    }
    if (refs.dispose(effect)) return A_Err_NONE;
    call.report("ref.unknown", "disposal of an effect that is not live");
    return A_Err_PARAMETER;
}

template <class Suite>
constexpr auto effect_table() {
    CallTable<Suite, kAEGPEffectSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetLayerNumEffects, get_layer_num_effects);
    KS_SERVE(AEGP_GetLayerEffectByIndex, get_layer_effect_by_index);
    KS_SERVE_BY(table.kRules.that_release(), AEGP_DisposeEffect, dispose_effect);
    return table;
}

}  // namespace

void add_effect_suite(SuiteRegistry &suites) {
    offer<effect_table<AEGP_EffectSuite3>>(suites, kAEGPEffectSuiteVersion3);
    offer<effect_table<AEGP_EffectSuite4>>(suites, kAEGPEffectSuiteVersion4);
    offer<effect_table<AEGP_EffectSuite5>>(suites, kAEGPEffectSuiteVersion5);
}

}  // namespace stage
