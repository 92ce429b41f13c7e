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

Spot anywhere(User &user) {
    const stage::Viewport &port = user.desk.viewport();
    Spot spot{user.dice.between(-20, port.width + 20), user.dice.between(-20, port.height + 20)};
    if (user.dice.one_in(12)) spot.x = user.dice.pick(kFar);
    if (user.dice.one_in(12)) spot.y = user.dice.pick(kFar);
    return spot;
}

int to_window_pixel(double position) {
    return static_cast<int>(std::lround(std::clamp(position, -1e9, 1e9)));
}

// A layer point in the viewer in front.
Spot in_window(User &user, double x, double y) {
    const stage::Viewport &port = user.desk.viewport();
    if (user.desk.window == stage::WindowKind::kComp) {
        const stage::LayerMap map = stage::layer_map(user.project(), user.effect()->layer);
        x = map.comp_x(x);
        y = map.comp_y(y);
    }
    return {to_window_pixel(port.window_x(x)), to_window_pixel(port.window_y(y))};
}

// On or near a handle: bars and corners of the panels and of the monitor, the wipe.
Spot on_a_handle(User &user) {
    const stage::EffectInstance &instance = *user.effect();
    const stage::Item &item = user.layer_item(instance);
    const double k = double(item.par_den) / item.par_num;
    const int kind = user.dice.between(0, 5);
    const int jitter = user.dice.between(-3, 3);
    if (kind == 0) {  // the monitor's window, or the wipe in it
        const stage::ParamValue &at = user.session.value(instance, 4);
        const double size = user.number(instance, 5) * 0.01;
        const double wipe = user.number(instance, 11) * 0.01;
        const int which = user.dice.below(3);
        if (which == 0) return in_window(user, at.x * k + 2, at.y + 8 + jitter);
        if (which == 1)
            return in_window(user, at.x + item.width * size * k, at.y + item.height * size);
        return in_window(user, item.width * wipe, item.height * 0.5 + jitter);
    }
    const stage::ParamValue &at = user.session.value(instance, kPosition[kind]);
    if (user.dice.one_in(2)) return in_window(user, at.x * k + 3, at.y + 9 + jitter);
    const double size = user.number(instance, kSize[kind]);
    if (kind == 5) return in_window(user, at.x * k + 40, at.y + size + 42 + jitter);
    const double tall = kind == 2 ? 1 : double(item.height) / item.width * k;
    return in_window(user, at.x + size * k, at.y + size * tall + 18);
}

std::string to_text(const Spot &spot) {
    return std::to_string(spot.x) + "," + std::to_string(spot.y);
}

Spot moved(User &user, const Spot &from) {
    if (user.dice.one_in(8)) return anywhere(user);
    return {from.x + user.dice.between(-25, 25), from.y + user.dice.between(-25, 25)};
}

void expect_served(const stage::EventReply &reply) {
    EXPECT_EQ(reply.error, 0);
    EXPECT_EQ(reply.message, "");
}

void press_at(User &user, const Spot &spot) {
    user.note("press " + to_text(spot));
    const stage::PointerReply reply = user.desk.press(spot.x, spot.y, 1, 0);
    expect_served(reply.event);
    if (reply.event.handled) user.add_to_note(", handled");
    if (reply.native_point != 0) {
        user.add_to_note(", cross-hair of " + std::to_string(reply.native_point));
    }
    EXPECT_TRUE(reply.event.changed.empty()) << "a press alone changes no value";
}

void move_to(User &user, const Spot &spot) {
    user.note("move " + to_text(spot));
    const stage::PointerReply reply = user.desk.move(spot.x, spot.y, 0);
    expect_served(reply.event);
    for (const int index : reply.event.changed) user.add_to_note(", " + std::to_string(index));
}

// A layer scaled to nothing has no point beneath the pointer.
bool has_layer_points(User &user) {
    return user.desk.window == stage::WindowKind::kLayer ||
           stage::layer_map(user.project(), user.effect()->layer).invertible();
}

