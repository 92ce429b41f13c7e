// A comp with a picture and the effect: what work with an effect begins with.
#pragma once

#include <optional>

#include "stage/session/session.h"

namespace stage {

/// What a scene is made of.
struct SceneParts {
    /// Size, pixel aspect and duration are the comp's too. Without a reader it is no layer.
    Item picture;
    /// A picture to compare with, beneath everything and not shown.
    std::optional<Item> original;
    bool adjustment = true;  ///< the effect sits on a layer over everything, else on the picture's
    bool selected = false;   ///< so is the layer with the effect, when the effect arrives
};

struct Scene {
    ItemId comp = 0;
    LayerId picture = 0, original = 0;  ///< 0 for none
    LayerId carrier = 0;                ///< carries the effect
    EffectInstance *effect = nullptr;
};

/// Makes the comp, which becomes the active one, its layers, and applies the effect. Throws
/// ProjectError, and SessionError when the effect refuses.
Scene build_scene(Session &session, SceneParts parts);
/// The layer of a picture to compare with.
LayerId add_original(Project &project, ItemId comp, Item picture);

}  // namespace stage
