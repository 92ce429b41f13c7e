// Pixels of the host's own look: theme colour, stroke width, vertices, shadows.
#include "support/stage/painted.h"

namespace stage_test {
namespace {

using stage::DrawPrimitive;
using testing::ElementsAre;

DrawPrimitive themed(Kind kind, stage::DrawPath path, bool shadow) {
    DrawPrimitive result = primitive(kind);
    result.path = std::move(path);
    result.shadow = shadow;
    return result;
}

const stage::DrawPath kSquare = polygon({{10, 10}, {16, 10}, {16, 16}, {10, 16}});

TEST(ThemePainting, a_fill_has_the_foreground_colour) {
    const Painted picture({themed(Kind::kThemeFill, kSquare, false)});
    EXPECT_THAT(picture.bounds(), ElementsAre(10, 10, 16, 16));
    EXPECT_EQ(picture.at(12, 12), kRed);
}

TEST(ThemePainting, the_shadow_lies_beneath_at_its_offset) {
    const Painted picture({themed(Kind::kThemeFill, kSquare, true)});
    EXPECT_THAT(picture.bounds(), ElementsAre(10, 10, 19, 21));  // 3 right, 5 down
    EXPECT_EQ(picture.at(18, 20), kBlue);
    EXPECT_EQ(picture.at(14, 15), kRed);    // above its shadow
    EXPECT_EQ(picture.at(11, 18), kClear);  // left of the shadow, below the square
}

TEST(ThemePainting, a_stroke_has_the_themes_width) {
    const Painted picture({themed(Kind::kThemeStroke, line({5, 10}, {30, 10}), false)});
    EXPECT_THAT(picture.bounds(), ElementsAre(5, 9, 30, 11));
    EXPECT_EQ(picture.at(15, 10), kRed);
}

TEST(ThemePainting, a_stroke_has_a_shadow_too) {
    const Painted picture({themed(Kind::kThemeStroke, line({5, 10}, {30, 10}), true)});
    EXPECT_THAT(picture.bounds(), ElementsAre(5, 9, 33, 16));
    EXPECT_EQ(picture.at(15, 15), kBlue);
    EXPECT_EQ(picture.at(15, 12), kClear);
}

TEST(ThemePainting, a_vertex_is_a_square_of_the_themes_size_around_its_point) {
    DrawPrimitive vertex = primitive(Kind::kThemeVertex);
    vertex.rect = {20, 12, 0, 0};
    EXPECT_THAT(Painted({vertex}).bounds(), ElementsAre(17, 9, 23, 15));
    vertex.shadow = true;
    EXPECT_THAT(Painted({vertex}).bounds(), ElementsAre(17, 9, 26, 20));
}

TEST(ThemePainting, the_hosts_own_drawing_is_smooth_whatever_the_policy) {
    const Painted picture({themed(Kind::kThemeFill, polygon({{5, 5}, {30, 5}, {5, 12}}), false)});
    int grades = 0;
    for (int x = 0; x < Painted::kWidth; ++x) {
        const std::uint32_t alpha = picture.at(x, 7) >> 24;
        grades += alpha != 0 && alpha != 0xFF;
    }
    EXPECT_GT(grades, 0);
}

TEST(ThemePainting, the_shadow_offset_is_in_window_pixels_under_a_transform) {
    const Painted picture(
        {transform(0.5f, 0, 0, 0.5f, 0, 0), themed(Kind::kThemeFill, kSquare, true)});
    EXPECT_THAT(picture.bounds(), ElementsAre(5, 5, 11, 13));
}

TEST(ThemePainting, colours_carry_their_alpha) {
    stage::OverlayTheme theme = kTestTheme;
    theme.foreground.alpha = 0.5f;
    EXPECT_EQ(Painted({themed(Kind::kThemeFill, kSquare, false)}, theme).at(12, 12), 0x80800000u);
}

}  // namespace
}  // namespace stage_test
