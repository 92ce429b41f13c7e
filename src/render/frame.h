// What every step of one frame needs from the host.
#pragma once

#include "geometry/frame_scale.h"
#include "host/suite_cache.h"
#include "hostapi/host.h"

namespace ks {

/// Borrowed for the length of one render. `input` and `output` are never null; `original` is null
/// when there is nothing to compare with. [host thread]
struct Frame {
    PF_InData *in_data;
    PF_OutData *out_data;
    SuiteCache &suites;
    PF_WorldSuite2 &worlds;
    PF_PixelFormat format;  ///< the output's, and that of every world made for the frame
    FrameScale scale;
    PF_EffectWorld *input;
    PF_EffectWorld *original;
    PF_EffectWorld *output;
};

}  // namespace ks
