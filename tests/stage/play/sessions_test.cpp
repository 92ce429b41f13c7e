// Every session file that comes with the project, played against the plug-in.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <vector>

#include "stage/play/player_fixture.h"

namespace ks::play {
namespace {

std::vector<std::filesystem::path> session_files() {
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(KS_SOURCE_DIR "/tests/sessions")) {
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

class SessionFiles : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(SessionFiles, goes_as_expected) {
    const Folder output;
    const stage::PlayReport report =
        stage::play_session(KS_PLUGIN_FILE, stage::read_session_file(GetParam()),
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

}  // namespace
}  // namespace ks::play
