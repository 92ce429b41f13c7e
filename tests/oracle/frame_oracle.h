// One whole frame: monitor view, wipe, layout, markers and the scope panels in their order.
//
// The scopes' own drawing is not computed here: a panel is transparent black of the right size, or
// a picture that the caller hands in.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "oracle/host_oracle.h"
#include "oracle/image.h"

namespace ks::oracle {

// Scope kinds, as stored in a stacking order.
inline constexpr int kWaveform = 1;
inline constexpr int kVectorscope = 2;
inline constexpr int kParade = 3;
inline constexpr int kSlice = 4;
inline constexpr int kHistogram = 5;

// Whole pixels of a point parameter are its 16.16 value shifted right by 16.
struct FixedPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

// Scope kinds from the bottom entry up; entries from `count` on are 0.
struct StackingOrder {
    std::array<std::int8_t, 5> kinds{1, 2, 3, 0, 0};
    std::int8_t count = 3;
};

// Arrays indexed by kind leave entry 0 unused. Values are the parameters' own (percentages as
// percentages), initially their defaults; points are what a render's check-out hands over, in
// pixels of the downsampled layer.
struct FrameSettings {
    std::array<bool, 6> show{false, true, true, true, false, false};
    int layout = 4;       // 1 Single, 3 Split, 4 Classic, 6 Windowed, 7 Off (Scopes Only)
    int view = 1;         // 1 RGB, 2 Alpha, 3 Luminance
    int channels = 1;     // 1 R,G,B, 2 Y,Cb,Cr
    int corrections = 1;  // 1 Pre-Scopes, 2 Post Scopes
    int luma_math = 1;    // 1 601, 2 709
    int aspect = 1;       // 1 Auto, 2 16:9, 3 4:3, 4 Square
    double gamma = 1.0;
    double gain = 1.0;
    double compare = 0.0;          // percent
    double compare_opacity = 100;  // percent
    FixedPoint monitor_position;
    double monitor_size = 50.0;                             // percent
    std::array<double, 6> size{0, 200, 200, 200, 200, 60};  // "Scope Width", "Size" or "Height"
    double slice_position = 50.0;                           // percent
    std::array<FixedPoint, 6> position{};
    int downsample_x_den = 1;
    int downsample_y_den = 1;
    int par_num = 1;
    int par_den = 1;
    Quality quality = Quality::kBilinear;
    StackingOrder order;
    std::array<const Image *, 6> panel_pictures{};  // null: transparent black
};

struct PanelSize {
    int kind = 0;
    int width = 0;
    int height = 0;
};

enum class Measured { kNothing, kInput, kCorrected };

struct FrameResult {
    Image output;
    StackingOrder order;                     // as the instance keeps it afterwards
    std::vector<PanelSize> panels;           // in the order in which their worlds are created
    Measured measured = Measured::kNothing;  // which picture the scopes sample
    Image measured_image;                    // that picture; empty when nothing is measured
};

// Panels of the enabled scopes for an output of that size, in walk order: Waveform Monitor, Channel
// Parade, Vectorscope, Slice Waveform, Histogram.
std::vector<PanelSize> panel_sizes(const FrameSettings &settings, int out_width, int out_height);

// The stacking order after a frame with these panels: the frame's own list when the number of
// scopes differs from the stored one, else the stored order.
StackingOrder next_order(const StackingOrder &stored, const std::vector<PanelSize> &panels);

// The frame for an output of the input's size. Under 75 pixels of height the input comes back
// unchanged. `original` (the "Original Source" picture, of the input's depth) may be null and of
// any size. Worlds that are not written completely count as transparent black.
FrameResult render_frame_oracle(const Image &input, const Image *original,
                                const FrameSettings &settings);

}  // namespace ks::oracle
