// One frame: measured image, scope worlds, monitor layout, wipe, markers, stacking.
#pragma once

#include "hostapi/in_out_data.h"

namespace ks {

/// Renders one frame of a smart render into `output`.
/// `input` and `output` are the checked-out worlds, never null, same depth; `original` is the
/// "Original Source" world or null. Returns the first error of the host; throws PF_Err when a suite
/// cannot be had. [host thread]
PF_Err render_frame(PF_InData *in_data, PF_OutData *out_data, PF_EffectWorld *input,
                    PF_EffectWorld *original, PF_EffectWorld *output);

}  // namespace ks
