// The Effect Controls panel as a user sees it, of the real plug-in and of the rogue one.
#include "stage/desk/panel/panel_model.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "stage/project/undo.h"
#include "stage/session/scene.h"
#include "support/paths.h"
#include "support/stage/rogue_session.h"

namespace {

using stage::PanelEntry;
using Kind = PanelEntry::Kind;
using stage_test::RogueSession;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kFreshPanel[] =
    R"(v Monitor
    Monitor Layout                          Four-Way Classic
  v Primary Monitor
      Monitor Position                      0.0, 0.0  (greyed)
    > Monitor Size                          50.0 %  (greyed)
      Primary Monitor View                  RGB
    v Monitor Gamma                         1.00
    v Monitor Gain                          1.00
      Apply Corrections                     Pre-Scopes
      Original Source                       None
    > Compare with Original                 0.0 %  (greyed)
    > Compare Opacity                       100.0 %  (greyed)
  v Channels
      View Channels                         R,G,B
v Scopes
    Show Waveform Monitor                   on
    Show Vectorscope                        on
    Show Channel Parade                     on
    Show Slice Waveform                     off
    Show Histogram                          off
    REN                                     off  Mute Active Scopes
  v Waveform Monitor
      Show Channels                         Luma
      Scope Position                        15.0, 15.0
    > Scope Width                           200.0
    v Scope Brightness                      100.0 %
  v Vectorscope
      Graticule Layout                      Regular
      Monochrome Display                    on
      Calibrate For                         100%
      Show Skin Tone Line                   on
      Show Reference Line                   off
      Reference Colour                      #000000  (greyed)
      Scope Position                        15.0, 306.0
    > Scope Size                            200.0
    v Scope Brightness                      100.0 %
  v Channel Parade
      Scope Position                        15.0, 794.0
    > Scope Width                           200.0
    v Scope Brightness                      100.0 %
  v Options
      Luminance Math's                      601
    v Max Waveform Scale                    100 %
      Waveform Scopes Aspect Ratio          Auto (Comp Aspect Ratio)
      Waveform Scopes Scale                 IRE
      Show Waveform Guides                  Off
      Sampling Quality                      Medium
      Lock Layer Position                   on
)";

class Panel : public testing::Test {
  protected:
    explicit Panel(stage::HostOptions options = {}) : session(paths::plugin(), options) {
        session.start();
        stage::SceneParts parts;
        parts.picture.width = 1920;
        parts.picture.height = 1080;
        const stage::Scene scene = build_scene(session, std::move(parts));
        comp = scene.comp;
        instance = scene.effect;
    }

    std::vector<PanelEntry> entries() const { return panel_entries(session, *instance); }

    PanelEntry entry(int index) const { return entry_of(*instance, index); }

    PanelEntry entry_of(const stage::EffectInstance &held, int index) const {
        const auto all = panel_entries(session, held);
        const auto found = std::ranges::find(all, index, &PanelEntry::index);
        if (found != all.end()) return *found;
        ADD_FAILURE() << "no entry " << index;
        return {};
    }

    void set(int index, double number) {
        stage::ParamValue value;
        value.number = number;
        ASSERT_EQ(session.set_value(*instance, index, value), 0);
    }

    std::vector<int> indices_where(const std::function<bool(const PanelEntry &)> &holds) const {
        std::vector<int> found;
        for (const PanelEntry &one : entries()) {
            if (holds(one)) found.push_back(one.index);
        }
        return found;
    }
    std::vector<int> hidden() const {
        return indices_where([](const PanelEntry &one) { return one.hidden; });
    }
    std::vector<int> disabled() const {
        return indices_where([](const PanelEntry &one) { return one.disabled; });
    }

    stage::Session session;
    stage::ItemId comp = 0;
    stage::EffectInstance *instance = nullptr;
};

TEST_F(Panel, of_a_new_instance_reads_as_the_user_sees_it) {
    EXPECT_EQ(panel_text(entries(), false), kFreshPanel);
}

TEST_F(Panel, has_an_entry_for_every_parameter_but_the_input_and_the_group_ends) {
    const auto all = entries();
    EXPECT_EQ(all.size(), 68u - 10u);
    EXPECT_EQ(all.front().index, 1);
    EXPECT_EQ(all.back().index, 68);
    EXPECT_TRUE(std::ranges::is_sorted(all, {}, &PanelEntry::index));
}

