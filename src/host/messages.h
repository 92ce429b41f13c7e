// Text for the user, put where the host looks for it after the command.
#pragma once

#include "hostapi/constants.h"
#include "hostapi/in_out_data.h"

namespace ks {

/// Formats `text` into return_msg with the host's sprintf and marks it as an error for the host to
/// show; the command's result stays the caller's business. `text` is taken as it is, and cut to the
/// 255 characters that return_msg holds. [host thread]
inline void show_error_message(PF_InData *in_data, PF_OutData *out_data, const char *text) {
    in_data->utils->ansi.sprintf(out_data->return_msg, "%.255s", text);
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
}

}  // namespace ks
