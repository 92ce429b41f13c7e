// The table of scopes.
#include "model/scope_kind.h"

#include <gtest/gtest.h>

namespace ks {
namespace {

TEST(ScopeKinds, walk_puts_the_parade_before_the_vectorscope) {
    ASSERT_EQ(kScopeWalkOrder.size(), 5u);
    const int expected[] = {1, 3, 2, 4, 5};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(static_cast<int>(kScopeWalkOrder[i]), expected[i]);
        EXPECT_EQ(static_cast<std::size_t>(kScopeTable[i].kind), i + 1);
    }
}

TEST(ScopeKinds, rows_name_their_parameters_by_index) {
    const int show[] = {19, 20, 21, 22, 23};
    const int position[] = {27, 38, 43, 50, 55};
    const int size[] = {28, 39, 44, 51, 56};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(kScopeTable[i].show, show[i]);
        EXPECT_EQ(kScopeTable[i].position, position[i]);
        EXPECT_EQ(kScopeTable[i].size, size[i]);
    }
}

TEST(ScopeKinds, codes_of_damaged_projects_are_told_apart) {
    for (int code = -128; code < 128; ++code) {
        EXPECT_EQ(is_scope_code(code), code >= 1 && code <= 5);
    }
}

}  // namespace
}  // namespace ks
