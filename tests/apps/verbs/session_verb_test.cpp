// The verb "session" of the program, natively and, where that build is there, the Windows one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "apps/verbs/cli_run.h"
#include "support/paths.h"

namespace {

using cli::Outcome;
using cli::Scratch;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kSessions = paths::source() + "/tests/whole/sessions/";

std::string written(const Scratch &scratch, const std::string &steps,
                    const std::string &options = "{ \"threads\": 2 }") {
    const std::string file = scratch.file("s.json");
    std::ofstream(file) << "{ \"format\": \"kestrel-stage-session\", \"version\": 1,\n\"options\": "
                        << options << ",\n\"steps\": [\n"
                        << steps << "\n] }\n";
    return file;
}

const std::string kApplied =
    R"({ "new comp": { "size": [320, 180] } }, { "add adjustment layer": "a" }, "apply")";

TEST(SessionVerb, plays_a_file_that_goes_as_expected) {
    const Outcome outcome = cli::stage({"session", kSessions + "undo.json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("undo.json: "));
    EXPECT_THAT(outcome.out, HasSubstr(" 0 failed\n"));
}

TEST(SessionVerb, fails_with_each_expectation_that_fails) {
    const Scratch scratch;
    const std::string file = written(scratch, kApplied + R"(,
        { "expect": { "order": [3, 2, 1] } },
        { "expect": { "order": [1, 2, 3], "selected": ["b"] } })");
    const Outcome outcome = cli::stage({"session", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, file + ":5: steps[3].expect.order: wanted [3, 2, 1], found [1, 2, 3]\n" +
                               file + ":6: steps[4].expect.selected: wanted [b], found [a]\n");
    EXPECT_THAT(outcome.out, HasSubstr("5 steps, 3 checks, 2 failed\n"));
}

TEST(SessionVerb, refuses_a_wrong_file_before_anything_is_done) {
    const Scratch scratch;
    const std::string file = written(scratch, "{ \"shot\": \"a\" },\n{ \"zoom\": 1e9 }");
    const Outcome outcome = cli::stage({"session", file, "-o", scratch.file("out")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "kestrel-stage: " + file + ":5: steps[1].zoom: must lie within 1.5 to 6400\n");
    EXPECT_THAT(scratch.names(), ElementsAre("s.json"));
}

TEST(SessionVerb, stops_at_a_step_that_cannot_be_done) {
    const Scratch scratch;
    const std::string file = written(scratch, "{ \"select\": [\"a\"] }, { \"shot\": \"a\" }");
    const Outcome outcome = cli::stage({"session", file, "-o", scratch.file("out")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith(file + ":4: steps[0].select: "));
    EXPECT_THAT(outcome.out, HasSubstr("0 steps, 0 checks, 1 failed, stopped before the end\n"));
}

TEST(SessionVerb, has_a_status_of_its_own_for_findings) {
    const Scratch scratch;
    const Outcome outcome =
        cli::stage({"session", written(scratch, kApplied + ", \"reset\"",
                                       "{ \"adopt replaced sequence\": false }")});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("finding [handle.dead]"));
}

TEST(SessionVerb, shows_messages_that_no_step_expects) {
    const Scratch scratch;
    const Outcome outcome =
        cli::stage({"session", written(scratch, R"({ "new comp": { "size": [320, 180] } },
             { "add chart": { "chart": "ramp", "size": [32, 18] } }, "apply")")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, StartsWith("warning: "));
}

TEST(SessionVerb, makes_the_output_folder_and_writes_shots_and_projects) {
    const Scratch scratch;
    const std::string file =
        written(scratch, kApplied + R"(, { "shot": "one" }, { "save": "two.json" })");
    ASSERT_EQ(cli::stage({"session", file}).status, 0);
    EXPECT_THAT(scratch.names(), ElementsAre("s.json"));
    ASSERT_EQ(cli::stage({"session", file, "--output", scratch.file("deep/out")}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(scratch.file("deep/out/one.png")));
    EXPECT_TRUE(std::filesystem::exists(scratch.file("deep/out/two.json")));
}

TEST(SessionVerb, wants_a_file_and_says_what_shots_become) {
    EXPECT_EQ(cli::stage({"session"}).status, 2);
    const Outcome help = cli::stage({"session", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("--output"));
    EXPECT_EQ(cli::stage({"session", "no such.json"}).err,
              "kestrel-stage: no such.json: the file cannot be read\n");
}

TEST(SessionVerb, of_the_windows_build_says_the_same) {
    const char *const named = std::getenv("KS_WINDOWS_BUILD");
    const std::filesystem::path folder =
        named != nullptr ? named : paths::source() + "/build/win64-release";
    if (!std::filesystem::exists(folder / "kestrel-stage.exe") ||
        !std::filesystem::exists(folder / "KestrelScopes.aex")) {
        GTEST_SKIP() << "the Windows build is not there";
    }
    if (std::filesystem::last_write_time(folder / "kestrel-stage.exe") <
        std::filesystem::last_write_time(paths::plugin())) {
        GTEST_SKIP() << "the Windows build is older than this one";
    }
    const Scratch scratch;
    const std::string file = written(scratch, kApplied + R"(,
        { "expect": { "order": [3, 2, 1] } }, { "shot": "one" })");
    Outcome there = cli::run(
        {"env", "KS_WINE_DIR=" + folder.string(), paths::source() + "/cmake/run-under-wine",
         (folder / "kestrel-stage.exe").string(), "session", file, "-o", scratch.file("out")});
    const Outcome here = cli::stage({"session", file});
    std::erase(there.out, '\r');
    std::erase(there.err, '\r');
    EXPECT_EQ(there.status, 1);
    EXPECT_EQ(there.out, here.out);
    EXPECT_EQ(there.err, here.err);
    EXPECT_TRUE(std::filesystem::exists(scratch.file("out/one.png")));
    EXPECT_TRUE(std::filesystem::exists(scratch.file("out/one.txt")));
}

}  // namespace
