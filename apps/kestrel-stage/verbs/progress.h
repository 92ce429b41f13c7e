// A progress bar on standard error, for people only.
#pragma once

#include <chrono>
#include <cstdint>

namespace stage_cli {

/// Draws one line with bar, frames per second and time left, when standard error is a terminal and
/// there is more than one frame; otherwise nothing. The line is cleared at the end.
class Progress {
  public:
    explicit Progress(std::int64_t frames);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// One more frame is done.
    void step();

  private:
    std::int64_t frames_;
    std::int64_t done_ = 0;
    bool shown_;
    std::chrono::steady_clock::time_point begin_;
};

}  // namespace stage_cli
