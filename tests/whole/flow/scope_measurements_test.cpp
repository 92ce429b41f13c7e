// What an engineer checks an instrument with: colour bars on their targets, ramps as straight
// lines, grey in the centre, counts that another tool confirms.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "hostapi/pf_suites.h"
#include "hostapi/suite_names.h"
#include "support/image_files.h"
#include "support/paths.h"
#include "whole/support/scope_frame.h"

namespace ks::flow {
namespace {

using oracle::Image;
using oracle::kHistogram;
using oracle::kParade;
using oracle::kSlice;
using oracle::kVectorscope;
using oracle::kWaveform;

struct Pixel {
    int x = 0, y = 0;
};

// Where the trace lies. That of the slice is known where it shows: the panel's pixels that are not
// those of the panel without a trace.
std::vector<Pixel> trace_pixels(const ScopeFrame &scope, int kind) {
    const auto k = static_cast<std::size_t>(kind);
    const bool sampled = kind != kSlice;
    const Image with = sampled ? sampled_traces(scope)[k] : rendered_panels(scope)[k];
    const Image without =
        sampled ? oracle::make_image(with.width, with.height, with.depth) : empty_panels(scope)[k];
    std::vector<Pixel> pixels;
    for (int y = 0; y < with.height; ++y) {
        for (int x = 0; x < with.width; ++x) {
            if (oracle::stored_pixel(with, x, y) != oracle::stored_pixel(without, x, y)) {
                pixels.push_back({x, y});
            }
        }
    }
    return pixels;
}

Image painted(int width, int height, stage::Depth depth, auto &&colour_at) {
    Image image = oracle::make_image(width, height, oracle_depth(depth));
    const double full = oracle::full_scale(image.depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::array<double, 3> rgb = colour_at(x, y);
            oracle::Stored pixel{full, 0, 0, 0};
            for (std::size_t c = 0; c < 3; ++c) {
                pixel[c + 1] = depth == stage::Depth::Float ? static_cast<float>(rgb[c])
                                                            : std::floor(rgb[c] * full + 0.5);
            }
            oracle::store_pixel(image, x, y, pixel);
        }
    }
    return image;
}

ScopeFrame scope_alone(stage::Depth depth, int kind, Image input) {
    ScopeFrame scope;
    scope.frame.depth = depth;
    scope.frame.input = std::move(input);
    scope.frame.settings.layout = 7;
    scope.frame.settings.show = {};
    scope.frame.settings.show[static_cast<std::size_t>(kind)] = true;
    scope.frame.settings.size = {0, 500, 500, 800, 500, 300};
    scope.frame.settings.aspect = 2;
    scope.scopes.quality = 3;
    scope.frame.high_quality = false;
    return scope;
}

class Measurements : public testing::TestWithParam<stage::Depth> {};

// Red, yellow, green, cyan, blue, magenta at 100 %: right and up of the centre, as fractions of the
// box that samples are clipped to.
struct Target {
    double x, y;
};
constexpr Target kTargets601[] = {{-0.102258, 0.4293625},  {-0.303012, 0.069825},
                                  {-0.200754, -0.3595375}, {0.102258, -0.4293625},
                                  {0.303012, -0.069825},   {0.200754, 0.3595375}};
constexpr Target kTargets709[] = {{-0.069435, 0.429369},  {-0.303019, 0.039371},
                                  {-0.233584, -0.389999}, {0.069435, -0.429369},
                                  {0.303019, -0.039371},  {0.233584, 0.389999}};

// Bars of full saturation, white to black.
std::array<double, 3> bar(int x, int width, double level) {
    const int number = 7 - x * 8 / width;  // green, red, blue in bits 2, 1, 0
    return {(number & 2) != 0 ? level : 0.0, (number & 4) != 0 ? level : 0.0,
            (number & 1) != 0 ? level : 0.0};
}

struct BarCase {
    double level;   // of the bars
    int calibrate;  // "Calibrate For"
    double at;      // of the way to the outer targets
};
constexpr BarCase kBarCases[] = {
    {1.0, 1, 1.0}, {0.75, 1, 0.75}, {0.75, 2, 1.0}, {0.5, 3, 1.0}, {0.25, 4, 1.0}};

struct Centre {
    Pixel pixel;
    double width, height;  // of the clip box
};

Centre vectorscope_centre(const ScopeFrame &scope) {
    const oracle::ScopeSettings settings = trace_settings(scope);
    const oracle::ScopeContext context = oracle::set_up_scopes(
        settings, scope.frame.input,
        oracle::panel_extents(oracle::panel_sizes(scope.frame.settings, scope.frame.input.width,
                                                  scope.frame.input.height)));
    return {{context.centre_x, context.centre_y}, context.cb_gain, context.cr_gain};
}

bool within_one(const Pixel &a, double x, double y) {
    return std::abs(a.x - std::trunc(x)) <= 1 && std::abs(a.y - std::trunc(y)) <= 1;
}

void expect_bars_on_targets(stage::Depth depth, int luma, const BarCase &bars) {
    ScopeFrame scope =
        scope_alone(depth, kVectorscope,
                    painted(160, 90, depth, [&](int x, int) { return bar(x, 160, bars.level); }));
    scope.frame.settings.luma_math = luma;
    scope.scopes.calibrate = bars.calibrate;
    const Centre centre = vectorscope_centre(scope);
    const std::vector<Pixel> trace = trace_pixels(scope, kVectorscope);
    const Image empty = empty_panels(scope)[kVectorscope];
    std::vector<Target> places{{0, 0}};  // the white and the black bar
    for (const Target &t : luma == 2 ? kTargets709 : kTargets601) {
        places.push_back({t.x * bars.at, t.y * bars.at});
    }
    const auto x_of = [&](const Target &t) { return centre.pixel.x + t.x * centre.width; };
    const auto y_of = [&](const Target &t) { return centre.pixel.y - t.y * centre.height; };
    for (const Target &t : places) {
        const bool hit = std::any_of(trace.begin(), trace.end(), [&](const Pixel &p) {
            return within_one(p, x_of(t), y_of(t));
        });
        EXPECT_TRUE(hit) << "no trace at " << t.x << ", " << t.y;
        if (t.x == 0.0) continue;
        // The target that is drawn there has its cross here.
        const oracle::Stored cross =
            oracle::stored_pixel(empty, static_cast<int>(x_of(t)), static_cast<int>(y_of(t)));
        EXPECT_GT(cross[1] + cross[2] + cross[3], 0.0) << t.x << ", " << t.y;
    }
    for (const Pixel &p : trace) {
        const bool on_place = std::any_of(places.begin(), places.end(), [&](const Target &t) {
            return within_one(p, x_of(t), y_of(t));
        });
        EXPECT_TRUE(on_place) << "a trace at " << p.x << ", " << p.y;
    }
}

TEST_P(Measurements, colour_bars_land_on_the_vectorscopes_targets) {
    for (const int luma : {1, 2}) {
        for (const BarCase &bars : kBarCases) {
            SCOPED_TRACE("luma math " + std::to_string(luma) + ", bars " +
                         std::to_string(bars.level) + ", calibration " +
                         std::to_string(bars.calibrate));
            expect_bars_on_targets(GetParam(), luma, bars);
        }
    }
}

TEST_P(Measurements, grey_ramp_stays_on_the_vectorscopes_centre_pixel) {
    for (const int luma : {1, 2}) {
        for (const int calibrate : {1, 4}) {
            ScopeFrame scope = scope_alone(GetParam(), kVectorscope,
                                           painted(300, 80, GetParam(), [](int x, int y) {
                                               const double v = (x + y * 0.01) / 300.0;
                                               return std::array<double, 3>{v, v, v};
                                           }));
            scope.frame.settings.luma_math = luma;
            scope.scopes.calibrate = calibrate;
            scope.skin_tone_line = false;  // it starts in the centre
            const Centre centre = vectorscope_centre(scope);
            const std::vector<Pixel> trace = trace_pixels(scope, kVectorscope);
            ASSERT_EQ(trace.size(), 1u);
            EXPECT_EQ(trace[0].x, centre.pixel.x);
            EXPECT_EQ(trace[0].y, centre.pixel.y);
        }
    }
}

// A line in a panel: value 0..1 over `width` columns from `left`.
struct Line {
    double left, width;
    double from, to;       // rows at its ends
    double begin, end;     // the part of the line that column u shows: from u + begin to u + end
    double tolerance = 1;  // pixels
    double share = 1;      // of the columns that must show it
};

// Every trace pixel from the line's first to its last column lies near it.
void expect_line(const std::vector<Pixel> &trace, const Line &line) {
    std::vector<bool> seen(static_cast<std::size_t>(line.width), false);
    for (const Pixel &p : trace) {
        const double u = p.x - line.left;
        if (u < 0 || u >= line.width) continue;
        seen[static_cast<std::size_t>(u)] = true;
        const double slope = (line.to - line.from) / line.width;
        const double one = line.from + slope * (u + line.begin);
        const double other = line.from + slope * (u + line.end);
        const double nearest = std::clamp(p.y + 0.5, std::min(one, other), std::max(one, other));
        EXPECT_LE(std::abs(p.y + 0.5 - nearest), line.tolerance) << "at " << p.x << ", " << p.y;
    }
    const auto columns = std::count(seen.begin(), seen.end(), true);
    EXPECT_GE(static_cast<double>(columns), line.share * std::floor(line.width));
}

// 8-bit codes are up to half a code beside the ramp.
double line_tolerance(stage::Depth depth, double span) {
    return depth == stage::Depth::U8 ? 1.0 + 0.5 * span / 255.0 : 1.0;
}

// 2000 columns, so that every column of a panel gets a sample.
Image grey_ramp(stage::Depth depth) {
    return painted(2000, 80, depth, [](int x, int) {
        const double v = x / 2000.0;
        return std::array<double, 3>{v, v, v};
    });
}

struct Area {
    double left, right, bottom, span;
};

Area trace_area(const ScopeFrame &scope, int kind) {
    const oracle::LayoutUnits units = oracle::layout_units(trace_settings(scope));
    const auto extents = oracle::panel_extents(oracle::panel_sizes(
        scope.frame.settings, scope.frame.input.width, scope.frame.input.height));
    const oracle::PanelExtent panel = extents[static_cast<std::size_t>(kind)];
    return {static_cast<double>(units.left_margin),
            static_cast<double>(panel.width - units.right_margin),
            static_cast<double>(panel.height - units.vertical_margin),
            static_cast<double>(panel.height - 2 * units.vertical_margin - units.label_band)};
}

TEST_P(Measurements, ramp_is_a_straight_line_in_the_waveform_and_the_slice) {
    for (const int kind : {kWaveform, kSlice}) {
        for (const int channels : {2, 3}) {
            ScopeFrame scope = scope_alone(GetParam(), kind, grey_ramp(GetParam()));
            scope.scopes.waveform_channels = scope.scopes.slice_channels = channels;
            const Area area = trace_area(scope, kind);
            SCOPED_TRACE("kind " + std::to_string(kind));
            // The graticule's lines hide the slice where they cross it.
            expect_line(trace_pixels(scope, kind),
                        {area.left, area.right - area.left, area.bottom, area.bottom - area.span,
                         kind == kSlice ? 0.0 : -0.5, kind == kSlice ? 1.0 : 0.5,
                         line_tolerance(GetParam(), area.span), kind == kSlice ? 0.95 : 1.0});
        }
    }
}

TEST_P(Measurements, ramp_is_a_straight_line_in_the_parade_and_grey_differences_are_level) {
    for (const int channels : {1, 2}) {
        ScopeFrame scope = scope_alone(GetParam(), kParade, grey_ramp(GetParam()));
        scope.frame.settings.channels = channels;
        const Area area = trace_area(scope, kParade);
        const double column = std::trunc((area.right - area.left) / 3);
        const std::vector<Pixel> trace = trace_pixels(scope, kParade);
        for (int k = 0; k < 3; ++k) {
            SCOPED_TRACE("column " + std::to_string(k));
            const double left = area.left + k * column;
            if (channels == 2 && k > 0) {
                const double middle = std::trunc(area.bottom - area.span * 0.5) + 0.5;
                expect_line(trace, {left, column, middle, middle, 0.0, 1.0, 0.0});
            } else {
                expect_line(trace, {left, column, area.bottom, area.bottom - area.span, 0.0, 1.0,
                                    line_tolerance(GetParam(), area.span)});
            }
        }
    }
}

// The histogram's counters, from the only handle of 3072 bytes that a frame makes.
class BinsCapture {
  public:
    explicit BinsCapture(Flow &flow) : flow_(flow) {
        bool refused = false;
        host_ = static_cast<const PF_HandleSuite1 *>(
            flow.host().suites.acquire(kPFHandleSuite, kPFHandleSuiteVersion1, &refused));
        flow.host().suites.release(kPFHandleSuite, kPFHandleSuiteVersion1);
        current() = this;
        watched_ = *host_;
        watched_.host_dispose_handle = [](PF_Handle handle) {
            current()->look_at(handle);
            current()->host_->host_dispose_handle(handle);
        };
        flow.host().suites.add(kPFHandleSuite, kPFHandleSuiteVersion1, &watched_);
    }
    ~BinsCapture() {
        flow_.host().suites.add(kPFHandleSuite, kPFHandleSuiteVersion1, host_);
        current() = nullptr;
    }
    BinsCapture(const BinsCapture &) = delete;
    BinsCapture &operator=(const BinsCapture &) = delete;

