#include "stage/project/composite.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>

namespace stage {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

using Pixel = std::array<float, 4>;

Pixel pixel(const Picture &picture, int x, int y) {
    const float *p = picture.at(x, y);
    return {p[0], p[1], p[2], p[3]};
}

/// Bit for bit, so that NaN equals itself and -0 differs from 0.
bool same_bits(const Picture &a, const Picture &b) {
    if (a.width != b.width || a.height != b.height) return false;
    return std::ranges::equal(a.argb, b.argb, [](float left, float right) {
        return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
    });
}

/// Opaque picture with awkward colours: every 7th sample NaN, infinite, negative or huge.
Picture awkward(int width, int height) {
    Picture picture = make_picture(width, height, SampleType::Float);
    const float values[] = {kNan, kInf, -kInf, -0.0f, -3.5f, 1e30f, 0.1f};
    for (std::size_t i = 0; i < picture.argb.size(); ++i) {
        picture.argb[i] = i % 4 == 0 ? 1.0f : values[i % 7];
    }
    return picture;
}

Picture filled(int width, int height, const Pixel &argb) {
    Picture picture = make_picture(width, height, SampleType::Float);
    for (std::size_t i = 0; i < picture.argb.size(); ++i) picture.argb[i] = argb[i % 4];
    return picture;
}

struct CompositeTest : testing::Test {
    Project project;
    ItemId comp = project.add_comp("Comp", 8, 4, 1, 1, 3);

    ItemId footage(const Picture &picture, std::int64_t frames = 1) {
        return project.add_footage("footage", picture.width, picture.height, 1, 1, frames,
                                   [picture](std::int64_t) { return picture; });
    }
    /// On top of the stack.
    Layer &add(const Picture &picture) {
        return *project.layer(project.add_layer(comp, footage(picture), 0, "layer"));
    }
    Layer &add_solid(int width, int height, const std::array<double, 4> &color) {
        const ItemId solid = project.add_solid_item("solid", width, height, color);
        return *project.layer(project.add_layer(comp, solid, 0, "solid"));
    }
    Picture all() { return composite(project, comp, -1, 0); }
};

TEST_F(CompositeTest, NothingBeneathIsTransparentBlack) {
    const Picture picture = all();
    EXPECT_EQ(picture.width, 8);
    EXPECT_EQ(picture.height, 4);
    EXPECT_THAT(picture.argb, testing::Each(0.0f));
}

TEST_F(CompositeTest, SingleFullFrameLayerPassesBitExactly) {
    const Picture source = awkward(8, 4);
    add(source);
    EXPECT_TRUE(same_bits(all(), source));
}

TEST_F(CompositeTest, OpaqueLayerOverOthersPassesBitExactly) {
    add(filled(8, 4, {0.5f, 1, 1, 1}));
    const Picture source = awkward(8, 4);
    add(source);
    EXPECT_TRUE(same_bits(all(), source));
}

TEST_F(CompositeTest, TranslucentLayerOverNothingPassesBitExactly) {
    const Picture source = filled(8, 4, {0.25f, kNan, 2, -1});
    add(source);
    EXPECT_TRUE(same_bits(all(), source));
}

TEST_F(CompositeTest, OnlyLayersBeneathTheIndexCount) {
    add_solid(8, 4, {1, 0, 0, 1});
    add_solid(8, 4, {1, 1, 0, 0});
    EXPECT_EQ(pixel(composite(project, comp, -1, 0), 0, 0), (Pixel{1, 1, 0, 0}));
    EXPECT_EQ(pixel(composite(project, comp, 0, 0), 0, 0), (Pixel{1, 0, 0, 1}));
    EXPECT_EQ(pixel(composite(project, comp, 1, 0), 0, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixel(composite(project, comp, 99, 0), 0, 0), (Pixel{0, 0, 0, 0}));
}

TEST_F(CompositeTest, StraightAlphaOver) {
    add_solid(8, 4, {0.5, 0, 1, 0});
    add_solid(8, 4, {0.5, 1, 0, 0});
    // Alpha 0.5 + 0.5 * 0.5; colour weighted 0.5 : 0.25.
    const Pixel result = pixel(all(), 3, 2);
    EXPECT_FLOAT_EQ(result[0], 0.75f);
    EXPECT_FLOAT_EQ(result[1], 2.0f / 3);
    EXPECT_FLOAT_EQ(result[2], 1.0f / 3);
    EXPECT_FLOAT_EQ(result[3], 0);
}

TEST_F(CompositeTest, OpacityScalesAlpha) {
    add_solid(8, 4, {1, 0, 0, 0});
    add_solid(8, 4, {1, 1, 0.5, 0}).opacity = 25;
    const Pixel result = pixel(all(), 0, 0);
    EXPECT_FLOAT_EQ(result[0], 1);
    EXPECT_FLOAT_EQ(result[1], 0.25f);
    EXPECT_FLOAT_EQ(result[2], 0.125f);
}

TEST_F(CompositeTest, OpacityOverNothingKeepsColour) {
    add_solid(8, 4, {1, 0.3, 0.6, 0.9}).opacity = 50;
    EXPECT_EQ(pixel(all(), 0, 0), (Pixel{0.5f, 0.3f, 0.6f, 0.9f}));
}

TEST_F(CompositeTest, OpacityOfNanOrZeroDrawsNothing) {
    add_solid(8, 4, {1, 1, 1, 1}).opacity = 0;
    add_solid(8, 4, {1, 1, 1, 1}).opacity = std::nan("");
    EXPECT_THAT(all().argb, testing::Each(0.0f));
}

TEST_F(CompositeTest, SmallLayerLandsWhereItsCentreIs) {
    Layer &layer = add_solid(2, 2, {1, 1, 0, 0});
    layer.position_x = 6;
    layer.position_y = 1;
    const Picture picture = all();
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 8; ++x) {
            const bool inside = x >= 5 && x < 7 && y < 2;
            EXPECT_EQ(picture.at(x, y)[0], inside ? 1.0f : 0.0f) << x << "," << y;
        }
    }
}

