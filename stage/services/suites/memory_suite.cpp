#include "hostapi/suite_names.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

A_Err new_mem_handle(HostCall &call, AEGP_PluginID plugin_id, const A_char *what, AEGP_MemSize size,
                     AEGP_MemFlag flags, AEGP_MemHandle &result) {
    note_plugin_id(call, plugin_id);
    if (call.traced()) call.arguments(std::to_string(size));
    result = call.host().mem_handles.allocate(size, (flags & AEGP_MemFlag_CLEAR) != 0,
                                              what == nullptr ? "memory" : what, call.command());
    return result == nullptr ? A_Err_ALLOC : A_Err_NONE;
}

A_Err free_mem_handle(HostCall &call, AEGP_MemHandle handle) {
    return handle == nullptr || call.host().mem_handles.free(handle, call.command())
               ? A_Err_NONE
               : A_Err_PARAMETER;
}

A_Err lock_mem_handle(HostCall &call, AEGP_MemHandle handle, void *&data) {
    data = call.host().mem_handles.lock(handle, call.command());
    return data == nullptr ? A_Err_PARAMETER : A_Err_NONE;
}

A_Err unlock_mem_handle(HostCall &call, AEGP_MemHandle handle) {
    return call.host().mem_handles.unlock(handle, call.command()) ? A_Err_NONE : A_Err_PARAMETER;
}

A_Err get_mem_handle_size(HostCall &call, AEGP_MemHandle handle, AEGP_MemSize &size) {
    const bool known = call.host().mem_handles.size(handle, &size);
    return known ? A_Err_NONE : A_Err_PARAMETER;
}

A_Err resize_mem_handle(HostCall &call, const A_char *, AEGP_MemSize size, AEGP_MemHandle handle) {
    const bool done = call.host().mem_handles.resize(handle, size, call.command());
    return done ? A_Err_NONE : A_Err_ALLOC;
}

A_Err set_mem_reporting_on(HostCall &, A_Boolean) {
    // The ledger is always kept; there is nothing to switch.
    return A_Err_NONE;
}

A_Err get_mem_stats(HostCall &call, AEGP_PluginID plugin_id, A_long &count, A_long &size) {
    note_plugin_id(call, plugin_id);
    count = static_cast<A_long>(call.host().mem_handles.live_count());
    size = static_cast<A_long>(call.host().mem_handles.live_bytes() & INT32_MAX);
    return A_Err_NONE;
}

constexpr auto memory_table() {
    CallTable<AEGP_MemorySuite1, kAEGPMemorySuite, kProjectCall> table;
    KS_SERVE(AEGP_NewMemHandle, new_mem_handle);
    KS_SERVE_BY(table.kRules.that_release(), AEGP_FreeMemHandle, free_mem_handle);
    KS_SERVE(AEGP_LockMemHandle, lock_mem_handle);
    KS_SERVE_BY(table.kRules.that_release(), AEGP_UnlockMemHandle, unlock_mem_handle);
    KS_SERVE(AEGP_GetMemHandleSize, get_mem_handle_size);
    KS_SERVE(AEGP_ResizeMemHandle, resize_mem_handle);
    KS_SERVE(AEGP_SetMemReportingOn, set_mem_reporting_on);
    KS_SERVE(AEGP_GetMemStats, get_mem_stats);
    return table;
}

}  // namespace

void add_memory_suite(SuiteRegistry &suites) {
    offer<memory_table>(suites, kAEGPMemorySuiteVersion1);
}

}  // namespace stage
