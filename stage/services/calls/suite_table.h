// Slots that nobody needs: calling one is a finding, not a crash.
#pragma once

#include <string>
#include <type_traits>

#include "hostapi/constants.h"
#include "hostapi/host.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"

namespace stage {

/// Turns into a function for any slot. `Slot::name()` is "<struct>.<function>" and shows up in the
/// trace. The function reports "suite.unimplemented" and returns PF_Err_BAD_CALLBACK_PARAM (516),
/// or a null value where the slot returns no code.
template <class Slot>
struct Unimplemented {
    template <class R, class... A>
    using Function = R (*)(A...);

    template <class R, class... A>
    operator Function<R, A...>() const {
        return [](A...) -> R {
            HostCall call(Slot::name(), Fallible::kNo);
            call.host().strict.report("suite.unimplemented", call.command(),
                                      std::string(Slot::name()) + " is not offered");
            if constexpr (std::is_same_v<R, A_Err>) return call.result(PF_Err_BAD_CALLBACK_PARAM);
            if constexpr (!std::is_void_v<R>) return R{};
        };
    }
};

/// Fills every slot of `suite` that is still null.
template <class Suite>
Suite with_all_slots(Suite suite) {
#define KS_SUITE(type, slots)
#define KS_SLOT(type, function, slot)                                          \
    if constexpr (std::is_same_v<Suite, type>) {                               \
        struct Slot {                                                          \
            static const char *name() { return #type "." #function; }          \
        };                                                                     \
        if (suite.function == nullptr) suite.function = Unimplemented<Slot>{}; \
    }
#include "hostapi/tables/slots.inc"
#undef KS_SLOT
#undef KS_SUITE
    return suite;
}

}  // namespace stage
