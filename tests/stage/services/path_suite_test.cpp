// "DRAWBOT Path Suite": what each call adds, as the theme then strokes it.
#include "stage/services/drawing_host.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PathSuite : public DrawingTest {
  protected:
    PathSuite() : path_(path()) {}
    ~PathSuite() override { EXPECT_EQ(release(path_), 0); }

    std::string steps() {
        EXPECT_EQ(theme_suite.PF_StrokePath(drawing, path_, 0), 0);
        return drawn().at(0).substr(std::string("theme stroke: ").size());
    }

    DRAWBOT_PathRef path_;
};

TEST_F(PathSuite, moves_and_lines_are_kept_in_order) {
    EXPECT_EQ(path_suite.MoveTo(path_, 1.5f, -2), 0);
    EXPECT_EQ(path_suite.LineTo(path_, 3, 4), 0);
    EXPECT_EQ(path_suite.MoveTo(path_, 5, 6), 0);
    EXPECT_EQ(steps(), "move 1.5 -2, line 3 4, move 5 6");
}

TEST_F(PathSuite, a_line_without_a_point_to_come_from_starts_a_figure) {
    EXPECT_EQ(path_suite.LineTo(path_, 3, 4), 0);
    EXPECT_EQ(path_suite.LineTo(path_, 5, 4), 0);
    EXPECT_EQ(steps(), "move 3 4, line 5 4");
}

TEST_F(PathSuite, a_curve_has_two_control_points_and_an_end) {
    const DRAWBOT_PointF32 a{1, 2}, b{3, 4}, c{5, 6};
    EXPECT_EQ(path_suite.MoveTo(path_, 0, 0), 0);
    EXPECT_EQ(path_suite.BezierTo(path_, &a, &b, &c), 0);
    EXPECT_EQ(steps(), "move 0 0, curve 1 2 3 4 5 6");
}

TEST_F(PathSuite, a_curve_without_a_point_to_come_from_starts_at_its_first_control_point) {
    const DRAWBOT_PointF32 a{1, 2}, b{3, 4}, c{5, 6};
    EXPECT_EQ(path_suite.BezierTo(path_, &a, &b, &c), 0);
    EXPECT_EQ(steps(), "move 1 2, curve 1 2 3 4 5 6");
}

TEST_F(PathSuite, a_rectangle_has_left_top_width_and_height) {
    const DRAWBOT_RectF32 rect{10, 20, 5, 7};
    EXPECT_EQ(path_suite.AddRect(path_, &rect), 0);
    EXPECT_EQ(steps(), "move 10 20, line 15 20, line 15 27, line 10 27, close");
}

TEST_F(PathSuite, an_arc_starts_at_three_oclock_and_runs_clockwise) {
    const DRAWBOT_PointF32 center{100, 100};
    EXPECT_EQ(path_suite.AddArc(path_, &center, 10, 0, 90), 0);
    ASSERT_EQ(theme_suite.PF_StrokePath(drawing, path_, 0), 0);
    const stage::DrawPath arc = list.primitives.at(0).path;
    ASSERT_EQ(arc.size(), 2u);
    EXPECT_EQ(arc[0].kind, stage::PathStep::Kind::kMove);
    EXPECT_FLOAT_EQ(arc[0].points[0].x, 110);
    EXPECT_FLOAT_EQ(arc[0].points[0].y, 100);
    EXPECT_FLOAT_EQ(arc[1].points[2].x, 100);
    EXPECT_FLOAT_EQ(arc[1].points[2].y, 110);  // y runs downward: six o'clock
}

TEST_F(PathSuite, closing_ends_the_figure_once) {
    EXPECT_EQ(path_suite.Close(path_), 0);
    EXPECT_EQ(path_suite.MoveTo(path_, 1, 1), 0);
    EXPECT_EQ(path_suite.LineTo(path_, 2, 2), 0);
    EXPECT_EQ(path_suite.Close(path_), 0);
    EXPECT_EQ(path_suite.Close(path_), 0);
    EXPECT_EQ(steps(), "move 1 1, line 2 2, close");
}

TEST_F(PathSuite, what_was_drawn_is_not_changed_by_later_steps) {
    path_suite.MoveTo(path_, 1, 1);
    theme_suite.PF_StrokePath(drawing, path_, 0);
    path_suite.LineTo(path_, 2, 2);
    EXPECT_THAT(drawn(), ElementsAre("theme stroke: move 1 1"));
}

TEST_F(PathSuite, numbers_that_are_none_are_findings_and_add_nothing) {
    const DRAWBOT_PointF32 good{1, 1}, bad{kNan, 1};
    const DRAWBOT_RectF32 rect{0, 0, kInfinity, 1};
    EXPECT_NE(path_suite.MoveTo(path_, kNan, 0), 0);
    EXPECT_NE(path_suite.LineTo(path_, 0, -kInfinity), 0);
    EXPECT_NE(path_suite.BezierTo(path_, &good, &bad, &good), 0);
    EXPECT_NE(path_suite.AddRect(path_, &rect), 0);
    EXPECT_NE(path_suite.AddArc(path_, &bad, 1, 0, 90), 0);
    EXPECT_NE(path_suite.AddArc(path_, &good, 1, 0, kNan), 0);
    EXPECT_EQ(findings(), std::vector<std::string>(6, "drawbot.not_a_number"));
    EXPECT_EQ(path_suite.MoveTo(path_, 0, 0), 0);
    EXPECT_EQ(steps(), "move 0 0");
}

TEST_F(PathSuite, missing_arguments_are_refused) {
    const DRAWBOT_PointF32 good{1, 1};
    EXPECT_EQ(path_suite.BezierTo(path_, &good, nullptr, &good), A_Err_PARAMETER);
    EXPECT_EQ(path_suite.AddRect(path_, nullptr), A_Err_PARAMETER);
    EXPECT_EQ(path_suite.AddArc(path_, nullptr, 1, 0, 90), A_Err_PARAMETER);
    EXPECT_THAT(findings(), IsEmpty());
}

}  // namespace
}  // namespace stage_test
