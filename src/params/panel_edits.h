// What an edit in the panel sets off beyond the value itself.
#pragma once

#include "hostapi/events.h"
#include "hostapi/in_out_data.h"

namespace ks {

/// Follows the user's edit of `edit->param_index`:
/// - a "Show ..." box adds the scope to the stacking order or removes it, a "Scope Position" brings
///   it to the front, in the record of out_data->sequence_data. Returns 512 and changes nothing
///   when there is no such record, be it that the data is null, cannot be locked or is too short;
/// - "Lock Layer Position" runs run_lock_script() with the box's value;
/// - "RESET", switched on, builds the record anew and refreshes the panel.
/// Other edits do nothing, nor does a box whose value is unknown because `params` or its entry is
/// null. Returns the first error of the host. Throws PF_Err 516 when a suite cannot be had. UI
/// thread only. [host thread]
PF_Err user_changed_param(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *const params[],
                          const PF_UserChangedParamExtra *edit);

}  // namespace ks
