// The offscreen panels of one frame's scopes, and the histogram's bins.
#pragma once

#include <array>
#include <optional>

#include "host/error_chain.h"
#include "host/owned_world.h"
#include "host/scoped.h"
#include "render/frame.h"
#include "render/settings.h"
#include "scopes/scope_set.h"

namespace ks {

/// Owns what a ScopeSet borrows. [host thread]
class ScopePanels {
  public:
    /// Appends each enabled scope in walk order and creates its cleared panel; the histogram also
    /// gets its locked bins (error 4 when they cannot be had). Stops at the first error. A panel
    /// that would have no pixels at this resolution is left out, its scope stays listed.
    void create(ErrorChain &chain, const Frame &frame, const RenderSettings &settings);

    [[nodiscard]] ScopeSet &set() { return set_; }

    /// The scope's panel, null when it has none or it was disposed of.
    [[nodiscard]] PF_EffectWorld *panel(ScopeKind kind) { return panels_[scope_slot(kind)].get(); }

    /// Disposes of one panel; 0 when there is none.
    PF_Err dispose(ScopeKind kind);

    /// Disposes of everything left, in walk order, then unlocks and frees the bins.
    void close(ErrorChain &chain);

  private:
    PF_Err create_panel(const Frame &frame, const RenderSettings &settings, double aspect,
                        ScopeKind kind);
    PF_Err create_bins(const Frame &frame);

    ScopeSet set_;
    std::array<OwnedWorld, kScopeKinds> panels_;
    // Declared in this order so that the lock goes before the handle.
    std::optional<OwnedHandle> bins_;
    std::optional<LockedHandle<std::uint32_t>> bins_lock_;
};

}  // namespace ks
