// Affine maps of window coordinates.
#pragma once

#include <array>
#include <optional>

#include "stage/drawbot/draw_list.h"

namespace stage {

/// x' = xx·x + xy·y + x0, y' = yx·x + yy·y + y0.
struct Affine {
    double xx = 1, yx = 0, xy = 0, yy = 1, x0 = 0, y0 = 0;

    struct Point {
        double x = 0, y = 0;
    };
    Point operator()(double x, double y) const {
        return {xx * x + xy * y + x0, yx * x + yy * y + y0};
    }
    bool operator==(const Affine &) const = default;

    /// Row vectors, as in DrawPrimitive::matrix; the third column is not looked at.
    static Affine from_matrix(const std::array<std::array<float, 3>, 3> &matrix);
    /// First `inner`, then this.
    Affine after(const Affine &inner) const;
    /// None for a map that is singular or not finite.
    std::optional<Affine> inverse() const;
};

/// An upright rectangle by its edges; empty when right <= left or bottom <= top.
struct Bounds {
    double left = 0, top = 0, right = 0, bottom = 0;

    bool empty() const { return !(left < right && top < bottom); }
    Bounds within(const Bounds &other) const;
    bool operator==(const Bounds &) const = default;
};

/// The smallest upright rectangle around the mapped one; empty for an empty one.
Bounds mapped(const Affine &map, const Bounds &bounds);

}  // namespace stage
