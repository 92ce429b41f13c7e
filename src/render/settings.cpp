#include "render/settings.h"

#include <algorithm>

#include "host/scoped.h"
#include "render/layout.h"

namespace ks {
namespace {

/// Checks `param` out, passes its union to `take` and checks it in.
template <class Take>
void read_param(ErrorChain &chain, PF_InData *in_data, Param param, Take &&take) {
    if (!chain.ok()) return;
    ParamCheckout checkout(in_data, param);
    chain.keep(checkout.error());
    if (chain.ok()) take(checkout.def().u);
    chain.always([&] { return checkout.close(); });
}

}  // namespace

bool RenderSettings::shows_any_scope() const {
    return std::any_of(switches.begin(), switches.begin() + kScopeKinds,
                       [](std::uint8_t on) { return on != 0; });
}

double read_slider(ErrorChain &chain, PF_InData *in_data, Param param) {
    double value = 0.0;
    read_param(chain, in_data, param, [&](const auto &u) { value = u.fs_d.value; });
    return value;
}

std::int32_t read_popup(ErrorChain &chain, PF_InData *in_data, Param param) {
    std::int32_t value = 0;
    read_param(chain, in_data, param, [&](const auto &u) { value = u.pd.value; });
    return value;
}

bool read_checkbox(ErrorChain &chain, PF_InData *in_data, Param param) {
    bool on = false;
    read_param(chain, in_data, param, [&](const auto &u) { on = u.bd.value != 0; });
    return on;
}

IntPoint read_point(ErrorChain &chain, PF_InData *in_data, Param param) {
    IntPoint point;
    read_param(chain, in_data, param, [&](const auto &u) {
        point = {whole_pixels(u.td.x_value), whole_pixels(u.td.y_value)};
    });
    return point;
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
    settings.luminance_math = read_popup(chain, in_data, kParamLuminanceMath);
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
