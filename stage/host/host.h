// The embedded host: everything that a plug-in's callbacks reach.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "stage/drawbot/drawbot_store.h"
#include "stage/host/host_options.h"
#include "stage/host/suite_registry.h"
#include "stage/ledger/faults.h"
#include "stage/ledger/handle_store.h"
#include "stage/ledger/mem_handle_store.h"
#include "stage/ledger/project_refs.h"
#include "stage/ledger/strict.h"
#include "stage/ledger/trace.h"
#include "stage/ledger/world_store.h"
#include "stage/project/project.h"
#include "stage/project/undo.h"

namespace stage {

class EffectInstance;
class ParamCatalog;
struct ActiveCommand;

/// A message that the host showed the user.
struct ShownMessage {
    std::string text;
    bool as_error = false;  ///< PF_OutFlag_DISPLAY_ERROR_MESSAGE was set
    std::string command;
};

/// One host per process at a time: suite functions carry no context, so they find it through
/// current(). Members are the host's organs, public because every suite function needs some of
/// them.
class Host {
  public:
    /// Without any suite: those lie above the host and add themselves to `suites`.
    explicit Host(HostOptions options = {});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// The living host; the process ends with a message when there is none.
    static Host &current();

    HostOptions options;
    Trace trace;
    Faults faults;
    Strict strict;
    SuiteRegistry suites;
    HandleStore handles;
    MemHandleStore mem_handles;
    WorldStore worlds;
    DrawbotStore drawbot{strict};
    Project project;
    Undo undo{project};
    ProjectRefs refs;  ///< layer, comp, item, stream and effect references handed to the plug-in
    std::vector<ShownMessage> messages;

    /// Parameters that the plug-in has added; null before the plug-in is loaded.
    ParamCatalog *catalog = nullptr;
    /// The command under way; null outside any.
    ActiveCommand *active = nullptr;

    /// Every applied effect; `effect_ref` of a call is the address of one.
    std::vector<std::unique_ptr<EffectInstance>> instances;
    /// The instance behind a plug-in's effect_ref; null when it is none of ours.
    EffectInstance *instance(PF_ProgPtr effect_ref);

    /// Name of the command under way, "" outside any.
    const std::string &command() const { return trace.command(); }
};

}  // namespace stage
