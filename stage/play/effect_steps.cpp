// Steps about the effect: applying it, its panel, undo.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/constants.h"
#include "stage/desk/panel/panel_model.h"
#include "stage/desk/panel/typed_value.h"
#include "stage/play/session_steps.h"

namespace stage {
namespace {

using Kind = SessionStep::Kind;

/// A parameter as a session names it, and the text to enter.
struct Edit {
    std::string where;
    std::string name;
    std::string text;
};

SessionAct apply(const JsonValue &) {
    return [](SessionPlayer &player) {
        PF_Err first = 0;
        for (const CommandResult &result : player.desk().apply()) {
            if (first == 0) first = result.error;
        }
        player.answered(first);
    };
}

SessionAct remove_effect(const JsonValue &) {
    return [](SessionPlayer &player) {
        player.effect();
        player.desk().remove_effect();
    };
}

EffectInstance &effect_of(SessionPlayer &player, LayerId layer, int number) {
    EffectInstance *const instance = player.session().instance_at(layer, number - 1);
    if (instance != nullptr) return *instance;
    throw SessionError("the layer carries no effect number " + std::to_string(number));
}

SessionAct choose(const JsonValue &value) {
    value.only({"layer", "number"});
    const LayerName name = read_layer_name(value["layer"]);
    const auto given = value.find("number");
    const int number = given ? given->number32(1, INT32_MAX) : 1;
    return [=](SessionPlayer &player) {
        player.desk().choose(effect_of(player, player.layer(name), number));
    };
}

/// Hidden and greyed entries are out of a user's reach.
void require_reachable(SessionPlayer &player, int index) {
    if (!player.session().panel_shown) throw SessionError("the panel is not shown");
    const auto entries = panel_entries(player.session(), player.effect());
    const auto entry = std::ranges::find(entries, index, &PanelEntry::index);
    if (entry == entries.end() || entry->hidden) throw SessionError("the panel does not show it");
    if (entry->disabled) throw SessionError("it is greyed in the panel");
}

void enter(SessionPlayer &player, const Edit &edit) {
    at(edit.where, [&] {
        const int index = player.session().plugin.catalog.find(edit.name);
        require_reachable(player, index);
        const ParamValue value = typed_value(player.session(), player.effect(), index, edit.text);
        player.answered(player.desk().set_value(index, value));
    });
}

SessionAct set(const JsonValue &value) {
    std::vector<Edit> edits;
    for (const auto &[name, member] : value.members()) {
        edits.push_back({member.where(), name, member.typed()});
    }
    return [=](SessionPlayer &player) {
        PF_Err first = 0;
        for (const Edit &edit : edits) {
            enter(player, edit);
            const PF_Err error = player.take_error();
            if (first == 0) first = error;
        }
        player.answered(first);
    };
}

void click_box(SessionPlayer &player, const Edit &edit) {
    at(edit.where, [&] {
        const ParamCatalog &catalog = player.session().plugin.catalog;
        const int index = catalog.find(edit.name);
        if (catalog.at(index).def.param_type != PF_Param_CHECKBOX) {
            throw SessionError("\"" + edit.name + "\" is no checkbox");
        }
        const bool is_on = player.session().value(player.effect(), index).number != 0;
        if (is_on == (edit.text == "on")) {
            throw SessionError("\"" + edit.name + "\" is " + edit.text + " already");
        }
    });
    enter(player, edit);
}

SessionAct tick(const JsonValue &value) {
    const Edit edit{value.where(), value.string(), "on"};
    return [=](SessionPlayer &player) { click_box(player, edit); };
}

SessionAct untick(const JsonValue &value) {
    const Edit edit{value.where(), value.string(), "off"};
    return [=](SessionPlayer &player) { click_box(player, edit); };
}

SessionAct reset(const JsonValue &) {
    return [](SessionPlayer &player) {
        player.effect();
        player.answered(player.desk().reset());
    };
}

SessionAct undo(const JsonValue &) {
    return [](SessionPlayer &player) {
        if (!player.desk().undo()) throw SessionError("there is nothing to undo");
    };
}

SessionAct redo(const JsonValue &) {
    return [](SessionPlayer &player) {
        if (!player.desk().redo()) throw SessionError("there is nothing to redo");
    };
}

SessionAct panel(const JsonValue &value) {
    const std::string state = value.string();
    if (state != "shown" && state != "hidden") value.fail("must be \"shown\" or \"hidden\"");
    return [shown = state == "shown"](SessionPlayer &player) {
        player.session().panel_shown = shown;
        EffectInstance *const effect = player.desk().effect();
        if (shown && effect != nullptr) {
            player.answered(player.session().refresh_panel(*effect).error);
        }
    };
}

constexpr StepRow kRows[] = {
    {"apply", Kind::kAct, true, apply},
    {"remove effect", Kind::kAct, true, remove_effect},
    {"choose effect", Kind::kAct, false, choose},
    {"set", Kind::kAct, false, set},
    {"tick", Kind::kAct, false, tick},
    {"untick", Kind::kAct, false, untick},
    {"reset", Kind::kAct, true, reset},
    {"undo", Kind::kAct, true, undo},
    {"redo", Kind::kAct, true, redo},
    {"panel", Kind::kAct, false, panel},
};

}  // namespace

std::span<const StepRow> effect_steps() {
    return kRows;
}

}  // namespace stage
