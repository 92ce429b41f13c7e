// The Windows product under Wine against the native build: the same frame, byte for byte, but for
// what each system's GDI+ draws.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "apps/verbs/cli_run.h"
#include "stage/image/codecs/picture_io.h"
#include "support/paths.h"

namespace {

// KS_WINDOWS_BUILD names another folder of a Windows build than the preset's.
std::filesystem::path windows_folder() {
    const char *const named = std::getenv("KS_WINDOWS_BUILD");
    return named != nullptr ? std::filesystem::path(named)
                            : std::filesystem::path(paths::source()) / "build" / "win64-release";
}

const std::filesystem::path kWindowsFolder = windows_folder();

class Parity : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(kWindowsFolder / "kestrel-stage.exe") ||
            !std::filesystem::exists(kWindowsFolder / "KestrelScopes.aex")) {
            GTEST_SKIP() << "the Windows build is not there";
        }
        // `./dev test` builds the native plug-in first.
        if (std::filesystem::last_write_time(kWindowsFolder / "KestrelScopes.aex") <
            std::filesystem::last_write_time(paths::plugin())) {
            GTEST_SKIP() << "the Windows build is older than this one";
        }
    }

    cli::Outcome windows(const std::vector<std::string> &arguments) const {
        std::vector<std::string> words{"env", "KS_WINE_DIR=" + kWindowsFolder.string(),
                                       paths::source() + "/cmake/run-under-wine",
                                       (kWindowsFolder / "kestrel-stage.exe").string()};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return cli::run(words);
    }

    /// The arguments, with the scopes of a new instance switched off.
    static std::vector<std::string> without_scopes(std::vector<std::string> arguments) {
        for (const char *name : {"Waveform Monitor", "Vectorscope", "Channel Parade"}) {
            arguments.insert(arguments.end(), {"--set", std::string("Show ") + name + "=off"});
        }
        return arguments;
    }

    /// Renders with both, without scopes, and compares the files.
    void expect_same(const std::string &extension, std::vector<std::string> arguments) {
        arguments = without_scopes(std::move(arguments));
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
                        "--set", "Monitor Position=31,57", "--set", "Show Slice Waveform=on",
                        "--set", "Slice Waveform/Scope Position=960,540"});
}

// The gamma tables come from pow(), whose last bit the two C libraries may round differently: at
// 8 bit that never moves a code of these values.
TEST_F(Parity, gamma_at_8_bit) {
    expect_same("pam", {"render", "--chart", "ramps", "--size", "512x270", "--depth", "8", "--set",
                        "Monitor Layout=Single", "--set", "Monitor Gamma=2.2"});
}

/// One picture from each build.
struct Pair {
    ::stage::Picture native, windows;
};

class ScopeParity : public Parity, public testing::WithParamInterface<const char *> {
  protected:
    Pair render(const std::string &chart, const std::vector<std::string> &settings) {
        const std::string extension = std::string(GetParam()) == "32" ? "pfm" : "pam";
        std::vector<std::string> words{"render",
                                       "--chart",
                                       chart,
                                       "--size",
                                       "640x400",
                                       "--depth",
                                       GetParam(),
                                       "--set",
                                       "Monitor Layout=Off (Scopes Only)",
                                       "--set",
                                       "Waveform Scopes Aspect Ratio=16:9",
                                       "--set",
                                       "Sampling Quality=High (Slow)"};
        for (const std::string &setting : settings) words.insert(words.end(), {"--set", setting});
        std::vector<std::string> foreign = words;
        words.insert(words.end(), {"-o", scratch_.file("linux." + extension)});
        foreign.insert(foreign.end(), {"-o", scratch_.file("windows." + extension)});
        const cli::Outcome here = cli::stage(words);
        EXPECT_EQ(here.status, 0) << here.err;
        const cli::Outcome there = windows(foreign);
        EXPECT_EQ(there.status, 0) << there.err;
        return {::stage::read_picture(scratch_.file("linux." + extension)),
                ::stage::read_picture(scratch_.file("windows." + extension))};
    }

    static bool black(const ::stage::Picture &picture, int x, int y) {
        if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return false;
        const float *pixel = picture.at(x, y);
        return pixel[1] == 0.0f && pixel[2] == 0.0f && pixel[3] == 0.0f;
    }

