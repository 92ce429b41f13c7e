#include "stage/drawbot/drawbot_store.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "stage/ledger/strict.h"

namespace stage {
namespace {

constexpr std::size_t kKeptDead = 1024;

/// An object of the same kind with nothing in it.
DrawbotObject emptied(const DrawbotObject &object) {
    return std::visit(
        [](const auto &value) { return DrawbotObject(std::decay_t<decltype(value)>{}); }, object);
}

}  // namespace

void DrawbotStore::begin(DrawList &list, bool null_reference, int width, int height) {
    end("");
    list.primitives.clear();
    list_ = &list;
    null_reference_ = null_reference;
    ++event_;
    states_.restart({0, 0, static_cast<double>(width), static_cast<double>(height)});
    drawing_ = add(DrawingObject{});
    supplier_ = add(SupplierObject{});
    surface_ = add(SurfaceObject{});
}

void DrawbotStore::end(const std::string &command) {
    if (list_ == nullptr) return;
    if (states_.pushed() > 0) {
        strict_.report("drawbot.state_balance", command,
                       std::to_string(states_.pushed()) + " pushed states were not popped");
    }
    for (auto &[reference, entry] : live_) {
        if (!belongs_to_event(entry->object)) {
            strict_.report("leak.drawbot", command,
                           std::string("a ") + kind_name(entry->object) +
                               " was not released, held " + std::to_string(entry->holds) +
                               " times");
        }
        bury(std::move(entry));
    }
    live_.clear();
    list_ = nullptr;
    drawing_ = supplier_ = surface_ = nullptr;
}

const void *DrawbotStore::add(DrawbotObject object) {
    auto entry = std::make_unique<Entry>(Entry{std::move(object), 1, event_});
    const void *reference = entry.get();
    live_.emplace(reference, std::move(entry));
    return reference;
}

void DrawbotStore::bury(std::unique_ptr<Entry> entry) {
    entry->object = emptied(entry->object);
    dead_.push_back(std::move(entry));
    if (dead_.size() > kKeptDead) dead_.pop_front();
}

DrawbotStore::Entry *DrawbotStore::find_live(const void *reference, const char *wanted,
                                             const std::string &command) {
    if (!require_drawing(command)) return nullptr;
    const auto found = live_.find(reference);
    if (found != live_.end()) return found->second.get();
    report_missing(reference, wanted, command);
    return nullptr;
}

void DrawbotStore::report_missing(const void *reference, const char *wanted,
                                  const std::string &command) {
    const std::string what = std::string(wanted) + " reference";
    if (reference == nullptr) {
        strict_.report("drawbot.unknown", command, "the " + what + " is null");
        return;
    }
    const auto dead = std::ranges::find_if(
        dead_, [&](const std::unique_ptr<Entry> &entry) { return entry.get() == reference; });
    if (dead == dead_.end()) {
        strict_.report("drawbot.unknown", command, "this is no " + what + " of the host's");
    } else if ((*dead)->event != event_) {
        strict_.report("drawbot.outside_draw", command,
                       "a " + what + " of an earlier draw event was used");
    } else {
        strict_.report("drawbot.unknown", command, "the " + what + " was released before");
    }
}

void DrawbotStore::report_kind(const Entry &entry, const char *wanted, const std::string &command) {
    strict_.report("drawbot.unknown", command,
                   std::string("a ") + kind_name(entry.object) + " was passed as a " + wanted);
}

DrawbotStore::Entry *DrawbotStore::find_owned(const void *reference, const char *act,
                                              const std::string &command) {
    Entry *entry = find_live(reference, "object", command);
    if (entry == nullptr || !belongs_to_event(entry->object)) return entry;
    strict_.report("drawbot.not_owned", command,
                   std::string("the ") + kind_name(entry->object) + " was " + act +
                       ", but belongs to the draw event");
    return nullptr;
}

bool DrawbotStore::retain(const void *reference, const std::string &command) {
    Entry *entry = find_owned(reference, "retained", command);
    if (entry == nullptr) return false;
    ++entry->holds;
    return true;
}

bool DrawbotStore::release(const void *reference, const std::string &command) {
    Entry *entry = find_owned(reference, "released", command);
    if (entry == nullptr) return false;
    if (--entry->holds == 0) {
        auto node = live_.extract(reference);
        bury(std::move(node.mapped()));
    }
    return true;
}

int DrawbotStore::held() const {
    return static_cast<int>(std::ranges::count_if(
        live_, [](const auto &item) { return !belongs_to_event(item.second->object); }));
}

bool DrawbotStore::require_drawing(const std::string &command) {
    if (drawing()) return true;
    strict_.report("drawbot.outside_draw", command, "Drawbot was used outside a draw event");
    return false;
}

bool DrawbotStore::require_finite(std::initializer_list<double> numbers, const char *what,
                                  const std::string &command) {
    if (std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); })) {
        return true;
    }
    strict_.report("drawbot.not_a_number", command, std::string(what) + ": a number is not finite");
    return false;
}

void DrawbotStore::record(DrawPrimitive primitive) {
    if (list_ != nullptr) list_->primitives.push_back(std::move(primitive));
}

bool DrawbotStore::pop_state(const std::string &command) {
    if (states_.pop()) return true;
    strict_.report("drawbot.state_balance", command, "a state was popped that was not pushed");
    return false;
}

}  // namespace stage
