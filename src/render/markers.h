// The marker lines over the monitor view: the wipe's edge and the slice waveform's row.
#pragma once

#include "geometry/monitor_layout.h"
#include "host/error_chain.h"
#include "render/frame.h"
#include "render/settings.h"
#include "render/wipe.h"

namespace ks {

/// Draws straight into the output: the edge of a wipe that leaves part of the picture, and, with
/// the slice waveform on, its row as a dashed line. [host thread]
void draw_markers(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                  const Wipe &wipe, const Markers &markers);

}  // namespace ks
