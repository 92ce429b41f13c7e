#include "stage/host/host_call.h"

#include <exception>
#include <new>

#include "stage/host/host.h"
#include "stage/ledger/thread_role.h"

namespace stage {
HostCall::HostCall(const char *name, const CallRules &rules) noexcept
    : host_(Host::current()), name_(name), rules_(rules) {}

HostCall::~HostCall() {
    if (!traced()) return;
    try {
        host_.trace.record(name_, std::move(arguments_), std::move(result_));
    } catch (...) {
        // The call is done; only its line is lost.
    }
}

void HostCall::begin(FailureForm form) {
    const ThreadRole role = current_thread_role();
    if (role == ThreadRole::kWorker) {
        if (rules_.fails != Fails::kNever) fail(A_Err_WRONG_THREAD);
        report("thread.worker", std::string(name_) + " called from a worker thread");
    }
    if (rules_.threads == Threads::kUiOnly && role == ThreadRole::kRender) {
        fail(A_Err_WRONG_THREAD);
        report("thread.render", std::string(name_) + " called on the render thread");
    }
    if (rules_.fails != Fails::kNever && host_.faults.strikes(name_, form)) {
        fail(host_.faults.code());
    }
    if (host_.faults.memory_runs_out()) throw std::bad_alloc();
}

void HostCall::fail(PF_Err code) {
    error_ = rules_.finds_suites ? kSuiteNotFound : code;
}

void HostCall::caught() noexcept {
    std::string what;
    try {
        try {
            throw;
        } catch (const ProjectError &) {
            return fail(A_Err_PARAMETER);
        } catch (const std::bad_alloc &) {
            fail(PF_Err_OUT_OF_MEMORY);
            what = "memory is short";
        } catch (const std::exception &reason) {
            fail(PF_Err_INTERNAL_STRUCT_DAMAGED);
            what = reason.what();
        } catch (...) {
            fail(PF_Err_INTERNAL_STRUCT_DAMAGED);
            what = "an exception of no known type";
        }
        report("host.exception", std::string(name_) + ": " + what);
    } catch (...) {
        // No memory for the finding either: the error tells it all.
    }
}

const std::string &HostCall::command() const {
    return host_.command();
}

bool HostCall::traced() const {
    return host_.trace.enabled();
}

void HostCall::report(const char *check, std::string text) {
    host_.strict.report(check, command(), std::move(text));
}

}  // namespace stage
