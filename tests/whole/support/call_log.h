// Host calls of one command in a short form that expected lists are written in.
#pragma once

#include <string>
#include <vector>

#include "stage/ledger/trace.h"

namespace ks::flow {

using Calls = std::vector<std::string>;

// The calls that `command` ("PF_Cmd_SMART_RENDER") made, in order: the slot's name and, where it
// tells calls apart, its subject:
//
//     checkout_param 19          checkin_param              checkout_layer 10 as 10
//     checkout_layer_pixels 0    checkin_layer_pixels 0     new_world 200x130
//     transfer_rect 200x130 at (15,14)                      pow x767 (a run of equal calls)
//
// Acquiring and releasing suites is left out, and so are the calls on handles: when a suite is
// first taken or a handle locked is nobody's business, as long as all balances at the command's
// end, which the host sees to, and what is used is locked.
Calls calls_of(const std::vector<stage::TraceEntry> &entries, const std::string &command);

// Sizes of the handles that `command` made, in order.
std::vector<std::size_t> handles_made(const std::vector<stage::TraceEntry> &entries,
                                      const std::string &command);

// The fewest handles that `command` had locked when it made a call of that slot ("iterate").
int locked_during(const std::vector<stage::TraceEntry> &entries, const std::string &command,
                  const std::string &slot);

// Position of the first call that was made to fail; entries.size() when there is none. `name` is
// the full trace name and `result` what its trace line says.
std::size_t first_with(const std::vector<stage::TraceEntry> &entries, const std::string &name,
                       const std::string &result);

// True for calls that clean-up consists of: check-ins, unlocks, disposals, releases, and what puts
// a message into the host's record.
bool is_clean_up(const std::string &call);

}  // namespace ks::flow
