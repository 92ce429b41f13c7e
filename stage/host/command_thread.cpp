#include "stage/host/command_thread.h"

namespace stage {

CommandThread::CommandThread(ThreadRole role) : thread_([this, role] { loop(role); }) {}

CommandThread::~CommandThread() {
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void CommandThread::run(const std::function<void()> &task) {
    std::unique_lock lock(mutex_);
    task_ = &task;
    changed_.notify_all();
    changed_.wait(lock, [this] { return task_ == nullptr; });
}

void CommandThread::loop(ThreadRole role) {
    const ScopedThreadRole scope(role);
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return quit_ || task_ != nullptr; });
        if (quit_) return;
        (*task_)();
        task_ = nullptr;
        changed_.notify_all();
    }
}

}  // namespace stage
