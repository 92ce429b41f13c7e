// The first look at a new instance's panel: its scopes are sized from the layer.
#pragma once

#include "host/suite_cache.h"
#include "params/panel.h"

namespace ks {

/// When the record in out_data->sequence_data has state 0, gives the four scopes that are sized by
/// their width a range and a value from the layer's width, marks them and "RESET" as changed, and
/// sets the state to 1; the histogram's height stays. State is saved with the project, so this
/// happens once per instance. Nothing happens without a record. Returns the first error of the
/// host; the state stays 0 then, and the next refresh tries again. Throws PF_Err 516 when a suite
/// cannot be had. [host thread]
PF_Err first_refresh(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data,
                     const Panel &panel);

}  // namespace ks
