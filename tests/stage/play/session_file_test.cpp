// Wrong session files are refused with the line and the reason.
#include "stage/play/session_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "support/paths.h"

namespace {

using stage::session_from_text;
using testing::StartsWith;

nlohmann::json cases() {
    std::ifstream stream(paths::source() + "/tests/stage/play/broken.json");
    return nlohmann::json::parse(stream);
}

std::string text_of(const nlohmann::json &tested) {
    if (!tested.contains("text")) {
        return "{ \"format\": \"kestrel-stage-session\", \"version\": 1, \"steps\": [\n" +
               tested["step"].get<std::string>() + "\n] }";
    }
    std::string text;
    for (const std::string line : tested["text"]) text += (text.empty() ? "" : "\n") + line;
    return text;
}

/// What reading `text` is refused with; "" when it is accepted.
std::string refusal(const std::string &text) {
    try {
        session_from_text(text, "f.json");
        return "";
    } catch (const stage::SessionFileError &error) {
        return error.what();
    }
}

TEST(SessionFile, every_kind_of_wrong_file_is_refused_with_line_and_reason) {
    const nlohmann::json list = cases();
    ASSERT_GT(list.size(), 50u);
    for (const nlohmann::json &tested : list) {
        SCOPED_TRACE(tested["name"].get<std::string>());
        const std::string said = refusal(text_of(tested));
        EXPECT_THAT(said, StartsWith(tested["says"].get<std::string>()));
        EXPECT_EQ(said.find('\n'), std::string::npos);
    }
}

TEST(SessionFile, says_which_file_cannot_be_read) {
    try {
        stage::read_session_file("no such file.json");
        FAIL();
    } catch (const stage::SessionFileError &error) {
        EXPECT_STREQ(error.what(), "no such file.json: the file cannot be read");
    }
}

TEST(SessionFile, text_that_is_no_utf8_is_refused) {
    EXPECT_THROW(session_from_text("{ \"format\": \"\xff\" }", "f"), stage::SessionFileError);
}

TEST(SessionFile, deep_nesting_is_refused) {
    EXPECT_THROW(session_from_text(std::string(100'000, '[') + std::string(100'000, ']'), "f"),
                 stage::SessionFileError);
}

TEST(SessionFile, options_reach_the_host) {
    const stage::SessionFile file = session_from_text(
        R"({ "format": "kestrel-stage-session", "version": 1, "options": {
             "depth": 16, "shuffle": { "seed": 9, "threads": 3 }, "strict": false,
             "separate render copy": true, "adopt replaced sequence": false,
             "honour refresh values": true, "clamp written values": false,
             "clamp written points": true, "carry send drag": false, "drags as clicks": true,
             "events at view ratio": true, "null drawing reference": true,
             "events say do not draw": true, "project locked": true, "scripts fail": true,
             "null basic suite": true, "user cancels": true, "cancel at abort call": 4,
             "worlds": { "row padding": 32, "base offset": 8, "poison": false } },
             "steps": [] })",
        "f");
    const stage::HostOptions &options = file.options;
    EXPECT_EQ(options.depth, stage::Depth::U16);
    EXPECT_EQ(options.schedule.kind, stage::Schedule::Kind::kShuffled);
    EXPECT_EQ(options.schedule.seed, 9u);
    EXPECT_EQ(options.schedule.threads, 3);
    EXPECT_FALSE(options.strict || options.adopt_replaced_sequence ||
                 options.clamp_written_values || options.carry_send_drag || options.worlds.poison);
    EXPECT_TRUE(options.separate_render_copy && options.honour_refresh_values &&
                options.clamp_written_points && options.drags_as_clicks);
    EXPECT_TRUE(options.events_at_view_ratio && options.null_drawing_reference &&
                options.events_say_dont_draw && options.project_locked);
    EXPECT_TRUE(options.scripts_fail && options.null_basic_suite && options.user_cancels);
    EXPECT_EQ(options.cancel_at_abort_call, 4);
    EXPECT_EQ(options.worlds.row_padding, 32);
    EXPECT_EQ(options.worlds.base_offset, 8);
}

TEST(SessionFile, without_options_the_host_is_as_usual) {
    const stage::SessionFile file = session_from_text(
        R"({ "format": "kestrel-stage-session", "version": 1, "steps": ["apply"] })", "f");
    EXPECT_EQ(file.options.depth, stage::Depth::U8);
    EXPECT_TRUE(file.options.strict);
    ASSERT_EQ(file.steps.size(), 1u);
    EXPECT_EQ(file.steps[0].where, "f:1: steps[0].apply");
}

}  // namespace
