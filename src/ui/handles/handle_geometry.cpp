#include "ui/handles/handle_geometry.h"

#include <cmath>
#include <limits>

namespace ks {
namespace {

LayerPoint exact_position(const PanelSetting &panel) {
    return {to_pixels(panel.position.x), to_pixels(panel.position.y)};
}

LayerPoint whole_position(const PanelSetting &panel) {
    return {static_cast<double>(whole_pixels(panel.position.x)),
            static_cast<double>(whole_pixels(panel.position.y))};
}

/// Width of the handle's panel in square pixels.
double panel_width(const HandleRow &row, const HandleSettings &settings) {
    const double size = panel_of(row, settings).size;
    if (!row.scope) return settings.width * size * 0.01;
    return *row.scope == ScopeKind::kHistogram ? kHistogramPanelWidth : size;
}

/// Distance of a corner handle from its panel's top edge.
double corner_height(const HandleRow &row, const HandleSettings &settings) {
    const double size = panel_of(row, settings).size;
    if (!row.scope) return settings.height * size * 0.01;
    if (*row.scope == ScopeKind::kVectorscope) return size + kBarHeight;
    return size * waveform_aspect(settings) + kBarHeight;
}

LayerPoint corner_point(const HandleRow &row, const HandleSettings &settings) {
    const LayerPoint position = exact_position(panel_of(row, settings));
    return {position.x + panel_width(row, settings) * settings.inverse_par,
            position.y + corner_height(row, settings)};
}

/// The panel's whole width, from `top` to `bottom` below its position.
LayerRect across_panel(const HandleRow &row, const HandleSettings &settings, double top,
                       double bottom) {
    const LayerPoint position = whole_position(panel_of(row, settings));
    const double right = position.x + panel_width(row, settings);
    return {{position.x * settings.inverse_par, position.y + top},
            {right * settings.inverse_par, position.y + bottom}};
}

LayerPoint wipe_point(const HandleSettings &settings) {
    const LayerRect region = wipe_region(settings, clicked_monitor(settings)).value_or(LayerRect{});
    return {
        region.from.x + (region.to.x - region.from.x) * settings.compare * 0.01,
        region.from.y + (region.to.y - region.from.y) * ((100.0 - settings.opacity) * 0.004 + 0.5)};
}

}  // namespace

std::int32_t to_fixed(double pixels) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double units = std::round(pixels * 65536.0);
    if (units >= static_cast<double>(Limits::max())) return Limits::max();
    if (units <= static_cast<double>(Limits::min())) return Limits::min();
    return units == units ? static_cast<std::int32_t>(units) : 0;
}

float inverse_pixel_aspect(Ratio pixel_aspect) {
    const Ratio aspect = usable(pixel_aspect);
    return static_cast<float>(aspect.den) / static_cast<float>(aspect.num);
}

LayerRect drawn_monitor(const HandleSettings &settings) {
    const LayerPoint position = exact_position(settings.monitor);
    const double scale = settings.monitor.size * 0.01;
    return {position,
            {position.x + settings.width * scale * settings.inverse_par,
             position.y + settings.height * scale}};
}

LayerRect clicked_monitor(const HandleSettings &settings) {
    const LayerPoint position = whole_position(settings.monitor);
    const double scale = settings.monitor.size * 0.01;
    return {{position.x * settings.inverse_par, position.y},
            {(position.x + settings.width * scale) * settings.inverse_par,
             position.y + settings.height * scale}};
}

std::optional<LayerRect> wipe_region(const HandleSettings &settings, const LayerRect &monitor) {
    const double width = settings.width;
    const double height = settings.height;
    switch (settings.layout) {
        case MonitorLayout::kSingle:
            return LayerRect{{0.0, 0.0}, {width, height}};
        case MonitorLayout::kFourWaySplit:
            return LayerRect{{0.0, 0.0}, {width / 2.0, height / 2.0}};
        case MonitorLayout::kFourWayClassic:
            return LayerRect{{width * 0.25, 0.0}, {width, height * 0.75}};
        case MonitorLayout::kWindowed:
            return monitor;
        case MonitorLayout::kScopesOnly:
            break;
    }
    return std::nullopt;
}

float waveform_aspect(const HandleSettings &settings) {
    if (const auto fixed = fixed_scope_aspect(settings.aspect_choice)) return *fixed;
    if (settings.width <= 0) return 1.0f;
    const float ratio =
        static_cast<float>(settings.frame.den_x) / static_cast<float>(settings.frame.den_y);
    return static_cast<float>(settings.height) / (ratio * static_cast<float>(settings.width) *
                                                  static_cast<float>(settings.frame.pixel_aspect));
}

const PanelSetting &panel_of(const HandleRow &row, const HandleSettings &settings) {
    return row.scope ? settings.scopes[scope_slot(*row.scope)] : settings.monitor;
}

bool is_present(const HandleRow &row, const HandleSettings &settings) {
    if (row.kind == HandleKind::kWipe) return wipe_region(settings, LayerRect{}).has_value();
    return panel_of(row, settings).shown;
}

LayerRect handle_shape(const HandleRow &row, const HandleSettings &settings, double bar_height) {
    switch (row.kind) {
        case HandleKind::kCorner: {
            const LayerPoint point = corner_point(row, settings);
            return {point, point};
        }
        case HandleKind::kMoveBar:
            return across_panel(row, settings, 0.0, bar_height);
        case HandleKind::kHeightBar: {
            const double level = panel_of(row, settings).size + kHeightBarOffset;
            return across_panel(row, settings, level, level);
        }
        case HandleKind::kWipe: {
            const LayerPoint point = wipe_point(settings);
            return {point, point};
        }
    }
    return {};
}

}  // namespace ks
