// Geometry of a frame: scale factors, scope panel sizes, monitor layouts, wipe edge, slice line.
//
// All coordinates are pixels of the output world (already downsampled, origin at its top left
// corner). Every truncation is toward zero and safe for NaN (0), infinities and huge values
// (limited to +-2^30, so that two coordinates can be added). [host thread]
#pragma once

#include <array>
#include <cstdint>

#include "geometry/int_rect.h"
#include "model/scope_kind.h"

namespace ks {

/// `value` truncated toward zero, limited to +-2^30; NaN gives 0.
int trunc_to_int(double value);

/// A whole-pixel coordinate from the host's 16.16 form: arithmetic shift, so -0.5 becomes -1.
constexpr int whole_pixels(std::int32_t fixed) {
    return fixed >> 16;
}

/// A ratio of the host as it is used here.
struct Ratio {
    std::int32_t num = 1;
    std::uint32_t den = 1;
};

/// What the frame's sizes are scaled by.
struct FrameScale {
    double pixel_aspect = 1.0;  ///< pixel width / height
    double horizontal = 1.0;    ///< (1 / den_x) / pixel_aspect
    std::uint32_t den_x = 1;    ///< downsampling denominators
    std::uint32_t den_y = 1;
};

/// Only the denominators of the downsample ratios are used; their numerators are taken as 1.
/// Denominators of 0, and pixel aspects that are not above 0, which only foreign hosts hand over,
/// count as 1.
FrameScale make_frame_scale(Ratio pixel_aspect, Ratio downsample_x, Ratio downsample_y);

/// Height of a waveform-type trace area for a width of 1, by the "Waveform Scopes Aspect Ratio"
/// choice: 1 (and any unlisted value) the output's own shape, 2 16:9, 3 4:3, 4 square. The ratio of
/// the two denominators is formed in single precision, the rest in double.
double scope_aspect(int choice, IntSize output, const FrameScale &scale);

/// Size of a scope's panel from its size parameter `size` (pixels at full resolution), label strip
/// included. May come out zero or negative at extreme downsampling.
IntSize scope_panel_size(ScopeSizeRule rule, double size, double aspect, const FrameScale &scale);

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
