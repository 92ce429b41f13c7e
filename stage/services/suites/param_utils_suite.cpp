// "PF Param Utils Suite", numbers 2 and 3: the parameter-UI call.
#include <string>

#include "hostapi/constants.h"
#include "hostapi/suite_names.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/host.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// The part of `def` that the call cannot change, by name; null when it is as it was added.
const char *ignored_change(const PF_ParamDef &added, const PF_ParamDef &def) {
    if (def.param_type != added.param_type) return "type";
    if (((def.flags ^ added.flags) & ~PF_ParamFlag_COLLAPSE_TWIRLY) != 0) return "flags";
    if (added.param_type != PF_Param_FLOAT_SLIDER) return nullptr;
    const PF_FloatSliderDef &was = added.u.fs_d, &is = def.u.fs_d;
    if (is.valid_min != was.valid_min || is.valid_max != was.valid_max) return "valid range";
    return is.dephault != was.dephault ? "default" : nullptr;
}

/// Takes over looks alone; whatever else differs in `def` is ignored, as the real host does.
PF_Err update_param_ui(HostCall &call, PF_ProgPtr, PF_ParamIndex index, const PF_ParamDef *def) {
    ActiveCommand *active = call.host().active;
    if (active == nullptr || active->instance == nullptr || def == nullptr || index < 1 ||
        index >= active->plugin->catalog.count()) {
        call.report("params.update_ui",
                    "parameter " + std::to_string(index) + " cannot be updated");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    for (const PF_ParamDef *own : active->params_array) {
        if (own == def) {
            call.report("params.update_ui", "the definition itself was passed instead of a copy");
        }
    }
    if (const char *part = ignored_change(active->plugin->catalog.at(index).def, *def)) {
        call.report("params.update_ui_ignored", std::string("the new ") + part + " of parameter " +
                                                    std::to_string(index) + " is ignored");
    }
    ParamLook &look = active->instance->looks.at(static_cast<std::size_t>(index));
    const PF_ParamFlags fixed = look.flags & ~PF_ParamFlag_COLLAPSE_TWIRLY;
    look = look_of(*def);
    look.flags = fixed | (def->flags & PF_ParamFlag_COLLAPSE_TWIRLY);
    return PF_Err_NONE;
}

std::string describe_index(PF_ProgPtr, PF_ParamIndex index, const PF_ParamDef *) {
    return std::to_string(index);
}

template <class Suite>
constexpr auto param_utils_table() {
    CallTable<Suite, kPFParamUtilsSuite> table;
    KS_SERVE(PF_UpdateParamUI, update_param_ui, describe_index);
    return table;
}

}  // namespace

void add_param_utils_suite(SuiteRegistry &suites) {
    offer<param_utils_table<PF_ParamUtilsSuite1>>(suites, kPFParamUtilsSuiteVersion1);
    offer<param_utils_table<PF_ParamUtilsSuite3>>(suites, kPFParamUtilsSuiteVersion3);
}

}  // namespace stage
