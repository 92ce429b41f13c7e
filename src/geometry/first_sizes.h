// Sizes of a new instance's scopes, from the layer that it is applied to. No host types.
#pragma once

#include <cstdint>

#include "geometry/frame_scale.h"
#include "model/scope_kind.h"

namespace ks {

/// Range and value of a scope's size parameter, in pixels at full resolution.
struct FirstSize {
    float least;
    float most;
    double value;  ///< may lie outside the range: the host clamps
};

/// The size that a scope of `rule` (width or square, not fixed width) starts with on a layer
/// `layer_width` pixels wide: 0.234375 (15/64) of its width in square pixels, in single precision.
/// The range reaches from 20 % of the width, at most 200 (15 %, at most 150, for a square scope) to
/// half of it, each rounded up from double precision and regardless of the pixel aspect. A pixel
/// aspect that is not above 0 counts as 1.
FirstSize first_size(ScopeSizeRule rule, std::int32_t layer_width, Ratio pixel_aspect);

}  // namespace ks
