// The functions that the host's iterate suites run per pixel: one per depth and view mode, so that
// no pixel decides anything that is the same for the whole frame.
#pragma once

#include <cstdint>

#include "hostapi/effect_types.h"

namespace ks {

// Each takes the view mode (View's codes; any other gives the copying function) and returns a
// callback whose refcon is a `const ConversionRecord *`, completed by prepare_record. The callbacks
// touch only their own pixel, never fail and return 0. The 8- and 16-bit ones convert the pixel to
// float and back on the stack. `in` and `out` may be the same pixel. [worker]
PF_IteratePixel8Func view_callback_8(std::int32_t view_mode);
PF_IteratePixel16Func view_callback_16(std::int32_t view_mode);
PF_IteratePixelFloatFunc view_callback_float(std::int32_t view_mode);

}  // namespace ks
