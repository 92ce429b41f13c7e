// Hands the parameter table to the host.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

/// Adds the 68 parameters behind the input layer, in order, then registers the custom UI for the
/// composition and layer windows. After a failed add the remaining ones are skipped and the UI is
/// not registered. Sets num_params to 69 whatever happened; returns the first error. [host thread]
PF_Err params_setup(PF_InData *in_data, PF_OutData *out_data);

}  // namespace ks
