#include "geometry/frame_scale.h"

namespace ks {

int trunc_to_int(double value) {
    constexpr double kLimit = 1073741824.0;
    if (value >= kLimit) return 1 << 30;
    if (value <= -kLimit) return -(1 << 30);
    return value == value ? static_cast<int>(value) : 0;
}

FrameScale make_frame_scale(Ratio pixel_aspect, Ratio downsample_x, Ratio downsample_y) {
    FrameScale scale;
    const Ratio aspect = usable(pixel_aspect);
    scale.pixel_aspect = static_cast<double>(aspect.num) / static_cast<double>(aspect.den);
    if (downsample_x.den != 0) scale.den_x = downsample_x.den;
    if (downsample_y.den != 0) scale.den_y = downsample_y.den;
    scale.horizontal = (1.0 / static_cast<double>(scale.den_x)) / scale.pixel_aspect;
    return scale;
}

}  // namespace ks
