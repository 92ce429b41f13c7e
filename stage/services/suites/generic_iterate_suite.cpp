// "AEGP Iterate Suite", numbers 1 and 2, which have the same slots.
#include "hostapi/aegp_service_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/schedule.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

A_Err get_num_threads(A_long *threads) noexcept {
    return code_call(
        "AEGP Iterate Suite.AEGP_GetNumThreads", [](HostCall &) {},
        [&](HostCall &call) -> A_Err {
            if (threads == nullptr) return A_Err_PARAMETER;
            *threads = reported_threads(call.host().options.schedule);
            return A_Err_NONE;
        });
}

A_Err iterate_generic(A_long iterations, void *refcon, calls::GenericFunction function) noexcept {
    return calls::iterate_generic("AEGP Iterate Suite.AEGP_IterateGeneric", iterations, refcon,
                                  function);
}

constexpr AEGP_IterateSuite1 kSuite1{get_num_threads, iterate_generic};
constexpr AEGP_IterateSuite2 kSuite2{get_num_threads, iterate_generic};

}  // namespace

void add_generic_iterate_suite(SuiteRegistry &suites) {
    suites.add(kAEGPIterateSuite, kAEGPIterateSuiteVersion1, &kSuite1);
    suites.add(kAEGPIterateSuite, kAEGPIterateSuiteVersion2, &kSuite2);
}

}  // namespace stage
