// Saving and loading: instances travel as their flattened sequence data.
#include "hostapi/constants.h"
#include "stage/project/project_file.h"
#include "stage/session/footage.h"
#include "stage/session/session.h"

namespace stage {
namespace {

void require(const CommandResult &result, PF_Cmd cmd) {
    if (result.error == 0) return;
    throw SessionError(std::string("the plug-in answered ") + command_name(cmd) + " with error " +
                       std::to_string(result.error));
}

}  // namespace

void Session::store_sequence(EffectInstance &instance) {
    if (instance.sequence_data == nullptr || !host.handles.is_live(instance.sequence_data)) {
        state_of(instance).flat_sequence.clear();  // the record was lost: there is nothing to keep
        return;
    }
    require(flatten(instance), PF_Cmd_SEQUENCE_FLATTEN);
    state_of(instance).flat_sequence = sequence_bytes(instance);
    require(resetup(instance), PF_Cmd_SEQUENCE_RESETUP);
}

void Session::save(const std::filesystem::path &file) {
    for (const auto &instance : host.instances) store_sequence(*instance);
    save_project(host.project, file);
}

void Session::load(const std::filesystem::path &file) {
    Project loaded;
    load_project(loaded, file, open_footage);
    while (!host.instances.empty()) remove(*host.instances.back());
    host.undo.clear();
    host.project.restore(loaded.data());
    const std::string own_name = match_name();
    for (const auto &item : host.project.items()) {
        for (Layer &layer : item->layers) {
            for (std::size_t effect = 0; effect < layer.effects.size(); ++effect) {
                EffectState &state = layer.effects[effect];
                if (state.match_name != own_name) continue;
                EffectInstance &instance = add_instance(layer.id, static_cast<int>(effect));
                state.streams = match_streams(state.streams, new_streams(instance));
                set_flat_data(instance, state.flat_sequence);
            }
        }
    }
    for (const auto &instance : host.instances) {
        require(resetup(*instance), PF_Cmd_SEQUENCE_RESETUP);
    }
}

}  // namespace stage
