#include <cstring>

#include "entry/identity.h"
#include "model/string_table.h"
#include "plugin/entry/entry_fixture.h"

namespace {

class GlobalCommands : public EntryTest {};

TEST_F(GlobalCommands, about_reads_name_version_two_returns_description) {
    EXPECT_EQ(send(PF_Cmd_ABOUT), 0);
    const std::string text = host.out.return_msg;
    const std::string head =
        "Kestrel Scopes v2.0.3.1\r\rScopes and monitoring for grading and compositing.\n\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_EQ(text, "Kestrel Scopes v2.0.3.1\r\r" + std::string(ks::string_at(2)));
    EXPECT_LE(text.size(), 255u);
    EXPECT_EQ(host.out.out_flags, 0) << "an About text is no error";
}

TEST_F(GlobalCommands, about_formats_with_the_hosts_sprintf_build_first) {
    send(PF_Cmd_ABOUT);
    EXPECT_EQ(host.calls.log, (Log{"sprintf .%d", "sprintf %s v%d.%d.%d%s\r\r%s"}));
}

TEST_F(GlobalCommands, setup_reports_version_and_capabilities) {
    EXPECT_EQ(send(PF_Cmd_GLOBAL_SETUP), 0);
    EXPECT_EQ(host.out.my_version, 0x00101E01u);
    EXPECT_EQ(host.out.out_flags, 0x06008010);
    EXPECT_EQ(host.out.out_flags2, 0x00001408);
    EXPECT_EQ(host.out.global_data, nullptr);
    EXPECT_TRUE(host.calls.log.empty()) << "set-up asks the host for nothing";
}

TEST_F(GlobalCommands, setup_writes_version_13_0_into_the_hosts_input_record) {
    host.in.version = {7, 7};
    send(PF_Cmd_GLOBAL_SETUP);
    EXPECT_EQ(host.in.version.major, 13);
    EXPECT_EQ(host.in.version.minor, 0);
}

TEST_F(GlobalCommands, setup_changes_nothing_else_of_the_input_record) {
    PF_InData before;
    std::memcpy(&before, &host.in, sizeof before);
    send(PF_Cmd_GLOBAL_SETUP);
    before.version = host.in.version;
    EXPECT_EQ(std::memcmp(&before, &host.in, sizeof before), 0);
}

TEST_F(GlobalCommands, setdown_without_global_data_needs_no_suite) {
    EXPECT_EQ(send(PF_Cmd_GLOBAL_SETDOWN), 0);
    EXPECT_TRUE(host.calls.log.empty());
}

TEST_F(GlobalCommands, setdown_disposes_of_global_data) {
    host.in.global_data = host.make_handle("x", 1);
    EXPECT_EQ(send(PF_Cmd_GLOBAL_SETDOWN), 0);
    EXPECT_EQ(host.calls.log,
              (Log{"acquire PF Handle Suite 2", "dispose", "release PF Handle Suite 2"}));
    EXPECT_EQ(host.calls.live_blocks(), 0);
}

TEST_F(GlobalCommands, setdown_without_the_handle_suite_is_516) {
    host.in.global_data = host.make_handle("x", 1);
    host.refused.insert(kPFHandleSuite);
    EXPECT_EQ(send(PF_Cmd_GLOBAL_SETDOWN), 516);
}

TEST_F(GlobalCommands, setdown_without_basic_suite_is_516) {
    host.in.pica_basicP = nullptr;
    EXPECT_EQ(send(PF_Cmd_GLOBAL_SETDOWN), 516);
}

TEST(Identity, permanent_names) {
    EXPECT_STREQ(KS_MATCH_NAME, "KS_KestrelMonitor");
    EXPECT_STREQ(KS_DISPLAY_NAME, "Kestrel Scopes 2");
    EXPECT_STREQ(KS_CATEGORY, "Brindlemoor Studio");
    EXPECT_STREQ(KS_ENTRY_POINT, "EntryPointFunc");
}

}  // namespace
