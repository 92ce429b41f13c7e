// What is expected of the Effect Controls panel and of the instance's record.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "hostapi/constants.h"
#include "stage/desk/panel/panel_model.h"
#include "stage/play/session_steps.h"
#include "stage/text/hex.h"
#include "stage/text/number_text.h"

namespace stage {
namespace {

/// A value that a parameter should have: numbers for sliders and points, text for all others.
struct WantedValue {
    std::string where;
    std::string name;
    std::vector<double> numbers;
    std::string text;
    double within = 0;
};

WantedValue read_wanted(const std::string &name, const JsonValue &member) {
    WantedValue wanted{member.where(), name, {}, "", 0};
    if (member.is_object()) {
        member.only({"is", "within"});
        wanted.within = member["within"].number(0, 1e9);
    }
    const JsonValue value = member.is_object() ? member["is"] : member;
    if (value.is_number()) wanted.numbers = {value.number(-kLargestNumber, kLargestNumber)};
    if (value.is_list()) {
        const auto [x, y] = value.pair(-kLargestNumber, kLargestNumber);
        wanted.numbers = {x, y};
    }
    wanted.text = value.typed();
    return wanted;
}

std::string layer_name(SessionPlayer &player, LayerId id) {
    const Layer *layer = player.session().project().layer(id);
    return layer != nullptr ? layer->name : "none";
}

std::string tolerance_text(const WantedValue &wanted) {
    return wanted.within == 0 ? "" : " within " + number_text(wanted.within);
}

void check_slider(SessionPlayer &player, const WantedValue &wanted, double value) {
    if (wanted.numbers.size() != 1) throw SessionError("a slider's value is a number");
    player.check(std::abs(value - wanted.numbers[0]) <= wanted.within, wanted.where,
                 wanted.text + tolerance_text(wanted), number_text(value));
}

void check_point(SessionPlayer &player, const WantedValue &wanted, const ParamValue &value) {
    if (wanted.numbers.size() != 2) throw SessionError("a point's value is [x, y]");
    const bool near = std::abs(value.x - wanted.numbers[0]) <= wanted.within &&
                      std::abs(value.y - wanted.numbers[1]) <= wanted.within;
    player.check(near, wanted.where, "[" + wanted.text + "]" + tolerance_text(wanted),
                 "[" + number_text(value.x) + "," + number_text(value.y) + "]");
}

void check_value(SessionPlayer &player, const WantedValue &wanted) {
    const ParamCatalog &catalog = player.session().plugin.catalog;
    const int index = catalog.find(wanted.name);
    const ParamValue &value = player.session().value(player.effect(), index);
    switch (catalog.at(index).def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            return check_slider(player, wanted, value.number);
        case PF_Param_POINT:
            return check_point(player, wanted, value);
        case PF_Param_LAYER: {
            const std::string found = layer_name(player, value.layer);
            return player.check(found == wanted.text, wanted.where, wanted.text, found);
        }
        default: {
            const std::string found = catalog.to_text(index, value);
            const std::string text =
                catalog.to_text(index, catalog.parse(index, wanted.text, 1, 1));
            return player.check(found == text, wanted.where, text, found);
        }
    }
}

SessionAct values(const JsonValue &value) {
    std::vector<WantedValue> list;
    for (const auto &[name, member] : value.members()) list.push_back(read_wanted(name, member));
    return [=](SessionPlayer &player) {
        for (const WantedValue &wanted : list) {
            at(wanted.where, [&] { check_value(player, wanted); });
        }
    };
}

// Looks of entries.

struct NamedEntry {
    std::string where;
    std::string name;
};

std::vector<NamedEntry> read_entries(const JsonValue &value) {
    std::vector<NamedEntry> entries;
    for (const JsonValue &name : value.elements()) entries.push_back({name.where(), name.string()});
    if (entries.empty()) value.fail("names nothing");
    return entries;
}

/// True when `path` is `tail` or ends in "/" + tail.
bool goes_by(const std::string &path, const std::string &tail) {
    return path == tail || path.ends_with("/" + tail);
}

/// The entry of the panel, groups included.
PanelEntry find_entry(SessionPlayer &player, const std::string &name) {
    const ParamCatalog &catalog = player.session().plugin.catalog;
    std::vector<PanelEntry> found;
    for (const PanelEntry &entry : panel_entries(player.session(), player.effect())) {
        if (goes_by(catalog.at(entry.index).path, name)) found.push_back(entry);
    }
    if (found.size() == 1) return found.front();
    throw SessionError(found.empty() ? "the panel has no entry \"" + name + "\""
                                     : "\"" + name + "\" is the name of several entries");
}

SessionAct read_looks(const JsonValue &value, bool PanelEntry::*look, bool wanted, const char *yes,
                      const char *no) {
    const std::vector<NamedEntry> entries = read_entries(value);
    return [=](SessionPlayer &player) {
        for (const NamedEntry &each : entries) {
            at(each.where, [&] {
                const bool found = find_entry(player, each.name).*look;
                player.check(found == wanted, each.where, each.name + " " + (wanted ? yes : no),
                             found ? yes : no);
            });
        }
    };
}

SessionAct hidden(const JsonValue &value) {
    return read_looks(value, &PanelEntry::hidden, true, "hidden", "shown");
}

SessionAct shown(const JsonValue &value) {
    return read_looks(value, &PanelEntry::hidden, false, "hidden", "shown");
}

SessionAct disabled(const JsonValue &value) {
    return read_looks(value, &PanelEntry::disabled, true, "disabled", "enabled");
}

SessionAct enabled(const JsonValue &value) {
    return read_looks(value, &PanelEntry::disabled, false, "disabled", "enabled");
}

// The record, by way of its flat form: what a saved project holds.

std::vector<std::uint8_t> flat_record(SessionPlayer &player) {
    Session &session = player.session();
    EffectInstance &effect = player.effect();
    if (session.flatten(effect).error != 0) throw SessionError("the effect has no record");
    const std::vector<std::uint8_t> bytes = session.sequence_bytes(effect);
    if (session.resetup(effect).error != 0) throw SessionError("the effect lost its record");
    return bytes;
}

SessionAct flat(const JsonValue &value) {
    std::string digits = value.string();
    std::erase(digits, ' ');
    const auto bytes = from_hex(digits);
    if (!bytes) value.fail("expected hexadecimal bytes");
    return [=, where = value.where()](SessionPlayer &player) {
        const std::vector<std::uint8_t> found = flat_record(player);
        player.check(found == *bytes, where, to_hex(*bytes), to_hex(found));
    };
}

/// Of the flat record: five scope numbers from byte 1 on, and how many of them count in byte 6.
constexpr std::size_t kOrderByte = 1, kCountByte = 6, kScopes = 5, kFlatSize = 8;

std::string order_text(const std::vector<int> &order) {
    std::string text;
    for (const int scope : order) text += (text.empty() ? "" : ", ") + std::to_string(scope);
    return "[" + text + "]";
}

SessionAct order(const JsonValue &value) {
    std::vector<int> wanted;
    for (const JsonValue &scope : value.elements()) wanted.push_back(scope.number32(1, 5));
    if (wanted.size() > kScopes) value.fail("there are five scopes");
    return [=, where = value.where()](SessionPlayer &player) {
        const std::vector<std::uint8_t> flat = flat_record(player);
        if (flat.size() != kFlatSize || flat[kCountByte] > kScopes) {
            throw SessionError("the record " + to_hex(flat) + " holds no order");
        }
        const auto begin = flat.begin() + static_cast<std::ptrdiff_t>(kOrderByte);
        const std::vector<int> found(begin, begin + flat[kCountByte]);
        player.check(found == wanted, where, order_text(wanted), order_text(found));
    };
}

constexpr ExpectRow kRows[] = {
    {"values", values},   {"hidden", hidden}, {"shown", shown}, {"disabled", disabled},
    {"enabled", enabled}, {"order", order},   {"flat", flat},
};

}  // namespace

std::span<const ExpectRow> panel_expectations() {
    return kRows;
}

}  // namespace stage
