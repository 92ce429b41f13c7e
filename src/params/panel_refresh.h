// The panel shows what can be used: which controls are hidden, and which are greyed out.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

/// Brings the panel in line with the values: hides the groups of scopes that are not shown, enables
/// and disables single controls, and sizes the scopes of a new instance: see first_refresh().
/// Nothing happens while `params` does not hold all parameters: see holds_all_params().
/// Returns the first error of the host, which ends the refresh; every reference taken is given
/// back. Throws PF_Err 516 when a suite cannot be had. Hiding is not undoable. UI thread only.
/// [host thread]
PF_Err update_params_ui(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[]);

}  // namespace ks
