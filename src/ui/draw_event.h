// Painting the handles into a window of the host.
#pragma once

#include "hostapi/events.h"
#include "ui/handles/handle_settings.h"
#include "ui/handles/hit_test.h"

namespace ks {

/// Paints the handles through Drawbot and the overlay theme. A missing drawing reference, failing
/// drawing calls and failing releases end the painting silently; every path and every suite is
/// given back. Throws 516 for a suite that cannot be had. [host thread]
void draw_handles(PF_InData *in_data, PF_OutData *out_data, PF_EventExtra &extra,
                  const HandleSettings &settings, const WindowMap &window);

}  // namespace ks
