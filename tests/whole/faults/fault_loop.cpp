#include "whole/faults/fault_loop.h"

#include <algorithm>

#include "whole/support/call_log.h"

namespace ks::flow {
namespace {

constexpr int kMostCalls = 2000;
constexpr PF_Err kSuiteRefused = 516;

PF_Err run_traced(Flow &flow, const FaultScenario &scenario, std::uint64_t nth, bool persistent) {
    if (scenario.prepare) scenario.prepare(flow);
    flow.host().trace.clear();
    flow.host().trace.enable(true);
    flow.host().faults.arm(nth, persistent);
    const PF_Err result = scenario.run(flow);
    flow.host().trace.enable(false);
    return result;
}

std::string result_text(stage::FailureForm form, PF_Err code) {
    if (form == stage::FailureForm::kNullResult) return "null";
    if (form == stage::FailureForm::kSuite) return std::to_string(0x53212121);  // "S!!!"
    return std::to_string(code);
}

// Position of the struck call in the trace.
std::size_t struck_at(Flow &flow) {
    const stage::Faults &faults = flow.host().faults;
    return first_with(flow.host().trace.entries(), faults.struck_name(),
                      result_text(faults.struck_form(), faults.code()));
}

Strike strike_of(Flow &flow, std::size_t at) {
    const auto &entries = flow.host().trace.entries();
    Strike strike{flow.host().faults.struck_name(), flow.host().faults.struck_form(), 0, "", ""};
    for (std::size_t i = 0; i <= at && i < entries.size(); ++i) {
        strike.ordinal += entries[i].call == strike.name;
        const bool suite = entries[i].call.starts_with("SPBasicSuite.");
        if (i >= at || suite) continue;
        strike.previous = entries[i].call;
        strike.previous_arguments = entries[i].arguments;
    }
    return strike;
}

PF_Err expected_result(const FaultScenario &scenario, const Strike &strike) {
    if (scenario.special_result) {
        if (const auto special = scenario.special_result(strike)) return *special;
    }
    return strike.form == stage::FailureForm::kSuite ? kSuiteRefused : stage::kInjectedError;
}

// Within the struck command; commands behind it are the host's own.
void expect_only_clean_up(Flow &flow, const FaultScenario &scenario, std::size_t at) {
    const auto &entries = flow.host().trace.entries();
    for (std::size_t i = at + 1; i < entries.size(); ++i) {
        const stage::TraceEntry &entry = entries[i];
        if (entry.call.starts_with("< ")) return;
        if (scenario.may_follow && scenario.may_follow(entry.call)) continue;
        EXPECT_TRUE(is_clean_up(entry.call)) << stage::Trace::to_line(entry);
    }
}

void expect_no_escape(Flow &flow) {
    for (const stage::Finding &finding : flow.host().strict.all()) {
        EXPECT_NE(finding.check, "exception.escaped");
    }
}

// False when no call was struck any more.
bool fail_call(Flow &flow, const FaultScenario &scenario, std::uint64_t nth, bool persistent,
               const std::vector<std::uint8_t> &healthy) {
    const PF_Err result = run_traced(flow, scenario, nth, persistent);
    const bool struck = flow.host().faults.struck();
    if (struck) {
        const std::size_t at = struck_at(flow);
        EXPECT_LT(at, flow.host().trace.entries().size());
        const Strike strike = strike_of(flow, at);
        SCOPED_TRACE(scenario.name + ", call " + std::to_string(nth) + ", " + strike.name + " #" +
                     std::to_string(strike.ordinal) + (persistent ? ", and all later" : ""));
        EXPECT_EQ(result, expected_result(scenario, strike));
        expect_only_clean_up(flow, scenario, at);
        flow.host().faults.reset();
        expect_no_escape(flow);
        flow.expect_clean("after the failure");
        EXPECT_EQ(run_traced(flow, scenario, 0, false), 0) << "the next command must work";
        EXPECT_EQ(scenario.outcome(flow), healthy) << "the next command must work";
    }
    flow.host().faults.reset();
    flow.expect_clean(scenario.name + ", call " + std::to_string(nth));
    return struck;
}

}  // namespace

int run_fault_loop(Flow &flow, const FaultScenario &scenario) {
    EXPECT_EQ(run_traced(flow, scenario, 0, false), 0) << scenario.name;
    const std::vector<std::uint8_t> healthy = scenario.outcome(flow);
    flow.expect_clean(scenario.name);
    int calls = 0;
    for (const bool persistent : {false, true}) {
        calls = 0;
        while (
            calls < kMostCalls && !testing::Test::HasFailure() &&
            fail_call(flow, scenario, static_cast<std::uint64_t>(calls) + 1, persistent, healthy)) {
            ++calls;
        }
    }
    EXPECT_LT(calls, kMostCalls);
    return calls;
}

}  // namespace ks::flow
