#include "stage/drawbot/surface_state.h"

#include <cmath>

namespace stage {

void SurfaceStates::restart(const Bounds &window) {
    states_.assign(1, SurfaceState{});
    states_.back().clip = window;
}

bool SurfaceStates::pop() {
    if (states_.size() <= 1) return false;
    states_.pop_back();
    return true;
}

void SurfaceStates::clip(const Bounds &rect) {
    now().clip = now().clip.within(mapped(now().transform, rect));
}

Bounds SurfaceStates::clip_bounds() const {
    const SurfaceState &state = states_.back();
    const std::optional<Affine> back = state.transform.inverse();
    if (!back) return {};
    const Bounds bounds = mapped(*back, state.clip);
    // What was computed a hair beyond a whole number is that number.
    constexpr double kHair = 1e-6;
    return {std::floor(bounds.left + kHair), std::floor(bounds.top + kHair),
            std::ceil(bounds.right - kHair), std::ceil(bounds.bottom - kHair)};
}

}  // namespace stage
