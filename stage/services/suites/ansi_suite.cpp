#include "hostapi/suite_names.h"
#include "stage/services/calls/ansi_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
void add_ansi_suite(SuiteRegistry &suites) {
    offer<calls::ansi_table<PF_ANSICallbacksSuite1, kPFANSISuite>>(suites, kPFANSISuiteVersion1);
}

}  // namespace stage
