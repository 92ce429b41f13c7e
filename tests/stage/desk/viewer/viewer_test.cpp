// Events of a viewer: what the effect is sent, and what the host makes of its answer.
#include "stage/desk/viewer/viewer.h"

#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::HostOptions;
using stage::Viewer;
using stage::WindowKind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr RogueScene kScene{80, 60};

struct ViewerTest : testing::Test {
    RogueSession rogue;

    explicit ViewerTest(const HostOptions &options = {}) : rogue("", options) {
        rogue.open(kScene);
        rogue.host().undo.clear();
    }
    double centre_x() { return rogue.value(rogue::kCentre).x; }
    double centre_y() { return rogue.value(rogue::kCentre).y; }
    const rogue::SeenEvent &seen() { return rogue.seen().event; }
};

TEST_F(ViewerTest, opening_and_closing_send_the_context_events) {
    rogue.host().trace.enable(true);
    {
        const Viewer viewer(rogue.session, *rogue.effect, WindowKind::kLayer);
        EXPECT_EQ(seen().count, 2);
        EXPECT_EQ(seen().type, PF_Event_ACTIVATE);
        EXPECT_EQ(seen().window, PF_Window_LAYER);
    }
    EXPECT_EQ(seen().count, 4);
    EXPECT_EQ(seen().type, PF_Event_CLOSE_CONTEXT);
}

TEST_F(ViewerTest, windows_that_the_effect_did_not_ask_for_get_no_events) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kEffect);
    EXPECT_FALSE(viewer.press(1, 1).sent);
    EXPECT_EQ(seen().count, 0);
}

TEST_F(ViewerTest, click_drags_and_release_are_one_sequence_with_one_record) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    const stage::EventReply click = viewer.press(30, 20);
    EXPECT_TRUE(click.handled);
    EXPECT_THAT(click.changed, ElementsAre(int{rogue::kCentre}));
    EXPECT_TRUE(viewer.dragging());
    EXPECT_EQ(centre_x(), 30);
    viewer.move(31, 22);
    EXPECT_EQ(seen().type, PF_Event_DRAG);
    EXPECT_EQ(seen().slot, 42) << "slots travel from event to event";
    EXPECT_NE(seen().send_drag, 0);
    EXPECT_EQ(seen().last_time, 0);
    viewer.release(40, 25);
    EXPECT_EQ(seen().type, PF_Event_DRAG);
    EXPECT_NE(seen().last_time, 0);
    EXPECT_FALSE(viewer.dragging());
    EXPECT_EQ(centre_x(), 40);
    EXPECT_EQ(centre_y(), 25);
}

TEST_F(ViewerTest, each_click_starts_with_a_fresh_record) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    viewer.release(30, 20);
    viewer.press(31, 20);
    EXPECT_EQ(seen().slot, 0);
    EXPECT_EQ(seen().send_drag, 0);
}

TEST_F(ViewerTest, a_drag_is_one_step_of_undo) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    for (int x = 31; x < 40; ++x) viewer.move(x, 20);
    EXPECT_FALSE(rogue.session.undo()) << "not while the button is down";
    viewer.release(40, 20);
    EXPECT_THAT(rogue.host().undo.steps(), ElementsAre("Drag Handle"));
    const int before = rogue.host().project.layer(rogue.layer)->effects.front().instance;
    EXPECT_TRUE(rogue.session.undo());
    EXPECT_EQ(centre_x(), 40.0 * 1) << "50 % of 80 pixels";
    EXPECT_EQ(centre_y(), 15);
    EXPECT_EQ(rogue.host().instances.front()->id, before) << "the effect runs on";
}

TEST_F(ViewerTest, a_click_that_is_not_handled_starts_no_drag_and_no_step) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    rogue.choose("ignore_clicks");
    EXPECT_FALSE(viewer.press(30, 20).handled);
    EXPECT_FALSE(viewer.dragging());
    viewer.move(31, 20);
    EXPECT_EQ(seen().type, PF_Event_ADJUST_CURSOR);
    EXPECT_THAT(rogue.host().undo.steps(), IsEmpty());
    EXPECT_EQ(rogue.host().undo.open_groups(), 0);
}

TEST_F(ViewerTest, an_effect_may_end_its_drag_early) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    rogue.choose("stop_drag");
    viewer.move(31, 20);
    EXPECT_FALSE(viewer.dragging());
}

TEST_F(ViewerTest, a_failing_drag_ends_it) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    rogue.choose("fail_in_drag");
    EXPECT_NE(viewer.move(31, 20).error, 0);
    EXPECT_FALSE(viewer.dragging());
    EXPECT_EQ(rogue.host().undo.open_groups(), 0);
}

TEST_F(ViewerTest, the_cursor_is_the_effects_until_the_pointer_leaves) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    EXPECT_EQ(viewer.cursor(), 0);
    viewer.move(3, 4);
    EXPECT_EQ(viewer.cursor(), 75);
    viewer.leave();
    EXPECT_EQ(seen().type, PF_Event_MOUSE_EXITED);
    EXPECT_EQ(viewer.cursor(), 0);
}

TEST_F(ViewerTest, idle_and_keys_reach_the_effect) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    EXPECT_TRUE(viewer.idle().sent);
    EXPECT_EQ(seen().type, PF_Event_IDLE);
    viewer.key(65);
    EXPECT_EQ(seen().type, PF_Event_KEYDOWN);
}