TEST_F(CompositeTest, LayersBeyondTheFrameAreCutOff) {
    Layer &layer = add(awkward(20, 20));
    layer.position_x = -3;
    layer.position_y = 12;
    const Picture source = awkward(20, 20);
    const Picture picture = all();
    // The layer's left edge lies at -13 and its top at 2.
    EXPECT_EQ(picture.at(0, 1)[0], 0.0f);
    EXPECT_EQ(picture.at(0, 2)[0], 1.0f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(picture.at(6, 3)[2]),
              std::bit_cast<std::uint32_t>(source.at(19, 1)[2]));
    EXPECT_EQ(picture.at(7, 3)[0], 0.0f);
}

TEST_F(CompositeTest, HalfPixelOffsetIsInterpolated) {
    Layer &layer = add_solid(8, 4, {1, 1, 1, 1});
    layer.position_x = 4.5;
    const Picture picture = all();
    EXPECT_FLOAT_EQ(picture.at(0, 0)[0], 0.5f);
    EXPECT_FLOAT_EQ(picture.at(0, 0)[1], 1.0f) << "colour does not darken at the edge";
    EXPECT_FLOAT_EQ(picture.at(4, 2)[0], 1.0f);
}

TEST_F(CompositeTest, ScaleGrowsAboutThePosition) {
    add_solid(4, 2, {1, 1, 0, 0}).scale = 150;
    const Picture picture = all();
    // Edges at 1 and 7, faded over one enlarged pixel: column 0 lies a third of a layer pixel
    // outside, column 1 a third inside, where bilinear weights are 1/6 and 5/6.
    const float expected[] = {1.0f / 6, 5.0f / 6, 1, 1, 1, 1, 5.0f / 6, 1.0f / 6};
    for (int x = 0; x < 8; ++x) EXPECT_NEAR(picture.at(x, 2)[0], expected[x], 1e-6) << x;
}

TEST_F(CompositeTest, NegativeScaleMirrors) {
    Picture source = make_picture(8, 4, SampleType::Float);
    for (int x = 0; x < 8; ++x) {
        for (int y = 0; y < 4; ++y) {
            const Pixel value = {1, static_cast<float>(x), 0, 0};
            std::ranges::copy(value, source.at(x, y));
        }
    }
    add(source).scale = -100;
    const Picture picture = all();
    for (int x = 0; x < 8; ++x) EXPECT_FLOAT_EQ(picture.at(x, 1)[1], static_cast<float>(7 - x));
}

TEST_F(CompositeTest, BrokenGeometryDrawsNothing) {
    for (const double bad : {0.0, std::nan(""), HUGE_VAL, 1e-300}) {
        add_solid(8, 4, {1, 1, 1, 1}).scale = bad;
    }
    add_solid(8, 4, {1, 1, 1, 1}).position_x = std::nan("");
    add_solid(8, 4, {1, 1, 1, 1}).position_y = HUGE_VAL;
    add_solid(8, 4, {1, 1, 1, 1}).position_x = 1e300;
    EXPECT_THAT(all().argb, testing::Each(0.0f));
}

