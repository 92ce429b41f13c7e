// The same frame, byte for byte, however the host spreads its iterations.
#include <cstring>

#include "flow/flow_fixture.h"

namespace ks::flow {
namespace {

class Schedules : public testing::TestWithParam<stage::Depth> {
  protected:
    // Corrections, a wipe, tiles: everything that iterates.
    stage::RenderResult frame(const stage::Schedule &schedule, int layout, int channels) {
        stage::HostOptions options = at_depth(GetParam());
        options.schedule = schedule;
        Flow flow(options);
        flow.make_scene(random_image(21, 150, 101, oracle_depth(GetParam()), {false, true, false}));
        flow.set_original(random_image(22, 90, 120, oracle_depth(GetParam()), {}));
        flow.set("Monitor Layout", layout);
        flow.set("View Channels", channels);
        flow.set("Monitor Gamma", 2.2);
        flow.set("Monitor Gain", 1.5);
        flow.set("Compare with Original", 45);
        flow.set("Compare Opacity", 60);
        flow.set("Show Slice Waveform", 1);
        return flow.render();
    }
};

TEST_P(Schedules, every_schedule_gives_the_same_bytes) {
    std::vector<stage::Schedule> schedules;
    for (const std::uint64_t seed : {1u, 2u, 3u, 99u}) {
        schedules.push_back(stage::Schedule::shuffled(seed, 7));
    }
    for (const int threads : {1, 2, 7, 64}) {
        schedules.push_back(stage::Schedule::with_threads(threads));
    }
    for (const int layout : kLayouts) {
        for (const int channels : {1, 2}) {
            const stage::RenderResult serial = frame(stage::Schedule::serial(), layout, channels);
            ASSERT_EQ(serial.error, 0);
            for (const stage::Schedule &schedule : schedules) {
                const stage::RenderResult other = frame(schedule, layout, channels);
                ASSERT_EQ(other.error, 0);
                EXPECT_EQ(std::memcmp(other.picture.argb.data(), serial.picture.argb.data(),
                                      serial.picture.argb.size() * sizeof(float)),
                          0)
                    << "layout " << layout << ", " << schedule.threads << " threads, seed "
                    << schedule.seed;
            }
        }
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, Schedules, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
