// Parameter definitions as a plug-in would hand them to add_param.
#pragma once

#include <cstring>
#include <string_view>

#include "hostapi/constants.h"
#include "hostapi/param_def.h"

namespace stage_test {

/// `name` has at most 31 characters.
inline PF_ParamDef param(PF_ParamType type, std::string_view name, A_long id) {
    PF_ParamDef def{};
    def.param_type = type;
    def.uu.id = id;
    name.copy(def.name, sizeof def.name - 1);
    return def;
}

inline PF_ParamDef group(const char *name, A_long id) {
    return param(PF_Param_GROUP_START, name, id);
}

inline PF_ParamDef group_end() {
    return param(PF_Param_GROUP_END, "", 0);
}

inline PF_ParamDef slider(const char *name, A_long id, float low, float high, double value,
                          bool percent = false) {
    PF_ParamDef def = param(PF_Param_FLOAT_SLIDER, name, id);
    def.u.fs_d.valid_min = low;
    def.u.fs_d.valid_max = high;
    def.u.fs_d.slider_min = low;
    def.u.fs_d.slider_max = high / 2;
    def.u.fs_d.value = value;
    def.u.fs_d.dephault = static_cast<float>(value);
    def.u.fs_d.display_flags = percent ? PF_ValueDisplayFlag_PERCENT : PF_ValueDisplayFlag_NONE;
    return def;
}

inline PF_ParamDef popup(const char *name, A_long id, const char *choices, int count, int value) {
    PF_ParamDef def = param(PF_Param_POPUP, name, id);
    def.u.pd.u.namesptr = choices;
    def.u.pd.num_choices = static_cast<A_short>(count);
    def.u.pd.value = value;
    def.u.pd.dephault = static_cast<A_short>(value);
    return def;
}

inline PF_ParamDef checkbox(const char *name, A_long id, const char *label, bool on) {
    PF_ParamDef def = param(PF_Param_CHECKBOX, name, id);
    def.u.bd.u.nameptr = label;
    def.u.bd.value = on ? 1 : 0;
    def.u.bd.dephault = on ? 1 : 0;
    return def;
}

/// Percentages of the layer in 16.16.
inline PF_ParamDef point(const char *name, A_long id, PF_Fixed x, PF_Fixed y, bool bounded) {
    PF_ParamDef def = param(PF_Param_POINT, name, id);
    def.u.td.x_value = def.u.td.x_dephault = x;
    def.u.td.y_value = def.u.td.y_dephault = y;
    def.u.td.restrict_bounds = bounded ? 1 : 0;
    return def;
}

inline PF_ParamDef colour(const char *name, A_long id, const PF_Pixel &value) {
    PF_ParamDef def = param(PF_Param_COLOR, name, id);
    def.u.cd.value = def.u.cd.dephault = value;
    return def;
}

}  // namespace stage_test
