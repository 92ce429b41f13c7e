// The verb "panel": what it prints, and what it refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/verbs/cli_run.h"

namespace {

using cli::Outcome;
using cli::stage;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(PanelVerb, shows_the_panel_of_a_new_instance) {
    const Outcome outcome = stage({"panel"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, StartsWith("v Monitor\n    Monitor Layout      "));
    EXPECT_THAT(outcome.out, Not(HasSubstr("(hidden)")));
    EXPECT_THAT(outcome.out, HasSubstr("> Monitor Size                          50.0 %  (greyed)"));
}

TEST(PanelVerb, settings_are_edits_and_show_in_the_panel) {
    const Outcome outcome =
        stage({"panel", "--set", "Show Histogram=on", "--set", "Monitor Layout=Windowed", "--set",
               "Monitor Size=25%", "--set", "Show Vectorscope=off"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("  v Histogram\n"));
    EXPECT_THAT(outcome.out, HasSubstr("> Monitor Size                          25.0 %\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("  v Vectorscope\n")));
}

TEST(PanelVerb, points_and_sizes_follow_the_size_of_the_composition) {
    const Outcome outcome = stage({"panel", "--size", "640x360", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto list = nlohmann::json::parse(outcome.out);
    for (const auto &entry : list) {
        if (entry["index"] == 38) {
            EXPECT_EQ(entry["text"], "5.0, 102.0");
        }
        if (entry["index"] == 28) {
            EXPECT_EQ(entry["slider"], nlohmann::json({128.0, 320.0}));
            EXPECT_EQ(entry["range"], nlohmann::json({200.0, 1000.0}));
        }
    }
}

TEST(PanelVerb, json_says_everything_about_an_entry) {
    const Outcome outcome = stage({"panel", "--json", "--all"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto list = nlohmann::json::parse(outcome.out);
    ASSERT_EQ(list.size(), 58u);
    EXPECT_EQ(list[1], nlohmann::json::parse(R"json({"index": 2, "depth": 1, "kind": "popup",
        "name": "Monitor Layout", "value": 4.0, "text": "Four-Way Classic",
        "choices": ["Single", "(-", "Four-Way Split", "Four-Way Classic", "(-", "Windowed",
                    "Off (Scopes Only)"],
        "hidden": false, "disabled": false, "collapsed": false})json"));
    EXPECT_EQ(list[4], nlohmann::json::parse(R"json({"index": 5, "depth": 2, "kind": "slider",
        "name": "Monitor Size", "value": 50.0, "text": "50.0 %", "range": [10.0, 100.0],
        "slider": [10.0, 100.0], "precision": 1, "percent": true,
        "hidden": false, "disabled": true, "collapsed": true})json"));
    EXPECT_EQ(list[57], nlohmann::json::parse(R"json({"index": 68, "depth": 0, "kind": "checkbox",
        "name": "RESET", "value": true, "text": "on", "label": "",
        "hidden": true, "disabled": false, "collapsed": false})json"));
}

TEST(PanelVerb, layers_are_chosen_by_their_name) {
    const Outcome outcome = stage({"panel", "--set", "Original Source=KSTR_Backing"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out,
                HasSubstr("      Original Source                       2. KSTR_Backing\n"));
    EXPECT_THAT(outcome.out, HasSubstr("> Compare Opacity                       100.0 %\n"));
}

TEST(PanelVerb, wrong_values_are_refused_in_one_line) {
    const struct {
        std::vector<std::string> words;
        const char *reason;
    } kCases[] = {
        {{"--set", "Monitor Layout"}, "--set takes NAME=VALUE"},
        {{"--set", "Monitor Size=5"}, "it must be a number from 10 to 100"},
        {{"--set", "Original Source=nobody"}, "there is no layer \"nobody\""},
        {{"--set", "Scope Position=0,0"}, "is the name of several parameters"},
        {{"--size", "12"}, "--size takes WIDTHxHEIGHT"},
    };
    for (const auto &tried : kCases) {
        std::vector<std::string> words{"panel"};
        words.insert(words.end(), tried.words.begin(), tried.words.end());
        const Outcome outcome = stage(words);
        EXPECT_EQ(outcome.status, 1) << tried.reason;
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, StartsWith("kestrel-stage: "));
        EXPECT_THAT(outcome.err, HasSubstr(tried.reason));
    }
}

}  // namespace