    /// Nothing is drawn here or next to it by either build.
    static bool untouched(const Pair &empty, int x, int y) {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                if (!black(empty.native, x + dx, y + dy)) return false;
                if (!black(empty.windows, x + dx, y + dy)) return false;
            }
        }
        return true;
    }

    /// `shown` with traces, `empty` with graticules only. At least `traced` pixels of the traces
    /// lie where nothing is drawn.
    static void expect_same_traces(const Pair &shown, const Pair &empty, int traced) {
        int found = 0, different = 0;
        for (int y = 0; y < shown.native.height; ++y) {
            for (int x = 0; x < shown.native.width; ++x) {
                if (!untouched(empty, x, y)) continue;
                found += !black(shown.native, x, y);
                const float *a = shown.native.at(x, y);
                different += !std::equal(a, a + 4, shown.windows.at(x, y));
            }
        }
        EXPECT_EQ(different, 0);
        EXPECT_GE(found, traced);
    }

    /// Wine's GDI+ does not anti-alias shapes and has another font rasteriser: a line's coverage is
    /// all or nothing, and may lie a pixel beside. Both draw the same things at the same places, so
    /// that the mean of each block of pixels differs little.
    static void expect_like_graticules(const Pair &empty) {
        constexpr int kBlock = 16;
        constexpr double kMostMean = 0.05;  // of full scale, in any block
        double greatest = 0.0, sum = 0.0;
        int blocks = 0;
        for (int y = 0; y + kBlock <= empty.native.height; y += kBlock) {
            for (int x = 0; x + kBlock <= empty.native.width; x += kBlock, ++blocks) {
                const double difference =
                    std::abs(mean(empty.native, x, y, kBlock) - mean(empty.windows, x, y, kBlock));
                greatest = std::max(greatest, difference);
                sum += difference;
            }
        }
        EXPECT_LE(greatest, kMostMean);
        EXPECT_LE(sum / blocks, 0.002);
        EXPECT_GT(ink(empty.native), 1000.0);
    }

  private:
    static double mean(const ::stage::Picture &picture, int left, int top, int size) {
        double sum = 0.0;
        for (int y = top; y < top + size; ++y) {
            for (int x = left; x < left + size; ++x) {
                for (int c = 1; c < 4; ++c) sum += static_cast<double>(picture.at(x, y)[c]);
            }
        }
        return sum / (3.0 * size * size);
    }
    static double ink(const ::stage::Picture &picture) {
        return mean(picture, 0, 0, std::min(picture.width, picture.height)) * picture.width *
               picture.height;
    }
};

// Four panels beside each other; muting leaves their graticules.
TEST_P(ScopeParity, waveforms_and_bars_are_the_same_where_no_graticule_is) {
    std::vector<std::string> settings{"Show Vectorscope=off",
                                      "Show Slice Waveform=on",
                                      "Show Histogram=on",
                                      "Waveform Monitor/Show Channels=RGB + Luma",
                                      "Waveform Monitor/Scope Width=300",
                                      "Waveform Monitor/Scope Position=0,0",
                                      "Channel Parade/Scope Width=320",
                                      "Channel Parade/Scope Position=310,0",
                                      "Slice Waveform/Scope Width=300",
                                      "Slice Waveform/Scope Position=0,200",
                                      "Histogram/Scope Position=310,210"};
    const Pair shown = render("test-card", settings);
    settings.push_back("REN=on");
    const Pair empty = render("test-card", settings);
    expect_same_traces(shown, empty, 3000);
    expect_like_graticules(empty);
}

// A muted vectorscope is not drawn at all; of a grey ramp it shows the centre alone.
TEST_P(ScopeParity, vectorscope_is_the_same_where_no_graticule_is) {
    for (const char *display : {"on", "off"}) {
        const std::vector<std::string> settings{
            "Show Waveform Monitor=off", "Show Channel Parade=off", "Vectorscope/Scope Size=360",
            "Vectorscope/Scope Position=0,0", std::string("Monochrome Display=") + display};
        const Pair empty = render("ramp", settings);
        expect_same_traces(render("test-card", settings), empty, 300);
        expect_like_graticules(empty);
    }
}

INSTANTIATE_TEST_SUITE_P(Depths, ScopeParity, testing::Values("8", "16", "32"),
                         [](const auto &tested) { return "bits" + std::string(tested.param); });

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
