// What the panel's commands work on: the host's definitions of all parameters.
#pragma once

#include "host/suite_cache.h"
#include "hostapi/constants.h"
#include "hostapi/in_out_data.h"
#include "model/param_table.h"

namespace ks {

/// The parameters as the host hands them to panel commands, with their values at the current time.
/// Definitions are the host's: only values may be written, each with its change flag. [host thread]
class Panel {
  public:
    Panel(SuiteCache &suites, PF_InData *in_data, PF_ParamDef *const params[])
        : suites_(suites), in_data_(in_data), params_(params) {}

    [[nodiscard]] PF_ParamDefUnion &value(Param param) const { return params_[param]->u; }
    [[nodiscard]] bool is_on(Param checkbox) const { return value(checkbox).bd.value != 0; }
    [[nodiscard]] std::int32_t choice(Param popup) const { return value(popup).pd.value; }

    /// Lets the host take over the parameter's value from its definition after the command.
    void mark_changed(Param param) const {
        params_[param]->uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    }

    /// Lets `change` alter a copy of the definition, and the host take its looks over from that.
    template <class Change>
    PF_Err update_look(Param param, Change &&change) const {
        PF_ParamDef copy = *params_[param];
        change(copy);
        return suites_.param_utils().PF_UpdateParamUI(in_data_->effect_ref, param, &copy);
    }

  private:
    SuiteCache &suites_;
    PF_InData *in_data_;
    PF_ParamDef *const *params_;
};

/// True when `params` holds every parameter that the effect has added, as it does from the set-up
/// of the parameters on. It may be null; it may end early with a null pointer behind entry 0, the
/// input layer, which is not looked at. [host thread]
inline bool holds_all_params(PF_ParamDef *const params[]) {
    if (params == nullptr) return false;
    for (int index = kParamInput + 1; index < kParamCount; ++index) {
        if (params[index] == nullptr) return false;
    }
    return true;
}

}  // namespace ks
