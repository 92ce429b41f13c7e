#include "hostapi/suite_names.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/world_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

PF_Err new_world(HostCall &call, PF_ProgPtr, A_long width, A_long height, PF_Boolean clear,
                 PF_PixelFormat format, PF_EffectWorld &world) {
    return calls::new_world(call, {width, height, clear != 0, format}, world);
}
std::string describe_new(PF_ProgPtr, A_long width, A_long height, PF_Boolean clear,
                         PF_PixelFormat format, PF_EffectWorld *) {
    return calls::describe_request({width, height, clear != 0, format});
}

PF_Err get_pixel_format(HostCall &call, const PF_EffectWorld *world, PF_PixelFormat &format) {
    PixelView view;
    if (!view_of(call, world, "world", view)) return PF_Err_BAD_CALLBACK_PARAM;
    format = pixel_format(view.depth);
    return PF_Err_NONE;
}
std::string describe_question(const PF_EffectWorld *world, PF_PixelFormat *) {
    return describe_world(world);
}

constexpr auto world_table() {
    CallTable<PF_WorldSuite2, kPFWorldSuite> table;
    KS_SERVE(PF_NewWorld, new_world, describe_new);
    KS_SERVE_BY(table.kRules.that_release(), PF_DisposeWorld, calls::dispose_world,
                calls::describe_disposal);
    KS_SERVE(PF_GetPixelFormat, get_pixel_format, describe_question);
    return table;
}

}  // namespace

void add_world_suite(SuiteRegistry &suites) {
    offer<world_table>(suites, kPFWorldSuiteVersion2);
}

}  // namespace stage
