#include "scopes/traces/slice_trace.h"

#include <algorithm>
#include <cmath>

#include "geometry/frame_scale.h"
#include "pixels/depth.h"
#include "pixels/plot.h"

namespace ks {
namespace {

constexpr Colour kLumaColour{1.0f, 1.0f, 1.0f, 1.0f};
constexpr Colour kRedColour{1.0f, 1.0f, 0.0f, 0.0f};
constexpr Colour kGreenColour{1.0f, 0.0f, 1.0f, 0.0f};
constexpr Colour kBlueColour{1.0f, 0.0f, 0.0f, 1.0f};

/// Plots samples of one column after the other.
template <class P>
class SlicePlotter {
  public:
    SlicePlotter(const WorldView &panel, const TraceArea &area, double value_scale)
        : panel_(panel), area_(area), value_scale_(value_scale) {}

    void plot_value(int column, float value, const Colour &colour) const {
        if (std::isnan(value)) return;
        const int placed = trunc_to_int(area_.bottom - value * value_scale_ * area_.span);
        const int y = placed < kSliceTopRow ? kSliceTopRow : std::min(placed, area_.bottom);
        const int x = area_.left + column;
        if (!panel_.contains(x, y)) return;
        blend_pixel(*panel_.pixel<P>(x, y), colour, kPlotAdditive | kPlotClampFloat);
    }

  private:
    WorldView panel_;
    TraceArea area_;
    double value_scale_;
};

template <class P>
void trace_row(const WorldView &source, const WorldView &panel, const TraceArea &area,
               const SliceSettings &settings, SliceResult &result) {
    const SlicePlotter<P> plotter(panel, area, settings.value_scale);
    const std::int64_t columns = area.right - area.left;
    for (int u = 0; u < columns; ++u) {
        const Colour c =
            to_colour(*source.pixel<P>(u * std::int64_t{source.width} / columns, result.row));
        const float y = luminance(c, settings.luma_math);
        const bool over =
            y > kOverRange || c.red > kOverRange || c.green > kOverRange || c.blue > kOverRange;
        result.over_range = result.over_range || over;
        if (settings.mode != TraceMode::kRgb) plotter.plot_value(u, y, kLumaColour);
        if (settings.mode == TraceMode::kLuma) continue;
        plotter.plot_value(u, c.red, kRedColour);
        plotter.plot_value(u, c.green, kGreenColour);
        plotter.plot_value(u, c.blue, kBlueColour);
    }
}

}  // namespace

int slice_row(int source_height, double fraction) {
    const int last = std::max(source_height - 1, 0);
    return std::clamp(trunc_to_int(last * fraction), 0, last);
}

std::int32_t draw_slice_trace(const WorldView &source, FormatCode format, const WorldView &panel,
                              const TraceArea &area, const SliceSettings &settings,
                              SliceResult &result) {
    result = {slice_row(source.height, settings.fraction), settings.mode, false};
    return visit_format(format, [&](auto pixel) {
        if (source.contains(0, result.row)) {
            trace_row<decltype(pixel)>(source, panel, area, settings, result);
        }
        return 0;
    });
}

}  // namespace ks
