// The five scopes: one table that the render, the scopes, the panel and the handles read. No host
// types.
#pragma once

#include <array>
#include <cstdint>

#include "model/param_table.h"

namespace ks {

/// Scope kind codes, as saved in the stacking order of projects.
enum class ScopeKind : std::int8_t {
    kWaveform = 1,
    kVectorscope = 2,
    kParade = 3,
    kSlice = 4,
    kHistogram = 5
};
inline constexpr int kScopeKinds = 5;

/// How a scope's panel size follows from its size parameter.
enum class ScopeSizeRule {
    kWidthTimesAspect,  ///< the parameter is the width, the height follows the aspect choice
    kSquare,            ///< the parameter is both
    kFixedWidth         ///< the parameter is the height
};

struct ScopeRow {
    ScopeKind kind;
    const char *title;
    Param show;      ///< its "Show ..." checkbox
    Param position;  ///< its group's "Scope Position"
    Param size;      ///< its group's "Scope Width", "Scope Size" or "Scope Height"
    ScopeSizeRule size_rule;
};

/// Row i describes the scope with kind code i + 1; the show switches are kept in the same order.
inline constexpr std::array<ScopeRow, kScopeKinds> kScopeTable{{
    {ScopeKind::kWaveform, "Waveform Monitor", kParamShowWaveformMonitor, kParamWaveformPosition,
     kParamWaveformWidth, ScopeSizeRule::kWidthTimesAspect},
    {ScopeKind::kVectorscope, "Vectorscope", kParamShowVectorscope, kParamVectorscopePosition,
     kParamVectorscopeSize, ScopeSizeRule::kSquare},
    {ScopeKind::kParade, "Channel Parade", kParamShowChannelParade, kParamParadePosition,
     kParamParadeWidth, ScopeSizeRule::kWidthTimesAspect},
    {ScopeKind::kSlice, "Slice Waveform", kParamShowSliceWaveform, kParamSlicePosition,
     kParamSliceWidth, ScopeSizeRule::kWidthTimesAspect},
    {ScopeKind::kHistogram, "Histogram", kParamShowHistogram, kParamHistogramPosition,
     kParamHistogramHeight, ScopeSizeRule::kFixedWidth},
}};

/// The order in which a frame's panels are made and first stacked. The parade comes before the
/// vectorscope, unlike in the switches: saved stacking orders rely on it.
inline constexpr std::array<ScopeKind, kScopeKinds> kScopeWalkOrder{
    ScopeKind::kWaveform, ScopeKind::kParade, ScopeKind::kVectorscope, ScopeKind::kSlice,
    ScopeKind::kHistogram};

/// Position of `kind` in kScopeTable and in every per-scope array.
constexpr std::size_t scope_slot(ScopeKind kind) {
    return static_cast<std::size_t>(kind) - 1;
}

/// True for the codes 1 to 5; a damaged project may hold any other.
constexpr bool is_scope_code(int code) {
    return code >= 1 && code <= kScopeKinds;
}

}  // namespace ks
