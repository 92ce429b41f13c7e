#include "scopes/graticule/vectorscope_targets.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "plugin/scopes/graticule/shape_list.h"

namespace ks {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

struct Weights {
    double red, green, blue;
};

constexpr std::array<std::array<double, 3>, kTargetHues> kFullHues{
    {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}, {1, 0, 1}}};

void expect_targets_are_mapped_primaries(LumaMath math, const Weights &w, double kb, double kr) {
    const VectorscopeMath &table = vectorscope_math(math);
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const auto &rgb = kFullHues[i];
        const double luma = w.red * rgb[0] + w.green * rgb[1] + w.blue * rgb[2];
        EXPECT_NEAR(table.targets[i].x, (rgb[2] - luma) * kb, 1e-6) << i;
        EXPECT_NEAR(table.targets[i].y, (rgb[0] - luma) * kr, 1e-6) << i;
    }
}

TEST(VectorscopeTargets, AreThe601MappingOfTheFullHues) {
    expect_targets_are_mapped_primaries(LumaMath::k601, {0.299, 0.587, 0.114}, 0.342, 0.6125);
}

TEST(VectorscopeTargets, AreThe709MappingOfTheFullHues) {
    expect_targets_are_mapped_primaries(LumaMath::k709, {0.2126, 0.7152, 0.0722}, 0.3266, 0.5453);
}

TEST(VectorscopeTargets, ComplementsLieOpposite) {
    for (const LumaMath math : {LumaMath::k601, LumaMath::k709}) {
        const auto &targets = vectorscope_math(math).targets;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(targets[i].x, -targets[i + 3].x);
            EXPECT_EQ(targets[i].y, -targets[i + 3].y);
        }
    }
}

TEST(VectorscopeTargets, SkinToneAnglesPerLumaMath) {
    EXPECT_DOUBLE_EQ(vectorscope_math(LumaMath::k601).skin_tone_angle, 32.0 * kDegree);
    EXPECT_DOUBLE_EQ(vectorscope_math(LumaMath::k709).skin_tone_angle, 29.5 * kDegree);
}

TEST(VectorscopeTargets, HueAnglesAreTheStatedDegrees) {
    const std::array<double, kTargetHues> degrees{13.5, 77.0, 151.0, 193.5, 257.0, 331.0};
    for (std::size_t i = 0; i < degrees.size(); ++i) {
        EXPECT_NEAR(kHueAngles[i], degrees[i] * kDegree, 1e-5);
    }
}

TEST(VectorscopeTargets, HueAnglesPointAtThe601Targets) {
    const auto &targets = vectorscope_math(LumaMath::k601).targets;
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const double length = std::hypot(targets[i].x, targets[i].y);
        const double along =
            (-std::sin(kHueAngles[i]) * targets[i].x + std::cos(kHueAngles[i]) * targets[i].y);
        EXPECT_GT(along / length, std::cos(0.3 * kDegree)) << i;
    }
}

// The lines of a target box by its description, all in double precision.
struct ExpectedLine {
    double angle1, radius1, angle2, radius2;
};

std::vector<ExpectedLine> expected_lines(double theta, double r) {
    const double a = 3.0 * kDegree;
    const double b = 8.0 * kDegree;
    const double c = 5.2 * kDegree;
    const double ri = 0.935 * r;
    const double ro = 1.065 * r;
    const double d = 0.15 * r;
    std::vector<ExpectedLine> lines{{theta - a, ri, theta + a, ri},
                                    {theta + a, ri, theta + a, ro},
                                    {theta - a, ri, theta - a, ro},
                                    {theta - a, ro, theta + a, ro}};
    for (const double sign : {-1.0, 1.0}) {
        const double corner = r + sign * d;
        const double arm = r + sign * 0.65 * d;
        lines.push_back({theta - b, corner, theta - c, corner});
        lines.push_back({theta - b, corner, theta - b, arm});
        lines.push_back({theta + b, corner, theta + c, corner});
        lines.push_back({theta + b, corner, theta + b, arm});
    }
    lines.push_back({theta, ri, theta, ro});
    lines.push_back({theta - a, r, theta + a, r});
    return lines;
}

void expect_target_box(IntPoint centre, IntPoint target, float factor) {
    ShapeList shapes;
    add_target_box(shapes, centre, target, {1.0f, 0.8f, 0.6f, 0.4f}, factor);
    const auto lines = all_of<LineShape>(shapes);
    const double dx = target.x - centre.x;
    const double dy = target.y - centre.y;
    const auto expected = expected_lines(std::atan2(dy, dx), factor * std::hypot(dx, dy));
    ASSERT_EQ(lines.size(), shapes.size());
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const ExpectedLine &e = expected[i];
        EXPECT_NEAR(lines[i].x1, centre.x + std::cos(e.angle1) * e.radius1, 2e-3) << i;
        EXPECT_NEAR(lines[i].y1, centre.y + std::sin(e.angle1) * e.radius1, 2e-3) << i;
        EXPECT_NEAR(lines[i].x2, centre.x + std::cos(e.angle2) * e.radius2, 2e-3) << i;
        EXPECT_NEAR(lines[i].y2, centre.y + std::sin(e.angle2) * e.radius2, 2e-3) << i;
        EXPECT_EQ(lines[i].width, 1.0f);
        EXPECT_FALSE(lines[i].dashed);
    }
}

TEST(TargetBox, BoxThenBracketsThenCross) {
    expect_target_box({100, 118}, {81, 39}, 1.0f);
}

