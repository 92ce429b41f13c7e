// The callbacks embedded in PF_InData: parameters, abort, progress, custom-UI registration.
#pragma once

#include "hostapi/in_out_data.h"

namespace stage {

/// Filled afresh into each PF_InData.
PF_InteractCallbacks interact_callbacks();

}  // namespace stage
