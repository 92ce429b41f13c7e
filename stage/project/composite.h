// What lies beneath a layer of a comp: the picture that an adjustment layer's effect receives.
#pragma once

#include <cstdint>

#include "stage/project/project.h"

namespace stage {

/// The comp-sized picture of all visible layers beneath layer `below_layer_index` of `comp`
/// (0-based from the top; -1 for all layers) at `frame` (0-based), straight alpha, transparent
/// black where nothing is.
///
/// Drawn from the bottom up: footage, solids and nested comps with their video on, at their
/// position and scale (bilinear between pixel centres, transparent outside; different pixel aspects
/// are evened out) with their opacity. Adjustment layers, null layers and text layers add nothing.
/// Effects of other layers are not applied. Guide layers are shown in their own comp but not where
/// that comp is nested in another one.
///
/// Samples of a pixel are copied unchanged, NaN and infinities included, where a layer at full
/// opacity that sits on whole pixels at scale 100 is opaque or lies over nothing. Where alphas are
/// blended they count as clamped to 0..1, NaN as 0.
///
/// Throws ProjectError when `comp` is no composition and PictureError when footage cannot be read.
/// [host thread, render thread]
Picture composite(const Project &project, ItemId comp, int below_layer_index, std::int64_t frame);

/// The picture of an item by itself, in its own size: footage at `frame` (a still at every frame;
/// transparent outside its duration), a solid, or a comp as it looks when nested.
Picture item_picture(const Project &project, ItemId item, std::int64_t frame);

}  // namespace stage