    std::vector<std::uint32_t> bins;

  private:
    static BinsCapture *&current() {
        static BinsCapture *capture = nullptr;
        return capture;
    }
    void look_at(PF_Handle handle) {
        constexpr std::size_t kBinBytes = 3072;
        if (host_->host_get_handle_size(handle) != kBinBytes) return;
        bins.resize(kBinBytes / sizeof(std::uint32_t));
        std::memcpy(bins.data(), *reinterpret_cast<void **>(handle), kBinBytes);
    }

    Flow &flow_;
    PF_HandleSuite1 watched_{};
    const PF_HandleSuite1 *host_ = nullptr;
};

std::vector<std::uint32_t> counted_bins(stage::Depth depth, const Image &image, int channels,
                                        int luma) {
    Flow flow(at_depth(depth));
    flow.make_scene(image);
    flow.set("Monitor Layout", 7);
    flow.set("Show Histogram", 1);
    flow.set("Histogram/Show Channels", channels);
    flow.set("Luminance Math's", luma);
    flow.set("Sampling Quality", 3);
    BinsCapture capture(flow);
    flow.frame();
    return capture.bins;
}

#if !defined(_WIN32)
// The other tool reads whole numbers.
class WholeNumberMeasurements : public Measurements {};

TEST_P(WholeNumberMeasurements, histogram_counts_what_another_tool_counts) {
    if (std::system("python3 -c '' 2>/dev/null") != 0) GTEST_SKIP() << "there is no python3";
    const Image image = random_image(5, 180, 90, oracle_depth(GetParam()), {true, false, false});
    const std::string stem = "histogram-input" + std::to_string(static_cast<int>(GetParam()));
    const std::string file = test_support::write_picture(stem, image);
    const std::string counts = file + ".counts";
    const std::string command = "python3 '" + paths::source() +
                                "/tests/whole/flow/histogram_counts.py' '" + file + "' >'" +
                                counts + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    std::ifstream stream(counts);
    std::vector<std::uint32_t> expected;
    for (std::uint32_t count = 0; stream >> count;) expected.push_back(count);
    ASSERT_EQ(expected.size(), 768u);
    const std::vector<std::uint32_t> bins = counted_bins(GetParam(), image, 1, 1);
    ASSERT_EQ(bins.size(), 768u);
    for (std::size_t i = 0; i < bins.size(); ++i) EXPECT_EQ(bins[i], expected[i]) << "bin " << i;
}
#endif

TEST_P(Measurements, pure_green_fills_luma_bin_182_at_709_and_149_at_601) {
    const Image green = painted(90, 80, GetParam(), [](int, int) {
        return std::array<double, 3>{0, 1, 0};
    });
    for (const auto &[luma, bin] : {std::pair{2, 182u}, {1, 149u}}) {
        const std::vector<std::uint32_t> bins = counted_bins(GetParam(), green, 2, luma);
        ASSERT_EQ(bins.size(), 768u);
        for (std::size_t i = 0; i < 256; ++i) EXPECT_EQ(bins[i], i == bin ? 7200u : 0u) << i;
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, Measurements, testing::ValuesIn(kDepths), depth_label);
#if !defined(_WIN32)
INSTANTIATE_TEST_SUITE_P(Flow, WholeNumberMeasurements,
                         testing::Values(stage::Depth::U8, stage::Depth::U16), depth_label);
#endif

}  // namespace
}  // namespace ks::flow
