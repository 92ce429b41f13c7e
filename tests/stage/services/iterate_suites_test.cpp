#include <atomic>
#include <cstdint>

#include "stage/host/schedule.h"
#include "stage/services/pixel_suite_fixture.h"

namespace stage_test {
namespace {

using stage::Depth;
using stage::Schedule;

std::vector<Schedule> schedules() {
    std::vector<Schedule> all{Schedule::serial()};
    for (const int n : {2, 7, 64, 96}) {
        all.push_back(Schedule::with_threads(n));
        all.push_back(Schedule::shuffled(static_cast<std::uint64_t>(n), n));
    }
    return all;
}

class IterateSuites : public SuiteFixture {};

// Adds 1 to alpha and stores the coordinates.
template <class Pixel>
PF_Err mark(void *, A_long x, A_long y, Pixel *in, Pixel *out) {
    using Channel = decltype(out->alpha);
    out->alpha = static_cast<Channel>(out->alpha + 1);
    out->red = static_cast<Channel>(x);
    out->green = static_cast<Channel>(y);
    out->blue = in->blue;
    return 0;
}

template <class Pixel>
void expect_marked(PF_EffectWorld &world, const PF_LRect &area) {
    for (int y = 0; y < world.height; ++y) {
        for (int x = 0; x < world.width; ++x) {
            const bool inside =
                x >= area.left && x < area.right && y >= area.top && y < area.bottom;
            const auto &pixel = *reinterpret_cast<Pixel *>(
                reinterpret_cast<std::byte *>(world.data) + std::ptrdiff_t{y} * world.rowbytes +
                static_cast<std::ptrdiff_t>(sizeof(Pixel)) * x);
            ASSERT_EQ(static_cast<int>(pixel.alpha), inside ? 1 : 0) << x << "," << y;
            if (!inside) continue;
            ASSERT_EQ(static_cast<int>(pixel.red), x);
            ASSERT_EQ(static_cast<int>(pixel.green), y);
            ASSERT_EQ(static_cast<int>(pixel.blue), 7);
        }
    }
}

TEST_F(IterateSuites, every_pixel_exactly_once_at_every_depth_version_and_schedule) {
    for (const Schedule &schedule : schedules()) {
        host.options.schedule = schedule;
        const auto run = [&]<class Pixel, class Suite>(const Suite *table, Depth depth, Pixel) {
            PF_EffectWorld src = world(9, 6, depth), dst = world(9, 6, depth);
            for (int i = 0; i < 9 * 6; ++i) at<Pixel>(src, i % 9, i / 9).blue = 7;
            EXPECT_EQ(table->iterate(nullptr, 0, 6, &src, nullptr, nullptr, mark<Pixel>, &dst), 0);
            expect_marked<Pixel>(dst, {0, 0, 9, 6});
        };
        run(suite<PF_Iterate8Suite1>(kPFIterate8Suite, 1), Depth::U8, PF_Pixel{});
        run(suite<PF_Iterate8Suite2>(kPFIterate8Suite, 2), Depth::U8, PF_Pixel{});
        run(suite<PF_iterate16Suite1>(kPFIterate16Suite, 1), Depth::U16, PF_Pixel16{});
        run(suite<PF_iterate16Suite2>(kPFIterate16Suite, 2), Depth::U16, PF_Pixel16{});
        run(suite<PF_iterateFloatSuite1>(kPFIterateFloatSuite, 1), Depth::Float, PF_PixelFloat{});
        run(suite<PF_iterateFloatSuite2>(kPFIterateFloatSuite, 2), Depth::Float, PF_PixelFloat{});
    }
    host.worlds.check("");
    EXPECT_EQ(checks(), Names{});
}

TEST_F(IterateSuites, area_and_overlap_bound_the_pixels) {
    const auto *table = suite<PF_Iterate8Suite1>(kPFIterate8Suite, 1);
    struct Case {
        const PF_LRect *area;
        PF_LRect changed;
    };
    const PF_LRect part{1, 2, 3, 4}, beyond{-5, -5, 100, 3}, outside{7, 0, 9, 9},
        inverted{3, 3, 1, 1};
    const Case cases[] = {{nullptr, {0, 0, 4, 5}},
                          {&part, {1, 2, 3, 4}},
                          {&beyond, {0, 0, 4, 3}},
                          {&outside, {0, 0, 0, 0}},
                          {&inverted, {0, 0, 0, 0}}};
    for (const Case &c : cases) {
        PF_EffectWorld src = world(4, 8, Depth::U8), dst = world(6, 5, Depth::U8);
        for (int i = 0; i < 32; ++i) at<PF_Pixel>(src, i % 4, i / 4).blue = 7;
        EXPECT_EQ(table->iterate(nullptr, 0, 1, &src, c.area, nullptr, mark<PF_Pixel>, &dst), 0);
        expect_marked<PF_Pixel>(dst, c.changed);
    }
}

TEST_F(IterateSuites, without_source_the_destination_is_its_own_input) {
    PF_EffectWorld dst = world(3, 2, Depth::U8);
    at<PF_Pixel>(dst, 2, 1).blue = 99;
    const auto check = [](void *wrong, A_long, A_long, PF_Pixel *in, PF_Pixel *out) -> PF_Err {
        if (in != out) *static_cast<bool *>(wrong) = true;
        out->red = in->blue;
        return 0;
    };
    bool wrong = false;
    EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, &wrong, check, &dst), 0);
    EXPECT_FALSE(wrong);
    EXPECT_EQ(at<PF_Pixel>(dst, 2, 1).red, 99);
}

