// Handle services, shared by the handle suite and the callback table; `name` is the trace name.
#pragma once

#include "hostapi/effect_types.h"

namespace stage::calls {

/// Null when the size cannot be had. [host thread]
PF_Handle new_handle(const char *name, A_HandleSize size) noexcept;
/// The data pointer; null for a handle that is not live. Nothing moves. [host thread]
void *lock_handle(const char *name, PF_Handle handle) noexcept;
void unlock_handle(const char *name, PF_Handle handle) noexcept;
void dispose_handle(const char *name, PF_Handle handle) noexcept;
/// 0 for a handle that is not live.
A_HandleSize handle_size(const char *name, PF_Handle handle) noexcept;
/// Error 4 when the size cannot be had, 516 for a handle that is not live.
PF_Err resize_handle(const char *name, A_HandleSize size, PF_Handle *handle) noexcept;

}  // namespace stage::calls
