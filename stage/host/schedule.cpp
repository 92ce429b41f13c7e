#include "stage/host/schedule.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <system_error>
#include <thread>
#include <vector>

#include "hostapi/constants.h"
#include "stage/ledger/thread_role.h"

namespace stage {
namespace {

// A small generator with the same sequence on every platform (the standard's distributions are not
// portable): 64-bit state stepped by an odd constant, then mixed.
class Dealer {
  public:
    explicit Dealer(std::uint64_t seed) : state_(seed) {}
    // 0..count-1; the bias of the remainder does not matter here.
    std::uint64_t below(std::uint64_t count) {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return (z ^ (z >> 31)) % count;
    }

  private:
    std::uint64_t state_;
};

// One run: hands out iterations, keeps the first error.
class Run {
  public:
    using Body = std::function<PF_Err(int, std::int64_t)>;

    Run(const Schedule &schedule, std::int64_t count, const Body &body)
        : abort_after_(schedule.abort_after), count_(count), body_(body) {}

    // Performs the iteration that `order` names, or the ticket's own number; false when over.
    bool step(int thread, const std::vector<std::int64_t> *order = nullptr) noexcept {
        if (error_.load(std::memory_order_acquire) != 0) return false;
        const std::int64_t ticket = next_.fetch_add(1, std::memory_order_relaxed);
        if (ticket >= count_) return false;
        if (abort_after_ >= 0 && ticket >= abort_after_) return stop(PF_Interrupt_CANCEL);
        const std::int64_t i =
            order != nullptr ? (*order)[static_cast<std::size_t>(ticket)] : ticket;
        const PF_Err error = body_(thread, i);
        return error == 0 || stop(error);
    }
    PF_Err error() const { return error_.load(); }

  private:
    bool stop(PF_Err error) {
        PF_Err none = 0;
        error_.compare_exchange_strong(none, error);
        return false;
    }

    std::int64_t abort_after_;
    std::int64_t count_;
    const Body &body_;
    std::atomic<std::int64_t> next_{0};
    std::atomic<PF_Err> error_{0};
};

void run_shuffled(Run &run, std::int64_t count, int threads, std::uint64_t seed) {
    std::vector<std::int64_t> order(static_cast<std::size_t>(count));
    std::iota(order.begin(), order.end(), std::int64_t{0});
    Dealer dealer(seed);
    for (std::size_t left = order.size(); left > 1; --left) {
        std::swap(order[left - 1], order[static_cast<std::size_t>(dealer.below(left))]);
    }
    const ScopedThreadRole role(ThreadRole::kWorker);
    while (run.step(static_cast<int>(dealer.below(static_cast<std::uint64_t>(threads))), &order)) {
    }
}

void work(Run &run, int thread) {
    const ScopedThreadRole role(ThreadRole::kWorker);
    while (run.step(thread)) {
    }
}

// The calling thread is worker 0. When the system gives fewer threads, the others do the work.
void run_threads(Run &run, std::int64_t count, int threads) {
    const auto helpers = std::min<std::int64_t>(threads, count) - 1;
    std::vector<std::jthread> pool;
    try {
        pool.reserve(static_cast<std::size_t>(helpers));
        for (int thread = 1; thread <= helpers; ++thread) {
            pool.emplace_back([&run, thread] { work(run, thread); });
        }
    } catch (const std::system_error &) {
    }
    work(run, 0);
}

}  // namespace

Schedule Schedule::serial() {
    return {};
}
Schedule Schedule::shuffled(std::uint64_t seed, int n) {
    return {Kind::kShuffled, n, seed, -1};
}
Schedule Schedule::with_threads(int n) {
    return {Kind::kThreads, n, 0, -1};
}

int reported_threads(const Schedule &schedule) {
    return schedule.kind == Schedule::Kind::kSerial
               ? 1
               : std::clamp(schedule.threads, 1, kMaxScheduleThreads);
}

PF_Err run_scheduled(const Schedule &schedule, std::int64_t count,
                     const std::function<PF_Err(int thread_index, std::int64_t i)> &body) {
    if (count <= 0) return PF_Err_NONE;
    Run run(schedule, count, body);
    const int threads = reported_threads(schedule);
    switch (schedule.kind) {
        case Schedule::Kind::kSerial:
            work(run, 0);
            break;
        case Schedule::Kind::kShuffled:
            run_shuffled(run, count, threads, schedule.seed);
            break;
        case Schedule::Kind::kThreads:
            run_threads(run, count, threads);
            break;
    }
    return run.error();
}

}  // namespace stage
