#include "stage/ledger/handle_store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "stage/ledger/strict.h"

namespace stage {
namespace {

const std::string kCommand = "PF_Cmd_TEST";

class HandleStoreTest : public testing::Test {
  protected:
    std::vector<std::string> checks() const {
        std::vector<std::string> names;
        for (const Finding &finding : strict.all()) names.push_back(finding.check);
        return names;
    }
    using Names = std::vector<std::string>;

    Strict strict;
    HandleStore store{strict};
};

TEST_F(HandleStoreTest, a_handle_points_to_the_data_pointer_that_lock_returns) {
    const PF_Handle handle = store.allocate(100, kCommand);
    ASSERT_NE(handle, nullptr);
    void *data = store.lock(handle, kCommand);
    EXPECT_EQ(data, *handle);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(data) % 16, 0u);
    EXPECT_EQ(store.size(handle), 100u);
    store.unlock(handle, kCommand);
    EXPECT_EQ(store.lock(handle, kCommand), data);
    store.unlock(handle, kCommand);
    store.dispose(handle, kCommand);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(HandleStoreTest, new_memory_is_never_zero) {
    const PF_Handle handle = store.allocate(64, kCommand);
    const auto *bytes = static_cast<unsigned char *>(*handle);
    for (int i = 0; i < 64; ++i) EXPECT_NE(bytes[i], 0);
    store.dispose(handle, kCommand);
}

TEST_F(HandleStoreTest, size_zero_is_a_valid_handle) {
    const PF_Handle handle = store.allocate(0, kCommand);
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(*handle, nullptr);
    store.dispose(handle, kCommand);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(HandleStoreTest, requests_above_the_limit_fail) {
    store.size_limit = 1000;
    EXPECT_NE(store.allocate(1000, kCommand), nullptr);
    EXPECT_EQ(store.allocate(1001, kCommand), nullptr);
    EXPECT_EQ(store.allocate(~std::uint64_t{0}, kCommand), nullptr);
    EXPECT_EQ(store.live_count(), 1u);
}

TEST_F(HandleStoreTest, the_ledger_knows_command_size_locks_and_strays) {
    const PF_Handle kept = store.allocate(8, kCommand), stray = store.allocate(9, kCommand);
    store.set_host_owned(kept, true);
    store.lock(stray, kCommand);
    store.lock(stray, kCommand);
    ASSERT_NE(store.info(stray), nullptr);
    EXPECT_EQ(store.info(stray)->locks, 2);
    EXPECT_EQ(store.info(stray)->size, 9u);
    EXPECT_EQ(store.info(stray)->command, kCommand);
    EXPECT_EQ(store.strays(), std::vector<PF_Handle>{stray});
    EXPECT_TRUE(store.is_live(kept));
}

TEST_F(HandleStoreTest, a_second_disposal_is_found) {
    const PF_Handle handle = store.allocate(8, kCommand);
    store.dispose(handle, kCommand);
    store.dispose(handle, kCommand);
    EXPECT_EQ(checks(), Names{"handle.double_dispose"});
    EXPECT_FALSE(store.is_live(handle));
}

TEST_F(HandleStoreTest, use_of_a_dead_or_foreign_handle_is_found) {
    const PF_Handle handle = store.allocate(8, kCommand);
    store.dispose(handle, kCommand);
    EXPECT_EQ(store.lock(handle, kCommand), nullptr);
    store.unlock(nullptr, kCommand);
    void *data = nullptr;
    store.dispose(&data, kCommand);
    EXPECT_EQ(store.size(handle), 0u);
    EXPECT_EQ(store.info(handle), nullptr);
    EXPECT_EQ(checks(), (Names{"handle.dead", "handle.dead", "handle.dead"}));
}

TEST_F(HandleStoreTest, writing_past_the_end_is_found_at_the_check) {
    const PF_Handle handle = store.allocate(10, kCommand);
    static_cast<unsigned char *>(*handle)[10] = 1;
    store.check_guards(kCommand);
    EXPECT_EQ(checks(), Names{"handle.guard"});
}

TEST_F(HandleStoreTest, writing_before_the_start_is_found_at_disposal) {
    const PF_Handle handle = store.allocate(10, kCommand);
    static_cast<unsigned char *>(*handle)[-1] = 1;
    store.dispose(handle, kCommand);
    EXPECT_EQ(checks(), Names{"handle.guard"});
}

TEST_F(HandleStoreTest, disposed_memory_is_poisoned_and_a_write_to_it_is_found_once) {
    const PF_Handle handle = store.allocate(16, kCommand);
    auto *bytes = static_cast<unsigned char *>(store.lock(handle, kCommand));
    std::memset(bytes, 5, 16);
    store.unlock(handle, kCommand);
    store.dispose(handle, kCommand);
    EXPECT_EQ(bytes[7], 0xDD);
    bytes[7] = 5;
    store.check_guards(kCommand);
    store.check_guards(kCommand);
    EXPECT_EQ(checks(), Names{"handle.use_after_free"});
}

TEST_F(HandleStoreTest, unlocking_too_often_is_found) {
    const PF_Handle handle = store.allocate(8, kCommand);
    store.lock(handle, kCommand);
    store.unlock(handle, kCommand);
    store.unlock(handle, kCommand);
    EXPECT_EQ(checks(), Names{"handle.unlock_balance"});
    EXPECT_EQ(store.info(handle)->locks, 0);
}

TEST_F(HandleStoreTest, disposing_of_a_locked_handle_is_found_unless_the_host_keeps_it) {
    const PF_Handle own = store.allocate(8, kCommand), kept = store.allocate(8, kCommand);
    store.set_host_owned(kept, true);
    store.lock(own, kCommand);
    store.lock(kept, kCommand);
    store.dispose(own, kCommand);
    store.dispose(kept, kCommand);
    EXPECT_EQ(checks(), Names{"handle.locked_dispose"});
}

TEST_F(HandleStoreTest, resize_keeps_handle_and_contents) {
    PF_Handle handle = store.allocate(4, kCommand);
    std::memcpy(*handle, "abcd", 4);
    const PF_Handle before = handle;
    ASSERT_TRUE(store.resize(1000, &handle, kCommand));
    EXPECT_EQ(handle, before);
    EXPECT_EQ(store.size(handle), 1000u);
    EXPECT_EQ(std::memcmp(*handle, "abcd", 4), 0);
    ASSERT_TRUE(store.resize(2, &handle, kCommand));
    EXPECT_EQ(std::memcmp(*handle, "ab", 2), 0);
    store.dispose(handle, kCommand);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(HandleStoreTest, a_refused_resize_changes_nothing) {
    PF_Handle handle = store.allocate(4, kCommand);
    void *data = *handle;
    store.size_limit = 100;
    EXPECT_FALSE(store.resize(101, &handle, kCommand));
    EXPECT_EQ(*handle, data);
    EXPECT_EQ(store.size(handle), 4u);
    EXPECT_EQ(checks(), Names{});
    EXPECT_FALSE(store.resize(8, nullptr, kCommand));
    EXPECT_EQ(checks(), Names{"handle.dead"});
}

TEST_F(HandleStoreTest, thousands_of_disposed_handles_do_not_pile_up_as_findings) {
    for (int i = 0; i < 10000; ++i) store.dispose(store.allocate(4096, kCommand), kCommand);
    store.check_guards(kCommand);
    EXPECT_EQ(checks(), Names{});
    EXPECT_EQ(store.live_count(), 0u);
}

}  // namespace
}  // namespace stage
