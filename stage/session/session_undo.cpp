// Undo and redo: the project goes back, and the running effects follow it.
#include <algorithm>

#include "hostapi/constants.h"
#include "stage/session/session.h"

namespace stage {
namespace {

bool holds(const ProjectData &data, int instance) {
    for (const Item &item : data.items) {
        for (const Layer &layer : item.layers) {
            for (const EffectState &effect : layer.effects) {
                if (effect.instance == instance) return true;
            }
        }
    }
    return false;
}

}  // namespace

void Session::store_leaving(const ProjectData &next) {
    for (const auto &instance : host.instances) {
        if (!holds(next, instance->id)) store_sequence(*instance);
    }
}

void Session::find_places() {
    for (const auto &instance : host.instances) instance->effect = -1;
    for (const auto &item : host.project.items()) {
        for (const Layer &layer : item->layers) {
            for (std::size_t i = 0; i < layer.effects.size(); ++i) {
                for (const auto &instance : host.instances) {
                    if (instance->id != layer.effects[i].instance) continue;
                    instance->layer = layer.id;
                    instance->effect = static_cast<int>(i);
                }
            }
        }
    }
}

void Session::wake_new_effects() {
    const auto runs = [this](int id) {
        return std::ranges::any_of(host.instances,
                                   [id](const auto &instance) { return instance->id == id; });
    };
    for (const auto &item : host.project.items()) {
        for (Layer &layer : item->layers) {
            for (std::size_t i = 0; i < layer.effects.size(); ++i) {
                EffectState &state = layer.effects[i];
                if (state.match_name != match_name() || runs(state.instance)) continue;
                EffectInstance &instance =
                    add_instance(layer.id, static_cast<int>(i), state.instance);
                set_flat_data(instance, state.flat_sequence);
                resetup(instance);
            }
        }
    }
}

void Session::settle_instances() {
    find_places();
    for (std::size_t i = host.instances.size(); i-- > 0;) {
        if (host.instances[i]->effect < 0) set_down(*host.instances[i]);
    }
    wake_new_effects();
    for (const auto &instance : host.instances) refresh_panel(*instance);
}

bool Session::move_through_history(const ProjectData *next, bool (Undo::*move)()) {
    if (next == nullptr) return false;
    store_leaving(*next);
    (host.undo.*move)();
    settle_instances();
    return true;
}

bool Session::undo() {
    return move_through_history(host.undo.next_undo(), &Undo::undo);
}

bool Session::redo() {
    return move_through_history(host.undo.next_redo(), &Undo::redo);
}

}  // namespace stage
