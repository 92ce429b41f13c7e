#include "pixels/plot.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace ks {
namespace {

/// Calls `f(pixel)` with a null pointer of the pixel type that `code` names.
template <class F>
std::int32_t with_pixel_type(FormatCode code, F &&f) {
    return visit_format(code, [&f](auto tag) {
        f(static_cast<decltype(tag) *>(nullptr));
        return 0;
    });
}

template <class P>
void plot_if_inside(const WorldView &world, std::int64_t x, std::int64_t y, const Colour &colour,
                    unsigned mode) {
    if (world.contains(x, y)) blend_pixel(*world.pixel<P>(x, y), colour, mode);
}

/// An axis-aligned run of pixels: `first`..`last` along the moving axis, inclusive, `fixed` across.
struct Run {
    bool horizontal;
    std::int64_t first;
    std::int64_t last;
    std::int64_t fixed;
};

Run make_run(IntPoint from, IntPoint to) {
    const bool horizontal = from.y == to.y;
    const int a = horizontal ? from.x : from.y;
    const int b = horizontal ? to.x : to.y;
    return {horizontal, std::min(a, b), std::max(a, b), horizontal ? from.y : from.x};
}

/// Blends the pixels of `run` for which `wanted(offset from run.first)` holds; only those inside
/// the world are visited, so that a run of any length costs no more than the world is wide.
template <class P, class Wanted>
void plot_run(const WorldView &world, const Run &run, const Colour &colour, unsigned mode,
              Wanted &&wanted) {
    const std::int64_t limit = run.horizontal ? world.width : world.height;
    const std::int64_t begin = std::max<std::int64_t>(run.first, 0);
    const std::int64_t end = std::min<std::int64_t>(run.last, limit - 1);
    for (std::int64_t i = begin; i <= end; ++i) {
        if (!wanted(i - run.first)) continue;
        const std::int64_t x = run.horizontal ? i : run.fixed;
        const std::int64_t y = run.horizontal ? run.fixed : i;
        plot_if_inside<P>(world, x, y, colour, mode);
    }
}

template <class P>
void plot_sloped(const WorldView &world, IntPoint from, IntPoint to, const Colour &colour,
                 unsigned mode) {
    const std::int64_t dx = static_cast<std::int64_t>(to.x) - from.x;
    const std::int64_t dy = static_cast<std::int64_t>(to.y) - from.y;
    const bool steep = std::llabs(dy) > std::llabs(dx);
    const std::int64_t length = steep ? std::llabs(dy) : std::llabs(dx);
    const std::int64_t main_step = (steep ? dy : dx) < 0 ? -1 : 1;
    const std::int64_t main_from = steep ? from.y : from.x;
    const std::int64_t limit = steep ? world.height : world.width;
    // Only the steps whose main coordinate lies in the world are walked.
    const std::int64_t to_low = main_step > 0 ? -main_from : main_from - (limit - 1);
    const std::int64_t to_high = main_step > 0 ? limit - 1 - main_from : main_from;
    const double slope = static_cast<double>(steep ? dx : dy) / static_cast<double>(length);
    for (std::int64_t i = std::max<std::int64_t>(to_low, 0); i <= std::min(to_high, length); ++i) {
        const std::int64_t main = main_from + main_step * i;
        const std::int64_t side = static_cast<std::int64_t>(steep ? from.x : from.y) +
                                  std::llround(slope * static_cast<double>(i));
        plot_if_inside<P>(world, steep ? side : main, steep ? main : side, colour, mode);
    }
}

}  // namespace

std::int32_t write_alpha(const WorldView &world, FormatCode code, int x, int y, float value) {
    return with_pixel_type(code, [&]<class P>(P *) {
        if (!world.contains(x, y)) return;
        P &pixel = *world.pixel<P>(x, y);
        using Traits = PixelTraits<P>;
        if constexpr (kIsFloatPixel<P>) {
            pixel.alpha = value;
        } else {
            pixel.alpha = truncate_low_bits<typename Traits::Channel>(value * Traits::kFullScale);
        }
    });
}

std::int32_t plot(const WorldView &world, FormatCode code, int x, int y, const Colour &colour,
                  unsigned mode) {
    return with_pixel_type(code,
                           [&]<class P>(P *) { plot_if_inside<P>(world, x, y, colour, mode); });
}

std::int32_t plot_fractional(const WorldView &world, FormatCode code, double x, int y,
                             const Colour &colour, unsigned mode) {
    constexpr double kLimit = 1073741824.0;
    const double whole = std::floor(x);
    if (!(whole > -kLimit && whole < kLimit)) {
        return visit_format(code, [](auto) { return 0; });
    }
    const int column = static_cast<int>(whole);
    const double f = x - whole;
    const auto plot_at = [&](int at, double weight) {
        return plot(world, code, at, y, scaled(colour, static_cast<float>(weight)), mode);
    };
    if (f > 0.5) {
        const std::int32_t error = plot_at(column, 1.0 - (f - 0.5));
        return error != 0 ? error : plot_at(column + 1, f - 0.5);
    }
    if (f < 0.5) {
        const std::int32_t error = plot_at(column - 1, 0.5 - f);
        return error != 0 ? error : plot_at(column, 0.5 + f);
    }
    return plot_at(column, 1.0);
}

std::int32_t draw_line(const WorldView &world, FormatCode code, IntPoint from, IntPoint to,
                       const Colour &colour, unsigned mode) {
    return with_pixel_type(code, [&]<class P>(P *) {
        if (from.x != to.x && from.y != to.y) {
            plot_sloped<P>(world, from, to, colour, mode);
        } else {
            plot_run<P>(world, make_run(from, to), colour, mode, [](std::int64_t) { return true; });
        }
    });
}

std::int32_t draw_dashed_line(const WorldView &world, FormatCode code, IntPoint from, IntPoint to,
                              const Colour &colour, std::int16_t dash, std::int16_t gap,
                              unsigned mode) {
    if (from.x != to.x && from.y != to.y) return 0;
    return with_pixel_type(code, [&]<class P>(P *) {
        if (dash <= 0) return;
        const std::int64_t period = dash + std::max<int>(gap, 0);
        plot_run<P>(world, make_run(from, to), colour, mode,
                    [&](std::int64_t offset) { return offset % period < dash; });
    });
}

std::int32_t outline_rect(const WorldView &world, FormatCode code, const IntRect &rect,
                          int thickness, const Colour &colour, unsigned mode) {
    return with_pixel_type(code, [&]<class P>(P *) {
        const std::int64_t n = thickness;
        const auto span = [&](std::int64_t y, std::int64_t left, std::int64_t right) {
            const Run run{true, left, right - 1, y};
            plot_run<P>(world, run, colour, mode, [](std::int64_t) { return true; });
        };
        const std::int64_t top = std::max(rect.top, 0);
        const std::int64_t bottom = std::min(rect.bottom, world.height);
        for (std::int64_t y = top; y < bottom; ++y) {
            if (y < rect.top + n || y >= rect.bottom - n) {
                span(y, rect.left, rect.right);
            } else {
                const std::int64_t inner = std::min<std::int64_t>(rect.left + n, rect.right);
                span(y, rect.left, inner);
                span(y, std::max<std::int64_t>(rect.right - n, inner), rect.right);
            }
        }
    });
}

}  // namespace ks
