// The one error chain for host calls: the first error is kept, later work is skipped, clean-up
// runs.
#pragma once

#include <utility>

#include "hostapi/base.h"
#include "hostapi/effect_types.h"

namespace ks {

/// Keeps the first non-zero PF_Err of a sequence of host calls. [host thread]
class ErrorChain {
  public:
    /// Runs `f` (returning PF_Err) only while no error is kept, and keeps its error.
    template <class F>
    void step(F &&f) {
        if (first_ == 0) first_ = std::forward<F>(f)();
    }

    /// Runs `f` (returning PF_Err) whatever happened before: check-ins, unlocks, disposals. Its
    /// error is kept only when none was.
    template <class F>
    void always(F &&f) {
        const PF_Err error = std::forward<F>(f)();
        if (first_ == 0) first_ = error;
    }

    /// Keeps `error` unless one is kept already.
    void keep(PF_Err error) {
        if (first_ == 0) first_ = error;
    }

    /// True while no error has been kept.
    [[nodiscard]] bool ok() const { return first_ == 0; }

    /// The first error met, 0 if none.
    [[nodiscard]] PF_Err result() const { return first_; }

  private:
    PF_Err first_ = 0;
};

}  // namespace ks
