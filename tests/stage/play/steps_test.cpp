// What each step does, and what cannot be done.
#include <fstream>

#include "stage/image/codecs/picture_io.h"
#include "stage/play/player_fixture.h"

namespace ks::play {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kComp = R"({ "new comp": { "size": [640, 360] } },)";

struct Case {
    const char *name;
    std::string steps;
};
void PrintTo(const Case &tested, std::ostream *stream) {
    *stream << tested.name;
}

class Step : public testing::TestWithParam<Case> {};

TEST_P(Step, does_what_its_name_says) {
    const stage::PlayReport report = play(GetParam().steps);
    expect_clean(report);
    EXPECT_GT(report.checks, 0);
}

const Case kCases[] = {
    {"add_chart_makes_a_comp_of_its_size_when_there_is_none",
     R"({ "add chart": { "chart": "bars75", "size": [320, 180] } },
        { "expect": { "layers": [{ "name": "bars75", "size": [320, 180], "selected": true }],
                      "frame size": [320, 180],
                      "pixels": [{ "at": [60, 90], "color": "#bfbf00" }] } })"},
    {"add_solid_is_as_large_as_the_comp_and_of_the_color_given",
     kComp + R"({ "add solid": { "name": "red", "color": [1, 0, 0] } },
        { "add solid": { "name": "small", "size": [2, 2], "color": [0, 0, 1] } },
        { "expect": { "layers": [{ "name": "small", "size": [2, 2] },
                                 { "name": "red", "size": [640, 360], "flags": [] }],
                      "selected": ["small"],
                      "pixels": [{ "at": [319, 179], "color": "#0000ff" },
                                 { "at": [317, 179], "color": "#ff0000" }] } })"},
    {"add_adjustment_and_text_layer",
     kComp + R"({ "add adjustment layer": "a" }, { "add text layer": "t" },
        { "expect": { "layers": [{ "name": "t", "flags": [] },
                                 { "name": "a", "flags": ["adjustment"], "size": [640, 360] }] } })"},
    {"select_takes_names_and_numbers",
     kComp + R"({ "add text layer": "x" }, { "add text layer": "y" }, { "add text layer": "y" },
        { "select": ["x", 1] },
        { "expect": { "layers": [{ "name": "y", "selected": true },
                                 { "name": "y", "selected": false },
                                 { "name": "x", "selected": true }] } })"},
    {"delete_and_move_layer",
     kComp + R"({ "add text layer": "x" }, { "add text layer": "y" }, { "add text layer": "z" },
        { "move layer": { "layer": "z", "to": 3 } }, { "expect": { "layers": ["y", "x", "z"] } },
        { "delete layer": "x" }, { "expect": { "layers": ["y", "z"] } },
        "undo", { "expect": { "layers": ["y", "x", "z"] } })"},
    {"delete_takes_the_effect_along_and_undo_brings_it_back",
     kApplied + R"({ "tick": "Show Histogram" }, { "delete layer": "Scopes" },
        { "expect": { "layers": ["KSTR_Backing"], "drawn": [] } }, "undo",
        { "expect": { "layers": [{ "name": "Scopes", "effects": 1 }, "KSTR_Backing"],
                      "order": [5, 1, 2, 3] } })"},
    {"place_layer_moves_and_scales",
     kComp + R"({ "add solid": { "name": "s", "size": [10, 10], "color": [1, 1, 1] } },
        { "place layer": { "layer": "s", "position": [100, 50], "scale": 200 } },
        { "expect": { "pixels": [{ "at": [91, 41], "color": "#ffffff" },
                                 { "at": [108, 58], "color": "#ffffff" },
                                 { "at": [88, 38], "color": "#000000" },
                                 { "at": [111, 61], "color": "#000000" }] } })"},
    {"hide_and_show_layer",
     kComp + R"({ "add solid": { "name": "s", "color": [1, 1, 1] } }, { "hide layer": "s" },
        { "expect": { "pixels": [{ "at": [9, 9], "color": "#000000" }] } }, { "show layer": "s" },
        { "expect": { "pixels": [{ "at": [9, 9], "color": "#ffffff" }] } })"},
    {"set_takes_what_a_user_types",
     kApplied + R"({ "set": { "Monitor Layout": "Windowed", "Monitor Size": "33%",
                              "Monitor Position": "50%,25%", "Show Histogram": "on",
                              "Vectorscope/Scope Position": [7, 8.5], "Sampling Quality": "3" } },
        { "expect": { "values": { "Monitor Layout": 6, "Monitor Size": 33, "Show Histogram": true,
                                  "Monitor Position": [320, 90], "Sampling Quality": 3,
                                  "Vectorscope/Scope Position": [7, 8.5] },
                      "order": [2, 5, 1, 3] } })"},
    {"set_reports_the_first_error", kApplied + R"({ "options": { "scripts fail": true } },
        { "set": { "Lock Layer Position": false, "Monitor Gain": 2 } },
        { "expect": { "error": 1, "values": { "Monitor Gain": 2 } } })"},
    {"tick_and_untick",
     kApplied + R"({ "untick": "Show Vectorscope" }, { "expect": { "order": [1, 3] } },
        { "tick": "Show Vectorscope" }, { "expect": { "order": [2, 1, 3] } })"},
    {"remove_effect_and_undo",
     kApplied + R"("remove effect", { "expect": { "layers": [{ "name": "Scopes", "effects": 0 },
                                                             "KSTR_Backing"] } },
        "undo", { "expect": { "order": [1, 2, 3] } },
        "redo", { "expect": { "layers": [{ "name": "Scopes", "effects": 0 }, "KSTR_Backing"] } })"},
    {"panel_hidden_gets_no_refresh",
     kApplied + R"({ "panel": "hidden" }, { "press": [3, 3] }, { "release": [30, 30] },
        { "expect": { "error": 0, "order": [1, 2, 3] } }, { "panel": "shown" },
        { "expect": { "hidden": ["RESET"] } })"},
    {"press_move_release",
     kApplied + R"({ "press": [20, 10] }, { "move": [25, 12] }, { "expect": { "dragging": true } },
        { "release": [30, 14] },
        { "expect": { "dragging": false, "values": {
            "Waveform Monitor/Scope Position": { "is": [15, 8], "within": 0.01 } } } })"},
    {"click_ends_where_it_begins",
     kApplied + R"({ "click": [20, 10] }, { "expect": { "handled": true, "dragging": false } },
        { "double click": [20, 10] }, { "expect": { "handled": true, "dragging": false } })"},
    {"click_beside_the_handles_selects_a_layer",
     kApplied + R"({ "add solid": { "name": "s", "size": [20, 20] } }, { "select": ["Scopes"] },
        { "click": { "comp": [320, 180] } },
        { "expect": { "handled": false, "selected": ["s"] } })"},
    {"places_of_the_comp_of_layers_and_beside_them",
     kApplied + R"({ "set": { "Vectorscope/Scope Position": [300, 100] } },
        { "add solid": { "name": "s", "size": [100, 100] } },
        { "place layer": { "layer": "s", "position": [350, 150] } }, { "select": ["Scopes"] },
        { "view": { "zoom": 200, "corner": [-500, -100] } },
        { "move": { "comp": [310, 105] } }, { "expect": { "cursor": "layer move" } },
        { "move": { "layer": [310, 121] } }, { "expect": { "cursor": "host" } },
        { "move": { "layer": [10, 5], "of": "s" } }, { "expect": { "cursor": "layer move" } },
        { "move": { "layer": [310, 121], "plus": [0, -32] } },
        { "expect": { "cursor": "layer move" } },
        { "move": [120, 110] }, { "expect": { "cursor": "layer move" } })"},
    {"leave_gives_the_cursor_back",
     kApplied + R"({ "move": [20, 10] }, { "expect": { "cursor": 75 } }, "leave",
        { "expect": { "cursor": 0 } })"},
    {"zoom_keeps_the_middle",
     kApplied + R"({ "set": { "Vectorscope/Scope Position": [315, 175] } }, { "zoom": 400 },
        { "move": { "layer": [320, 180] } }, { "expect": { "cursor": "layer move" } },
        { "move": [320, 180] }, { "expect": { "cursor": "layer move" } },
        { "move": [320, 240] }, { "expect": { "cursor": "layer move" } },
        { "move": [320, 241] }, { "expect": { "cursor": "host" } })"},
    {"frames_stay_within_the_comp",
     R"({ "new comp": { "size": [64, 80], "frames": 5 } }, { "frame": 3 }, { "frame": 99 },
        { "frame": -4 }, { "expect": { "frame size": [64, 80] } })"},
    {"resolution",
     kComp + R"({ "resolution": "quarter" }, { "expect": { "frame size": [160, 90] } },
        { "resolution": "full" }, { "expect": { "frame size": [640, 360] } })"},
    {"depth_can_be_changed", kApplied + R"({ "options": { "depth": 32, "threads": 3 } }, "render",
        { "expect": { "error": 0, "messages": [] } })"},
    {"render_tells_of_the_users_cancel",
     kApplied +
         R"({ "options": { "user cancels": true } }, "render", { "expect": { "error": 517 } })"},
    {"render_says_when_there_is_nothing_to_render",
     kComp +
         R"({ "add adjustment layer": "a" }, "apply", { "hide layer": "KSTR_Backing" }, "render",
        { "expect": { "error": 0, "skipped": true } }, { "show layer": "KSTR_Backing" }, "render",
        { "expect": { "skipped": false } })"},
};

