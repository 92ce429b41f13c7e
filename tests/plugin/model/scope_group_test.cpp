#include "model/scope_group.h"

#include <gtest/gtest.h>

#include "model/scope_kind.h"

namespace {

TEST(ScopeGroup, holds_the_heading_and_every_control_of_the_scope) {
    constexpr int kFirst[] = {25, 31, 42, 47, 53};
    constexpr int kLast[] = {29, 40, 45, 51, 56};
    for (std::size_t i = 0; i < ks::kScopeTable.size(); ++i) {
        const ks::ParamRange group = ks::group_around(ks::kScopeTable[i].position);
        EXPECT_EQ(group.first, kFirst[i]);
        EXPECT_EQ(group.end, kLast[i] + 1);
    }
}

}  // namespace
