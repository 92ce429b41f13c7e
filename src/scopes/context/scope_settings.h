// The parameters that say how the scopes measure and how bright their traces are.
#pragma once

#include <cstdint>

#include "scopes/context/sample_context.h"

namespace ks {

/// Read once per frame; scopes that are off keep the initial values. No host types.
struct ScopeSettings {
    LumaMath luma_math = LumaMath::k601;
    std::int32_t quality = 3;           ///< "Sampling Quality": 1 low, 2 medium, else high
    double max_waveform_scale = 100.0;  ///< percent; read for float pictures only
    TraceMode waveform_mode = TraceMode::kLuma;
    double waveform_brightness = 100.0;  ///< percent, like the others
    double vectorscope_brightness = 100.0;
    double parade_brightness = 100.0;
    bool monochrome = true;
    std::int32_t calibrate_for = 1;  ///< 1 100%, 2 75%, 3 50%, 4 25%
    ParadeMode parade_mode = ParadeMode::kRgb;
    TraceMode slice_mode = TraceMode::kRgbAndLuma;
    HistogramMode histogram_mode = HistogramMode::kRgb;
    double histogram_height = 60.0;  ///< "Scope Height", full-resolution pixels
};

/// Sampling steps and what keeps the brightness independent of them.
struct SamplingQuality {
    std::int32_t step;  ///< in columns and rows
    double factor;      ///< 0.125 * step^2
};
constexpr SamplingQuality sampling_quality(std::int32_t choice) {
    switch (choice) {
        case 1:
            return {4, 2.0};
        case 2:
            return {2, 0.5};
        default:
            return {1, 0.125};
    }
}

/// Popup values of "Show Channels" other than 2 and 3 show everything.
constexpr TraceMode trace_mode(std::int32_t choice) {
    return choice == 2 ? TraceMode::kRgb : choice == 3 ? TraceMode::kLuma : TraceMode::kRgbAndLuma;
}

}  // namespace ks
