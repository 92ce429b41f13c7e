// Whole scope panels against golden pictures, made with tests/whole/golden/make-goldens.
//
// Strict: traces, bars, lines, markers, legend chips. Loose: text, which depends on the fonts of
// the machine; there the picture only has to hold about as much ink. On failure the expected and
// the actual panel and their amplified difference stand in <build folder>/image-diff.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <ostream>

#include "stage/image/charts/charts.h"
#include "stage/image/codecs/picture_io.h"
#include "support/image_diff.h"
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

struct Golden {
    const char *name;  // of the picture file
    const char *chart;
    int kind;
    stage::Depth depth = stage::Depth::U8;
    int channels = 1;  // the scope's choice of channels
    int vectorscope_layout = 1;
    int calibrate = 1;
    int guides = 1;
    double max_waveform = 100.0;
    bool high_quality = true;
};

void PrintTo(const Golden &golden, std::ostream *out) {
    *out << golden.name;
}

constexpr Golden kGoldens[] = {
    {.name = "waveform-rgb-luma", .chart = "test-card", .kind = kWaveform},
    {.name = "waveform-luma-guides",
     .chart = "ramps",
     .kind = kWaveform,
     .channels = 3,
     .guides = 3},
    {.name = "waveform-float-200",
     .chart = "over-range",
     .kind = kWaveform,
     .depth = stage::Depth::Float,
     .max_waveform = 200.0},
    {.name = "waveform-draft", .chart = "test-card", .kind = kWaveform, .high_quality = false},
    {.name = "vectorscope-bars75",
     .chart = "bars75",
     .kind = kVectorscope,
     .depth = stage::Depth::U16,
     .calibrate = 2},
    {.name = "vectorscope-hue-vectors",
     .chart = "test-card",
     .kind = kVectorscope,
     .vectorscope_layout = 2},
    {.name = "parade-rgb", .chart = "test-card", .kind = kParade},
    {.name = "parade-ycbcr", .chart = "test-card", .kind = kParade, .channels = 2},
    {.name = "slice", .chart = "test-card", .kind = kSlice},
    {.name = "histogram-rgb", .chart = "test-card", .kind = kHistogram},
    {.name = "histogram-luma", .chart = "ramps", .kind = kHistogram, .channels = 2},
};

ScopeFrame scope_of(const Golden &golden) {
    ScopeFrame scope;
    scope.frame.depth = golden.depth;
    scope.frame.input = to_image(stage::draw_chart(golden.chart, 320, 180), golden.depth);
    scope.frame.high_quality = golden.high_quality;
    oracle::FrameSettings &settings = scope.frame.settings;
    settings.layout = 7;
    settings.show = {};
    settings.show[static_cast<std::size_t>(golden.kind)] = true;
    settings.size = {0, 240, 220, 240, 240, 80};
    settings.channels = golden.kind == kParade ? golden.channels : 1;
    scope.scopes.quality = 3;
    scope.scopes.waveform_channels = golden.channels;
    scope.scopes.slice_channels = golden.channels;
    scope.scopes.histogram_channels = golden.channels;
    scope.scopes.calibrate = golden.calibrate;
    scope.scopes.max_waveform = golden.max_waveform;
    scope.vectorscope_layout = golden.vectorscope_layout;
    scope.waveform_guides = golden.guides;
    return scope;
}

std::filesystem::path picture_file(const Golden &golden) {
    return std::filesystem::path(paths::source()) / "tests" / "whole" / "golden" / "pictures" /
           (std::string(golden.name) + ".png");
}

// The panel in 8-bit codes, whatever depth it was drawn at: it went through an 8-bit raster.
Image panel_of(const ScopeFrame &scope, int kind) {
    const Image panel = rendered_panels(scope)[static_cast<std::size_t>(kind)];
    return to_image(to_picture(panel), stage::Depth::U8);
}

// Where text stands: the label band but for its legend chips, the column of scale labels, and the
// right end of a guide line.
class TextAreas {
  public:
    TextAreas(const ScopeFrame &scope, const Golden &golden, const Image &panel)
        : units_(oracle::layout_units(trace_settings(scope))),
          waveform_(golden.kind == kWaveform || golden.kind == kParade || golden.kind == kSlice),
          guides_(golden.guides != 1),
          width_(panel.width) {}

    bool contains(int x, int y) const {
        constexpr int kLegend = 6 + 4 * 6 + 1;  // chips of 6 pixels, 6 from the edge, their outline
        constexpr int kLineStart = 4;           // before the trace area
        constexpr int kGuideLabel = 52;
        if (y < units_.label_band) return x < width_ - kLegend;
        if (waveform_ && x < units_.left_margin - kLineStart) return true;
        return guides_ && x >= width_ - units_.right_margin - kGuideLabel;
    }

  private:
    oracle::LayoutUnits units_;
    bool waveform_;
    bool guides_;
    int width_;
};

struct Compared {
    Image strict;  // the actual panel with the golden one's text
    double ink_expected = 0.0, ink_actual = 0.0;
};

double ink(const oracle::Stored &pixel) {
    return pixel[1] + pixel[2] + pixel[3];
}

Compared without_text(const Image &expected, const Image &actual, const TextAreas &text) {
    Compared compared{actual};
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            if (!text.contains(x, y)) continue;
            const oracle::Stored golden = oracle::stored_pixel(expected, x, y);
            compared.ink_expected += ink(golden);
            compared.ink_actual += ink(oracle::stored_pixel(actual, x, y));
            oracle::store_pixel(compared.strict, x, y, golden);
        }
    }
    return compared;
}

class Goldens : public testing::TestWithParam<Golden> {};

TEST_P(Goldens, panel_is_as_it_was_looked_at) {
    const ScopeFrame scope = scope_of(GetParam());
    const Image actual = panel_of(scope, GetParam().kind);
    if (std::getenv("KS_WRITE_GOLDENS") != nullptr) {
        stage::write_picture(picture_file(GetParam()), to_picture(actual), stage::Depth::U8);
    }
    ASSERT_TRUE(std::filesystem::exists(picture_file(GetParam())))
        << picture_file(GetParam()) << ": make it with tests/whole/golden/make-goldens";
    const Image expected =
        to_image(stage::read_picture(picture_file(GetParam())), stage::Depth::U8);
    ASSERT_EQ(actual.width, expected.width);
    ASSERT_EQ(actual.height, expected.height);
    const TextAreas text(scope, GetParam(), actual);
    const Compared compared = without_text(expected, actual, text);
    EXPECT_TRUE(test_support::images_near(std::string("golden-") + GetParam().name, expected,
                                          compared.strict,
                                          {2,
                                           "another release of the drawing library may round "
                                           "the coverage of an anti-aliased line otherwise"}));
    // A font may be heavier or lighter; missing text, or boxes for letters, is another matter.
    EXPECT_GT(compared.ink_actual, 0.7 * compared.ink_expected);
    EXPECT_LT(compared.ink_actual, 1.4 * compared.ink_expected);
}

std::string golden_label(const testing::TestParamInfo<Golden> &tested) {
    std::string name = tested.param.name;
    for (char &c : name) c = c == '-' ? '_' : c;
    return name;
}

INSTANTIATE_TEST_SUITE_P(Scopes, Goldens, testing::ValuesIn(kGoldens), golden_label);

}  // namespace
}  // namespace ks::flow
