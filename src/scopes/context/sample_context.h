// The record of one frame's sampling: what is shown, where it lies, how bright it is, what was met.
// No host types.
#pragma once

#include <array>
#include <cstdint>

#include "pixels/luma.h"
#include "pixels/pixel_format.h"
#include "pixels/world_view.h"

namespace ks {

/// "Show Channels" of the waveform and slice scopes.
enum class TraceMode : std::uint8_t { kRgbAndLuma = 1, kRgb = 2, kLuma = 3 };

enum class ParadeMode : std::uint8_t { kRgb = 2, kYCbCr = 4 };

/// "Show Channels" of the histogram.
enum class HistogramMode : std::uint8_t { kRgb = 1, kLuma = 2 };

inline constexpr int kHistogramBins = 256;  ///< per channel

/// What the workers of the sampling pass are told. Filled once per frame; the pass writes nothing
/// in it but the two over-range flags and what the pointers lead to. Bitmaps are the panels, in the
/// source's format; a scope that has no panel is not on. Colours are straight ARGB.
struct ScopeSampleContext {
    std::uint8_t waveformOn = 0;
    std::uint8_t vectorscopeOn = 0;
    std::uint8_t paradeOn = 0;
    std::uint8_t sliceOn = 0;
    std::uint8_t histogramOn = 0;
    std::uint8_t muted = 0;
    WorldView source;
    LumaMath lumaMath = LumaMath::k601;
    std::int32_t stepX = 1;  ///< sampling steps, source pixels: 1, 2 or 4
    std::int32_t stepY = 1;
    std::int32_t topY = 0;       ///< top clamp of every waveform-type trace
    std::int32_t subPixel = 0;   ///< the render's quality; 1 splits waveform samples
    FormatCode pixelFormat = 0;  ///< of `source` and of the bitmaps
    std::uint8_t needLuma = 0;   ///< some scope that is on reads Y; Y stays 0 otherwise
    TraceMode waveformMode = TraceMode::kLuma;
    std::int32_t waveformLeft = 0;    ///< x of the trace area
    std::int32_t waveformBottom = 0;  ///< y of value 0
    double waveformSpan = 0.0;        ///< pixels from value 0 to value 1.0
    double valueScale = 1.0;          ///< multiplies values before they are placed
    std::uint8_t waveformOverRange = 0;
    WorldView waveformBitmap;
    Colour lumaColour{};          ///< the gain is in it
    double waveformXScale = 0.0;  ///< bitmap pixels per source column
    float waveformGain = 0.0f;

    WorldView vectorscopeBitmap;
    Colour monochromeColour{};  ///< the gain is in it
    double cbGain = 0.0;        ///< width of the clip box
    double crGain = 0.0;        ///< height of the clip box
    std::int32_t vectorscopeCentreX = 0;
    std::int32_t vectorscopeCentreY = 0;
    std::int32_t vectorscopeLeft = 0;  ///< clip box; right and bottom are inside
    std::int32_t vectorscopeRight = 0;
    std::int32_t vectorscopeTop = 0;
    std::int32_t vectorscopeBottom = 0;
    float calibrationGain = 1.0f;
    float vectorscopeGain = 0.0f;
    std::uint8_t monochrome = 0;

    ParadeMode paradeMode = ParadeMode::kRgb;
    std::int32_t paradeBottom = 0;
    double paradeSpan = 0.0;
    double paradeValueScale = 1.0;
    std::uint8_t paradeOverRange = 0;
    WorldView paradeBitmap;
    std::array<Colour, 3> paradeColours{};        ///< one per column; the gain is in them
    std::array<std::int32_t, 3> paradeColumns{};  ///< left x of each column
    std::int32_t paradeAnchorBottom = 0;          ///< y of value 0 of the columns
    double paradeCentreOffset = 0.0;              ///< lifts the colour-difference columns' zero
    double paradeXScale = 0.0;                    ///< bitmap pixels per source column
    float paradeGain = 0.0f;

    std::uint32_t *histogramBins = nullptr;  ///< red at 0, green at 256, blue at 512; luma at 0
    std::array<std::uint32_t, 3> histogramMax{};  ///< per channel; at least 1 after the pass
    HistogramMode histogramRgb = HistogramMode::kRgb;
};

// Trace colours before the gain. The luma trace is a slightly green grey; the Cb and Cr columns are
// yellow and cyan on purpose.
inline constexpr Colour kLumaTrace{0.05f, 0.032f, 0.05f, 0.034f};
inline constexpr Colour kRedTrace{0.05f, 0.05f, 0.0f, 0.0f};
inline constexpr Colour kGreenTrace{0.05f, 0.0f, 0.05f, 0.0f};
inline constexpr Colour kBlueTrace{0.05f, 0.0f, 0.0f, 0.05f};
inline constexpr Colour kCbTrace{0.05f, 0.05f, 0.05f, 0.0f};
inline constexpr Colour kCrTrace{0.05f, 0.0f, 0.05f, 0.05f};

/// Values above this light a scope's over-range mark.
inline constexpr float kOverRange = 1.0001f;

}  // namespace ks
