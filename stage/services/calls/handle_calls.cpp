#include "stage/services/calls/handle_calls.h"

#include "stage/services/calls/world_access.h"

namespace stage::calls {

PF_Handle new_handle(const char *name, A_HandleSize size) noexcept {
    HostCall call(name, Fallible::kNull);
    try {
        if (call.traced()) call.arguments(std::to_string(size));
        if (call.must_fail()) return call.result<void *>(nullptr);
        return call.result(call.host().handles.allocate(size, call.command()));
    } catch (const std::bad_alloc &) {
        return call.result<void *>(nullptr);
    }
}

void *lock_handle(const char *name, PF_Handle handle) noexcept {
    HostCall call(name, Fallible::kNull);
    if (call.must_fail()) return call.result<void>(nullptr);
    return call.result(call.host().handles.lock(handle, call.command()));
}

void unlock_handle(const char *name, PF_Handle handle) noexcept {
    HostCall call(name, Fallible::kNo);
    call.host().handles.unlock(handle, call.command());
}

void dispose_handle(const char *name, PF_Handle handle) noexcept {
    HostCall call(name, Fallible::kNo);
    call.host().handles.dispose(handle, call.command());
}

A_HandleSize handle_size(const char *name, PF_Handle handle) noexcept {
    HostCall call(name, Fallible::kNo);
    Host &host = call.host();
    if (!host.handles.is_live(handle)) {
        host.strict.report("handle.dead", call.command(), "size of a handle that is not live");
        return 0;
    }
    const A_HandleSize size = host.handles.size(handle);
    if (call.traced()) call.note(std::to_string(size));
    return size;
}

PF_Err resize_handle(const char *name, A_HandleSize size, PF_Handle *handle) noexcept {
    return code_call(
        name, [&](HostCall &call) { call.arguments(std::to_string(size)); },
        [&](HostCall &call) -> PF_Err {
            const bool live = handle != nullptr && call.host().handles.is_live(*handle);
            if (call.host().handles.resize(size, handle, call.command())) return PF_Err_NONE;
            return live ? PF_Err_OUT_OF_MEMORY : PF_Err_BAD_CALLBACK_PARAM;
        });
}

}  // namespace stage::calls
