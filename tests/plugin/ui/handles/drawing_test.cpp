// What is painted for a handle, as lists of points, and the two monitor rectangles.
#include "ui/handles/handle_drawing.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "plugin/ui/handles/expected_handles.h"

namespace {

using expected::Scene;

std::vector<ks::PaintItem> items(const Scene &scene, int n,
                                 const expected::Window &window = expected::Window{}) {
    const ks::HandleDrawing drawing = ks::drawing_of(ks::kHandleTable[static_cast<std::size_t>(n)],
                                                     expected::settings_of(scene), window);
    return {drawing.items.begin(),
            drawing.items.begin() + static_cast<std::ptrdiff_t>(drawing.count)};
}

struct Expected {
    bool starts;
    float x;
    float y;
};

template <class Kind>
void expect_path(const ks::PaintItem &item, const std::vector<Expected> &points) {
    const auto *path = std::get_if<Kind>(&item);
    ASSERT_NE(path, nullptr);
    ASSERT_EQ(path->count, points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(path->points[i].starts, points[i].starts) << i;
        EXPECT_FLOAT_EQ(path->points[i].x, points[i].x) << i;
        EXPECT_FLOAT_EQ(path->points[i].y, points[i].y) << i;
    }
}

ks::Bar bar(const Scene &scene) {
    return std::get<ks::Bar>(items(scene, 1).at(0));
}

TEST(Drawing, monitor_corner_is_a_triangle_of_12_pixels) {
    const auto drawn = items(Scene{}, 0);  // from (300, 200) to (1260, 740)
    ASSERT_EQ(drawn.size(), 1u);
    expect_path<ks::FilledPath>(
        drawn[0], {{true, 1260, 740}, {false, 1260, 728}, {false, 1248, 740}, {false, 1260, 740}});
}

TEST(Drawing, triangle_keeps_its_size_at_every_zoom) {
    expected::Window window;
    window.zoom_num = 4;
    window.pan_x = -5;
    window.pan_y = 10;
    expect_path<ks::FilledPath>(
        items(Scene{}, 0, window).at(0),
        {{true, 5035, 2970}, {false, 5035, 2958}, {false, 5023, 2970}, {false, 5035, 2970}});
}

TEST(Drawing, monitor_bar_is_a_rectangle_18_pixels_tall) {
    const auto drawn = items(Scene{}, 1);
    ASSERT_EQ(drawn.size(), 1u);
    const auto painted = std::get<ks::Bar>(drawn[0]);
    EXPECT_EQ(painted.left, 300.f);
    EXPECT_EQ(painted.top, 200.f);
    EXPECT_EQ(painted.width, 960.f);
    EXPECT_EQ(painted.height, 18.f);
    EXPECT_EQ(ks::kBarColour, (std::array<float, 4>{0.5f, 0.5f, 0.5f, 0.75f}));
}

TEST(Drawing, bar_height_is_divided_by_the_vertical_denominator_in_whole_pixels) {
    Scene scene;
    const int heights[][2] = {{1, 18}, {2, 9}, {3, 6}, {4, 4}, {5, 3}, {19, 0}};
    for (const auto &each : heights) {
        scene.den_y = each[0];
        EXPECT_EQ(bar(scene).height, static_cast<float>(each[1])) << each[0];
    }
}

TEST(Drawing, corners_are_rounded_to_whole_window_pixels_before_the_width_is_taken) {
    Scene scene;
    scene.monitor_x = 300.5;
    scene.monitor_y = 200.25;
    scene.width = 1919;  // the right edge at 300.5 + 959.5
    EXPECT_EQ(bar(scene).left, 301.f);
    EXPECT_EQ(bar(scene).top, 200.f);
    EXPECT_EQ(bar(scene).width, 1260.f - 301.f);
    scene.monitor_x = -0.5;
    scene.monitor_y = -0.75;
    EXPECT_EQ(bar(scene).left, 0.f);
    EXPECT_EQ(bar(scene).top, -1.f);
}

TEST(Drawing, monitor_is_drawn_with_the_aspect_on_its_size_alone) {
    Scene scene;
    scene.par_num = 2;
    const ks::HandleSettings settings = expected::settings_of(scene);
    const ks::LayerRect drawn = ks::drawn_monitor(settings);
    EXPECT_EQ(drawn.from.x, 300);
    EXPECT_EQ(drawn.to.x, 780);
    EXPECT_EQ(drawn.to.y, 740);
    const ks::LayerRect clicked = ks::clicked_monitor(settings);
    EXPECT_EQ(clicked.from.x, 150) << "clicked with it on both edges";
    EXPECT_EQ(clicked.to.x, 630);
    EXPECT_EQ(clicked.to.y, 740);
    EXPECT_EQ(bar(scene).left, 300.f);
}

TEST(Drawing, monitor_position_keeps_its_fraction_when_drawn_only) {
    Scene scene;
    scene.monitor_x = 300.75;
    scene.monitor_y = 200.75;
    const ks::HandleSettings settings = expected::settings_of(scene);
    EXPECT_EQ(ks::drawn_monitor(settings).from.x, 300.75);
    EXPECT_EQ(ks::drawn_monitor(settings).to.y, 740.75);
    EXPECT_EQ(ks::clicked_monitor(settings).from.x, 300);
    EXPECT_EQ(ks::clicked_monitor(settings).to.y, 740);
}

TEST(Drawing, wipe_at_full_opacity_is_a_diamond_alone) {
    Scene scene;
    scene.layout = 1;
    scene.opacity = 100;
    const auto drawn = items(scene, 2);
    ASSERT_EQ(drawn.size(), 1u);
    expect_path<ks::FilledPath>(
        drawn[0], {{true, 571, 540}, {false, 576, 535}, {false, 581, 540}, {false, 576, 545}});
}

TEST(Drawing, wipe_below_full_opacity_has_ticks_and_a_stem_beneath_the_diamond) {
    Scene scene;
    scene.layout = 1;  // xw = 576, middle 540, yo = 1080 * 0.66 = 712.8, opacity 0 at 972
    const auto drawn = items(scene, 2);
    ASSERT_EQ(drawn.size(), 2u);
    expect_path<ks::StrokedPath>(drawn[0], {{true, 573, 540},
                                            {false, 579, 540},
                                            {true, 576, 540},
                                            {false, 576, 712.8f},
                                            {true, 573, 972},
                                            {false, 579, 972}});
    expect_path<ks::FilledPath>(
        drawn[1],
        {{true, 571, 712.8f}, {false, 576, 707.8f}, {false, 581, 712.8f}, {false, 576, 717.8f}});
}

/// Centre of the diamond.
expected::Point diamond(const Scene &scene, const expected::Window &window = expected::Window{}) {
    const auto drawn = items(scene, 2, window);
    if (drawn.empty()) return {-1, -1};
    const auto &path = std::get<ks::FilledPath>(drawn.back());
    return {path.points[1].x, path.points[0].y};
}

TEST(Drawing, wipe_region_follows_the_layout) {
    Scene scene;
    scene.compare = 25;
    scene.opacity = 0;
    const double at[][3] = {
        {1, 480, 972}, {3, 240, 486}, {4, 480 + 360, 729}, {6, 300 + 240, 200 + 486}};
    for (const auto &each : at) {
        scene.layout = static_cast<int>(each[0]);
        EXPECT_NEAR(diamond(scene).x, each[1], 1e-3) << each[0];
        EXPECT_NEAR(diamond(scene).y, each[2], 1e-3) << each[0];
    }
}

TEST(Drawing, windowed_wipe_is_drawn_in_the_drawn_monitor_and_clicked_in_the_clicked_one) {
    Scene scene;
    scene.par_num = 2;
    scene.compare = 0;
    scene.opacity = 100;
    EXPECT_EQ(diamond(scene).x, 300);
    EXPECT_EQ(expected::handle_point(scene, 2).x, 150);
    const auto hit = ks::clicked_handle(expected::settings_of(scene), expected::Window{},
                                        {150, 470}, [](double v) { return std::abs(v); });
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->handle, 2);
}

