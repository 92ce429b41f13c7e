// "PF World Suite" for one frame, with messages of its own when it cannot be had.
#pragma once

#include "host/suite_access.h"
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"

namespace ks {

/// Acquires the suite and releases it at the end of the frame; both report a failure in the host's
/// message area. [host thread]
class WorldSuiteAccess {
  public:
    /// Throws PF_Err_BAD_CALLBACK_PARAM (516), with the message shown, when the suite is refused.
    WorldSuiteAccess(PF_InData *in_data, PF_OutData *out_data)
        : in_data_(in_data), out_data_(out_data) {
        const void *suite = nullptr;
        const PF_Err error = AcquireSuite(in_data, out_data, kPFWorldSuite, kPFWorldSuiteVersion2,
                                          "Couldn't load suite PF_WorldSuite2.", &suite);
        if (error != PF_Err_NONE) throw error;
        // Suite tables are the host's and read-only; the prototypes alone are not const-correct.
        suite_ = static_cast<PF_WorldSuite2 *>(const_cast<void *>(suite));
    }
    ~WorldSuiteAccess() {
        ReleaseSuite(in_data_, out_data_, kPFWorldSuite, kPFWorldSuiteVersion2,
                     "Couldn't release suite PF_WorldSuite2.");
    }
    WorldSuiteAccess(const WorldSuiteAccess &) = delete;
    WorldSuiteAccess &operator=(const WorldSuiteAccess &) = delete;

    [[nodiscard]] PF_WorldSuite2 &get() const { return *suite_; }

  private:
    PF_InData *in_data_;
    PF_OutData *out_data_;
    PF_WorldSuite2 *suite_ = nullptr;
};

}  // namespace ks
