// The viewer in front: what the pointer does in it, and what it shows.
#include <algorithm>
#include <cmath>

#include "hostapi/constants.h"
#include "stage/desk/desk.h"
#include "stage/effect/effect_instance.h"
#include "stage/project/layer_map.h"

namespace stage {
namespace {

/// The host's own cross-hairs are taken hold of within this distance, and drawn so large, window
/// pixels.
constexpr double kCrossHairReach = 6;

/// A cross in a square on its corner.
DrawPrimitive mark_at(double at_x, double at_y) {
    constexpr float kArm = static_cast<float>(kCrossHairReach);
    constexpr float kCorner = 4;
    const float x = static_cast<float>(at_x), y = static_cast<float>(at_y);
    using Kind = PathStep::Kind;
    const auto step = [](Kind kind, float to_x, float to_y) {
        return PathStep{kind, {DrawPoint{to_x, to_y}}};
    };
    DrawPrimitive mark;
    mark.kind = DrawPrimitive::Kind::kThemeStroke;
    mark.shadow = true;
    mark.path = {step(Kind::kMove, x - kArm, y),    step(Kind::kLine, x + kArm, y),
                 step(Kind::kMove, x, y - kArm),    step(Kind::kLine, x, y + kArm),
                 step(Kind::kMove, x - kCorner, y), step(Kind::kLine, x, y - kCorner),
                 step(Kind::kLine, x + kCorner, y), step(Kind::kLine, x, y + kCorner),
                 step(Kind::kClose, 0, 0)};
    return mark;
}

}  // namespace

Viewer *Desk::viewer() {
    if (chosen_ == nullptr) return nullptr;
    std::unique_ptr<Viewer> &slot = viewers_[window];
    if (slot && &slot->instance() != chosen_) slot.reset();
    if (!slot) slot = std::make_unique<Viewer>(session_, *chosen_, window);
    slot->viewport = viewports_[window];
    slot->frame = frame_;
    slot->downsample = downsample_;
    return slot.get();
}

void Desk::close_viewers() {
    native_point_ = 0;
    viewers_.clear();
}

/// Layer point of the chosen effect under a window point; null when it cannot be had.
std::optional<std::pair<double, double>> Desk::layer_point(double x, double y) const {
    const Viewport &port = viewports_.at(window);
    const double source_x = port.source_x(x);
    const double source_y = port.source_y(y);
    if (window == WindowKind::kLayer) return {{source_x, source_y}};
    const LayerMap map = layer_map(session_.project(), chosen_->layer);
    if (!map.invertible()) return std::nullopt;
    return {{map.layer_x(source_x), map.layer_y(source_y)}};
}

std::pair<double, double> Desk::window_point(double layer_x, double layer_y) const {
    const Viewport &port = viewports_.at(window);
    if (window == WindowKind::kComp) {
        const LayerMap map = layer_map(session_.project(), chosen_->layer);
        layer_x = map.comp_x(layer_x);
        layer_y = map.comp_y(layer_y);
    }
    return {port.window_x(layer_x), port.window_y(layer_y)};
}

/// Of the chosen effect's points that are neither hidden nor greyed, by parameter.
std::vector<CrossHair> Desk::cross_hairs() const {
    std::vector<CrossHair> marks;
    if (chosen_ == nullptr) return marks;
    const ParamCatalog &catalog = session_.plugin.catalog;
    const auto &streams = session_.state_of(*chosen_).streams;
    for (int index = 1; index < catalog.count(); ++index) {
        const auto place = static_cast<std::size_t>(index);
        if (catalog.at(index).def.param_type != PF_Param_POINT || streams[place].hidden) continue;
        if ((chosen_->looks.at(place).ui_flags & PF_PUI_DISABLED) != 0) continue;
        const auto [x, y] = index == native_point_
                                ? std::pair{native_x_, native_y_}
                                : window_point(streams[place].value.x, streams[place].value.y);
        marks.push_back({index, x, y});
    }
    return marks;
}

int Desk::cross_hair_at(int x, int y) const {
    for (const CrossHair &mark : cross_hairs()) {
        if (std::hypot(mark.x - x, mark.y - y) <= kCrossHairReach) return mark.index;
    }
    return 0;
}

LayerId Desk::layer_at(int x, int y) const {
    const Project &project = session_.project();
    const Item *comp = project.comp(project.active_comp);
    if (window != WindowKind::kComp || comp == nullptr) return 0;
    const Viewport &port = viewports_.at(window);
    for (const Layer &layer : comp->layers) {
        if (!layer.has_flag(layer_flag::kVideoActive) || layer.has_flag(layer_flag::kLocked))
            continue;
        const LayerMap map = layer_map(project, layer.id);
        if (!map.invertible()) continue;
        const double u = map.layer_x(port.source_x(x));
        const double v = map.layer_y(port.source_y(y));
        if (u >= 0 && v >= 0 && u < 2 * map.middle_x && v < 2 * map.middle_y) return layer.id;
    }
    return 0;
}

PointerReply Desk::press(int x, int y, int clicks, PF_Modifiers modifiers) {
    PointerReply reply;
    native_point_ = 0;  // the button's release may have got lost
    if (Viewer *front = viewer()) reply.event = front->press(x, y, clicks, modifiers);
    touch();
    if (reply.event.handled) return reply;
    reply.native_point = native_point_ = cross_hair_at(x, y);
    native_x_ = x;
    native_y_ = y;
    if (native_point_ != 0) return reply;
    reply.selected = layer_at(x, y);
    if (reply.selected != 0) select({reply.selected});
    return reply;
}

PointerReply Desk::move(int x, int y, PF_Modifiers modifiers) {
    PointerReply reply;
    reply.native_point = native_point_;
    if (native_point_ != 0) {
        native_x_ = x;
        native_y_ = y;
        touch();
        return reply;
    }
    if (Viewer *front = viewer()) reply.event = front->move(x, y, modifiers);
    if (!reply.event.changed.empty()) touch();
    return reply;
}

PointerReply Desk::release(int x, int y, PF_Modifiers modifiers) {
    PointerReply reply;
    if (native_point_ != 0) {
        reply.native_point = native_point_;
        reply.event.error = move_cross_hair(x, y);
        native_point_ = 0;
        return reply;
    }
    if (Viewer *front = viewer()) reply.event = front->release(x, y, modifiers);
    if (!reply.event.changed.empty()) touch();
    return reply;
}

PF_Err Desk::move_cross_hair(int x, int y) {
    const auto point = layer_point(x, y);
    if (chosen_ == nullptr || !point) return 0;
    ParamValue value = session_.value(*chosen_, native_point_);
    value.x = point->first;
    value.y = point->second;
    if (session_.plugin.catalog.at(native_point_).def.u.td.restrict_bounds != 0) {
        const LayerMap map = layer_map(session_.project(), chosen_->layer);
        value.x = std::clamp(value.x, 0.0, 2 * map.middle_x);
        value.y = std::clamp(value.y, 0.0, 2 * map.middle_y);
    }
    return set_value(native_point_, value);
}

void Desk::leave() {
    if (Viewer *front = viewer()) front->leave();
}

bool Desk::dragging() const {
    const auto found = viewers_.find(window);
    return native_point_ != 0 ||
           (found != viewers_.end() && found->second && found->second->dragging());
}

PF_CursorType Desk::cursor() const {
    const auto found = viewers_.find(window);
    return found != viewers_.end() && found->second ? found->second->cursor() : PF_CursorType{0};
}

int Desk::source_width() const {
    return source_item() != nullptr ? source_item()->width : 0;
}

int Desk::source_height() const {
    return source_item() != nullptr ? source_item()->height : 0;
}

/// The item whose pixels the viewer in front shows; layers without a source are as large as their
/// comp.
const Item *Desk::source_item() const {
    const Project &project = session_.project();
    const Item *comp = project.comp(project.active_comp);
    if (window != WindowKind::kLayer || chosen_ == nullptr) return comp;
    return project.extent_of(chosen_->layer);
}

const ViewFrame &Desk::view() {
    if (viewed_ == version_ && viewed_window_ == window) return view_;
    RenderSettings settings;
    settings.frame = frame_;
    settings.downsample_x = downsample_;
    settings.downsample_y = downsample_;
    const ItemId comp = session_.project().active_comp;
    const bool layer_window = window == WindowKind::kLayer && chosen_ != nullptr;
    if (layer_window && session_.project().layer(chosen_->layer)->source != 0) {
        render_layer(session_, chosen_->layer, settings, view_);
    } else if (!layer_window && session_.project().comp(comp) != nullptr) {
        render_comp(session_, comp, settings, view_);
    } else {
        view_ = ViewFrame{};
    }
    viewed_ = version_;
    viewed_window_ = window;
    return view_;
}

const DrawList &Desk::overlay() {
    Viewer *front = viewer();
    if (front == nullptr) {
        overlay_.primitives.clear();
        return overlay_;
    }
    const bool current = drawn_ == version_ && drawn_viewport_ == viewports_[window];
    if (current && drawn_window_ == window) return overlay_;
    front->draw(overlay_);
    drawn_ = version_;
    drawn_viewport_ = viewports_[window];
    drawn_window_ = window;
    return overlay_;
}

DrawList Desk::window_overlay() {
    DrawList all = overlay();
    for (const CrossHair &mark : cross_hairs()) all.primitives.push_back(mark_at(mark.x, mark.y));
    return all;
}

}  // namespace stage
