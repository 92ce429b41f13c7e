// The same frame, byte for byte, however the host spreads its iterations.
#include <cstring>

#include "whole/support/frame_case.h"

namespace ks::flow {
namespace {

// The pass gives each of n parts floor(height / n) rows, of which it samples every first, second or
// fourth, and leaves out the rest, n being the number of processors: frames of different hosts can
// only be the same where no row is left over and the steps go on across the parts.
constexpr int kRowsForAll = 4 * 448;  // a fourth is a multiple of 1, 2, 7 and 64

class Schedules : public testing::TestWithParam<stage::Depth> {
  protected:
    // Corrections, a wipe, tiles, five scopes: everything that iterates.
    stage::RenderResult frame(const stage::Schedule &schedule, int layout, int channels,
                              int height) {
        stage::HostOptions options = at_depth(GetParam());
        options.schedule = schedule;
        Flow flow(options);
        flow.make_scene(
            random_image(21, 70, height, oracle_depth(GetParam()), {false, true, false}));
        flow.set_original(random_image(22, 90, 120, oracle_depth(GetParam()), {}));
        flow.set("Monitor Layout", layout);
        flow.set("View Channels", channels);
        flow.set("Monitor Gamma", 2.2);
        flow.set("Monitor Gain", 1.5);
        flow.set("Compare with Original", 45);
        flow.set("Compare Opacity", 60);
        flow.set("Show Slice Waveform", 1);
        flow.set("Show Histogram", 1);
        flow.set("Waveform Monitor/Show Channels", channels);
        flow.set("Monochrome Display", channels == 1);
        flow.set("Histogram/Show Channels", channels);
        flow.set("Sampling Quality", layout % 3 + 1);
        flow.set("Waveform Scopes Aspect Ratio", 2);
        // Below each other and cut at the right edge, where the frame is high enough.
        place_scopes(flow, {{{}, {-80, 0}, {-60, 140}, {-90, 370}, {-80, 510}, {-40, 650}}});
        return flow.render();
    }

    void expect_same(const std::vector<stage::Schedule> &schedules, int layout, int channels,
                     int height) {
        const stage::RenderResult first = frame(schedules.front(), layout, channels, height);
        ASSERT_EQ(first.error, 0);
        for (const stage::Schedule &schedule : schedules) {
            const stage::RenderResult other = frame(schedule, layout, channels, height);
            ASSERT_EQ(other.error, 0);
            EXPECT_EQ(std::memcmp(other.picture.argb.data(), first.picture.argb.data(),
                                  first.picture.argb.size() * sizeof(float)),
                      0)
                << "layout " << layout << ", " << schedule.threads << " threads, seed "
                << schedule.seed;
        }
    }
};

TEST_P(Schedules, every_schedule_gives_the_same_bytes) {
    std::vector<stage::Schedule> schedules{stage::Schedule::serial()};
    for (const std::uint64_t seed : {1u, 99u}) {
        schedules.push_back(stage::Schedule::shuffled(seed, 7));
        schedules.push_back(stage::Schedule::shuffled(seed, 64));
    }
    for (const int threads : {1, 2, 7, 64}) {
        schedules.push_back(stage::Schedule::with_threads(threads));
    }
    for (const int layout : kLayouts) {
        for (const int channels : {1, 2}) expect_same(schedules, layout, channels, kRowsForAll);
    }
}

TEST_P(Schedules, any_order_gives_the_same_bytes_for_one_number_of_processors_and_any_height) {
    for (const int threads : {2, 7, 64}) {
        std::vector<stage::Schedule> schedules;
        for (const std::uint64_t seed : {1u, 2u, 3u, 99u}) {
            schedules.push_back(stage::Schedule::shuffled(seed, threads));
        }
        schedules.push_back(stage::Schedule::with_threads(threads));
        for (const int height : {101, 75}) expect_same(schedules, 7, 1, height);
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, Schedules, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
