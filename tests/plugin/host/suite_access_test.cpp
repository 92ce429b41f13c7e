#include "host/suite_access.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_host.h"

namespace {

using Log = std::vector<std::string>;

constexpr char kAcquireText[] = "Not able to acquire AEFX Suite.";
constexpr char kReleaseText[] = "Not able to release AEFX Suite.";

class SuiteAccess : public testing::Test {
  protected:
    SuiteAccess() {
        host.suites[{kDRAWBOT_DrawSuite, 1}] = &draw;
        host.suites[{kDRAWBOT_SupplierSuite, 1}] = &supplier;
        host.suites[{kDRAWBOT_SurfaceSuite, 1}] = &surface;
        host.suites[{kDRAWBOT_PathSuite, 1}] = &path;
    }
    [[nodiscard]] bool error_shown() const {
        return (host.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0;
    }

    fake::FakeHost host;
    DRAWBOT_DrawbotSuite1 draw{};
    DRAWBOT_SupplierSuite1 supplier{};
    DRAWBOT_SurfaceSuite1 surface{};
    DRAWBOT_PathSuite1 path{};
    const void *suite = nullptr;
};

TEST_F(SuiteAccess, acquire_hands_out_the_table_and_says_nothing) {
    EXPECT_EQ(ks::AcquireSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, nullptr, &suite), 0);
    EXPECT_EQ(suite, &path);
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_FALSE(error_shown());
}

TEST_F(SuiteAccess, acquire_refused_shows_the_default_text) {
    EXPECT_EQ(ks::AcquireSuite(&host.in, &host.out, "No Suite", 1, nullptr, &suite), 516);
    EXPECT_EQ(suite, nullptr);
    EXPECT_STREQ(host.out.return_msg, kAcquireText);
    EXPECT_TRUE(error_shown());
}

TEST_F(SuiteAccess, acquire_shows_the_callers_text_literally) {
    EXPECT_EQ(ks::AcquireSuite(&host.in, &host.out, "No Suite", 1, "100%s gone", &suite), 516);
    EXPECT_STREQ(host.out.return_msg, "100%s gone");
}

TEST_F(SuiteAccess, acquire_text_is_cut_to_the_message_area) {
    const std::string longest(300, 'x');
    ks::AcquireSuite(&host.in, &host.out, "No Suite", 1, longest.c_str(), &suite);
    EXPECT_EQ(std::string(host.out.return_msg), std::string(255, 'x'));
}

TEST_F(SuiteAccess, acquire_null_table_is_a_refusal) {
    host.null_suites.insert(kDRAWBOT_PathSuite);
    EXPECT_EQ(ks::AcquireSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, nullptr, &suite), 516);
    EXPECT_STREQ(host.out.return_msg, kAcquireText);
}

TEST_F(SuiteAccess, acquire_without_basic_suite_is_516_and_keeps_other_flags) {
    host.in.pica_basicP = nullptr;
    host.out.out_flags = PF_OutFlag_CUSTOM_UI;
    suite = &draw;
    EXPECT_EQ(ks::AcquireSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, nullptr, &suite), 516);
    EXPECT_EQ(suite, nullptr);
    EXPECT_STREQ(host.out.return_msg, kAcquireText);
    EXPECT_EQ(host.out.out_flags, PF_OutFlag_CUSTOM_UI | PF_OutFlag_DISPLAY_ERROR_MESSAGE);
}

TEST_F(SuiteAccess, release_goes_to_the_host_and_succeeds) {
    EXPECT_EQ(ks::ReleaseSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, "unused"), 0);
    EXPECT_EQ(host.calls.log, Log{"release DRAWBOT Path Suite 1"});
    EXPECT_FALSE(error_shown());
}

TEST_F(SuiteAccess, release_without_basic_suite_shows_default_or_callers_text) {
    host.in.pica_basicP = nullptr;
    EXPECT_EQ(ks::ReleaseSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, nullptr), 516);
    EXPECT_STREQ(host.out.return_msg, kReleaseText);
    EXPECT_TRUE(error_shown());
    EXPECT_EQ(ks::ReleaseSuite(&host.in, &host.out, kDRAWBOT_PathSuite, 1, "mine"), 516);
    EXPECT_STREQ(host.out.return_msg, "mine");
}

TEST_F(SuiteAccess, drawbot_set_is_acquired_in_order) {
    ks::DrawbotSuites set{};
    EXPECT_EQ(ks::AcquireDrawbotSuites(&host.in, &host.out, &set), 0);
    EXPECT_EQ(host.calls.log,
              (Log{"acquire DRAWBOT Draw Suite 1", "acquire DRAWBOT Supplier Suite 1",
                   "acquire DRAWBOT Surface Suite 1", "acquire DRAWBOT Path Suite 1"}));
    EXPECT_EQ(set.drawbot, &draw);
    EXPECT_EQ(set.supplier, &supplier);
    EXPECT_EQ(set.surface, &surface);
    EXPECT_EQ(set.path, &path);
}

TEST_F(SuiteAccess, drawbot_set_needs_somewhere_to_go) {
    EXPECT_EQ(ks::AcquireDrawbotSuites(&host.in, &host.out, nullptr), 514);
    EXPECT_STREQ(host.out.return_msg, "NULL suite pointer passed to AEFX_AcquireDrawbotSuites");
    EXPECT_TRUE(error_shown());
}

TEST_F(SuiteAccess, refused_supplier_leaves_the_draw_suite_acquired) {
    host.refused.insert(kDRAWBOT_SupplierSuite);
    ks::DrawbotSuites set{};
    EXPECT_EQ(ks::AcquireDrawbotSuites(&host.in, &host.out, &set), 516);
    EXPECT_EQ(host.calls.log[1], "acquire DRAWBOT Supplier Suite 1");
    EXPECT_EQ(host.calls.log[2].substr(0, 7), "sprintf");
    EXPECT_EQ(host.calls.log.size(), 3u) << "the rest is not tried";
    EXPECT_EQ((host.held[{kDRAWBOT_DrawSuite, 1}]), 1);
    EXPECT_EQ(set.drawbot, &draw);
    EXPECT_EQ(set.surface, nullptr);
    EXPECT_STREQ(host.out.return_msg, kAcquireText);
    EXPECT_TRUE(error_shown());
}

TEST_F(SuiteAccess, drawbot_release_gives_the_surface_suite_back_as_version_2) {
    EXPECT_EQ(ks::ReleaseDrawbotSuites(&host.in, &host.out), 0);
    EXPECT_EQ(host.calls.log,
              (Log{"release DRAWBOT Draw Suite 1", "release DRAWBOT Supplier Suite 1",
                   "release DRAWBOT Surface Suite 2", "release DRAWBOT Path Suite 1"}));
}

TEST_F(SuiteAccess, drawbot_release_without_basic_suite_shows_and_returns_0) {
    host.in.pica_basicP = nullptr;
    EXPECT_EQ(ks::ReleaseDrawbotSuites(&host.in, &host.out), 0);
    EXPECT_EQ(host.calls.log.size(), 4u);
    EXPECT_STREQ(host.out.return_msg, kReleaseText);
    EXPECT_TRUE(error_shown());
}

}  // namespace
