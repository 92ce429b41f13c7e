// Every host call of the panel's commands fails once.
#include <functional>
#include <set>

#include "params/panel_edits.h"
#include "params/panel_refresh.h"
#include "plugin/params/panel_host.h"

namespace {

class PanelFaults : public PanelTest {
  protected:
    /// Runs `command` in a fresh state with its n-th call failing, for every n; `lock_result` is
    /// what it returns when a lock yields null.
    void fail_each_call(const std::function<PF_Err()> &command, PF_Err lock_result) {
        project.effect_layer =
            &project.add(AEGP_LayerFlag_VIDEO_ACTIVE | AEGP_LayerFlag_ADJUSTMENT_LAYER, 640, 480);
        for (int n = 1;; ++n) {
            ASSERT_LT(n, 1000);
            prepare(n);
            const int blocks = host.calls.live_blocks();
            PF_Err result = 0;
            bool thrown = false;
            try {
                result = command();
            } catch (PF_Err error) {
                result = error;
                thrown = true;
            }
            const std::string failed = host.calls.failed;
            expect_nothing_left(failed);
            EXPECT_LE(host.calls.live_blocks(), blocks) << failed;
            if (failed.empty()) {
                EXPECT_EQ(result, 0);
                EXPECT_GT(n, 1);
                return;
            }
            const bool suite = failed.rfind("acquire ", 0) == 0;
            EXPECT_EQ(thrown, suite) << failed;
            EXPECT_EQ(result, expected_result(failed, lock_result)) << failed;
            if (result != 0 && failed.rfind("update ", 0) == 0) {
                EXPECT_EQ(record().state, 0) << failed;
            }
        }
    }

  private:
    static PF_Err expected_result(const std::string &failed, PF_Err lock_result) {
        if (failed.rfind("acquire ", 0) == 0) return 516;
        if (failed == "lock") return lock_result;
        if (failed.rfind("new_handle", 0) == 0) return 512;
        return failed == "FreeMemHandle" ? 0 : 77;
    }
    void prepare(int n) {
        for (PF_ParamDef &each : defs) each.uu.change_flags = 0;
        if (host.out.sequence_data != nullptr) {
            host.handles.host_dispose_handle(host.out.sequence_data);
        }
        give_record(0, {1, 2, 3, 0, 0}, 3);
        host.calls.log.clear();
        host.calls.fallible = 0;
        host.calls.failed.clear();
        host.calls.fail_at = n;
    }
};

TEST_F(PanelFaults, refresh_survives_each) {
    fail_each_call([&] { return ks::update_params_ui(&host.in, &host.out, params.data()); }, 0);
}

TEST_F(PanelFaults, show_box_survives_each) {
    const PF_UserChangedParamExtra extra{19};
    fail_each_call(
        [&] { return ks::user_changed_param(&host.in, &host.out, params.data(), &extra); }, 512);
}

TEST_F(PanelFaults, lock_box_survives_each) {
    const PF_UserChangedParamExtra extra{65};
    fail_each_call(
        [&] { return ks::user_changed_param(&host.in, &host.out, params.data(), &extra); }, 0);
}

TEST_F(PanelFaults, reset_survives_each) {
    const PF_UserChangedParamExtra extra{68};
    bool set_up_lock = true;
    fail_each_call(
        [&] {
            const PF_Err result =
                ks::user_changed_param(&host.in, &host.out, params.data(), &extra);
            // The first lock fills the new record, the second one is the refresh's.
            if (host.calls.failed == "lock" && set_up_lock) {
                set_up_lock = false;
                EXPECT_EQ(result, 512);
                return PF_Err{0};
            }
            return result;
        },
        0);
}

}  // namespace
