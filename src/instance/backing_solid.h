// The solid beneath everything, without which a host skips an adjustment layer over nothing.
#pragma once

#include "host/suite_cache.h"

namespace ks {

/// Sees to it that a full-frame layer stands beneath `effect_layer` in `comp`, changing as little
/// of the user's composition as it can:
/// - a layer beneath counts as full-frame when its video is on, it is no guide, adjustment or null
///   layer, and its source is at least as large as the composition. Nothing is changed then;
/// - otherwise a layer named "KSTR_Backing" is reused wherever it stands, moved to the bottom if it
///   stands above the effect;
/// - otherwise a black opaque solid of that name, of the composition's size and length, is made and
///   moved to the bottom, where it hides nothing.
/// A backing of ours is locked last; the user's own layers never are. Making a solid invalidates
/// the caller's layer handles. Returns the first error of the host. [host thread]
PF_Err ensure_backing(SuiteCache &suites, AEGP_LayerH effect_layer, AEGP_CompH comp);

}  // namespace ks
