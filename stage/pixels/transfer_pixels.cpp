#include "stage/pixels/transfer_pixels.h"

namespace stage {
namespace {

template <Depth kDepth>
void transfer(const PixelView &src, const PixelView &dst, const Box &area, std::int64_t dx,
              std::int64_t dy, const Compositing &how) {
    using Pixel = typename DepthTraits<kDepth>::Pixel;
    for (auto y = area.top; y < area.bottom; ++y) {
        const Pixel *in = src.row<const Pixel>(static_cast<int>(y - dy)) + (area.left - dx);
        Pixel *out = dst.row<Pixel>(static_cast<int>(y)) + area.left;
        for (std::int64_t i = 0; i < area.width(); ++i) {
            if (replaces<kDepth>(how, static_cast<double>(in[i].alpha))) {
                out[i] = in[i];
            } else {
                out[i] =
                    pixel_of<kDepth>(composite<kDepth>(how, sample_of(in[i]), sample_of(out[i])));
            }
        }
    }
}

}  // namespace

void transfer_pixels(const PixelView &src, const Box &from, const PixelView &dst, std::int64_t x,
                     std::int64_t y, const Compositing &how) {
    if (how.kind == Compositing::Kind::kNothing) return;
    const std::int64_t dx = x - from.left, dy = y - from.top;
    const Box area = intersect(intersect(from, bounds(src)).shifted(dx, dy), bounds(dst));
    if (area.empty()) return;
    visit_depth(src.depth, [&]<Depth kDepth>() { transfer<kDepth>(src, dst, area, dx, dy, how); });
}

}  // namespace stage
