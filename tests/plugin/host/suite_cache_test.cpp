#include "host/suite_cache.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

using Log = std::vector<std::string>;

template <class F>
PF_Err thrown_by(F &&f) {
    try {
        f();
    } catch (PF_Err error) {
        return error;
    }
    return 0;
}

TEST(SuiteCache, construction_without_basic_suite_throws_516) {
    EXPECT_EQ(thrown_by([] { ks::SuiteCache cache(nullptr); }), 516);
}

TEST(SuiteCache, acquires_nothing_before_it_is_asked) {
    fake::FakeHost host;
    { ks::SuiteCache cache(&host.basic); }
    EXPECT_TRUE(host.calls.log.empty());
}

TEST(SuiteCache, acquires_once_and_releases_by_own_name_and_number) {
    fake::FakeHost host;
    fake::FakeProject project(host);
    {
        ks::SuiteCache cache(&host.basic);
        EXPECT_EQ(&cache.handle(), &host.handles);
        EXPECT_EQ(&cache.handle(), &host.handles);
        cache.layer();
    }
    EXPECT_EQ(Log(host.calls.log.begin(), host.calls.log.begin() + 2),
              (Log{"acquire PF Handle Suite 2", "acquire AEGP Layer Suite 13"}));
    EXPECT_EQ(std::set<std::string>(host.calls.log.begin() + 2, host.calls.log.end()),
              (std::set<std::string>{"release PF Handle Suite 2", "release AEGP Layer Suite 13"}));
    EXPECT_EQ(host.calls.log.size(), 4u);
    EXPECT_EQ(host.suites_held(), 0);
}

TEST(SuiteCache, refused_or_null_suite_throws_516_and_holds_nothing) {
    fake::FakeHost host;
    host.refused.insert(kPFHandleSuite);
    EXPECT_EQ(thrown_by([&] { ks::SuiteCache(&host.basic).handle(); }), 516);
    host.refused.clear();
    host.null_suites.insert(kPFHandleSuite);
    EXPECT_EQ(thrown_by([&] { ks::SuiteCache(&host.basic).handle(); }), 516);
    EXPECT_EQ(host.suites_held(), 0);
    EXPECT_EQ(host.calls.log, (Log{"acquire PF Handle Suite 2", "acquire PF Handle Suite 2"}));
}

}  // namespace
