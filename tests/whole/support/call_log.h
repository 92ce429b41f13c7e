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
// Acquiring and releasing suites is left out: when a suite is first taken is nobody's business.
Calls calls_of(const std::vector<stage::TraceEntry> &entries, const std::string &command);

// Position of the first call that was made to fail; entries.size() when there is none. `name` is
// the full trace name and `result` what its trace line says.
std::size_t first_with(const std::vector<stage::TraceEntry> &entries, const std::string &name,
                       const std::string &result);

// True for calls that clean-up consists of: check-ins, unlocks, disposals, releases, and what puts
// a message into the host's record.
bool is_clean_up(const std::string &call);

}  // namespace ks::flow
