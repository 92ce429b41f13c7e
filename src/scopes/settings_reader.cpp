#include "scopes/settings_reader.h"

#include "host/param_values.h"
#include "hostapi/constants.h"

namespace ks {
namespace {

void read_waveform(ErrorChain &chain, PF_InData *in_data, ScopeSettings &settings) {
    settings.waveform_mode = trace_mode(read_popup(chain, in_data, kParamWaveformShowChannels));
    settings.waveform_brightness = read_slider(chain, in_data, kParamWaveformBrightness);
}

void read_vectorscope(ErrorChain &chain, PF_InData *in_data, ScopeSettings &settings) {
    settings.monochrome = read_checkbox(chain, in_data, kParamVectorscopeMonochrome);
    settings.calibrate_for = read_popup(chain, in_data, kParamVectorscopeCalibrateFor);
    settings.vectorscope_brightness = read_slider(chain, in_data, kParamVectorscopeBrightness);
}

void read_parade(ErrorChain &chain, PF_InData *in_data, ScopeSettings &settings) {
    settings.parade_mode =
        read_popup(chain, in_data, kParamViewChannels) == 2 ? ParadeMode::kYCbCr : ParadeMode::kRgb;
    settings.parade_brightness = read_slider(chain, in_data, kParamParadeBrightness);
}

void read_histogram(ErrorChain &chain, PF_InData *in_data, ScopeSettings &settings) {
    settings.histogram_mode = read_popup(chain, in_data, kParamHistogramShowChannels) == 2
                                  ? HistogramMode::kLuma
                                  : HistogramMode::kRgb;
    settings.histogram_height = read_slider(chain, in_data, kParamHistogramHeight);
}

}  // namespace

ScopeSettings read_scope_settings(ErrorChain &chain, PF_InData *in_data, PF_PixelFormat format,
                                  const ScopeSet &scopes) {
    ScopeSettings settings;
    settings.luma_math = luma_math_of(read_popup(chain, in_data, kParamLuminanceMath));
    settings.quality = read_popup(chain, in_data, kParamSamplingQuality);
    const bool waveforms = scopes.enabled(ScopeKind::kWaveform) ||
                           scopes.enabled(ScopeKind::kParade) || scopes.enabled(ScopeKind::kSlice);
    if (format == PF_PixelFormat_ARGB128 && waveforms) {
        settings.max_waveform_scale = read_slider(chain, in_data, kParamMaxWaveformScale);
    }
    if (scopes.enabled(ScopeKind::kWaveform)) read_waveform(chain, in_data, settings);
    if (scopes.enabled(ScopeKind::kVectorscope)) read_vectorscope(chain, in_data, settings);
    if (scopes.enabled(ScopeKind::kParade)) read_parade(chain, in_data, settings);
    if (scopes.enabled(ScopeKind::kSlice)) {
        settings.slice_mode = trace_mode(read_popup(chain, in_data, kParamSliceShowChannels));
    }
    if (scopes.enabled(ScopeKind::kHistogram)) read_histogram(chain, in_data, settings);
    return settings;
}

}  // namespace ks
