// Plays steps against the real plug-in.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "stage/play/session_player.h"
#include "stage/session/session.h"
#include "support/paths.h"

namespace ks::play {

/// A folder of the test's own, removed at its end.
class Folder {
  public:
    Folder() {
        std::random_device numbers;
        path_ = std::filesystem::temp_directory_path() /
                ("kestrel-play-" + std::to_string(numbers()) + std::to_string(numbers()));
        std::filesystem::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    const std::filesystem::path &path() const { return path_; }

  private:
    std::filesystem::path path_;
};

/// `steps` is what stands between the brackets of "steps", line 2 of the file "f".
inline stage::SessionFile file_of(const std::string &steps, const std::string &options = "") {
    return stage::session_from_text("{ \"format\": \"kestrel-stage-session\", \"version\": 1, " +
                                        (options.empty() ? "" : "\"options\": " + options + ", ") +
                                        "\"steps\": [\n" + steps + "\n] }",
                                    "f");
}

inline stage::PlayReport play(const std::string &steps, const std::string &options = "",
                              const stage::PlayFolders &folders = {}) {
    return stage::play_session(paths::plugin(), file_of(steps, options), folders);
}

/// An effect on an adjustment layer of a small comp, shown at 100 %.
inline const std::string kApplied =
    R"({ "new comp": { "size": [640, 360] } }, { "add adjustment layer": "Scopes" }, "apply",
       { "view": { "size": [640, 360], "zoom": 100, "corner": [0, 0] } },)";

inline void expect_clean(const stage::PlayReport &report) {
    EXPECT_THAT(report.failures, testing::IsEmpty());
    EXPECT_FALSE(report.stopped);
    for (const stage::Finding &finding : report.findings) {
        ADD_FAILURE() << "[" << finding.check << "] " << finding.command << ": " << finding.text;
    }
}

}  // namespace ks::play