TEST_F(CompositeTest, PixelAspectIsEvenedOut) {
    const ItemId solid = project.add_solid_item("wide", 2, 4, {1, 1, 1, 1});
    project.item(solid)->par_num = 2;
    project.add_layer(comp, solid, 0, "wide");
    const Picture picture = all();
    // Two pixels of aspect 2 cover columns 2..5; the edges fade over a quarter of a layer pixel to
    // either side of the column centres.
    const float expected[] = {0, 0.25f, 0.75f, 1, 1, 0.75f, 0.25f, 0};
    for (int x = 0; x < 8; ++x) EXPECT_FLOAT_EQ(picture.at(x, 1)[0], expected[x]) << x;
}

TEST_F(CompositeTest, EqualAspectWrittenDifferentlyStaysExact) {
    const Picture source = awkward(8, 4);
    add(source);
    project.item(project.item(comp)->layers[0].source)->par_num = 3;
    project.item(project.item(comp)->layers[0].source)->par_den = 3;
    EXPECT_TRUE(same_bits(all(), source));
}

TEST_F(CompositeTest, HiddenAdjustmentNullAndTextLayersAddNothing) {
    add_solid(8, 4, {1, 1, 1, 1}).flags = 0;
    add_solid(8, 4, {1, 1, 1, 1}).flags |= layer_flag::kAdjustment;
    add_solid(8, 4, {1, 1, 1, 1}).flags |= layer_flag::kNull;
    project.add_text_layer(comp, 0, "Title");
    EXPECT_THAT(all().argb, testing::Each(0.0f));
}

TEST_F(CompositeTest, GuideLayersShowInTheirOwnCompOnly) {
    add_solid(8, 4, {1, 1, 0, 0}).flags |= layer_flag::kGuide;
    EXPECT_EQ(pixel(all(), 0, 0), (Pixel{1, 1, 0, 0}));
    const ItemId outer = project.add_comp("Outer", 8, 4, 1, 1, 3);
    project.add_layer(outer, comp, 0, "nested");
    EXPECT_EQ(pixel(composite(project, outer, -1, 0), 0, 0), (Pixel{0, 0, 0, 0}));
}

TEST_F(CompositeTest, NestedCompsAreDrawn) {
    const Picture source = awkward(8, 4);
    add(source);
    const ItemId outer = project.add_comp("Outer", 8, 4, 1, 1, 3);
    project.add_layer(outer, comp, 0, "nested");
    EXPECT_TRUE(same_bits(composite(project, outer, -1, 0), source));
}

TEST_F(CompositeTest, MovingFootageIsReadAtItsFrameAndEndsAfterItsLast) {
    const ItemId item = project.add_footage("moving", 8, 4, 1, 1, 2, [](std::int64_t frame) {
        return filled(8, 4, {1, static_cast<float>(frame), 0, 0});
    });
    project.add_layer(comp, item, 0, "moving");
    EXPECT_EQ(pixel(composite(project, comp, -1, 1), 0, 0), (Pixel{1, 1, 0, 0}));
    EXPECT_EQ(pixel(composite(project, comp, -1, 2), 0, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixel(composite(project, comp, -1, -1), 0, 0), (Pixel{0, 0, 0, 0}));
}

TEST_F(CompositeTest, StillsAreHeld) {
    const ItemId item = project.add_footage("still", 8, 4, 1, 1, 1, [](std::int64_t frame) {
        EXPECT_EQ(frame, 0);
        return filled(8, 4, {1, 0, 0, 1});
    });
    project.add_layer(comp, item, 0, "still");
    EXPECT_EQ(pixel(composite(project, comp, -1, 1000), 0, 0), (Pixel{1, 0, 0, 1}));
}

TEST_F(CompositeTest, ClosedFootageAndWrongSizesAreErrors) {
    const ItemId closed = project.add_footage("closed", 8, 4, 1, 1, 1, {});
    const ItemId wrong =
        project.add_footage("wrong", 8, 4, 1, 1, 1, [](std::int64_t) { return filled(7, 4, {}); });
    EXPECT_THROW(item_picture(project, closed, 0), PictureError);
    EXPECT_THROW(item_picture(project, wrong, 0), PictureError);
    EXPECT_THROW(composite(project, closed, -1, 0), ProjectError);
    EXPECT_THROW(item_picture(project, 99, 0), ProjectError);
}

TEST_F(CompositeTest, AlphasOutsideTheirRangeAreClampedWhereBlended) {
    add_solid(8, 4, {1, 0, 0, 1});
    add(filled(8, 4, {kNan, 1, 1, 1}));
    add(filled(8, 4, {-2, 1, 1, 1}));
    EXPECT_EQ(pixel(all(), 0, 0), (Pixel{1, 0, 0, 1}));
    add(filled(8, 4, {3, 0.5f, 0.5f, 0.5f}));
    EXPECT_EQ(pixel(all(), 0, 0), (Pixel{3, 0.5f, 0.5f, 0.5f})) << "more than opaque: copied";
}

}  // namespace
}  // namespace stage
