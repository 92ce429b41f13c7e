// The window of an event: conversions between its pixels and the layer's.
#pragma once

#include <optional>

#include "hostapi/events.h"
#include "ui/handles/hit_test.h"

namespace ks {

/// Converts through the event's callbacks at the current time of `in_data`. In the composition
/// window a point passes through the composition, in the layer window it does not. Lives for one
/// event. [host thread]
class EventWindow final : public WindowMap {
  public:
    EventWindow(const PF_InData &in_data, PF_EventExtra &extra)
        : in_data_(in_data), extra_(extra) {}

    /// True in the two windows that show handles.
    [[nodiscard]] bool shows_handles() const;

    /// Layer pixels to 16.16 window pixels; none when the host refuses.
    [[nodiscard]] std::optional<FixedPoint> to_window(LayerPoint point) const override;

    /// Window pixels to 16.16 layer pixels; none when the host refuses.
    [[nodiscard]] std::optional<FixedPoint> to_layer(WindowPoint point) const;

  private:
    [[nodiscard]] bool in_composition() const;

    const PF_InData &in_data_;
    PF_EventExtra &extra_;
};

}  // namespace ks
