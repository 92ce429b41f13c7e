#include "hostapi/suite_names.h"
#include "stage/host/active_command.h"
#include "stage/script/script.h"
#include "stage/services/calls/project_access.h"
#include "stage/services/calls/suite_table.h"
#include "stage/services/suites/suites.h"

namespace stage {
namespace {

/// Characters of a script that the trace shows.
constexpr std::size_t kTracedScript = 60;

A_Err report_info(HostCall &call, AEGP_PluginID plugin_id, const A_char *text) {
    note_plugin_id(call, plugin_id);
    if (text == nullptr) return A_Err_PARAMETER;
    call.host().messages.push_back({text, false, call.command()});
    return A_Err_NONE;
}

A_Err start_undo_group(HostCall &call, const A_char *name) {
    call.host().undo.begin_group(name == nullptr ? "" : name);
    return A_Err_NONE;
}

A_Err end_undo_group(HostCall &call) {
    // Groups that the host itself holds open are not the plug-in's to close.
    const ActiveCommand *active = call.host().active;
    const int hosts = active != nullptr ? active->undo_groups : 0;
    Undo &undo = call.host().undo;
    if (undo.open_groups() > hosts && undo.end_group()) return A_Err_NONE;
    call.report("undo.unbalanced", "no undo group is open");
    return A_Err_PARAMETER;
}

A_Err register_with_aegp(HostCall &call, AEGP_GlobalRefcon, const A_char *, AEGP_PluginID &result) {
    if (call.command() != "PF_Cmd_GLOBAL_SETUP") {
        call.report("aegp.register", "a plug-in id is to be had in GLOBAL_SETUP only");
    }
    result = 1;
    return A_Err_NONE;
}

A_Err is_scripting_available(HostCall &call, A_Boolean &result) {
    result = call.host().options.scripts_fail ? 0 : 1;
    return A_Err_NONE;
}

ScriptResult run(HostCall &call, const A_char *script) {
    Host &host = call.host();
    if (host.options.scripts_fail) return {false, "", "scripting is not available"};
    ScriptOptions options;
    options.read_only = host.options.project_locked;
    options.before_change = [&host] { host.undo.before_change("Script"); };
    return run_script(host.project, script, options);
}

/// Both encodings are UTF-8 here: a Windows code page is not emulated. Handles are optional.
A_Err execute_script(HostCall &call, AEGP_PluginID plugin_id, const A_char *script, A_Boolean,
                     AEGP_MemHandle *result, AEGP_MemHandle *error) {
    note_plugin_id(call, plugin_id);
    if (result != nullptr) *result = nullptr;
    if (error != nullptr) *error = nullptr;
    if (script == nullptr) return A_Err_PARAMETER;
    if (call.traced()) call.arguments(std::string(script).substr(0, kTracedScript));
    const ScriptResult done = run(call, script);
    AEGP_MemHandle *into = done.ok ? result : error;
    if (into != nullptr) {
        *into = call.host().mem_handles.allocate_text(done.ok ? done.value : done.error,
                                                      call.command());
        if (*into == nullptr) return A_Err_ALLOC;
    }
    return done.ok ? A_Err_NONE : A_Err_GENERIC;
}

/// Struct 6 only inserts and appends slots: names and types stay.
template <class Suite>
constexpr auto utility_table() {
    CallTable<Suite, kAEGPUtilitySuite, kProjectCall> table;
    KS_SERVE(AEGP_ReportInfo, report_info);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_StartUndoGroup, start_undo_group);
    KS_SERVE_BY(table.kRules.on_ui_thread().that_release(), AEGP_EndUndoGroup, end_undo_group);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_RegisterWithAEGP, register_with_aegp);
    KS_SERVE(AEGP_IsScriptingAvailable, is_scripting_available);
    KS_SERVE_BY(table.kRules.on_ui_thread(), AEGP_ExecuteScript, execute_script);
    return table;
}

}  // namespace

void add_utility_suite(SuiteRegistry &suites) {
    offer<utility_table<AEGP_UtilitySuite5>>(suites, kAEGPUtilitySuiteVersion5);
    offer<utility_table<AEGP_UtilitySuite6>>(suites, kAEGPUtilitySuiteVersion6);
}

}  // namespace stage
