// "AEGP Iterate Suite", numbers 1 and 2, which have the same slots.
#include "hostapi/suite_names.h"
#include "stage/host/host.h"
#include "stage/host/schedule.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

A_Err get_num_threads(HostCall &call, A_long &threads) {
    threads = reported_threads(call.host().options.schedule);
    return A_Err_NONE;
}

template <class Suite>
constexpr auto generic_iterate_table() {
    CallTable<Suite, kAEGPIterateSuite, kProjectCall> table;
    KS_SERVE(AEGP_GetNumThreads, get_num_threads);
    KS_SERVE(AEGP_IterateGeneric, calls::iterate_generic, calls::describe_iterations);
    return table;
}

}  // namespace

void add_generic_iterate_suite(SuiteRegistry &suites) {
    offer<generic_iterate_table<AEGP_IterateSuite1>>(suites, kAEGPIterateSuiteVersion1);
    offer<generic_iterate_table<AEGP_IterateSuite2>>(suites, kAEGPIterateSuiteVersion2);
}

}  // namespace stage
