// A user's acts on the host's desk, with the product.
#include "support/stage/desk_fixture.h"

#include <filesystem>
#include <fstream>

#include "hostapi/constants.h"
#include "stage/effect/effect_instance.h"
#include "support/paths.h"

namespace stage_test {
namespace {

using stage::EffectInstance;
using stage::HostOptions;
using stage::Layer;
using stage::LayerId;
using stage::SessionError;
using stage::WindowKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(DeskTest, the_first_picture_brings_its_composition) {
    desk.add_chart("test-card", 320, 180);
    EXPECT_EQ(desk.source_width(), 320);
    EXPECT_EQ(desk.source_height(), 180);
    EXPECT_THAT(layer_names(), ElementsAre("test-card"));
}

TEST_F(DeskTest, acts_without_their_object_are_refused_with_a_line) {
    EXPECT_THROW(desk.add_adjustment("A"), SessionError);
    EXPECT_THROW(desk.set_value(2, {}), SessionError);
    EXPECT_THROW(desk.reset(), SessionError);
    EXPECT_THROW(desk.remove_effect(), SessionError);
    desk.add_chart("test-card", 64, 36);
    desk.select({});
    EXPECT_THROW(desk.apply(), SessionError);
    EXPECT_THROW(desk.select({999}), SessionError);
    EXPECT_THROW(desk.delete_layer(999), SessionError);
}

TEST_F(DeskTest, applying_to_several_layers_sets_up_each) {
    const LayerId a = desk.add_chart("test-card", 64, 36);
    const LayerId b = desk.add_chart("test-card", 64, 36);
    desk.select({a, b});
    EXPECT_EQ(desk.apply().size(), 2u);
    EXPECT_EQ(session.instances().size(), 2u);
}

TEST_F(DeskTest, choosing_follows_the_selection) {
    const LayerId a = desk.add_chart("test-card", 64, 36);
    desk.apply();
    const LayerId b = desk.add_chart("test-card", 64, 36);
    desk.apply();
    EXPECT_EQ(desk.effect()->layer, b);
    desk.select({a});
    EXPECT_EQ(desk.effect()->layer, a);
    desk.select({});
    EXPECT_EQ(desk.effect()->layer, a) << "the panel stays";
}

TEST_F(DeskTest, a_locked_layer_cannot_be_selected_moved_or_deleted) {
    set_the_scene();
    const stage::Item &comp = *session.project().comp(session.project().active_comp);
    const LayerId first = comp.layers.back().id;
    session.project().layer(first)->flags |= stage::layer_flag::kLocked;
    EXPECT_THROW(desk.select({first}), SessionError);
    EXPECT_THROW(desk.delete_layer(first), SessionError);
    EXPECT_THROW(desk.move_layer(first, 0), SessionError);
    EXPECT_THROW(desk.place_layer(first, 0, 0, 100), SessionError);
}

TEST_F(DeskTest, ticking_a_scope_puts_it_in_front_and_reveals_its_group) {
    set_the_scene();
    EXPECT_THAT(order(), ElementsAre(1, 2, 3));
    EXPECT_TRUE(hidden("Histogram/Scope Height"));
    set("Show Histogram", 1);
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3));
    EXPECT_FALSE(hidden("Histogram/Scope Height"));
    set("Show Vectorscope", 0);
    EXPECT_THAT(order(), ElementsAre(5, 1, 3));
    EXPECT_TRUE(hidden("Vectorscope/Scope Size"));
}

TEST_F(DeskTest, undo_takes_the_tick_back_but_not_the_order) {
    set_the_scene();
    set("Show Histogram", 1);
    EXPECT_TRUE(desk.undo());
    EXPECT_EQ(get("Show Histogram").number, 0);
    EXPECT_TRUE(hidden("Histogram/Scope Height")) << "the panel follows";
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3)) << "sequence data is no part of undo";
    EXPECT_TRUE(desk.redo());
    EXPECT_EQ(get("Show Histogram").number, 1);
    EXPECT_FALSE(hidden("Histogram/Scope Height"));
}

