#include "geometry/first_sizes.h"

#include <algorithm>
#include <cmath>

namespace ks {
namespace {

constexpr float kShareOfWidth = 0.234375F;

struct LeastSize {
    double share;  ///< of the layer's width
    double cap;    ///< pixels
};
constexpr LeastSize kLeastWidth{0.2, 200.0};
constexpr LeastSize kLeastSquare{0.15, 150.0};
constexpr double kMostShare = 0.5;

}  // namespace

FirstSize first_size(ScopeSizeRule rule, std::int32_t layer_width, Ratio pixel_aspect) {
    const float width = static_cast<float>(layer_width);
    const LeastSize &least = rule == ScopeSizeRule::kSquare ? kLeastSquare : kLeastWidth;
    const Ratio aspect = usable(pixel_aspect);
    const float value =
        static_cast<float>(aspect.num) / static_cast<float>(aspect.den) * width * kShareOfWidth;
    return {static_cast<float>(std::min(std::ceil(width * least.share), least.cap)),
            static_cast<float>(std::ceil(width * kMostShare)), value};
}

}  // namespace ks
