// The same bytes whatever order and threads the parts run in.
#include <gtest/gtest.h>

#include <thread>

#include "plugin/scopes/merge/trace_promises.h"
#include "scopes/sampling/grid_pool.h"

namespace ks {
namespace {

using oracle::Depth;

// depth, vectorscope in the samples' colours
using Case = std::tuple<Depth, bool>;

class SchedulesTest : public testing::TestWithParam<Case> {
  protected:
    /// 192 rows: as many in each of 1, 2, 3 and 64 parts.
    TraceCase make(int height = 192) const {
        TraceCase c;
        c.source = noise_picture(333, height, std::get<0>(GetParam()), 31);
        c.settings.show = {false, true, true, true, false, true};
        c.settings.quality = 3;
        c.settings.sub_pixel = true;
        c.settings.monochrome = !std::get<1>(GetParam());
        c.settings.histogram_channels = std::get<1>(GetParam()) ? 2 : 1;
        c.settings.view_channels = std::get<1>(GetParam()) ? 2 : 1;
        c.settings.layer_width = c.settings.output_width = 333;
        c.extents[oracle::kWaveform] = {180, 130};
        c.extents[oracle::kVectorscope] = {150, 160};
        c.extents[oracle::kParade] = {210, 120};
        c.extents[oracle::kHistogram] = {272, 102};
        return c;
    }
    static MeasuredTraces run(const TraceCase &c, const TraceRun &schedule) {
        return measure(c.source, c.settings, c.extents, schedule);
    }
    static void expect_same(const MeasuredTraces &a, const MeasuredTraces &b) {
        for (std::size_t kind = 1; kind <= 5; ++kind) {
            EXPECT_TRUE(a.panels[kind].bytes == b.panels[kind].bytes) << "kind " << kind;
        }
        EXPECT_EQ(a.bins, b.bins);
        EXPECT_EQ(a.context.histogramMax, b.context.histogramMax);
        EXPECT_EQ(a.over_range, b.over_range);
    }
};

TEST_P(SchedulesTest, every_order_and_any_threads) {
    for (const int parts : {1, 2, 3, 7, 64}) {
        const TraceCase c = make(200);  // not divisible by 3, 7 and 64: each samples other rows
        const MeasuredTraces serial = run(c, {parts});
        for (const TraceRun &schedule :
             {TraceRun{parts, PartOrder::kReversed}, TraceRun{parts, PartOrder::kShuffled},
              TraceRun{parts, PartOrder::kThreads, 2}, TraceRun{parts, PartOrder::kThreads, 7},
              TraceRun{parts, PartOrder::kThreads, 64}}) {
            SCOPED_TRACE(std::to_string(parts) + " parts on " + std::to_string(schedule.threads) +
                         " threads");
            expect_same(serial, run(c, schedule));
        }
    }
}

TEST_P(SchedulesTest, any_number_of_parts_that_divides_the_rows) {
    const TraceCase c = make();
    const MeasuredTraces one = run(c, {1});
    for (const int parts : {2, 3, 64}) {
        SCOPED_TRACE(parts);
        expect_same(one, run(c, {parts, PartOrder::kThreads, 3}));
    }
}

TEST_P(SchedulesTest, fewer_grids_than_threads) {
    const TraceCase c = make();
    const MeasuredTraces serial = run(c, {64});
    for (const int grids : {1, 2, 3}) {
        SCOPED_TRACE(grids);
        expect_same(serial, run(c, {64, PartOrder::kThreads, 7, grids}));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, SchedulesTest,
    testing::Combine(testing::Values(Depth::kByte, Depth::kWord, Depth::kFloat), testing::Bool()));

TEST(GridPoolTest, lends_cleared_grids_and_takes_them_back) {
    VectorGrids grids;
    grids.map.width = 10;
    grids.map.height = 3;
    grids.cell_bytes = 4;
    grids.count = 3;
    std::vector<std::byte> memory(3 * grids.grid_bytes(), std::byte{0xCD});
    GridPool pool(grids, memory.data());
    EXPECT_EQ(pool.used(), 0);
    std::byte *first = nullptr;
    {
        const GridPool::Lease a(pool);
        const GridPool::Lease b(pool);
        first = a.get();
        EXPECT_NE(a.get(), b.get());
        for (std::size_t i = 0; i < grids.grid_bytes(); ++i) {
            ASSERT_EQ(a.get()[i], std::byte{0});
            ASSERT_EQ(b.get()[i], std::byte{0});
        }
        EXPECT_EQ(pool.used(), 2);
        first[0] = std::byte{7};
    }
    {
        const GridPool::Lease again(pool);
        EXPECT_EQ(pool.used(), 2);  // a used one, with its counts, before a fresh one
    }
    EXPECT_EQ(pool.grid(0)[0], std::byte{7});
    EXPECT_EQ(memory[2 * grids.grid_bytes()], std::byte{0xCD});
}

TEST(GridPoolTest, a_late_worker_waits) {
    VectorGrids grids;
    grids.map.width = grids.map.height = 1;
    grids.cell_bytes = 4;
    grids.count = 1;
    std::vector<std::byte> memory(grids.grid_bytes());
    GridPool pool(grids, memory.data());
    std::vector<std::thread> workers;
    for (int t = 0; t < 8; ++t) {
        workers.emplace_back([&] {
            for (int i = 0; i < 100; ++i) {
                const GridPool::Lease lease(pool);
                ++*reinterpret_cast<std::uint32_t *>(lease.get());
            }
        });
    }
    for (std::thread &worker : workers) worker.join();
    EXPECT_EQ(*reinterpret_cast<const std::uint32_t *>(pool.grid(0)), 800u);
    EXPECT_EQ(pool.used(), 1);
}

}  // namespace
}  // namespace ks
