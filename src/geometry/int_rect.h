// Points, sizes and rectangles in whole pixels.
#pragma once

namespace ks {

/// Left, top, right, bottom in whole pixels; right and bottom exclusive.
struct IntRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

struct IntPoint {
    int x = 0;
    int y = 0;
};

struct IntSize {
    int width = 0;
    int height = 0;
};

}  // namespace ks
