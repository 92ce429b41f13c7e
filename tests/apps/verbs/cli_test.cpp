// What a user of the command line relies on: pictures, messages, exit status, nothing half-written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "apps/verbs/cli_run.h"
#include "stage/image/codecs/picture_io.h"
#include "support/paths.h"

namespace {

using cli::Outcome;
using cli::Scratch;
using cli::stage;
using testing::ElementsAre;
using testing::HasSubstr;

/// The arguments, with the scopes of a new instance switched off.
std::vector<std::string> without_scopes(std::vector<std::string> arguments) {
    for (const char *name : {"Waveform Monitor", "Vectorscope", "Channel Parade"}) {
        arguments.insert(arguments.end(), {"--set", std::string("Show ") + name + "=off"});
    }
    return arguments;
}

/// One line, the program's name first.
void expect_one_line(const Outcome &outcome) {
    EXPECT_TRUE(outcome.err.starts_with("kestrel-stage: ")) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

TEST(Render, single_layout_of_a_chart_is_the_chart) {
    const Scratch scratch;
    const Outcome outcome = stage(
        without_scopes({"render", "--chart", "bars75", "--size", "320x180", "-o",
                        scratch.file("o.pam"), "--depth", "8", "--set", "Monitor Layout=Single"}));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    const ::stage::Picture picture = ::stage::read_picture(scratch.file("o.pam"));
    ASSERT_EQ(picture.width, 320);
    const float *yellow = picture.at(60, 90);
    EXPECT_EQ(yellow[0], 1.0f);
    EXPECT_EQ(yellow[1], 191.0f / 255.0f);
    EXPECT_EQ(yellow[2], 191.0f / 255.0f);
    EXPECT_EQ(yellow[3], 0.0f);
}

TEST(Render, scopes_of_a_new_instance_are_drawn_over_the_monitor) {
    const Scratch scratch;
    const auto render = [&](const char *name, const std::vector<std::string> &more) {
        std::vector<std::string> words{"render", "--chart",         "bars75",
                                       "--size", "640x360",         "--depth",
                                       "8",      "--set",           "Monitor Layout=Single",
                                       "-o",     scratch.file(name)};
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(stage(words).status, 0);
        return ::stage::read_picture(scratch.file(name));
    };
    const std::vector<std::string> at_origin{"--set", "Vectorscope/Scope Position=0,0",
                                             "--set", "Show Waveform Monitor=off",
                                             "--set", "Show Channel Parade=off"};
    const ::stage::Picture shown = render("shown.pam", at_origin);
    std::vector<std::string> words = at_origin;
    words.insert(words.end(), {"--set", "Show Vectorscope=off"});
    const ::stage::Picture hidden = render("hidden.pam", words);
    const float *corner = shown.at(0, 217);  // 200 by 218, black and opaque in its corners
    EXPECT_EQ(corner[0], 1.0f);
    EXPECT_EQ(corner[1] + corner[2] + corner[3], 0.0f);
    EXPECT_EQ(hidden.at(0, 217)[1], 191.0f / 255.0f);
    EXPECT_EQ(shown.at(0, 218)[1], 191.0f / 255.0f);
    EXPECT_EQ(shown.at(200, 100)[2], hidden.at(200, 100)[2]);
    EXPECT_EQ(shown.at(199, 100)[2], 0.0f);
}

TEST(Render, several_parameters_can_be_set) {
    const Scratch scratch;
    const Outcome outcome =
        stage({"render", "--chart", "ramp", "--size", "200x100", "-o", scratch.file("o.pam"),
               "--depth", "8", "--set", "Monitor Layout=1", "--set", "Monitor Gain=0"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const ::stage::Picture picture = ::stage::read_picture(scratch.file("o.pam"));
    EXPECT_EQ(picture.at(199, 50)[1], 0.0f);
    EXPECT_EQ(picture.at(199, 50)[0], 1.0f);
}

TEST(Render, depth_follows_the_input_and_can_be_chosen) {
    const Scratch scratch;
    ASSERT_EQ(stage({"render", "--chart", "ramp", "--size", "128x80", "-o", scratch.file("in.png"),
                     "--depth", "8"})
                  .status,
              0);
    ASSERT_EQ(stage({"render", scratch.file("in.png"), "-o", scratch.file("o.pam")}).status, 0);
    EXPECT_THAT(cli::read_text(scratch.file("o.pam")), HasSubstr("MAXVAL 255"));
    ASSERT_EQ(
        stage({"render", scratch.file("in.png"), "-o", scratch.file("p.pam"), "--depth", "16"})
            .status,
        0);
    EXPECT_THAT(cli::read_text(scratch.file("p.pam")), HasSubstr("MAXVAL 32768"));
}

TEST(Render, numbered_sequence_in_and_out) {
    const Scratch scratch;
    for (const int number : {7, 8, 9}) {
        ASSERT_EQ(stage({"render", "--chart", "ramp", "--size", "100x80", "-o",
                         scratch.file("in.000" + std::to_string(number) + ".png"), "--depth", "8"})
                      .status,
                  0);
    }
    const Outcome outcome = stage({"render", scratch.file("in.%04d.png"), "-o",
                                   scratch.file("out.%03d.png"), "--frames", "8-9"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(scratch.names(), ElementsAre("in.0007.png", "in.0008.png", "in.0009.png",
                                             "out.008.png", "out.009.png"));
}

TEST(Render, several_frames_need_a_number_in_the_name) {
    const Scratch scratch;
    for (const int number : {1, 2}) {
        ASSERT_EQ(stage({"render", "--chart", "ramp", "--size", "100x80", "-o",
                         scratch.file("in." + std::to_string(number) + ".png")})
                      .status,
                  0);
    }
    const Outcome outcome =
        stage({"render", scratch.file("in.%d.png"), "-o", scratch.file("out.png")});
    EXPECT_EQ(outcome.status, 1);
    expect_one_line(outcome);
    EXPECT_THAT(outcome.err, HasSubstr("need a number in the name"));
    EXPECT_FALSE(std::filesystem::exists(scratch.file("out.png")));
}

TEST(Render, frames_outside_the_sequence_are_refused) {
    const Scratch scratch;
    for (const int number : {1, 2}) {
        ASSERT_EQ(stage({"render", "--chart", "ramp", "--size", "100x80", "-o",
                         scratch.file("in." + std::to_string(number) + ".png")})
                      .status,
                  0);
    }
    const Outcome outcome = stage(
        {"render", scratch.file("in.%d.png"), "-o", scratch.file("out.%d.png"), "--frames", "2-3"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("leaves the input's frames 1-2"));
}

TEST(Render, half_resolution_halves_the_picture) {
    const Scratch scratch;
    ASSERT_EQ(stage({"render", "--chart", "bars100", "--size", "321x200", "-o",
                     scratch.file("o.png"), "--downsample", "2"})
                  .status,
              0);
    const ::stage::Picture picture = ::stage::read_picture(scratch.file("o.png"));
    EXPECT_EQ(picture.width, 161);
    EXPECT_EQ(picture.height, 100);
}

TEST(Render, original_is_wiped_over) {
    const Scratch scratch;
    ASSERT_EQ(stage(without_scopes({"render", "--chart", "bars100", "--size", "200x100", "-o",
                                    scratch.file("bars.png"), "--depth", "8", "--set",
                                    "Monitor Layout=Single"}))
                  .status,
              0);
    const Outcome outcome = stage(without_scopes(
        {"render", "--chart", "ramp", "--size", "200x100", "-o", scratch.file("o.pam"), "--depth",
         "8", "--original", scratch.file("bars.png"), "--set", "Monitor Layout=Single", "--set",
         "Compare with Original=50"}));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const ::stage::Picture picture = ::stage::read_picture(scratch.file("o.pam"));
    EXPECT_EQ(picture.at(40, 50)[3], 0.0f);  // yellow bar of the original
    EXPECT_EQ(picture.at(40, 50)[1], 1.0f);
    EXPECT_EQ(picture.at(150, 50)[1], picture.at(150, 50)[3]);  // grey of the ramp
    EXPECT_EQ(picture.at(100, 50)[1], 1.0f);                    // the wipe's edge
}

TEST(Render, layers_are_set_by_their_name) {
    const Scratch scratch;
    const auto render = [&](const char *source) {
        return stage({"render", "--chart", "ramp", "--size", "200x100", "-o", scratch.file("o.pam"),
                      "--depth", "8", "--set", std::string("Original Source=") + source});
    };
    EXPECT_EQ(render("Footage").status, 0);
    EXPECT_EQ(render("none").status, 0);
    const Outcome refused = render("nobody");
    EXPECT_EQ(refused.status, 1);
    expect_one_line(refused);
    EXPECT_THAT(refused.err, HasSubstr("there is no layer \"nobody\" (there are \"Scopes\", "));
}

TEST(Render, project_file_survives_a_restart) {
    const Scratch scratch;
    ASSERT_EQ(stage({"render", "--chart", "test-card", "--size", "320x180", "-o",
                     scratch.file("a.pam"), "--depth", "8", "--set", "Monitor Layout=Windowed",
                     "--set", "Monitor Position=20,30", "--save-project", scratch.file("p.json")})
                  .status,
              0);
    const Outcome again = stage({"render", "--project", scratch.file("p.json"), "-o",
                                 scratch.file("b.pam"), "--depth", "8"});
    ASSERT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(cli::read_text(scratch.file("a.pam")), cli::read_text(scratch.file("b.pam")));
}

// Rows that are no multiple of the processors' number are not measured; 336 is one of 1, 3 and 7.
TEST(Render, threads_and_shuffling_change_nothing) {
    const Scratch scratch;
    const auto render = [&](const char *name, const std::vector<std::string> &more) {
        std::vector<std::string> words{"render", "--chart", "test-card",
                                       "--size", "640x336", "--depth",
                                       "16",     "-o",      scratch.file(name)};
        words.insert(words.end(), more.begin(), more.end());
        EXPECT_EQ(stage(words).status, 0);
        return cli::read_text(scratch.file(name));
    };
    const std::string one = render("1.pam", {"--threads", "1"});
    ASSERT_FALSE(one.empty());
    EXPECT_TRUE(render("2.pam", {"--threads", "7"}) == one);
    EXPECT_TRUE(render("3.pam", {"--shuffle", "5", "--threads", "3"}) == one);
    EXPECT_TRUE(render("4.pam", {"--separate-render-copy"}) == one);
}

struct Refusal {
    const char *name;
    std::vector<std::string> arguments;
    int status;
    const char *says;
};

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, with_one_clear_line_and_no_output) {
    const Scratch scratch;
    std::vector<std::string> words = GetParam().arguments;
    words.insert(words.end(), {"-o", scratch.file("out.png")});
    const Outcome outcome = stage(words);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().says));
    EXPECT_EQ(outcome.out, "");
    expect_one_line(outcome);
    EXPECT_TRUE(scratch.names().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Render, Refused,
    testing::Values(
        Refusal{"no_input", {"render"}, 1, "give INPUT or --chart"},
        Refusal{"missing_file", {"render", "no-such-file.png"}, 1, "no-such-file.png"},
        Refusal{"unknown_chart", {"render", "--chart", "none"}, 1, "test-card, bars75"},
        Refusal{"unknown_parameter",
                {"render", "--chart", "ramp", "--set", "Foo=1"},
                1,
                "there is no parameter \"Foo\""},
        Refusal{"ambiguous_parameter",
                {"render", "--chart", "ramp", "--set", "Scope Width=300"},
                1,
                "\"Scopes/Waveform Monitor/Scope Width\""},
        Refusal{"bad_choice",
                {"render", "--chart", "ramp", "--set", "Monitor Layout=Quad"},
                1,
                "6 \"Windowed\""},
        Refusal{"separator_is_no_choice",
                {"render", "--chart", "ramp", "--set", "Monitor Layout=2"},
                1,
                "choose one of"},
        Refusal{"out_of_range",
                {"render", "--chart", "ramp", "--set", "Monitor Size=5"},
                1,
                "from 10 to 100"},
        Refusal{"set_without_value",
                {"render", "--chart", "ramp", "--set", "Monitor Size"},
                1,
                "NAME=VALUE"},
        Refusal{"bad_depth", {"render", "--chart", "ramp", "--depth", "10"}, 2, "--depth"},
        Refusal{"bad_downsample",
                {"render", "--chart", "ramp", "--downsample", "0"},
                1,
                "--downsample takes"},
        Refusal{"bad_aspect", {"render", "--chart", "ramp", "--par", "x"}, 1, "--par takes"},
        Refusal{"bad_frames", {"render", "--chart", "ramp", "--frames", "9-1"}, 1, "9-1"},
        Refusal{"bad_region", {"render", "--chart", "ramp", "--region", "1,1,1,5"}, 1, "--region"},
        Refusal{"missing_plugin",
                {"render", "--chart", "ramp", "--plugin", "no-such.so"},
                1,
                "no-such.so"}),
    [](const auto &parameter) { return std::string(parameter.param.name); });

TEST(Refused, unknown_output_format_leaves_nothing) {
    const Scratch scratch;
    const Outcome outcome =
        stage({"render", "--chart", "ramp", "--size", "100x80", "-o", scratch.file("out.xyz")});
    EXPECT_EQ(outcome.status, 1);
    expect_one_line(outcome);
    EXPECT_TRUE(scratch.names().empty());
}

TEST(Refused, an_existing_output_survives_a_failed_render) {
    const Scratch scratch;
    std::ofstream(scratch.file("out.png")) << "old";
    EXPECT_EQ(stage({"render", "no-such.png", "-o", scratch.file("out.png")}).status, 1);
    EXPECT_EQ(cli::read_text(scratch.file("out.png")), "old");
}

TEST(Help, every_verb_has_its_own) {
    for (const char *verb : {"render", "trace", "params", "inspect"}) {
        const Outcome outcome = stage({verb, "--help"});
        EXPECT_EQ(outcome.status, 0) << verb;
        EXPECT_THAT(outcome.out, HasSubstr("Options:")) << verb;
    }
    EXPECT_EQ(stage({}).status, 2);
    EXPECT_EQ(stage({"frobnicate"}).status, 2);
}

TEST(Params, json_lists_all_with_their_promises) {
    const Outcome outcome = stage({"params", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto list = nlohmann::json::parse(outcome.out);
    ASSERT_EQ(list.size(), 69u);
    EXPECT_EQ(list[68]["name"], "RESET");
    EXPECT_EQ(list[68]["id"], 57);
    EXPECT_EQ(list[24]["label"], "Mute Active Scopes");
    EXPECT_EQ(list[2]["choices"].size(), 7u);
    EXPECT_EQ(list[29]["range"]["valid"][1], 150.0);
}

TEST(Params, text_shows_groups_and_defaults) {
    const Outcome outcome = stage({"params"});
    ASSERT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("  2    Monitor Layout"));
    EXPECT_THAT(outcome.out, HasSubstr("Four-Way Classic"));
}

TEST(Inspect, shows_the_native_library) {
    const Outcome outcome = stage({"inspect", paths::plugin()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("EntryPointFunc"));
    EXPECT_EQ(stage({"inspect", "no-such-file"}).status, 1);
}

TEST(Trace, prints_host_calls_in_order) {
    const Outcome outcome = stage({"trace", "--chart", "ramp", "--size", "100x80"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const std::size_t setup = outcome.out.find("> PF_Cmd_GLOBAL_SETUP");
    const std::size_t render = outcome.out.find("> PF_Cmd_SMART_RENDER");
    const std::size_t down = outcome.out.find("> PF_Cmd_GLOBAL_SETDOWN");
    ASSERT_NE(down, std::string::npos);
    EXPECT_LT(setup, render);
    EXPECT_LT(render, down);
}

}  // namespace
