// Runs the scopes of one frame.
#pragma once

#include "hostapi/in_out_data.h"
#include "scopes/scope_set.h"

namespace ks {

/// Measures `measured` (a world of format `format`, the output's) and draws each enabled scope into
/// its panel of `scopes`. Called at most once per frame, and only when a scope is enabled.
/// No scope draws yet: nothing is read or written, the panels stay cleared, the result is 0. This
/// is the seam behind which the scopes are added. [host thread]
PF_Err run_scopes(PF_InData *in_data, PF_OutData *out_data, PF_PixelFormat format,
                  PF_EffectWorld *measured, ScopeSet &scopes);

}  // namespace ks
