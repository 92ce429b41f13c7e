// What the render hands to the scopes: the switches, and one empty panel per enabled scope.
#pragma once

#include <array>
#include <cstdint>

#include "hostapi/effect_types.h"
#include "model/scope_kind.h"

namespace ks {

inline constexpr std::size_t kHistogramBinBytes = 3072;  ///< 3 channels of 256 32-bit counters

/// The record of one frame's scopes. Borrows everything: worlds and bins belong to the render and
/// live until it has composited the panels. [host thread]
struct ScopeSet {
    /// The five show switches in the order of kScopeTable, and "Mute Active Scopes"; 0 or 1.
    std::array<std::uint8_t, kScopeKinds + 1> switches{};
    /// Enabled scopes in walk order; the first `count` entries hold.
    std::array<ScopeKind, kScopeKinds> kinds{};
    int count = 0;
    /// Panel of each scope by scope_slot, cleared, in the output's format. Null for a scope that is
    /// off, and for one so small at this resolution that its panel has no pixels.
    std::array<PF_EffectWorld *, kScopeKinds> panels{};
    /// kHistogramBinBytes bytes, contents undefined; null while the histogram is off.
    std::uint32_t *histogram_bins = nullptr;
    /// "Slice Position" as a fraction of the height, 0..1; 0 while the slice waveform is off.
    double slice_fraction = 0.0;
    int output_width = 0;  ///< pixels of the rendered frame

    [[nodiscard]] bool enabled(ScopeKind kind) const { return switches[scope_slot(kind)] != 0; }
};

}  // namespace ks
