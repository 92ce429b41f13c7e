// Every session file that comes with the project, played against the plug-in.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "stage/play/player_fixture.h"
#include "support/paths.h"

namespace ks::play {
namespace {

std::vector<std::filesystem::path> session_files() {
    std::vector<std::filesystem::path> files;
    for (const auto &entry :
         std::filesystem::directory_iterator(paths::source() + "/tests/whole/sessions")) {
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

class SessionFiles : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SessionFiles, goes_as_expected) {
    const Folder output;
    const stage::PlayReport report =
        stage::play_session(paths::plugin(), stage::read_session_file(GetParam()),
                            {GetParam().parent_path(), output.path()});
    expect_clean(report);
    EXPECT_THAT(report.messages, testing::IsEmpty());
    EXPECT_GT(report.checks, 0);
}

INSTANTIATE_TEST_SUITE_P(All, SessionFiles, testing::ValuesIn(session_files()),
                         [](const auto &tested) {
                             std::string name = tested.param.stem().string();
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

/// The first block of JSON on the page.
std::string documented_example() {
    std::ifstream stream(paths::source() + "/docs/stage/session-files.md", std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    const std::size_t begin = page.find("```json\n") + 8;
    return page.substr(begin, page.find("```", begin) - begin);
}

TEST(Documentation, example_goes_as_the_page_says) {
    const std::string text = documented_example();
    const stage::PlayReport report =
        stage::play_session(paths::plugin(), stage::session_from_text(text, "wipe.json"), {});
    expect_clean(report);
    EXPECT_EQ(report.steps, 13);
    EXPECT_EQ(report.checks, 7);
    std::string wrong = text;
    wrong.replace(wrong.rfind("100"), 3, "99");
    EXPECT_THAT(
        stage::play_session(paths::plugin(), stage::session_from_text(wrong, "wipe.json"), {})
            .failures,
        testing::ElementsAre("wipe.json:24: steps[12].expect.values.Compare Opacity: wanted "
                             "99, found 100"));
}

}  // namespace
}  // namespace ks::play
