#include "apps/window/child_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace view {
namespace {

constexpr int kCannotStart = 127;

std::vector<char *> pointers(const std::vector<std::string> &words) {
    std::vector<char *> list;
    for (const std::string &word : words) list.push_back(const_cast<char *>(word.c_str()));
    list.push_back(nullptr);
    return list;
}

[[noreturn]] void become(const std::vector<char *> &arguments, const std::string &folder,
                         const std::vector<std::string> &environment, const std::string &log,
                         int keep_open) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    if (keep_open >= 0) fcntl(keep_open, F_SETFD, 0);
    if (!folder.empty() && chdir(folder.c_str()) != 0) _exit(kCannotStart);
    for (const std::string &setting : environment) putenv(const_cast<char *>(setting.c_str()));
    execvp(arguments[0], arguments.data());
    _exit(kCannotStart);
}

}  // namespace

bool wait_until(const std::function<bool()> &done, Seconds limit) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    while (!done()) {
        if (Clock::now() - start > limit) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

ChildProcess::ChildProcess(const std::vector<std::string> &words, const std::string &folder,
                           const std::vector<std::string> &environment, const std::string &log,
                           int keep_open) {
    const std::vector<char *> arguments = pointers(words);
    pid_ = fork();
    if (pid_ < 0) throw std::runtime_error("no process can be started");
    if (pid_ == 0) become(arguments, folder, environment, log, keep_open);
}

ChildProcess::~ChildProcess() {
    if (end(Seconds(10))) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
}

std::optional<int> ChildProcess::status() {
    int raw = 0;
    if (!status_ && waitpid(pid_, &raw, WNOHANG) == pid_) {
        status_ = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
    }
    return status_;
}

bool ChildProcess::running() {
    return !status();
}

std::optional<int> ChildProcess::end(Seconds limit) {
    if (running()) kill(pid_, SIGTERM);
    wait_until([this] { return !running(); }, limit);
    return status();
}

}  // namespace view
