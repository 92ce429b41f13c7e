// Events of viewers, as one command of the plug-in.
#include <algorithm>

#include "hostapi/constants.h"
#include "stage/session/session.h"

namespace stage {
namespace {

bool marks_values(const std::vector<PF_ParamDef> &params) {
    return std::ranges::any_of(params, [](const PF_ParamDef &def) {
        return (def.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) != 0;
    });
}

}  // namespace

CommandResult Session::send_event(EffectInstance &instance, PF_EventExtra &extra,
                                  std::int64_t frame, int downsample, bool takes_values,
                                  std::vector<int> &changed) {
    CommandContext context = context_of(instance);
    context.current_time = static_cast<A_long>(frame);
    context.extra = &extra;
    context.with_params = true;
    if (host.options.events_at_view_ratio) {
        context.downsample_x = {1, static_cast<A_u_long>(downsample)};
        context.downsample_y = context.downsample_x;
    }
    return caller.call(PF_Cmd_EVENT, context, [&](const std::vector<PF_ParamDef> &params) {
        if (takes_values) {
            changed = adopt_values(instance, params);
        } else if (marks_values(params)) {
            host.strict.report("event.value", host.command(),
                               "a value was changed in an event that takes none");
        }
    });
}

}  // namespace stage
