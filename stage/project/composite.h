// What lies beneath a layer of a comp: the picture that an adjustment layer's effect receives.
#pragma once

#include <cstdint>

#include "stage/project/layer_raster.h"
#include "stage/project/project.h"
#include "stage/project/resolution.h"

namespace stage {

/// Layers of a comp that are drawn together.
struct StackPart {
    ItemId comp = 0;
    int below = -1;       ///< only the layers beneath this index, 0-based from the top; -1 for all
    bool nested = false;  ///< as shown in another comp: without guide layers
};

/// True when a layer with these properties adds a picture of its own to its comp: video on, a
/// source, opacity above 0, no adjustment or null layer and, in a nested comp, no guide layer.
bool is_drawn(const Layer &layer, bool nested);
/// 0..1; NaN gives 0.
float opacity_of(const Layer &layer);
/// Where the picture of `layer`, reduced to `resolution`, lands in the picture of `comp`.
Placement placement_of(const Layer &layer, const Item &source, const Item &comp,
                       Resolution resolution);

/// The picture of the layers of `part` at `frame` (0-based), of the comp's size at `resolution`,
/// straight alpha, transparent black where nothing is.
///
/// Drawn from the bottom up: footage, solids and nested comps with their video on, at their
/// position and scale (bilinear between pixel centres, transparent outside; different pixel aspects
/// are evened out) with their opacity. Adjustment layers, null layers and text layers add nothing.
/// Effects of other layers are not applied. Guide layers are shown in their own comp but not where
/// that comp is nested in another one. At reduced resolution every source is reduced and then drawn
/// at that resolution.
///
/// Samples of a pixel are copied unchanged, NaN and infinities included, where a layer at full
/// opacity that sits on whole pixels at scale 100 is opaque or lies over nothing. Where alphas are
/// blended they count as clamped to 0..1, NaN as 0.
///
/// Throws ProjectError when `comp` is no composition and PictureError when footage cannot be read.
/// [host thread, render thread]
Picture composite(const Project &project, const StackPart &part, std::int64_t frame,
                  Resolution resolution);
/// At full resolution, not nested.
Picture composite(const Project &project, ItemId comp, int below_layer_index, std::int64_t frame);

/// The picture of an item by itself, in its own size at `resolution`: footage at `frame` (a still
/// at every frame; transparent outside its duration), a solid, or a comp as it looks when nested.
Picture item_picture(const Project &project, ItemId item, std::int64_t frame,
                     Resolution resolution = {});

}  // namespace stage
