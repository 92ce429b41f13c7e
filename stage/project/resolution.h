// The resolution that a viewer or a render works at.
#pragma once

#include "stage/image/picture.h"

namespace stage {

/// Denominators: 1/x of the columns and 1/y of the rows, 1..100.
struct Resolution {
    int x = 1, y = 1;

    /// Sizes round up.
    int width(int full) const { return (full + x - 1) / x; }
    int height(int full) const { return (full + y - 1) / y; }
    bool operator==(const Resolution &) const = default;
};

/// `picture` at 1/dx × 1/dy resolution: each pixel the mean of its block, sizes rounded up, blocks
/// cut off at the right and bottom edge. 1×1 hands the samples through.
Picture downsampled(const Picture &picture, int dx, int dy);

}  // namespace stage
