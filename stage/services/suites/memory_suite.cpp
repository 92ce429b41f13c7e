#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

#define KS_NAME(function) "AEGP Memory Suite." #function

namespace stage {
namespace {

A_Err new_mem_handle(AEGP_PluginID plugin_id, const A_char *what, AEGP_MemSize size,
                     AEGP_MemFlag flags, AEGP_MemHandle *result) {
    HostCall call(KS_NAME(AEGP_NewMemHandle));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        if (result == nullptr) return A_Err_PARAMETER;
        if (call.traced()) call.arguments(std::to_string(size));
        *result =
            call.host().mem_handles.allocate(size, (flags & AEGP_MemFlag_CLEAR) != 0,
                                             what == nullptr ? "memory" : what, call.command());
        return *result == nullptr ? A_Err_ALLOC : A_Err_NONE;
    });
}

A_Err free_mem_handle(AEGP_MemHandle handle) {
    HostCall call(KS_NAME(AEGP_FreeMemHandle));
    return run_release(call, [&] {
        return handle == nullptr || call.host().mem_handles.free(handle, call.command());
    });
}

A_Err lock_mem_handle(AEGP_MemHandle handle, void **data) {
    HostCall call(KS_NAME(AEGP_LockMemHandle));
    return run_call(call, [&]() -> A_Err {
        if (data == nullptr) return A_Err_PARAMETER;
        *data = call.host().mem_handles.lock(handle, call.command());
        return *data == nullptr ? A_Err_PARAMETER : A_Err_NONE;
    });
}

A_Err unlock_mem_handle(AEGP_MemHandle handle) {
    HostCall call(KS_NAME(AEGP_UnlockMemHandle));
    return run_release(call,
                       [&] { return call.host().mem_handles.unlock(handle, call.command()); });
}

A_Err get_mem_handle_size(AEGP_MemHandle handle, AEGP_MemSize *size) {
    HostCall call(KS_NAME(AEGP_GetMemHandleSize));
    return run_call(call, [&]() -> A_Err {
        const bool known = size != nullptr && call.host().mem_handles.size(handle, size);
        return known ? A_Err_NONE : A_Err_PARAMETER;
    });
}

A_Err resize_mem_handle(const A_char *, AEGP_MemSize size, AEGP_MemHandle handle) {
    HostCall call(KS_NAME(AEGP_ResizeMemHandle));
    return run_call(call, [&]() -> A_Err {
        const bool done = call.host().mem_handles.resize(handle, size, call.command());
        return done ? A_Err_NONE : A_Err_ALLOC;
    });
}

A_Err set_mem_reporting_on(A_Boolean) {
    // The ledger is always kept; there is nothing to switch.
    HostCall call(KS_NAME(AEGP_SetMemReportingOn));
    return run_call(call, []() -> A_Err { return A_Err_NONE; });
}

A_Err get_mem_stats(AEGP_PluginID plugin_id, A_long *count, A_long *size) {
    HostCall call(KS_NAME(AEGP_GetMemStats));
    return run_call(call, [&]() -> A_Err {
        note_plugin_id(call, plugin_id);
        if (count == nullptr || size == nullptr) return A_Err_PARAMETER;
        *count = static_cast<A_long>(call.host().mem_handles.live_count());
        *size = static_cast<A_long>(call.host().mem_handles.live_bytes() & INT32_MAX);
        return A_Err_NONE;
    });
}

}  // namespace

void add_memory_suite(SuiteRegistry &suites) {
    static const AEGP_MemorySuite1 table{
        .AEGP_NewMemHandle = new_mem_handle,
        .AEGP_FreeMemHandle = free_mem_handle,
        .AEGP_LockMemHandle = lock_mem_handle,
        .AEGP_UnlockMemHandle = unlock_mem_handle,
        .AEGP_GetMemHandleSize = get_mem_handle_size,
        .AEGP_ResizeMemHandle = resize_mem_handle,
        .AEGP_SetMemReportingOn = set_mem_reporting_on,
        .AEGP_GetMemStats = get_mem_stats,
    };
    suites.add(kAEGPMemorySuite, kAEGPMemorySuiteVersion1, &table);
}

}  // namespace stage
