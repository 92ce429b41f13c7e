// PF_Cmd_EVENT: the on-screen handles under the user's pointer.
#pragma once

#include "hostapi/events.h"

namespace ks {

/// Serves clicks, drags, cursor and draw events in the composition and layer windows; any other
/// event is left alone, record included. Marks a click that took hold of a handle, every drag and
/// every draw as handled. A drag's values go into `params` with their change flags. Returns 0
/// always; throws 516 for a suite that cannot be had. [host thread]
PF_Err handle_event(PF_InData *in_data, PF_OutData *out_data, PF_ParamDef *params[],
                    PF_EventExtra *extra);

}  // namespace ks
