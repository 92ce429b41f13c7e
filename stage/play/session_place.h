// Positions of the pointer as session files give them.
#pragma once

#include <optional>
#include <string>

#include "stage/play/session_steps.h"

namespace stage {

/// A point of the window in front, of the comp or of a layer.
struct SessionPlace {
    enum class Base { kWindow, kComp, kLayer };

    std::string where;  ///< in the file, for errors
    Base base = Base::kWindow;
    double x = 0, y = 0;            ///< pixels of the base at full resolution
    std::optional<LayerName> of;    ///< kLayer: which one; that of the chosen effect when unset
    double plus_x = 0, plus_y = 0;  ///< window pixels beside it
};

/// `[x, y]` in window pixels, or {"layer": [x, y]} or {"comp": [x, y]} with "of" and "plus".
SessionPlace read_place(const JsonValue &value);

struct WindowPixel {
    int x = 0, y = 0;
};

/// The nearest whole pixel of the window in front. Throws SessionFileError for places that the
/// window cannot show: points of a comp in a layer window, or too far away.
WindowPixel window_pixel(SessionPlayer &player, const SessionPlace &place);

}  // namespace stage
