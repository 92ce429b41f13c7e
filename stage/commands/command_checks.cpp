// The checks of strict mode around one command.
#include <cstring>

#include "hostapi/constants.h"
#include "stage/commands/command_call.h"
#include "stage/effect/effect_instance.h"

namespace stage {
namespace {

struct InDataField {
    const char *name;
    std::size_t offset;
    std::size_t size;
};

// Fields a plug-in has no business writing, by name for the report; sequence_data is the one that
// set-down is asked to null.
#define KS_IN_FIELD(field) \
    { #field, offsetof(PF_InData, field), sizeof(PF_InData::field) }
constexpr InDataField kInDataFields[] = {
    KS_IN_FIELD(inter),
    KS_IN_FIELD(utils),
    KS_IN_FIELD(effect_ref),
    KS_IN_FIELD(quality),
    KS_IN_FIELD(version),
    KS_IN_FIELD(serial_num),
    KS_IN_FIELD(appl_id),
    KS_IN_FIELD(num_params),
    KS_IN_FIELD(reserved),
    KS_IN_FIELD(what_cpu),
    KS_IN_FIELD(what_fpu),
    KS_IN_FIELD(current_time),
    KS_IN_FIELD(time_step),
    KS_IN_FIELD(total_time),
    KS_IN_FIELD(local_time_step),
    KS_IN_FIELD(time_scale),
    KS_IN_FIELD(field),
    KS_IN_FIELD(shutter_angle),
    KS_IN_FIELD(width),
    KS_IN_FIELD(height),
    KS_IN_FIELD(extent_hint),
    KS_IN_FIELD(output_origin_x),
    KS_IN_FIELD(output_origin_y),
    KS_IN_FIELD(downsample_x),
    KS_IN_FIELD(downsample_y),
    KS_IN_FIELD(pixel_aspect_ratio),
    KS_IN_FIELD(in_flags),
    KS_IN_FIELD(global_data),
    KS_IN_FIELD(frame_data),
    KS_IN_FIELD(start_sampL),
    KS_IN_FIELD(dur_sampL),
    KS_IN_FIELD(total_sampL),
    KS_IN_FIELD(src_snd),
    KS_IN_FIELD(pica_basicP),
    KS_IN_FIELD(pre_effect_source_origin_x),
    KS_IN_FIELD(pre_effect_source_origin_y),
    KS_IN_FIELD(shutter_phase),
};
#undef KS_IN_FIELD

bool differs(const PF_InData &a, const PF_InData &b, const InDataField &field) {
    return std::memcmp(reinterpret_cast<const char *>(&a) + field.offset,
                       reinterpret_cast<const char *>(&b) + field.offset, field.size) != 0;
}

/// `def` with every part blanked that a plug-in may change: the value (only with the change flag),
/// the change flags, and looks, which are taken over through the parameter-UI call alone.
PF_ParamDef fixed_part(const PF_ParamDef &def, bool value_may_change) {
    PF_ParamDef fixed = def;
    fixed.uu.change_flags = 0;
    if (value_may_change) store_value(fixed, ParamValue{}, {1, 1});
    return fixed;
}

}  // namespace

void CommandCaller::check_after(const PF_InData &before, const PF_InData &in, const PF_OutData &,
                                const ActiveCommand &active) {
    for (const InDataField &field : kInDataFields) {
        if (differs(before, in, field)) {
            host_.strict.report("in_data.write", host_.command(),
                                std::string("in_data->") + field.name + " was written");
        }
    }
    const bool may_null_sequence = active.cmd == PF_Cmd_SEQUENCE_SETDOWN ||
                                   active.cmd == PF_Cmd_SEQUENCE_SETUP ||
                                   active.cmd == PF_Cmd_USER_CHANGED_PARAM;
    if (before.sequence_data != in.sequence_data &&
        !(may_null_sequence && in.sequence_data == nullptr)) {
        host_.strict.report("in_data.write", host_.command(), "in_data->sequence_data was written");
    }
}

void CommandCaller::check_ledgers(const ActiveCommand &active) {
    Strict &strict = host_.strict;
    const std::string &command = host_.command();
    if (!active.param_checkouts.empty()) {
        strict.report("leak.param", command,
                      std::to_string(active.param_checkouts.size()) +
                          " parameter check-outs were not checked in");
    }
    for (const PF_Handle handle : host_.handles.strays()) {
        const HandleInfo *info = host_.handles.info(handle);
        strict.report("leak.handle", command,
                      "a handle of " + std::to_string(info->size) + " bytes from " + info->command +
                          " was not disposed of");
        host_.handles.dispose(handle, command);
    }
    for (const World *world : host_.worlds.plugin_worlds()) {
        strict.report("leak.world", command,
                      "a world of " + std::to_string(world->def.width) + "x" +
                          std::to_string(world->def.height) + " was not disposed of");
        host_.worlds.destroy(const_cast<World *>(world), command);
    }
    for (const auto &[key, count] : host_.suites.imbalance()) {
        strict.report("leak.suite", command,
                      "\"" + key.first + "\" " + std::to_string(key.second) +
                          ": acquired minus released is " + std::to_string(count) +
                          (host_.suites.any_refused() ? " after a refusal" : ""));
    }
    host_.suites.clear_counts();
    for (const std::string &leak : host_.refs.leaks()) strict.report("leak.aegp", command, leak);
    host_.refs.clear_command();
    for (; host_.undo.open_groups() > active.undo_groups; host_.undo.end_group()) {
        strict.report("undo.unbalanced", command, "an undo group was left open");
    }
    for (const std::string &leak : host_.mem_handles.leaks()) {
        strict.report("leak.mem_handle", command, leak);
    }
    host_.mem_handles.free_all();
    const bool everything = active.cmd == PF_Cmd_GLOBAL_SETDOWN;
    host_.handles.check_guards(command, everything);
    host_.worlds.check(command, everything);
    if (active.frame != nullptr && active.cmd == PF_Cmd_SMART_RENDER) {
        for (const auto &[id, layer] : active.frame->layers) {
            if (!layer.pixels_open) continue;
            strict.report("checkout.left_open", command,
                          "layer pixels of check-out " + std::to_string(id) + " stayed open" +
                              (active.frame->output_failed ? " after checkout_output failed" : ""));
        }
    }
}

void CommandCaller::check_params(const std::vector<PF_ParamDef> &before,
                                 const std::vector<PF_ParamDef> &params, PF_Cmd cmd) {
    const bool may_write =
        cmd == PF_Cmd_USER_CHANGED_PARAM || cmd == PF_Cmd_EVENT || cmd == PF_Cmd_UPDATE_PARAMS_UI;
    for (std::size_t index = 0; index < params.size(); ++index) {
        const bool changed = (params[index].uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) != 0;
        if (changed && !may_write) {
            host_.strict.report("params.write", host_.command(),
                                "parameter " + std::to_string(index) +
                                    " is marked as changed in a command that may not");
        }
        if (changed && cmd == PF_Cmd_UPDATE_PARAMS_UI) {
            host_.strict.report("params.refresh_value", host_.command(),
                                "parameter " + std::to_string(index) +
                                    " is marked as changed in a refresh of the panel");
        }
        const PF_ParamDef was = fixed_part(before[index], changed);
        const PF_ParamDef is = fixed_part(params[index], changed);
        if (std::memcmp(&was, &is, sizeof was) != 0) {
            host_.strict.report(
                "params.write", host_.command(),
                "parameter " + std::to_string(index) + " was written in the params array");
        }
    }
}

}  // namespace stage
