#include "stage/host/schedule.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "hostapi/constants.h"
#include "stage/ledger/thread_role.h"

namespace stage {
namespace {

std::vector<Schedule> schedules() {
    std::vector<Schedule> all{Schedule::serial()};
    for (const int n : {1, 2, 7, 64, 96}) {
        all.push_back(Schedule::with_threads(n));
        all.push_back(Schedule::shuffled(static_cast<std::uint64_t>(n), n));
    }
    return all;
}

TEST(Schedule, every_iteration_runs_exactly_once_with_a_thread_number_in_range) {
    for (const Schedule &schedule : schedules()) {
        for (const std::int64_t count : {0, 1, 2, 5, 1000}) {
            std::vector<std::atomic<int>> seen(static_cast<std::size_t>(count));
            std::atomic<int> out_of_range{0};
            EXPECT_EQ(run_scheduled(schedule, count,
                                    [&](int thread, std::int64_t i) -> PF_Err {
                                        if (thread < 0 || thread >= reported_threads(schedule)) {
                                            ++out_of_range;
                                        }
                                        ++seen[static_cast<std::size_t>(i)];
                                        return 0;
                                    }),
                      0);
            for (const auto &times : seen) ASSERT_EQ(times.load(), 1);
            EXPECT_EQ(out_of_range.load(), 0);
        }
    }
}

TEST(Schedule, negative_counts_do_nothing) {
    const auto body = [](int, std::int64_t) -> PF_Err { return 1; };
    for (const Schedule &schedule : schedules()) EXPECT_EQ(run_scheduled(schedule, -1, body), 0);
}

std::vector<std::pair<int, std::int64_t>> order_of(const Schedule &schedule, int count) {
    std::vector<std::pair<int, std::int64_t>> order;
    run_scheduled(schedule, count, [&](int thread, std::int64_t i) -> PF_Err {
        order.emplace_back(thread, i);
        return 0;
    });
    return order;
}

TEST(Schedule, serial_is_in_order_on_thread_number_0) {
    std::int64_t expected = 0;
    for (const auto &[thread, i] : order_of(Schedule::serial(), 20)) {
        EXPECT_EQ(thread, 0);
        EXPECT_EQ(i, expected++);
    }
}

TEST(Schedule, shuffled_depends_on_its_seed_only) {
    const auto first = order_of(Schedule::shuffled(5, 4), 50);
    EXPECT_EQ(first, order_of(Schedule::shuffled(5, 4), 50));
    EXPECT_NE(first, order_of(Schedule::shuffled(6, 4), 50));
    EXPECT_NE(first, order_of(Schedule::serial(), 50));
    std::set<int> threads;
    for (const auto &[thread, i] : first) threads.insert(thread);
    EXPECT_EQ(threads.size(), 4u);
}

TEST(Schedule, shuffled_stays_on_the_calling_thread) {
    const auto caller = std::this_thread::get_id();
    run_scheduled(Schedule::shuffled(1, 8), 20, [&](int, std::int64_t) -> PF_Err {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        return 0;
    });
}

TEST(Schedule, no_two_threads_share_a_number) {
    std::mutex mutex;
    std::vector<std::set<std::thread::id>> users(7);
    run_scheduled(Schedule::with_threads(7), 500, [&](int thread, std::int64_t) -> PF_Err {
        const std::lock_guard lock(mutex);
        users[static_cast<std::size_t>(thread)].insert(std::this_thread::get_id());
        return 0;
    });
    for (const auto &ids : users) EXPECT_LE(ids.size(), 1u);
}

TEST(Schedule, iterations_run_under_the_worker_role_and_the_callers_comes_back) {
    const ScopedThreadRole role(ThreadRole::kRender);
    for (const Schedule &schedule : schedules()) {
        std::atomic<int> wrong{0};
        run_scheduled(schedule, 30, [&](int, std::int64_t) -> PF_Err {
            if (current_thread_role() != ThreadRole::kWorker) ++wrong;
            return 0;
        });
        EXPECT_EQ(wrong.load(), 0);
        EXPECT_EQ(current_thread_role(), ThreadRole::kRender);
    }
}

TEST(Schedule, an_error_is_returned_and_stops_the_rest) {
    for (const Schedule &schedule : schedules()) {
        std::atomic<int> runs{0};
        EXPECT_EQ(run_scheduled(schedule, 100000,
                                [&](int, std::int64_t) -> PF_Err { return ++runs >= 10 ? 42 : 0; }),
                  42);
        EXPECT_LT(runs.load(), 100000);
    }
    int runs = 0;
    run_scheduled(Schedule::serial(), 100,
                  [&](int, std::int64_t i) -> PF_Err { return ++runs, i == 10 ? 42 : 0; });
    EXPECT_EQ(runs, 11);
}

TEST(Schedule, a_cancel_lets_exactly_that_many_iterations_begin) {
    for (Schedule schedule : schedules()) {
        for (const int after : {0, 1, 17}) {
            schedule.abort_after = after;
            std::atomic<int> runs{0};
            EXPECT_EQ(run_scheduled(schedule, 100,
                                    [&](int, std::int64_t) -> PF_Err { return ++runs, 0; }),
                      PF_Interrupt_CANCEL);
            EXPECT_EQ(runs.load(), after);
        }
        schedule.abort_after = 100;
        EXPECT_EQ(run_scheduled(schedule, 100, [](int, std::int64_t) -> PF_Err { return 0; }), 0);
    }
}

TEST(Schedule, reported_threads_are_1_when_serial_and_at_most_96) {
    EXPECT_EQ(reported_threads({Schedule::Kind::kSerial, 8, 0, -1}), 1);
    EXPECT_EQ(reported_threads(Schedule::with_threads(8)), 8);
    EXPECT_EQ(reported_threads(Schedule::with_threads(1000)), 96);
    EXPECT_EQ(reported_threads(Schedule::shuffled(0, 0)), 1);
}

}  // namespace
}  // namespace stage
