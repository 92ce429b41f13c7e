// Which handle lies under the pointer. No host types.
#pragma once

#include <cstdint>
#include <optional>

#include "ui/handles/handle_geometry.h"
#include "ui/handles/handle_settings.h"
#include "ui/handles/handle_table.h"

namespace ks {

/// A pointer position in whole window pixels.
struct WindowPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// How a window shows the layer.
class WindowMap {
  public:
    virtual ~WindowMap() = default;

    /// Window coordinates of a layer point, 16.16; none when the window cannot show it.
    [[nodiscard]] virtual std::optional<FixedPoint> to_window(LayerPoint point) const = 0;
};

/// The absolute value of a double: the host brings its own.
using AbsoluteValue = double (*)(double);

/// A handle under the pointer.
struct Hit {
    HandleNumber handle = kNoHandle;
    FixedPoint origin;        ///< where the handle's left top corner lies in the window
    std::int64_t grab_x = 0;  ///< pointer - origin, 16.16 window pixels: as far as two window
    std::int64_t grab_y = 0;  ///< coordinates can be apart, more than 32 bits
};

/// The first present handle that a click at `pointer` takes hold of. A handle whose corners the
/// window cannot show is passed over. Distances keep the fractions of the window coordinates.
std::optional<Hit> clicked_handle(const HandleSettings &settings, const WindowMap &window,
                                  WindowPoint pointer, AbsoluteValue absolute);

/// The cursor number over `pointer`: that of the first present handle that has one, kHostCursor
/// when there is none.
int cursor_at(const HandleSettings &settings, const WindowMap &window, WindowPoint pointer,
              AbsoluteValue absolute);

}  // namespace ks
