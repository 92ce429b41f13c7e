#include "stage/session/scene.h"

#include <utility>

namespace stage {
namespace {

std::string refusal(const CommandResult &setup) {
    const std::string text =
        "the effect could not be applied (error " + std::to_string(setup.error) + ")";
    return setup.message.empty() ? text : text + ": " + setup.message;
}

}  // namespace

LayerId add_original(Project &project, ItemId comp, Item picture) {
    const LayerId id =
        project.add_layer(comp, project.add_footage(std::move(picture)), -1, "Original");
    project.layer(id)->flags &= ~layer_flag::kVideoActive;
    return id;
}

Scene build_scene(Session &session, SceneParts parts) {
    Project &project = session.project();
    const Item &picture = parts.picture;
    const ItemId footage = picture.reader ? project.add_footage(picture) : 0;
    Scene scene;
    scene.comp = project.add_comp("Comp 1", picture.width, picture.height, picture.par_num,
                                  picture.par_den, picture.frames);
    project.active_comp = scene.comp;
    if (footage != 0) scene.picture = project.add_layer(scene.comp, footage, 0, "Footage");
    if (parts.original) {
        scene.original = add_original(project, scene.comp, *std::move(parts.original));
    }
    scene.carrier =
        parts.adjustment ? project.add_adjustment_layer(scene.comp, 0, "Scopes") : scene.picture;
    project.layer(scene.carrier)->selected = parts.selected;
    CommandResult setup;
    scene.effect = session.apply(scene.carrier, &setup);
    if (scene.effect == nullptr) throw SessionError(refusal(setup));
    return scene;
}

}  // namespace stage
