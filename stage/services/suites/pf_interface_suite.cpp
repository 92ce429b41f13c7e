#include "hostapi/suite_names.h"
#include "stage/effect/effect_instance.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// Null, with a finding, when the reference is none of the host's.
EffectInstance *instance_of(HostCall &call, PF_ProgPtr effect_ref) {
    EffectInstance *instance = call.host().instance(effect_ref);
    if (instance == nullptr) {
        call.report("ref.unknown", "this is no effect_ref");
    }
    return instance;
}

A_Err get_effect_layer(HostCall &call, PF_ProgPtr effect_ref, AEGP_LayerH &result) {
    result = nullptr;
    const EffectInstance *instance = instance_of(call, effect_ref);
    if (instance == nullptr) return A_Err_PARAMETER;
    Host &host = call.host();
    if (host.project.layer(instance->layer) == nullptr) return A_Err_PARAMETER;
    result = host.refs.layer(host.project, instance->layer);
    return A_Err_NONE;
}

A_Err get_new_effect_for_effect(HostCall &call, AEGP_PluginID plugin_id, PF_ProgPtr effect_ref,
                                AEGP_EffectRefH &result) {
    note_plugin_id(call, plugin_id);
    result = nullptr;
    const EffectInstance *instance = instance_of(call, effect_ref);
    if (instance == nullptr) return A_Err_PARAMETER;
    result = call.host().refs.new_effect({instance->layer, instance->effect}, call.command());
    return A_Err_NONE;
}

A_Err convert_effect_to_comp_time(HostCall &call, PF_ProgPtr effect_ref, A_long time,
                                  A_u_long scale, A_Time &result) {
    // Layers start at the comp's start and run at its speed, so both times are the same.
    if (instance_of(call, effect_ref) == nullptr) return A_Err_PARAMETER;
    result = {time, scale};
    return A_Err_NONE;
}

constexpr auto pf_interface_table() {
    CallTable<AEGP_PFInterfaceSuite1, kAEGPPFInterfaceSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetEffectLayer, get_effect_layer);
    KS_SERVE(AEGP_GetNewEffectForEffect, get_new_effect_for_effect);
    KS_SERVE(AEGP_ConvertEffectToCompTime, convert_effect_to_comp_time);
    return table;
}

}  // namespace

void add_pf_interface_suite(SuiteRegistry &suites) {
    offer<pf_interface_table>(suites, kAEGPPFInterfaceSuiteVersion1);
}

}  // namespace stage
