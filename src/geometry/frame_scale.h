// Scale factors of a frame, and the whole pixels that they lead to. [host thread]
#pragma once

#include <cstdint>

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

/// `ratio`, or 1 for one that is not above 0, which only foreign hosts hand over.
constexpr Ratio usable(Ratio ratio) {
    return ratio.num > 0 && ratio.den != 0 ? ratio : Ratio{};
}

/// What the frame's sizes are scaled by.
struct FrameScale {
    double pixel_aspect = 1.0;  ///< pixel width / height
    double horizontal = 1.0;    ///< (1 / den_x) / pixel_aspect
    std::uint32_t den_x = 1;    ///< downsampling denominators
    std::uint32_t den_y = 1;
};

/// Only the denominators of the downsample ratios are used; their numerators are taken as 1.
/// Denominators of 0, and pixel aspects that are not above 0, count as 1; see usable().
FrameScale make_frame_scale(Ratio pixel_aspect, Ratio downsample_x, Ratio downsample_y);

}  // namespace ks
