// The smart-render pair, the only way in which the effect renders.
#pragma once

#include "hostapi/smart_render.h"

namespace ks {

/// Asks the host for the input and the "Original Source" layer with the request as it came, and
/// reports the input's rectangles as the result, always as solid. Returns the first error of the
/// two check-outs. [host thread]
PF_Err smart_pre_render(PF_InData *in_data, PF_PreRenderExtra *extra);

/// Renders one frame: fetches the worlds, renders, checks them in. Frames under 75 rows are passed
/// through unchanged. Without sequence data: shown message and PF_Err_INTERNAL_STRUCT_DAMAGED
/// (512). Worlds that the host hands over as null with error 0 mean nothing to draw: a null output
/// is left alone, and over a null input the output becomes transparent. Returns the first error of
/// the host; throws PF_Err when a suite cannot be had, with the layers checked in. [host thread]
PF_Err smart_render(PF_InData *in_data, PF_OutData *out_data, PF_SmartRenderExtra *extra);

}  // namespace ks
