#include "scopes/graticule/vectorscope_targets.h"

#include <cmath>

#include "geometry/frame_scale.h"

namespace ks {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

constexpr VectorscopeMath kMath601{32.0 * kRadiansPerDegree,
                                   {{{-0.102258, 0.4293625},
                                     {-0.303012, 0.069825},
                                     {-0.200754, -0.3595375},
                                     {0.102258, -0.4293625},
                                     {0.303012, -0.069825},
                                     {0.200754, 0.3595375}}}};

constexpr VectorscopeMath kMath709{29.5 * kRadiansPerDegree,
                                   {{{-0.069435, 0.429369},
                                     {-0.303019, 0.039371},
                                     {-0.233584, -0.389999},
                                     {0.069435, -0.429369},
                                     {0.303019, -0.039371},
                                     {0.233584, 0.389999}}}};

constexpr std::array<Colour, kTargetHues> kHueColours{{{1.0f, 0.95f, 0.3f, 0.3f},
                                                       {1.0f, 0.8f, 0.8f, 0.25f},
                                                       {1.0f, 0.25f, 0.85f, 0.3f},
                                                       {1.0f, 0.25f, 0.8f, 0.8f},
                                                       {1.0f, 0.45f, 0.5f, 1.0f},
                                                       {1.0f, 0.9f, 0.35f, 0.9f}}};

/// Where the vectors to the targets start, as a fraction of the way: yellow and blue, which lie
/// closest to the centre, start further out.
constexpr std::array<double, kTargetHues> kVectorStart{0.3, 0.35, 0.3, 0.3, 0.35, 0.3};

/// As dark as the dark grey on black, but samples that lie under a vector show through: those of
/// clean colour bars stand exactly at its end.
constexpr Colour kVectorColour{0.5f, 0.5f, 0.5f, 0.5f};

constexpr double kInnerTarget = 0.75;  ///< bars of 75 %

// Of the target box: angles in radians, lengths as fractions of the radius.
constexpr float kBoxHalfAngle = 0.05235987755983f;          // 3 degrees
constexpr float kBracketOuterAngle = 0.13962634015955f;     // 8 degrees
constexpr float kBracketInnerAngle = 0.09075711777475613f;  // 5.2 degrees
constexpr float kBoxInner = 0.935f;
constexpr float kBoxOuter = 1.065f;
constexpr float kBracketReach = 0.15f;
constexpr float kBracketArm = 0.65f;  ///< of the reach

/// Lines between points given by angle and radius around a centre.
template <class Real>
class PolarLines {
  public:
    PolarLines(ShapeList &shapes, IntPoint centre, const Colour &colour)
        : shapes_(shapes),
          x_(static_cast<Real>(centre.x)),
          y_(static_cast<Real>(centre.y)),
          colour_(colour) {}

    void line(Real angle1, Real radius1, Real angle2, Real radius2) const {
        shapes_.emplace_back(LineShape{
            x_ + std::cos(angle1) * radius1, y_ + std::sin(angle1) * radius1,
            x_ + std::cos(angle2) * radius2, y_ + std::sin(angle2) * radius2, colour_, 1.0f});
    }

  private:
    ShapeList &shapes_;
    Real x_;
    Real y_;
    Colour colour_;
};

void add_box(const PolarLines<float> &polar, float angle, float radius) {
    const float inner = kBoxInner * radius;
    const float outer = kBoxOuter * radius;
    const float low = angle - kBoxHalfAngle;
    const float high = angle + kBoxHalfAngle;
    polar.line(low, inner, high, inner);
    polar.line(high, inner, high, outer);
    polar.line(low, inner, low, outer);
    polar.line(low, outer, high, outer);
}

void add_brackets(const PolarLines<float> &polar, float angle, float radius) {
    const float reach = kBracketReach * radius;
    for (const float side : {-1.0f, 1.0f}) {
        const float corner = radius + side * reach;
        const float arm = radius + side * kBracketArm * reach;
        for (const float turn : {-1.0f, 1.0f}) {
            const float outer = angle + turn * kBracketOuterAngle;
            const float inner = angle + turn * kBracketInnerAngle;
            polar.line(outer, corner, inner, corner);
            polar.line(outer, corner, outer, arm);
        }
    }
}

IntPoint target_point(const ScopeSampleContext &context, const TargetOffset &offset,
                      double fraction) {
    const double x = context.vectorscopeCentreX + offset.x * fraction * context.cbGain;
    const double y = context.vectorscopeCentreY - offset.y * fraction * context.crGain;
    return {trunc_to_int(x), trunc_to_int(y)};
}

}  // namespace

const VectorscopeMath &vectorscope_math(LumaMath math) {
    return math == LumaMath::k709 ? kMath709 : kMath601;
}

const Colour &hue_colour(TargetHue hue) {
    return kHueColours[static_cast<std::size_t>(hue)];
}

void add_target_box(ShapeList &shapes, IntPoint centre, IntPoint target, const Colour &colour,
                    float factor) {
    const auto dx = static_cast<float>(target.x - centre.x);
    const auto dy = static_cast<float>(target.y - centre.y);
    const float angle = std::atan2(dy, dx);
    const float radius = factor * std::sqrt(dx * dx + dy * dy);
    const Colour full = scaled(colour, factor);
    const PolarLines<float> polar(shapes, centre, full);
    add_box(polar, angle, radius);
    add_brackets(polar, angle, radius);
    const Colour half = scaled(full, 0.5f);
    PolarLines<float>(shapes, centre, half)
        .line(angle, kBoxInner * radius, angle, kBoxOuter * radius);
    constexpr double kHalfAngle = 0.05235987755983;
    const double exact = angle;
    const double distance = radius;
    PolarLines<double>(shapes, centre, half)
        .line(exact - kHalfAngle, distance, exact + kHalfAngle, distance);
}

void add_targets(ShapeList &shapes, const ScopeSampleContext &context) {
    const auto &targets = vectorscope_math(context.lumaMath).targets;
    const IntPoint centre{context.vectorscopeCentreX, context.vectorscopeCentreY};
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const IntPoint outer = target_point(context, targets[i], 1.0);
        const double start = kVectorStart[i];
        shapes.emplace_back(LineShape{
            centre.x + (outer.x - centre.x) * start, centre.y + (outer.y - centre.y) * start,
            static_cast<double>(outer.x), static_cast<double>(outer.y), kVectorColour, 1.0f});
        const Colour &colour = kHueColours[i];
        add_target_box(shapes, centre, outer, colour, 1.0f);
        add_target_box(shapes, centre, target_point(context, targets[i], kInnerTarget), colour,
                       1.0f);
    }
}

}  // namespace ks
