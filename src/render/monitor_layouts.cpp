#include "render/monitor_layouts.h"

#include "host/host_world.h"
#include "host/owned_world.h"
#include "host/param_values.h"
#include "pixels/plot.h"
#include "render/compositing.h"
#include "render/conversion.h"
#include "render/corrected_world.h"

namespace ks {
namespace {

struct Tile {
    View view;
    Colour outline;
};

// Indexed by "View Channels". Yellow for Cb and cyan for Cr are the designers' choice.
constexpr std::array<std::array<Tile, 3>, 2> kTiles{{
    {{{View::kRed, {0.75f, 1.0f, 0.0f, 0.0f}},
      {View::kGreen, {0.75f, 0.0f, 1.0f, 0.0f}},
      {View::kBlue, {0.75f, 0.0f, 0.0f, 1.0f}}}},
    {{{View::kLuminance, {0.75f, 1.0f, 1.0f, 1.0f}},
      {View::kCb, {0.75f, 1.0f, 1.0f, 0.0f}},
      {View::kCr, {0.75f, 0.0f, 1.0f, 1.0f}}}},
}};
constexpr int kOutlineThickness = 2;

/// Makes one tile from the uncorrected input and puts it at `corner` of the output.
void draw_tile(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
               const FourWayGrid &grid, const Tile &tile, IntPoint corner) {
    const IntSize size = four_way_tile_size(grid, size_of(*frame.input));
    if (size.width <= 0 || size.height <= 0) return;  // an input a few pixels wide: no tile to show
    OwnedWorld world;
    chain.step([&] {
        return world.create(frame.worlds, frame.in_data->effect_ref, size, true, frame.format);
    });
    chain.step(
        [&] { return draw_scaled(frame, frame.input, grid.tile_scale, 0.0, 0.0, world.get()); });
    chain.step([&] {
        // No tile view goes through the gamma curve, so the record needs no tables.
        ConversionRecord record =
            make_conversion_record(frame, settings, kRawLuma, static_cast<std::int32_t>(tile.view));
        return run_conversion(frame.suites, frame.in_data, world.get(), nullptr, record,
                              world.get());
    });
    chain.step([&] {
        return outline_rect(view_of(*world.get()), frame.format, grid.tile_rect, kOutlineThickness,
                            tile.outline, kPlotOver);
    });
    chain.step([&] {
        return place_world(frame, world.get(), host_rect(grid.tile_rect), corner, {}, frame.output);
    });
    chain.always([&] { return world.close(); });
}

Markers draw_single(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                    const Wipe &wipe, PF_EffectWorld *corrected) {
    chain.step([&] {
        return frame.in_data->utils->copy(frame.in_data->effect_ref, corrected, frame.output,
                                          nullptr, nullptr);
    });
    return single_markers(size_of(*frame.output), wipe.fraction, settings.slice_fraction);
}

Markers draw_four_way(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                      const Wipe &wipe, PF_EffectWorld *corrected, bool classic) {
    const IntSize output = size_of(*frame.output);
    const FourWayGrid grid = four_way_grid(classic, output);
    chain.step([&] { return fill_background(frame); });
    chain.step([&] {
        return draw_scaled(frame, corrected, grid.main_scale, grid.main_left, 0.0, frame.output);
    });
    const auto &tiles = kTiles[settings.view_channels == kViewYCbCr ? 1 : 0];
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        draw_tile(chain, frame, settings, grid, tiles[i], grid.corners[i]);
    }
    return four_way_markers(grid, output, wipe.fraction, settings.slice_fraction);
}

Markers draw_windowed(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                      const Wipe &wipe, PF_EffectWorld *corrected) {
    const IntPoint corner = read_point(chain, frame.in_data, kParamMonitorPosition);
    const double scale = read_slider(chain, frame.in_data, kParamMonitorSize) * 0.01;
    chain.step([&] { return fill_background(frame); });
    chain.step(
        [&] { return draw_scaled(frame, corrected, scale, corner.x, corner.y, frame.output); });
    return windowed_markers(corner, scale, size_of(*frame.output), wipe.fraction,
                            settings.slice_fraction);
}

}  // namespace

Markers draw_monitor_layout(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                            const Wipe &wipe, PF_EffectWorld *corrected) {
    switch (static_cast<MonitorLayout>(settings.monitor_layout)) {
        case MonitorLayout::kFourWaySplit:
            return draw_four_way(chain, frame, settings, wipe, corrected, false);
        case MonitorLayout::kFourWayClassic:
            return draw_four_way(chain, frame, settings, wipe, corrected, true);
        case MonitorLayout::kWindowed:
            return draw_windowed(chain, frame, settings, wipe, corrected);
        default:
            return draw_single(chain, frame, settings, wipe, corrected);
    }
}

}  // namespace ks
