#include "stage/services/calls/handle_calls.h"

#include "stage/host/host.h"

namespace stage::calls {

std::string describe_size(A_HandleSize size) {
    return std::to_string(size);
}

std::string describe_resizing(A_HandleSize size, PF_Handle *) {
    return std::to_string(size);
}

PF_Handle new_handle(HostCall &call, A_HandleSize size) {
    return call.host().handles.allocate(size, call.command());
}

void *lock_handle(HostCall &call, PF_Handle handle) {
    return call.host().handles.lock(handle, call.command());
}

void unlock_handle(HostCall &call, PF_Handle handle) {
    call.host().handles.unlock(handle, call.command());
}

void dispose_handle(HostCall &call, PF_Handle handle) {
    call.host().handles.dispose(handle, call.command());
}

A_HandleSize handle_size(HostCall &call, PF_Handle handle) {
    const HandleStore &handles = call.host().handles;
    if (!handles.is_live(handle)) {
        call.report("handle.dead", "size of a handle that is not live");
        return 0;
    }
    const A_HandleSize size = handles.size(handle);
    if (call.traced()) call.note(std::to_string(size));
    return size;
}

PF_Err resize_handle(HostCall &call, A_HandleSize size, PF_Handle &handle) {
    const bool live = call.host().handles.is_live(handle);
    if (call.host().handles.resize(size, &handle, call.command())) return PF_Err_NONE;
    return live ? PF_Err_OUT_OF_MEMORY : PF_Err_BAD_CALLBACK_PARAM;
}

}  // namespace stage::calls
