// "PF Effect Custom UI Suite": the drawing reference of a draw event.
#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "stage/services/calls/drawbot_calls.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// Fails outside a draw event, with a finding. Null, with success, when the host has nothing to
/// draw on.
PF_Err get_drawing_reference(DrawCall call, PF_ContextH context, DRAWBOT_DrawRef &result) {
    result = nullptr;
    DrawbotStore &store = call.store();
    if (!store.require_drawing(call.command()) || context == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    result = reference_as<DRAWBOT_DrawRef>(store.drawing_reference());
    return PF_Err_NONE;
}

/// Number 2 has the manager of asynchronous rendering besides, which is not offered.
template <class Suite>
constexpr auto custom_ui_table() {
    CallTable<Suite, kPFEffectCustomUISuite, CallRules{}.on_ui_thread()> table;
    KS_SERVE(PF_GetDrawingReference, get_drawing_reference);
    return table;
}

}  // namespace

void add_custom_ui_suite(SuiteRegistry &suites) {
    offer<custom_ui_table<PF_EffectCustomUISuite1>>(suites, kPFEffectCustomUISuiteVersion1);
    offer<custom_ui_table<PF_EffectCustomUISuite2>>(suites, kPFEffectCustomUISuiteVersion2);
}

}  // namespace stage
