#include "oracle/draw_oracle.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "oracle/pixel_oracle.h"

namespace ks::oracle {
namespace {

// The pixels of a line from (x0, y0) to (x1, y1), both ends drawn, that lie in the picture: lines
// may be as long as an int can say.
Rect seen_part(const Image &image, int x0, int y0, int x1, int y1) {
    const auto end = [](int a, int b, int size) {
        return static_cast<int>(std::min<std::int64_t>(std::int64_t{std::max(a, b)} + 1, size));
    };
    return {std::max(std::min(x0, x1), 0), std::max(std::min(y0, y1), 0), end(x0, x1, image.width),
            end(y0, y1, image.height)};
}

}  // namespace

void plot(Image &image, int x, int y, const Colour &colour, int mode) {
    if (!contains(image, x, y)) return;
    const Colour below = load_colour(image, x, y);
    const float alpha = colour[0];
    const bool additive = (mode & kPlotAdditive) != 0;
    const bool limited = image.depth != Depth::kFloat || (mode & kPlotLimitFloat) != 0;
    Colour result{};
    for (std::size_t c = 1; c < 4; ++c) {
        result[c] = additive ? below[c] + colour[c] : alpha * colour[c] + (1.0f - alpha) * below[c];
        if (limited && result[c] > 1.0f) result[c] = 1.0f;
    }
    result[0] = (1.0f - alpha) * below[0] + alpha;
    if (result[0] > 1.0f) result[0] = 1.0f;
    save_colour(image, x, y, result);
}

void plot_fractional(Image &image, double p, int y, const Colour &colour, int mode) {
    const double base = std::floor(p);
    const double f = p - base;
    const int x = whole(base);
    const auto weighted = [&](int at, double weight) {
        const float w = static_cast<float>(weight);
        plot(image, at, y, {colour[0] * w, colour[1] * w, colour[2] * w, colour[3] * w}, mode);
    };
    if (f > 0.5) {
        weighted(x, 1.0 - (f - 0.5));
        weighted(x + 1, f - 0.5);
    } else if (f < 0.5) {
        weighted(x - 1, 0.5 - f);
        weighted(x, 0.5 + f);
    } else {
        weighted(x, 1.0);
    }
}

void draw_line(Image &image, int x0, int y0, int x1, int y1, const Colour &colour, int mode) {
    if (x0 != x1 && y0 != y1) return;
    const Rect seen = seen_part(image, x0, y0, x1, y1);
    for (int y = seen.top; y < seen.bottom; ++y) {
        for (int x = seen.left; x < seen.right; ++x) plot(image, x, y, colour, mode);
    }
}

void draw_dashed_line(Image &image, int x0, int y0, int x1, int y1, int dash, int gap,
                      const Colour &colour, int mode) {
    if ((x0 != x1 && y0 != y1) || dash <= 0) return;
    const int period = dash + std::max(gap, 0);
    const Rect seen = seen_part(image, x0, y0, x1, y1);
    for (int y = seen.top; y < seen.bottom; ++y) {
        for (int x = seen.left; x < seen.right; ++x) {
            // One of the two is 0: the line runs along one axis.
            const std::int64_t step =
                (std::int64_t{x} - std::min(x0, x1)) + (std::int64_t{y} - std::min(y0, y1));
            if (step % period < dash) plot(image, x, y, colour, mode);
        }
    }
}

void draw_outline(Image &image, const Rect &rect, int thickness, const Colour &colour) {
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x) {
            const bool on_edge = x < rect.left + thickness || x >= rect.right - thickness ||
                                 y < rect.top + thickness || y >= rect.bottom - thickness;
            if (on_edge) plot(image, x, y, colour, kPlotOver);
        }
    }
}

}  // namespace ks::oracle
