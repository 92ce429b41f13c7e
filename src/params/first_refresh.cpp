#include "params/first_refresh.h"

#include "geometry/first_sizes.h"
#include "host/error_chain.h"
#include "host/scoped.h"
#include "model/record.h"

namespace ks {
namespace {

PF_Err set_first_size(const Panel &panel, Param param, const FirstSize &size) {
    const PF_Err error = panel.update_look(param, [&](PF_ParamDef &def) {
        def.u.fs_d.valid_min = def.u.fs_d.slider_min = size.least;
        def.u.fs_d.valid_max = def.u.fs_d.slider_max = size.most;
        def.u.fs_d.value = size.value;
        def.flags |= PF_ParamFlag_COLLAPSE_TWIRLY;
    });
    if (error != PF_Err_NONE) return error;
    panel.value(param).fs_d.value = size.value;
    panel.mark_changed(param);
    return PF_Err_NONE;
}

PF_Err size_scopes(PF_InData *in_data, const Panel &panel) {
    const Ratio pixel_aspect{in_data->pixel_aspect_ratio.num, in_data->pixel_aspect_ratio.den};
    ErrorChain chain;
    panel.mark_changed(kParamReset);
    for (const ScopeRow &row : kScopeTable) {
        if (row.size_rule == ScopeSizeRule::kFixedWidth) continue;
        const FirstSize size = first_size(row.size_rule, in_data->width, pixel_aspect);
        chain.step([&] { return set_first_size(panel, row.size, size); });
    }
    return chain.result();
}

}  // namespace

PF_Err first_refresh(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data,
                     const Panel &panel) {
    if (out_data->sequence_data == nullptr) return PF_Err_NONE;
    // The state leads the flat form too, so that data in either form is looked at safely.
    static_assert(offsetof(InstanceRecord, state) == 0 && offsetof(FlatRecord, state) == 0);
    const LockedHandle<std::uint8_t> state(suites.handle(), out_data->sequence_data);
    if (state.get() == nullptr || *state.get() != 0) return PF_Err_NONE;
    const PF_Err error = size_scopes(in_data, panel);
    if (error == PF_Err_NONE) *state.get() = 1;
    return error;
}

}  // namespace ks
