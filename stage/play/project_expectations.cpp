// What is expected of the active comp: layers, flags, expressions, selection.
#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "stage/play/session_steps.h"

namespace stage {
namespace {

struct FlagName {
    const char *name;
    std::uint32_t bit;
    bool when_clear;  ///< the name stands for the cleared bit
};

constexpr FlagName kFlags[] = {
    {"locked", layer_flag::kLocked, false},     {"adjustment", layer_flag::kAdjustment, false},
    {"null", layer_flag::kNull, false},         {"guide", layer_flag::kGuide, false},
    {"hidden", layer_flag::kVideoActive, true},
};

std::set<std::string> flags_of(const Layer &layer) {
    std::set<std::string> names;
    for (const FlagName &flag : kFlags) {
        if (layer.has_flag(flag.bit) != flag.when_clear) names.insert(flag.name);
    }
    return names;
}

/// One layer as it should be; what is unset may be anything.
struct WantedLayer {
    std::string where;
    std::string name;
    std::optional<std::set<std::string>> flags;
    std::optional<std::string> expression;
    std::optional<std::pair<int, int>> size;  ///< of the source, pixels
    std::optional<bool> selected;
    std::optional<int> effects;
};

std::set<std::string> read_flags(const JsonValue &value) {
    std::set<std::string> names;
    for (const JsonValue &element : value.elements()) {
        const std::string name = element.string();
        if (std::ranges::find(kFlags, name, &FlagName::name) == std::end(kFlags)) {
            element.fail("must be one of locked, adjustment, null, guide, hidden");
        }
        names.insert(name);
    }
    return names;
}

WantedLayer read_layer(const JsonValue &value) {
    WantedLayer wanted;
    wanted.where = value.where();
    if (value.is_string()) {
        wanted.name = value.string();
        return wanted;
    }
    value.only({"name", "flags", "expression", "size", "selected", "effects"});
    wanted.name = value["name"].string();
    if (const auto flags = value.find("flags")) wanted.flags = read_flags(*flags);
    if (const auto text = value.find("expression")) wanted.expression = text->string();
    if (const auto size = value.find("size")) wanted.size = size->whole_pair(1, kMaxPictureSide);
    if (const auto selected = value.find("selected")) wanted.selected = selected->boolean();
    if (const auto effects = value.find("effects")) wanted.effects = effects->number32(0, 1000);
    return wanted;
}

std::string joined(const auto &names) {
    std::string text;
    for (const std::string &name : names) text += (text.empty() ? "" : ", ") + name;
    return "[" + text + "]";
}

std::pair<int, int> source_size(SessionPlayer &player, const Layer &layer) {
    const Item *source = player.session().project().item(layer.source);
    return source != nullptr ? std::pair(source->width, source->height) : std::pair(0, 0);
}

std::string size_text(std::pair<int, int> size) {
    return std::to_string(size.first) + "x" + std::to_string(size.second);
}

void check_layer(SessionPlayer &player, const WantedLayer &wanted, const Layer &layer) {
    if (wanted.flags) {
        const std::set<std::string> found = flags_of(layer);
        player.check(found == *wanted.flags, wanted.where + ".flags", joined(*wanted.flags),
                     joined(found));
    }
    if (wanted.expression) {
        player.check(layer.position_expression == *wanted.expression, wanted.where + ".expression",
                     "\"" + *wanted.expression + "\"", "\"" + layer.position_expression + "\"");
    }
    if (wanted.size) {
        const std::pair<int, int> found = source_size(player, layer);
        player.check(found == *wanted.size, wanted.where + ".size", size_text(*wanted.size),
                     size_text(found));
    }
    if (wanted.selected) {
        player.check(layer.selected == *wanted.selected, wanted.where + ".selected",
                     *wanted.selected ? "selected" : "not selected",
                     layer.selected ? "selected" : "not selected");
    }
    if (wanted.effects) {
        const auto found = static_cast<int>(layer.effects.size());
        player.check(found == *wanted.effects, wanted.where + ".effects",
                     std::to_string(*wanted.effects), std::to_string(found));
    }
}

SessionAct layers(const JsonValue &value) {
    std::vector<WantedLayer> list;
    std::vector<std::string> names;
    for (const JsonValue &layer : value.elements()) {
        list.push_back(read_layer(layer));
        names.push_back(list.back().name);
    }
    return [=, where = value.where()](SessionPlayer &player) {
        const std::vector<Layer> &found = player.comp().layers;
        std::vector<std::string> found_names;
        for (const Layer &layer : found) found_names.push_back(layer.name);
        player.check(found_names == names, where, joined(names), joined(found_names));
        for (std::size_t i = 0; i < std::min(list.size(), found.size()); ++i) {
            if (found_names[i] == names[i]) check_layer(player, list[i], found[i]);
        }
    };
}

SessionAct selected(const JsonValue &value) {
    std::vector<std::string> names;
    for (const JsonValue &name : value.elements()) names.push_back(name.string());
    return [=, where = value.where()](SessionPlayer &player) {
        std::vector<std::string> found;
        for (const Layer &layer : player.comp().layers) {
            if (layer.selected) found.push_back(layer.name);
        }
        player.check(found == names, where, joined(names), joined(found));
    };
}

constexpr ExpectRow kRows[] = {
    {"layers", layers},
    {"selected", selected},
};

}  // namespace

std::span<const ExpectRow> project_expectations() {
    return kRows;
}

}  // namespace stage
