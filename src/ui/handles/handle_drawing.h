// What a draw event paints, as lists of points. No host types.
#pragma once

#include <array>
#include <cstddef>
#include <variant>

#include "ui/handles/handle_settings.h"
#include "ui/handles/hit_test.h"

namespace ks {

/// A point of a path, in window pixels; `starts` begins a new piece.
struct PathPoint {
    bool starts = false;
    float x = 0.f;
    float y = 0.f;
};

/// The first `count` points.
struct Path {
    std::array<PathPoint, 6> points{};
    std::size_t count = 0;
};

// In the theme's colour.
struct FilledPath : Path {};
struct StrokedPath : Path {};

/// A rectangle in kBarColour, window pixels.
struct Bar {
    float left, top, width, height;
};

using PaintItem = std::variant<FilledPath, StrokedPath, Bar>;

/// Red, green, blue, alpha of the monitor's move bar.
inline constexpr std::array<float, 4> kBarColour{0.5f, 0.5f, 0.5f, 0.75f};

/// The items of one handle, in painting order: the first `count`.
struct HandleDrawing {
    std::array<PaintItem, 2> items;
    std::size_t count = 0;
};

/// What is painted for `row`: nothing for a scope's handle, for one that is not present, for the
/// wipe's while its parameter is disabled in the panel, and for one that the window cannot show.
/// The monitor's and the region's corners are rounded to the nearest whole window pixel (halves
/// up) before anything is derived from them; the lengths of the shapes do not follow the zoom.
HandleDrawing drawing_of(const HandleRow &row, const HandleSettings &settings,
                         const WindowMap &window);

}  // namespace ks
