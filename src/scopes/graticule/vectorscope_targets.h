// The vectorscope's fixed directions: colour-bar targets, skin tone, hue vectors. No host types.
#pragma once

#include <array>
#include <cstddef>

#include "geometry/int_rect.h"
#include "scopes/context/sample_context.h"
#include "scopes/graticule/shapes.h"

namespace ks {

/// The colours of the targets, in the order of every table here.
enum class TargetHue : std::size_t { kRed, kYellow, kGreen, kCyan, kBlue, kMagenta };
inline constexpr std::size_t kTargetHues = 6;

/// A place in the vectorscope as fractions of its box: x of cbGain to the right, y of crGain
/// upwards.
struct TargetOffset {
    double x;
    double y;
};

/// What depends on the luma weights.
struct VectorscopeMath {
    double skin_tone_angle;  ///< radians from the upward vertical to the left
    std::array<TargetOffset, kTargetHues> targets;  ///< of 100 % saturation and brightness
};

const VectorscopeMath &vectorscope_math(LumaMath math);

/// Hue vectors in the order of TargetHue: radians from the upward vertical to the left, the same
/// for either luma math.
inline constexpr std::array<double, kTargetHues> kHueAngles{0.23561946, 1.3439035, 2.6354473,
                                                            3.377212,   4.485496,  5.77704};

/// Appends one target: a box 6 degrees wide and 13 % of the radius deep, four corner brackets at
/// +-8 degrees and +-15 %, and a cross at the target of half that colour. `factor` scales the
/// radius and all four components of `colour`. [host thread]
void add_target_box(ShapeList &shapes, IntPoint centre, IntPoint target, const Colour &colour,
                    float factor);

/// Appends, for each hue, the vector to its target, the box at the target and the one at 0.75 of
/// it. The calibration gain moves the samples, not the targets. [host thread]
void add_targets(ShapeList &shapes, const ScopeSampleContext &context);

/// A hue's drawing colour: bright enough for thin lines, blue included.
const Colour &hue_colour(TargetHue hue);

}  // namespace ks
