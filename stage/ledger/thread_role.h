// Which of the host's threads the current OS thread plays.
#pragma once

namespace stage {

/// kUi: commands of the panel, sequence commands, project changes. kRender: the smart-render pair.
/// kWorker: a callback of an iterate call; no host call is allowed there. kNone: the stage's own
/// code.
enum class ThreadRole { kNone, kUi, kRender, kWorker };

/// Role of the calling thread.
ThreadRole current_thread_role();
const char *thread_role_name(ThreadRole role);

/// Gives the calling thread a role for the length of a scope.
class ScopedThreadRole {
  public:
    explicit ScopedThreadRole(ThreadRole role);
    ~ScopedThreadRole();
    ScopedThreadRole(const ScopedThreadRole &) = delete;
    ScopedThreadRole &operator=(const ScopedThreadRole &) = delete;

  private:
    ThreadRole before_;
};

}  // namespace stage
