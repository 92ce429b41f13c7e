// What a viewer shows: a comp or a layer with its effects rendered.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stage/commands/smart_render.h"
#include "stage/desk/viewer/view_image.h"
#include "stage/project/project.h"

namespace stage {

class EffectInstance;
class Session;

/// How one effect of the frame fared.
struct EffectOutcome {
    const EffectInstance *instance = nullptr;
    PF_Err error = 0;
    bool skipped = false;  ///< nothing beneath it: it was not rendered
    std::string message;
    double seconds = 0;  ///< wall time inside its SMART_RENDER
};

/// One frame of a viewer. `image` is at the resolution asked for, sizes rounded up, over black.
struct ViewFrame {
    ViewImage image;
    std::vector<EffectOutcome> effects;  ///< bottom layer first
    double seconds = 0;                  ///< wall time of everything
};

/// The comp at `settings.frame`: layers from the bottom up, each with its effects; an adjustment
/// layer's effects receive everything beneath it as seen from that layer, effects beneath included,
/// and their result replaces what the layer covers. Layers without their video on take no part, nor
/// do guide layers of nested comps; text layers have no picture. An effect that fails or is skipped
/// hands its input through. `settings` gives frame, resolution and quality.
///
/// Everything beneath the lowest effect is the picture of composite(); from there on pixels have
/// the depth of the project and are rounded once per layer. Pictures that effects do not change are
/// kept from frame to frame (see InputCache).
///
/// Throws PictureError, ProjectError. [host thread]
ViewFrame render_comp(Session &session, ItemId comp, const RenderSettings &settings);
/// The same into `frame`, whose memory is used again.
void render_comp(Session &session, ItemId comp, const RenderSettings &settings, ViewFrame &frame);

/// The layer's own source with its effects, for a layer window. Throws ProjectError when the layer
/// has no source.
ViewFrame render_layer(Session &session, LayerId layer, const RenderSettings &settings);
void render_layer(Session &session, LayerId layer, const RenderSettings &settings,
                  ViewFrame &frame);

}  // namespace stage
