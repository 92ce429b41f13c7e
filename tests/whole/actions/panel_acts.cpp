// In the Effect Controls panel.
#include <gtest/gtest.h>

#include <algorithm>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "whole/actions/acts.h"

namespace actions {
namespace {

constexpr char kPinned[] = "[thisComp.width / 2, thisComp.height / 2]";

void expect_selected_layers(Desk &desk, const char *expression) {
    for (const stage::Layer &layer : desk.layers()) {
        if (!layer.selected) continue;
        EXPECT_EQ(layer.position_expression, expression) << layer.name;
    }
}

void tick_scope(Desk &desk) {
    const int index = kShow[desk.dice.between(1, 5)];
    desk.edit(index, desk.number(*desk.effect(), index) != 0 ? 0 : 1);
}

void tick_scope_again(Desk &desk) {
    const int index = kShow[desk.dice.between(1, 5)];
    desk.edit(index, desk.number(*desk.effect(), index));
}

double slider_value(Desk &desk, const stage::ParamInfo &info) {
    const PF_FloatSliderDef &slider = info.def.u.fs_d;
    const double low = double{slider.valid_min}, high = double{slider.valid_max};
    switch (desk.dice.below(5)) {
        case 0:
            return low;
        case 1:
            return high;
        case 2:
            return double{slider.dephault};
        default:
            return desk.dice.real(low, high);
    }
}

double popup_choice(Desk &desk, const stage::ParamInfo &info) {
    while (true) {
        const int choice = desk.dice.between(1, static_cast<int>(info.choices.size()));
        if (!info.is_separator(choice)) return choice;
    }
}

// Somewhere on the layer, often on its edge.
double coordinate(Desk &desk, int size) {
    const int where = desk.dice.below(6);
    return where == 0 ? 0 : where == 1 ? size : desk.dice.real(0, size);
}

stage::LayerId some_layer(Desk &desk) {
    const auto &layers = desk.layers();
    if (layers.empty() || desk.dice.one_in(3)) return 0;
    return desk.dice.pick(layers).id;
}

stage::ParamValue some_value(Desk &desk, int index) {
    const stage::ParamInfo &info = desk.session.plugin.catalog.at(index);
    stage::ParamValue value = desk.session.value(*desk.effect(), index);
    switch (info.def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            value.number = slider_value(desk, info);
            break;
        case PF_Param_POPUP:
            value.number = popup_choice(desk, info);
            break;
        case PF_Param_CHECKBOX:
            value.number = value.number != 0 ? 0 : 1;
            break;
        case PF_Param_POINT:
            value.x = coordinate(desk, desk.layer_item(*desk.effect()).width);
            value.y = coordinate(desk, desk.layer_item(*desk.effect()).height);
            break;
        case PF_Param_COLOR:
            for (std::uint8_t &part : value.color) {
                part = static_cast<std::uint8_t>(desk.dice.below(256));
            }
            break;
        case PF_Param_LAYER:
            value.layer = some_layer(desk);
            break;
        default:
            break;
    }
    return value;
}

bool can_be_edited(Desk &desk, int index) {
    if (index == kReset) return false;  // has its own acts
    if (!stage::ParamCatalog::has_value(desk.session.plugin.catalog.at(index).def)) return false;
    const stage::EffectInstance &instance = *desk.effect();
    const auto place = static_cast<std::size_t>(index);
    const stage::EffectState &state =
        desk.project().layer(instance.layer)->effects.at(static_cast<std::size_t>(instance.effect));
    const bool greyed = (instance.looks.at(place).ui_flags & PF_PUI_DISABLED) != 0;
    // Presets and expressions reach what the panel does not show.
    return (!state.streams.at(place).hidden && !greyed) || desk.dice.one_in(12);
}

void set_any(Desk &desk) {
    int index = 0;
    do {
        index = desk.dice.between(1, desk.session.plugin.catalog.count() - 1);
    } while (!can_be_edited(desk, index));
    desk.edit(index, some_value(desk, index));
}

void choose_layout(Desk &desk) {
    desk.edit(kLayout, popup_choice(desk, desk.session.plugin.catalog.at(kLayout)));
}

void move_scope(Desk &desk) {
    const int kind = desk.dice.between(1, 5);
    if (!can_be_edited(desk, kPosition[kind])) return desk.note("look at the panel");
    desk.edit(kPosition[kind], some_value(desk, kPosition[kind]));
}

void size_scope(Desk &desk) {
    const int index = kSize[desk.dice.between(1, 5)];
    desk.edit(index, some_value(desk, index));
}

void lock_position(Desk &desk) {
    const double on = desk.dice.below(2);
    desk.edit(kLock, on);
    expect_selected_layers(desk, on != 0 ? kPinned : "");
}

// What the plug-in gives the four panels from the layer's width, as the host limits it.
void expect_first_sizes(Desk &desk, const std::string &what) {
    const stage::Item &item = desk.layer_item(*desk.effect());
    const double wide = double(item.par_num) / item.par_den * item.width * 0.234375;
    for (int kind = 1; kind <= 4; ++kind) {
        const double least = kind == 2 ? 150 : 200;
        const bool limited = desk.habits.options.clamp_written_values;
        const double expected = limited ? std::clamp(wide, least, 1000.0) : wide;
        EXPECT_NEAR(desk.number(*desk.effect(), kSize[kind]), expected, 1e-4 * expected)
            << what << ", scope " << kind;
    }
}

// A host that keeps the handle it knows has lost the record after RESET: lost_record_test.cpp.
bool survives_reset(Desk &desk) {
    const bool adopted = desk.habits.options.adopt_replaced_sequence;
    if (!adopted) desk.note("RESET is left alone");
    return adopted;
}

void reset_order(Desk &desk) {
    if (!survives_reset(desk)) return;
    desk.edit(kReset, 1);
    expect_first_sizes(desk, "RESET");
}

void switch_reset_off(Desk &desk) {
    desk.edit(kReset, 0);
}

void reset_panel(Desk &desk) {
    if (!survives_reset(desk)) return;
    desk.note("reset");
    EXPECT_EQ(desk.workspace.reset(), 0);
    EXPECT_EQ(desk.boxes(*desk.effect()), kDefaultBoxes);
    desk.order(*desk.effect()).reset(kDefaultBoxes);
    expect_first_sizes(desk, "the Reset link");
}

void look_again(Desk &desk) {
    desk.note("look at the panel");
    EXPECT_EQ(desk.session.refresh_panel(*desk.effect()).error, 0);
}

constexpr bool kEffect = true;
constexpr Act kActs[] = {
    {"tick a scope", 14, tick_scope, kEffect, false},
    {"tick a scope again", 1, tick_scope_again, kEffect, false},
    {"set any parameter", 14, set_any, kEffect, false},
    {"choose a layout", 4, choose_layout, kEffect, false},
    {"move a scope", 6, move_scope, kEffect, false},
    {"size a scope", 2, size_scope, kEffect, false},
    {"lock the position", 2, lock_position, kEffect, false},
    {"RESET", 2, reset_order, kEffect, false},
    {"RESET off", 1, switch_reset_off, kEffect, false},
    {"reset the panel", 1, reset_panel, kEffect, false},
    {"look at the panel", 2, look_again, kEffect, false},
};

}  // namespace

std::span<const Act> panel_acts() {
    return kActs;
}

}  // namespace actions
