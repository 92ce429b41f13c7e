// In the viewers: the pointer, zoom and pan, frames.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "stage/project/layer_map.h"
#include "whole/actions/acts.h"

namespace actions {
namespace {

struct Spot {
    int x = 0, y = 0;  // window pixels
};

// Far beyond what 16.16 holds, at high zoom even further in the layer's own pixels.
constexpr int kFar[] = {-2000000000, -40000, -3000, 3000, 40000, 2000000000};

Spot anywhere(Desk &desk) {
    const stage::Viewport &port = desk.workspace.viewport();
    Spot spot{desk.dice.between(-20, port.width + 20), desk.dice.between(-20, port.height + 20)};
    if (desk.dice.one_in(12)) spot.x = desk.dice.pick(kFar);
    if (desk.dice.one_in(12)) spot.y = desk.dice.pick(kFar);
    return spot;
}

int to_window_pixel(double position) {
    return static_cast<int>(std::lround(std::clamp(position, -1e9, 1e9)));
}

// A layer point in the viewer in front.
Spot in_window(Desk &desk, double x, double y) {
    const stage::Viewport &port = desk.workspace.viewport();
    if (desk.workspace.window == stage::WindowKind::kComp) {
        const stage::LayerMap map = stage::layer_map(desk.project(), desk.effect()->layer);
        x = map.comp_x(x);
        y = map.comp_y(y);
    }
    return {to_window_pixel(port.window_x(x)), to_window_pixel(port.window_y(y))};
}

// On or near a handle: bars and corners of the panels and of the monitor, the wipe.
Spot on_a_handle(Desk &desk) {
    const stage::EffectInstance &instance = *desk.effect();
    const stage::Item &item = desk.layer_item(instance);
    const double k = double(item.par_den) / item.par_num;
    const int kind = desk.dice.between(0, 5);
    const int jitter = desk.dice.between(-3, 3);
    if (kind == 0) {  // the monitor's window, or the wipe in it
        const stage::ParamValue &at = desk.session.value(instance, 4);
        const double size = desk.number(instance, 5) * 0.01;
        const double wipe = desk.number(instance, 11) * 0.01;
        const int which = desk.dice.below(3);
        if (which == 0) return in_window(desk, at.x * k + 2, at.y + 8 + jitter);
        if (which == 1)
            return in_window(desk, at.x + item.width * size * k, at.y + item.height * size);
        return in_window(desk, item.width * wipe, item.height * 0.5 + jitter);
    }
    const stage::ParamValue &at = desk.session.value(instance, kPosition[kind]);
    if (desk.dice.one_in(2)) return in_window(desk, at.x * k + 3, at.y + 9 + jitter);
    const double size = desk.number(instance, kSize[kind]);
    if (kind == 5) return in_window(desk, at.x * k + 40, at.y + size + 42 + jitter);
    const double tall = kind == 2 ? 1 : double(item.height) / item.width * k;
    return in_window(desk, at.x + size * k, at.y + size * tall + 18);
}

std::string to_text(const Spot &spot) {
    return std::to_string(spot.x) + "," + std::to_string(spot.y);
}

Spot moved(Desk &desk, const Spot &from) {
    if (desk.dice.one_in(8)) return anywhere(desk);
    return {from.x + desk.dice.between(-25, 25), from.y + desk.dice.between(-25, 25)};
}

void expect_served(const stage::EventReply &reply) {
    EXPECT_EQ(reply.error, 0);
    EXPECT_EQ(reply.message, "");
}

void press_at(Desk &desk, const Spot &spot) {
    desk.note("press " + to_text(spot));
    const stage::PointerReply reply = desk.workspace.press(spot.x, spot.y, 1, 0);
    expect_served(reply.event);
    if (reply.event.handled) desk.add_to_note(", handled");
    if (reply.native_point != 0) {
        desk.add_to_note(", cross-hair of " + std::to_string(reply.native_point));
    }
    EXPECT_TRUE(reply.event.changed.empty()) << "a press alone changes no value";
}

void move_to(Desk &desk, const Spot &spot) {
    desk.note("move " + to_text(spot));
    const stage::PointerReply reply = desk.workspace.move(spot.x, spot.y, 0);
    expect_served(reply.event);
    for (const int index : reply.event.changed) desk.add_to_note(", " + std::to_string(index));
}

// A layer scaled to nothing has no point beneath the pointer.
bool has_layer_points(Desk &desk) {
    return desk.workspace.window == stage::WindowKind::kLayer ||
           stage::layer_map(desk.project(), desk.effect()->layer).invertible();
}

// At a cross-hair's end the host makes an edit of it, which must keep the point on its layer.
void release_at(Desk &desk, const Spot &spot) {
    desk.note("release " + to_text(spot));
    const Boxes before = desk.effect() != nullptr ? desk.boxes(*desk.effect()) : Boxes{};
    const stage::PointerReply reply = desk.workspace.release(spot.x, spot.y, 0);
    expect_served(reply.event);
    EXPECT_FALSE(desk.workspace.dragging());
    if (reply.native_point == 0 || !has_layer_points(desk)) return;
    desk.follow_edit(reply.native_point, before);
    const stage::Item &item = desk.layer_item(*desk.effect());
    const stage::ParamValue &point = desk.session.value(*desk.effect(), reply.native_point);
    EXPECT_TRUE(point.x >= 0 && point.x <= item.width && point.y >= 0 && point.y <= item.height)
        << "cross-hair of " << reply.native_point << " left at " << point.x << ", " << point.y;
}

void drag_from(Desk &desk, Spot spot) {
    press_at(desk, spot);
    for (int steps = desk.dice.below(5); steps > 0 && desk.workspace.dragging(); --steps) {
        spot = moved(desk, spot);
        move_to(desk, spot);
    }
    // Now and then the release gets lost, or comes after something else.
    if (!desk.dice.one_in(15)) release_at(desk, moved(desk, spot));
}

void drag_anywhere(Desk &desk) {
    drag_from(desk, anywhere(desk));
}
void drag_a_handle(Desk &desk) {
    drag_from(desk, on_a_handle(desk));
}
void move_the_pointer(Desk &desk) {
    move_to(desk, anywhere(desk));
}
void move_over_a_handle(Desk &desk) {
    move_to(desk, on_a_handle(desk));
}
void release_again(Desk &desk) {
    release_at(desk, anywhere(desk));
}
void leave(Desk &desk) {
    desk.note("leave");
    desk.workspace.leave();
}

void zoom(Desk &desk) {
    constexpr double kZooms[] = {0.015, 0.25, 0.5, 1, 1, 2, 4, 16, 64};
    const double zoom = desk.dice.pick(kZooms);
    const Spot at = anywhere(desk);
    desk.note("zoom " + number_text(zoom * 100) + " % at " + to_text(at));
    desk.workspace.viewport().zoom_to(zoom, at.x, at.y);
}

void fit(Desk &desk) {
    desk.note("fit");
    desk.workspace.viewport().fit(desk.workspace.source_width(), desk.workspace.source_height());
}

void pan(Desk &desk) {
    const Spot by = anywhere(desk);
    desk.note("pan by " + to_text(by));
    desk.workspace.viewport().pan_x += by.x - 640;
    desk.workspace.viewport().pan_y += by.y - 360;
}

void change_window(Desk &desk) {
    stage::Workspace &workspace = desk.workspace;
    const bool comp = workspace.window == stage::WindowKind::kComp;
    desk.note(comp ? "layer window" : "comp window");
    workspace.window = comp ? stage::WindowKind::kLayer : stage::WindowKind::kComp;
}

void draw(Desk &desk) {
    desk.note("draw");
    const stage::DrawList &list = desk.workspace.overlay();
    if (desk.habits.options.null_drawing_reference) {
        EXPECT_TRUE(list.primitives.empty());
    }
    desk.add_to_note(", " + std::to_string(list.primitives.size()) + " primitives");
}

int divided_up(int size, int by) {
    return (size + by - 1) / by;
}

// The record follows a frame of 75 rows and more, unless frames have a record of their own.
void follow_frame(Desk &desk, const stage::ViewFrame &frame) {
    if (desk.habits.options.separate_render_copy) return;
    for (const stage::EffectOutcome &outcome : frame.effects) {
        const int rows =
            divided_up(desk.layer_item(*outcome.instance).height, desk.workspace.resolution());
        if (outcome.skipped || rows < 75) continue;
        for (const auto &held : desk.session.host.instances) {
            if (held.get() == outcome.instance) desk.order(*held).rendered(desk.boxes(*held));
        }
    }
}

// Text has no pixels of its own, and so no layer window.
bool shows_pixels(Desk &desk) {
    if (desk.workspace.window == stage::WindowKind::kComp || desk.effect() == nullptr) return true;
    return desk.project().layer(desk.effect()->layer)->source != 0;
}

void render(Desk &desk) {
    if (!desk.habits.renders || !shows_pixels(desk)) return desk.note("no frame");
    stage::Workspace &workspace = desk.workspace;
    desk.note("render at 1/" + std::to_string(workspace.resolution()) + ", frame " +
              std::to_string(workspace.frame()));
    workspace.touch();
    const stage::ViewFrame &frame = workspace.view();
    for (const stage::EffectOutcome &outcome : frame.effects) {
        EXPECT_EQ(outcome.error, 0);
        EXPECT_EQ(outcome.message, "");
        desk.add_to_note(outcome.skipped ? ", skipped" : ", rendered");
    }
    EXPECT_EQ(frame.image.width, divided_up(workspace.source_width(), workspace.resolution()));
    EXPECT_EQ(frame.image.height, divided_up(workspace.source_height(), workspace.resolution()));
    follow_frame(desk, frame);
}

constexpr bool kEffect = true;
constexpr Act kActs[] = {
    {"drag anywhere", 6, drag_anywhere, false, false},
    {"drag a handle", 14, drag_a_handle, kEffect, false},
    {"move the pointer", 3, move_the_pointer, false, false},
    {"move over a handle", 8, move_over_a_handle, kEffect, false},
    {"release again", 1, release_again, false, false},
    {"leave", 1, leave, false, false},
    {"zoom", 2, zoom, false, false},
    {"fit", 3, fit, false, false},
    {"pan", 2, pan, false, false},
    {"change the window", 2, change_window, false, false},
    {"draw", 6, draw, false, false},
    {"render", 6, render, false, false},
};

}  // namespace

std::span<const Act> viewer_acts() {
    return kActs;
}

}  // namespace actions