TEST_F(DeskTest, reset_restores_defaults_and_the_order) {
    set_the_scene();
    set("Show Histogram", 1);
    set("Monitor Layout", 6);
    set("Show Waveform Monitor", 0);
    EXPECT_EQ(desk.reset(), 0);
    EXPECT_EQ(get("Monitor Layout").number, 4);
    EXPECT_EQ(get("Show Histogram").number, 0);
    EXPECT_THAT(order(), ElementsAre(1, 2, 3));
    EXPECT_EQ(get("Waveform Monitor/Scope Width").number, 200)
        << "640 * 0.234375 is 150, which the host keeps within the registered range";
    EXPECT_TRUE(desk.undo());
    EXPECT_EQ(get("Monitor Layout").number, 6) << "one step";
}

TEST_F(DeskTest, undoing_the_application_sets_the_effect_down_and_redo_wakes_it) {
    desk.add_chart("test-card", 320, 180);
    desk.apply();
    set("Show Histogram", 1);
    EXPECT_TRUE(desk.undo());
    EXPECT_TRUE(desk.undo());
    EXPECT_THAT(session.instances(), IsEmpty());
    EXPECT_EQ(desk.effect(), nullptr);
    EXPECT_TRUE(desk.redo());
    ASSERT_EQ(session.instances().size(), 1u);
    ASSERT_NE(desk.effect(), nullptr);
    EXPECT_TRUE(desk.redo());
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3)) << "its record came back as it was left";
    EXPECT_EQ(desk.view().effects.at(0).error, 0);
}

TEST_F(DeskTest, a_removed_effect_comes_back_with_its_record) {
    set_the_scene();
    set("Show Slice Waveform", 1);
    desk.remove_effect();
    EXPECT_THAT(session.instances(), IsEmpty());
    EXPECT_TRUE(desk.undo());
    EXPECT_THAT(order(), ElementsAre(4, 1, 2, 3));
}

struct KeepingHost : DeskTest {
    KeepingHost()
        : DeskTest([] {
              HostOptions options;
              options.adopt_replaced_sequence = false;
              return options;
          }()) {}
};

TEST_F(KeepingHost, an_effect_whose_record_was_lost_can_be_removed_deleted_and_saved) {
    set_the_scene();
    desk.reset();
    const auto file = std::filesystem::path(paths::build()) / "desk_lost.json";
    desk.save(file);
    std::filesystem::remove(file);
    desk.remove_effect();
    EXPECT_THAT(session.instances(), IsEmpty());
    session.host.strict.clear();  // the handle that this host kept was used after its end
    desk.undo();
    desk.delete_layer(scopes);
    EXPECT_THAT(session.instances(), IsEmpty());
}

TEST_F(DeskTest, a_deleted_layer_takes_its_effect_along_and_brings_it_back) {
    set_the_scene();
    set("Show Slice Waveform", 1);
    desk.delete_layer(scopes);
    EXPECT_THAT(session.instances(), IsEmpty());
    EXPECT_TRUE(desk.undo());
    EXPECT_THAT(order(), ElementsAre(4, 1, 2, 3));
    EXPECT_EQ(desk.effect()->layer, scopes);
}

TEST_F(DeskTest, duplicating_a_layer_duplicates_order_values_and_panel) {
    set_the_scene();
    set("Show Histogram", 1);
    set("Monitor Gain", 2);
    const LayerId copy = desk.duplicate_layer(scopes);
    ASSERT_EQ(session.instances().size(), 2u);
    EXPECT_EQ(desk.effect()->layer, copy);
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3));
    EXPECT_EQ(get("Monitor Gain").number, 2);
    set("Show Histogram", 0);
    EXPECT_THAT(order(), ElementsAre(1, 2, 3));
    desk.select({scopes});
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3)) << "each has a record of its own";
    EXPECT_FALSE(hidden("Histogram/Scope Height")) << "and a panel of its own";
}