INSTANTIATE_TEST_SUITE_P(All, Step, testing::ValuesIn(kCases),
                         [](const auto &tested) { return std::string(tested.param.name); });

struct Refusal {
    const char *name;
    std::string steps;
    std::string says;
};
void PrintTo(const Refusal &tested, std::ostream *stream) {
    *stream << tested.name;
}

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, stops_the_session_with_one_line) {
    const stage::PlayReport report = play(GetParam().steps + R"(, { "add text layer": "never" })");
    EXPECT_TRUE(report.stopped);
    ASSERT_EQ(report.failures.size(), 1u);
    EXPECT_THAT(report.failures[0], HasSubstr(GetParam().says));
    EXPECT_THAT(report.failures[0], testing::StartsWith("f:"));
}

const Refusal kRefusals[] = {
    {"no_comp", R"({ "add adjustment layer": "a" })",
     "f:2: steps[0].add adjustment layer: there is no composition"},
    {"no_layer_selected", kComp + R"("apply")", "steps[1].apply: no layer is selected"},
    {"no_effect", kComp + R"({ "tick": "Show Histogram" })", "steps[1].tick: no effect is chosen"},
    {"no_effect_to_reset", kComp + R"("reset")", "steps[1].reset: no effect is chosen"},
    {"no_such_layer", kComp + R"({ "add text layer": "a" }, { "select": ["b"] })",
     R"(steps[2].select[0]: there is no layer "b" (there are "a"))"},
    {"two_layers_of_the_name", kComp + R"({ "add text layer": "a" }, { "add text layer": "a" },
                                          { "delete layer": "a" })",
     R"(steps[3].delete layer: several layers are called "a"; give the number)"},
    {"no_such_number", kComp + R"({ "select": [1] })",
     "steps[1].select[0]: there are only 0 layers"},
    {"locked_layer", kApplied + R"({ "delete layer": "KSTR_Backing" })",
     R"(steps[4].delete layer: layer "KSTR_Backing" is locked)"},
    {"unknown_parameter", kApplied + R"({ "set": { "Monitor Gain": 2,
                                                   "Foo": 1 } })",
     R"(f:4: steps[4].set.Foo: there is no parameter "Foo")"},
    {"ambiguous_parameter", kApplied + R"({ "set": { "Scope Width": 300 } })",
     R"("Scope Width" is the name of several parameters)"},
    {"value_out_of_range", kApplied + R"({ "set": { "Monitor Gain": 5 } })",
     "it must be a number from 0 to 4"},
    {"separator_chosen", kApplied + R"({ "set": { "Monitor Layout": 2 } })", "choose one of"},
    {"hidden_entry", kApplied + R"({ "untick": "RESET" })",
     "steps[4].untick: the panel does not show it"},
    {"greyed_entry", kApplied + R"({ "set": { "Monitor Size": 60 } })",
     "steps[4].set.Monitor Size: it is greyed in the panel"},
    {"entry_of_a_panel_that_is_not_shown",
     kApplied + R"({ "panel": "hidden" }, { "set": { "Monitor Gain": 2 } })",
     "steps[5].set.Monitor Gain: the panel is not shown"},
    {"ticked_already", kApplied + R"({ "tick": "Show Vectorscope" })",
     R"("Show Vectorscope" is on already)"},
    {"no_checkbox", kApplied + R"({ "tick": "Monitor Gain" })", R"("Monitor Gain" is no checkbox)"},
    {"no_such_original", kApplied + R"({ "set": { "Original Source": "plate" } })",
     R"(steps[4].set.Original Source: there is no layer "plate")"},
    {"no_effect_of_that_number", kApplied + R"({ "choose effect": { "layer": 1, "number": 2 } })",
     "the layer carries no effect number 2"},
    {"nothing_to_undo", R"("undo")", "steps[0].undo: there is nothing to undo"},
    {"nothing_to_redo", kApplied + R"("redo")", "steps[4].redo: there is nothing to redo"},
    {"footage_that_is_not_there", R"({ "add footage": { "file": "no-such.png" } })", "no-such.png"},
    {"unknown_chart", R"({ "add chart": { "chart": "none", "size": [64, 64] } })", "bars75"},
    {"project_that_is_not_there", R"({ "load": "no-such.json" })", "no-such.json"},
    {"comp_point_in_a_layer_window",
     kApplied + R"({ "window": "layer" }, { "move": { "comp": [1, 1] } })",
     "steps[5].move: the window shows a layer"},
    {"point_of_another_layer_in_a_layer_window",
     kApplied + R"({ "window": "layer" }, { "move": { "layer": [1, 1], "of": "KSTR_Backing" } })",
     "steps[5].move: the window shows another layer"},
    {"point_beyond_every_window",
     kApplied + R"({ "zoom": 6400 }, { "move": { "layer": [900000, 1] } })",
     "steps[5].move: lies too far outside the window"},
    {"pixel_outside_the_frame",
     kComp + R"({ "expect": { "pixels": [{ "at": [640, 0], "color": "#000000" }] } })",
     "steps[1].expect.pixels[0]: the frame has only 640x360 pixels"},
    {"text_for_a_slider", kApplied + R"({ "expect": { "values": { "Monitor Gain": "much" } } })",
     "a slider's value is a number"},
    {"number_for_a_point", kApplied + R"({ "expect": { "values": { "Monitor Position": 3 } } })",
     "a point's value is [x, y]"},
    {"no_such_entry", kApplied + R"({ "expect": { "hidden": ["Rain"] } })",
     R"(the panel has no entry "Rain")"},
    {"ambiguous_entry", kApplied + R"({ "expect": { "hidden": ["Scope Width"] } })",
     R"("Scope Width" is the name of several entries)"},
};

