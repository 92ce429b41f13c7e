// Steps about what is looked at, and how: window, zoom, time, frames, shots.
#include <string>
#include <vector>

#include "stage/play/option_fields.h"
#include "stage/play/session_place.h"
#include "stage/play/session_shot.h"
#include "stage/play/session_steps.h"

namespace stage {
namespace {

using Kind = SessionStep::Kind;

constexpr double kMinPercent = Viewport::kMinZoom * 100, kMaxPercent = Viewport::kMaxZoom * 100;
constexpr int kMaxWindowSide = 8192;
constexpr double kFarthestPan = 1e6;

/// A word of a list of words.
struct Word {
    const char *text;
    int value;
};

template <std::size_t N>
int read_word(const JsonValue &value, const Word (&words)[N]) {
    const std::string text = value.string();
    std::string list;
    for (const Word &word : words) {
        if (text == word.text) return word.value;
        list += (list.empty() ? "\"" : ", \"") + std::string(word.text) + "\"";
    }
    value.fail("must be one of " + list);
}

SessionAct zoom(const JsonValue &value) {
    if (value.is_number()) {
        const double percent = value.number(kMinPercent, kMaxPercent);
        return [=](SessionPlayer &player) {
            Viewport &viewport = player.desk().viewport();
            viewport.zoom_to(percent / 100, viewport.width / 2.0, viewport.height / 2.0);
            player.desk().touch();
        };
    }
    value.only({"to", "at"});
    const double percent = value["to"].number(kMinPercent, kMaxPercent);
    const SessionPlace place = read_place(value["at"]);
    return [=](SessionPlayer &player) {
        const WindowPixel at = window_pixel(player, place);
        player.desk().viewport().zoom_to(percent / 100, at.x, at.y);
        player.desk().touch();
    };
}

SessionAct pan(const JsonValue &value) {
    const auto [dx, dy] = value.pair(-kFarthestPan, kFarthestPan);
    return [=](SessionPlayer &player) {
        player.desk().viewport().pan_x += dx;
        player.desk().viewport().pan_y += dy;
        player.desk().touch();
    };
}

SessionAct view(const JsonValue &value) {
    value.only({"size", "zoom", "corner", "stretch"});
    std::vector<std::function<void(Viewport &)>> changes;
    if (const auto size = value.find("size")) {
        const auto [width, height] = size->whole_pair(1, kMaxWindowSide);
        changes.push_back([=](Viewport &viewport) {
            viewport.width = width;
            viewport.height = height;
        });
    }
    if (const auto given = value.find("zoom")) {
        const double percent = given->number(kMinPercent, kMaxPercent);
        changes.push_back([=](Viewport &viewport) { viewport.zoom = percent / 100; });
    }
    if (const auto corner = value.find("corner")) {
        const auto [x, y] = corner->pair(-kFarthestPan, kFarthestPan);
        changes.push_back([=](Viewport &viewport) {
            viewport.pan_x = x;
            viewport.pan_y = y;
        });
    }
    if (const auto given = value.find("stretch")) {
        const double stretch = given->number(0.01, 100);
        changes.push_back([=](Viewport &viewport) { viewport.stretch = stretch; });
    }
    return [=](SessionPlayer &player) {
        for (const auto &change : changes) change(player.desk().viewport());
        player.desk().touch();
    };
}

SessionAct fit(const JsonValue &) {
    return [](SessionPlayer &player) {
        Desk &desk = player.desk();
        desk.viewport().fit(desk.source_width(), desk.source_height());
        desk.touch();
    };
}

SessionAct window(const JsonValue &value) {
    static constexpr Word kWindows[] = {{"comp", static_cast<int>(WindowKind::kComp)},
                                        {"layer", static_cast<int>(WindowKind::kLayer)}};
    const auto kind = static_cast<WindowKind>(read_word(value, kWindows));
    return [=](SessionPlayer &player) {
        player.desk().window = kind;
        player.desk().touch();
    };
}

SessionAct frame(const JsonValue &value) {
    const std::int64_t number = value.integer(INT32_MIN, INT32_MAX);
    return [=](SessionPlayer &player) { player.desk().set_frame(number); };
}

SessionAct resolution(const JsonValue &value) {
    static constexpr Word kResolutions[] = {{"full", 1}, {"half", 2}, {"quarter", 4}};
    const int downsample = read_word(value, kResolutions);
    return [=](SessionPlayer &player) { player.desk().set_resolution(downsample); };
}

SessionAct options(const JsonValue &value) {
    const std::vector<OptionChange> changes = read_options(value, true);
    return [=](SessionPlayer &player) {
        for (const OptionChange &change : changes) change(player.session().options());
        player.desk().touch();
    };
}

SessionAct render(const JsonValue &) {
    return [](SessionPlayer &player) {
        PF_Err first = 0;
        player.skipped = false;
        for (const EffectOutcome &effect : player.desk().view().effects) {
            if (first == 0) first = effect.error;
            if (effect.skipped) player.skipped = true;
        }
        player.answered(first);
    };
}

SessionAct shot(const JsonValue &value) {
    const std::string name = value.string();
    const bool plain = !name.empty() && name.find_first_of("/\\:.") == std::string::npos;
    if (!plain) value.fail("must be a name without folder and ending");
    return [=](SessionPlayer &player) { take_shot(player.desk(), player.output(), name); };
}

SessionAct note(const JsonValue &value) {
    value.string();
    return [](SessionPlayer &) {};
}

constexpr StepRow kRows[] = {
    {"zoom", Kind::kAct, false, zoom},
    {"pan", Kind::kAct, false, pan},
    {"view", Kind::kAct, false, view},
    {"fit", Kind::kAct, true, fit},
    {"window", Kind::kAct, false, window},
    {"frame", Kind::kAct, false, frame},
    {"resolution", Kind::kAct, false, resolution},
    {"options", Kind::kAct, false, options},
    {"render", Kind::kAct, true, render},
    {"shot", Kind::kCheck, false, shot},
    {"note", Kind::kCheck, false, note},
    {"expect", Kind::kCheck, false, read_expect},
};

}  // namespace

std::span<const StepRow> view_steps() {
    return kRows;
}

}  // namespace stage
