#include "kestrel-stage/window/report.h"

#include <nlohmann/json.hpp>

#include "stage/desk/panel/panel_json.h"
#include "stage/effect/effect_instance.h"

namespace stage_view {
namespace {

using nlohmann::ordered_json;

ordered_json rect_json(const PixelRect &rect) {
    if (rect.width <= 0 || rect.height <= 0) return nullptr;
    return {rect.x, rect.y, rect.width, rect.height};
}

ordered_json widgets_json(const WidgetLog &log) {
    ordered_json list = ordered_json::array();
    for (const Widget &widget : log.widgets()) {
        ordered_json entry = {{"role", widget.role},
                              {"name", widget.name},
                              {"rect", rect_json(widget.rect)},
                              {"enabled", widget.enabled},
                              {"checked", widget.checked}};
        if (widget.parameter >= 0) entry["parameter"] = widget.parameter;
        list.push_back(std::move(entry));
    }
    return list;
}

ordered_json pane_json(WindowActs &acts, const PicturePane &pane) {
    stage::Desk &desk = acts.desk();
    const stage::Viewport &viewport = desk.viewport();
    const bool comp = desk.window == stage::WindowKind::kComp;
    return {{"rect", rect_json(pane.area())}, {"window", comp ? "comp" : "layer"},
            {"zoom", viewport.zoom},          {"pan", {viewport.pan_x, viewport.pan_y}},
            {"stretch", viewport.stretch},    {"resolution", desk.resolution()},
            {"frame", desk.frame()},          {"dragging", desk.dragging()},
            {"effect_cursor", desk.cursor()}};
}

ordered_json comp_json(WindowActs &acts) {
    const stage::Item *comp = acts.comp();
    if (comp == nullptr) return nullptr;
    ordered_json layers = ordered_json::array();
    for (const stage::Layer &layer : comp->layers) {
        layers.push_back({{"id", layer.id},
                          {"name", layer.name},
                          {"selected", layer.selected},
                          {"video", layer.has_flag(stage::layer_flag::kVideoActive)},
                          {"effects", layer.effects.size()}});
    }
    return {{"name", comp->name},
            {"width", comp->width},
            {"height", comp->height},
            {"frames", comp->frames},
            {"pixel_aspect", {comp->par_num, comp->par_den}},
            {"layers", layers}};
}

ordered_json messages_json(const WindowActs &acts) {
    ordered_json list = ordered_json::array();
    for (const Notice &notice : acts.notices) {
        list.push_back({{"text", notice.text}, {"error", notice.as_error}});
    }
    return list;
}

ordered_json times_json(const PicturePane &pane) {
    const DragTimes &drag = pane.drag_times();
    return {{"frames", drag.frames},
            {"milliseconds_per_frame", drag.frames > 0 ? drag.milliseconds / drag.frames : 0},
            {"worst_milliseconds", drag.worst_milliseconds}};
}

const char *cursor_name(SDL_SystemCursor cursor) {
    switch (cursor) {
        case SDL_SYSTEM_CURSOR_SIZENS:
            return "vertical";
        case SDL_SYSTEM_CURSOR_SIZEWE:
            return "horizontal";
        case SDL_SYSTEM_CURSOR_SIZEALL:
            return "move";
        case SDL_SYSTEM_CURSOR_HAND:
            return "hand";
        case SDL_SYSTEM_CURSOR_IBEAM:
            return "text";
        default:
            return "arrow";
    }
}

}  // namespace

std::string report_text(const ReportSources &sources) {
    WindowActs &acts = sources.acts;
    const ordered_json report = {
        {"settled", sources.settled_frames},
        {"drawn", sources.drawn_frames},
        {"window", {sources.window_width, sources.window_height}},
        {"pane", pane_json(acts, sources.pane)},
        {"comp", comp_json(acts)},
        {"depth", static_cast<int>(acts.session().options().depth)},
        {"threads", stage::reported_threads(acts.session().options().schedule)},
        {"cursor", cursor_name(sources.cursor)},
        {"messages", messages_json(acts)},
        {"checks", acts.session().checks()},
        {"findings", acts.session().findings().size()},
        {"renders", sources.pane.renders()},
        {"last_drag", times_json(sources.pane)},
        {"panel", stage::panel_json(sources.panel, true)},
        {"widgets", widgets_json(sources.log)},
    };
    return report.dump(1) + "\n";
}

}  // namespace stage_view
