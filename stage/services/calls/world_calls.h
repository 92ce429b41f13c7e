// Making and disposing of worlds, shared by the world suite and the callback table.
#pragma once

#include "hostapi/effect_types.h"

namespace stage::calls {

/// Fills *world. Error 516 for a null record, an unknown format and sizes that are not 1..30000,
/// error 4 when memory is short; the record is untouched then. [host thread]
PF_Err new_world(const char *name, A_long width, A_long height, bool clear, PF_PixelFormat format,
                 PF_EffectWorld *world) noexcept;

/// Error 516, with a finding, for a world that is not live or that the plug-in did not make. An
/// injected failure disposes of the world all the same: a release that did nothing would make every
/// plug-in leak. [host thread]
PF_Err dispose_world(const char *name, PF_EffectWorld *world) noexcept;

}  // namespace stage::calls
