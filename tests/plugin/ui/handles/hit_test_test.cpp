// Clicks and the cursor against the second statement, over every handle, window, zoom, pan, pixel
// aspect and layout.
#include "ui/handles/hit_test.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/ui/handles/hit_probe.h"

namespace {

using expected::clicked;
using expected::cursor;
using expected::Scene;
using expected::Window;

int cursor_of(int handle) {
    switch (handle) {
        case -1:
            return 0;
        case 0:
        case 3:
        case 5:
        case 7:
        case 9:
            return 22;
        case 11:
            return 21;
        default:
            return 75;
    }
}

/// Window pixels at, on the edges of and around handle `n`.
std::vector<ks::WindowPoint> probes(const Scene &scene, const Window &window, int n) {
    expected::Box box{};
    if (n == 11) {
        box = expected::height_line(scene);
    } else if (n == 1 || (n >= 4 && n % 2 == 0)) {
        box = expected::bar(scene, n, 18);
    } else {
        const expected::Point p = expected::handle_point(scene, n);
        box = {p.x, p.y, p.x, p.y};
    }
    const auto whole = [](std::int64_t units) { return static_cast<int>(units >> 16); };
    const int left = whole(window.map(box.l, true));
    const int right = whole(window.map(box.r, true));
    const int top = whole(window.map(box.t, false));
    const int bottom = whole(window.map(box.b, false));
    std::vector<int> xs{left, right, (left + right) / 2};
    std::vector<int> ys{top, bottom, (top + bottom) / 2};
    for (int d : {1, 8, 15, 16, 90}) {
        for (int at : {left - d, left + d, right - d, right + d}) xs.push_back(at);
        for (int at : {top - d, top + d, bottom - d, bottom + d}) ys.push_back(at);
    }
    std::vector<ks::WindowPoint> points;
    for (int x : xs) {
        for (int y : ys) points.push_back({x, y});
    }
    return points;
}

struct View {
    int num;
    int den;
    int pan_x;
    int pan_y;
};
constexpr View kViews[] = {{1, 4, 0, 0},  {1, 1, 0, 0},      {4, 1, 0, 0},
                           {1, 4, 37, 9}, {1, 1, -120, 300}, {4, 1, -1500, -2200}};

Window window_of(const View &view, bool composition) {
    Window window;
    window.zoom_num = view.num;
    window.zoom_den = view.den;
    window.pan_x = view.pan_x;
    window.pan_y = view.pan_y;
    window.composition = composition;
    window.layer_x = 64;
    window.layer_y = -40;
    return window;
}

/// The scene with only the handles of one owner: 0 monitor, 1 compare wipe, 2 to 6 the scopes.
Scene only(const Scene &scene, int owner) {
    Scene alone = scene;
    for (std::size_t i = 0; i < 5; ++i) alone.scopes[i].on = static_cast<int>(i) + 2 == owner;
    if (owner > 1) alone.layout = 7;
    return alone;
}

int owner_of(int n) {
    if (n == 2) return 1;
    return n < 2 ? 0 : 2 + (n - 3) / 2;
}

/// What the probes of each handle met, by window (layer, comp) and purpose.
struct Outcomes {
    struct Met {
        bool hit = false;
        bool miss = false;
    };
    Met click[13][2];
    Met cursor[13][2];
    long probes = 0;

    static void add(Met &met, int handle, int found) {
        met.hit |= found == handle;
        met.miss |= found < 0;
    }
};

/// Compares every probe of one scene and window.
void compare(const Scene &scene, const Window &window, Outcomes &outcomes) {
    for (int n = 0; n <= 12; ++n) {
        if (!expected::present(scene, n)) continue;
        for (const Scene &each : {scene, only(scene, owner_of(n))}) {
            for (const ks::WindowPoint &at : probes(each, window, n)) {
                const int want = expected::hit(each, window, at.x, at.y, false);
                const int cursor_want = expected::hit(each, window, at.x, at.y, true);
                ASSERT_EQ(clicked(each, window, at.x, at.y), want)
                    << "handle " << n << " at " << at.x << ", " << at.y;
                ASSERT_EQ(cursor(each, window, at.x, at.y), cursor_of(cursor_want))
                    << "handle " << n << " at " << at.x << ", " << at.y;
                Outcomes::add(outcomes.click[n][window.composition], n, want);
                Outcomes::add(outcomes.cursor[n][window.composition], n, cursor_want);
                ++outcomes.probes;
            }
        }
    }
}

constexpr int kAspects[][2] = {{1, 2}, {1, 1}, {2, 1}, {10, 11}};

TEST(HitTest, agrees_with_the_second_statement_everywhere) {
    Outcomes outcomes;
    for (int layout = 1; layout <= 7; ++layout) {
        for (const auto &aspect : kAspects) {
            for (const View &view : kViews) {
                for (bool composition : {true, false}) {
                    Scene scene;
                    scene.layout = layout;
                    scene.par_num = aspect[0];
                    scene.par_den = aspect[1];
                    SCOPED_TRACE("layout " + std::to_string(layout) + " aspect " +
                                 std::to_string(aspect[0]) + "/" + std::to_string(aspect[1]) +
                                 " zoom " + std::to_string(view.num) + "/" +
                                 std::to_string(view.den) + (composition ? " comp" : " layer"));
                    compare(scene, window_of(view, composition), outcomes);
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
    // Every handle was hit and missed in both windows; the wipe has no cursor to meet.
    for (int n = 0; n <= 12; ++n) {
        for (int composition : {0, 1}) {
            EXPECT_TRUE(outcomes.click[n][composition].hit) << n;
            EXPECT_TRUE(outcomes.click[n][composition].miss) << n;
            EXPECT_EQ(outcomes.cursor[n][composition].hit, n != 2) << n;
            EXPECT_TRUE(outcomes.cursor[n][composition].miss) << n;
        }
    }
    EXPECT_GT(outcomes.probes, 1000000);
}

TEST(HitTest, every_trace_aspect_and_downsample_moves_the_waveform_corners) {
    for (int aspect = 0; aspect <= 5; ++aspect) {
        for (int den_x : {1, 2, 4}) {
            for (int den_y : {1, 3}) {
                Scene scene;
                scene.aspect = aspect;
                scene.den_x = den_x;
                scene.den_y = den_y;
                Outcomes outcomes;
                compare(scene, Window{}, outcomes);
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST(HitTest, fractional_positions_and_sizes_agree_too) {
    Scene scene;
    scene.monitor_x = 300.4;
    scene.monitor_y = -20.25;
    scene.monitor_size = 33.3;
    for (auto &scope : scene.scopes) {
        scope.x += 0.99;
        scope.y += 0.51;
        scope.size += 0.7;
    }
    for (const View &view : kViews) {
        Outcomes outcomes;
        compare(scene, window_of(view, true), outcomes);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
