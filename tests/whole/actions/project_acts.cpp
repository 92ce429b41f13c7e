// In the project: layers, effects, time, undo, files.
#include <gtest/gtest.h>

#include <algorithm>

#include "stage/effect/effect_instance.h"
#include "whole/actions/acts.h"

namespace actions {
namespace {

constexpr char kDimensionWarning[] =
    "Warning: You have applied Kestrel Scopes to a source layer with different dimensions to the "
    "comp.\n\nIt is recommended that you apply Kestrel Scopes to an adjustment layer at the top of "
    "the stack";

std::string name_of(const stage::Layer &layer) {
    return "\"" + layer.name + "\" (" + std::to_string(layer.id) + ")";
}

bool full(User &user) {
    return user.layers().size() >= kMostLayers;
}

void delete_layer(User &user) {
    if (user.layers().empty()) return user.note("nothing to delete");
    const stage::Layer layer = user.dice.pick(user.layers());
    user.note("delete " + name_of(layer));
    user.desk.delete_layer(layer.id);
    EXPECT_EQ(user.project().layer(layer.id), nullptr);
}

void add_layer(User &user) {
    if (full(user)) return delete_layer(user);
    const int width = user.dice.between(1, 2 * user.habits.comp_width);
    const int height = user.dice.between(1, 2 * user.habits.comp_height);
    switch (user.dice.below(6)) {
        case 0:
            user.note("add text");
            user.desk.add_text("text");
            break;
        case 1:
        case 2:
            user.note("add adjustment layer");
            user.desk.add_adjustment("adjustment");
            break;
        case 3:
            user.note("add solid " + std::to_string(width) + "x" + std::to_string(height));
            user.desk.add_solid("solid", width, height, {1, 0.2, 0.5, 0.9});
            break;
        default:
            user.note("add chart " + std::to_string(width) + "x" + std::to_string(height));
            user.desk.add_chart("bars75", width, height, user.dice.between(1, 2), 1);
            break;
    }
}

void duplicate_layer(User &user) {
    if (user.layers().empty() || full(user)) return delete_layer(user);
    const stage::Layer layer = user.dice.pick(user.layers());
    user.note("duplicate " + name_of(layer));
    std::map<int, OrderModel> originals;  // by place in the layer's list
    for (const auto &held : user.session.instances()) {
        if (held->layer == layer.id) originals[held->effect] = user.order(*held);
    }
    const stage::LayerId copy = user.desk.duplicate_layer(layer.id);
    std::size_t copies = 0;
    for (const auto &held : user.session.instances()) {
        if (held->layer != copy) continue;
        ++copies;
        user.order(*held) = originals.at(held->effect);
    }
    EXPECT_EQ(copies, originals.size()) << "every effect of the layer has its copy";
}

void select_layers(User &user) {
    std::vector<stage::LayerId> chosen;
    for (const stage::Layer &layer : user.layers()) {
        if (user.dice.one_in(3)) chosen.push_back(layer.id);
    }
    user.note("select");
    for (const stage::LayerId id : chosen) user.add_to_note(" " + std::to_string(id));
    user.desk.select(chosen);
}

void move_layer(User &user) {
    if (user.layers().empty()) return user.note("nothing to move");
    const stage::Layer layer = user.dice.pick(user.layers());
    const int index = user.dice.between(0, static_cast<int>(user.layers().size()) - 1);
    user.note("move " + name_of(layer) + " to " + std::to_string(index));
    user.desk.move_layer(layer.id, index);
    EXPECT_EQ(user.project().index_of(layer.id), index);
}

void show_layer(User &user) {
    if (user.layers().empty()) return user.note("nothing to show");
    const stage::Layer layer = user.dice.pick(user.layers());
    const bool video = user.dice.below(4) != 0;
    user.note((video ? "show " : "hide ") + name_of(layer));
    user.desk.show_layer(layer.id, video);
}

void place_layer(User &user) {
    if (user.layers().empty()) return user.note("nothing to place");
    const stage::Layer layer = user.dice.pick(user.layers());
    constexpr double kScales[] = {100, 100, 100, 50, 33.3, 0, -100, 1000};
    const double scale = user.dice.pick(kScales);
    const double x = user.dice.real(-100, 300), y = user.dice.real(-100, 300);
    user.note("place " + name_of(layer) + " at " + number_text(x) + "," + number_text(y) +
              " scale " + number_text(scale));
    user.desk.place_layer(layer.id, x, y, scale);
}

void expect_applied(User &user, const stage::Layer &before, const stage::CommandResult &result) {
    const bool text = before.kind == stage::LayerKind::kText;
    EXPECT_EQ(result.error, 0) << name_of(before);
    const stage::Layer *layer = user.project().layer(before.id);
    const bool adjustment = layer->has_flag(stage::layer_flag::kAdjustment);
    const stage::Item *source = user.project().item(layer->source);
    const stage::Item *comp = user.project().comp_of(layer->id);
    const bool other_size =
        !text && !adjustment && (source->width != comp->width || source->height != comp->height);
    EXPECT_EQ(result.message, other_size ? kDimensionWarning : "") << name_of(before);
    if (adjustment) {
        EXPECT_TRUE(layer->has_flag(stage::layer_flag::kGuide)) << name_of(before);
    }
    EXPECT_EQ(layer->effects.size(), before.effects.size() + 1) << name_of(before);
}

void apply(User &user) {
    if (user.session.instances().size() >= kMostEffects) return user.note("effects enough");
    std::vector<stage::Layer> selected;
    for (const stage::Layer &layer : user.layers()) {
        if (layer.selected) selected.push_back(layer);
    }
    user.note("apply to");
    for (const stage::Layer &layer : selected) user.add_to_note(" " + name_of(layer));
    std::vector<int> known;
    for (const auto &held : user.session.instances()) known.push_back(held->id);
    const std::vector<stage::CommandResult> results = user.desk.apply();
    ASSERT_EQ(results.size(), selected.size());
    for (std::size_t i = 0; i < results.size(); ++i) expect_applied(user, selected[i], results[i]);
    for (const auto &held : user.session.instances()) {
        if (std::ranges::find(known, held->id) == known.end()) user.order(*held) = OrderModel();
    }
}

void remove_effect(User &user) {
    user.note("remove the effect");
    const std::size_t count = user.session.instances().size();
    user.desk.remove_effect();
    EXPECT_EQ(user.session.instances().size(), count - 1);
}

void choose_effect(User &user) {
    auto &instances = user.session.instances();
    stage::EffectInstance &instance = *user.dice.pick(instances);
    user.note("choose the effect on layer " + std::to_string(instance.layer));
    user.desk.choose(instance);
}

void move_through_history(User &user, const char *name, bool (stage::Desk::*move)()) {
    user.note(name);
    if (!(user.desk.*move)()) return user.add_to_note(", nothing");
    for (const auto &held : user.session.instances()) {
        user.order(*held).history_moved(user.last_boxes[held->id], user.boxes(*held));
    }
}

void undo(User &user) {
    move_through_history(user, "undo", &stage::Desk::undo);
}
void redo(User &user) {
    move_through_history(user, "redo", &stage::Desk::redo);
}

// Effects in the order of the project file.
std::vector<const stage::EffectInstance *> in_file_order(User &user) {
    std::vector<const stage::EffectInstance *> found;
    for (const auto &item : user.project().items()) {
        for (const stage::Layer &layer : item->layers) {
            for (const stage::EffectState &effect : layer.effects) {
                for (const auto &held : user.session.instances()) {
                    if (held->id == effect.instance) found.push_back(held.get());
                }
            }
        }
    }
    return found;
}

void save(User &user) {
    user.note("save");
    user.desk.save(user.project_file);
    user.saved_orders.clear();
    for (const auto *held : in_file_order(user)) {
        user.saved_orders.push_back(user.order(*held));
    }
}

void load(User &user) {
    if (!std::filesystem::exists(user.project_file)) return save(user);
    user.note("load");
    user.desk.load(user.project_file);
    const auto loaded = in_file_order(user);
    ASSERT_EQ(loaded.size(), user.saved_orders.size());
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        user.order(*loaded[i]) = user.saved_orders[i];
    }
}

void set_frame(User &user) {
    const int frame = user.dice.between(-2, 8);
    user.note("frame " + std::to_string(frame));
    user.desk.set_frame(frame);
    EXPECT_GE(user.desk.frame(), 0);
    EXPECT_LE(user.desk.frame(), 4);
}

void set_resolution(User &user) {
    constexpr int kResolutions[] = {1, 1, 2, 4};
    const int resolution = user.dice.pick(kResolutions);
    user.note("resolution 1/" + std::to_string(resolution));
    user.desk.set_resolution(resolution);
}

void set_depth(User &user) {
    constexpr stage::Depth kDepths[] = {stage::Depth::U8, stage::Depth::U16, stage::Depth::Float};
    const stage::Depth depth = user.dice.pick(kDepths);
    user.note("depth " + std::to_string(static_cast<int>(depth)));
    user.session.options().depth = depth;
    user.desk.touch();
}

constexpr bool kEffect = true, kMayRefuse = true;
constexpr Act kActs[] = {
    {"add a layer", 3, add_layer, false, kMayRefuse},
    {"delete a layer", 2, delete_layer, false, kMayRefuse},
    {"duplicate a layer", 3, duplicate_layer, false, kMayRefuse},
    {"select", 3, select_layers, false, kMayRefuse},
    {"move a layer", 2, move_layer, false, kMayRefuse},
    {"show a layer", 2, show_layer, false, kMayRefuse},
    {"place a layer", 2, place_layer, false, kMayRefuse},
    {"apply", 4, apply, false, kMayRefuse},
    {"remove the effect", 1, remove_effect, kEffect, false},
    {"choose an effect", 3, choose_effect, kEffect, false},
    {"undo", 9, undo, false, false},
    {"redo", 5, redo, false, false},
    {"save", 1, save, false, false},
    {"load", 1, load, false, false},
    {"go to a frame", 2, set_frame, false, false},
    {"resolution", 2, set_resolution, false, false},
    {"depth", 1, set_depth, false, false},
};

}  // namespace

std::span<const Act> project_acts() {
    return kActs;
}

}  // namespace actions
