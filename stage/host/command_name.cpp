#include <array>

#include "hostapi/constants.h"
#include "stage/host/active_command.h"

namespace stage {
namespace {

struct CommandName {
    PF_Cmd cmd;
    const char *name;
};

#define KS_COMMAND(cmd) \
    { cmd, #cmd }
constexpr CommandName kNames[] = {
    KS_COMMAND(PF_Cmd_ABOUT),
    KS_COMMAND(PF_Cmd_GLOBAL_SETUP),
    KS_COMMAND(PF_Cmd_GLOBAL_SETDOWN),
    KS_COMMAND(PF_Cmd_PARAMS_SETUP),
    KS_COMMAND(PF_Cmd_SEQUENCE_SETUP),
    KS_COMMAND(PF_Cmd_SEQUENCE_RESETUP),
    KS_COMMAND(PF_Cmd_SEQUENCE_FLATTEN),
    KS_COMMAND(PF_Cmd_SEQUENCE_SETDOWN),
    KS_COMMAND(PF_Cmd_FRAME_SETUP),
    KS_COMMAND(PF_Cmd_RENDER),
    KS_COMMAND(PF_Cmd_FRAME_SETDOWN),
    KS_COMMAND(PF_Cmd_USER_CHANGED_PARAM),
    KS_COMMAND(PF_Cmd_UPDATE_PARAMS_UI),
    KS_COMMAND(PF_Cmd_EVENT),
    KS_COMMAND(PF_Cmd_COMPLETELY_GENERAL),
    KS_COMMAND(PF_Cmd_QUERY_DYNAMIC_FLAGS),
    KS_COMMAND(PF_Cmd_ARBITRARY_CALLBACK),
    KS_COMMAND(PF_Cmd_SMART_PRE_RENDER),
    KS_COMMAND(PF_Cmd_SMART_RENDER),
    KS_COMMAND(PF_Cmd_GET_FLATTENED_SEQUENCE_DATA),
};
#undef KS_COMMAND

}  // namespace

const char *command_name(PF_Cmd cmd) {
    for (const CommandName &entry : kNames) {
        if (entry.cmd == cmd) return entry.name;
    }
    return "PF_Cmd (other)";
}

}  // namespace stage