TEST_F(DeskTest, saving_and_loading_keeps_order_and_values) {
    set_the_scene();
    set("Show Histogram", 1);
    set("Monitor Gain", 3);
    const auto file = std::filesystem::path(paths::build()) / "desk_test.json";
    desk.save(file);
    set("Show Histogram", 0);
    desk.load(file);
    std::filesystem::remove(file);
    ASSERT_NE(desk.effect(), nullptr);
    EXPECT_THAT(order(), ElementsAre(5, 1, 2, 3));
    EXPECT_EQ(get("Monitor Gain").number, 3);
    EXPECT_FALSE(desk.undo()) << "what came before is forgotten";
    EXPECT_EQ(desk.view().effects.at(0).error, 0);
}

TEST_F(DeskTest, a_file_that_cannot_be_loaded_changes_nothing) {
    set_the_scene();
    const auto file = std::filesystem::path(paths::build()) / "desk_bad.json";
    std::ofstream(file) << "{";
    EXPECT_THROW(desk.load(file), std::exception);
    std::filesystem::remove(file);
    ASSERT_NE(desk.effect(), nullptr);
    EXPECT_EQ(desk.view().effects.at(0).error, 0);
}

TEST_F(DeskTest, handles_are_drawn_and_dragged_in_the_viewer) {
    set_the_scene();
    set("Monitor Layout", 6);
    EXPECT_THAT(desk.overlay().primitives, testing::SizeIs(2)) << "corner triangle and move bar";
    // "Monitor Size" 50 % of 640x360: its corner handle lies at (320, 180).
    EXPECT_TRUE(desk.press(320, 180).event.handled);
    desk.move(400, 225);
    EXPECT_TRUE(desk.dragging());
    desk.release(512, 288);
    EXPECT_EQ(get("Monitor Size").number, 80);
    EXPECT_TRUE(desk.undo());
    EXPECT_EQ(get("Monitor Size").number, 50);
}

TEST_F(DeskTest, drags_beyond_the_range_are_clamped_by_the_host) {
    set_the_scene();
    set("Monitor Layout", 6);
    desk.press(320, 180);
    desk.release(20, 180);
    EXPECT_EQ(get("Monitor Size").number, 10);
}

TEST_F(DeskTest, the_cursor_changes_over_handles) {
    set_the_scene();
    set("Monitor Layout", 6);
    desk.move(320, 180);
    EXPECT_EQ(desk.cursor(), 22);
    desk.move(100, 10);
    EXPECT_EQ(desk.cursor(), 75);
    desk.move(630, 350);
    EXPECT_EQ(desk.cursor(), 0);
}

TEST_F(DeskTest, a_cross_hair_of_the_host_is_a_users_edit) {
    set_the_scene();
    stage::ParamValue value = get("Channel Parade/Scope Position");
    value.x = 300;
    value.y = 200;
    desk.set_value(index("Channel Parade/Scope Position"), value);
    set("Vectorscope/Scope Size", 160);
    EXPECT_THAT(order(), ElementsAre(3, 1, 2));
    // Five pixels up and left of the panel's corner: outside its move bar, within the cross-hair.
    value = get("Vectorscope/Scope Position");
    const int x = static_cast<int>(value.x) - 4, y = static_cast<int>(value.y) - 3;
    const stage::PointerReply reply = desk.press(x, y);
    EXPECT_FALSE(reply.event.handled);
    EXPECT_EQ(reply.native_point, index("Vectorscope/Scope Position"));
    desk.move(400, 100);
    desk.release(400, 100);
    EXPECT_EQ(get("Vectorscope/Scope Position").x, 400);
    EXPECT_THAT(order(), ElementsAre(2, 3, 1)) << "moved by the user: brought to the front";
}

TEST_F(DeskTest, cross_hairs_of_visible_enabled_points_are_shown) {
    set_the_scene();
    const std::size_t handles = desk.overlay().primitives.size();
    EXPECT_EQ(desk.window_overlay().primitives.size(), handles + 3) << "three scopes are on";
    set("Show Histogram", 1);
    set("Monitor Layout", 6);
    const stage::DrawList shown = desk.window_overlay();
    ASSERT_EQ(shown.primitives.size(), desk.overlay().primitives.size() + 5)
        << "the histogram's, and the monitor's";
    const stage::ParamValue place = get("Histogram/Scope Position");
    const stage::DrawPoint arm = shown.primitives.back().path.front().points[0];
    EXPECT_EQ(arm.x, static_cast<float>(place.x) - 6);
    EXPECT_EQ(arm.y, static_cast<float>(place.y));
}

