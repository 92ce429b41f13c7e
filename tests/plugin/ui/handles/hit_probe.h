// One click or cursor movement over a scene of the second statement.
#pragma once

#include <cmath>

#include "plugin/ui/handles/expected_handles.h"

namespace expected {

inline double absolute(double value) {
    return std::abs(value);
}

/// The handle that a click takes hold of, -1 for none.
inline int clicked(const Scene &scene, const Window &window, int x, int y) {
    const std::optional<ks::Hit> hit =
        ks::clicked_handle(settings_of(scene), window, {x, y}, absolute);
    return hit ? hit->handle : -1;
}

/// The cursor number at a pixel.
inline int cursor(const Scene &scene, const Window &window, int x, int y) {
    return ks::cursor_at(settings_of(scene), window, {x, y}, absolute);
}

}  // namespace expected
