#include "stage/ledger/mem_handle_store.h"

#include <gmock/gmock.h>

#include <cstring>

#include "stage/ledger/strict.h"

namespace stage {
namespace {

struct MemHandleTest : testing::Test {
    Strict strict;
    MemHandleStore store{strict};
};

TEST_F(MemHandleTest, NewMemoryIsNeverZeroUnlessAskedFor) {
    const AEGP_MemHandle handle = store.allocate(64, false, "x", "");
    const auto *bytes = static_cast<const unsigned char *>(store.lock(handle, ""));
    EXPECT_THAT(std::vector<int>(bytes, bytes + 64), testing::Each(testing::Ne(0)));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 16, 0u);
}

TEST_F(MemHandleTest, EmptyHandlesAreValid) {
    const AEGP_MemHandle handle = store.allocate(0, true, "nothing", "");
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(store.lock(handle, ""), nullptr);
}

TEST_F(MemHandleTest, RequestsAboveTheLimitFail) {
    store.size_limit = 100;
    EXPECT_EQ(store.allocate(101, true, "x", ""), nullptr);
    const AEGP_MemHandle handle = store.allocate(100, true, "x", "");
    ASSERT_NE(handle, nullptr);
    EXPECT_FALSE(store.resize(handle, 101, ""));
    EXPECT_EQ(store.allocate_text(std::string(100, 'x'), ""), nullptr);
    EXPECT_EQ(store.allocate_text(std::u16string(50, u'x'), ""), nullptr);
}

TEST_F(MemHandleTest, TextIsZeroTerminated) {
    const AEGP_MemHandle handle = store.allocate_text(std::u16string_view(u"ab"), "");
    std::uint32_t size = 0;
    EXPECT_TRUE(store.size(handle, &size));
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(std::memcmp(*handle, u"ab", 6), 0);
}

TEST_F(MemHandleTest, LockedHandleIsNotResized) {
    const AEGP_MemHandle handle = store.allocate(8, true, "x", "");
    store.lock(handle, "");
    EXPECT_FALSE(store.resize(handle, 16, ""));
    EXPECT_EQ(strict.violations().at(0).check, "mem.locked");
}

TEST_F(MemHandleTest, FreeAllLeavesNothingAndReportsNothing) {
    store.allocate(8, true, "x", "A");
    store.lock(store.allocate(24, true, "y", "B"), "");
    EXPECT_EQ(store.live_bytes(), 32u);
    EXPECT_THAT(store.leaks(),
                testing::UnorderedElementsAre("x of 8 bytes from A", "y of 24 bytes from B"));
    store.free_all();
    EXPECT_EQ(store.live_count(), 0u);
    EXPECT_TRUE(strict.violations().empty());
}

}  // namespace
}  // namespace stage
