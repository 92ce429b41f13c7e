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
PF_Err get_drawing_reference(PF_ContextH context, DRAWBOT_DrawRef *result) noexcept {
    return draw_call(
        "PF Effect Custom UI Suite.PF_GetDrawingReference", [&](DrawCall &call) -> A_Err {
            if (result == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
            *result = nullptr;
            DrawbotStore &store = call.store();
            if (!store.require_drawing(call.host_call().command()) || context == nullptr) {
                return PF_Err_BAD_CALLBACK_PARAM;
            }
            *result = reference_as<DRAWBOT_DrawRef>(store.drawing_reference());
            return PF_Err_NONE;
        });
}

}  // namespace

void add_custom_ui_suite(SuiteRegistry &suites) {
    static const PF_EffectCustomUISuite1 table1{.PF_GetDrawingReference = get_drawing_reference};
    // Asynchronous rendering of panes is not offered: asking for its manager is a finding.
    static const auto table2 = with_all_slots(PF_EffectCustomUISuite2{
        .PF_GetDrawingReference = get_drawing_reference, .PF_GetContextAsyncManager = nullptr});
    suites.add(kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1, &table1);
    suites.add(kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion2, &table2);
}

}  // namespace stage
