// The stacking order of one instance over a sequence of acts, and how long the rules of the panel
// and of rendering promise that it names the scopes shown.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "oracle/order_oracle.h"

namespace actions {

// Which of the scopes 1 to 5 are shown; element 0 is unused.
using Boxes = std::array<bool, 6>;
inline constexpr Boxes kDefaultBoxes{false, true, true, true, false, false};

// Front first. The list follows the boxes only where the rules promise it:
//
// - a new instance, and "Reset" of the whole panel, give list and boxes that agree;
// - switching a box keeps the agreement, and so does switching one on that is on already;
// - so does moving a scope that is shown to the front.
//
// The promise ends
// - when a scope is switched off that is off already (the list loses another's place);
// - when a scope that is not shown is moved to the front (it takes another's place);
// - when undo or redo changes a box: the list is no part of a step of undo;
// - when "RESET" alone gives the list its defaults while the boxes have others.
//
// It returns with the next reset that finds the boxes at their defaults, and with the next frame
// that finds another number of shown scopes than the list has entries.
class OrderModel {
  public:
    // "RESET", which sets the list alone.
    void reset(const Boxes &boxes);
    // Box of scope `kind` switched; `was` is what it was before.
    void show(int kind, bool on, bool was);
    // "Scope Position" of `kind` edited.
    void to_front(int kind, const Boxes &boxes);
    // Undo or redo.
    void history_moved(const Boxes &before, const Boxes &after);
    // A frame of 75 rows or more was rendered against the record itself.
    void rendered(const Boxes &boxes);

    // Entries 0 to 4 and the count, as the record holds them, stale entries included.
    const ks::oracle::OrderBytes &bytes() const { return bytes_; }
    // The valid ones among them.
    std::vector<int> entries() const { return {bytes_.begin(), bytes_.begin() + bytes_[5]}; }
    bool promised() const { return promised_; }

  private:
    ks::oracle::OrderBytes bytes_{1, 2, 3, 0, 0, 3};
    bool promised_ = true;
};

// The scopes on, in the order a frame lists them.
std::vector<int> listed_by_a_frame(const Boxes &boxes);
// Whether `entries` names each scope that is on once, and nothing else.
bool agree(std::vector<int> entries, const Boxes &boxes);

std::string to_text(const ks::oracle::OrderBytes &bytes);
std::string to_text(const Boxes &boxes);

}  // namespace actions
