#include "scopes/graticule/vectorscope_graticule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/scope_layout.h"
#include "geometry/scope_panel.h"
#include "plugin/scopes/graticule/shape_list.h"
#include "scopes/graticule/vectorscope_targets.h"

namespace ks {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

struct Scope {
    ScopeSampleContext context;
    FrameScale frame;
};

/// The vectorscope of size `size` at that resolution and pixel shape, laid out like its samples.
Scope make_scope(double size, std::uint32_t den_x, std::uint32_t den_y, double aspect) {
    Scope scope;
    scope.frame = make_frame_scale({static_cast<std::int32_t>(aspect * 1e6), 1000000}, {1, den_x},
                                   {1, den_y});
    const LayoutUnits units = layout_units(1.0, scope.frame);
    const IntSize panel = scope_panel_size(ScopeSizeRule::kSquare, size, 1.0, scope.frame);
    ScopeSampleContext &c = scope.context;
    c.vectorscopeLeft = units.vector_inset;
    c.vectorscopeRight = panel.width - units.vector_inset;
    c.vectorscopeTop = units.label_band + units.gap;
    c.vectorscopeBottom = panel.height - units.gap;
    c.vectorscopeCentreX = trunc_to_int(panel.width * 0.5);
    c.vectorscopeCentreY = trunc_to_int((panel.height - units.label_band) * 0.5 + units.label_band);
    c.cbGain = c.vectorscopeRight - c.vectorscopeLeft;
    c.crGain = c.vectorscopeBottom - c.vectorscopeTop;
    return scope;
}

ShapeList shapes_of(const Scope &scope, const VectorscopeOptions &options) {
    ShapeList shapes;
    add_vectorscope_graticule(shapes, scope.context, scope.frame, options);
    return shapes;
}

VectorscopeOptions hue_vectors() {
    VectorscopeOptions options;
    options.layout = VectorscopeLayout::kHueVectors;
    return options;
}

TEST(VectorscopeOutline, IsAnEllipseInTheClipBox) {
    const Scope scope = make_scope(200.0, 1, 1, 1.0);
    const auto ellipses = all_of<EllipseShape>(shapes_of(scope, {}));
    ASSERT_EQ(ellipses.size(), 1u);
    EXPECT_EQ(ellipses[0].x, 8.0);
    EXPECT_EQ(ellipses[0].y, 26.0);
    EXPECT_EQ(ellipses[0].width, 184.0);
    EXPECT_EQ(ellipses[0].height, 184.0);
    EXPECT_EQ(ellipses[0].pen_width, 1.5f);
    expect_colour(ellipses[0].colour, {1.0f, 0.4f, 0.4f, 0.4f});
}

LineShape skin_tone_line(const Scope &scope) {
    VectorscopeOptions options = hue_vectors();
    options.skin_tone_line = true;
    for (const LineShape &line : all_of<LineShape>(shapes_of(scope, options))) {
        if (line.dashed) return line;
    }
    ADD_FAILURE() << "no dashed line";
    return {};
}

TEST(SkinToneLine, RunsFromTheCentreAtTheMathsAngle) {
    Scope scope = make_scope(200.0, 1, 1, 1.0);
    for (const auto &[math, degrees] : {std::pair{LumaMath::k601, 32.0}, {LumaMath::k709, 29.5}}) {
        scope.context.lumaMath = math;
        const LineShape line = skin_tone_line(scope);
        EXPECT_EQ(line.x1, 100.0);
        EXPECT_EQ(line.y1, 118.0);
        EXPECT_NEAR(line.x2, 100.0 - std::sin(degrees * kDegree) * 184.0 * 0.33, 1e-9);
        EXPECT_NEAR(line.y2, 118.0 - std::cos(degrees * kDegree) * 184.0 * 0.33, 1e-9);
        EXPECT_EQ(line.width, 1.0f);
        expect_colour(line.colour, {1.0f, 0.25f, 0.25f, 0.25f});
    }
}

TEST(SkinToneLine, IsDrawnOnlyWhenAskedFor) {
    const Scope scope = make_scope(200.0, 1, 1, 1.0);
    for (const LineShape &line : all_of<LineShape>(shapes_of(scope, {}))) {
        EXPECT_FALSE(line.dashed);
    }
}

// Samples of the skin tone's hue lie on the line whatever the pixels' shape: the direction in the
// box's own units is the angle's, to within what a pixel of the box's rounding turns it by.
TEST(SkinToneLine, LiesWhereTheSamplesGoOnEveryPixelShape) {
    for (const double aspect : {10.0 / 11.0, 1.0, 2.0}) {
        for (const auto &[den_x, den_y] : {std::pair{1u, 1u}, {2u, 2u}, {2u, 1u}, {1u, 2u}}) {
            const Scope scope = make_scope(400.0, den_x, den_y, aspect);
            const LineShape line = skin_tone_line(scope);
            const double across = (line.x1 - line.x2) / scope.context.cbGain;
            const double up = (line.y1 - line.y2) / scope.context.crGain;
            const double sample_x = std::sin(32.0 * kDegree) * std::hypot(across, up);
            EXPECT_NEAR(across * scope.context.cbGain, sample_x * scope.context.cbGain, 1.0)
                << aspect << " " << den_x << " " << den_y;
        }
    }
}

std::vector<LineShape> reference_lines(const Scope &scope, const Colour &colour) {
    VectorscopeOptions options = hue_vectors();
    options.reference = colour;
    const auto with = all_of<LineShape>(shapes_of(scope, options));
    const auto without = all_of<LineShape>(shapes_of(scope, hue_vectors()));
    return {with.begin(), with.begin() + static_cast<std::ptrdiff_t>(with.size() - without.size())};
}

TEST(ReferenceLine, RunsThroughTheColoursPlaceToTheOutline) {
    for (const LumaMath math : {LumaMath::k601, LumaMath::k709}) {
        for (const double aspect : {10.0 / 11.0, 1.0, 2.0}) {
            Scope scope = make_scope(300.0, 1, 1, aspect);
            scope.context.lumaMath = math;
            const auto lines = reference_lines(scope, {1.0f, 0.8f, 0.4f, 0.2f});
            ASSERT_EQ(lines.size(), 1u);
            const double luma = math == LumaMath::k601 ? 0.299 * 0.8 + 0.587 * 0.4 + 0.114 * 0.2
                                                       : 0.2126 * 0.8 + 0.7152 * 0.4 + 0.0722 * 0.2;
            const double kb = math == LumaMath::k601 ? 0.342 : 0.3266;
            const double kr = math == LumaMath::k601 ? 0.6125 : 0.5453;
            const double x = (0.2 - luma) * kb * scope.context.cbGain;
            const double y = -(0.8 - luma) * kr * scope.context.crGain;
            const double end_x = lines[0].x2 - lines[0].x1;
            const double end_y = lines[0].y2 - lines[0].y1;
            EXPECT_EQ(lines[0].x1, scope.context.vectorscopeCentreX);
            EXPECT_EQ(lines[0].y1, scope.context.vectorscopeCentreY);
            EXPECT_NEAR(end_x * y - end_y * x, 0.0, 1e-2);  // one direction
            EXPECT_GT(end_x * x + end_y * y, 0.0);
            EXPECT_NEAR(std::hypot(end_x / scope.context.cbGain, end_y / scope.context.crGain), 0.5,
                        1e-9);
        }
    }
}

TEST(ReferenceLine, HasTheColourAtFullBrightness) {
    const auto lines = reference_lines(make_scope(200.0, 1, 1, 1.0), {0.0f, 0.1f, 0.2f, 0.0f});
    ASSERT_EQ(lines.size(), 1u);
    expect_colour(lines[0].colour, {1.0f, 0.5f, 1.0f, 0.0f});
}

TEST(ReferenceLine, AColourWithoutChromaHasNone) {
    const Scope scope = make_scope(200.0, 1, 1, 1.0);
    for (const float grey : {0.0f, 0.1f, 0.3f, 0.5f, 0.7f, 1.0f}) {
        EXPECT_TRUE(reference_lines(scope, {1.0f, grey, grey, grey}).empty());
    }
}

TEST(ReferenceLine, CalibrationDoesNotTurnIt) {
    Scope scope = make_scope(200.0, 1, 1, 1.0);
    const LineShape before = reference_lines(scope, {1.0f, 0.8f, 0.4f, 0.2f}).at(0);
    scope.context.calibrationGain = 4.0f;
    const LineShape after = reference_lines(scope, {1.0f, 0.8f, 0.4f, 0.2f}).at(0);
    EXPECT_EQ(before.x2, after.x2);
    EXPECT_EQ(before.y2, after.y2);
}

TEST(HueVectors, ThreeDiametersAndSixMarkersInsteadOfTargets) {
    const ShapeList shapes = shapes_of(make_scope(200.0, 1, 1, 1.0), hue_vectors());
    EXPECT_EQ(all_of<LineShape>(shapes).size(), 3u);
    EXPECT_EQ(all_of<MarkerShape>(shapes).size(), 6u);
    EXPECT_EQ(shapes.size(), 10u);
}

TEST(HueVectors, RegularLayoutHasNoMarkers) {
    const ShapeList shapes = shapes_of(make_scope(200.0, 1, 1, 1.0), {});
    EXPECT_TRUE(all_of<MarkerShape>(shapes).empty());
    EXPECT_EQ(shapes.size(), 1u + 6u * 29u);
}

TEST(HueVectors, DiametersEndOnTheOutline) {
    for (const double aspect : {10.0 / 11.0, 1.0, 2.0}) {
        const Scope scope = make_scope(300.0, 1, 2, aspect);
        const ScopeSampleContext &c = scope.context;
        for (const LineShape &line : all_of<LineShape>(shapes_of(scope, hue_vectors()))) {
            for (const auto &[x, y] : {std::pair{line.x1, line.y1}, {line.x2, line.y2}}) {
                EXPECT_NEAR(std::hypot((x - c.vectorscopeCentreX) / c.cbGain,
                                       (y - c.vectorscopeCentreY) / c.crGain),
                            0.5, 1e-9);
            }
            EXPECT_NEAR(line.x1 + line.x2, 2.0 * c.vectorscopeCentreX, 1e-3);
            EXPECT_NEAR(line.y1 + line.y2, 2.0 * c.vectorscopeCentreY, 1e-3);
        }
    }
}

TEST(HueVectors, MarkersLieAlongTheirDirection) {
    const Scope scope = make_scope(300.0, 1, 1, 2.0);
    const ScopeSampleContext &c = scope.context;
    const auto markers = all_of<MarkerShape>(shapes_of(scope, hue_vectors()));
    for (std::size_t i = 0; i < markers.size(); ++i) {
        const double dx = markers[i].centre_x - c.vectorscopeCentreX;
        const double dy = markers[i].centre_y - c.vectorscopeCentreY;
        EXPECT_NEAR(std::atan2(dx / c.cbGain, -dy / c.crGain),
                    std::remainder(-kHueAngles[i], 2.0 * std::numbers::pi), 1e-6);
        // The long axis, counter-clockwise from the right, points outwards.
        EXPECT_NEAR(std::cos(markers[i].angle) * dy + std::sin(markers[i].angle) * dx, 0.0, 1e-3);
        EXPECT_GT(markers[i].length, markers[i].thickness);
        EXPECT_TRUE(same_colour(markers[i].fill, hue_colour(static_cast<TargetHue>(i))));
    }
}

}  // namespace
}  // namespace ks
