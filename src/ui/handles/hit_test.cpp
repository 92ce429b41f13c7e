#include "ui/handles/hit_test.h"

#include <algorithm>

namespace ks {
namespace {

constexpr double kReach = 16.0;  ///< window pixels, exclusive
constexpr double kClickHeightReach = 15.0;

enum class Purpose { kClick, kCursor };

/// A pointer among a handle's corners as the window shows them, 16.16 window pixels.
struct Aim {
    std::int64_t x;
    std::int64_t y;
    FixedPoint from;
    FixedPoint to;

    [[nodiscard]] double dx() const { return static_cast<double>(x - from.x) / 65536.0; }
    [[nodiscard]] double dy() const { return static_cast<double>(y - from.y) / 65536.0; }
    // A mirrored layer shows its left corner on the right.
    [[nodiscard]] bool within_x() const {
        return x >= std::min(from.x, to.x) && x <= std::max(from.x, to.x);
    }
    [[nodiscard]] bool within_y() const {
        return y >= std::min(from.y, to.y) && y <= std::max(from.y, to.y);
    }
};

std::optional<Aim> aim_at(const HandleRow &row, const HandleSettings &settings,
                          const WindowMap &window, WindowPoint pointer, Purpose purpose) {
    const LayerRect shape =
        handle_shape(row, settings, purpose == Purpose::kClick ? kBarHeight : kCursorBarHeight);
    const std::optional<FixedPoint> from = window.to_window(shape.from);
    if (!from) return std::nullopt;
    const std::optional<FixedPoint> to = window.to_window(shape.to);
    if (!to) return std::nullopt;
    return Aim{std::int64_t{pointer.x} * 65536, std::int64_t{pointer.y} * 65536, *from, *to};
}

bool is_hit(HandleKind kind, const Aim &aim, Purpose purpose, AbsoluteValue absolute) {
    switch (kind) {
        case HandleKind::kCorner:
        case HandleKind::kWipe:
            return absolute(aim.dx()) + absolute(aim.dy()) < kReach;
        case HandleKind::kMoveBar:
            return aim.within_x() && aim.within_y();
        case HandleKind::kHeightBar:
            // Whole window pixels cannot tell the two apart, fractions of a zoomed view can.
            return aim.within_x() &&
                   (purpose == Purpose::kClick ? absolute(aim.dy()) <= kClickHeightReach
                                               : absolute(aim.dy()) < kReach);
    }
    return false;
}

}  // namespace

std::optional<Hit> clicked_handle(const HandleSettings &settings, const WindowMap &window,
                                  WindowPoint pointer, AbsoluteValue absolute) {
    for (const HandleRow &row : kHandleTable) {
        if (!is_present(row, settings)) continue;
        const std::optional<Aim> aim = aim_at(row, settings, window, pointer, Purpose::kClick);
        if (aim && is_hit(row.kind, *aim, Purpose::kClick, absolute)) {
            return Hit{row.number, aim->from, aim->x - aim->from.x, aim->y - aim->from.y};
        }
    }
    return std::nullopt;
}

int cursor_at(const HandleSettings &settings, const WindowMap &window, WindowPoint pointer,
              AbsoluteValue absolute) {
    for (const HandleRow &row : kHandleTable) {
        if (row.cursor == kHostCursor || !is_present(row, settings)) continue;
        const std::optional<Aim> aim = aim_at(row, settings, window, pointer, Purpose::kCursor);
        if (aim && is_hit(row.kind, *aim, Purpose::kCursor, absolute)) return row.cursor;
    }
    return kHostCursor;
}

}  // namespace ks