TEST(Drawing, wipe_is_computed_from_the_rounded_region_and_not_rounded_again) {
    Scene scene;
    scene.layout = 3;
    scene.width = 1921;  // 960.5 becomes 961
    scene.compare = 50;
    scene.opacity = 100;
    EXPECT_EQ(diamond(scene).x, 480.5);
}

TEST(Drawing, nothing_is_drawn_for_the_scopes) {
    for (int layout = 1; layout <= 7; ++layout) {
        Scene scene;
        scene.layout = layout;
        for (int n = 3; n <= 12; ++n) EXPECT_TRUE(items(scene, n).empty()) << n;
    }
}

TEST(Drawing, monitor_handles_are_drawn_in_the_windowed_layout_only) {
    for (int layout = 1; layout <= 7; ++layout) {
        Scene scene;
        scene.layout = layout;
        EXPECT_EQ(items(scene, 0).size(), layout == 6 ? 1u : 0u) << layout;
        EXPECT_EQ(items(scene, 1).size(), layout == 6 ? 1u : 0u) << layout;
        EXPECT_EQ(items(scene, 2).size(), layout == 2 || layout == 5 || layout == 7 ? 0u : 2u)
            << layout;
    }
}

TEST(Drawing, wipe_is_not_drawn_while_its_parameter_is_disabled) {
    Scene scene;
    scene.compare_disabled = true;
    EXPECT_TRUE(items(scene, 2).empty());
    EXPECT_EQ(items(scene, 0).size(), 1u);
}

TEST(Drawing, values_without_meaning_never_reach_the_host) {
    Scene scene;
    scene.layout = 1;
    for (double bad : {std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300}) {
        scene.compare = bad;
        scene.opacity = bad;
        for (const ks::PaintItem &item : items(scene, 2)) {
            const auto *stem = std::get_if<ks::StrokedPath>(&item);
            const ks::Path &path = stem != nullptr ? static_cast<const ks::Path &>(*stem)
                                                   : std::get<ks::FilledPath>(item);
            for (std::size_t i = 0; i < path.count; ++i) {
                EXPECT_LE(std::abs(path.points[i].x), 1048576.f);
                EXPECT_LE(std::abs(path.points[i].y), 1048576.f);
            }
        }
    }
}

}  // namespace
