// The graticules and labels of one frame's scopes.
#pragma once

#include "geometry/frame_scale.h"
#include "geometry/scope_layout.h"
#include "hostapi/in_out_data.h"
#include "scopes/context/sample_context.h"
#include "scopes/scope_set.h"
#include "scopes/traces/slice_trace.h"

namespace ks {

/// Reads the graticules' own parameters, then draws graticule and label box into each panel of
/// `scopes`, in walk order. The traces must have been drawn; `slice` is read only when the slice
/// waveform is on. "Mute Active Scopes" takes the vectorscope's graticule away, box included; the
/// other scopes keep theirs. Returns the first error, with the work after it skipped. [host thread]
PF_Err draw_graticules(PF_InData *in_data, PF_OutData *out_data, const ScopeSet &scopes,
                       const ScopeSampleContext &context, const SliceResult &slice,
                       const LayoutUnits &units, const FrameScale &frame);

}  // namespace ks
