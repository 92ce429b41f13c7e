// Pins layers to the middle of their composition, or frees them, through the host's scripting.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

/// Runs the lock script for `lock` 1 and the unlock script for anything else. They set or clear the
/// position expression of the selected layers of the active composition, whichever those are.
/// Returns the script call's error (scripting switched off, a throwing script); throws PF_Err 516
/// when a suite cannot be had. Changes the project: UI thread only. [host thread]
PF_Err run_lock_script(PF_InData *in_data, PF_ParamValue lock);

}  // namespace ks
