// The callbacks behind in_data->utils: ANSI functions, copy, fill, iterate, handles.
#pragma once

#include "hostapi/in_out_data.h"

namespace stage {

/// The one table handed to every command; slots that no plug-in of ours uses are null.
PF_UtilCallbacks *utility_callbacks();

}  // namespace stage
