#include "stage/host/host_call.h"

#include "hostapi/constants.h"
#include "stage/host/host.h"
#include "stage/ledger/thread_role.h"

namespace stage {
namespace {

FailureForm form_of(Fallible fallible) {
    switch (fallible) {
        case Fallible::kNull:
            return FailureForm::kNullResult;
        case Fallible::kSuite:
            return FailureForm::kSuite;
        default:
            return FailureForm::kCode;
    }
}

}  // namespace

HostCall::HostCall(const char *name, Fallible fallible, Threads threads)
    : host_(Host::current()), name_(name) {
    const ThreadRole role = current_thread_role();
    if (role == ThreadRole::kWorker) {
        host_.strict.report("thread.worker", host_.command(),
                            std::string(name) + " called from a worker thread");
        if (fallible != Fallible::kNo) error_ = A_Err_WRONG_THREAD;
    }
    if (threads == Threads::kUiOnly && role == ThreadRole::kRender) {
        host_.strict.report("thread.render", host_.command(),
                            std::string(name) + " called on the render thread");
        error_ = A_Err_WRONG_THREAD;
    }
    if (fallible != Fallible::kNo && host_.faults.strikes(name, form_of(fallible))) {
        error_ = host_.faults.code();
    }
}

HostCall::~HostCall() {
    if (traced()) host_.trace.record(name_, std::move(arguments_), std::move(result_));
}

const std::string &HostCall::command() const {
    return host_.command();
}

bool HostCall::traced() const {
    return host_.trace.enabled();
}

PF_Err HostCall::result(PF_Err code) {
    if (traced()) result_ = std::to_string(code);
    return code;
}

void HostCall::note_pointer(bool present) {
    if (traced()) result_ = present ? "ok" : "null";
}

}  // namespace stage
