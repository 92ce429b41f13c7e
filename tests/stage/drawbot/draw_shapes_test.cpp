// Arcs and rectangles as paths; affine maps.
#include <gmock/gmock.h>

#include <cmath>

#include "stage/drawbot/affine.h"
#include "stage/drawbot/path_shapes.h"

namespace stage_test {
namespace {

using stage::Affine;
using stage::Bounds;
using stage::DrawPath;
using stage::DrawPoint;
using stage::PathStep;

/// A point of a cubic curve.
DrawPoint on_curve(DrawPoint from, const PathStep &curve, double t) {
    const auto mix = [&](double a, double b, double c, double d) {
        const double s = 1 - t;
        return static_cast<float>(a * s * s * s + 3 * b * s * s * t + 3 * c * s * t * t +
                                  d * t * t * t);
    };
    const auto &[a, b, c] = curve.points;
    return {mix(from.x, a.x, b.x, c.x), mix(from.y, a.y, b.y, c.y)};
}

/// The last point of a step.
DrawPoint end_of(const PathStep &step) {
    return step.points[step.kind == PathStep::Kind::kCurve ? 2 : 0];
}

/// Largest distance of the curves from the circle, as a share of the radius.
double error_of(const DrawPath &path, DrawPoint center, double radius) {
    double worst = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (path[i].kind != PathStep::Kind::kCurve) continue;
        for (int k = 0; k <= 20; ++k) {
            const DrawPoint point = on_curve(end_of(path[i - 1]), path[i], k / 20.0);
            const double distance = std::hypot(point.x - center.x, point.y - center.y);
            worst = std::max(worst, std::abs(distance - radius) / radius);
        }
    }
    return worst;
}

TEST(Arc, every_point_of_it_lies_on_the_circle) {
    for (const float sweep : {1.f, 45.f, 90.f, 91.f, 180.f, 270.f, 360.f, -30.f, -360.f}) {
        DrawPath path;
        stage::add_arc(path, {50, 60}, 40, 33, sweep);
        EXPECT_LT(error_of(path, {50, 60}, 40), 0.0003) << sweep;
    }
}

TEST(Arc, ends_where_start_and_sweep_say) {
    DrawPath path;
    stage::add_arc(path, {0, 0}, 10, 90, 180);  // six o'clock, by nine, to twelve
    EXPECT_NEAR(path.front().points[0].x, 0, 1e-5);
    EXPECT_NEAR(path.front().points[0].y, 10, 1e-5);
    EXPECT_NEAR(end_of(path[1]).x, -10, 1e-5);
    EXPECT_NEAR(end_of(path.back()).y, -10, 1e-5);
    DrawPath back;
    stage::add_arc(back, {0, 0}, 10, 0, -90);  // counter-clockwise: up
    EXPECT_NEAR(end_of(back.back()).y, -10, 1e-5);
}

TEST(Arc, has_a_curve_for_each_quarter_and_no_more_than_one_turn) {
    const auto curves = [](float sweep) {
        DrawPath path;
        stage::add_arc(path, {0, 0}, 10, 0, sweep);
        return path.size() - 1;
    };
    EXPECT_EQ(curves(90), 1u);
    EXPECT_EQ(curves(90.5f), 2u);
    EXPECT_EQ(curves(360), 4u);
    EXPECT_EQ(curves(1e30f), 4u);
    EXPECT_EQ(curves(0), 1u);
}

TEST(Arc, joins_an_open_figure_and_starts_one_otherwise) {
    DrawPath path{{PathStep::Kind::kMove, {{{1, 1}}}}};
    stage::add_arc(path, {0, 0}, 10, 0, 90);
    EXPECT_EQ(path[1].kind, PathStep::Kind::kLine);
    path.push_back({PathStep::Kind::kClose, {}});
    stage::add_arc(path, {0, 0}, 10, 0, 90);
    EXPECT_EQ(path[4].kind, PathStep::Kind::kMove);
}

TEST(Shapes, stay_finite_at_the_ends_of_what_floats_hold) {
    DrawPath path;
    stage::add_rect(path, {3e38f, -3e38f, 3e38f, -3e38f});
    stage::add_arc(path, {3e38f, 3e38f}, 3e38f, 3e38f, 360);
    for (const PathStep &step : path) {
        for (const DrawPoint &point : step.points) {
            EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y));
        }
    }
}

TEST(AffineMap, reads_row_vectors) {
    const Affine map = Affine::from_matrix({{{2, 3, 0}, {5, 7, 0}, {11, 13, 1}}});
    const Affine::Point point = map(1, 10);
    EXPECT_EQ(point.x, 1 * 2 + 10 * 5 + 11);
    EXPECT_EQ(point.y, 1 * 3 + 10 * 7 + 13);
}

TEST(AffineMap, composes_inner_first) {
    const Affine twice{2, 0, 0, 2, 0, 0}, shift{1, 0, 0, 1, 10, 20};
    EXPECT_EQ(twice.after(shift)(1, 1).x, 22);
    EXPECT_EQ(shift.after(twice)(1, 1).x, 12);
    EXPECT_EQ(shift.after(twice)(1, 1).y, 22);
}

TEST(AffineMap, is_undone_by_its_inverse_if_there_is_one) {
    const Affine map{2, 1, -3, 4, 10, 20};
    const auto back = map.inverse();
    ASSERT_TRUE(back.has_value());
    const Affine::Point there = map(5, 6), here = (*back)(there.x, there.y);
    EXPECT_NEAR(here.x, 5, 1e-12);
    EXPECT_NEAR(here.y, 6, 1e-12);
    EXPECT_FALSE((Affine{1, 2, 2, 4, 0, 0}).inverse().has_value());
    EXPECT_FALSE((Affine{std::nan(""), 0, 0, 1, 0, 0}).inverse().has_value());
    EXPECT_FALSE((Affine{INFINITY, 0, 0, 1, 0, 0}).inverse().has_value());
}

TEST(AffineMap, a_turned_rectangle_has_bounds_around_its_corners) {
    const Affine quarter{0, 1, -1, 0, 0, 0};  // x to y, y to -x
    EXPECT_EQ(mapped(quarter, Bounds{0, 0, 10, 4}), (Bounds{-4, 0, 0, 10}));
    EXPECT_TRUE(mapped(quarter, Bounds{5, 5, 5, 9}).empty());
    EXPECT_TRUE((Bounds{std::nan(""), 0, 1, 1}).empty());
}

}  // namespace
}  // namespace stage_test
