#include "scopes/traces/histogram_bars.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry/scope_panel.h"
#include "pixels/plot.h"

namespace ks {
namespace {

constexpr Colour kLumaColour{1.0f, 1.0f, 1.0f, 1.0f};
constexpr std::array<Colour, 3> kChannelColours{
    {{1.0f, 1.0f, 0.0f, 0.0f}, {1.0f, 0.0f, 1.0f, 0.0f}, {1.0f, 0.0f, 0.0f, 1.0f}}};

constexpr double kLeftMargin = 8.0;          ///< full-resolution pixels
constexpr std::int64_t kFixedOne = 1 << 16;  ///< 16.16 fixed point
constexpr std::int64_t kFixedEnd = kHistogramBins * kFixedOne;

/// Where the bars stand.
struct BarArea {
    int bottom = 0;            ///< lowest row of a bar, inclusive
    double left = 0.0;         ///< panel x of the first column, not truncated
    std::int64_t step = 0;     ///< bins per column, 16.16
    double full_height = 0.0;  ///< of the fullest bin, full-resolution pixels
    double den_y = 1.0;
};

BarArea bar_area(int panel_height, const LayoutUnits &units, const FrameScale &frame,
                 double scope_height) {
    const double across = frame.den_x * frame.pixel_aspect;
    BarArea area;
    area.bottom = panel_height - units.margin_v - 1;
    area.left = kLeftMargin / across;
    // Beyond 256 bins per column one column is left: the limit only keeps the number whole.
    area.step = std::llround(std::min(across, double{kHistogramBins}) * double{kFixedOne});
    area.full_height = scope_height - (units.scale - 1.0) * kLabelStrip;
    area.den_y = frame.den_y;
    return area;
}

template <class P>
void draw_bar(const WorldView &panel, int x, int bottom, int height, const Colour &colour) {
    const int top = std::max(bottom - height + 1, 0);
    for (int y = std::min(bottom, panel.height - 1); y >= top; --y) {
        blend_pixel(*panel.pixel<P>(x, y), colour, kPlotAdditive | kPlotClampFloat);
    }
}

template <class P>
void draw_channel(const WorldView &panel, const BarArea &area, const std::uint32_t *bins,
                  std::uint32_t maximum, const Colour &colour) {
    const double scale = area.full_height / maximum;
    std::int64_t position = 0;
    for (int u = 0; position < kFixedEnd; ++u, position += area.step) {
        const int x = trunc_to_int(u + area.left);
        if (x >= panel.width) return;
        const double pixels = bins[position / kFixedOne] * scale / area.den_y;
        const auto height = static_cast<std::int16_t>(trunc_to_int(pixels));
        draw_bar<P>(panel, x, area.bottom, height, colour);
    }
}

}  // namespace

std::int32_t draw_histogram_bars(const ScopeSampleContext &context, const WorldView &panel,
                                 const LayoutUnits &units, const FrameScale &frame,
                                 double scope_height) {
    const BarArea area = bar_area(panel.height, units, frame, scope_height);
    return visit_format(context.pixelFormat, [&](auto pixel) {
        using P = decltype(pixel);
        if (panel.base == nullptr || context.histogramBins == nullptr) return 0;
        if (context.histogramRgb == HistogramMode::kLuma) {
            draw_channel<P>(panel, area, context.histogramBins, context.histogramMax[0],
                            kLumaColour);
            return 0;
        }
        for (std::size_t channel = 0; channel < kChannelColours.size(); ++channel) {
            draw_channel<P>(panel, area, context.histogramBins + channel * kHistogramBins,
                            context.histogramMax[channel], kChannelColours[channel]);
        }
        return 0;
    });
}

}  // namespace ks
