// In the Effect Controls panel.
#include <gtest/gtest.h>

#include <algorithm>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "whole/actions/acts.h"

namespace actions {
namespace {

constexpr char kPinned[] = "[thisComp.width / 2, thisComp.height / 2]";

void expect_selected_layers(User &user, const char *expression) {
    for (const stage::Layer &layer : user.layers()) {
        if (!layer.selected) continue;
        EXPECT_EQ(layer.position_expression, expression) << layer.name;
    }
}

void tick_scope(User &user) {
    const int index = kShow[user.dice.between(1, 5)];
    user.edit(index, user.number(*user.effect(), index) != 0 ? 0 : 1);
}

void tick_scope_again(User &user) {
    const int index = kShow[user.dice.between(1, 5)];
    user.edit(index, user.number(*user.effect(), index));
}

double slider_value(User &user, const stage::ParamInfo &info) {
    const PF_FloatSliderDef &slider = info.def.u.fs_d;
    const double low = double{slider.valid_min}, high = double{slider.valid_max};
    switch (user.dice.below(5)) {
        case 0:
            return low;
        case 1:
            return high;
        case 2:
            return double{slider.dephault};
        default:
            return user.dice.real(low, high);
    }
}

double popup_choice(User &user, const stage::ParamInfo &info) {
    while (true) {
        const int choice = user.dice.between(1, static_cast<int>(info.choices.size()));
        if (!info.is_separator(choice)) return choice;
    }
}

// Somewhere on the layer, often on its edge.
double coordinate(User &user, int size) {
    const int where = user.dice.below(6);
    return where == 0 ? 0 : where == 1 ? size : user.dice.real(0, size);
}

stage::LayerId some_layer(User &user) {
    const auto &layers = user.layers();
    if (layers.empty() || user.dice.one_in(3)) return 0;
    return user.dice.pick(layers).id;
}

stage::ParamValue some_value(User &user, int index) {
    const stage::ParamInfo &info = user.session.plugin.catalog.at(index);
    stage::ParamValue value = user.session.value(*user.effect(), index);
    switch (info.def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            value.number = slider_value(user, info);
            break;
        case PF_Param_POPUP:
            value.number = popup_choice(user, info);
            break;
        case PF_Param_CHECKBOX:
            value.number = value.number != 0 ? 0 : 1;
            break;
        case PF_Param_POINT:
            value.x = coordinate(user, user.layer_item(*user.effect()).width);
            value.y = coordinate(user, user.layer_item(*user.effect()).height);
            break;
        case PF_Param_COLOR:
            for (std::uint8_t &part : value.color) {
                part = static_cast<std::uint8_t>(user.dice.below(256));
            }
            break;
        case PF_Param_LAYER:
            value.layer = some_layer(user);
            break;
        default:
            break;
    }
    return value;
}

bool can_be_edited(User &user, int index) {
    if (index == kReset) return false;  // has its own acts
    if (!stage::ParamCatalog::has_value(user.session.plugin.catalog.at(index).def)) return false;
    const stage::EffectInstance &instance = *user.effect();
    const auto place = static_cast<std::size_t>(index);
    const stage::EffectState &state = user.session.state_of(instance);
    const bool greyed = (instance.looks.at(place).ui_flags & PF_PUI_DISABLED) != 0;
    // Presets and expressions reach what the panel does not show.
    return (!state.streams.at(place).hidden && !greyed) || user.dice.one_in(12);
}

void set_any(User &user) {
    int index = 0;
    do {
        index = user.dice.between(1, user.session.plugin.catalog.count() - 1);
    } while (!can_be_edited(user, index));
    user.edit(index, some_value(user, index));
}

void choose_layout(User &user) {
    user.edit(kLayout, popup_choice(user, user.session.plugin.catalog.at(kLayout)));
}

void move_scope(User &user) {
    const int kind = user.dice.between(1, 5);
    if (!can_be_edited(user, kPosition[kind])) return user.note("look at the panel");
    user.edit(kPosition[kind], some_value(user, kPosition[kind]));
}

void size_scope(User &user) {
    const int index = kSize[user.dice.between(1, 5)];
    user.edit(index, some_value(user, index));
}

void lock_position(User &user) {
    const double on = user.dice.below(2);
    user.edit(kLock, on);
    expect_selected_layers(user, on != 0 ? kPinned : "");
}

// What the plug-in gives the four panels from the layer's width, as the host limits it.
void expect_first_sizes(User &user, const std::string &what) {
    const stage::Item &item = user.layer_item(*user.effect());
    const double wide = double(item.par_num) / item.par_den * item.width * 0.234375;
    for (int kind = 1; kind <= 4; ++kind) {
        const double least = kind == 2 ? 150 : 200;
        const bool limited = user.habits.options.clamp_written_values;
        const double expected = limited ? std::clamp(wide, least, 1000.0) : wide;
        EXPECT_NEAR(user.number(*user.effect(), kSize[kind]), expected, 1e-4 * expected)
            << what << ", scope " << kind;
    }
}

// A host that keeps the handle it knows has lost the record after RESET: lost_record_test.cpp.
bool survives_reset(User &user) {
    const bool adopted = user.habits.options.adopt_replaced_sequence;
    if (!adopted) user.note("RESET is left alone");
    return adopted;
}

void reset_order(User &user) {
    if (!survives_reset(user)) return;
    user.edit(kReset, 1);
    expect_first_sizes(user, "RESET");
}

void switch_reset_off(User &user) {
    user.edit(kReset, 0);
}

void reset_panel(User &user) {
    if (!survives_reset(user)) return;
    user.note("reset");
    EXPECT_EQ(user.desk.reset(), 0);
    EXPECT_EQ(user.boxes(*user.effect()), kDefaultBoxes);
    user.order(*user.effect()).reset(kDefaultBoxes);
    expect_first_sizes(user, "the Reset link");
}

void look_again(User &user) {
    user.note("look at the panel");
    EXPECT_EQ(user.session.refresh_panel(*user.effect()).error, 0);
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
