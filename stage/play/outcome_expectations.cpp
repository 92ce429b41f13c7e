// What is expected of the last step: error code, messages, findings, the pointer's fate.
#include <algorithm>
#include <string>
#include <vector>

#include "stage/play/session_steps.h"

namespace stage {
namespace {

SessionAct error(const JsonValue &value) {
    const auto wanted = static_cast<PF_Err>(value.integer(INT32_MIN, INT32_MAX));
    return [=, where = value.where()](SessionPlayer &player) {
        const PF_Err found = player.take_error();
        player.check(found == wanted, where, "error " + std::to_string(wanted),
                     "error " + std::to_string(found));
    };
}

struct WantedMessage {
    std::string text;
    bool as_error = false;
};

WantedMessage read_message(const JsonValue &value) {
    value.only({"error", "plain"});
    const auto error = value.find("error"), plain = value.find("plain");
    if (error.has_value() == plain.has_value()) {
        value.fail("expected {\"error\": text} or {\"plain\": text}");
    }
    return {(error ? *error : *plain).string(), error.has_value()};
}

std::string describe(const std::string &text, bool as_error) {
    return (as_error ? "error \"" : "plain \"") + text + "\"";
}

std::string listed(const std::vector<std::string> &texts) {
    std::string list;
    for (const std::string &text : texts) list += (list.empty() ? "" : ", ") + text;
    return texts.empty() ? "nothing" : list;
}

SessionAct messages(const JsonValue &value) {
    std::vector<std::string> wanted;
    for (const JsonValue &element : value.elements()) {
        const WantedMessage message = read_message(element);
        wanted.push_back(describe(message.text, message.as_error));
    }
    return [=, where = value.where()](SessionPlayer &player) {
        std::vector<std::string> found;
        for (const ShownMessage &message : player.take_messages()) {
            found.push_back(describe(message.text, message.as_error));
        }
        player.check(found == wanted, where, listed(wanted), listed(found));
    };
}

/// Strict findings count as expected when their checks are named, each at least once.
SessionAct findings(const JsonValue &value) {
    std::vector<std::string> wanted;
    for (const JsonValue &check : value.elements()) wanted.push_back(check.string());
    std::ranges::sort(wanted);
    wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
    return [=, where = value.where()](SessionPlayer &player) {
        std::vector<std::string> found;
        for (const Finding &finding : player.take_findings()) found.push_back(finding.check);
        std::ranges::sort(found);
        found.erase(std::unique(found.begin(), found.end()), found.end());
        player.check(found == wanted, where, listed(wanted), listed(found));
    };
}

std::string yes_no(bool yes) {
    return yes ? "true" : "false";
}

SessionAct read_flag(const JsonValue &value, bool (*look)(SessionPlayer &)) {
    const bool wanted = value.boolean();
    return [=, where = value.where()](SessionPlayer &player) {
        const bool found = look(player);
        player.check(found == wanted, where, yes_no(wanted), yes_no(found));
    };
}

SessionAct handled(const JsonValue &value) {
    return read_flag(value,
                     [](SessionPlayer &player) { return player.last_press().event.handled; });
}

SessionAct dragging(const JsonValue &value) {
    return read_flag(value, [](SessionPlayer &player) { return player.desk().dragging(); });
}

SessionAct skipped(const JsonValue &value) {
    return read_flag(value, [](SessionPlayer &player) { return player.skipped; });
}

SessionAct cross_hair(const JsonValue &value) {
    const std::string wanted = value.string();
    return [=, where = value.where()](SessionPlayer &player) {
        const ParamCatalog &catalog = player.session().plugin.catalog;
        const int index = wanted == "none" ? 0 : catalog.find(wanted);
        const int found = player.last_press().native_point;
        player.check(found == index, where, wanted, found == 0 ? "none" : catalog.at(found).path);
    };
}

struct CursorName {
    const char *name;
    PF_CursorType type;
};

/// Those of the host's cursors that a session is likely to meet.
constexpr CursorName kCursors[] = {
    {"host", 0},
    {"resize vertical", 21},
    {"resize horizontal", 22},
    {"layer move", 75},
};

std::string cursor_text(PF_CursorType type) {
    const auto found = std::ranges::find(kCursors, type, &CursorName::type);
    return found != std::end(kCursors) ? found->name : std::to_string(type);
}

PF_CursorType read_cursor(const JsonValue &value) {
    if (value.is_number()) return static_cast<PF_CursorType>(value.integer(0, INT32_MAX));
    const std::string name = value.string();
    const auto found = std::ranges::find(kCursors, name, &CursorName::name);
    if (found != std::end(kCursors)) return found->type;
    value.fail("must be host, resize vertical, resize horizontal, layer move, or a number");
}

SessionAct cursor(const JsonValue &value) {
    const PF_CursorType wanted = read_cursor(value);
    return [=, where = value.where()](SessionPlayer &player) {
        const PF_CursorType found = player.desk().cursor();
        player.check(found == wanted, where, cursor_text(wanted), cursor_text(found));
    };
}

constexpr ExpectRow kRows[] = {
    {"error", error},     {"messages", messages}, {"findings", findings},
    {"handled", handled}, {"dragging", dragging}, {"cross-hair", cross_hair},
    {"skipped", skipped}, {"cursor", cursor},
};

}  // namespace

std::span<const ExpectRow> outcome_expectations() {
    return kRows;
}

}  // namespace stage
