// How the host spreads iterations over threads.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "hostapi/effect_types.h"

namespace stage {

/// Serial, in order; shuffled on the calling thread with false thread numbers; or real threads.
struct Schedule {
    enum class Kind { kSerial, kShuffled, kThreads };
    Kind kind = Kind::kSerial;
    int threads = 1;                ///< thread count reported to the plug-in, 1..96
    std::uint64_t seed = 0;         ///< for kShuffled
    std::int64_t abort_after = -1;  ///< when >= 0: the user cancels after that many iterations

    static Schedule serial();
    /// All iterations on the calling thread, in an order drawn from `seed`, thread numbers 0..n-1
    /// dealt out at random.
    static Schedule shuffled(std::uint64_t seed, int n);
    /// `n` real threads that take iterations from a common counter.
    static Schedule with_threads(int n);
};

inline constexpr int kMaxScheduleThreads = 96;

/// The number of processors that the plug-in is told: 1 when serial, else `threads` within 1..96.
int reported_threads(const Schedule &schedule);

/// Runs `body(thread_index, i)` for i = 0..count-1, each exactly once, as `schedule` says. Workers
/// run under ThreadRole::kWorker, the calling thread as number 0; thread_index lies in
/// 0..reported_threads()-1 and no two iterations run at once under one number. The first non-zero
/// result stops the rest and is returned; PF_Interrupt_CANCEL (517) when abort_after iterations
/// were begun and one more is due. A count of 0 or less does nothing. Exceptions of `body` are not
/// expected and end the process, as in a real host. [host thread]
PF_Err run_scheduled(const Schedule &schedule, std::int64_t count,
                     const std::function<PF_Err(int thread_index, std::int64_t i)> &body);

}  // namespace stage
