// Fills the sampling record from the settings and the panels. No host types.
#pragma once

#include <array>

#include "geometry/scope_layout.h"
#include "model/scope_kind.h"
#include "scopes/context/sample_context.h"
#include "scopes/context/scope_settings.h"

namespace ks {

/// What the frame gives: borrowed views, all of `format`.
struct SampledFrame {
    std::array<std::uint8_t, kScopeKinds + 1> switches{};  ///< by kScopeTable, then "Mute"
    std::array<WorldView, kScopeKinds> panels{};  ///< by scope_slot; no pixels for one that is off
    WorldView source;
    FormatCode format = 0;
    bool high_quality = false;  ///< the host's render quality: splits waveform samples
    std::uint32_t *histogram_bins = nullptr;
};

/// The record for one frame; bins, maxima and flags are cleared, with every maximum at least 1. A
/// scope without a panel, or whose panel is too narrow for its columns, is off in it.
ScopeSampleContext make_sample_context(const SampledFrame &frame, const ScopeSettings &settings,
                                       const LayoutUnits &units);

}  // namespace ks
