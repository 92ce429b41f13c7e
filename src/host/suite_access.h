// Single suites and the Drawbot set, with failures reported in the host's message area.
#pragma once

#include <cstdint>

#include "hostapi/drawbot.h"
#include "hostapi/in_out_data.h"

namespace ks {

/// The suites that drawing in the host's windows takes.
struct DrawbotSuites {
    DRAWBOT_DrawbotSuite1 *drawbot;
    DRAWBOT_SupplierSuite1 *supplier;
    DRAWBOT_SurfaceSuite1 *surface;
    DRAWBOT_PathSuite1 *path;
};

/// Acquires the suite `name`, number `version`, into `*suite`. Returns 0, or
/// PF_Err_BAD_CALLBACK_PARAM (516) when the basic suite is missing or the host refuses, having
/// shown `error_text` ("Not able to acquire AEFX Suite." when it is null). `*suite` is null then.
/// [host thread]
PF_Err AcquireSuite(PF_InData *in_data, PF_OutData *out_data, const char *name,
                    std::int32_t version, const char *error_text, const void **suite);

/// Releases the suite `name`, number `version`. Returns 0, or 516 when the basic suite is missing,
/// having shown `error_text` ("Not able to release AEFX Suite." when it is null). [host thread]
PF_Err ReleaseSuite(PF_InData *in_data, PF_OutData *out_data, const char *name,
                    std::int32_t version, const char *error_text);

/// Acquires the four Drawbot suites at version 1, in the order of the fields. Returns 0;
/// PF_Err_UNRECOGNIZED_PARAM_TYPE (514) for a null `suites`; 516 at the first refusal, with the
/// suites before it still acquired and the fields behind it untouched. Failures are shown.
/// [host thread]
PF_Err AcquireDrawbotSuites(PF_InData *in_data, PF_OutData *out_data, DrawbotSuites *suites);

/// Releases the four Drawbot suites, the Surface suite at version 2. Always returns 0; a missing
/// basic suite is shown. [host thread]
PF_Err ReleaseDrawbotSuites(PF_InData *in_data, PF_OutData *out_data);

}  // namespace ks
