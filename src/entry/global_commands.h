// Commands that concern the library as a whole.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

/// Puts name, version and description into return_msg. [host thread]
PF_Err about(PF_InData *in_data, PF_OutData *out_data);

/// Reports version and capabilities. Allocates nothing. [host thread]
PF_Err global_setup(PF_InData *in_data, PF_OutData *out_data);

/// Disposes of global data, should the host hand any in. Throws PF_Err 516 when a suite cannot be
/// had. The library may well be called again afterwards. [host thread]
PF_Err global_setdown(PF_InData *in_data);

}  // namespace ks
