#include "stage/services/utility_callbacks.h"

#include "stage/host/complete_table.h"
#include "stage/services/calls/ansi_calls.h"
#include "stage/services/calls/handle_calls.h"
#include "stage/services/calls/iterate_calls.h"
#include "stage/services/calls/pixel_calls.h"
#include "stage/services/calls/world_calls.h"

namespace stage {
namespace {

calls::WorldRequest request_of(A_long width, A_long height, PF_NewWorldFlags flags) {
    const bool deep = (flags & PF_NewWorldFlag_DEEP_PIXELS) != 0;
    return {width, height, (flags & PF_NewWorldFlag_CLEAR_PIXELS) != 0,
            deep ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32};
}

PF_Err new_world(HostCall &call, PF_ProgPtr, A_long width, A_long height, PF_NewWorldFlags flags,
                 PF_EffectWorld &world) {
    return calls::new_world(call, request_of(width, height, flags), world);
}
std::string describe_new(PF_ProgPtr, A_long width, A_long height, PF_NewWorldFlags flags,
                         PF_EffectWorld *) {
    return calls::describe_request(request_of(width, height, flags));
}

constexpr auto make_table() {
    CallTable<PF_UtilCallbacks, "utils"> table;
    KS_SERVE(copy, calls::copy, calls::describe_copy);
    KS_SERVE(fill, calls::fill<PF_Pixel>, calls::describe_fill<PF_Pixel>);
    KS_SERVE(fill16, calls::fill<PF_Pixel16>, calls::describe_fill<PF_Pixel16>);
    KS_SERVE(iterate, calls::iterate<PF_Pixel>, calls::describe_iterate<PF_Pixel>);
    KS_SERVE(iterate16, calls::iterate<PF_Pixel16>, calls::describe_iterate<PF_Pixel16>);
    KS_SERVE(iterate_generic, calls::iterate_generic, calls::describe_iterations);
    KS_SERVE(new_world, new_world, describe_new);
    KS_SERVE_BY(table.kRules.that_release(), dispose_world, calls::dispose_world,
                calls::describe_disposal);
    KS_SERVE(transfer_rect, calls::transfer_rect, calls::describe_transfer);
    KS_SERVE(transform_world, calls::transform_world, calls::describe_transform);
    calls::serve_handles(table);
    table.embed<&PF_UtilCallbacks::ansi>(calls::ansi_table<PF_ANSICallbacksBlock, "utils.ansi">());
    return with_all_callbacks(table);
}

// Not constant: plug-ins get it through a pointer to non-constant.
constinit PF_UtilCallbacks g_table = make_table().get();

}  // namespace

PF_UtilCallbacks *utility_callbacks() {
    return &g_table;
}

}  // namespace stage
