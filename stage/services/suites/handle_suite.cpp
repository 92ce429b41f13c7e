#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/host/suite_registry.h"
#include "stage/services/calls/handle_calls.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

constexpr PF_HandleSuite1 kHandleSuite{
    .host_new_handle =
        [](A_HandleSize size) noexcept {
            return calls::new_handle("PF Handle Suite.host_new_handle", size);
        },
    .host_lock_handle =
        [](PF_Handle handle) noexcept {
            return calls::lock_handle("PF Handle Suite.host_lock_handle", handle);
        },
    .host_unlock_handle =
        [](PF_Handle handle) noexcept {
            calls::unlock_handle("PF Handle Suite.host_unlock_handle", handle);
        },
    .host_dispose_handle =
        [](PF_Handle handle) noexcept {
            calls::dispose_handle("PF Handle Suite.host_dispose_handle", handle);
        },
    .host_get_handle_size =
        [](PF_Handle handle) noexcept {
            return calls::handle_size("PF Handle Suite.host_get_handle_size", handle);
        },
    .host_resize_handle =
        [](A_HandleSize size, PF_Handle *handle) noexcept {
            return calls::resize_handle("PF Handle Suite.host_resize_handle", size, handle);
        },
};

}  // namespace

void add_handle_suite(SuiteRegistry &suites) {
    suites.add(kPFHandleSuite, kPFHandleSuiteVersion1, &kHandleSuite);
}

}  // namespace stage
