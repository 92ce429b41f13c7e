// Switches of the embedded host, among them the points where the real host's behaviour is
// uncertain.
#pragma once

#include <cstdint>

#include "stage/host/schedule.h"
#include "stage/ledger/world_store.h"

namespace stage {

/// Defaults are the likely behaviour of the real host.
struct HostOptions {
    Depth depth = Depth::U8;  ///< of the project
    Schedule schedule;
    WorldLayout worlds{16, 0, true};  ///< layout of every world that the host makes
    bool strict = true;
    bool separate_render_copy = false;    ///< render against a copy of the instance's sequence data
    bool adopt_replaced_sequence = true;  ///< take a new sequence handle from USER_CHANGED_PARAM
    bool honour_refresh_values = false;   ///< take CHANGED_VALUE from UPDATE_PARAMS_UI
    bool clamp_written_values = true;   ///< clamp values that the plug-in writes to the valid range
    bool clamp_written_points = false;  ///< and points with bounds to the layer
    bool carry_send_drag = true;        ///< drags go on without send_drag being set again in each
    bool drags_as_clicks = false;       ///< the old form: DO_CLICK with send_drag set
    bool events_at_view_ratio = false;  ///< events carry the view's downsample ratio, not 1/1
    bool null_drawing_reference = false;  ///< PF_GetDrawingReference succeeds with null
    bool events_say_dont_draw = false;    ///< PF_EI_DONT_DRAW in every event
    bool project_locked = false;    ///< project changes fail with 6, as in a read-only project
    bool scripts_fail = false;      ///< every script call fails
    bool null_basic_suite = false;  ///< pica_basicP is null
    bool user_cancels = false;      ///< the abort callback answers 517
    std::int64_t cancel_at_abort_call = 0;  ///< when > 0: only the N-th abort call of a command
};

}  // namespace stage
