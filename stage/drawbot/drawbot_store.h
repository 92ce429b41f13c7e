// The ledger of Drawbot: references handed to the plug-in, and the list that it draws into.
#pragma once

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>

#include "stage/drawbot/draw_list.h"
#include "stage/drawbot/drawbot_objects.h"
#include "stage/drawbot/overlay_theme.h"
#include "stage/drawbot/surface_state.h"

namespace stage {

class Strict;

/// Objects live from the draw event that made them to their last release; supplier, surface and
/// drawing references live as long as their event. What is left at its end is a finding and goes
/// away. [UI thread]
///
/// Findings: "drawbot.outside_draw" (any use outside a draw event, or of references from an earlier
/// one), "drawbot.unknown" (no such object, or one of another kind), "drawbot.not_owned" (a
/// retain or release of what belongs to the event), "drawbot.not_a_number",
/// "drawbot.state_balance", "leak.drawbot".
class DrawbotStore {
  public:
    /// Window pixels that can be drawn on when begin() is not told.
    static constexpr int kAnyWindow = 32767;

    explicit DrawbotStore(Strict &strict) : strict_(strict) {}
    DrawbotStore(const DrawbotStore &) = delete;
    DrawbotStore &operator=(const DrawbotStore &) = delete;

    /// Opens a draw event: what is drawn goes to `list`, which is emptied, until end(). With
    /// `null_reference` the plug-in gets no drawing reference, with success. Width and height of
    /// the window are its first clip. An event that is still open is closed first.
    void begin(DrawList &list, bool null_reference, int width = kAnyWindow,
               int height = kAnyWindow);
    /// Closes it: balance and leaks are checked, everything left is freed. Nothing without one.
    void end(const std::string &command);
    bool drawing() const { return list_ != nullptr; }

    /// References of the open event; null without one. The first is null with `null_reference`.
    const void *drawing_reference() const { return null_reference_ ? nullptr : drawing_; }
    const void *supplier() const { return supplier_; }
    const void *surface() const { return surface_; }

    /// A reference to a new object, held once. An event must be open.
    const void *add(DrawbotObject object);
    /// The object behind a reference, or null after a finding.
    template <class T>
    T *find(const void *reference, const std::string &command) {
        Entry *entry = find_live(reference, kind_name(T{}), command);
        if (entry == nullptr) return nullptr;
        T *object = std::get_if<T>(&entry->object);
        if (object == nullptr) report_kind(*entry, kind_name(T{}), command);
        return object;
    }
    /// False after a finding.
    bool retain(const void *reference, const std::string &command);
    bool release(const void *reference, const std::string &command);
    /// Objects of the plug-in's that are alive.
    int held() const;

    /// False, after a finding, outside a draw event.
    bool require_drawing(const std::string &command);
    /// False, after a finding that names `what`, for a number that is NaN or infinite.
    bool require_finite(std::initializer_list<double> numbers, const char *what,
                        const std::string &command);

    /// Adds to the list of the open event; no use without one.
    void record(DrawPrimitive primitive);
    SurfaceStates &states() { return states_; }
    /// Pops a state; false after a finding when none was pushed.
    bool pop_state(const std::string &command);

    OverlayTheme theme;

  private:
    struct Entry {
        DrawbotObject object;
        int holds = 1;
        std::uint64_t event = 0;
    };

    Entry *find_live(const void *reference, const char *wanted, const std::string &command);
    Entry *find_owned(const void *reference, const char *act, const std::string &command);
    void report_kind(const Entry &entry, const char *wanted, const std::string &command);
    void report_missing(const void *reference, const char *wanted, const std::string &command);
    void bury(std::unique_ptr<Entry> entry);

    Strict &strict_;
    DrawList *list_ = nullptr;
    bool null_reference_ = false;
    std::uint64_t event_ = 0;
    const void *drawing_ = nullptr;
    const void *supplier_ = nullptr;
    const void *surface_ = nullptr;
    SurfaceStates states_;
    std::map<const void *, std::unique_ptr<Entry>> live_;  ///< by their own address
    /// Emptied entries: while they stand, their addresses are not dealt out again, so that a stale
    /// reference is told from a new one.
    std::deque<std::unique_ptr<Entry>> dead_;
};

}  // namespace stage
