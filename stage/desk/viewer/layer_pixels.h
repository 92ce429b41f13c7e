// Layers laid over each other in the pixels of the project's depth: what lies above an effect.
#pragma once

#include "stage/pixels/host_pixels.h"
#include "stage/project/layer_raster.h"

namespace stage {

/// Draws `layer` over `target`, both of one depth, straight alpha, by the rules of draw_over(). A
/// pixel is taken over as it is where the layer is opaque at full opacity on whole pixels or lies
/// over nothing, else rounded to the nearest code. [host thread]
void draw_over(const PixelView &target, const PixelView &layer, const Placement &placement);

/// What a comp shows where a layer of layer_width × layer_height lies, in pixels of that layer: the
/// reverse of drawing the layer. Transparent outside the comp.
HostPixels seen_from_layer(const HostPixels &comp, int layer_width, int layer_height,
                           const Placement &placement, BytePool &pool);

/// Replaces what `adjusted`, a picture of a layer's size, covers at `placement`: every pixel of
/// `target` whose centre lies inside it, mixed by the opacity, colour weighted by alpha.
void replace_covered(const PixelView &target, const PixelView &adjusted, const Placement &placement,
                     BytePool &pool);

}  // namespace stage
