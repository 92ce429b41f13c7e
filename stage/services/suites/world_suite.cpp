#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/world_access.h"
#include "stage/services/calls/world_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

PF_Err get_pixel_format(const PF_EffectWorld *world, PF_PixelFormat *format) noexcept {
    return code_call(
        "PF World Suite.PF_GetPixelFormat",
        [&](HostCall &call) { call.arguments(describe_world(world)); },
        [&](HostCall &call) -> PF_Err {
            PixelView view;
            if (format == nullptr || !view_of(call, world, "world", view)) {
                return PF_Err_BAD_CALLBACK_PARAM;
            }
            *format = pixel_format(view.depth);
            return PF_Err_NONE;
        });
}

constexpr PF_WorldSuite2 kWorldSuite{
    .PF_NewWorld =
        [](PF_ProgPtr, A_long width, A_long height, PF_Boolean clear, PF_PixelFormat format,
           PF_EffectWorld *world) noexcept {
            return calls::new_world("PF World Suite.PF_NewWorld", width, height, clear != 0, format,
                                    world);
        },
    .PF_DisposeWorld =
        [](PF_ProgPtr, PF_EffectWorld *world) noexcept {
            return calls::dispose_world("PF World Suite.PF_DisposeWorld", world);
        },
    .PF_GetPixelFormat = get_pixel_format,
};

}  // namespace

void add_world_suite(SuiteRegistry &suites) {
    suites.add(kPFWorldSuite, kPFWorldSuiteVersion2, &kWorldSuite);
}

}  // namespace stage
