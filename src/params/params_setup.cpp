#include "params/params_setup.h"

#include <cstring>

#include "host/error_chain.h"
#include "hostapi/constants.h"
#include "model/param_table.h"
#include "model/string_table.h"

namespace ks {
namespace {

static_assert(static_cast<PF_ParamType>(ParamKind::layer) == PF_Param_LAYER);
static_assert(static_cast<PF_ParamType>(ParamKind::checkbox) == PF_Param_CHECKBOX);
static_assert(static_cast<PF_ParamType>(ParamKind::color) == PF_Param_COLOR);
static_assert(static_cast<PF_ParamType>(ParamKind::point) == PF_Param_POINT);
static_assert(static_cast<PF_ParamType>(ParamKind::popup) == PF_Param_POPUP);
static_assert(static_cast<PF_ParamType>(ParamKind::float_slider) == PF_Param_FLOAT_SLIDER);
static_assert(static_cast<PF_ParamType>(ParamKind::group_start) == PF_Param_GROUP_START);
static_assert(static_cast<PF_ParamType>(ParamKind::group_end) == PF_Param_GROUP_END);
static_assert(kFlagCannotTimeVary == PF_ParamFlag_CANNOT_TIME_VARY);
static_assert(kFlagCannotInterpolate == PF_ParamFlag_CANNOT_INTERP);
static_assert(kFlagCollapseTwirly == PF_ParamFlag_COLLAPSE_TWIRLY);
static_assert(kFlagSupervise == PF_ParamFlag_SUPERVISE);
static_assert(kUiSeparator == PF_PUI_ECW_SEPARATOR);

void set_popup(PF_PopupDef &popup, const ParamRow &row) {
    popup.value = static_cast<PF_ParamValue>(row.default_value);
    popup.dephault = static_cast<A_short>(row.default_value);
    popup.num_choices = static_cast<A_short>(count_choices(row.choices));
    popup.u.namesptr = row.choices;
}

void set_checkbox(PF_CheckBoxDef &box, const ParamRow &row) {
    box.value = static_cast<PF_ParamValue>(row.default_value);
    box.dephault = static_cast<PF_Boolean>(row.default_value);
    box.u.nameptr = row.label;
}

void set_point(PF_PointDef &point, const ParamRow &row) {
    point.x_value = point.x_dephault = row.x_default;
    point.y_value = point.y_dephault = row.y_default;
    point.restrict_bounds = 1;
}

void set_float_slider(PF_FloatSliderDef &slider, const ParamRow &row) {
    slider.value = row.default_value;
    slider.dephault = static_cast<PF_FpShort>(row.default_value);
    slider.valid_min = slider.slider_min = static_cast<PF_FpShort>(row.min);
    slider.valid_max = slider.slider_max = static_cast<PF_FpShort>(row.max);
    slider.precision = static_cast<PF_Precision>(row.precision);
    slider.display_flags = row.percent ? PF_ValueDisplayFlag_PERCENT : PF_ValueDisplayFlag_NONE;
}

void set_defaults(PF_ParamDefUnion &u, const ParamRow &row) {
    switch (row.kind) {
        case ParamKind::popup:
            return set_popup(u.pd, row);
        case ParamKind::checkbox:
            return set_checkbox(u.bd, row);
        case ParamKind::point:
            return set_point(u.td, row);
        case ParamKind::float_slider:
            return set_float_slider(u.fs_d, row);
        case ParamKind::layer:
            u.ld.dephault = PF_LayerDefault_NONE;
            return;
        case ParamKind::color:  // black with alpha 0, which clearing has done
        case ParamKind::group_start:
        case ParamKind::group_end:
            return;
    }
}

void fill_definition(PF_InData *in_data, PF_ParamDef &def, const ParamRow &row) {
    std::memset(&def, 0, sizeof def);
    def.uu.id = row.id;
    def.param_type = static_cast<PF_ParamType>(row.kind);
    def.flags = row.flags;
    def.ui_flags = row.ui_flags;
    set_defaults(def.u, row);
    if (row.kind != ParamKind::group_end) in_data->utils->ansi.strcpy(def.name, row.name);
}

PF_Err register_custom_ui(PF_InData *in_data) {
    PF_CustomUIInfo info{};
    info.events = PF_CustomEFlag_COMP | PF_CustomEFlag_LAYER;
    return in_data->inter.register_ui(in_data->effect_ref, &info);
}

}  // namespace

PF_Err params_setup(PF_InData *in_data, PF_OutData *out_data) {
    constexpr PF_ParamIndex append = -1;
    ErrorChain chain;
    for (const ParamRow &row : kParamTable) {
        if (row.index == kParamInput) continue;
        PF_ParamDef def;
        fill_definition(in_data, def, row);
        chain.step([&] { return in_data->inter.add_param(in_data->effect_ref, append, &def); });
    }
    chain.step([&] { return register_custom_ui(in_data); });
    out_data->num_params = kParamCount;
    return chain.result();
}

}  // namespace ks
