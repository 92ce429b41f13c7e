#include "stage/project/resolution.h"

#include <algorithm>

namespace stage {

Picture downsampled(const Picture &picture, int dx, int dy) {
    if (dx == 1 && dy == 1) return picture;
    Picture result =
        make_picture((picture.width + dx - 1) / dx, (picture.height + dy - 1) / dy, picture.native);
    result.pixel_aspect = picture.pixel_aspect;
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const int right = std::min(picture.width, (x + 1) * dx);
            const int bottom = std::min(picture.height, (y + 1) * dy);
            double sum[4] = {};
            for (int from_y = y * dy; from_y < bottom; ++from_y) {
                for (int from_x = x * dx; from_x < right; ++from_x) {
                    for (int c = 0; c < 4; ++c) sum[c] += picture.at(from_x, from_y)[c];
                }
            }
            const double count = double(right - x * dx) * (bottom - y * dy);
            for (int c = 0; c < 4; ++c) result.at(x, y)[c] = static_cast<float>(sum[c] / count);
        }
    }
    return result;
}

}  // namespace stage
