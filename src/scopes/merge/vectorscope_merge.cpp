#include "scopes/merge/vectorscope_merge.h"

#include <algorithm>

namespace ks {
namespace {

Colour table_colour(const ScopeSampleContext &context) {
    if (context.monochrome != 0) return context.monochromeColour;
    return {context.vectorscopeGain * 0.2f, 0.0f, 0.0f, 0.0f};
}

}  // namespace

template <class P>
VectorscopeMerge<P>::VectorscopeMerge(const Sampler &sampler)
    : sampler_(sampler),
      plan_(sampler.plan()),
      context_(*plan_.context),
      table_(table_colour(context_)) {}

template <class P>
void VectorscopeMerge<P>::draw_row(int row) const {
    const VectorMap &map = plan_.vectorscope.map;
    const WorldView &bitmap = context_.vectorscopeBitmap;
    const int y = map.top + row;
    const int left = std::max(map.left, 0);
    const int right = std::min(map.left + static_cast<int>(map.width), bitmap.width);
    if (y < 0 || y >= bitmap.height || left >= right) return;
    const std::size_t first =
        static_cast<std::size_t>(row) * map.width + static_cast<std::size_t>(left - map.left);
    P *const pixels = bitmap.pixel<P>(left, y);
    if (context_.monochrome != 0) {
        draw_counts(first, right - left, pixels);
    } else {
        draw_colours(first, right - left, pixels);
    }
}

template <class P>
void VectorscopeMerge<P>::draw_counts(std::size_t first_cell, int count, P *pixels) const {
    const GridPool &grids = sampler_.grids();
    for (int i = 0; i < count; ++i) {
        std::uint32_t hits = 0;
        for (int g = 0; g < grids.used(); ++g) {
            hits += reinterpret_cast<const std::uint32_t *>(
                grids.grid(g))[first_cell + static_cast<std::size_t>(i)];
        }
        if (hits != 0) pixels[i] = table_.after(hits);
    }
}

template <class P>
void VectorscopeMerge<P>::draw_colours(std::size_t first_cell, int count, P *pixels) const {
    using Channel = typename PixelTraits<P>::Channel;
    constexpr float kFull = PixelTraits<P>::kFullScale;
    const GridPool &grids = sampler_.grids();
    for (int i = 0; i < count; ++i) {
        ColourCell<P> sum{};
        for (int g = 0; g < grids.used(); ++g) {
            sum.merge(reinterpret_cast<const ColourCell<P> *>(
                grids.grid(g))[first_cell + static_cast<std::size_t>(i)]);
        }
        const auto channel = [&](auto value) {
            return static_cast<Channel>(std::min(ColourCell<P>::channel(value), kFull));
        };
        const float opaque = std::max(ColourCell<P>::channel(sum.weight) / kOpaqueWeight, 0.0f);
        const P trace{table_.after(static_cast<std::size_t>(opaque + 0.5f)).alpha, channel(sum.red),
                      channel(sum.green), channel(sum.blue)};
        if (sum.weight != 0 || sum.red != 0 || sum.green != 0 || sum.blue != 0) pixels[i] = trace;
    }
}

template class VectorscopeMerge<Pixel8>;
template class VectorscopeMerge<Pixel16>;
template class VectorscopeMerge<PixelF>;

}  // namespace ks
