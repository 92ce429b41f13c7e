// The corrected image: the input in the chosen view, with monitor gamma and gain.
#pragma once

#include "host/error_chain.h"
#include "host/owned_world.h"
#include "pixels/views.h"
#include "render/frame.h"
#include "render/settings.h"

namespace ks {

/// A record for converting pixels of the frame's format in view `view_mode`, without tables.
ConversionRecord make_conversion_record(const Frame &frame, const RenderSettings &settings,
                                        std::uint8_t apply_curve, std::int32_t view_mode);

/// Creates `corrected` in the output's size and fills it from the input: a host copy when view,
/// gain and gamma change nothing, else one conversion pass. The gamma tables of the instance record
/// are rebuilt first if "Monitor Gamma" differs from the gamma they hold, compared as doubles: a
/// gamma that single precision cannot hold is rebuilt every frame. [host thread]
void make_corrected_world(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                          OwnedWorld &corrected);

}  // namespace ks
