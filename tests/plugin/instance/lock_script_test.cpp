#include "instance/lock_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

// Typed in one line each, as the host gets them.
// clang-format off
constexpr char kLock[] = R"({     var curComp = app.project.activeItem;     if(curComp && curComp instanceof CompItem) {         var selectedLayers = curComp.selectedLayers;         if(selectedLayers) {             for(var l=0; l<selectedLayers.length; l++) {                 var curLayer = selectedLayers[l];                 curLayer.position.expression = '[thisComp.width / 2, thisComp.height / 2]';             }         }     } })";
constexpr char kUnlock[] = R"({     var curComp = app.project.activeItem;     if(curComp && curComp instanceof CompItem) {         var selectedLayers = curComp.selectedLayers;         if(selectedLayers) {             for(var l=0; l<selectedLayers.length; l++) {                 var curLayer = selectedLayers[l];                 curLayer.position.expression = '';             }         }     } })";
// clang-format on

class LockScript : public testing::Test {
  protected:
    fake::FakeHost host;
    fake::FakeProject project{host};
};

TEST_F(LockScript, one_locks_and_anything_else_unlocks) {
    for (PF_ParamValue lock : {1, 0, 2, -1}) ks::run_lock_script(&host.in, lock);
    EXPECT_EQ(project.scripts, (std::vector<std::string>{kLock, kUnlock, kUnlock, kUnlock}));
}

TEST_F(LockScript, result_is_freed_and_suites_are_given_back) {
    EXPECT_EQ(ks::run_lock_script(&host.in, 1), 0);
    EXPECT_EQ(host.calls.telling(), (std::vector<std::string>{"ExecuteScript", "FreeMemHandle"}));
    EXPECT_EQ(host.calls.count("acquire AEGP Utility Suite 11"), 1);
    EXPECT_EQ(host.calls.count("acquire AEGP Memory Suite 1"), 1);
    EXPECT_EQ(host.calls.live_blocks(), 0);
    EXPECT_EQ(host.suites_held(), 0);
    EXPECT_TRUE(host.calls.misuse.empty());
}

TEST_F(LockScript, without_a_result_nothing_is_freed) {
    project.script_gives_result = false;
    EXPECT_EQ(ks::run_lock_script(&host.in, 1), 0);
    EXPECT_EQ(std::count(host.calls.log.begin(), host.calls.log.end(), "FreeMemHandle"), 0);
}

TEST_F(LockScript, refused_memory_suite_throws_516_before_a_result_could_be_left_behind) {
    host.refused.insert(kAEGPMemorySuite);
    EXPECT_THROW(ks::run_lock_script(&host.in, 1), PF_Err);
    EXPECT_TRUE(project.scripts.empty());
    EXPECT_EQ(host.calls.live_blocks(), 0);
    EXPECT_EQ(host.suites_held(), 0);
}

TEST_F(LockScript, script_error_is_returned_and_its_result_freed) {
    host.calls.fails["ExecuteScript"] = 1;
    EXPECT_EQ(ks::run_lock_script(&host.in, 1), 1);
    EXPECT_EQ(host.calls.live_blocks(), 0);
}

TEST_F(LockScript, error_of_the_freeing_does_not_replace_the_scripts_result) {
    host.calls.fails["FreeMemHandle"] = 4;
    EXPECT_EQ(ks::run_lock_script(&host.in, 1), 0);
}

TEST_F(LockScript, refused_utility_suite_throws_516_and_runs_nothing) {
    host.refused.insert(kAEGPUtilitySuite);
    EXPECT_THROW(ks::run_lock_script(&host.in, 1), PF_Err);
    EXPECT_TRUE(project.scripts.empty());
    EXPECT_EQ(host.suites_held(), 0);
}

}  // namespace
