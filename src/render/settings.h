// The parameters of one frame, read once at the frame's time.
#pragma once

#include <array>
#include <cstdint>

#include "host/error_chain.h"
#include "hostapi/in_out_data.h"
#include "model/param_table.h"
#include "model/scope_kind.h"
#include "pixels/luma.h"

namespace ks {

/// Other popup values are 1-based and kept as the host gives them.
struct RenderSettings {
    /// The five show switches in the order of kScopeTable, and "Mute Active Scopes"; 0 or 1.
    std::array<std::uint8_t, kScopeKinds + 1> switches{};
    std::int32_t monitor_layout = 0;
    std::int32_t primary_view = 0;
    std::int32_t view_channels = 0;
    double monitor_gamma = 1.0;
    double monitor_gain = 1.0;
    std::int32_t apply_corrections = 0;
    LumaMath luma_math = LumaMath::k601;
    /// Size parameter of each enabled scope by scope_slot, pixels at full resolution.
    std::array<double, kScopeKinds> scope_sizes{};
    double slice_fraction = 0.0;  ///< "Slice Position" * 0.01, read only with the slice waveform on
    std::int32_t scopes_aspect = 0;

    [[nodiscard]] bool shows(ScopeKind kind) const { return switches[scope_slot(kind)] != 0; }
    [[nodiscard]] bool shows_any_scope() const;
};

inline constexpr std::int32_t kPreScopes = 1;  ///< "Apply Corrections": measure the corrected image
inline constexpr std::int32_t kPostScopes = 2;  ///< "Apply Corrections": measure the input
inline constexpr std::int32_t kViewYCbCr = 2;   ///< "View Channels": Y, Cb, Cr tiles

/// Reads the settings in this order: the six switches, layout, view, channels, gamma, gain,
/// corrections, luminance math, the size of each enabled scope in walk order (the slice waveform's
/// followed by its "Slice Position"), the scopes' aspect ratio. [host thread]
RenderSettings read_settings(ErrorChain &chain, PF_InData *in_data);

}  // namespace ks
