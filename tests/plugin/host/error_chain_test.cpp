#include "host/error_chain.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(ErrorChain, keeps_the_first_error_in_every_order_of_failure) {
    // Four steps and two clean-ups, each failing or not: all 64 combinations.
    for (int mask = 0; mask < 64; ++mask) {
        ks::ErrorChain chain;
        std::vector<int> run;
        auto call = [&](int n) {
            return [&run, mask, n]() -> PF_Err {
                run.push_back(n);
                return (mask >> n & 1) != 0 ? 100 + n : 0;
            };
        };
        chain.step(call(0));
        chain.step(call(1));
        chain.always(call(2));
        chain.step(call(3));
        chain.step(call(4));
        chain.always(call(5));

        std::vector<int> expected_run;
        PF_Err expected = 0;
        for (int n = 0; n < 6; ++n) {
            const bool always = n == 2 || n == 5;
            if (!always && expected != 0) continue;
            expected_run.push_back(n);
            if (expected == 0 && (mask >> n & 1) != 0) expected = 100 + n;
        }
        EXPECT_EQ(run, expected_run) << mask;
        EXPECT_EQ(chain.result(), expected) << mask;
        EXPECT_EQ(chain.ok(), expected == 0) << mask;
    }
}

TEST(ErrorChain, keep_does_not_replace_an_error) {
    ks::ErrorChain chain;
    chain.keep(0);
    EXPECT_TRUE(chain.ok());
    chain.keep(5);
    chain.keep(6);
    EXPECT_EQ(chain.result(), 5);
}

}  // namespace
