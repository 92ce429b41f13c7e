#include "hostapi/suite_names.h"
#include "stage/effect/effect_instance.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP PF Interface Suite." #function

namespace stage {
namespace {

/// Null, with a finding, when the reference is none of the host's.
EffectInstance *instance_of(HostCall &call, PF_ProgPtr effect_ref) {
    EffectInstance *instance = call.host().instance(effect_ref);
    if (instance == nullptr) {
        call.host().strict.report("ref.unknown", call.command(), "this is no effect_ref");
    }
    return instance;
}

A_Err get_effect_layer(PF_ProgPtr effect_ref, AEGP_LayerH *result) {
    HostCall call(KS_NAME(AEGP_GetEffectLayer));
    return run_call(call, [&]() -> A_Err {
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        const EffectInstance *instance = instance_of(call, effect_ref);
        if (instance == nullptr) return A_Err_PARAMETER;
        Host &host = call.host();
        if (host.project.layer(instance->layer) == nullptr) return A_Err_PARAMETER;
        *result = host.refs.layer(host.project, instance->layer);
        return A_Err_NONE;
    });
}

A_Err get_new_effect_for_effect(AEGP_PluginID plugin_id, PF_ProgPtr effect_ref,
                                AEGP_EffectRefH *result) {
    HostCall call(KS_NAME(AEGP_GetNewEffectForEffect));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        if (result == nullptr) return A_Err_PARAMETER;
        *result = nullptr;
        const EffectInstance *instance = instance_of(call, effect_ref);
        if (instance == nullptr) return A_Err_PARAMETER;
        *result = call.host().refs.new_effect({instance->layer, instance->effect}, call.command());
        return A_Err_NONE;
    });
}

A_Err convert_effect_to_comp_time(PF_ProgPtr effect_ref, A_long time, A_u_long scale,
                                  A_Time *result) {
    // Layers start at the comp's start and run at its speed, so both times are the same.
    HostCall call(KS_NAME(AEGP_ConvertEffectToCompTime));
    return run_call(call, [&]() -> A_Err {
        if (result == nullptr || instance_of(call, effect_ref) == nullptr) return A_Err_PARAMETER;
        *result = {time, scale};
        return A_Err_NONE;
    });
}

}  // namespace

void add_pf_interface_suite(SuiteRegistry &suites) {
    static const AEGP_PFInterfaceSuite1 table = with_all_slots(AEGP_PFInterfaceSuite1{
        .AEGP_GetEffectLayer = get_effect_layer,
        .AEGP_GetNewEffectForEffect = get_new_effect_for_effect,
        .AEGP_ConvertEffectToCompTime = convert_effect_to_comp_time,
        .AEGP_GetEffectCamera = nullptr,
        .AEGP_GetEffectCameraMatrix = nullptr,
    });
    suites.add(kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1, &table);
}

}  // namespace stage
