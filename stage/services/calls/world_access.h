// Worlds that a plug-in passes, as pixels and as text.
#pragma once

#include <string>

#include "hostapi/constants.h"
#include "hostapi/effect_types.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"
#include "stage/pixels/pixel_view.h"

namespace stage {

/// The pixels of a plug-in's world record. False after a finding: "world.dead" for null and for
/// records whose pixels are no live world's, "world.record" for one that was changed to reach
/// beyond its pixels. `role` names the argument, for example "src".
bool view_of(HostCall &call, const PF_EffectWorld *world, const char *role, PixelView &view);

/// Both worlds; false as above, and when their depths differ.
bool views_of(HostCall &call, const PF_EffectWorld *src, const PF_EffectWorld *dst,
              PixelView &src_view, PixelView &dst_view);

/// "200x130", "null"; safe for dead worlds.
std::string describe_world(const PF_EffectWorld *world);
/// "[0,0,200,130]", "all" for null.
std::string describe_rect(const PF_LRect *rect);

}  // namespace stage
