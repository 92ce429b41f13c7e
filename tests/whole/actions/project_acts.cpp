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

bool full(Desk &desk) {
    return desk.layers().size() >= kMostLayers;
}

void delete_layer(Desk &desk) {
    if (desk.layers().empty()) return desk.note("nothing to delete");
    const stage::Layer layer = desk.dice.pick(desk.layers());
    desk.note("delete " + name_of(layer));
    desk.workspace.delete_layer(layer.id);
    EXPECT_EQ(desk.project().layer(layer.id), nullptr);
}

void add_layer(Desk &desk) {
    if (full(desk)) return delete_layer(desk);
    const int width = desk.dice.between(1, 2 * desk.habits.comp_width);
    const int height = desk.dice.between(1, 2 * desk.habits.comp_height);
    switch (desk.dice.below(6)) {
        case 0:
            desk.note("add text");
            desk.workspace.add_text("text");
            break;
        case 1:
        case 2:
            desk.note("add adjustment layer");
            desk.workspace.add_adjustment("adjustment");
            break;
        case 3:
            desk.note("add solid " + std::to_string(width) + "x" + std::to_string(height));
            desk.workspace.add_solid("solid", width, height, {1, 0.2, 0.5, 0.9});
            break;
        default:
            desk.note("add chart " + std::to_string(width) + "x" + std::to_string(height));
            desk.workspace.add_chart("bars75", width, height, desk.dice.between(1, 2), 1);
            break;
    }
}

void duplicate_layer(Desk &desk) {
    if (desk.layers().empty() || full(desk)) return delete_layer(desk);
    const stage::Layer layer = desk.dice.pick(desk.layers());
    desk.note("duplicate " + name_of(layer));
    std::map<int, OrderModel> originals;  // by place in the layer's list
    for (const auto &held : desk.session.host.instances) {
        if (held->layer == layer.id) originals[held->effect] = desk.order(*held);
    }
    const stage::LayerId copy = desk.workspace.duplicate_layer(layer.id);
    std::size_t copies = 0;
    for (const auto &held : desk.session.host.instances) {
        if (held->layer != copy) continue;
        ++copies;
        desk.order(*held) = originals.at(held->effect);
    }
    EXPECT_EQ(copies, originals.size()) << "every effect of the layer has its copy";
}

void select_layers(Desk &desk) {
    std::vector<stage::LayerId> chosen;
    for (const stage::Layer &layer : desk.layers()) {
        if (desk.dice.one_in(3)) chosen.push_back(layer.id);
    }
    desk.note("select");
    for (const stage::LayerId id : chosen) desk.add_to_note(" " + std::to_string(id));
    desk.workspace.select(chosen);
}

void move_layer(Desk &desk) {
    if (desk.layers().empty()) return desk.note("nothing to move");
    const stage::Layer layer = desk.dice.pick(desk.layers());
    const int index = desk.dice.between(0, static_cast<int>(desk.layers().size()) - 1);
    desk.note("move " + name_of(layer) + " to " + std::to_string(index));
    desk.workspace.move_layer(layer.id, index);
    EXPECT_EQ(desk.project().index_of(layer.id), index);
}

void show_layer(Desk &desk) {
    if (desk.layers().empty()) return desk.note("nothing to show");
    const stage::Layer layer = desk.dice.pick(desk.layers());
    const bool video = desk.dice.below(4) != 0;
    desk.note((video ? "show " : "hide ") + name_of(layer));
    desk.workspace.show_layer(layer.id, video);
}

void place_layer(Desk &desk) {
    if (desk.layers().empty()) return desk.note("nothing to place");
    const stage::Layer layer = desk.dice.pick(desk.layers());
    constexpr double kScales[] = {100, 100, 100, 50, 33.3, 0, -100, 1000};
    const double scale = desk.dice.pick(kScales);
    const double x = desk.dice.real(-100, 300), y = desk.dice.real(-100, 300);
    desk.note("place " + name_of(layer) + " at " + number_text(x) + "," + number_text(y) +
              " scale " + number_text(scale));
    desk.workspace.place_layer(layer.id, x, y, scale);
}