TEST_F(ViewerTest, window_points_become_layer_points_through_zoom_pan_and_the_layers_place) {
    stage::Layer &layer = *rogue.host().project.layer(rogue.layer);
    layer.position_x = 50;  // ten to the right of the middle
    layer.scale = 50;
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.viewport.zoom = 2;
    viewer.viewport.pan_x = 100;
    viewer.viewport.pan_y = 10;
    viewer.press(180, 90);
    // Comp (40, 40); layer x = 40 + (40 - 50) / 0.5, y = 30 + (40 - 30) / 0.5.
    EXPECT_EQ(centre_x(), 20);
    EXPECT_EQ(centre_y(), 50);
    viewer.release(180, 90);
    Viewer alone(rogue.session, *rogue.effect, WindowKind::kLayer);
    alone.viewport = viewer.viewport;
    alone.press(180, 90);
    EXPECT_EQ(centre_x(), 40) << "a layer window shows the layer itself";
    alone.release(180, 90);
}

TEST_F(ViewerTest, values_are_limited_but_points_are_not) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    rogue.choose("change_far_outside");
    viewer.press(30, 20);
    EXPECT_EQ(rogue.value(rogue::kAmount).number, 100);
    EXPECT_EQ(centre_x(), -100);
    viewer.release(30, 20);
}

struct ClampingViewer : ViewerTest {
    ClampingViewer()
        : ViewerTest([] {
              HostOptions options;
              options.clamp_written_points = true;
              return options;
          }()) {}
};

TEST_F(ClampingViewer, limits_points_with_bounds_to_the_layer) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    rogue.choose("change_far_outside");
    viewer.press(30, 20);
    EXPECT_EQ(centre_x(), 0);
    viewer.release(300, 20);
    EXPECT_EQ(centre_x(), 80);
}

struct ForgetfulViewer : ViewerTest {
    ForgetfulViewer()
        : ViewerTest([] {
              HostOptions options;
              options.carry_send_drag = false;
              return options;
          }()) {}
};

TEST_F(ForgetfulViewer, ends_drags_that_are_not_asked_for_again) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    viewer.move(31, 20);
    EXPECT_EQ(centre_x(), 31);
    EXPECT_FALSE(viewer.dragging());
}

struct OldFormViewer : ViewerTest {
    OldFormViewer()
        : ViewerTest([] {
              HostOptions options;
              options.drags_as_clicks = true;
              return options;
          }()) {}
};

TEST_F(OldFormViewer, sends_drags_as_clicks_that_carry_send_drag) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    EXPECT_EQ(seen().send_drag, 0);
    viewer.move(33, 20);
    EXPECT_EQ(seen().type, PF_Event_DO_CLICK);
    EXPECT_NE(seen().send_drag, 0);
    EXPECT_EQ(centre_x(), 33);
    viewer.release(33, 20);
}

struct RatioViewer : ViewerTest {
    RatioViewer()
        : ViewerTest([] {
              HostOptions options;
              options.events_at_view_ratio = true;
              options.events_say_dont_draw = true;
              return options;
          }()) {}
};

TEST_F(RatioViewer, carries_the_views_ratio_and_the_flag) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.downsample = 4;
    viewer.move(1, 1);
    EXPECT_EQ(seen().downsample_x.den, 4u);
    EXPECT_EQ(seen().in_flags, PF_EI_DONT_DRAW);
}

TEST_F(ViewerTest, events_are_at_full_resolution_and_the_views_time) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.downsample = 4;
    viewer.frame = 7;
    viewer.move(1, 1);
    EXPECT_EQ(seen().downsample_x.den, 1u);
    EXPECT_EQ(seen().current_time, 7);
    EXPECT_EQ(seen().in_flags, PF_EI_NONE);
}

TEST_F(ViewerTest, coordinates_saturate_at_extreme_zoom) {
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.viewport.zoom = stage::Viewport::kMinZoom;
    viewer.press(32767, 20);
    EXPECT_NEAR(centre_x(), 32768, 0.001);
    viewer.release(0, 0);
}

TEST_F(ViewerTest, a_layer_of_scale_zero_has_no_layer_points) {
    rogue.host().project.layer(rogue.layer)->scale = 0;
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    viewer.press(30, 20);
    EXPECT_EQ(centre_x(), 30) << "the point stays as the plug-in had it, in comp pixels";
    viewer.release(30, 20);
}

struct EventMisconduct {
    const char *act;
    const char *finding;
};

struct EventMisconductTest : testing::TestWithParam<EventMisconduct> {};

TEST_P(EventMisconductTest, is_a_finding) {
    RogueSession rogue;
    rogue.open(kScene);
    rogue.choose(GetParam().act);
    Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
    stage::DrawList list;
    viewer.press(30, 20);
    viewer.release(30, 20);
    viewer.draw(list);
    EXPECT_THAT(rogue.violations(), testing::Contains(GetParam().finding));
}

INSTANTIATE_TEST_SUITE_P(
    Events, EventMisconductTest,
    testing::Values(EventMisconduct{"change_unhandled", "event.unhandled_change in PF_Cmd_EVENT"},
                    EventMisconduct{"change_in_draw", "event.value in PF_Cmd_EVENT"},
                    EventMisconduct{"convert_without_context", "event.context in PF_Cmd_EVENT"}),
    [](const auto &param_info) { return std::string(param_info.param.act); });

TEST_F(ViewerTest, a_rule_abiding_effect_gives_no_finding) {
    {
        Viewer viewer(rogue.session, *rogue.effect, WindowKind::kComp);
        stage::DrawList list;
        viewer.draw(list);
        viewer.move(5, 5);
        viewer.press(30, 20);
        viewer.move(35, 20);
        viewer.release(30, 20);
        viewer.idle();
        viewer.leave();
    }
    EXPECT_THAT(rogue.violations(), IsEmpty());
}

}  // namespace
}  // namespace stage_test
