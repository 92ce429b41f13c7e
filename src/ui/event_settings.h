// The handles' settings from an event's arguments.
#pragma once

#include "hostapi/in_out_data.h"
#include "ui/handles/drag.h"
#include "ui/handles/handle_settings.h"

namespace ks {

/// Reads the values at the current UI time from the parameter array of an event, where points are
/// layer pixels. [host thread]
HandleSettings read_handle_settings(const PF_InData &in_data, PF_ParamDef *const params[]);

/// Writes values into the parameter array, each with its change flag, for the host to take over.
/// [host thread]
void write_params(PF_ParamDef *const params[], const ParamWrites &writes);

}  // namespace ks
