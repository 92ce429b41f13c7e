// The Windows product under Wine against the native build: the same frame, byte for byte.
#include <gtest/gtest.h>

#include <filesystem>

#include "stage/cli/cli_run.h"

namespace {

const std::filesystem::path kWindowsFolder =
    std::filesystem::path(KS_SOURCE_DIR) / "build" / "win64-release";

class Parity : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(kWindowsFolder / "kestrel-stage.exe") ||
            !std::filesystem::exists(kWindowsFolder / "KestrelScopes.aex")) {
            GTEST_SKIP() << "the Windows build is not there";
        }
    }

    cli::Outcome windows(const std::vector<std::string> &arguments) const {
        std::vector<std::string> words{"env", "KS_WINE_DIR=" + kWindowsFolder.string(),
                                       std::string(KS_SOURCE_DIR) + "/cmake/run-under-wine",
                                       (kWindowsFolder / "kestrel-stage.exe").string()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return cli::run(words);
    }

    /// Renders with both and compares the files.
    void expect_same(const std::string &extension, std::vector<std::string> arguments) {
        std::vector<std::string> foreign = arguments;
        arguments.insert(arguments.end(), {"-o", scratch_.file("linux." + extension)});
        foreign.insert(foreign.end(), {"-o", scratch_.file("windows." + extension)});
        const cli::Outcome here = cli::stage(arguments);
        ASSERT_EQ(here.status, 0) << here.err;
        const cli::Outcome there = windows(foreign);
        ASSERT_EQ(there.status, 0) << there.err;
        const std::string a = cli::read_text(scratch_.file("linux." + extension));
        const std::string b = cli::read_text(scratch_.file("windows." + extension));
        ASSERT_EQ(a.size(), b.size());
        EXPECT_TRUE(a == b) << "first difference at byte "
                            << std::mismatch(a.begin(), a.end(), b.begin()).first - a.begin();
    }

    cli::Scratch scratch_;
};

// Views without a curve are our arithmetic alone, float included.
TEST_F(Parity, single_layout_at_each_depth) {
    for (const char *depth : {"8", "16"}) {
        expect_same("pam", {"render", "--chart", "test-card", "--size", "480x270", "--depth", depth,
                            "--set", "Monitor Layout=Single", "--set", "Monitor Gain=1.37"});
    }
    expect_same("pfm", {"render", "--chart", "over-range", "--size", "480x270", "--depth", "32",
                        "--set", "Monitor Layout=Single", "--set", "Monitor Gain=1.37"});
}

TEST_F(Parity, all_views_of_the_classic_layout) {
    for (const char *channels : {"R,G,B", "Y,Cb,Cr"}) {
        expect_same("pam", {"render", "--chart", "test-card", "--size", "480x270", "--depth", "8",
                            "--set", std::string("View Channels=") + channels, "--set",
                            "Primary Monitor View=Luminance"});
    }
}

TEST_F(Parity, windowed_at_reduced_resolution) {
    expect_same("pam", {"render", "--chart", "bars75", "--size", "960x540", "--depth", "16",
                        "--downsample", "2x3", "--par", "10/11", "--set", "Monitor Layout=Windowed",
                        "--set", "Monitor Position=31,57", "--set", "Show Slice Waveform=on"});
}

// The gamma tables come from pow(), whose last bit the two C libraries may round differently: at
// 8 bit that never moves a code of these values.
TEST_F(Parity, gamma_at_8_bit) {
    expect_same("pam", {"render", "--chart", "ramps", "--size", "512x270", "--depth", "8", "--set",
                        "Monitor Layout=Single", "--set", "Monitor Gamma=2.2"});
}

TEST_F(Parity, the_same_parameters_are_listed) {
    const cli::Outcome here = cli::stage({"params", "--json"});
    cli::Outcome there = windows({"params", "--json"});
    std::erase(there.out, '\r');
    EXPECT_EQ(here.status, 0);
    EXPECT_EQ(here.out, there.out);
}

TEST_F(Parity, the_same_refusal) {
    cli::Outcome there = windows({"render", "--chart", "none", "-o", scratch_.file("x.png")});
    std::erase(there.err, '\r');
    EXPECT_EQ(there.status, 1);
    EXPECT_EQ(there.err,
              cli::stage({"render", "--chart", "none", "-o", scratch_.file("x.png")}).err);
}

TEST_F(Parity, the_windows_plugin_can_be_inspected_from_here) {
    const cli::Outcome here =
        cli::stage({"inspect", (kWindowsFolder / "KestrelScopes.aex").string()});
    EXPECT_EQ(here.status, 0) << here.out << here.err;
    EXPECT_NE(here.out.find("KS_KestrelMonitor"), std::string::npos);
}

}  // namespace
