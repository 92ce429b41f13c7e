// How a newly applied effect sits in its composition: warning, guide layer, backing solid.
#pragma once

#include "host/suite_cache.h"

namespace ks {

/// Looks at the layer that the effect was applied to; nothing happens outside a composition.
/// On an adjustment layer: makes it a guide layer, so that the monitoring never reaches final
/// output, and sees to a backing: see ensure_backing(). On any other layer: shows a warning when
/// its source's dimensions differ from the composition's; that is not an error.
/// `layer` may be a dead handle afterwards. Returns the first error of the host. Changes the
/// project: UI thread only. [host thread]
PF_Err set_up_composition(SuiteCache &suites, PF_InData *in_data, PF_OutData *out_data,
                          AEGP_LayerH layer, bool adjustment);

}  // namespace ks
