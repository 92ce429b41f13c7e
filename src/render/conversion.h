// Running the view conversion over a world through the host's iterate suites.
#pragma once

#include "host/suite_cache.h"
#include "hostapi/in_out_data.h"
#include "pixels/views.h"

namespace ks {

/// Asks the host for an abort and returns its answer if there is one; otherwise converts every
/// pixel of `source` inside `area` (null: the whole world) into `destination`, by the record's
/// pixel format, on the host's threads. `source` and `destination` may be the same world. An
/// unknown format returns 516; throws 516 when the iterate suite is refused. [host thread]
PF_Err run_conversion(SuiteCache &suites, PF_InData *in_data, PF_EffectWorld *source,
                      const PF_Rect *area, ConversionRecord &record, PF_EffectWorld *destination);

}  // namespace ks
