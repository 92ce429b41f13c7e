// What dragging a handle does: the record kept between events and the values written. No host
// types.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <variant>

#include "ui/handles/handle_settings.h"
#include "ui/handles/hit_test.h"

namespace ks {

/// What the host keeps between the events of one drag.
struct DragState {
    bool send_drag = false;               ///< drag events are asked for
    std::int64_t handle = kNoHandle;      ///< continuation slot 0: a HandleNumber
    std::array<std::int64_t, 2> slots{};  ///< slots 1 and 2, 16.16: a move bar's grab offset in
                                          ///< window pixels, else the last point
};

/// The table row of the handle being dragged; null when no drag is in progress.
const HandleRow *dragged_handle(const DragState &state);

/// `state` after a click took hold of a handle: drag events asked for, the slots a move bar's grab
/// offset or a corner or wipe handle's window point. The height bar leaves them as they are.
DragState after_click(const Hit &hit, DragState state);

/// `state` after a drag event with the pointer at `pointer` on the layer (none: nowhere); `last`
/// when the button was let go. The scopes' move bars leave all of it as the click set it, the end
/// included: deliberate, the host starts each click with a fresh record.
DragState after_drag(const HandleRow &row, std::optional<FixedPoint> pointer, bool last,
                     DragState state);

/// One value that a drag writes: of a slider, or of a point in 16.16 pixels.
struct ParamWrite {
    Param param = kParamInput;
    std::variant<double, FixedPoint> value;
};

/// At most two, the first `count` of them.
struct ParamWrites {
    std::array<ParamWrite, 2> writes;
    std::size_t count = 0;
};

/// The values that put `row` under `pointer` (layer coordinates). Not limited to the parameters'
/// ranges: that is the host's. A value that has no meaning (a layer or region without extent) is
/// not written. Move bars subtract the grab offset as it stands, window pixels from layer pixels:
/// where the view is zoomed, the bar first jumps by the difference and then follows. Deliberate.
ParamWrites dragged_values(const HandleRow &row, const HandleSettings &settings, FixedPoint pointer,
                           const DragState &state);

}  // namespace ks
