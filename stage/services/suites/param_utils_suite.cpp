// "PF Param Utils Suite", numbers 2 and 3: the parameter-UI call.
#include <string>

#include "hostapi/constants.h"
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/effect/effect_instance.h"
#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
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
PF_Err update_param_ui(PF_ProgPtr, PF_ParamIndex index, const PF_ParamDef *def) {
    HostCall call("PF Param Utils Suite.PF_UpdateParamUI");
    if (call.traced()) call.arguments(std::to_string(index));
    if (call.must_fail()) return call.result(call.error());
    ActiveCommand *active = call.host().active;
    if (active == nullptr || active->instance == nullptr || def == nullptr || index < 1 ||
        index >= active->plugin->catalog.count()) {
        call.host().strict.report("params.update_ui", call.command(),
                                  "parameter " + std::to_string(index) + " cannot be updated");
        return call.result(PF_Err_BAD_CALLBACK_PARAM);
    }
    for (const PF_ParamDef *own : active->params_array) {
        if (own == def) {
            call.host().strict.report("params.update_ui", call.command(),
                                      "the definition itself was passed instead of a copy");
        }
    }
    if (const char *part = ignored_change(active->plugin->catalog.at(index).def, *def)) {
        call.host().strict.report("params.update_ui_ignored", call.command(),
                                  std::string("the new ") + part + " of parameter " +
                                      std::to_string(index) + " is ignored");
    }
    ParamLook &look = active->instance->looks.at(static_cast<std::size_t>(index));
    const PF_ParamFlags fixed = look.flags & ~PF_ParamFlag_COLLAPSE_TWIRLY;
    look = look_of(*def);
    look.flags = fixed | (def->flags & PF_ParamFlag_COLLAPSE_TWIRLY);
    return call.result(PF_Err_NONE);
}

constexpr PF_ParamUtilsSuite1 make_suite1() {
    PF_ParamUtilsSuite1 suite{};
    suite.PF_UpdateParamUI = update_param_ui;
    return suite;
}

constexpr PF_ParamUtilsSuite3 make_suite3() {
    PF_ParamUtilsSuite3 suite{};
    suite.PF_UpdateParamUI = update_param_ui;
    return suite;
}

// Slots for keyframes and states are null: no effect of ours asks for them.
constexpr PF_ParamUtilsSuite1 kSuite1 = make_suite1();
constexpr PF_ParamUtilsSuite3 kSuite3 = make_suite3();

}  // namespace

void add_param_utils_suite(SuiteRegistry &suites) {
    suites.add(kPFParamUtilsSuite, kPFParamUtilsSuiteVersion1, &kSuite1);
    suites.add(kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3, &kSuite3);
}

}  // namespace stage