INSTANTIATE_TEST_SUITE_P(All, Refused, testing::ValuesIn(kRefusals),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST(Footage, is_looked_for_beside_the_session_file) {
    const Folder folder;
    stage::Picture picture = stage::make_picture(32, 20, stage::SampleType::U8);
    for (std::size_t i = 0; i < picture.argb.size(); i += 4) {
        picture.argb[i] = 1;
        picture.argb[i + 2] = 1;
    }
    stage::write_picture(folder.path() / "plate.png", picture, stage::Depth::U8);
    expect_clean(play(R"({ "add footage": { "file": "plate.png" } },
                         { "add footage": { "file": "plate.png", "name": "again" } },
                         { "expect": { "layers": ["again", { "name": "plate.png", "size": [32, 20] }],
                                       "pixels": [{ "at": [5, 5], "color": "#00ff00" }] } })",
                      "", {folder.path(), std::nullopt}));
}

TEST(Projects, are_saved_into_the_output_folder_and_loaded_from_there) {
    const Folder session, output;
    expect_clean(play(kApplied + R"({ "tick": "Show Histogram" }, { "save": "p.json" },
                                    { "untick": "Show Histogram" }, { "load": "p.json" },
                                    { "expect": { "order": [5, 1, 2, 3] } })",
                      "", {session.path(), output.path()}));
    EXPECT_TRUE(std::filesystem::exists(output.path() / "p.json"));
    EXPECT_TRUE(std::filesystem::is_empty(session.path()));
    // Now it lies beside another session.
    expect_clean(play(R"({ "load": "p.json" }, { "expect": { "order": [5, 1, 2, 3] } })", "",
                      {output.path(), std::nullopt}));
}

