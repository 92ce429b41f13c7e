#include "scopes/graticule/vectorscope_graticule.h"

#include <algorithm>
#include <cmath>

#include "scopes/context/vector_map.h"
#include "scopes/graticule/vectorscope_targets.h"

namespace ks {
namespace {

constexpr float kOutlineWidth = 1.5f;
constexpr double kSkinToneLength = 0.33;  ///< of the smaller side of the box

// Hue markers, as fractions of the way from the centre to the outline.
constexpr double kMarkerPlace = 0.94;
constexpr double kMarkerLength = 0.12;
constexpr double kMarkerThickness = 0.045;

void add_outline(ShapeList &shapes, const ScopeSampleContext &c) {
    shapes.emplace_back(EllipseShape{static_cast<double>(c.vectorscopeLeft),
                                     static_cast<double>(c.vectorscopeTop), c.cbGain, c.crGain,
                                     kGrey, kOutlineWidth});
}

void add_skin_tone_line(ShapeList &shapes, const ScopeSampleContext &c, const FrameScale &frame) {
    const double angle = vectorscope_math(c.lumaMath).skin_tone_angle;
    const double length = std::min(c.cbGain, c.crGain) * kSkinToneLength;
    // Panel pixels that one row is high, per column: the box has the same proportion, and with it
    // the samples.
    const double upright = static_cast<double>(frame.den_x) / frame.den_y * frame.pixel_aspect;
    const double x = c.vectorscopeCentreX;
    const double y = c.vectorscopeCentreY;
    shapes.emplace_back(LineShape{x, y, x - std::sin(angle) * length,
                                  y - std::cos(angle) * length * upright, kDarkGrey, 1.0f, true});
}

/// `colour` at full brightness, so that the line of a dark reference can be seen.
Colour line_colour(const Colour &colour) {
    const float peak = std::max({colour.red, colour.green, colour.blue});
    return {1.0f, colour.red / peak, colour.green / peak, colour.blue / peak};
}

/// From the centre through the place of `colour` to the outline. A colour without chroma has no
/// direction, and no line.
void add_reference_line(ShapeList &shapes, const ScopeSampleContext &c, const Colour &colour) {
    if (colour.red == colour.green && colour.green == colour.blue) return;
    const VectorGains gains = vector_gains(c.lumaMath);
    const double luma = luminance(colour, c.lumaMath);
    const double across = (colour.blue - luma) * gains.blue_y;
    const double up = (colour.red - luma) * gains.red_y;
    const double distance = std::hypot(across, up);
    if (!(distance > 0.0)) return;
    const double x = c.vectorscopeCentreX;
    const double y = c.vectorscopeCentreY;
    shapes.emplace_back(LineShape{x, y, x + across / distance * 0.5 * c.cbGain,
                                  y - up / distance * 0.5 * c.crGain, line_colour(colour), 1.0f});
}

/// Three diameters along the hues, each end with a marker in its hue.
void add_hue_vectors(ShapeList &shapes, const ScopeSampleContext &c) {
    const double x = c.vectorscopeCentreX;
    const double y = c.vectorscopeCentreY;
    const auto reach_x = [&](std::size_t i) { return -std::sin(kHueAngles[i]) * 0.5 * c.cbGain; };
    const auto reach_y = [&](std::size_t i) { return -std::cos(kHueAngles[i]) * 0.5 * c.crGain; };
    constexpr std::size_t kDiameters = kTargetHues / 2;  // hue i + 3 is the complement of hue i
    for (std::size_t i = 0; i < kDiameters; ++i) {
        shapes.emplace_back(LineShape{x + reach_x(i), y + reach_y(i), x + reach_x(i + kDiameters),
                                      y + reach_y(i + kDiameters), kGrey, 1.0f});
    }
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const double dx = reach_x(i);
        const double dy = reach_y(i);
        const double radius = std::hypot(dx, dy);
        shapes.emplace_back(MarkerShape{
            x + dx * kMarkerPlace, y + dy * kMarkerPlace, radius * kMarkerLength,
            0.5 * std::min(c.cbGain, c.crGain) * kMarkerThickness,
            static_cast<float>(std::atan2(-dy, dx)), hue_colour(static_cast<TargetHue>(i))});
    }
}

}  // namespace

void add_vectorscope_graticule(ShapeList &shapes, const ScopeSampleContext &context,
                               const FrameScale &frame, const VectorscopeOptions &options) {
    add_outline(shapes, context);
    if (options.skin_tone_line) add_skin_tone_line(shapes, context, frame);
    if (options.reference) add_reference_line(shapes, context, *options.reference);
    if (options.layout == VectorscopeLayout::kHueVectors) {
        add_hue_vectors(shapes, context);
    } else {
        add_targets(shapes, context);
    }
}

}  // namespace ks