TEST(TargetBox, LiesRightInEveryDirection) {
    for (const IntPoint target : {IntPoint{1, 0}, IntPoint{0, 900}, IntPoint{-900, 0},
                                  IntPoint{0, -900}, IntPoint{-300, 200}}) {
        expect_target_box({0, 0}, target, 1.0f);
    }
}

TEST(TargetBox, TheFactorScalesTheRadius) {
    expect_target_box({100, 118}, {81, 39}, 0.5f);
}

TEST(TargetBox, TheFactorScalesAllFourColourComponents) {
    ShapeList shapes;
    add_target_box(shapes, {0, 0}, {50, 0}, {1.0f, 0.8f, 0.6f, 0.4f}, 0.5f);
    const auto lines = all_of<LineShape>(shapes);
    for (std::size_t i = 0; i < 12; ++i) expect_colour(lines[i].colour, {0.5f, 0.4f, 0.3f, 0.2f});
}

TEST(TargetBox, TheCrossHasHalfTheStrengthAlphaIncluded) {
    ShapeList shapes;
    add_target_box(shapes, {0, 0}, {50, 0}, {1.0f, 0.8f, 0.6f, 0.4f}, 1.0f);
    const auto lines = all_of<LineShape>(shapes);
    ASSERT_EQ(lines.size(), 14u);
    expect_colour(lines[11].colour, {1.0f, 0.8f, 0.6f, 0.4f});
    expect_colour(lines[12].colour, {0.5f, 0.4f, 0.3f, 0.2f});
    expect_colour(lines[13].colour, {0.5f, 0.4f, 0.3f, 0.2f});
}

ScopeSampleContext square_scope() {
    ScopeSampleContext context;
    context.vectorscopeCentreX = 500;
    context.vectorscopeCentreY = 518;
    context.cbGain = 984.0;
    context.crGain = 984.0;
    return context;
}

// Lines of one hue: the vector, then the box at the target, then the one at 0.75.
constexpr std::size_t kLinesPerHue = 1 + 14 + 14;

TEST(TargetLayout, SixVectorsAndTwelveBoxes) {
    ShapeList shapes;
    add_targets(shapes, square_scope());
    EXPECT_EQ(shapes.size(), kTargetHues * kLinesPerHue);
}

TEST(TargetLayout, VectorsStartAt30PercentForYellowAndBlueAt35) {
    ShapeList shapes;
    const ScopeSampleContext context = square_scope();
    add_targets(shapes, context);
    const std::array<double, kTargetHues> starts{0.3, 0.35, 0.3, 0.3, 0.35, 0.3};
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const auto vector = std::get<LineShape>(shapes[i * kLinesPerHue]);
        const TargetOffset &target = vectorscope_math(LumaMath::k601).targets[i];
        EXPECT_EQ(vector.x2, std::trunc(500.0 + target.x * 984.0));
        EXPECT_EQ(vector.y2, std::trunc(518.0 - target.y * 984.0));
        EXPECT_NEAR(vector.x1, 500.0 + (vector.x2 - 500.0) * starts[i], 1e-9);
        EXPECT_NEAR(vector.y1, 518.0 + (vector.y2 - 518.0) * starts[i], 1e-9);
    }
}

/// Middle of the box whose lines start at `first`: that of its cross.
TargetOffset box_middle(const ShapeList &shapes, std::size_t first) {
    const auto radial = std::get<LineShape>(shapes[first + 12]);
    return {(radial.x1 + radial.x2) / 2.0, (radial.y1 + radial.y2) / 2.0};
}

void expect_boxes_on_targets(const ScopeSampleContext &context) {
    ShapeList shapes;
    add_targets(shapes, context);
    const auto &targets = vectorscope_math(context.lumaMath).targets;
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        std::size_t first = i * kLinesPerHue + 1;
        for (const double part : {1.0, 0.75}) {
            const TargetOffset middle = box_middle(shapes, first);
            const double x =
                std::trunc(context.vectorscopeCentreX + targets[i].x * part * context.cbGain);
            const double y =
                std::trunc(context.vectorscopeCentreY - targets[i].y * part * context.crGain);
            EXPECT_NEAR(middle.x, x, 1e-3) << i;
            EXPECT_NEAR(middle.y, y, 1e-3) << i;
            first += 14;
        }
    }
}

TEST(TargetLayout, BoxesAtTheTargetAndAtThreeQuartersOfIt) {
    ScopeSampleContext context = square_scope();
    expect_boxes_on_targets(context);
    context.lumaMath = LumaMath::k709;
    expect_boxes_on_targets(context);
}

TEST(TargetLayout, FollowsTheBoxOnNonSquarePixels) {
    ScopeSampleContext context = square_scope();
    context.vectorscopeCentreX = 250;
    context.cbGain = 492.0;
    expect_boxes_on_targets(context);
}

TEST(TargetLayout, CalibrationDoesNotMoveTheTargets) {
    ScopeSampleContext context = square_scope();
    context.calibrationGain = 4.0f;
    expect_boxes_on_targets(context);
}

TEST(TargetLayout, EachHueHasItsOwnOpaqueColour) {
    for (std::size_t i = 0; i < kTargetHues; ++i) {
        const Colour &colour = hue_colour(static_cast<TargetHue>(i));
        const std::array<float, 3> channels{colour.red, colour.green, colour.blue};
        EXPECT_EQ(colour.alpha, 1.0f);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const bool in_hue = kFullHues[i][channel] > 0.5;
            EXPECT_EQ(channels[channel] > 0.6f, in_hue) << i << " " << channel;
        }
    }
}

}  // namespace
}  // namespace ks
