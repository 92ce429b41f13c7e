#include "render/settings.h"

#include <algorithm>

#include "host/param_values.h"

namespace ks {

bool RenderSettings::shows_any_scope() const {
    return std::any_of(switches.begin(), switches.begin() + kScopeKinds,
                       [](std::uint8_t on) { return on != 0; });
}

RenderSettings read_settings(ErrorChain &chain, PF_InData *in_data) {
    RenderSettings settings;
    for (std::size_t i = 0; i < kScopeTable.size(); ++i) {
        settings.switches[i] = read_checkbox(chain, in_data, kScopeTable[i].show);
    }
    settings.switches.back() = read_checkbox(chain, in_data, kParamMuteActiveScopes);
    settings.monitor_layout = read_popup(chain, in_data, kParamMonitorLayout);
    settings.primary_view = read_popup(chain, in_data, kParamPrimaryMonitorView);
    settings.view_channels = read_popup(chain, in_data, kParamViewChannels);
    settings.monitor_gamma = read_slider(chain, in_data, kParamMonitorGamma);
    settings.monitor_gain = read_slider(chain, in_data, kParamMonitorGain);
    settings.apply_corrections = read_popup(chain, in_data, kParamApplyCorrections);
    settings.luma_math = luma_math_of(read_popup(chain, in_data, kParamLuminanceMath));
    for (const ScopeKind kind : kScopeWalkOrder) {
        if (!settings.shows(kind)) continue;
        const ScopeRow &row = kScopeTable[scope_slot(kind)];
        settings.scope_sizes[scope_slot(kind)] = read_slider(chain, in_data, row.size);
        if (kind == ScopeKind::kSlice) {
            settings.slice_fraction = read_slider(chain, in_data, kParamSliceLine) * 0.01;
        }
    }
    settings.scopes_aspect = read_popup(chain, in_data, kParamWaveformAspectRatio);
    return settings;
}

}  // namespace ks
