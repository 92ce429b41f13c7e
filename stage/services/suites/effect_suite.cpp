#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP Effect Suite." #function

namespace stage {
namespace {

A_Err get_layer_num_effects(AEGP_LayerH layer, A_long *result) {
    HostCall call(KS_NAME(AEGP_GetLayerNumEffects));
    return run_call(call, [&]() -> A_Err {
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr) return A_Err_PARAMETER;
        *result = static_cast<A_long>(found->effects.size());
        return A_Err_NONE;
    });
}

A_Err get_layer_effect_by_index(AEGP_PluginID plugin_id, AEGP_LayerH layer, AEGP_EffectIndex index,
                                AEGP_EffectRefH *result) {
    HostCall call(KS_NAME(AEGP_GetLayerEffectByIndex));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        const Layer *found = layer_of(call, layer);
        if (found == nullptr || result == nullptr || index < 0 ||
            static_cast<std::size_t>(index) >= found->effects.size()) {
            return A_Err_PARAMETER;
        }
        *result = call.host().refs.new_effect({found->id, index}, call.command());
        return A_Err_NONE;
    });
}

A_Err dispose_effect(AEGP_EffectRefH effect) {
    HostCall call(KS_NAME(AEGP_DisposeEffect));
    return run_release(call, [&] {
        ProjectRefs &refs = call.host().refs;
        Strict &strict = call.host().strict;
        if (const int streams = refs.streams_of(effect); streams > 0) {
            strict.report("effect.streams_left", call.command(),
                          "an effect reference was disposed of before " + std::to_string(streams) +
                              " of its streams");
        }
        if (refs.dispose(effect)) return true;
        strict.report("ref.unknown", call.command(), "disposal of an effect that is not live");
        return false;
    });
}

template <class Suite>
Suite make_table() {
    Suite table{};
    table.AEGP_GetLayerNumEffects = get_layer_num_effects;
    table.AEGP_GetLayerEffectByIndex = get_layer_effect_by_index;
    table.AEGP_DisposeEffect = dispose_effect;
    return with_all_slots(table);
}

}  // namespace

void add_effect_suite(SuiteRegistry &suites) {
    static const auto table3 = make_table<AEGP_EffectSuite3>();
    static const auto table4 = make_table<AEGP_EffectSuite4>();
    static const auto table5 = make_table<AEGP_EffectSuite5>();
    suites.add(kAEGPEffectSuite, kAEGPEffectSuiteVersion3, &table3);
    suites.add(kAEGPEffectSuite, kAEGPEffectSuiteVersion4, &table4);
    suites.add(kAEGPEffectSuite, kAEGPEffectSuiteVersion5, &table5);
}

}  // namespace stage
