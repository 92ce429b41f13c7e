#include "ui/handles/drag.h"

#include <cmath>

namespace ks {
namespace {

void write_point(ParamWrites &writes, Param param, FixedPoint point) {
    writes.writes[writes.count++] = {param, point};
}

void write_number(ParamWrites &writes, Param param, double number) {
    if (std::isfinite(number)) writes.writes[writes.count++] = {param, number};
}

/// From the panel's left edge to the pointer, in square pixels.
double dragged_width(const PanelSetting &panel, const HandleSettings &settings,
                     FixedPoint pointer) {
    return (to_pixels(pointer.x) - to_pixels(panel.position.x)) * settings.frame.pixel_aspect;
}

FixedPoint dragged_position(const HandleSettings &settings, FixedPoint pointer,
                            const DragState &state) {
    const double x = pointer.x - static_cast<double>(state.slots[0]);
    const double y = pointer.y - static_cast<double>(state.slots[1]);
    return {to_fixed(x / 65536.0 * settings.frame.pixel_aspect), to_fixed(y / 65536.0)};
}

void write_wipe(ParamWrites &writes, const HandleSettings &settings, FixedPoint pointer) {
    const std::optional<LayerRect> region = wipe_region(settings, clicked_monitor(settings));
    if (!region) return;
    const double x = to_pixels(pointer.x) - region->from.x;
    const double y = to_pixels(pointer.y) - region->from.y;
    const double half = trunc_to_int((region->to.y - region->from.y) * 0.5);
    const double width = region->to.x - region->from.x;
    // The opacity runs from the region's middle (100) down to 0.9 of its height (0).
    if (width != 0.0) write_number(writes, kParamCompareWithOriginal, x / width * 100.0);
    if (half != 0.0) write_number(writes, kParamCompareOpacity, 100.0 - (y - half) * 125.0 / half);
}

}  // namespace

const HandleRow *dragged_handle(const DragState &state) {
    if (state.handle < 0 || state.handle >= kHandleCount) return nullptr;
    return &kHandleTable[static_cast<std::size_t>(state.handle)];
}

DragState after_click(const Hit &hit, DragState state) {
    state.send_drag = true;
    state.handle = hit.handle;
    switch (kHandleTable[static_cast<std::size_t>(hit.handle)].kind) {
        case HandleKind::kMoveBar:
            state.slots = {hit.grab_x, hit.grab_y};
            break;
        case HandleKind::kCorner:
        case HandleKind::kWipe:
            state.slots = {hit.origin.x, hit.origin.y};
            break;
        case HandleKind::kHeightBar:
            break;
    }
    return state;
}

DragState after_drag(const HandleRow &row, std::optional<FixedPoint> pointer, bool last,
                     DragState state) {
    if (row.record == DragRecord::kLeft) return state;
    state.send_drag = !last;
    state.handle = last ? kNoHandle : row.number;
    if (row.record == DragRecord::kRenewedWithPointer && pointer) {
        state.slots = {pointer->x, pointer->y};
    }
    return state;
}

ParamWrites dragged_values(const HandleRow &row, const HandleSettings &settings, FixedPoint pointer,
                           const DragState &state) {
    const PanelSetting &panel = panel_of(row, settings);
    ParamWrites writes;
    switch (row.kind) {
        case HandleKind::kCorner: {
            const double width = dragged_width(panel, settings, pointer);
            if (row.scope) {
                write_number(writes, size_param(row), width);
            } else if (settings.width > 0) {
                write_number(writes, size_param(row), width * 100.0 / settings.width);
            }
            break;
        }
        case HandleKind::kHeightBar:
            write_number(writes, size_param(row),
                         to_pixels(pointer.y) - to_pixels(panel.position.y) - kHeightBarOffset);
            break;
        case HandleKind::kMoveBar:
            write_point(writes, position_param(row), dragged_position(settings, pointer, state));
            break;
        case HandleKind::kWipe:
            write_wipe(writes, settings, pointer);
            break;
    }
    return writes;
}

}  // namespace ks
