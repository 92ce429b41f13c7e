// The two traces that the sampling pass does not draw: the Slice Waveform and the histogram's bars.
#include <cmath>

#include "oracle/scope_oracle.h"
#include "oracle/scope_oracle_pixels.h"

namespace ks::oracle {
namespace {

constexpr Colour kWhite{1.0f, 1.0f, 1.0f, 1.0f};
constexpr Colour kRed{1.0f, 1.0f, 0.0f, 0.0f};
constexpr Colour kGreen{1.0f, 0.0f, 1.0f, 0.0f};
constexpr Colour kBlue{1.0f, 0.0f, 0.0f, 1.0f};

// Highest row of a slice trace at any label scale; deliberately not the label band.
constexpr int kSliceTop = 8;

double square_pixels(const ScopeSettings &s) {
    return s.downsample_x_den * (static_cast<double>(s.par_num) / s.par_den);
}

template <Depth D>
void slice_plot(const ScopeContext &c, const TypedPicture<D> &panel, int x, float value,
                const Colour &colour, bool &over_range) {
    if (value > kOverRange) over_range = true;
    const double level = c.slice.bottom - value * c.value_scale * c.slice.span;
    if (std::isnan(level)) return;
    plot_trace(panel, x, trace_row(level, kSliceTop, c.slice.bottom), colour);
}

template <Depth D>
void slice_trace(const Image &source, const ScopeContext &c, ScopeTraces &traces) {
    const TypedPicture<D> panel(traces.panels[kSlice]);
    bool &over = traces.slice_over_range;
    for (int u = 0; u < c.slice_width; ++u) {
        const int column = truncated(static_cast<double>(u) * source.width / c.slice_width);
        const Colour pixel = load_typed<D>(DepthTraits<D>::data(source) +
                                           component_index(source, column, c.slice_row));
        const int x = c.slice.left + u;
        if (c.slice_mode == 1 || c.slice_mode == 3) {
            slice_plot(c, panel, x, trace_luma(pixel, c.luma_math), kWhite, over);
        }
        if (c.slice_mode == 1 || c.slice_mode == 2) {
            slice_plot(c, panel, x, pixel[1], kRed, over);
            slice_plot(c, panel, x, pixel[2], kGreen, over);
            slice_plot(c, panel, x, pixel[3], kBlue, over);
        }
    }
}

template <Depth D>
void channel_bars(Image &image, const std::uint32_t *bins, double scale, const Colour &colour,
                  const ScopeSettings &s, const BarArea &area) {
    const TypedPicture<D> panel(image);
    const long long advance = std::llround(square_pixels(s) * 65536);
    if (advance <= 0) return;
    int u = 0;
    for (long long p = 0; p < 256LL * 65536; p += advance, ++u) {
        const std::uint32_t count = bins[p >> 16];
        const auto height =
            static_cast<std::int16_t>(truncated(count * scale / s.downsample_y_den));
        const int x = truncated(u + area.left);
        for (int i = 0; i < height; ++i) plot_trace(panel, x, area.bottom - i, colour);
    }
}

}  // namespace

void trace_slice(const Image &source, const ScopeContext &context, ScopeTraces &traces) {
    if (!context.show[kSlice] || context.muted) return;
    if (!contains(source, 0, context.slice_row)) return;
    with_depth(source.depth,
               [&](auto depth) { slice_trace<decltype(depth)::value>(source, context, traces); });
}

BarArea histogram_bar_area(const ScopeSettings &s, int panel_height) {
    return {8 / square_pixels(s), panel_height - layout_units(s).vertical_margin - 1};
}

void draw_histogram_bars(Image &panel, const std::vector<std::uint32_t> &bins,
                         const std::array<std::uint32_t, 3> &maxima, const ScopeSettings &s,
                         const BarArea &area) {
    const bool luma_only = s.histogram_channels == 2;
    const std::array<Colour, 3> colours{luma_only ? kWhite : kRed, kGreen, kBlue};
    const double available = s.histogram_height - (layout_units(s).label_scale - 1) * 18;
    for (std::size_t channel = 0; channel < (luma_only ? 1u : 3u); ++channel) {
        const double scale = available / maxima[channel];
        with_depth(panel.depth, [&](auto depth) {
            channel_bars<decltype(depth)::value>(panel, bins.data() + channel * 256, scale,
                                                 colours[channel], s, area);
        });
    }
}

}  // namespace ks::oracle
