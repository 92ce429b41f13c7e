#include "entry/global_commands.h"

#include <cstring>
#include <string_view>

#include "entry/identity.h"
#include "host/suite_cache.h"
#include "model/string_table.h"

namespace ks {
namespace {

static_assert(KS_VERSION_PACKED ==
              (KS_VERSION_MAJOR << PF_Vers_VERS_SHIFT | KS_VERSION_MINOR << PF_Vers_SUBVERS_SHIFT |
               KS_VERSION_BUG << PF_Vers_BUGFIX_SHIFT | KS_VERSION_STAGE << PF_Vers_STAGE_SHIFT |
               KS_VERSION_BUILD << PF_Vers_BUILD_SHIFT));
static_assert(KS_VERSION_STAGE == PF_Stage_RELEASE);
static_assert(KS_OUT_FLAGS == (PF_OutFlag_SEND_UPDATE_PARAMS_UI | PF_OutFlag_DEEP_COLOR_AWARE |
                               PF_OutFlag_CUSTOM_UI | PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING));
static_assert(KS_OUT_FLAGS_2 == (PF_OutFlag2_FLOAT_COLOR_AWARE | PF_OutFlag2_SUPPORTS_SMART_RENDER |
                                 PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG));
static_assert(std::string_view(KS_DISPLAY_NAME).size() <= PF_MAX_EFFECT_NAME_LEN);
static_assert(std::string_view(KS_CATEGORY).size() <= PF_MAX_EFFECT_CATEGORY_NAME_LEN);

// The menu shows the effect's name with its generation behind it.
static_assert(std::string_view(KS_DISPLAY_NAME).starts_with(string_at(kStringEffectName)));

// The host's sprintf does not know how much return_msg holds.
static_assert(std::string_view(string_at(kStringEffectName)).size() +
                  std::string_view(" v" KS_VERSION_TEXT "\r\r").size() +
                  std::string_view(string_at(kStringDescription)).size() <=
              PF_MAX_EFFECT_MSG_LEN);

}  // namespace

PF_Err about(PF_InData *in_data, PF_OutData *out_data) {
    const PF_ANSICallbacksBlock &ansi = in_data->utils->ansi;
    char build[16];
    ansi.sprintf(build, ".%d", KS_VERSION_BUILD);
    // The host's About box breaks lines at carriage returns.
    ansi.sprintf(out_data->return_msg, "%s v%d.%d.%d%s\r\r%s", string_at(kStringEffectName),
                 KS_VERSION_MAJOR, KS_VERSION_MINOR, KS_VERSION_BUG, build,
                 string_at(kStringDescription));
    return PF_Err_NONE;
}

PF_Err global_setup(PF_InData *in_data, PF_OutData *out_data) {
    // A write into the host's input record, on purpose: one 32-bit store, major 13 and minor 0.
    // Nothing reads it back.
    const A_u_long spec_version = KS_SPEC_VERSION_MAJOR;
    static_assert(sizeof in_data->version == sizeof spec_version);
    std::memcpy(&in_data->version, &spec_version, sizeof spec_version);

    out_data->my_version = KS_VERSION_PACKED;
    out_data->out_flags = KS_OUT_FLAGS;
    out_data->out_flags2 = KS_OUT_FLAGS_2;
    return PF_Err_NONE;
}

PF_Err global_setdown(PF_InData *in_data) {
    SuiteCache suites(in_data->pica_basicP);
    if (in_data->global_data != nullptr) {
        suites.handle().host_dispose_handle(in_data->global_data);
    }
    return PF_Err_NONE;
}

}  // namespace ks
