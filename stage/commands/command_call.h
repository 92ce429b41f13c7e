// One command sent to the plug-in: records built, call made on the right thread, everything
// checked.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "stage/effect/plugin.h"
#include "stage/host/active_command.h"
#include "stage/host/command_thread.h"
#include "stage/host/host.h"

namespace stage {

/// What came back from one command.
struct CommandResult {
    PF_Err error = 0;
    PF_OutFlags out_flags = 0;
    std::string message;   ///< return_msg, shown to the user when not empty
    bool escaped = false;  ///< an exception left the plug-in: a real host would have crashed
};

/// Time and layer facts of a command; fields as in PF_InData.
struct CommandContext {
    EffectInstance *instance = nullptr;
    A_long current_time = 0;
    A_long time_step = 1;
    A_u_long time_scale = 25;
    A_long total_time = 1;
    A_long width = 0, height = 0;  ///< layer source, full resolution
    PF_RationalScale downsample_x{1, 1}, downsample_y{1, 1};
    PF_RationalScale pixel_aspect{1, 1};
    PF_Quality quality = 1;  ///< PF_Quality_HI
    PF_InFlags in_flags = 0;
    bool render_copy = false;  ///< use the render copy of the sequence data
    SmartFrame *frame = nullptr;
    void *extra = nullptr;
    bool with_params = false;  ///< hand over the params array (UI commands)
};

/// Sends commands of one plug-in. Owns the two threads that the host calls from.
class CommandCaller {
  public:
    CommandCaller(Host &host, Plugin &plugin);

    /// Calls the plug-in: the smart-render pair on the render thread, everything else on the UI
    /// thread. Before: return_msg emptied, flags zeroed, handles preset in out_data, sequence data
    /// locked once. After: in_data and the params array compared, ledgers checked (params, handles,
    /// worlds, suites, AEGP references), guard bytes, message terminator, exceptions. Then the
    /// handles are taken over and the message is shown. `after` sees the params array before it
    /// goes away.
    CommandResult call(PF_Cmd cmd, CommandContext &context,
                       const std::function<void(std::vector<PF_ParamDef> &)> &after = {});

  private:
    void fill_in_data(PF_InData &in, const CommandContext &context) const;
    void fill_params(std::vector<PF_ParamDef> &params, const CommandContext &context) const;
    ActiveCommand active_command(PF_Cmd cmd, const CommandContext &context, PF_InData &in,
                                 const std::vector<PF_ParamDef *> &pointers);
    CommandResult run(PF_Cmd cmd, PF_InData &in, PF_OutData &out, PF_ParamDef **params,
                      void *extra);
    void check_after(const PF_InData &before, const PF_InData &in, const PF_OutData &out,
                     const ActiveCommand &active);
    void check_ledgers(const ActiveCommand &active);
    void check_params(const std::vector<PF_ParamDef> &before,
                      const std::vector<PF_ParamDef> &params, PF_Cmd cmd);
    void take_handles(PF_Cmd cmd, CommandContext &context, const PF_InData &in,
                      const PF_OutData &out);

    Host &host_;
    Plugin &plugin_;
    CommandThread ui_thread_{ThreadRole::kUi};
    CommandThread render_thread_{ThreadRole::kRender};
};

}  // namespace stage
