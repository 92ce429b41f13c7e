#include "scopes/context/context_setup.h"

#include <algorithm>

#include "geometry/frame_scale.h"
#include "geometry/int_rect.h"

namespace ks {
namespace {

float trace_gain(double brightness, double factor, double scope_factor) {
    return static_cast<float>(brightness * 0.01 * factor * scope_factor);
}

constexpr double kTraceFactor = 1.5;
constexpr double kParadeFactor = 0.75;  ///< half of the others', since its columns are denser

IntSize size_of_view(const WorldView &view) {
    return {view.width, view.height};
}

/// The slider goes from 100 to 200 percent. Far beyond, in a damaged project, nothing could be read
/// off a scale; it counts as 100 then.
bool is_usable_scale(double percent) {
    return percent >= 1.0 && percent <= 10000.0;
}

void set_up_waveform(const ScopeSettings &settings, const LayoutUnits &units,
                     ScopeSampleContext &c) {
    const TraceArea area = trace_area(size_of_view(c.waveformBitmap), units);
    c.waveformMode = settings.waveform_mode;
    c.waveformLeft = area.left;
    c.waveformBottom = area.bottom;
    c.waveformSpan = area.span;
    c.waveformXScale = static_cast<double>(area.right - area.left) / c.source.width;
    if (!(c.waveformXScale > 0.0)) c.waveformOn = 0;
    if (c.waveformOn != 0 && c.waveformMode != TraceMode::kRgb) c.needLuma = 1;
    c.waveformGain = trace_gain(settings.waveform_brightness,
                                sampling_quality(settings.quality).factor, kTraceFactor);
    c.lumaColour = scaled(kLumaTrace, c.waveformGain);
}

void set_up_parade(const ScopeSettings &settings, const LayoutUnits &units, ScopeSampleContext &c) {
    const TraceArea area = trace_area(size_of_view(c.paradeBitmap), units);
    const int width = (area.right - area.left) / 3;
    c.paradeMode = settings.parade_mode;
    c.paradeColumns = {area.left, area.left + width, area.left + 2 * width};
    c.paradeBottom = area.bottom;
    c.paradeAnchorBottom = area.bottom;
    c.paradeSpan = area.span;
    c.paradeCentreOffset = c.paradeSpan * 0.5;
    c.paradeValueScale = c.valueScale;
    c.paradeXScale = static_cast<double>(width) / c.source.width;
    if (width <= 0) c.paradeOn = 0;
    c.paradeGain = trace_gain(settings.parade_brightness, sampling_quality(settings.quality).factor,
                              kParadeFactor);
    const bool difference = c.paradeMode == ParadeMode::kYCbCr;
    if (c.paradeOn != 0 && difference) c.needLuma = 1;
    const std::array<Colour, 3> colours =
        difference ? std::array<Colour, 3>{kLumaTrace, kCbTrace, kCrTrace}
                   : std::array<Colour, 3>{kRedTrace, kGreenTrace, kBlueTrace};
    for (std::size_t k = 0; k < 3; ++k) c.paradeColours[k] = scaled(colours[k], c.paradeGain);
}

void set_up_vectorscope(const ScopeSettings &settings, const LayoutUnits &units,
                        ScopeSampleContext &c) {
    const int width = c.vectorscopeBitmap.width;
    const int height = c.vectorscopeBitmap.height;
    c.needLuma = 1;
    c.vectorscopeCentreX = trunc_to_int(width * 0.5);
    c.vectorscopeCentreY = trunc_to_int((height - units.label_band) * 0.5 + units.label_band);
    c.vectorscopeLeft = units.vector_inset;
    c.vectorscopeRight = width - units.vector_inset;
    c.vectorscopeTop = units.label_band + units.gap;
    c.vectorscopeBottom = height - units.gap;
    c.cbGain = c.vectorscopeRight - c.vectorscopeLeft;
    c.crGain = c.vectorscopeBottom - c.vectorscopeTop;
    const int choice = std::clamp(settings.calibrate_for, 1, 4);
    c.calibrationGain = static_cast<float>(100.0 / ((5 - choice) * 25));
    c.vectorscopeGain = trace_gain(settings.vectorscope_brightness,
                                   sampling_quality(settings.quality).factor, kTraceFactor);
    c.monochrome = settings.monochrome ? 1 : 0;
    c.monochromeColour = scaled(kLumaTrace, c.vectorscopeGain);
}

void set_up_histogram(const ScopeSettings &settings, ScopeSampleContext &c) {
    c.histogramRgb = settings.histogram_mode;
    if (c.histogramRgb == HistogramMode::kLuma) c.needLuma = 1;
    const int channels = c.histogramRgb == HistogramMode::kLuma ? 1 : 3;
    std::fill(c.histogramBins, c.histogramBins + channels * kHistogramBins, 0u);
    c.histogramMax = {1, 1, 1};
}

void set_switches(const SampledFrame &frame, ScopeSampleContext &c) {
    const auto on = [&](ScopeKind kind) {
        const std::size_t slot = scope_slot(kind);
        const WorldView &panel = frame.panels[slot];
        const bool has_pixels = panel.base != nullptr && panel.width > 0 && panel.height > 0;
        return static_cast<std::uint8_t>(frame.switches[slot] != 0 && has_pixels ? 1 : 0);
    };
    c.waveformOn = on(ScopeKind::kWaveform);
    c.vectorscopeOn = on(ScopeKind::kVectorscope);
    c.paradeOn = on(ScopeKind::kParade);
    c.sliceOn = on(ScopeKind::kSlice);
    c.histogramOn = static_cast<std::uint8_t>(
        on(ScopeKind::kHistogram) != 0 && frame.histogram_bins != nullptr ? 1 : 0);
    c.muted = frame.switches.back();
}

}  // namespace

ScopeSampleContext make_sample_context(const SampledFrame &frame, const ScopeSettings &settings,
                                       const LayoutUnits &units) {
    ScopeSampleContext c;
    set_switches(frame, c);
    c.source = frame.source;
    c.lumaMath = settings.luma_math;
    c.stepX = c.stepY = sampling_quality(settings.quality).step;
    c.topY = units.label_band;
    c.subPixel = frame.high_quality ? 1 : 0;
    c.pixelFormat = frame.format;
    if (frame.format == kFormatF && is_usable_scale(settings.max_waveform_scale)) {
        c.valueScale = 100.0 / settings.max_waveform_scale;
    }
    c.waveformBitmap = frame.panels[scope_slot(ScopeKind::kWaveform)];
    c.paradeBitmap = frame.panels[scope_slot(ScopeKind::kParade)];
    c.vectorscopeBitmap = frame.panels[scope_slot(ScopeKind::kVectorscope)];
    c.histogramBins = frame.histogram_bins;
    if (c.source.width <= 0 || c.source.height <= 0) c.source = {};
    if (c.waveformOn != 0 && c.source.width > 0) set_up_waveform(settings, units, c);
    if (c.vectorscopeOn != 0) set_up_vectorscope(settings, units, c);
    if (c.paradeOn != 0 && c.source.width > 0) set_up_parade(settings, units, c);
    if (c.histogramOn != 0) set_up_histogram(settings, c);
    return c;
}

}  // namespace ks
