#include "host/suite_access.h"

#include <initializer_list>

#include "host/error_chain.h"
#include "host/messages.h"
#include "hostapi/suite_names.h"

namespace ks {
namespace {

constexpr char kAcquireError[] = "Not able to acquire AEFX Suite.";
constexpr char kReleaseError[] = "Not able to release AEFX Suite.";
constexpr char kNullSetError[] = "NULL suite pointer passed to AEFX_AcquireDrawbotSuites";

struct DrawbotSuite {
    const char *name;
    std::int32_t acquired_version;
    std::int32_t released_version;
};

// The Surface suite is released at version 2 although version 1 was acquired. Deliberate and kept:
// the host counts the two apart, so version 1 is never given back.
constexpr DrawbotSuite kDraw{kDRAWBOT_DrawSuite, 1, 1};
constexpr DrawbotSuite kSupplier{kDRAWBOT_SupplierSuite, 1, 1};
constexpr DrawbotSuite kSurface{kDRAWBOT_SurfaceSuite, 1, 2};
constexpr DrawbotSuite kPath{kDRAWBOT_PathSuite, 1, 1};

template <class Suite>
PF_Err acquire_into(PF_InData *in_data, PF_OutData *out_data, const DrawbotSuite &suite,
                    Suite *&slot) {
    const void *table = nullptr;
    const PF_Err error =
        AcquireSuite(in_data, out_data, suite.name, suite.acquired_version, nullptr, &table);
    // Suite tables are the host's and read-only; the prototypes alone are not const-correct.
    if (error == PF_Err_NONE) slot = static_cast<Suite *>(const_cast<void *>(table));
    return error;
}

}  // namespace

PF_Err AcquireSuite(PF_InData *in_data, PF_OutData *out_data, const char *name,
                    std::int32_t version, const char *error_text, const void **suite) {
    *suite = nullptr;
    SPBasicSuite *basic = in_data->pica_basicP;
    if (basic != nullptr && basic->AcquireSuite(name, version, suite) != 0) *suite = nullptr;
    if (*suite != nullptr) return PF_Err_NONE;
    show_error_message(in_data, out_data, error_text != nullptr ? error_text : kAcquireError);
    return PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err ReleaseSuite(PF_InData *in_data, PF_OutData *out_data, const char *name,
                    std::int32_t version, const char *error_text) {
    if (in_data->pica_basicP == nullptr) {
        show_error_message(in_data, out_data, error_text != nullptr ? error_text : kReleaseError);
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    // The host's result is of no use: whatever it says, the suite is no longer ours.
    in_data->pica_basicP->ReleaseSuite(name, version);
    return PF_Err_NONE;
}

PF_Err AcquireDrawbotSuites(PF_InData *in_data, PF_OutData *out_data, DrawbotSuites *suites) {
    if (suites == nullptr) {
        show_error_message(in_data, out_data, kNullSetError);
        return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
    ErrorChain chain;
    chain.step([&] { return acquire_into(in_data, out_data, kDraw, suites->drawbot); });
    chain.step([&] { return acquire_into(in_data, out_data, kSupplier, suites->supplier); });
    chain.step([&] { return acquire_into(in_data, out_data, kSurface, suites->surface); });
    chain.step([&] { return acquire_into(in_data, out_data, kPath, suites->path); });
    return chain.result();
}

PF_Err ReleaseDrawbotSuites(PF_InData *in_data, PF_OutData *out_data) {
    for (const DrawbotSuite &suite : {kDraw, kSupplier, kSurface, kPath}) {
        ReleaseSuite(in_data, out_data, suite.name, suite.released_version, nullptr);
    }
    return PF_Err_NONE;
}

}  // namespace ks
