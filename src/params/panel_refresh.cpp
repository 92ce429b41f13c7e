#include "params/panel_refresh.h"

#include "geometry/monitor_layout.h"
#include "host/error_chain.h"
#include "host/scoped.h"
#include "model/scope_group.h"
#include "model/scope_kind.h"
#include "params/first_refresh.h"
#include "params/panel.h"

namespace ks {
namespace {

PF_Err set_hidden(SuiteCache &suites, OwnedEffectStreams &streams, PF_ParamIndex index,
                  bool hidden) {
    constexpr A_Boolean undoable = 0;
    AEGP_StreamRefH stream = nullptr;
    const A_Err error = streams.open(index, stream);
    if (error != A_Err_NONE || stream == nullptr) return error;
    return suites.dynamic_stream().AEGP_SetDynamicStreamFlag(stream, AEGP_DynStreamFlag_HIDDEN,
                                                             undoable, hidden ? 1 : 0);
}

/// Hides or shows the group of every scope, heading included, and always hides "RESET".
PF_Err hide_unused(SuiteCache &suites, OwnedEffectStreams &streams, const Panel &panel) {
    ErrorChain chain;
    for (const ScopeRow &row : kScopeTable) {
        const bool hidden = !panel.is_on(row.show);
        const ParamRange group = group_around(row.position);
        for (int index = group.first; index < group.end; ++index) {
            chain.step([&] { return set_hidden(suites, streams, index, hidden); });
        }
    }
    chain.step([&] { return set_hidden(suites, streams, kParamReset, true); });
    return chain.result();
}

/// Whether "Original Source" refers to a layer. Such a layer comes with pixels, be they all black.
bool has_original(ErrorChain &chain, PF_InData *in_data) {
    if (!chain.ok()) return false;
    ParamCheckout original(in_data, kParamOriginalSource);
    chain.keep(original.error());
    const bool chosen = original.def().u.ld.data != nullptr;
    chain.always([&] { return original.close(); });
    return chosen;
}

/// Replaces all UI flags: a control is either plainly enabled or plainly disabled.
void enable(ErrorChain &chain, const Panel &panel, Param param, bool enabled) {
    chain.step([&] {
        return panel.update_look(param, [enabled](PF_ParamDef &def) {
            def.ui_flags = enabled ? PF_PUI_NONE : PF_PUI_DISABLED;
        });
    });
}

PF_Err enable_usable(PF_InData *in_data, const Panel &panel) {
    const auto layout = static_cast<MonitorLayout>(panel.choice(kParamMonitorLayout));
    const bool windowed = layout == MonitorLayout::kWindowed;
    ErrorChain chain;
    enable(chain, panel, kParamMonitorPosition, windowed);
    enable(chain, panel, kParamMonitorSize, windowed);
    const bool comparable = has_original(chain, in_data) && layout != MonitorLayout::kScopesOnly;
    enable(chain, panel, kParamCompareWithOriginal, comparable);
    enable(chain, panel, kParamCompareOpacity, comparable);
    for (const ScopeRow &row : kScopeTable) {
        enable(chain, panel, row.position, panel.is_on(row.show));
    }
    enable(chain, panel, kParamVectorscopeReferenceColour,
           panel.is_on(kParamVectorscopeReferenceLine));
    return chain.result();
}

PF_Err refresh_looks(SuiteCache &suites, PF_InData *in_data, const Panel &panel) {
    AEGP_PFInterfaceSuite1 &own = suites.pf_interface();
    // Taken before there is a reference: without it one could not be given back.
    AEGP_EffectSuite3 &effects = suites.effect();
    OwnedEffectRef effect(own, effects, in_data->effect_ref);
    if (effect.error() != A_Err_NONE) return effect.error();
    OwnedEffectStreams streams(suites.stream(), effect.get());
    ErrorChain chain;
    if (effect.get() != nullptr) {
        chain.step([&] { return hide_unused(suites, streams, panel); });
    }
    chain.step([&] { return enable_usable(in_data, panel); });
    chain.always([&] { return streams.close(); });
    chain.always([&] { return effect.close(); });
    return chain.result();
}

}  // namespace

PF_Err update_params_ui(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[]) {
    if (!holds_all_params(params)) return PF_Err_NONE;
    SuiteCache suites(in_data->pica_basicP);
    const Panel panel(suites, in_data, params);
    ErrorChain chain;
    chain.step([&] { return refresh_looks(suites, in_data, panel); });
    chain.step([&] { return first_refresh(suites, in_data, out_data, panel); });
    return chain.result();
}

}  // namespace ks
