// The callbacks that hang on the smart-render extras.
#pragma once

#include "hostapi/smart_render.h"

namespace stage {

PF_PreRenderCallbacks pre_render_callbacks();
PF_SmartRenderCallbacks smart_render_callbacks();

/// The part of `a` that lies in `b`; empty rectangles come out as all zero.
PF_LRect intersection(const PF_LRect &a, const PF_LRect &b);
bool is_empty(const PF_LRect &rect);

}  // namespace stage
