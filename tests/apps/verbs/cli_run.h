// Runs kestrel-stage as a user does, in a folder of the test's own.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace cli {

struct Outcome {
    int status = -1;  ///< exit status
    std::string out;  ///< standard output
    std::string err;  ///< standard error
};

/// Runs a program with its output kept; `words` are passed as they are, without a shell's quoting
/// rules.
Outcome run(const std::vector<std::string> &words);

/// The native kestrel-stage with these arguments.
Outcome stage(const std::vector<std::string> &arguments);

/// An empty folder that is removed at the end of the test.
class Scratch {
  public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    std::string file(const std::string &name) const { return (folder_ / name).string(); }
    const std::filesystem::path &folder() const { return folder_; }
    std::vector<std::string> names() const;  ///< sorted

  private:
    std::filesystem::path folder_;
};

std::string read_text(const std::filesystem::path &file);

}  // namespace cli
