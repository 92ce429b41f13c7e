#include "instance/lock_script.h"

#include "host/scoped.h"
#include "host/suite_cache.h"

namespace ks {
namespace {

constexpr char kLockScript[] =
    "{     var curComp = app.project.activeItem;"
    "     if(curComp && curComp instanceof CompItem) {"
    "         var selectedLayers = curComp.selectedLayers;"
    "         if(selectedLayers) {"
    "             for(var l=0; l<selectedLayers.length; l++) {"
    "                 var curLayer = selectedLayers[l];"
    "                 curLayer.position.expression = '[thisComp.width / 2, thisComp.height / 2]';"
    "             }         }     } }";

constexpr char kUnlockScript[] =
    "{     var curComp = app.project.activeItem;"
    "     if(curComp && curComp instanceof CompItem) {"
    "         var selectedLayers = curComp.selectedLayers;"
    "         if(selectedLayers) {"
    "             for(var l=0; l<selectedLayers.length; l++) {"
    "                 var curLayer = selectedLayers[l];"
    "                 curLayer.position.expression = '';"
    "             }         }     } }";

}  // namespace

PF_Err run_lock_script(PF_InData *in_data, PF_ParamValue lock) {
    constexpr AEGP_PluginID plugin_id = 0;
    constexpr A_Boolean platform_encoded = 0;  // UTF-8
    SuiteCache suites(in_data->pica_basicP);
    AEGP_UtilitySuite5 &utility = suites.utility();
    // Taken before the script runs: without it the script's result could not be freed.
    AEGP_MemorySuite1 &memory = suites.memory();
    AEGP_MemHandle result = nullptr;
    const A_Err error = utility.AEGP_ExecuteScript(
        plugin_id, lock == 1 ? kLockScript : kUnlockScript, platform_encoded, &result, nullptr);
    if (result != nullptr) memory.AEGP_FreeMemHandle(result);
    return error;
}

}  // namespace ks