TEST(Projects, leave_nothing_behind_without_an_output_folder) {
    const Folder session;
    expect_clean(play(kApplied + R"({ "save": "p.json" }, { "load": "p.json" },
                                    { "expect": { "order": [1, 2, 3] } })",
                      "", {session.path(), std::nullopt}));
    EXPECT_TRUE(std::filesystem::is_empty(session.path()));
}

constexpr char kShot[] = R"({ "set": { "Monitor Layout": "Windowed" } }, { "shot": "window" })";

TEST(Shots, are_written_into_the_output_folder_only) {
    const Folder session, output;
    expect_clean(play(kApplied + kShot, "", {session.path(), std::nullopt}));
    EXPECT_TRUE(std::filesystem::is_empty(session.path()));
    expect_clean(play(kApplied + kShot, "", {session.path(), output.path()}));
    const stage::Picture picture = stage::read_picture(output.path() / "window.png");
    EXPECT_EQ(picture.width, 640);
    EXPECT_EQ(picture.height, 360);
}

TEST(Shots, show_the_pasteboard_around_the_frame) {
    const Folder output;
    expect_clean(play(kApplied + R"({ "view": { "size": [700, 400], "corner": [30, 20] } },
                                    { "set": { "Monitor Layout": "Single" } }, { "shot": "a" })",
                      "", {{}, output.path()}));
    const stage::Picture picture = stage::read_picture(output.path() / "a.png");
    ASSERT_EQ(picture.width, 700);
    EXPECT_EQ(picture.at(29, 200)[1], 0x23 / 255.0f);
    EXPECT_EQ(picture.at(669, 379)[1], 0.0f);
    EXPECT_EQ(picture.at(670, 379)[1], 0x23 / 255.0f);
    EXPECT_EQ(picture.at(669, 380)[1], 0x23 / 255.0f);
}

// Natively the handles are painted; the Windows build lists them beside the picture.
TEST(Shots, show_the_handles) {
    const Folder output;
    expect_clean(play(kApplied + kShot, "", {{}, output.path()}));
#ifdef _WIN32
    std::ifstream stream(output.path() / "window.txt");
    std::string line;
    ASSERT_TRUE(std::getline(stream, line));
    EXPECT_THAT(line, testing::StartsWith("theme fill, shadow: move 320 180"));
#else
    const stage::Picture picture = stage::read_picture(output.path() / "window.png");
    EXPECT_GT(picture.at(316, 177)[1], 0.8f);  // the corner's triangle, in the theme's colour
    EXPECT_FALSE(std::filesystem::exists(output.path() / "window.txt"));
#endif
}

TEST(Shots, that_cannot_be_written_stop_the_session) {
    const Folder output;
    const stage::PlayReport report = play(kApplied + kShot, "", {{}, output.path() / "gone"});
    EXPECT_TRUE(report.stopped);
    ASSERT_EQ(report.failures.size(), 1u);
    EXPECT_THAT(report.failures[0], HasSubstr("steps[5].shot: "));
    EXPECT_TRUE(std::filesystem::is_empty(output.path()));
}

}  // namespace
}  // namespace ks::play
