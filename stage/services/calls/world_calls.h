// Making and disposing of worlds, shared by the world suite and the callback table.
#pragma once

#include <string>

#include "stage/host/call_table.h"

namespace stage::calls {

/// What a new world is to be.
struct WorldRequest {
    A_long width = 0, height = 0;
    bool clear = false;
    PF_PixelFormat format = 0;
};

std::string describe_request(const WorldRequest &request);

/// Fills `world`. Error 516 for an unknown format and sizes that are not 1..30000, error 4 when
/// memory is short; the record is untouched then. [host thread]
PF_Err new_world(HostCall &call, const WorldRequest &request, PF_EffectWorld &world);

/// A release. Error 516, with a finding, for a world that is not live or that the plug-in did not
/// make. [host thread]
PF_Err dispose_world(HostCall &call, PF_ProgPtr, PF_EffectWorld *world);
std::string describe_disposal(PF_ProgPtr, PF_EffectWorld *world);

}  // namespace stage::calls
