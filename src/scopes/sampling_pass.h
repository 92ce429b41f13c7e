// Measures the picture on the host's threads.
#pragma once

#include "host/suite_cache.h"
#include "scopes/context/sample_context.h"

namespace ks {

/// Samples `context.source` and draws the traces of the waveform, the parade and the vectorscope
/// into their bitmaps, which must be cleared; fills the histogram's bins and maxima, and the
/// over-range flags. Does nothing when muted, or when none of these four scopes is on.
///
/// The host's generic iteration counts, then draws: the counters are one host handle, counting
/// allocates nothing, and drawing only where a column is plotted sample by sample. The result does
/// not depend on the order or the threads of the parts; their number, the host's thread count
/// limited to 64, decides which last rows are not sampled. Returns 0, the host's error, 4 when
/// memory cannot be had, 516 for an unknown pixel format. Throws 516 without the suites. [host
/// thread]
PF_Err run_sampling_pass(SuiteCache &suites, ScopeSampleContext &context);

}  // namespace ks
