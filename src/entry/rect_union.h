// Rectangles as the pre-render protocol unites them.
#pragma once

#include <algorithm>

#include "hostapi/effect_types.h"

namespace ks {

/// True when `rect` holds no pixel (right and bottom are exclusive).
inline bool is_empty(const PF_LRect &rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

/// Grows `into` to the bounding box of both. An empty `into` becomes a copy of `rect`, whatever
/// that is; an empty `rect` leaves a non-empty `into` alone. [any thread]
inline void unite(PF_LRect &into, const PF_LRect &rect) {
    if (is_empty(into)) {
        into = rect;
    } else if (!is_empty(rect)) {
        into.left = std::min(into.left, rect.left);
        into.top = std::min(into.top, rect.top);
        into.right = std::max(into.right, rect.right);
        into.bottom = std::max(into.bottom, rect.bottom);
    }
}

}  // namespace ks
