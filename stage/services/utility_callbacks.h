// The callbacks behind in_data->utils: ANSI functions, copy, fill, iterate, handles.
#pragma once

#include "hostapi/in_out_data.h"

namespace stage {

/// The one table handed to every command. Slots that this host does not carry out report
/// "suite.unimplemented" and return 516; get_batch_func_is_deprecated, app and colorCB are null.
/// Calls are traced as "utils.<slot>" and "utils.ansi.<slot>".
PF_UtilCallbacks *utility_callbacks();

}  // namespace stage
