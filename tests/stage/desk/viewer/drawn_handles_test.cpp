// What the product draws over its picture, exactly, and what strict mode says to it.
#include <set>

#include "support/stage/desk_fixture.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DrawnHandles : public DeskTest {
  protected:
    explicit DrawnHandles(const stage::HostOptions &options = {}) : DeskTest(options) {}

    /// A monitor window from (20, 30) to (276, 174) of the 640x360 layer, seen at twice the size:
    /// from (50, 70) to (562, 358) of the window.
    void show_monitor() {
        set_the_scene();
        stage::ParamValue source, position;
        source.layer = footage;
        position.x = 20;
        position.y = 30;
        desk.set_value(index("Original Source"), source);
        set("Monitor Layout", 6);
        desk.set_value(index("Monitor Position"), position);
        set("Monitor Size", 40);
        set("Compare with Original", 25);
        desk.viewport().zoom = 2;
        desk.viewport().pan_x = desk.viewport().pan_y = 10;
        desk.touch();
    }
    std::vector<std::string> lines() {
        std::vector<std::string> result;
        for (const auto &primitive : desk.overlay().primitives) {
            result.push_back(to_text(primitive));
        }
        return result;
    }
};

const char *const kTriangle =
    "theme fill, shadow: move 562 358, line 562 346, line 550 358, line 562 358";
const char *const kBar = "paint rect 50 70 512 18, color 0.5 0.5 0.5 0.75";

TEST_F(DrawnHandles, corner_bar_stem_and_diamond_of_the_monitor_window) {
    show_monitor();
    set("Compare Opacity", 60);
    EXPECT_THAT(
        lines(),
        ElementsAre(kTriangle, kBar,
                    "theme stroke, shadow: move 175 214, line 181 214, move 178 214, "
                    "line 178 260.08, move 175 329.2, line 181 329.2",
                    "theme fill, shadow: move 173 260.08, line 178 255.08, line 183 260.08, "
                    "line 178 265.08"));
}

TEST_F(DrawnHandles, there_is_no_stem_at_full_opacity) {
    show_monitor();
    set("Compare Opacity", 100);
    EXPECT_THAT(lines(),
                ElementsAre(kTriangle, kBar,
                            "theme fill, shadow: move 173 214, line 178 209, line 183 214, "
                            "line 178 219"));
}

TEST_F(DrawnHandles, scopes_alone_draw_nothing) {
    show_monitor();
    set("Monitor Layout", 7);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(DrawnHandles, the_layer_window_draws_the_same_without_the_layers_place_in_the_comp) {
    show_monitor();
    desk.place_layer(scopes, 400, 300, 50);
    desk.window = stage::WindowKind::kLayer;
    desk.viewport().zoom = 2;
    desk.viewport().pan_x = desk.viewport().pan_y = 10;
    desk.touch();
    const std::vector<std::string> drawn = lines();
    ASSERT_GE(drawn.size(), 2u);
    EXPECT_EQ(drawn[0], kTriangle);
    EXPECT_EQ(drawn[1], kBar);
}

TEST_F(DrawnHandles, only_the_surface_suites_two_numbers_are_out_of_balance) {
    show_monitor();
    session.host.strict.clear();
    lines();
    std::set<std::string> texts;
    for (const stage::Finding &finding : session.host.strict.all()) {
        EXPECT_TRUE(finding.known) << finding.text;
        texts.insert(finding.text);
    }
    EXPECT_THAT(texts, ElementsAre("\"DRAWBOT Surface Suite\" 1: acquired minus released is 1",
                                   "\"DRAWBOT Surface Suite\" 2: acquired minus released is -1",
                                   "\"DRAWBOT Surface Suite\", 2 released but not acquired"));
}

stage::HostOptions without_reference() {
    stage::HostOptions options;
    options.null_drawing_reference = true;
    return options;
}

class DrawnOnNothing : public DrawnHandles {
  protected:
    DrawnOnNothing() : DrawnHandles(without_reference()) {}
};

TEST_F(DrawnOnNothing, a_null_reference_is_survived) {
    show_monitor();
    EXPECT_THAT(lines(), IsEmpty());
}

}  // namespace
}  // namespace stage_test
