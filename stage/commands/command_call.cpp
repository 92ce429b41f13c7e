#include "stage/commands/command_call.h"

#include <cstring>
#include <utility>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "stage/services/interact_callbacks.h"
#include "stage/services/utility_callbacks.h"

namespace stage {
namespace {

// The host's own four-character code, "FXTC".
constexpr A_AppID kApplicationId = 0x46585443;

bool is_render(PF_Cmd cmd) {
    return cmd == PF_Cmd_SMART_PRE_RENDER || cmd == PF_Cmd_SMART_RENDER;
}

PF_Handle &sequence_slot(const CommandContext &context) {
    return context.render_copy ? context.instance->render_sequence_data
                               : context.instance->sequence_data;
}

std::string describe(const CommandContext &context) {
    std::string text =
        "time " + std::to_string(context.current_time) + "/" + std::to_string(context.time_scale);
    if (context.width > 0) {
        text += ", " + std::to_string(context.width) + "x" + std::to_string(context.height);
    }
    return text;
}

/// Copies the message out and shows it as the host does.
std::string take_message(Host &host, PF_Cmd cmd, const PF_OutData &out) {
    const auto *end =
        static_cast<const char *>(std::memchr(out.return_msg, 0, sizeof out.return_msg));
    if (end == nullptr) {
        host.strict.report("message.terminator", host.command(), "return_msg has no terminator");
    }
    const std::size_t length =
        end != nullptr ? static_cast<std::size_t>(end - out.return_msg) : sizeof out.return_msg;
    std::string message(out.return_msg, length);
    if (!message.empty()) {
        const bool as_error = (out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0;
        if (!as_error && cmd != PF_Cmd_ABOUT) {
            // Legal, but seldom meant: a plain dialog, even in the middle of a preview.
            host.strict.report("message.plain", host.command(),
                               "a message without the error flag: " + message);
        }
        host.messages.push_back({message, as_error, host.command()});
    }
    return message;
}

/// The host locks an instance's sequence data once around each command.
class SequenceLock {
  public:
    SequenceLock(Host &host, PF_Handle handle) : host_(host), handle_(handle) {
        if (handle == nullptr) return;
        host.handles.lock(handle, host.command());
        if (const HandleInfo *info = host.handles.info(handle)) locks_ = info->locks;
    }
    /// Compares the count with that at entry and takes the host's lock off. A count below is more
    /// unlocks than locks, one above a lock that the plug-in forgot.
    void check() const {
        if (handle_ == nullptr || !host_.handles.is_live(handle_)) return;
        int now = host_.handles.info(handle_)->locks;
        if (now != locks_) {
            host_.strict.report(now < locks_ ? "handle.unlock_balance" : "handle.left_locked",
                                host_.command(),
                                "the sequence data is locked " + std::to_string(now) +
                                    " times at return, " + std::to_string(locks_) + " at entry");
        }
        for (; now < locks_; ++now) host_.handles.lock(handle_, host_.command());
        for (; now >= locks_; --now) host_.handles.unlock(handle_, host_.command());
    }

  private:
    Host &host_;
    PF_Handle handle_;
    int locks_ = 0;
};

/// Makes a command the one under way for the length of a scope; what was under way then goes on.
class CommandUnderWay {
  public:
    CommandUnderWay(Host &host, ActiveCommand &active)
        : host_(host), outer_(host.active), outer_name_(host.trace.command()) {
        host.active = &active;
        host.trace.set_command(command_name(active.cmd));
    }
    ~CommandUnderWay() {
        host_.active = outer_;
        host_.trace.set_command(std::move(outer_name_));
    }
    CommandUnderWay(const CommandUnderWay &) = delete;
    CommandUnderWay &operator=(const CommandUnderWay &) = delete;

  private:
    Host &host_;
    ActiveCommand *outer_;
    std::string outer_name_;
};

/// Check that a handle given up without being disposed of falls under.
const char *left_record_check(PF_Cmd cmd) {
    switch (cmd) {
        case PF_Cmd_SEQUENCE_FLATTEN:
            return "sequence.unflat_left";
        case PF_Cmd_SEQUENCE_RESETUP:
            return "sequence.flat_left";
        default:
            return "sequence.lost";
    }
}

}  // namespace

CommandCaller::CommandCaller(Host &host, Plugin &plugin) : host_(host), plugin_(plugin) {}

void CommandCaller::fill_in_data(PF_InData &in, const CommandContext &context) const {
    in.inter = interact_callbacks();
    in.utils = utility_callbacks();
    in.quality = context.quality;
    in.version = {13, 29};
    in.appl_id = kApplicationId;
    in.num_params = plugin_.num_params;
    in.current_time = context.current_time;
    in.time_step = context.time_step;
    in.total_time = context.total_time;
    in.local_time_step = context.time_step;
    in.time_scale = context.time_scale;
    in.width = context.width;
    in.height = context.height;
    in.extent_hint = {0, 0, context.width, context.height};
    in.downsample_x = context.downsample_x;
    in.downsample_y = context.downsample_y;
    in.pixel_aspect_ratio = context.pixel_aspect;
    in.in_flags = context.in_flags;
    in.global_data = plugin_.global_data;
    in.pica_basicP = host_.options.null_basic_suite ? nullptr : host_.suites.basic();
    if (context.instance != nullptr) {
        in.effect_ref = context.instance->effect_ref();
        in.sequence_data = sequence_slot(context);
    }
}

void CommandCaller::fill_params(std::vector<PF_ParamDef> &params,
                                const CommandContext &context) const {
    const auto &streams = effect_state(host_.project, *context.instance).streams;
    for (int index = 0; index < plugin_.catalog.count(); ++index) {
        PF_ParamDef def = plugin_.catalog.at(index).def;
        def.uu.change_flags = 0;
        put_look(context.instance->looks.at(static_cast<std::size_t>(index)), def);
        store_value(def, streams.at(static_cast<std::size_t>(index)).value, {1, 1});
        params.push_back(def);
    }
}

CommandResult CommandCaller::run(PF_Cmd cmd, PF_InData &in, PF_OutData &out, PF_ParamDef **params,
                                 void *extra) {
    CommandResult result;
    CommandThread &thread = is_render(cmd) ? render_thread_ : ui_thread_;
    thread.run([&] {
        try {
            result.error = plugin_.entry(cmd, &in, &out, params, nullptr, extra);
        } catch (...) {
            result.escaped = true;
            result.error = PF_Err_INTERNAL_STRUCT_DAMAGED;
        }
    });
    return result;
}

ActiveCommand CommandCaller::active_command(PF_Cmd cmd, const CommandContext &context,
                                            PF_InData &in,
                                            const std::vector<PF_ParamDef *> &pointers) {
    ActiveCommand active;
    active.cmd = cmd;
    active.plugin = &plugin_;
    active.instance = context.instance;
    active.in_data = &in;
    active.frame = context.frame;
    active.params_array = pointers;
    active.undo_groups = host_.undo.open_groups();
    if (is_render(cmd)) {
        active.scale = {double(context.downsample_x.num) / context.downsample_x.den,
                        double(context.downsample_y.num) / context.downsample_y.den};
    }
    return active;
}

CommandResult CommandCaller::call(PF_Cmd cmd, CommandContext &context,
                                  const std::function<void(std::vector<PF_ParamDef> &)> &after) {
    PF_InData in{};
    fill_in_data(in, context);
    PF_OutData out{};
    out.sequence_data = in.sequence_data;
    out.global_data = in.global_data;
    out.num_params = in.num_params;

    std::vector<PF_ParamDef> params;
    std::vector<PF_ParamDef *> pointers;
    if (context.with_params) {
        fill_params(params, context);
        for (PF_ParamDef &def : params) pointers.push_back(&def);
        pointers.push_back(nullptr);
    }
    ActiveCommand active = active_command(cmd, context, in, pointers);
    const CommandUnderWay under_way(host_, active);
    host_.trace.record("> " + std::string(command_name(cmd)), describe(context), "");
    const SequenceLock lock(host_, in.sequence_data);

    const PF_InData before = in;
    const std::vector<PF_ParamDef> params_before = params;
    CommandResult result =
        run(cmd, in, out, pointers.empty() ? nullptr : pointers.data(), context.extra);
    result.out_flags = out.out_flags;

    lock.check();
    if (result.escaped) {
        host_.strict.report("exception.escaped", host_.command(),
                            "an exception left the plug-in: a real host crashes here");
    }
    check_after(before, in, out, active);
    check_params(params_before, params, cmd);
    if (pointers != active.params_array) {
        host_.strict.report("params.write", host_.command(), "an entry of params was replaced");
    }
    take_handles(cmd, context, in, out);
    check_ledgers(active);
    if (after) after(params);
    if (cmd == PF_Cmd_PARAMS_SETUP) plugin_.num_params = out.num_params;
    if (cmd == PF_Cmd_GLOBAL_SETUP) {
        plugin_.reported = {out.my_version, out.out_flags, out.out_flags2};
        plugin_.global_data = out.global_data;
    }
    result.message = take_message(host_, cmd, out);
    host_.trace.record("< " + std::string(command_name(cmd)), "", std::to_string(result.error));
    return result;
}

void CommandCaller::take_handles(PF_Cmd cmd, CommandContext &context, const PF_InData &in,
                                 const PF_OutData &out) {
    if (context.instance == nullptr) return;
    PF_Handle &slot = sequence_slot(context);
    const PF_Handle old = slot;
    // In set-down either record may say that the data is gone.
    const bool given_up = cmd == PF_Cmd_SEQUENCE_SETDOWN && in.sequence_data == nullptr;
    const PF_Handle now = given_up ? nullptr : out.sequence_data;
    const bool sequence_command = cmd == PF_Cmd_SEQUENCE_SETUP || cmd == PF_Cmd_SEQUENCE_RESETUP ||
                                  cmd == PF_Cmd_SEQUENCE_FLATTEN || cmd == PF_Cmd_SEQUENCE_SETDOWN;
    if (now != old) {
        if (!sequence_command) {
            host_.strict.report("sequence.replaced", host_.command(),
                                std::string(command_name(cmd)) + " replaced the sequence data");
            if (!host_.options.adopt_replaced_sequence) return;
        }
        if (old != nullptr && host_.handles.is_live(old)) {
            // By contract the effect frees what it replaces; what it leaves is lost to a real host.
            host_.strict.report(left_record_check(cmd), host_.command(),
                                "the replaced handle was not disposed of");
            host_.handles.dispose(old, host_.command());
        }
        if (now != nullptr) host_.handles.set_host_owned(now, true);
        slot = now;
    }
    if (slot != nullptr && !host_.handles.is_live(slot)) {
        host_.strict.report("sequence.dead", host_.command(),
                            "out_data names sequence data that is no live handle");
        slot = nullptr;
    }
}

}  // namespace stage