// At a cross-hair's end the host makes an edit of it, which must keep the point on its layer.
void release_at(User &user, const Spot &spot) {
    user.note("release " + to_text(spot));
    const Boxes before = user.effect() != nullptr ? user.boxes(*user.effect()) : Boxes{};
    const stage::PointerReply reply = user.desk.release(spot.x, spot.y, 0);
    expect_served(reply.event);
    EXPECT_FALSE(user.desk.dragging());
    if (reply.native_point == 0 || !has_layer_points(user)) return;
    user.follow_edit(reply.native_point, before);
    const stage::Item &item = user.layer_item(*user.effect());
    const stage::ParamValue &point = user.session.value(*user.effect(), reply.native_point);
    EXPECT_TRUE(point.x >= 0 && point.x <= item.width && point.y >= 0 && point.y <= item.height)
        << "cross-hair of " << reply.native_point << " left at " << point.x << ", " << point.y;
}

void drag_from(User &user, Spot spot) {
    press_at(user, spot);
    for (int steps = user.dice.below(5); steps > 0 && user.desk.dragging(); --steps) {
        spot = moved(user, spot);
        move_to(user, spot);
    }
    // Now and then the release gets lost, or comes after something else.
    if (!user.dice.one_in(15)) release_at(user, moved(user, spot));
}

void drag_anywhere(User &user) {
    drag_from(user, anywhere(user));
}
void drag_a_handle(User &user) {
    drag_from(user, on_a_handle(user));
}
void move_the_pointer(User &user) {
    move_to(user, anywhere(user));
}
void move_over_a_handle(User &user) {
    move_to(user, on_a_handle(user));
}
void release_again(User &user) {
    release_at(user, anywhere(user));
}
void leave(User &user) {
    user.note("leave");
    user.desk.leave();
}

void zoom(User &user) {
    constexpr double kZooms[] = {0.015, 0.25, 0.5, 1, 1, 2, 4, 16, 64};
    const double zoom = user.dice.pick(kZooms);
    const Spot at = anywhere(user);
    user.note("zoom " + number_text(zoom * 100) + " % at " + to_text(at));
    user.desk.viewport().zoom_to(zoom, at.x, at.y);
}

void fit(User &user) {
    user.note("fit");
    user.desk.viewport().fit(user.desk.source_width(), user.desk.source_height());
}

void pan(User &user) {
    const Spot by = anywhere(user);
    user.note("pan by " + to_text(by));
    user.desk.viewport().pan_x += by.x - 640;
    user.desk.viewport().pan_y += by.y - 360;
}

void change_window(User &user) {
    stage::Desk &desk = user.desk;
    const bool comp = desk.window == stage::WindowKind::kComp;
    user.note(comp ? "layer window" : "comp window");
    desk.window = comp ? stage::WindowKind::kLayer : stage::WindowKind::kComp;
}

void draw(User &user) {
    user.note("draw");
    const stage::DrawList &list = user.desk.overlay();
    if (user.habits.options.null_drawing_reference) {
        EXPECT_TRUE(list.primitives.empty());
    }
    user.add_to_note(", " + std::to_string(list.primitives.size()) + " primitives");
}

int divided_up(int size, int by) {
    return (size + by - 1) / by;
}

// The record follows a frame of 75 rows and more, unless frames have a record of their own.
void follow_frame(User &user, const stage::ViewFrame &frame) {
    if (user.habits.options.separate_render_copy) return;
    for (const stage::EffectOutcome &outcome : frame.effects) {
        const int rows =
            divided_up(user.layer_item(*outcome.instance).height, user.desk.resolution());
        if (outcome.skipped || rows < 75) continue;
        for (const auto &held : user.session.instances()) {
            if (held.get() == outcome.instance) user.order(*held).rendered(user.boxes(*held));
        }
    }
}

// Text has no pixels of its own, and so no layer window.
bool shows_pixels(User &user) {
    if (user.desk.window == stage::WindowKind::kComp || user.effect() == nullptr) return true;
    return user.project().layer(user.effect()->layer)->source != 0;
}

void render(User &user) {
    if (!user.habits.renders || !shows_pixels(user)) return user.note("no frame");
    stage::Desk &desk = user.desk;
    user.note("render at 1/" + std::to_string(desk.resolution()) + ", frame " +
              std::to_string(desk.frame()));
    desk.touch();
    const stage::ViewFrame &frame = desk.view();
    for (const stage::EffectOutcome &outcome : frame.effects) {
        EXPECT_EQ(outcome.error, 0);
        EXPECT_EQ(outcome.message, "");
        user.add_to_note(outcome.skipped ? ", skipped" : ", rendered");
    }
    EXPECT_EQ(frame.image.width, divided_up(desk.source_width(), desk.resolution()));
    EXPECT_EQ(frame.image.height, divided_up(desk.source_height(), desk.resolution()));
    follow_frame(user, frame);
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
