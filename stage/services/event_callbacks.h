// The coordinate callbacks that an effect gets with an event.
#pragma once

#include "hostapi/events.h"
#include "stage/drawbot/viewport.h"
#include "stage/project/layer_map.h"

namespace stage {

/// What the callbacks of one event convert with; the refcon of the event's callbacks.
struct EventConversion {
    PF_ContextH context = nullptr;
    LayerMap layer;
    Viewport viewport;
};

/// Callbacks over `conversion`, which must live as long as the event. Points are 16.16 and saturate
/// where a result does not fit. A layer of scale zero cannot be converted back: error 3. Foreign
/// contexts are findings, "event.context".
PF_EventCallbacks event_callbacks(EventConversion &conversion);

}  // namespace stage
