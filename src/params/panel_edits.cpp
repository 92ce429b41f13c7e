#include "params/panel_edits.h"

#include "host/scoped.h"
#include "host/suite_cache.h"
#include "instance/lock_script.h"
#include "instance/sequence.h"
#include "model/record.h"
#include "model/scope_kind.h"
#include "model/stacking_order.h"
#include "params/panel.h"
#include "params/panel_refresh.h"

namespace ks {
namespace {

static_assert(kMaxScopes == kScopeKinds);

using OrderEdit = void (*)(InstanceRecord &, ScopeKind);

PF_Err edit_order(PF_InData *in_data, PF_OutData *out_data, OrderEdit edit, ScopeKind kind) {
    SuiteCache suites(in_data->pica_basicP);
    PF_Handle data = out_data->sequence_data;
    const LockedHandle<InstanceRecord> record(suites.handle(), data);
    if (record.get() == nullptr) return PF_Err_INTERNAL_STRUCT_DAMAGED;
    // Flat data has no order at the record's offsets.
    if (suites.handle().host_get_handle_size(data) < sizeof(InstanceRecord)) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
    edit(*record.get(), kind);
    return PF_Err_NONE;
}

PF_Err reset(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[]) {
    constexpr bool check_layer = false;
    const PF_Err error = sequence_setup(in_data, out_data, check_layer);
    return error != PF_Err_NONE ? error : update_params_ui(in_data, out_data, params);
}

PF_Err follow_box(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[],
                  Param edited, PF_ParamValue value) {
    if (edited == kParamReset) {
        return value == 0 ? PF_Err_NONE : reset(in_data, out_data, params);
    }
    if (edited == kParamLockLayerPosition) return run_lock_script(in_data, value);
    for (const ScopeRow &row : kScopeTable) {
        if (edited != row.show) continue;
        return edit_order(in_data, out_data, value != 0 ? add_scope : remove_scope, row.kind);
    }
    return PF_Err_NONE;
}

}  // namespace

PF_Err user_changed_param(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[],
                          const PF_UserChangedParamExtra *edit) {
    if (edit == nullptr || edit->param_index < 0 || edit->param_index >= kParamCount) {
        return PF_Err_NONE;
    }
    const auto edited = static_cast<Param>(edit->param_index);
    for (const ScopeRow &row : kScopeTable) {
        if (edited != row.position) continue;
        return edit_order(in_data, out_data, bring_scope_to_front, row.kind);
    }
    const bool is_box = kParamTable[static_cast<std::size_t>(edited)].kind == ParamKind::checkbox;
    if (!is_box || params == nullptr || params[edited] == nullptr) return PF_Err_NONE;
    return follow_box(in_data, out_data, params, edited, params[edited]->u.bd.value);
}

}  // namespace ks
