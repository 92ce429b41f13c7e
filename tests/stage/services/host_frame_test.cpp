// Every function that a plug-in can call runs in the frame: it is counted and traced, and when
// memory runs out inside it the plug-in gets an error, never an exception.
#include <gmock/gmock.h>

#include <set>

#include "stage/services/every_function.h"
#include "stage/services/failing_memory.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::UnorderedElementsAreArray;

/// A host outside any command, its calls traced.
class HostFrame : public testing::Test {
  protected:
    HostFrame() { host.trace.enable(true); }

    std::vector<std::string> checks() {
        std::vector<std::string> names;
        for (const stage::Finding &finding : host.strict.all()) names.push_back(finding.check);
        return names;
    }

    stage::ServingHost host;
};

/// What a plug-in must be able to tell a failure by.
void expect_failure(PF_Err code) {
    EXPECT_NE(code, 0);
}
template <class Value>
void expect_failure(Value value) {
    EXPECT_EQ(value, Value{});
}

TEST_F(HostFrame, the_list_of_suites_is_what_the_host_offers) {
    std::set<stage::SuiteRegistry::Key> listed;
#define KS_OFFERED(type, name, number) listed.insert({name, number});
    KS_EVERY_SUITE
#undef KS_OFFERED
    EXPECT_THAT(host.suites.offered(), UnorderedElementsAreArray(listed));
}

TEST_F(HostFrame, short_memory_in_any_function_is_an_error_and_a_finding) {
    int functions = 0;
    visit_every_function(host, [&](const std::string &name, auto function) {
        SCOPED_TRACE(name);
        ASSERT_NE(function, nullptr);
        ++functions;
        host.trace.clear();
        host.strict.clear();
        host.faults.exhaust_memory(1);
        using Result = decltype(call_with_nothing(function));
        if constexpr (std::is_void_v<Result>) {
            call_with_nothing(function);
        } else {
            expect_failure(call_with_nothing(function));
        }
        // Declined slots of a suite are traced with their struct.
        const std::string slot = name.substr(name.rfind('.'));
        EXPECT_THAT(host.trace.calls(), ElementsAre(EndsWith(slot)));
        EXPECT_THAT(checks(), ElementsAre("host.exception"));
    });
    EXPECT_GT(functions, 800);
}

/// Functions of the C library, which read and write whatever they are given.
bool takes_no_nulls(const std::string &name) {
    return name.ends_with(".sprintf") || name.ends_with(".strcpy");
}

TEST_F(HostFrame, no_allocation_that_fails_makes_a_function_throw) {
    int failures = 0;
    visit_every_function(host, [&](const std::string &name, auto function) {
        SCOPED_TRACE(name);
        if (function == nullptr || takes_no_nulls(name)) return;
        bool failed = true;
        for (int nth = 1; failed && nth < 100; ++nth) {
            host.faults.reset();
            fail_allocation(nth);
            call_with_nothing(function);
            failed = allocation_failed();
            fail_allocation(0);
            failures += failed ? 1 : 0;
        }
        EXPECT_FALSE(failed);
    });
    EXPECT_GT(failures, 1000);
}

}  // namespace
}  // namespace stage_test
