// Fault injection: every fallible host call has a number, and the N-th can be made to fail.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "hostapi/effect_types.h"

namespace stage {

/// Code that an injected failure returns where the call returns a code: a number no host uses, so
/// that a test can tell whether exactly this error came back.
inline constexpr PF_Err kInjectedError = 7301;

/// What a call that fails gives its caller.
enum class FailureForm {
    kCode,        ///< the injected code is returned
    kNullResult,  ///< a null pointer or handle is returned (allocations, locks)
    kSuite,       ///< AcquireSuite refuses: the plug-in makes 516 of it
};

/// Counts fallible calls and picks the one to fail. Counting starts at 1 at the last arm() or
/// reset(). Thread-safe, although no worker should ever get here.
class Faults {
  public:
    /// Makes fallible call number `nth` fail, and every later one too when `persistent`.
    void arm(std::uint64_t nth, bool persistent = false, PF_Err code = kInjectedError);
    /// Makes every call named `name` fail (full trace name, for example "PF World
    /// Suite.PF_NewWorld").
    void arm_name(std::string name, PF_Err code = kInjectedError);
    /// Has memory run out inside call number `nth` of all calls, those that cannot fail included.
    void exhaust_memory(std::uint64_t nth);
    /// No failure any more; the counts start anew.
    void reset();

    /// Called once by each fallible call: counts it, and says whether it must fail.
    bool strikes(const char *name, FailureForm form);

    /// Called once by each call: true in the one that exhaust_memory() names.
    bool memory_runs_out();
    /// Whether that call has come.
    bool memory_ran_out() const { return exhausted_ != 0 && all_.load() >= exhausted_; }

    /// Fallible calls since the last arm() or reset().
    std::uint64_t count() const { return count_.load(); }
    /// Whether a failure has been injected since then.
    bool struck() const { return struck_.load(); }
    /// Name and form of the first call that was made to fail.
    const std::string &struck_name() const { return struck_name_; }
    FailureForm struck_form() const { return struck_form_; }
    PF_Err code() const { return code_; }

  private:
    std::atomic<std::uint64_t> count_{0};
    std::atomic<bool> struck_{false};
    std::atomic<std::uint64_t> all_{0};
    std::uint64_t nth_ = 0;
    std::uint64_t exhausted_ = 0;
    bool persistent_ = false;
    std::string by_name_;
    PF_Err code_ = kInjectedError;
    std::string struck_name_;
    FailureForm struck_form_ = FailureForm::kCode;
};

}  // namespace stage
