// The monitor layouts: the corrected image and its companions laid out in the output.
#pragma once

#include "geometry/monitor_layout.h"
#include "host/error_chain.h"
#include "render/frame.h"
#include "render/settings.h"
#include "render/wipe.h"

namespace ks {

/// Builds the layout that `settings` names into the output and returns where its marker lines go.
/// Layout codes that no choice has (the popup's separators) are drawn as Single, since every pixel
/// of the output has to be written. [host thread]
Markers draw_monitor_layout(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                            const Wipe &wipe, PF_EffectWorld *corrected);

}  // namespace ks
