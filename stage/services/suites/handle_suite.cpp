#include "hostapi/suite_names.h"
#include "stage/services/calls/handle_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

constexpr auto handle_table() {
    CallTable<PF_HandleSuite1, kPFHandleSuite> table;
    calls::serve_handles(table);
    return table;
}

}  // namespace

void add_handle_suite(SuiteRegistry &suites) {
    offer<handle_table>(suites, kPFHandleSuiteVersion1);
}

}  // namespace stage
