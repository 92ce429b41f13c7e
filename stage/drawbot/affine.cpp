#include "stage/drawbot/affine.h"

#include <algorithm>
#include <cmath>

namespace stage {

Affine Affine::from_matrix(const std::array<std::array<float, 3>, 3> &matrix) {
    return {matrix[0][0], matrix[0][1], matrix[1][0], matrix[1][1], matrix[2][0], matrix[2][1]};
}

Affine Affine::after(const Affine &inner) const {
    const Point origin = (*this)(inner.x0, inner.y0);
    return {xx * inner.xx + xy * inner.yx,
            yx * inner.xx + yy * inner.yx,
            xx * inner.xy + xy * inner.yy,
            yx * inner.xy + yy * inner.yy,
            origin.x,
            origin.y};
}

std::optional<Affine> Affine::inverse() const {
    const double determinant = xx * yy - xy * yx;
    if (!std::isfinite(determinant) || determinant == 0) return std::nullopt;
    Affine result{yy / determinant, -yx / determinant, -xy / determinant, xx / determinant, 0, 0};
    const Point origin = result(x0, y0);
    result.x0 = -origin.x;
    result.y0 = -origin.y;
    for (const double value : {result.xx, result.yx, result.xy, result.yy, result.x0, result.y0}) {
        if (!std::isfinite(value)) return std::nullopt;
    }
    return result;
}

Bounds Bounds::within(const Bounds &other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

Bounds mapped(const Affine &map, const Bounds &bounds) {
    if (bounds.empty()) return {};
    const Affine::Point a = map(bounds.left, bounds.top), b = map(bounds.right, bounds.top),
                        c = map(bounds.left, bounds.bottom), d = map(bounds.right, bounds.bottom);
    const auto [left, right] = std::minmax({a.x, b.x, c.x, d.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y, d.y});
    return {left, top, right, bottom};
}

}  // namespace stage
