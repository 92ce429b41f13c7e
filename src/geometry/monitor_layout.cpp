#include "geometry/monitor_layout.h"

#include "geometry/frame_scale.h"

namespace ks {

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
