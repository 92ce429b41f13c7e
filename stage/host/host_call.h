// What every call of the plug-in into the host goes through: number, trace, thread check, fault.
#pragma once

#include <cstdint>
#include <string>

#include "stage/ledger/faults.h"

namespace stage {

class Host;

/// Whether the real call can fail.
enum class Fallible { kNo, kCode, kNull, kSuite };

/// Whether a call may be made on the render thread.
enum class Threads {
    kAny,     ///< UI and render thread
    kUiOnly,  ///< project changes and streams: on the render thread the call fails with 5
};

/// Create one at the top of every callback and suite function:
///
///     PF_Handle new_handle(A_HandleSize size) {
///         HostCall call("PF Handle Suite.host_new_handle", Fallible::kNull);
///         if (call.traced()) call.arguments(std::to_string(size));
///         if (call.must_fail()) return call.result<PF_Handle>(nullptr);
///         return call.result(call.host().handles.allocate(size, call.command()));
///     }
///
/// A call from a worker thread is a finding ("thread.worker") and fails if it can. Nothing here
/// throws.
class HostCall {
  public:
    explicit HostCall(const char *name, Fallible fallible = Fallible::kCode,
                      Threads threads = Threads::kAny);
    ~HostCall();
    HostCall(const HostCall &) = delete;
    HostCall &operator=(const HostCall &) = delete;

    Host &host() const { return host_; }
    /// Name of the command under way, "" outside any.
    const std::string &command() const;

    /// True when the call must fail: by fault injection, or because it is made on the wrong thread.
    bool must_fail() const { return error_ != 0; }
    /// The code to return then: the injected one, or A_Err_WRONG_THREAD (5).
    PF_Err error() const { return error_; }

    bool traced() const;
    void arguments(std::string text) { arguments_ = std::move(text); }
    /// Notes the result for the trace and hands it back.
    PF_Err result(PF_Err code);
    template <class T>
    T *result(T *pointer) {
        note_pointer(pointer != nullptr);
        return pointer;
    }
    void note(std::string text) { result_ = std::move(text); }

  private:
    void note_pointer(bool present);

    Host &host_;
    const char *name_;
    PF_Err error_ = 0;
    std::string arguments_;
    std::string result_;
};

}  // namespace stage
