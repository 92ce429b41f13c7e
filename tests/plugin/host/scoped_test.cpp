#include "host/scoped.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/fake_host.h"
#include "support/fake_project.h"

namespace {

using Log = std::vector<std::string>;

TEST(ParamCheckout, asks_for_the_commands_time_untouched_and_checks_in_once) {
    fake::FakeHost host;
    {
        ks::ParamCheckout checkout(&host.in, 28);
        EXPECT_EQ(checkout.error(), 0);
        EXPECT_EQ(checkout.def().u.sd.value, 1028);
        EXPECT_EQ(checkout.close(), 0);
        EXPECT_EQ(checkout.close(), 0);
    }
    EXPECT_EQ(host.calls.log, (Log{"checkout_param 28 at -7/0/600", "checkin_param"}));
}

TEST(ParamCheckout, destructor_checks_in_what_is_still_open) {
    fake::FakeHost host;
    { ks::ParamCheckout checkout(&host.in, 2); }
    EXPECT_EQ(host.calls.log.back(), "checkin_param");
}

TEST(ParamCheckout, failed_check_out_is_not_checked_in) {
    fake::FakeHost host;
    host.calls.fail_at = 1;
    {
        ks::ParamCheckout checkout(&host.in, 2);
        EXPECT_EQ(checkout.error(), 77);
        EXPECT_EQ(checkout.def().u.sd.value, 0);
        EXPECT_EQ(checkout.close(), 0);
    }
    EXPECT_EQ(host.calls.log.size(), 1u);
}

TEST(ParamCheckout, close_returns_the_error_of_the_check_in) {
    fake::FakeHost host;
    host.calls.fails["checkin_param"] = 9;
    ks::ParamCheckout checkout(&host.in, 2);
    EXPECT_EQ(checkout.close(), 9);
    EXPECT_EQ(checkout.close(), 0);
}

TEST(LockedHandle, locks_and_unlocks_in_pairs) {
    fake::FakeHost host;
    const int value = 42;
    PF_Handle handle = host.make_handle(&value, sizeof value);
    {
        ks::LockedHandle<int> locked(host.handles, handle);
        ASSERT_NE(locked.get(), nullptr);
        EXPECT_EQ(*locked.get(), 42);
        EXPECT_EQ(host.calls.open_locks(), 1);
    }
    EXPECT_EQ(host.calls.open_locks(), 0);
    EXPECT_TRUE(host.calls.misuse.empty());
}

TEST(LockedHandle, refused_lock_is_not_unlocked) {
    fake::FakeHost host;
    const int value = 42;
    PF_Handle handle = host.make_handle(&value, sizeof value);
    host.refuse_locks = true;
    {
        ks::LockedHandle<int> locked(host.handles, handle);
        EXPECT_EQ(locked.get(), nullptr);
    }
    EXPECT_EQ(host.calls.log, Log{"lock"});
}

TEST(LockedHandle, null_handle_makes_no_call) {
    fake::FakeHost host;
    {
        ks::LockedHandle<int> locked(host.handles, nullptr);
        EXPECT_EQ(locked.get(), nullptr);
    }
    EXPECT_TRUE(host.calls.log.empty());
}

TEST(OwnedHandle, disposes_unless_released) {
    fake::FakeHost host;
    { ks::OwnedHandle dropped(host.handles, 16); }
    EXPECT_EQ(host.calls.live_blocks(), 0);
    PF_Handle kept = nullptr;
    {
        ks::OwnedHandle owned(host.handles, 16);
        kept = owned.release();
    }
    EXPECT_EQ(host.bytes(kept).size(), 16u);
    EXPECT_EQ(host.calls.live_blocks(), 1);
}

TEST(OwnedHandle, refused_memory_reads_as_null_and_is_not_disposed_of) {
    fake::FakeHost host;
    host.refuse_memory = true;
    { EXPECT_EQ(ks::OwnedHandle(host.handles, 16).get(), nullptr); }
    EXPECT_EQ(host.calls.log, Log{"new_handle 16"});
}

TEST(OwnedMemHandle, frees_once_and_only_what_it_received) {
    fake::FakeHost host;
    fake::FakeProject project(host);
    const void *table = nullptr;
    host.basic.AcquireSuite(kAEGPMemorySuite, kAEGPMemorySuiteVersion1, &table);
    auto &memory = *static_cast<AEGP_MemorySuite1 *>(const_cast<void *>(table));
    host.calls.log.clear();
    {
        ks::OwnedMemHandle empty(memory);
        EXPECT_EQ(empty.close(), 0);
    }
    EXPECT_TRUE(host.calls.log.empty());
    {
        ks::OwnedMemHandle name(memory);
        *name.receive() = reinterpret_cast<AEGP_MemHandle>(host.calls.new_block(4));
        host.calls.fails["FreeMemHandle"] = 3;
        EXPECT_EQ(name.close(), 3);
    }
    EXPECT_EQ(host.calls.log, Log{"FreeMemHandle"});
    EXPECT_EQ(host.calls.live_blocks(), 0);
}

}  // namespace
