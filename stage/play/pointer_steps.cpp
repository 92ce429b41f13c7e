// Steps of the mouse in the window in front.
#include "stage/play/session_place.h"
#include "stage/play/session_steps.h"

namespace stage {
namespace {

using Kind = SessionStep::Kind;

constexpr int kMaxMoves = 10'000;

void press_at(SessionPlayer &player, WindowPixel at, int clicks) {
    player.answered(player.desk().press(at.x, at.y, clicks), true);
}

void move_to(SessionPlayer &player, WindowPixel at) {
    player.answered(player.desk().move(at.x, at.y), false);
}

void release_at(SessionPlayer &player, WindowPixel at) {
    player.answered(player.desk().release(at.x, at.y), false);
}

SessionAct press(const JsonValue &value) {
    const SessionPlace place = read_place(value);
    return [=](SessionPlayer &player) { press_at(player, window_pixel(player, place), 1); };
}

SessionAct move(const JsonValue &value) {
    const SessionPlace place = read_place(value);
    return [=](SessionPlayer &player) { move_to(player, window_pixel(player, place)); };
}

SessionAct release(const JsonValue &value) {
    const SessionPlace place = read_place(value);
    return [=](SessionPlayer &player) { release_at(player, window_pixel(player, place)); };
}

SessionAct click(const JsonValue &value) {
    const SessionPlace place = read_place(value);
    return [=](SessionPlayer &player) {
        const WindowPixel at = window_pixel(player, place);
        press_at(player, at, 1);
        release_at(player, at);
    };
}

SessionAct double_click(const JsonValue &value) {
    const SessionPlace place = read_place(value);
    return [=](SessionPlayer &player) {
        const WindowPixel at = window_pixel(player, place);
        for (const int clicks : {1, 2}) {
            press_at(player, at, clicks);
            release_at(player, at);
        }
    };
}

/// Step `i` of `count` on the way, in whole pixels.
int on_the_way(int from, int to, int i, int count) {
    return from + static_cast<int>(static_cast<std::int64_t>(to - from) * i / count);
}

SessionAct drag(const JsonValue &value) {
    value.only({"from", "to", "moves"});
    const SessionPlace from = read_place(value["from"]), to = read_place(value["to"]);
    const auto given = value.find("moves");
    const int moves = given ? given->number32(1, kMaxMoves) : 1;
    return [=](SessionPlayer &player) {
        // Both ends are looked up first: what the drag moves must not lead it astray.
        const WindowPixel begin = window_pixel(player, from), end = window_pixel(player, to);
        press_at(player, begin, 1);
        for (int i = 1; i <= moves; ++i) {
            move_to(player,
                    {on_the_way(begin.x, end.x, i, moves), on_the_way(begin.y, end.y, i, moves)});
        }
        release_at(player, end);
    };
}

SessionAct leave(const JsonValue &) {
    return [](SessionPlayer &player) { player.desk().leave(); };
}

constexpr StepRow kRows[] = {
    {"press", Kind::kAct, false, press},
    {"move", Kind::kAct, false, move},
    {"release", Kind::kAct, false, release},
    {"click", Kind::kAct, false, click},
    {"double click", Kind::kAct, false, double_click},
    {"drag", Kind::kAct, false, drag},
    {"leave", Kind::kAct, true, leave},
};

}  // namespace

std::span<const StepRow> pointer_steps() {
    return kRows;
}

}  // namespace stage