TEST_F(Panel, groups_nest_by_their_starts_and_ends) {
    const int depths[][2] = {{1, 0},  {2, 1},  {3, 1},  {4, 2},  {14, 1}, {15, 2},
                             {18, 0}, {19, 1}, {25, 1}, {26, 2}, {58, 1}, {68, 0}};
    for (const auto &[index, depth] : depths) EXPECT_EQ(entry(index).depth, depth) << index;
}

TEST_F(Panel, scopes_that_are_not_shown_hide_their_group_and_reset_is_always_hidden) {
    EXPECT_THAT(hidden(), ElementsAre(47, 48, 49, 50, 51, 53, 54, 55, 56, 68));
    set(23, 1);
    EXPECT_THAT(hidden(), ElementsAre(47, 48, 49, 50, 51, 68));
    set(19, 0);
    EXPECT_THAT(hidden(), ElementsAre(25, 26, 27, 28, 29, 47, 48, 49, 50, 51, 68));
}

TEST_F(Panel, content_of_a_hidden_group_is_hidden_with_it) {
    auto &streams = session.state_of(*instance).streams;
    for (stage::EffectStream &stream : streams) stream.hidden = false;
    streams[1].hidden = true;  // "Monitor", with two groups inside
    EXPECT_THAT(hidden(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 15));
    streams[1].hidden = false;
    streams[3].hidden = true;
    EXPECT_THAT(hidden(), ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(Panel, hidden_entries_are_printed_on_request_and_marked) {
    EXPECT_THAT(panel_text(entries(), false), Not(HasSubstr("Scope Height")));
    const std::string text = panel_text(entries(), true);
    EXPECT_THAT(text, HasSubstr("    v Scope Height                          60.0  (hidden)\n"));
    EXPECT_THAT(text, HasSubstr("  v Histogram  (hidden)\n"));
    EXPECT_THAT(text, HasSubstr("  RESET                                     on  (hidden)\n"));
    EXPECT_THAT(text, HasSubstr("      Scope Position                        960.0, 0.0  "
                                "(hidden)  (greyed)\n"));
}

TEST_F(Panel, entries_without_effect_are_greyed) {
    EXPECT_THAT(disabled(), ElementsAre(4, 5, 11, 12, 37, 50, 55));
    set(2, 6);   // "Windowed"
    set(36, 1);  // "Show Reference Line"
    set(22, 1);  // "Show Slice Waveform"
    EXPECT_THAT(disabled(), ElementsAre(11, 12, 55));
    stage::ParamValue original;
    original.layer = instance->layer;
    ASSERT_EQ(session.set_value(*instance, 10, original), 0);
    EXPECT_THAT(disabled(), ElementsAre(55));
    set(2, 7);  // "Off (Scopes Only)"
    EXPECT_THAT(disabled(), ElementsAre(4, 5, 11, 12, 55));
}

TEST_F(Panel, ranges_are_those_of_typing_and_those_of_the_slider) {
    const PanelEntry width = entry(28);
    EXPECT_EQ(width.minimum, 200);
    EXPECT_EQ(width.maximum, 1000);
    EXPECT_EQ(width.slider_minimum, 200);
    EXPECT_EQ(width.slider_maximum, 960) << "half the layer";
    EXPECT_EQ(entry(39).slider_minimum, 150);
    EXPECT_EQ(entry(56).slider_maximum, 300);
    EXPECT_EQ(entry(7).precision, 2);
    EXPECT_TRUE(entry(5).percent);
    EXPECT_FALSE(entry(7).percent);
}

TEST_F(Panel, sizes_of_a_new_instance_close_their_twirl) {
    const auto closed = indices_where([](const PanelEntry &one) { return one.collapsed; });
    EXPECT_THAT(closed, ElementsAre(5, 11, 12, 28, 39, 44, 51));
}

TEST_F(Panel, numbers_are_written_with_the_digits_of_their_parameter) {
    set(7, 2.2);
    set(5, 33.333);
    set(49, 12.5);
    set(28, 449.96);
    EXPECT_EQ(entry(7).text, "2.20");
    EXPECT_EQ(entry(5).text, "33.3 %");
    EXPECT_EQ(entry(49).text, "12 %") << "no digits, a tie to even as the C library writes it";
    EXPECT_EQ(entry(28).text, "450.0");
    EXPECT_EQ(entry(28).value.number, 449.96);
}

TEST_F(Panel, popups_carry_their_choices_with_separators) {
    const PanelEntry layout = entry(2);
    EXPECT_EQ(layout.kind, Kind::kPopup);
    EXPECT_THAT(layout.choices, ElementsAre("Single", "(-", "Four-Way Split", "Four-Way Classic",
                                            "(-", "Windowed", "Off (Scopes Only)"));
    EXPECT_EQ(layout.value.number, 4);
}

TEST_F(Panel, layers_go_by_their_number_in_the_timeline_and_name) {
    stage::Project &project = session.project();
    const stage::LayerId below =
        project.add_layer(comp, project.add_solid_item("clip", 8, 8, {1, 0, 0, 0}), -1, "clip.mov");
    stage::ParamValue original;
    original.layer = below;
    ASSERT_EQ(session.set_value(*instance, 10, original), 0);
    EXPECT_EQ(entry(10).kind, Kind::kLayer);
    EXPECT_EQ(entry(10).text, "3. clip.mov") << "the backing solid is the second";
    project.remove_layer(below);
    EXPECT_EQ(entry(10).text, "None");
}

TEST_F(Panel, colours_and_points_show_what_is_set) {
    stage::ParamValue value;
    value.color = {255, 18, 171, 0};
    ASSERT_EQ(session.set_value(*instance, 37, value), 0);
    value.x = 12.34;
    value.y = -0.06;
    ASSERT_EQ(session.set_value(*instance, 27, value), 0);
    EXPECT_EQ(entry(37).text, "#12ab00");
    EXPECT_EQ(entry(27).text, "12.3, -0.1");
    EXPECT_EQ(entry(27).kind, Kind::kPoint);
}

TEST_F(Panel, every_instance_has_its_own_looks) {
    stage::EffectInstance *second =
        session.apply(session.project().add_adjustment_layer(comp, 0, "Second"));
    ASSERT_NE(second, nullptr);
    set(2, 6);
    EXPECT_FALSE(entry(5).disabled);
    EXPECT_TRUE(entry_of(*second, 5).disabled);
    set(23, 1);
    EXPECT_FALSE(entry(53).hidden);
    EXPECT_TRUE(entry_of(*second, 53).hidden);
}

TEST(RoguePanel, without_the_plug_ins_flag_every_group_starts_closed) {
    RogueSession rogue;
    rogue.open();
    ASSERT_EQ(
        rogue.session.plugin.reported.out_flags2 & PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG, 0);
    EXPECT_TRUE(panel_entries(rogue.session, *rogue.effect).front().collapsed);
    rogue.session.plugin.reported.out_flags2 |= PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG;
    EXPECT_FALSE(panel_entries(rogue.session, *rogue.effect).front().collapsed);
}

TEST(RoguePanel, shows_every_kind_of_parameter) {
    RogueSession rogue;
    rogue.open();
    EXPECT_EQ(panel_text(panel_entries(rogue.session, *rogue.effect), false),
              R"(> First
  v Amount                                  25
    Mode                                    Two
    Invert                                  on  really
    Tint                                    #102030
    Centre                                  4.0, 1.5
> Second
  v Amount                                  0
  Original                                  None
)");
}

TEST(RoguePanel, looks_that_were_never_refreshed_are_those_of_the_set_up) {
    RogueSession rogue;
    rogue.open();
    const auto greyed = [&] {
        std::vector<int> found;
        for (const PanelEntry &entry : panel_entries(rogue.session, *rogue.effect)) {
            if (entry.disabled) found.push_back(entry.index);
        }
        return found;
    };
    EXPECT_THAT(greyed(), IsEmpty());
    rogue.session.panel_shown = true;
    rogue.session.refresh_panel(*rogue.effect);
    EXPECT_THAT(greyed(), ElementsAre(int{rogue::kMode}));
}

}  // namespace
