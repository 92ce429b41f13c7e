// Every fallible host call of every sequence command fails in turn: the first error is the result,
// nothing leaks, and the next command works.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include "instance/sequence.h"
#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

using Command = std::function<PF_Err(fake::FakeHost &)>;

PF_Err run(const Command &command, fake::FakeHost &host) {
    try {
        return command(host);
    } catch (PF_Err error) {
        return error;
    }
}

PF_Err expected_result(const std::string &failed, PF_Err code, PF_Err after_lock) {
    if (failed.starts_with("acquire ")) return 516;
    if (failed.starts_with("new_handle ")) return 512;
    if (failed == "lock") return after_lock;
    return code;
}

struct Scene {
    explicit Scene(AEGP_LayerFlags flags, A_long width) {
        project.effect_layer = &project.add(flags, width, 1080);
        project.add(AEGP_LayerFlag_VIDEO_ACTIVE, 640, 480, u"Plate");
    }
    fake::FakeHost host;
    fake::FakeProject project{host};
};

constexpr AEGP_LayerFlags kAdjustment =
    AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_ADJUSTMENT_LAYER;

void check_setup(AEGP_LayerFlags flags, A_long width) {
    const Command setup = [](fake::FakeHost &host) {
        return ks::sequence_setup(&host.in, &host.out, true);
    };
    int faults = 0;
    for (int n = 1;; ++n) {
        Scene scene(flags, width);
        fake::Calls &calls = scene.host.calls;
        calls.fail_at = n;
        const PF_Err result = run(setup, scene.host);
        if (calls.failed.empty()) {
            EXPECT_EQ(result, 0);
            break;
        }
        ++faults;
        // The script has run and counts; the memory for its result does not.
        const auto script = std::find(calls.log.begin(), calls.log.end(), "ExecuteScript");
        const bool script_ran = script - calls.log.begin() < static_cast<long>(calls.failed_at);
        const bool after_script = calls.failed == "FreeMemHandle" && script_ran;
        EXPECT_EQ(result, after_script ? 0 : expected_result(calls.failed, calls.fail_code, 512))
            << n << " " << calls.failed;
        EXPECT_EQ(calls.misuse, std::vector<std::string>{}) << calls.failed;
        EXPECT_EQ(calls.open_locks(), 0) << calls.failed;
        EXPECT_EQ(scene.host.suites_held(), 0) << calls.failed;
        const int stored = scene.host.out.sequence_data != nullptr ? 1 : 0;
        const bool result_lost = calls.failed == "acquire AEGP Memory Suite 1" && script_ran;
        EXPECT_EQ(calls.live_blocks(), stored + (result_lost ? 1 : 0)) << calls.failed;

        calls.fail_at = 0;
        scene.host.next_command();
        EXPECT_EQ(run(setup, scene.host), 0) << "after a fault in " << calls.failed;
    }
    EXPECT_GE(faults, 10);
}

TEST(SequenceFaults, setup_on_a_footage_layer) {
    check_setup(AEGP_LayerFlag_VIDEO_ACTIVE, 1280);
}

TEST(SequenceFaults, setup_on_an_adjustment_layer_that_needs_a_backing) {
    check_setup(kAdjustment, 1920);
}

void check_conversion(const Command &command) {
    int faults = 0;
    for (int n = 1;; ++n) {
        Scene scene(AEGP_LayerFlag_VIDEO_ACTIVE, 1920);
        fake::Calls &calls = scene.host.calls;
        ASSERT_EQ(ks::sequence_setup(&scene.host.in, &scene.host.out, false), 0);
        scene.host.next_command();
        const int before = calls.live_blocks();
        int locks_seen = 0;
        calls.fail_at = n;
        const PF_Err result = run(command, scene.host);
        for (const std::string &call : calls.log) locks_seen += call == "lock" ? 1 : 0;
        if (calls.failed.empty()) {
            EXPECT_EQ(result, 0);
            break;
        }
        ++faults;
        // Old data that cannot be locked is let be; a new record that cannot be is an error.
        EXPECT_EQ(result, expected_result(calls.failed, calls.fail_code, locks_seen == 1 ? 0 : 512))
            << n << " " << calls.failed;
        EXPECT_EQ(calls.live_blocks(), before);
        EXPECT_EQ(calls.open_locks(), 0);
        EXPECT_EQ(scene.host.suites_held(), 0);
        EXPECT_EQ(calls.misuse, std::vector<std::string>{});
        calls.fail_at = 0;
        EXPECT_EQ(run(command, scene.host), 0);
    }
    EXPECT_EQ(faults, 4) << "suite, lock, new handle, lock";
}

TEST(SequenceFaults, flatten) {
    check_conversion(
        [](fake::FakeHost &host) { return ks::sequence_flatten(&host.in, &host.out); });
}

TEST(SequenceFaults, resetup) {
    check_conversion(
        [](fake::FakeHost &host) { return ks::sequence_resetup(&host.in, &host.out); });
}

TEST(SequenceFaults, setdown_without_the_handle_suite_is_516_and_keeps_the_data) {
    Scene scene(AEGP_LayerFlag_VIDEO_ACTIVE, 1920);
    ASSERT_EQ(ks::sequence_setup(&scene.host.in, &scene.host.out, false), 0);
    scene.host.next_command();
    scene.host.calls.fail_at = 1;
    const Command setdown = [](fake::FakeHost &host) {
        return ks::sequence_setdown(&host.in, &host.out);
    };
    EXPECT_EQ(run(setdown, scene.host), 516);
    EXPECT_NE(scene.host.in.sequence_data, nullptr);
    EXPECT_EQ(run(setdown, scene.host), 0);
    EXPECT_EQ(scene.host.calls.live_blocks(), 0);
}

}  // namespace
