// The one function that a plug-in exports, under the name its property list gives.
#pragma once

#include "in_out_data.h"

/// Called by the host for every command. `params`, `output` and `extra` depend on the command and
/// may be null. Returns 0 or a PF_Err; never throws. [host thread, one call at a time]
using EntryPoint = PF_Err (*)(PF_Cmd cmd, PF_InData *in_data, PF_OutData *out_data,
                              PF_ParamDef **params, PF_LayerDef *output, void *extra);
