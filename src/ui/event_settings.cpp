#include "ui/event_settings.h"

#include "host/host_world.h"
#include "hostapi/constants.h"

namespace ks {
namespace {

FixedPoint point_of(const PF_ParamDef &def) {
    return {def.u.td.x_value, def.u.td.y_value};
}

PanelSetting read_panel(PF_ParamDef *const params[], bool shown, Param position, Param size) {
    return {shown, point_of(*params[position]), params[size]->u.fs_d.value};
}

}  // namespace

HandleSettings read_handle_settings(const PF_InData &in_data, PF_ParamDef *const params[]) {
    HandleSettings settings;
    settings.width = in_data.width;
    settings.height = in_data.height;
    const Ratio pixel_aspect = ratio_of(in_data.pixel_aspect_ratio);
    settings.frame = frame_scale_of(in_data);
    settings.inverse_par = inverse_pixel_aspect(pixel_aspect);
    settings.layout = static_cast<MonitorLayout>(params[kParamMonitorLayout]->u.pd.value);
    settings.monitor = read_panel(params, settings.layout == MonitorLayout::kWindowed,
                                  kParamMonitorPosition, kParamMonitorSize);
    settings.compare = params[kParamCompareWithOriginal]->u.fs_d.value;
    settings.opacity = params[kParamCompareOpacity]->u.fs_d.value;
    settings.compare_disabled =
        (params[kParamCompareWithOriginal]->ui_flags & PF_PUI_DISABLED) != 0;
    settings.aspect_choice = params[kParamWaveformAspectRatio]->u.pd.value;
    for (const ScopeRow &scope : kScopeTable) {
        settings.scopes[scope_slot(scope.kind)] =
            read_panel(params, params[scope.show]->u.bd.value != 0, scope.position, scope.size);
    }
    return settings;
}

void write_params(PF_ParamDef *const params[], const ParamWrites &writes) {
    for (std::size_t i = 0; i < writes.count; ++i) {
        const ParamWrite &write = writes.writes[i];
        PF_ParamDef &def = *params[write.param];
        if (const auto *point = std::get_if<FixedPoint>(&write.value)) {
            def.u.td.x_value = point->x;
            def.u.td.y_value = point->y;
        } else {
            def.u.fs_d.value = std::get<double>(write.value);
        }
        def.uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
    }
}

}  // namespace ks
