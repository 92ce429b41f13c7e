#include "apps/verbs/cli_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/paths.h"

namespace cli {
namespace {

std::string quoted(const std::string &word) {
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

}  // namespace

std::string read_text(const std::filesystem::path &file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

Outcome run(const std::vector<std::string> &words) {
    const Scratch scratch;
    std::string command;
    for (const std::string &word : words) command += quoted(word) + " ";
    command +=
        ">" + quoted(scratch.file("out")) + " 2>" + quoted(scratch.file("err")) + " </dev/null";
    const int status = std::system(command.c_str());
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.out = read_text(scratch.file("out"));
    outcome.err = read_text(scratch.file("err"));
    return outcome;
}

Outcome stage(const std::vector<std::string> &arguments) {
    std::vector<std::string> words{paths::stage()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return run(words);
}

Scratch::Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "kestrel-cli-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) std::abort();
    folder_ = name;
}

Scratch::~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::vector<std::string> Scratch::names() const {
    std::vector<std::string> found;
    for (const auto &entry : std::filesystem::directory_iterator(folder_)) {
        found.push_back(entry.path().filename().string());
    }
    std::ranges::sort(found);
    return found;
}

}  // namespace cli
