// What a user may do next, and how likely it is.
#pragma once

#include <span>

#include "whole/actions/user.h"

namespace actions {

struct Act {
    const char *name;
    int weight;
    void (*run)(User &);
    bool needs_effect;  // one must be chosen
    bool may_refuse;    // the host may say no, by an exception that leaves everything as it was
};

std::span<const Act> panel_acts();
std::span<const Act> viewer_acts();
std::span<const Act> project_acts();

// Draws an act that is possible now and does it. Exceptions other than a refusal fail the test, as
// does a refusal that left something behind.
void act_once(User &user);

}  // namespace actions
