#include "scopes/orchestration.h"

#include "hostapi/constants.h"

namespace ks {

PF_Err run_scopes(PF_InData *, PF_OutData *, PF_PixelFormat, PF_EffectWorld *, ScopeSet &) {
    return PF_Err_NONE;
}

}  // namespace ks
