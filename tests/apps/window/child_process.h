// A program beside the test that never outlives it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace view {

using Seconds = std::chrono::duration<double>;

/// Looks at `done` every few milliseconds. False when it did not come true in time.
bool wait_until(const std::function<bool()> &done, Seconds limit);

/// Killed when the test goes away, however that happens.
class ChildProcess {
  public:
    /// `keep_open` is a file descriptor that the program inherits, -1 for none. Standard output and
    /// error go to `log`.
    ChildProcess(const std::vector<std::string> &words, const std::string &folder,
                 const std::vector<std::string> &environment, const std::string &log,
                 int keep_open = -1);
    /// Asks it to end; kills it when it does not.
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    pid_t pid() const { return pid_; }
    bool running();
    /// Exit status once it ended, 128 + signal when one killed it; nothing while it runs.
    std::optional<int> status();
    /// Asks it to end, and waits; its exit status, or nothing when it has to be killed.
    std::optional<int> end(Seconds limit);

  private:
    pid_t pid_ = -1;
    std::optional<int> status_;
};

}  // namespace view
