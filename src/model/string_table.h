// Every text that the user sees in the panel and the About box, in numbered slots. No host types.
#pragma once

#include <string_view>

namespace ks {

inline constexpr int kStringCount = 77;
inline constexpr int kStringBytes = 260;  ///< of one slot, terminator included

/// Slot numbers. Only the slots that code names have one; parameters refer to theirs by number.
enum StringSlot : int {
    kStringEmpty = 0,
    kStringEffectName = 1,
    kStringDescription = 2,
    kStringSuiteLoadError = 75,
    kStringSuiteReleaseError = 76,
};

// In popup texts "|" separates the choices, and "(-" is a separator line that takes a number.
// Slots 52, 53 and 71 belong to no parameter any more; their numbers stay taken.
inline constexpr char kStrings[kStringCount][kStringBytes] = {
    /* 0 */ "",
    /* 1 */ "Kestrel Scopes",
    /* 2 */
    "Scopes and monitoring for grading and compositing."
    "\n\nApply to an adjustment layer at the top of the composition. Brindlemoor Studio",
    /* 3 */ "Monitor",
    /* 4 */ "Monitor Layout",
    /* 5 */ "Single|(-|Four-Way Split|Four-Way Classic|(-|Windowed|Off (Scopes Only)",
    /* 6 */ "Primary Monitor",
    /* 7 */ "Monitor Position",
    /* 8 */ "Monitor Size",
    /* 9 */ "Primary Monitor View",
    /* 10 */ "RGB|Alpha|Luminance",
    /* 11 */ "Monitor Gamma",
    /* 12 */ "Monitor Gain",
    /* 13 */ "Apply Corrections",
    /* 14 */ "Pre-Scopes|Post Scopes",
    /* 15 */ "Original Source",
    /* 16 */ "Compare with Original",
    /* 17 */ "Compare Opacity",
    /* 18 */ "Channels",
    /* 19 */ "View Channels",
    /* 20 */ "R,G,B|Y,Cb,Cr",
    /* 21 */ "Scopes",
    /* 22 */ "Show Waveform Monitor",
    /* 23 */ "Show Vectorscope",
    /* 24 */ "Show Channel Parade",
    /* 25 */ "Show Slice Waveform",
    /* 26 */ "Show Histogram",
    /* 27 */ "Mute Active Scopes",
    /* 28 */ "Waveform Monitor",
    /* 29 */ "Scope Position",
    /* 30 */ "Scope Width",
    /* 31 */ "Scope Brightness",
    /* 32 */ "Vectorscope",
    /* 33 */ "Graticule Layout",
    /* 34 */ "Regular|Hue Vectors",
    /* 35 */ "Monochrome Display",
    /* 36 */ "Calibrate For",
    /* 37 */ "100%|75%|50%|25%",
    /* 38 */ "Show Skin Tone Line",
    /* 39 */ "Show Reference Line",
    /* 40 */ "Reference Colour",
    /* 41 */ "Scope Position",
    /* 42 */ "Scope Size",
    /* 43 */ "Scope Brightness",
    /* 44 */ "Channel Parade",
    /* 45 */ "Scope Position",
    /* 46 */ "Scope Width",
    /* 47 */ "Scope Brightness",
    /* 48 */ "Slice Waveform",
    /* 49 */ "Show Channels",
    /* 50 */ "RGB + Luma|RGB|Luma",
    /* 51 */ "Slice Position",
    /* 52 */ "Smoothing",
    /* 53 */ "None|Low|Medium|High",
    /* 54 */ "Scope Position",
    /* 55 */ "Scope Width",
    /* 56 */ "Histogram",
    /* 57 */ "Show Channels",
    /* 58 */ "RGB|Luma",
    /* 59 */ "Scope Position",
    /* 60 */ "Scope Height",
    /* 61 */ "Options",
    /* 62 */ "Luminance Math's",
    /* 63 */ "601|709",
    /* 64 */ "Max Waveform Scale",
    /* 65 */ "Waveform Scopes Aspect Ratio",
    /* 66 */ "Auto (Comp Aspect Ratio)|16:9|4:3|Square",
    /* 67 */ "Waveform Scopes Scale",
    /* 68 */ "IRE|Project Bit Depth",
    /* 69 */ "Show Waveform Guides",
    /* 70 */ "Off|7.5 IRE|16-235",
    /* 71 */ "Label Text Scale",
    /* 72 */ "Sampling Quality",
    /* 73 */ "Low (Fast)|Medium|High (Slow)",
    /* 74 */ "Lock Layer Position",
    /* 75 */ "Error loading suite.",
    /* 76 */ "Error releasing suite.",
};

/// Text of `slot` (0..76), zero-terminated ASCII of static storage; any other number reads as the
/// empty text. [any thread]
constexpr const char *string_at(int slot) {
    return kStrings[slot >= 0 && slot < kStringCount ? slot : kStringEmpty];
}

/// Number of popup choices in `choices`, separator lines counted, since they take a number too;
/// 0 for an empty text. [any thread]
constexpr int count_choices(std::string_view choices) {
    if (choices.empty()) return 0;
    int count = 1;
    for (char c : choices) count += c == '|' ? 1 : 0;
    return count;
}

static_assert(count_choices(string_at(5)) == 7);
static_assert(std::string_view(string_at(kStringSuiteReleaseError)) == "Error releasing suite.");

}  // namespace ks
