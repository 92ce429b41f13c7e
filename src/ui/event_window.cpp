#include "ui/event_window.h"

#include "host/error_chain.h"
#include "hostapi/constants.h"

namespace ks {
namespace {

PF_WindowType window_type(const PF_EventExtra &extra) {
    if (extra.contextH == nullptr || *extra.contextH == nullptr) return PF_Window_NONE;
    return (*extra.contextH)->w_type;
}

std::optional<FixedPoint> result_of(const ErrorChain &chain, PF_FixedPoint point) {
    if (!chain.ok()) return std::nullopt;
    return FixedPoint{point.x, point.y};
}

}  // namespace

bool EventWindow::shows_handles() const {
    return in_composition() || window_type(extra_) == PF_Window_LAYER;
}

bool EventWindow::in_composition() const {
    return window_type(extra_) == PF_Window_COMP;
}

std::optional<FixedPoint> EventWindow::to_window(LayerPoint point) const {
    const PF_EventCallbacks &cbs = extra_.cbs;
    PF_FixedPoint fixed{to_fixed(point.x), to_fixed(point.y)};
    ErrorChain chain;
    if (in_composition()) {
        chain.step([&] {
            return cbs.layer_to_comp(cbs.refcon, extra_.contextH, in_data_.current_time,
                                     static_cast<A_long>(in_data_.time_scale), &fixed);
        });
    }
    chain.step([&] { return cbs.source_to_frame(cbs.refcon, extra_.contextH, &fixed); });
    return result_of(chain, fixed);
}

std::optional<FixedPoint> EventWindow::to_layer(WindowPoint point) const {
    const PF_EventCallbacks &cbs = extra_.cbs;
    PF_FixedPoint fixed{to_fixed(point.x), to_fixed(point.y)};
    ErrorChain chain;
    chain.step([&] { return cbs.frame_to_source(cbs.refcon, extra_.contextH, &fixed); });
    if (in_composition()) {
        chain.step([&] {
            return cbs.comp_to_layer(cbs.refcon, extra_.contextH, in_data_.current_time,
                                     static_cast<A_long>(in_data_.time_scale), &fixed);
        });
    }
    return result_of(chain, fixed);
}

}  // namespace ks
