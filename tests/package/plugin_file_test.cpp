// The plug-in files as they are shipped, read back from the build.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

#include "oracle/record_oracle.h"
#include "stage/binary/gdiplus_runtime.h"
#include "stage/binary/inspect.h"
#include "stage/binary/loaded_library.h"
#include "support/paths.h"

namespace {

using stage::PluginReport;
using testing::ElementsAre;
using testing::IsEmpty;

#ifdef _WIN32
const std::string kWindowsPlugin = paths::plugin();
#else
const std::string kWindowsPlugin = paths::source() + "/build/win64-release/KestrelScopes.aex";
#endif

std::string lower_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// The Windows library: this build's own, or natively that of the Windows build, when there is one.
class WindowsPlugin : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(kWindowsPlugin)) {
            GTEST_SKIP() << kWindowsPlugin << " is not built";
        }
        report = stage::inspect_plugin(kWindowsPlugin);
    }

    PluginReport report;
};

TEST_F(WindowsPlugin, is_a_64_bit_library) {
    EXPECT_EQ(report.kind, "Windows library (PE32+)");
    EXPECT_EQ(report.machine, "x86-64");
}

TEST_F(WindowsPlugin, exports_the_entry_point_and_nothing_else) {
    EXPECT_THAT(report.exports, ElementsAre("EntryPointFunc"));
}

TEST_F(WindowsPlugin, imports_system_libraries_only) {
    for (const stage::PeImport &import : report.imports) {
        const std::string dll = lower_case(import.dll);
        const bool system = dll == "kernel32.dll" || dll == "msvcrt.dll" || dll == "ucrtbase.dll" ||
                            dll == "gdiplus.dll" || dll.starts_with("api-ms-win-crt-");
        EXPECT_TRUE(system) << import.dll;
    }
}

TEST_F(WindowsPlugin, property_list_is_the_expected_310_bytes) {
    ASSERT_EQ(report.pipl_bytes.size(), 310u);
    EXPECT_THAT(report.pipl_bytes, testing::ElementsAreArray(ks::oracle::property_list()));
}

TEST_F(WindowsPlugin, properties_start_at_the_known_offsets) {
    static constexpr std::array<std::uint64_t, 12> kOffsets = {10,  30,  66,  102, 134, 154,
                                                               174, 194, 214, 234, 254, 290};
    ASSERT_TRUE(report.pipl);
    std::vector<std::uint64_t> offsets;
    for (const auto &property : report.pipl->properties) offsets.push_back(property.offset);
    EXPECT_THAT(offsets, testing::ElementsAreArray(kOffsets));
}

// The host's look-up folds names to capitals before it compares.
TEST_F(WindowsPlugin, property_list_is_stored_under_its_type_in_capitals) {
    const stage::PeFile file = stage::read_pe(stage::read_whole_file(kWindowsPlugin));
    const auto *const resource = file.find_resource("PIPL", 16000, 1033);
    ASSERT_NE(resource, nullptr);
    EXPECT_EQ(resource->stored_type, "PIPL");
}

TEST_F(WindowsPlugin, property_list_passes_the_host_checks) {
    EXPECT_THAT(report.pipl_findings, IsEmpty());
}

TEST_F(WindowsPlugin, property_list_says_what_the_effect_is) {
    ASSERT_TRUE(report.pipl);
    EXPECT_EQ(report.pipl->name, "Kestrel Scopes 2");
    EXPECT_EQ(report.pipl->category, "Brindlemoor Studio");
    EXPECT_EQ(report.pipl->match_name, "KS_KestrelMonitor");
    EXPECT_EQ(report.pipl->entry_point, "EntryPointFunc");
    EXPECT_EQ(report.pipl->effect_version, 0x00101E01u);
    EXPECT_EQ(report.pipl->out_flags, 0x06008010u);
    EXPECT_EQ(report.pipl->out_flags2, 0x00001408u);
    EXPECT_EQ(report.pipl->spec_version, (stage::PiplVersion{13, 14}));
}

TEST_F(WindowsPlugin, carries_a_version_resource) {
    ASSERT_TRUE(report.version);
    EXPECT_THAT(report.version->file_version, ElementsAre(2, 0, 3, 1));
    EXPECT_THAT(report.version->product_version, ElementsAre(2, 0, 3, 1));
    EXPECT_EQ(report.version->text("ProductName"), "Kestrel Scopes 2");
    EXPECT_EQ(report.version->text("CompanyName"), "Brindlemoor Studio");
    EXPECT_EQ(report.version->text("FileVersion"), "2.0.3.1");
    EXPECT_EQ(report.version->text("ProductVersion"), "2.0.3.1");
}

TEST(LoadedPlugin, offers_its_entry_point) {
    // A host has GDI+ loaded, and keeps it, before any plug-in that draws with it.
    const stage::GdiplusRuntime gdiplus;
    const stage::LoadedLibrary library(paths::plugin());
    EXPECT_NE(library.find_symbol("EntryPointFunc"), nullptr);
}

#ifndef _WIN32

TEST(NativePlugin, exports_the_entry_point_and_nothing_else) {
    EXPECT_THAT(stage::inspect_plugin(paths::plugin()).exports, ElementsAre("EntryPointFunc"));
}

TEST(NativePlugin, needs_the_run_time_of_the_language_only) {
    const std::vector<std::string> allowed = {
        "libc.so",    "libm.so",     "libstdc++.so", "libgcc_s.so", "ld-linux", "libgdiplus.so",
#ifdef KS_SANITIZED
        "libasan.so", "libubsan.so", "libtsan.so",
#endif
    };
    for (const stage::PeImport &import : stage::inspect_plugin(paths::plugin()).imports) {
        EXPECT_TRUE(std::any_of(allowed.begin(), allowed.end(), [&](const std::string &library) {
            return import.dll.starts_with(library);
        })) << import.dll;
    }
}

#endif

}  // namespace