void expect_applied(Desk &desk, const stage::Layer &before, const stage::CommandResult &result) {
    const bool text = before.kind == stage::LayerKind::kText;
    EXPECT_EQ(result.error, 0) << name_of(before);
    const stage::Layer *layer = desk.project().layer(before.id);
    const bool adjustment = layer->has_flag(stage::layer_flag::kAdjustment);
    const stage::Item *source = desk.project().item(layer->source);
    const stage::Item *comp = desk.project().comp_of(layer->id);
    const bool other_size =
        !text && !adjustment && (source->width != comp->width || source->height != comp->height);
    EXPECT_EQ(result.message, other_size ? kDimensionWarning : "") << name_of(before);
    if (adjustment) {
        EXPECT_TRUE(layer->has_flag(stage::layer_flag::kGuide)) << name_of(before);
    }
    EXPECT_EQ(layer->effects.size(), before.effects.size() + 1) << name_of(before);
}

void apply(Desk &desk) {
    if (desk.session.host.instances.size() >= kMostEffects) return desk.note("effects enough");
    std::vector<stage::Layer> selected;
    for (const stage::Layer &layer : desk.layers()) {
        if (layer.selected) selected.push_back(layer);
    }
    desk.note("apply to");
    for (const stage::Layer &layer : selected) desk.add_to_note(" " + name_of(layer));
    std::vector<int> known;
    for (const auto &held : desk.session.host.instances) known.push_back(held->id);
    const std::vector<stage::CommandResult> results = desk.workspace.apply();
    ASSERT_EQ(results.size(), selected.size());
    for (std::size_t i = 0; i < results.size(); ++i) expect_applied(desk, selected[i], results[i]);
    for (const auto &held : desk.session.host.instances) {
        if (std::ranges::find(known, held->id) == known.end()) desk.order(*held) = OrderModel();
    }
}

void remove_effect(Desk &desk) {
    desk.note("remove the effect");
    const std::size_t count = desk.session.host.instances.size();
    desk.workspace.remove_effect();
    EXPECT_EQ(desk.session.host.instances.size(), count - 1);
}

void choose_effect(Desk &desk) {
    auto &instances = desk.session.host.instances;
    stage::EffectInstance &instance = *desk.dice.pick(instances);
    desk.note("choose the effect on layer " + std::to_string(instance.layer));
    desk.workspace.choose(instance);
}

void move_through_history(Desk &desk, const char *name, bool (stage::Workspace::*move)()) {
    desk.note(name);
    if (!(desk.workspace.*move)()) return desk.add_to_note(", nothing");
    for (const auto &held : desk.session.host.instances) {
        desk.order(*held).history_moved(desk.last_boxes[held->id], desk.boxes(*held));
    }
}

void undo(Desk &desk) {
    move_through_history(desk, "undo", &stage::Workspace::undo);
}
void redo(Desk &desk) {
    move_through_history(desk, "redo", &stage::Workspace::redo);
}

// Effects in the order of the project file.
std::vector<const stage::EffectInstance *> in_file_order(Desk &desk) {
    std::vector<const stage::EffectInstance *> found;
    for (const auto &item : desk.project().items()) {
        for (const stage::Layer &layer : item->layers) {
            for (const stage::EffectState &effect : layer.effects) {
                for (const auto &held : desk.session.host.instances) {
                    if (held->id == effect.instance) found.push_back(held.get());
                }
            }
        }
    }
    return found;
}

void save(Desk &desk) {
    desk.note("save");
    desk.workspace.save(desk.project_file);
    desk.saved_orders.clear();
    for (const auto *held : in_file_order(desk)) {
        desk.saved_orders.push_back(desk.order(*held));
    }
}

void load(Desk &desk) {
    if (!std::filesystem::exists(desk.project_file)) return save(desk);
    desk.note("load");
    desk.workspace.load(desk.project_file);
    const auto loaded = in_file_order(desk);
    ASSERT_EQ(loaded.size(), desk.saved_orders.size());
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        desk.order(*loaded[i]) = desk.saved_orders[i];
    }
}

void set_frame(Desk &desk) {
    const int frame = desk.dice.between(-2, 8);
    desk.note("frame " + std::to_string(frame));
    desk.workspace.set_frame(frame);
    EXPECT_GE(desk.workspace.frame(), 0);
    EXPECT_LE(desk.workspace.frame(), 4);
}

void set_resolution(Desk &desk) {
    constexpr int kResolutions[] = {1, 1, 2, 4};
    const int resolution = desk.dice.pick(kResolutions);
    desk.note("resolution 1/" + std::to_string(resolution));
    desk.workspace.set_resolution(resolution);
}

void set_depth(Desk &desk) {
    constexpr stage::Depth kDepths[] = {stage::Depth::U8, stage::Depth::U16, stage::Depth::Float};
    const stage::Depth depth = desk.dice.pick(kDepths);
    desk.note("depth " + std::to_string(static_cast<int>(depth)));
    desk.session.host.options.depth = depth;
    desk.workspace.touch();
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
