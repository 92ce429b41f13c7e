#include "render/markers.h"

#include <algorithm>
#include <limits>

#include "host/host_world.h"
#include "pixels/plot.h"

namespace ks {
namespace {

constexpr Colour kSliceColour{0.75f, 0.0f, 1.0f, 0.0f};
constexpr double kSliceDash = 4.0;  ///< pixels at full resolution
constexpr double kSliceGap = 5.0;

std::int16_t dash_pixels(double length) {
    constexpr int kMost = std::numeric_limits<std::int16_t>::max();
    return static_cast<std::int16_t>(std::clamp(trunc_to_int(length), 0, kMost));
}

PF_Err draw_wipe_edge(const Frame &frame, const WipeEdge &edge, double opacity) {
    const float level = static_cast<float>(opacity);
    return draw_line(view_of(*frame.output), frame.format, {edge.x, edge.top},
                     {edge.x, edge.bottom}, {level, level, level, level}, kPlotAdditive);
}

PF_Err draw_slice_line(const Frame &frame, const SliceLine &line) {
    return draw_dashed_line(view_of(*frame.output), frame.format, {line.left, line.y},
                            {line.right, line.y}, kSliceColour,
                            dash_pixels(kSliceDash * frame.scale.horizontal),
                            dash_pixels(kSliceGap * frame.scale.horizontal), kPlotOver);
}

}  // namespace

void draw_markers(ErrorChain &chain, const Frame &frame, const RenderSettings &settings,
                  const Wipe &wipe, const Markers &markers) {
    if (wipe.active && wipe.fraction < 1.0) {
        chain.step([&] { return draw_wipe_edge(frame, markers.wipe, wipe.opacity); });
    }
    if (settings.shows(ScopeKind::kSlice)) {
        chain.step([&] { return draw_slice_line(frame, markers.slice); });
    }
}

}  // namespace ks
