// A world of the host's that lives for part of one frame.
#pragma once

#include "geometry/int_rect.h"
#include "hostapi/constants.h"
#include "hostapi/pf_suites.h"

namespace ks {

/// Disposes of its world when it goes, unless close() already has. Stays where it is: the host and
/// the scopes keep its address. [host thread]
class OwnedWorld {
  public:
    OwnedWorld() = default;
    ~OwnedWorld() { close(); }
    OwnedWorld(const OwnedWorld &) = delete;
    OwnedWorld &operator=(const OwnedWorld &) = delete;

    /// Creates a world of `size` pixels; `clear` makes it transparent black, otherwise its pixels
    /// are undefined. Must hold no world yet. Returns the host's error (sizes of 0 or less and
    /// over-large sizes are refused).
    PF_Err create(PF_WorldSuite2 &suite, PF_ProgPtr effect_ref, IntSize size, bool clear,
                  PF_PixelFormat format) {
        const PF_Err error =
            suite.PF_NewWorld(effect_ref, size.width, size.height,
                              clear ? PF_Boolean{1} : PF_Boolean{0}, format, &world_);
        if (error == PF_Err_NONE) {
            suite_ = &suite;
            effect_ref_ = effect_ref;
        }
        return error;
    }

    /// The world, null when there is none.
    [[nodiscard]] PF_EffectWorld *get() { return suite_ == nullptr ? nullptr : &world_; }

    /// Disposes of the world and returns the host's result; 0 and no call when there is none.
    PF_Err close() {
        if (suite_ == nullptr) return PF_Err_NONE;
        PF_WorldSuite2 &suite = *suite_;
        suite_ = nullptr;
        return suite.PF_DisposeWorld(effect_ref_, &world_);
    }

  private:
    PF_WorldSuite2 *suite_ = nullptr;
    PF_ProgPtr effect_ref_ = nullptr;
    PF_EffectWorld world_{};
};

}  // namespace ks
