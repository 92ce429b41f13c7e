// The effect's 69 parameters: one row each, in the host's order. No host types.
#pragma once

#include <array>
#include <cstdint>

namespace ks {

/// Index of a parameter in the host's array. The order is fixed: projects and scripts rely on it.
/// Where panel names repeat, the group leads the name.
enum Param : std::int32_t {
    kParamInput,
    kParamMonitorGroup,
    kParamMonitorLayout,
    kParamPrimaryMonitorGroup,
    kParamMonitorPosition,
    kParamMonitorSize,
    kParamPrimaryMonitorView,
    kParamMonitorGamma,
    kParamMonitorGain,
    kParamApplyCorrections,
    kParamOriginalSource,
    kParamCompareWithOriginal,
    kParamCompareOpacity,
    kParamPrimaryMonitorEnd,
    kParamChannelsGroup,
    kParamViewChannels,
    kParamChannelsEnd,
    kParamMonitorEnd,
    kParamScopesGroup,
    kParamShowWaveformMonitor,
    kParamShowVectorscope,
    kParamShowChannelParade,
    kParamShowSliceWaveform,
    kParamShowHistogram,
    kParamMuteActiveScopes,
    kParamWaveformGroup,
    kParamWaveformShowChannels,
    kParamWaveformPosition,
    kParamWaveformWidth,
    kParamWaveformBrightness,
    kParamWaveformEnd,
    kParamVectorscopeGroup,
    kParamVectorscopeGraticule,
    kParamVectorscopeMonochrome,
    kParamVectorscopeCalibrateFor,
    kParamVectorscopeSkinToneLine,
    kParamVectorscopeReferenceLine,
    kParamVectorscopeReferenceColour,
    kParamVectorscopePosition,
    kParamVectorscopeSize,
    kParamVectorscopeBrightness,
    kParamVectorscopeEnd,
    kParamParadeGroup,
    kParamParadePosition,
    kParamParadeWidth,
    kParamParadeBrightness,
    kParamParadeEnd,
    kParamSliceGroup,
    kParamSliceShowChannels,
    kParamSliceLine,
    kParamSlicePosition,
    kParamSliceWidth,
    kParamSliceEnd,
    kParamHistogramGroup,
    kParamHistogramShowChannels,
    kParamHistogramPosition,
    kParamHistogramHeight,
    kParamHistogramEnd,
    kParamOptionsGroup,
    kParamLuminanceMath,
    kParamMaxWaveformScale,
    kParamWaveformAspectRatio,
    kParamWaveformScale,
    kParamWaveformGuides,
    kParamSamplingQuality,
    kParamLockLayerPosition,
    kParamOptionsEnd,
    kParamScopesEnd,
    kParamReset,
    kParamCount
};
static_assert(kParamCount == 69);

/// Parameter types, with the host's numbers.
enum class ParamKind : std::int32_t {
    layer = 0,
    checkbox = 4,
    color = 5,
    point = 6,
    popup = 7,
    float_slider = 10,
    group_start = 13,
    group_end = 14,
};

/// Bits of ParamRow::flags, with the host's numbers.
enum ParamFlag : std::int32_t {
    kFlagCannotTimeVary = 2,
    kFlagCannotInterpolate = 4,
    kFlagCollapseTwirly = 32,
    kFlagSupervise = 64,
};

/// Bit of ParamRow::ui_flags, with the host's number.
inline constexpr std::int32_t kUiSeparator = 16;

/// One parameter as it is added. Fields that do not belong to `kind` are zero or empty.
struct ParamRow {
    Param index;
    ParamKind kind;
    /// Permanent identity in saved projects, 0 for the input layer and for group ends. Ids are not
    /// in index order, are never renumbered, and 43 is retired.
    std::int32_t id;
    const char *name = "";  ///< ASCII, at most 31 characters
    std::int32_t flags = 0;
    std::int32_t ui_flags = 0;
    const char *choices = "";  ///< popup
    const char *label = "";    ///< checkbox: text beside the box
    /// Popup: 1-based choice. Checkbox: 0 or 1. Float slider: in the slider's units. The first
    /// value always equals the default.
    double default_value = 0.0;
    double min = 0.0;  ///< float slider: of the valid and of the slider range alike
    double max = 0.0;
    std::int32_t precision = 0;  ///< float slider: decimals shown
    bool percent = false;        ///< float slider: shows a percent sign
    std::int32_t x_default = 0;  ///< point: percent of the layer's width, 16.16
    std::int32_t y_default = 0;  ///< point: percent of the layer's height, 16.16
};

/// The rows, row i describing the parameter with index i; row 0 is the input layer, which the host
/// adds itself.
extern const std::array<ParamRow, kParamCount> kParamTable;

}  // namespace ks
