// Reads the scopes' parameters.
#pragma once

#include "host/error_chain.h"
#include "hostapi/in_out_data.h"
#include "scopes/context/scope_settings.h"
#include "scopes/scope_set.h"

namespace ks {

/// Reads, within `chain`: the luma math and the sampling quality; the highest waveform value for
/// float pictures with a waveform-type scope; then what each enabled scope has, in the order of the
/// parameters. Values that could not be read keep their initial ones. [host thread]
ScopeSettings read_scope_settings(ErrorChain &chain, PF_InData *in_data, PF_PixelFormat format,
                                  const ScopeSet &scopes);

}  // namespace ks
