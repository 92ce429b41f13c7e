// Runs the scopes of one frame.
#pragma once

#include "hostapi/in_out_data.h"
#include "scopes/scope_set.h"

namespace ks {

/// Measures `measured` (a world of format `format`, the output's) and draws each enabled scope,
/// with graticule and labels, into its panel of `scopes`. Called at most once per frame, and only
/// when a scope is enabled. Writes the label scale into the instance record. Returns the first
/// error, with the work after it skipped. Throws 516 when a suite cannot be had. [host thread]
PF_Err run_scopes(PF_InData *in_data, PF_OutData *out_data, PF_PixelFormat format,
                  PF_EffectWorld *measured, ScopeSet &scopes);

}  // namespace ks
