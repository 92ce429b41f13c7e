// Every fallible call of a command made to fail in turn.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "whole/support/flow_fixture.h"

namespace ks::flow {

// Where and how a call was made to fail.
struct Strike {
    std::string name;  // full trace name
    stage::FailureForm form = stage::FailureForm::kCode;
    int ordinal = 1;       // first, second ... call of that name in the run
    std::string previous;  // the last call before it that is no suite's acquisition
    std::string previous_arguments;
};

struct FaultScenario {
    std::string name;
    // Runs the command in the state that `prepare` makes; its result.
    std::function<PF_Err(Flow &)> run;
    // What the run has changed, as bytes to compare.
    std::function<std::vector<std::uint8_t>(Flow &)> outcome;
    // Result of a call that yields null instead of a handle or its contents, and of the few whose
    // code is ignored. Without a value the injected code, or 516 for suites, must come back.
    std::function<std::optional<PF_Err>(const Strike &)> special_result;
    // Brings the state back before every run; may be empty.
    std::function<void(Flow &)> prepare;
    // True for calls that may follow a failure although they are no clean-up.
    std::function<bool(const std::string &call)> may_follow;
};

// Fails fallible call 1, 2, 3 ... of the scenario until a run strikes none, once each alone and
// once with all later calls failing too. After each: the first error is the result (the injected
// code, 516 for suites); only clean-up follows the failure; nothing leaks or
// escapes; and the same command works again with the outcome of a run without a failure. Returns
// the number of fallible calls.
int run_fault_loop(Flow &flow, const FaultScenario &scenario);

}  // namespace ks::flow
