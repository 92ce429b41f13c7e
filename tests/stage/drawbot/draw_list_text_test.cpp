// Primitives as text.
#include <gmock/gmock.h>

#include "stage/drawbot/draw_list.h"

namespace stage_test {
namespace {

using stage::DrawPrimitive;
using stage::PathStep;
using Kind = DrawPrimitive::Kind;

DrawPrimitive primitive(Kind kind) {
    DrawPrimitive result;
    result.kind = kind;
    return result;
}

TEST(DrawListText, paths_are_listed_step_by_step) {
    DrawPrimitive fill = primitive(Kind::kThemeFill);
    fill.shadow = true;
    fill.path = {{PathStep::Kind::kMove, {{{10, 20}}}},
                 {PathStep::Kind::kLine, {{{10, 8.25f}}}},
                 {PathStep::Kind::kCurve, {{{1, 2}, {3, 4}, {5, 6}}}},
                 {PathStep::Kind::kClose, {}}};
    EXPECT_EQ(to_text(fill),
              "theme fill, shadow: move 10 20, line 10 8.25, curve 1 2 3 4 5 6, close");
}

TEST(DrawListText, numbers_are_as_short_as_they_can_be) {
    DrawPrimitive rect = primitive(Kind::kPaintRect);
    rect.rect = {-0.5f, 1e9f, 0.1f, 100000};
    rect.color = {0, 1, 0.25f, 1};
    EXPECT_EQ(to_text(rect), "paint rect -0.5 1e+09 0.1 100000, color 0 1 0.25 1");
}

TEST(DrawListText, text_names_what_differs_from_the_usual) {
    DrawPrimitive text = primitive(Kind::kText);
    text.text = "abc";
    text.width = 12;
    text.alignment = 2;
    text.truncation = 3;
    text.truncation_width = 50;
    EXPECT_EQ(to_text(text),
              "text \"abc\" at 0 0, size 12, right, ellipsis inside at 50, color 0 0 0 1");
    text.alignment = 7;
    text.truncation = -1;
    EXPECT_EQ(to_text(text), "text \"abc\" at 0 0, size 12, ?, ? at 50, color 0 0 0 1");
}

TEST(DrawListText, changes_of_state_have_their_words) {
    DrawPrimitive antialias = primitive(Kind::kAntiAlias);
    EXPECT_EQ(to_text(antialias), "antialias on");
    antialias.on = false;
    EXPECT_EQ(to_text(antialias), "antialias off");
    EXPECT_EQ(to_text(primitive(Kind::kInterpolation)), "interpolation on");
    EXPECT_EQ(to_text(primitive(Kind::kPushState)), "push state");
    EXPECT_EQ(to_text(primitive(Kind::kPopState)), "pop state");
    EXPECT_EQ(to_text(primitive(Kind::kClip)), "clip 0 0 0 0");
    EXPECT_EQ(to_text(primitive(Kind::kTransform)), "transform 1 0 0 0 1 0 0 0 1");
    EXPECT_EQ(to_text(primitive(Kind::kThemeVertex)), "theme vertex: 0 0");
    EXPECT_EQ(to_text(primitive(Kind::kImage)), "image 0x0 at 0 0, alpha 1");
    EXPECT_EQ(to_text(primitive(Kind::kThemeStroke)), "theme stroke: empty");
}

TEST(DrawListText, a_list_has_a_line_for_each) {
    stage::DrawList list;
    EXPECT_EQ(to_text(list), "");
    list.primitives = {primitive(Kind::kPushState), primitive(Kind::kPopState)};
    EXPECT_EQ(to_text(list), "push state\npop state\n");
}

}  // namespace
}  // namespace stage_test
