// Handle services, shared by the handle suite and the callback table.
#pragma once

#include <string>

#include "stage/host/call_table.h"

namespace stage::calls {

std::string describe_size(A_HandleSize size);
std::string describe_resizing(A_HandleSize size, PF_Handle *handle);

/// Null when the size cannot be had. [host thread]
PF_Handle new_handle(HostCall &call, A_HandleSize size);
/// The data pointer; null for a handle that is not live. Nothing moves. [host thread]
void *lock_handle(HostCall &call, PF_Handle handle);
void unlock_handle(HostCall &call, PF_Handle handle);
void dispose_handle(HostCall &call, PF_Handle handle);
/// 0 for a handle that is not live.
A_HandleSize handle_size(HostCall &call, PF_Handle handle);
/// Error 4 when the size cannot be had, 516 for a handle that is not live.
PF_Err resize_handle(HostCall &call, A_HandleSize size, PF_Handle &handle);

/// Puts all of them into a table with the slots of PF_HandleSuite1.
template <class Table>
constexpr void serve_handles(Table &table) {
    constexpr CallRules kNeverFails = Table::kRules.that_never_fail();
    KS_SERVE(host_new_handle, new_handle, describe_size);
    KS_SERVE(host_lock_handle, lock_handle);
    KS_SERVE_BY(kNeverFails, host_unlock_handle, unlock_handle);
    KS_SERVE_BY(kNeverFails, host_dispose_handle, dispose_handle);
    KS_SERVE_BY(kNeverFails, host_get_handle_size, handle_size);
    KS_SERVE(host_resize_handle, resize_handle, describe_resizing);
}

}  // namespace stage::calls
