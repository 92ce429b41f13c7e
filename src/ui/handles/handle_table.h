// The thirteen on-screen handles: one table that the hit test, the drag, the cursor and the drawing
// read. No host types.
#pragma once

#include <array>
#include <optional>

#include "model/scope_kind.h"

namespace ks {

/// A handle's number, its position in kHandleTable: its identity during a drag.
enum HandleNumber : int {
    kMonitorCorner,
    kMonitorBar,
    kWipeHandle,
    kWaveformCorner,
    kWaveformBar,
    kVectorscopeCorner,
    kVectorscopeBar,
    kParadeCorner,
    kParadeBar,
    kSliceCorner,
    kSliceBar,
    kHistogramHeightBar,
    kHistogramBar,
    kHandleCount,
    kNoHandle = -1  ///< no drag is in progress
};

/// What a handle looks like to the pointer, and which values a drag of it writes.
enum class HandleKind {
    kCorner,     ///< a point; the size follows the pointer
    kMoveBar,    ///< a strip on top of a panel; the position follows the pointer
    kHeightBar,  ///< a horizontal line; the height follows the pointer
    kWipe        ///< a point in the compare region; the wipe and its opacity follow the pointer
};

/// What a drag event leaves in the host's record for the next one.
enum class DragRecord {
    kRenewedWithPointer,  ///< the drag goes on, the slots hold the pointer
    kRenewed,             ///< the drag goes on, the slots stay
    kLeft                 ///< all of it stays as the click set it
};

/// What a draw event paints for a handle. The scopes' handles are never drawn.
enum class HandlePaint { kNothing, kCornerTriangle, kBarRectangle, kWipeDiamond };

/// Cursor numbers as the host receives them; the named ones stand beside the host's names in
/// hostapi/constants.h.
inline constexpr int kHostCursor = 0;      ///< the host's own choice
inline constexpr int kHeightCursor = 21;   ///< resize, vertical
inline constexpr int kCornerCursor = 22;   ///< resize, horizontal
inline constexpr int kMoveBarCursor = 75;  ///< move

struct HandleRow {
    HandleNumber number;
    HandleKind kind;
    std::optional<ScopeKind> scope;  ///< whose panel it belongs to; none: the monitor's
    int cursor;                      ///< kHostCursor: the handle has none and is passed over
    DragRecord record;
    HandlePaint paint;
};

/// Row i is handle i. Where handles overlap the lower number wins.
inline constexpr std::array<HandleRow, kHandleCount> kHandleTable{{
    {kMonitorCorner, HandleKind::kCorner, std::nullopt, kCornerCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kCornerTriangle},
    {kMonitorBar, HandleKind::kMoveBar, std::nullopt, kMoveBarCursor, DragRecord::kRenewed,
     HandlePaint::kBarRectangle},
    {kWipeHandle, HandleKind::kWipe, std::nullopt, kHostCursor, DragRecord::kRenewed,
     HandlePaint::kWipeDiamond},
    {kWaveformCorner, HandleKind::kCorner, ScopeKind::kWaveform, kCornerCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kNothing},
    {kWaveformBar, HandleKind::kMoveBar, ScopeKind::kWaveform, kMoveBarCursor, DragRecord::kLeft,
     HandlePaint::kNothing},
    {kVectorscopeCorner, HandleKind::kCorner, ScopeKind::kVectorscope, kCornerCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kNothing},
    {kVectorscopeBar, HandleKind::kMoveBar, ScopeKind::kVectorscope, kMoveBarCursor,
     DragRecord::kLeft, HandlePaint::kNothing},
    {kParadeCorner, HandleKind::kCorner, ScopeKind::kParade, kCornerCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kNothing},
    {kParadeBar, HandleKind::kMoveBar, ScopeKind::kParade, kMoveBarCursor, DragRecord::kLeft,
     HandlePaint::kNothing},
    {kSliceCorner, HandleKind::kCorner, ScopeKind::kSlice, kCornerCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kNothing},
    {kSliceBar, HandleKind::kMoveBar, ScopeKind::kSlice, kMoveBarCursor, DragRecord::kLeft,
     HandlePaint::kNothing},
    {kHistogramHeightBar, HandleKind::kHeightBar, ScopeKind::kHistogram, kHeightCursor,
     DragRecord::kRenewedWithPointer, HandlePaint::kNothing},
    {kHistogramBar, HandleKind::kMoveBar, ScopeKind::kHistogram, kMoveBarCursor, DragRecord::kLeft,
     HandlePaint::kNothing},
}};

static_assert([] {
    for (std::size_t i = 0; i < kHandleTable.size(); ++i) {
        if (kHandleTable[i].number != static_cast<int>(i)) return false;
    }
    return true;
}());

/// The point parameter that places the handle's panel.
constexpr Param position_param(const HandleRow &row) {
    return row.scope ? kScopeTable[scope_slot(*row.scope)].position : kParamMonitorPosition;
}

/// The slider that sizes the handle's panel.
constexpr Param size_param(const HandleRow &row) {
    return row.scope ? kScopeTable[scope_slot(*row.scope)].size : kParamMonitorSize;
}

}  // namespace ks
