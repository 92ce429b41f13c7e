#include "geometry/layout.h"

namespace ks {
namespace {

constexpr double kLabelStrip = 18.0;         ///< pixels under every scope
constexpr double kHistogramFootRoom = 24.0;  ///< additional pixels of the histogram
constexpr double kHistogramPanelWidth = 272.0;

}  // namespace

int trunc_to_int(double value) {
    constexpr double kLimit = 1073741824.0;
    if (value >= kLimit) return 1 << 30;
    if (value <= -kLimit) return -(1 << 30);
    return value == value ? static_cast<int>(value) : 0;
}

FrameScale make_frame_scale(Ratio pixel_aspect, Ratio downsample_x, Ratio downsample_y) {
    FrameScale scale;
    if (pixel_aspect.num > 0 && pixel_aspect.den != 0) {
        scale.pixel_aspect =
            static_cast<double>(pixel_aspect.num) / static_cast<double>(pixel_aspect.den);
    }
    if (downsample_x.den != 0) scale.den_x = downsample_x.den;
    if (downsample_y.den != 0) scale.den_y = downsample_y.den;
    scale.horizontal = (1.0 / static_cast<double>(scale.den_x)) / scale.pixel_aspect;
    return scale;
}

double scope_aspect(int choice, IntSize output, const FrameScale &scale) {
    switch (choice) {
        case 2:
            return 0.5625;
        case 3:
            return 0.75;
        case 4:
            return 1.0;
        default:
            break;
    }
    if (output.width <= 0) return 1.0;
    const float ratio = static_cast<float>(scale.den_x) / static_cast<float>(scale.den_y);
    return static_cast<double>(output.height) /
           (static_cast<double>(ratio) * static_cast<double>(output.width) * scale.pixel_aspect);
}

IntSize scope_panel_size(ScopeSizeRule rule, double size, double aspect, const FrameScale &scale) {
    const auto height = [&scale](double pixels) {
        return trunc_to_int(pixels / static_cast<double>(scale.den_y));
    };
    switch (rule) {
        case ScopeSizeRule::kWidthTimesAspect:
            return {trunc_to_int(size * scale.horizontal), height(aspect * size + kLabelStrip)};
        case ScopeSizeRule::kSquare:
            return {trunc_to_int(size * scale.horizontal), height(size + kLabelStrip)};
        case ScopeSizeRule::kFixedWidth:
            return {trunc_to_int(kHistogramPanelWidth * scale.horizontal),
                    height(size + kLabelStrip + kHistogramFootRoom)};
    }
    return {};
}

Markers single_markers(IntSize output, double wipe, double slice) {
    Markers markers;
    markers.wipe = {trunc_to_int(output.width * wipe), 0, output.height};
    markers.slice = {trunc_to_int((output.height - 1) * slice), 0, output.width};
    return markers;
}

FourWayGrid four_way_grid(bool classic, IntSize output) {
    FourWayGrid grid;
    grid.main_scale = classic ? 0.75 : 0.5;
    grid.main_left = classic ? 0.25 * output.width : 0.0;
    grid.tile_scale = classic ? 0.25 : 0.5;
    grid.tile_rect = {0, 0, trunc_to_int(grid.tile_scale * output.width),
                      trunc_to_int(grid.tile_scale * output.height)};
    if (classic) {
        const int q = trunc_to_int(0.25 * output.width);
        const int r = trunc_to_int(0.75 * output.height);
        grid.corners = {{{q, r}, {2 * q, r}, {3 * q, r}}};
    } else {
        const int h = trunc_to_int(0.5 * output.width);
        const int v = trunc_to_int(0.5 * output.height);
        grid.corners = {{{h, 0}, {0, v}, {h, v}}};
    }
    return grid;
}

IntSize four_way_tile_size(const FourWayGrid &grid, IntSize input) {
    return {trunc_to_int(input.width * grid.tile_scale),
            trunc_to_int(input.height * grid.tile_scale)};
}

Markers four_way_markers(const FourWayGrid &grid, IntSize output, double wipe, double slice) {
    const int left = trunc_to_int(grid.main_left);
    const int below = trunc_to_int(grid.main_scale * output.height);
    Markers markers;
    markers.wipe = {trunc_to_int(grid.main_scale * output.width * wipe) + left, below, below};
    markers.slice = {trunc_to_int((output.height - 1) * grid.main_scale * slice), left,
                     trunc_to_int(grid.main_scale * output.width) + left};
    return markers;
}

Markers windowed_markers(IntPoint corner, double scale, IntSize output, double wipe, double slice) {
    const int width = trunc_to_int(output.width * scale);
    const int height = trunc_to_int(output.height * scale);
    Markers markers;
    markers.wipe = {trunc_to_int(width * wipe) + corner.x, corner.y, corner.y + height};
    markers.slice = {trunc_to_int(height * slice) + corner.y, corner.x, corner.x + width};
    return markers;
}

IntRect wipe_rect(IntSize output, double wipe) {
    return {0, 0, trunc_to_int(output.width * wipe), output.height};
}

IntPoint wipe_offset(IntSize input, IntSize original) {
    const auto centred = [](int whole, int part) {
        return part < whole ? trunc_to_int((static_cast<double>(whole) - part) * 0.5) : 0;
    };
    return {centred(input.width, original.width), centred(input.height, original.height)};
}

}  // namespace ks
