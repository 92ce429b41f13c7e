// The frame around every call of the plug-in into the host: number, trace, thread check, fault,
// and no exception across the C interface.
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "hostapi/constants.h"
#include "hostapi/effect_types.h"
#include "stage/ledger/faults.h"

namespace stage {

class Host;

/// Code a real host gives for a suite or version that it does not know: "S!!!".
inline constexpr PF_Err kSuiteNotFound = 0x53212121;

/// What becomes of a call that must fail: by an injected fault, or because of its thread.
enum class Fails {
    kNever,   ///< the real call cannot fail: it is no fault point, and is carried out on any thread
    kBefore,  ///< nothing is done
    kAfter,   ///< the body runs and sees must_fail(), then the failure is the result. For releases:
              ///< a plug-in has no second try and must not be blamed for the leak.
};

/// Whether a call may be made on the render thread.
enum class Threads {
    kAny,     ///< UI and render thread
    kUiOnly,  ///< project changes and streams: on the render thread the call fails with 5
};

/// What holds for one function of the host.
struct CallRules {
    Fails fails = Fails::kBefore;
    Threads threads = Threads::kAny;
    PF_Err null_error = PF_Err_BAD_CALLBACK_PARAM;  ///< for null where the body takes a reference
    bool finds_suites = false;                      ///< fails as a suite that is not there does

    constexpr CallRules that_never_fail() const { return with(Fails::kNever); }
    constexpr CallRules that_release() const { return with(Fails::kAfter); }
    constexpr CallRules on_ui_thread() const {
        CallRules rules = *this;
        rules.threads = Threads::kUiOnly;
        return rules;
    }

  private:
    constexpr CallRules with(Fails how) const {
        CallRules rules = *this;
        rules.fails = how;
        return rules;
    }
};

/// One call under way, as its body sees it.
class HostCall {
  public:
    HostCall(const HostCall &) = delete;
    HostCall &operator=(const HostCall &) = delete;

    Host &host() const { return host_; }
    /// As in the trace: "<suite or table>.<function>".
    const char *name() const { return name_; }
    /// Name of the command under way, "" outside any.
    const std::string &command() const;

    /// True when the call must fail. Only bodies that run even then (Fails::kAfter) need to look.
    bool must_fail() const { return error_ != 0; }
    /// The code that it fails with: the injected one, or A_Err_WRONG_THREAD (5).
    PF_Err error() const { return error_; }

    bool traced() const;
    /// For the trace: what was passed, and a result that says more than the value.
    void arguments(std::string text) { arguments_ = std::move(text); }
    void note(std::string text) { result_ = std::move(text); }

    /// A finding of strict mode in the command under way.
    void report(const char *check, std::string text);

  private:
    template <class R, class Describe, class Body>
    friend R in_frame(const char *name, const CallRules &rules, Describe describe,
                      Body body) noexcept;

    HostCall(const char *name, const CallRules &rules) noexcept;
    ~HostCall();

    /// Thread and fault. May throw, as a body may.
    void begin(FailureForm form);
    /// Makes the exception under way the call's error.
    void caught() noexcept;
    void fail(PF_Err code);

    template <class R>
    R succeed(R result) {
        if (!traced() || !result_.empty()) return result;
        if constexpr (std::is_same_v<R, PF_Err>) result_ = std::to_string(result);
        if constexpr (std::is_pointer_v<R>) result_ = result != nullptr ? "ok" : "null";
        return result;
    }
    /// The error as a code, a null pointer, or a value made of nothing.
    template <class R>
    R failure() {
        result_.clear();
        if constexpr (std::is_same_v<R, PF_Err>) return succeed<R>(error_);
        if constexpr (std::is_pointer_v<R>) return succeed<R>(nullptr);
        if constexpr (!std::is_void_v<R>) return R{};
    }

    Host &host_;
    const char *name_;
    CallRules rules_;
    PF_Err error_ = 0;
    std::string arguments_;
    std::string result_;
};

template <class R>
constexpr FailureForm failure_form(const CallRules &rules) {
    if (rules.finds_suites) return FailureForm::kSuite;
    return std::is_pointer_v<R> ? FailureForm::kNullResult : FailureForm::kCode;
}

/// Carries out one call: its thread is checked (on a worker every call is a finding,
/// "thread.worker"), the fault strikes, `describe(call)` notes the arguments when traced,
/// `body(call)` does the work, and the call is traced. No exception leaves: what the project
/// refuses is A_Err_PARAMETER, short memory PF_Err_OUT_OF_MEMORY and anything else
/// PF_Err_INTERNAL_STRUCT_DAMAGED, both with the finding "host.exception".
template <class R, class Describe, class Body>
R in_frame(const char *name, const CallRules &rules, Describe describe, Body body) noexcept {
    HostCall call(name, rules);
    try {
        call.begin(failure_form<R>(rules));
        if (call.traced()) describe(call);
        if (!call.must_fail() || rules.fails == Fails::kAfter) {
            if constexpr (std::is_void_v<R>) {
                body(call);
            } else {
                R result = body(call);
                if (!call.must_fail()) return call.succeed<R>(std::move(result));
            }
        }
    } catch (...) {
        call.caught();
    }
    return call.failure<R>();
}

}  // namespace stage
