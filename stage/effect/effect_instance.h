// One applied effect: its layer, its sequence data, and where its values live.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostapi/effect_types.h"
#include "stage/effect/param_catalog.h"
#include "stage/project/project.h"

namespace stage {

/// Where an instance's sequence data stands.
enum class SequenceState { kNone, kLive, kFlat };

/// Lives as long as the effect stays applied; its address is the plug-in's effect_ref.
class EffectInstance {
  public:
    EffectInstance(LayerId layer_id, int effect_index, int number = 0)
        : id(number), layer(layer_id), effect(effect_index) {}

    const int id;                       ///< as in EffectState::instance
    LayerId layer;                      ///< layer that carries the effect
    int effect;                         ///< position in that layer's effect list
    std::vector<ParamLook> looks;       ///< of this instance's panel, by parameter index
    PF_Handle sequence_data = nullptr;  ///< UI copy
    SequenceState state = SequenceState::kNone;
    PF_Handle render_sequence_data = nullptr;  ///< with separate_render_copy

    PF_ProgPtr effect_ref() { return reinterpret_cast<PF_ProgPtr>(this); }
};

/// What the project keeps of an applied effect: its values and its flat record. The effect must
/// still be on its layer.
inline EffectState &effect_state(Project &project, const EffectInstance &instance) {
    return project.layer(instance.layer)->effects.at(static_cast<std::size_t>(instance.effect));
}
inline const EffectState &effect_state(const Project &project, const EffectInstance &instance) {
    return project.layer(instance.layer)->effects.at(static_cast<std::size_t>(instance.effect));
}

}  // namespace stage
