// "PF Iterate8 Suite", "PF iterate16 Suite", "PF iterateFloat Suite", numbers 1 and 2 of each,
// which have the same slots.
#include "hostapi/suite_names.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

template <class Suite>
constexpr auto iterate8_table() {
    CallTable<Suite, kPFIterate8Suite> table;
    KS_SERVE(iterate, calls::iterate<PF_Pixel>, calls::describe_iterate<PF_Pixel>);
    KS_SERVE(iterate_generic, calls::iterate_generic, calls::describe_iterations);
    return table;
}

template <class Suite, CallName kName, class Pixel>
constexpr auto deep_table() {
    CallTable<Suite, kName> table;
    KS_SERVE(iterate, calls::iterate<Pixel>, calls::describe_iterate<Pixel>);
    return table;
}
template <class Suite>
constexpr auto iterate16_table() {
    return deep_table<Suite, kPFIterate16Suite, PF_Pixel16>();
}
template <class Suite>
constexpr auto iterate_float_table() {
    return deep_table<Suite, kPFIterateFloatSuite, PF_PixelFloat>();
}

}  // namespace

void add_iterate_suites(SuiteRegistry &suites) {
    offer<iterate8_table<PF_Iterate8Suite1>>(suites, kPFIterate8SuiteVersion1);
    offer<iterate8_table<PF_Iterate8Suite2>>(suites, kPFIterate8SuiteVersion2);
    offer<iterate16_table<PF_iterate16Suite1>>(suites, kPFIterate16SuiteVersion1);
    offer<iterate16_table<PF_iterate16Suite2>>(suites, kPFIterate16SuiteVersion2);
    offer<iterate_float_table<PF_iterateFloatSuite1>>(suites, kPFIterateFloatSuiteVersion1);
    offer<iterate_float_table<PF_iterateFloatSuite2>>(suites, kPFIterateFloatSuiteVersion2);
}

}  // namespace stage
