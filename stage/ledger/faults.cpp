#include "stage/ledger/faults.h"

#include <utility>

namespace stage {

void Faults::reset() {
    count_ = 0;
    struck_ = false;
    all_ = 0;
    nth_ = 0;
    exhausted_ = 0;
    persistent_ = false;
    by_name_.clear();
    code_ = kInjectedError;
    struck_name_.clear();
}

void Faults::arm(std::uint64_t nth, bool persistent, PF_Err code) {
    reset();
    nth_ = nth;
    persistent_ = persistent;
    code_ = code;
}

void Faults::arm_name(std::string name, PF_Err code) {
    reset();
    by_name_ = std::move(name);
    code_ = code;
}

void Faults::exhaust_memory(std::uint64_t nth) {
    reset();
    exhausted_ = nth;
}

bool Faults::memory_runs_out() {
    return ++all_ == exhausted_;
}

bool Faults::strikes(const char *name, FailureForm form) {
    const std::uint64_t number = ++count_;
    const bool by_number = nth_ != 0 && (number == nth_ || (persistent_ && number > nth_));
    const bool by_name = !by_name_.empty() && by_name_ == name;
    if (!by_number && !by_name) return false;
    if (!struck_.exchange(true)) {
        struck_name_ = name;
        struck_form_ = form;
    }
    return true;
}

}  // namespace stage
