// Looking into a graticule's shapes.
#pragma once

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "scopes/graticule/shapes.h"

namespace ks {

/// The shapes of one kind, in order.
template <class S>
std::vector<S> all_of(const ShapeList &shapes) {
    std::vector<S> found;
    for (const Shape &shape : shapes) {
        if (const S *match = std::get_if<S>(&shape)) found.push_back(*match);
    }
    return found;
}

inline void expect_colour(const Colour &actual, const Colour &expected) {
    EXPECT_FLOAT_EQ(actual.alpha, expected.alpha);
    EXPECT_FLOAT_EQ(actual.red, expected.red);
    EXPECT_FLOAT_EQ(actual.green, expected.green);
    EXPECT_FLOAT_EQ(actual.blue, expected.blue);
}

inline bool same_colour(const Colour &a, const Colour &b) {
    return a.alpha == b.alpha && a.red == b.red && a.green == b.green && a.blue == b.blue;
}

}  // namespace ks
