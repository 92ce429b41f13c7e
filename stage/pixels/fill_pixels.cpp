#include "stage/pixels/fill_pixels.h"

#include <algorithm>

namespace stage {
namespace {

// One channel from a scale to another, both in codes.
template <Depth kDepth>
typename DepthTraits<kDepth>::Channel convert(int code, int white) {
    if constexpr (DepthTraits<kDepth>::kInteger) {
        return to_channel<kDepth>(code * DepthTraits<kDepth>::kWhite / white);
    } else {
        return static_cast<float>(code) / static_cast<float>(white);
    }
}

template <Depth kDepth, class Colour>
void fill_as(const PixelView &view, const Box &box, const Colour &colour, int white) {
    using Pixel = typename DepthTraits<kDepth>::Pixel;
    const Box area = intersect(box, bounds(view));
    if (area.empty()) return;
    const Pixel pixel{convert<kDepth>(colour.alpha, white), convert<kDepth>(colour.red, white),
                      convert<kDepth>(colour.green, white), convert<kDepth>(colour.blue, white)};
    for (auto y = area.top; y < area.bottom; ++y) {
        Pixel *row = view.row<Pixel>(static_cast<int>(y));
        std::fill(row + area.left, row + area.right, pixel);
    }
}

}  // namespace

void fill_pixels(const PixelView &view, const Box &box, const PF_Pixel &colour) {
    visit_depth(view.depth, [&]<Depth kDepth>() { fill_as<kDepth>(view, box, colour, kWhite8); });
}

void fill_pixels(const PixelView &view, const Box &box, const PF_Pixel16 &colour) {
    visit_depth(view.depth, [&]<Depth kDepth>() { fill_as<kDepth>(view, box, colour, kWhite16); });
}

}  // namespace stage
