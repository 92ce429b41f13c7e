#include "whole/actions/acts.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "stage/effect/effect_instance.h"

namespace actions {
namespace {

const std::vector<Act> &all_acts() {
    static const std::vector<Act> acts = [] {
        std::vector<Act> list;
        for (const auto &some : {panel_acts(), viewer_acts(), project_acts()}) {
            list.insert(list.end(), some.begin(), some.end());
        }
        return list;
    }();
    return acts;
}

const Act &draw_act(User &user) {
    int sum = 0;
    for (const Act &act : all_acts()) sum += act.weight;
    while (true) {
        int at = user.dice.below(sum);
        for (const Act &act : all_acts()) {
            at -= act.weight;
            if (at >= 0) continue;
            if (!act.needs_effect || user.effect() != nullptr) return act;
            break;
        }
    }
}

// What a refused act must have left alone.
std::string fingerprint(User &user) {
    std::string text;
    for (const stage::Layer &layer : user.layers()) {
        text += std::to_string(layer.id) + (layer.selected ? "s" : "") + ":" +
                std::to_string(layer.effects.size()) + " ";
    }
    for (const auto &held : user.session.instances()) text += std::to_string(held->id) + ",";
    return text;
}

}  // namespace

void act_once(User &user) {
    ++user.actions;
    const Act &act = draw_act(user);
    const std::string before = fingerprint(user);
    const bool can_redo = user.session.history().next_redo() != nullptr;
    try {
        act.run(user);
    } catch (const std::runtime_error &refusal) {
        user.add_to_note(std::string(", refused: ") + refusal.what());
        EXPECT_TRUE(act.may_refuse) << act.name << ": " << refusal.what();
        EXPECT_EQ(fingerprint(user), before) << act.name << " was refused";
        EXPECT_EQ(user.session.history().next_redo() != nullptr, can_redo)
            << act.name << " was refused and yet cost what could be redone";
    }
}

}  // namespace actions