TEST_F(DeskTest, a_held_cross_hair_follows_the_pointer) {
    set_the_scene();
    const stage::ParamValue place = get("Vectorscope/Scope Position");
    ASSERT_NE(desk.press(static_cast<int>(place.x) - 4, static_cast<int>(place.y) - 3).native_point,
              0);
    const std::uint64_t before = desk.version();
    desk.move(333, 99);
    EXPECT_GT(desk.version(), before);
    bool found = false;
    for (const stage::DrawPrimitive &mark : desk.window_overlay().primitives) {
        if (!mark.path.empty()) found = found || mark.path.front().points[0].x == 327;
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(get("Vectorscope/Scope Position").x, place.x) << "the edit comes at the release";
    desk.release(333, 99);
    EXPECT_EQ(get("Vectorscope/Scope Position").x, 333);
}

TEST_F(DeskTest, a_press_on_nothing_selects_the_layer_beneath) {
    set_the_scene();
    set("Monitor Layout", 7);
    desk.select({footage});
    EXPECT_EQ(desk.press(600, 340).selected, scopes);
    desk.release(600, 340);
    EXPECT_EQ(desk.press(2000, 2000).selected, 0);
}

TEST_F(DeskTest, the_picture_is_rendered_only_after_changes) {
    set_the_scene();
    const double first = desk.view().seconds;
    EXPECT_EQ(desk.view().seconds, first);
    const std::uint64_t before = desk.version();
    set("Monitor Gain", 2);
    EXPECT_GT(desk.version(), before);
    EXPECT_EQ(desk.view().image.width, 640);
    desk.set_resolution(2);
    EXPECT_EQ(desk.view().image.width, 320);
    EXPECT_EQ(desk.view().image.height, 180);
}

TEST_F(DeskTest, the_layer_window_shows_the_layer) {
    set_the_scene();
    desk.window = WindowKind::kLayer;
    EXPECT_EQ(desk.source_width(), 640);
    EXPECT_EQ(desk.view().image.width, 640);
    set("Monitor Layout", 6);
    EXPECT_TRUE(desk.press(320, 180).event.handled);
    desk.release(320, 180);
}

TEST_F(DeskTest, the_layer_window_of_a_text_layer_is_empty) {
    desk.add_chart("test-card", 64, 36);
    desk.add_text("Title");
    desk.apply();
    ASSERT_NE(desk.effect(), nullptr);
    desk.window = WindowKind::kLayer;
    EXPECT_EQ(desk.view().image.width, 0);
    EXPECT_EQ(desk.source_width(), 64) << "as large as its composition";
    desk.window = WindowKind::kComp;
    EXPECT_EQ(desk.view().image.width, 64);
}

TEST_F(DeskTest, time_stays_within_the_composition) {
    set_the_scene();
    desk.set_frame(1000);
    EXPECT_EQ(desk.frame(), 0) << "a still has one frame";
    desk.set_frame(-5);
    EXPECT_EQ(desk.frame(), 0);
}

TEST_F(DeskTest, a_viewer_without_an_effect_shows_the_composition) {
    desk.add_chart("test-card", 64, 36);
    EXPECT_EQ(desk.view().image.width, 64);
    EXPECT_THAT(desk.overlay().primitives, IsEmpty());
    EXPECT_FALSE(desk.press(5, 5).event.handled);
    desk.release(5, 5);
    EXPECT_EQ(desk.cursor(), 0);
}

TEST_F(DeskTest, an_empty_desk_can_be_looked_at) {
    EXPECT_EQ(desk.view().image.width, 0);
    EXPECT_EQ(desk.source_width(), 0);
    EXPECT_FALSE(desk.undo());
    desk.press(1, 1);
    desk.move(2, 2);
    desk.release(2, 2);
}

}  // namespace
}  // namespace stage_test
