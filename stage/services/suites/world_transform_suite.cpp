#include "hostapi/suite_names.h"
#include "stage/services/calls/pixel_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

constexpr auto world_transform_table() {
    CallTable<PF_WorldTransformSuite1, kPFWorldTransformSuite> table;
    KS_SERVE(copy, calls::copy, calls::describe_copy);
    KS_SERVE(copy_hq, calls::copy_hq, calls::describe_copy);
    KS_SERVE(transfer_rect, calls::transfer_rect, calls::describe_transfer);
    KS_SERVE(transform_world, calls::transform_world, calls::describe_transform);
    return table;
}

}  // namespace

void add_world_transform_suite(SuiteRegistry &suites) {
    offer<world_transform_table>(suites, kPFWorldTransformSuiteVersion1);
}

}  // namespace stage
