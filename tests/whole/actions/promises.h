// What must hold after every act.
#pragma once

#include "whole/actions/user.h"

namespace actions {

// Fails the test for each promise that is broken:
// - no rule of the host was broken, nothing leaked, no exception left the plug-in;
// - no message was shown but the one about a layer's size, which the act looks at itself;
// - every instance has its record, whose stacking order is what the rules make of the acts so far,
//   and which names the shown scopes where that is promised;
// - values lie in their ranges;
// - the groups of scopes that are off are hidden, those of others are not, "RESET" always is;
// - in the panel of the chosen effect exactly the controls without use are greyed;
// - the cursor is one that the plug-in chooses.
void expect_promises(User &user);

}  // namespace actions
