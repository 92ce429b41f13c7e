// Monitor layouts: where the views, the wipe edge and the slice line of a frame go.
//
// All coordinates are pixels of the output world (already downsampled, origin at its top left
// corner). Every truncation is toward zero and safe for NaN (0), infinities and huge values
// (limited to +-2^30, so that two coordinates can be added). [host thread]
#pragma once

#include <array>
#include <cstdint>

#include "geometry/int_rect.h"

namespace ks {

/// Monitor layout codes (the popup's values; 2 and 5 are separators).
enum class MonitorLayout : std::int32_t {
    kSingle = 1,
    kFourWaySplit = 3,
    kFourWayClassic = 4,
    kWindowed = 6,
    kScopesOnly = 7
};

/// A vertical wipe edge, from `top` to `bottom` inclusive.
struct WipeEdge {
    int x = 0;
    int top = 0;
    int bottom = 0;
};

/// A horizontal slice line, from `left` to `right` inclusive.
struct SliceLine {
    int y = 0;
    int left = 0;
    int right = 0;
};

/// Where the marker lines of a frame go.
struct Markers {
    WipeEdge wipe;
    SliceLine slice;
};

/// Markers of the Single layout. `wipe` and `slice` are fractions 0..1.
Markers single_markers(IntSize output, double wipe, double slice);

/// One of the two four-way layouts.
struct FourWayGrid {
    double main_scale = 1.0;            ///< size of the main view
    double main_left = 0.0;             ///< its left edge, not truncated
    double tile_scale = 1.0;            ///< size of the three channel tiles
    IntRect tile_rect;                  ///< a tile's full rectangle, in its own pixels
    std::array<IntPoint, 3> corners{};  ///< top left corners of the tiles
};

/// Split: a 2 x 2 grid with the main view top left. Classic (`classic` true): a main view of three
/// quarters at the top right, and the tiles in a row of quarters beneath it.
FourWayGrid four_way_grid(bool classic, IntSize output);

/// Size of a tile's world: the input scaled. Zero for an input only a few pixels wide.
IntSize four_way_tile_size(const FourWayGrid &grid, IntSize input);

/// Markers of a four-way layout. The wipe edge starts and ends at the row of the tiles beneath, a
/// single pixel at the bottom of the main view: deliberate.
Markers four_way_markers(const FourWayGrid &grid, IntSize output, double wipe, double slice);

/// Markers of the Windowed layout: the view scaled by `scale`, top left corner at `corner`. The
/// slice line is placed over the full scaled height where the other layouts use height - 1:
/// deliberate.
Markers windowed_markers(IntPoint corner, double scale, IntSize output, double wipe, double slice);

/// Left part of the original that a wipe shows: `wipe` of the output's width, its full height.
IntRect wipe_rect(IntSize output, double wipe);

/// Offset that centres `original` on `input`, per axis: half the difference truncated where the
/// original is smaller, else 0.
IntPoint wipe_offset(IntSize input, IntSize original);

}  // namespace ks