TEST_F(IterateSuites, the_callbacks_error_comes_back_and_stops_the_rest) {
    const auto fail = [](void *count, A_long, A_long y, PF_Pixel *, PF_Pixel *) -> PF_Err {
        ++*static_cast<std::atomic<int> *>(count);
        return y == 2 ? 1234 : 0;
    };
    for (const Schedule &schedule : schedules()) {
        host.options.schedule = schedule;
        PF_EffectWorld dst = world(5, 400, Depth::U8);
        std::atomic<int> calls{0};
        EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, &calls, fail, &dst), 1234);
        EXPECT_LT(calls.load(), 2000);
    }
}

TEST_F(IterateSuites, user_cancel_after_rows_returns_517) {
    for (Schedule schedule : schedules()) {
        schedule.abort_after = 3;
        host.options.schedule = schedule;
        PF_EffectWorld dst = world(5, 10, Depth::U8);
        EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, nullptr, mark<PF_Pixel>, &dst),
                  PF_Interrupt_CANCEL);
        int rows = 0;
        for (int y = 0; y < 10; ++y) rows += at<PF_Pixel>(dst, 0, y).alpha;
        EXPECT_EQ(rows, 3);
    }
}

TEST_F(IterateSuites, worlds_of_another_depth_and_dead_ones_are_refused) {
    PF_EffectWorld eight = world(3, 3, Depth::U8), deep = world(3, 3, Depth::U16);
    EXPECT_EQ(utils->iterate16(nullptr, 0, 1, nullptr, nullptr, nullptr, mark<PF_Pixel16>, &eight),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(utils->iterate(nullptr, 0, 1, &deep, nullptr, nullptr, mark<PF_Pixel>, &eight),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, nullptr, nullptr, &eight),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{});
    EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, nullptr, mark<PF_Pixel>, nullptr),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{"world.dead"});
    EXPECT_EQ(at<PF_Pixel>(eight, 0, 0).alpha, 0);
}

TEST_F(IterateSuites, a_host_call_from_a_callback_is_found_even_when_serial) {
    const auto call_host = [](void *table, A_long x, A_long y, PF_Pixel *, PF_Pixel *) -> PF_Err {
        if (x == 0 && y == 0) static_cast<PF_UtilCallbacks *>(table)->ansi.sqrt(4);
        return 0;
    };
    PF_EffectWorld dst = world(2, 2, Depth::U8);
    EXPECT_EQ(utils->iterate(nullptr, 0, 1, nullptr, nullptr, utils, call_host, &dst), 0);
    EXPECT_EQ(checks(), Names{"thread.worker"});
}

TEST_F(IterateSuites, injected_failure_runs_no_callback) {
    PF_EffectWorld dst = world(2, 2, Depth::U8);
    host.faults.arm_name("PF Iterate8 Suite.iterate");
    const auto *table = suite<PF_Iterate8Suite1>(kPFIterate8Suite, 1);
    EXPECT_EQ(table->iterate(nullptr, 0, 1, nullptr, nullptr, nullptr, mark<PF_Pixel>, &dst),
              stage::kInjectedError);
    EXPECT_EQ(at<PF_Pixel>(dst, 0, 0).alpha, 0);
}

struct Generic {
    std::atomic<int> runs[200] = {};
    std::atomic<int> bad{0};
    int threads = 0;
    int expected = 0;
};
A_Err count_generic(void *refcon, A_long thread, A_long i, A_long iterations) {
    auto *generic = static_cast<Generic *>(refcon);
    if (thread < 0 || thread >= generic->threads || iterations != generic->expected) {
        ++generic->bad;
    }
    ++generic->runs[i];
    return 0;
}

TEST_F(IterateSuites, generic_iteration_runs_each_number_once_with_the_real_count) {
    const auto *first = suite<AEGP_IterateSuite1>(kAEGPIterateSuite, 1);
    const auto *second = suite<AEGP_IterateSuite2>(kAEGPIterateSuite, 2);
    for (const Schedule &schedule : schedules()) {
        host.options.schedule = schedule;
        A_long threads = 0;
        EXPECT_EQ(first->AEGP_GetNumThreads(&threads), 0);
        EXPECT_EQ(threads, stage::reported_threads(schedule));
        for (const A_long iterations : {1, 200, -1}) {
            Generic generic;
            generic.threads = threads;
            generic.expected = iterations == -1 ? threads : iterations;
            EXPECT_EQ(second->AEGP_IterateGeneric(iterations, &generic, count_generic), 0);
            EXPECT_EQ(generic.bad.load(), 0);
            for (int i = 0; i < 200; ++i) {
                ASSERT_EQ(generic.runs[i].load(), i < generic.expected ? 1 : 0) << i;
            }
        }
    }
}

TEST_F(IterateSuites, generic_iteration_over_nothing_and_over_nonsense) {
    const auto *table = suite<AEGP_IterateSuite1>(kAEGPIterateSuite, 1);
    EXPECT_EQ(table->AEGP_IterateGeneric(0, nullptr, count_generic), 0);
    EXPECT_EQ(table->AEGP_IterateGeneric(-2, nullptr, count_generic), A_Err_PARAMETER);
    EXPECT_EQ(table->AEGP_IterateGeneric(1, nullptr, nullptr), A_Err_PARAMETER);
    EXPECT_EQ(table->AEGP_GetNumThreads(nullptr), A_Err_PARAMETER);
}

TEST_F(IterateSuites, slots_nobody_needs_are_a_finding) {
    const auto *table = suite<PF_Iterate8Suite1>(kPFIterate8Suite, 1);
    EXPECT_EQ(table->iterate_lut(nullptr, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{"suite.unimplemented"});
}

}  // namespace
}  // namespace stage_test
