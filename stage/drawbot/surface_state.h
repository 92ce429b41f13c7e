// The drawing state of a surface, as far as its effect can ask for it.
#pragma once

#include <vector>

#include "stage/drawbot/affine.h"

namespace stage {

/// What push and pop keep.
struct SurfaceState {
    Affine transform;  ///< surface coordinates to window pixels
    Bounds clip;       ///< window pixels; around what is clipped when a transform has turned it
    int interpolation = 0;  ///< kDRAWBOT_InterpolationPolicy_*
    int antialias = 0;      ///< kDRAWBOT_AntiAliasPolicy_*
};

/// A stack of states, the present one on top; never empty.
class SurfaceStates {
  public:
    /// One state: clipped to `window`, the rest as in SurfaceState.
    void restart(const Bounds &window);
    SurfaceState &now() { return states_.back(); }
    void push() { states_.push_back(states_.back()); }
    /// False, and nothing done, when there was no push.
    bool pop();
    /// Pushes that were not popped.
    int pushed() const { return static_cast<int>(states_.size()) - 1; }

    void clip(const Bounds &rect);
    /// The clip in the coordinates of the present transform, edges moved outward to whole numbers;
    /// empty when everything is clipped away or the transform cannot be undone.
    Bounds clip_bounds() const;

  private:
    std::vector<SurfaceState> states_{1};
};

}  // namespace stage
