#include "kestrel-stage/verbs/progress.h"

#include <cstdio>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace stage_cli {
namespace {

constexpr int kBarWidth = 30;

bool stderr_is_terminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

Progress::Progress(std::int64_t frames)
    : frames_(frames),
      shown_(frames > 1 && stderr_is_terminal()),
      begin_(std::chrono::steady_clock::now()) {}

Progress::~Progress() {
    if (shown_) std::fputs("\r\033[K", stderr);
}

void Progress::step() {
    ++done_;
    if (!shown_) return;
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
    const double rate = static_cast<double>(done_) / (seconds > 0 ? seconds : 1e-9);
    const int left = static_cast<int>(static_cast<double>(frames_ - done_) / rate + 0.5);
    const int filled = static_cast<int>(done_ * kBarWidth / frames_);
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(kBarWidth - filled), '.');
    std::fprintf(stderr, "\r[%s] %lld/%lld  %.1f fps  %d:%02d left\033[K", bar.c_str(),
                 static_cast<long long>(done_), static_cast<long long>(frames_), rate, left / 60,
                 left % 60);
    std::fflush(stderr);
}

}  // namespace stage_cli
