// A real OS thread that runs commands for its owner, one after the other.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include "stage/ledger/thread_role.h"

namespace stage {

/// The host calls a plug-in from two threads, so thread-affine state in a plug-in shows up here.
class CommandThread {
  public:
    explicit CommandThread(ThreadRole role);
    ~CommandThread();
    CommandThread(const CommandThread &) = delete;
    CommandThread &operator=(const CommandThread &) = delete;

    /// Runs `task` on the thread and waits for its end. `task` must not throw.
    void run(const std::function<void()> &task);

  private:
    void loop(ThreadRole role);

    std::mutex mutex_;
    std::condition_variable changed_;
    const std::function<void()> *task_ = nullptr;
    bool quit_ = false;
    std::thread thread_;
};

}  // namespace stage
