// The traces within whole panels, as they reach the compositor, against the oracle: every pixel
// that no part of the graticule covers.
#include "whole/support/scope_frame.h"

#include <algorithm>

namespace ks::flow {
namespace {

using oracle::Image;
using oracle::kHistogram;
using oracle::kParade;
using oracle::kSlice;
using oracle::kVectorscope;
using oracle::kWaveform;

// How far a colour may be from the oracle's, and in how many of the traces' pixels at all.
struct Allowed {
    int raster_codes = 0;  // of 255
    double share = 0.0;
    const char *reason = "";
};

struct Counted {
    int traced = 0;     // uncovered pixels with a trace in them
    int covered = 0;    // traced pixels beneath the graticule
    int different = 0;  // uncovered pixels that are not the oracle's
    double greatest = 0.0;
    int transparent = 0;  // pixels of the panel that are not opaque
    std::string first;
};

std::string text_of(const oracle::Stored &pixel) {
    return "(" + std::to_string(pixel[0]) + ", " + std::to_string(pixel[1]) + ", " +
           std::to_string(pixel[2]) + ", " + std::to_string(pixel[3]) + ")";
}

void count_pixel(Counted &counted, const Image &expected, const Image &actual, int x, int y,
                 bool free) {
    const oracle::Stored want = oracle::stored_pixel(expected, x, y);
    const oracle::Stored is = oracle::stored_pixel(actual, x, y);
    counted.transparent += is[0] != oracle::full_scale(actual.depth);
    const bool traced = want[1] + want[2] + want[3] > 0.0;
    counted.traced += traced && free;
    counted.covered += traced && !free;
    if (!free || want == is) return;
    ++counted.different;
    for (std::size_t c = 1; c < 4; ++c) {
        const double codes = std::abs(want[c] - is[c]) / oracle::full_scale(actual.depth) * 255.0;
        counted.greatest = std::max(counted.greatest, codes);
    }
    if (counted.first.empty()) {
        counted.first = "(" + std::to_string(x) + ", " + std::to_string(y) + "): expected " +
                        text_of(want) + ", is " + text_of(is);
    }
}

Counted compare(const Image &expected, const Image &actual, const std::vector<bool> &free) {
    Counted counted;
    for (int y = 0; y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            const auto at = static_cast<std::size_t>(y) * actual.width + x;
            count_pixel(counted, expected, actual, x, y, free[at]);
        }
    }
    return counted;
}

void expect_traces(const ScopeFrame &scope, const Allowed &allowed) {
    const oracle::ScopeTraces expected = expected_traces(scope);
    const Panels actual = rendered_panels(scope);
    const Panels empty = empty_panels(scope);
    for (std::size_t kind = 1; kind <= 5; ++kind) {
        if (!scope.frame.settings.show[kind]) continue;
        const Image &panel = actual[kind];
        ASSERT_EQ(panel.width, expected.panels[kind].width) << "kind " << kind;
        ASSERT_EQ(panel.height, expected.panels[kind].height) << "kind " << kind;
        const Counted counted = compare(through_raster(expected.panels[kind]), panel,
                                        uncovered(empty[kind], label_rows(scope)));
        const std::string what = "kind " + std::to_string(kind) + " at " + counted.first + ", " +
                                 describe(scope.frame.settings, scope.frame.depth);
        EXPECT_EQ(counted.transparent, 0) << what;
        // The comparison would say little if the graticule hid nearly all of the trace; values at
        // either end lie on its lines.
        EXPECT_GT(3 * counted.traced, counted.covered) << what;
        EXPECT_GT(counted.traced, 100) << what;
        EXPECT_LE(counted.greatest, allowed.raster_codes + 0.01) << what << allowed.reason;
        EXPECT_LE(counted.different, allowed.share * counted.traced) << what << allowed.reason;
    }
}

// Noise with a smooth ramp beneath it, opaque, some of it over range at float.
Image picture(stage::Depth depth, std::uint32_t seed, int width, int height) {
    const Image noise = random_image(seed, width, height, oracle_depth(depth), {true, true, false});
    Image image = noise;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            oracle::Stored pixel = oracle::stored_pixel(noise, x, y);
            const double full = oracle::full_scale(image.depth);
            for (std::size_t c = 1; c < 4; ++c) {
                const double ramp = full * x / width * (0.5 + 0.15 * static_cast<double>(c));
                const double mixed = ramp * 0.7 + pixel[c] * 0.3;
                pixel[c] =
                    depth == stage::Depth::Float ? static_cast<float>(mixed) : std::floor(mixed);
            }
            oracle::store_pixel(image, x, y, pixel);
        }
    }
    return image;
}

ScopeFrame alone(stage::Depth depth, int kind, std::uint32_t seed) {
    ScopeFrame scope;
    scope.frame.depth = depth;
    scope.frame.input = picture(depth, seed, 160, 120);
    scope.frame.settings.layout = 7;
    scope.frame.settings.show = {};
    scope.frame.settings.show[static_cast<std::size_t>(kind)] = true;
    scope.frame.settings.size = {0, 260, 220, 290, 240, 90};
    scope.scopes.quality = 3;
    scope.scopes.max_waveform = 150;
    return scope;
}

// The raster keeps whole 255ths: where the exact sum lies within the pass's own tolerance of one,
// the byte may be the next.
Allowed allowed_at(stage::Depth depth) {
    if (depth == stage::Depth::U8) return {};
    return {1, 0.01, " (a sum at the edge of a raster code may fall on either side)"};
}

class PanelTraces : public testing::TestWithParam<stage::Depth> {};

TEST_P(PanelTraces, waveform_in_every_mode_and_both_render_qualities) {
    std::uint32_t seed = 1;
    for (const int channels : {1, 2, 3}) {
        for (const bool high : {false, true}) {
            ScopeFrame scope = alone(GetParam(), kWaveform, ++seed);
            scope.frame.high_quality = high;
            scope.frame.settings.luma_math = 1 + static_cast<int>(seed % 2);
            scope.scopes.waveform_channels = channels;
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, parade_in_both_modes_and_both_render_qualities) {
    std::uint32_t seed = 20;
    for (const int channels : {1, 2}) {
        for (const bool high : {false, true}) {
            ScopeFrame scope = alone(GetParam(), kParade, ++seed);
            scope.frame.high_quality = high;
            scope.frame.settings.channels = channels;
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, vectorscope_with_every_graticule_and_calibration) {
    std::uint32_t seed = 40;
    for (const int layout : {1, 2}) {
        for (const int calibrate : {1, 2, 3, 4}) {
            ScopeFrame scope = alone(GetParam(), kVectorscope, ++seed);
            scope.frame.high_quality = seed % 2 == 0;
            scope.frame.settings.luma_math = 1 + static_cast<int>(seed / 2 % 2);
            scope.scopes.calibrate = calibrate;
            scope.vectorscope_layout = layout;
            scope.reference_line = calibrate == 3;
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, vectorscope_in_the_samples_own_colours) {
    for (const bool high : {false, true}) {
        ScopeFrame scope = alone(GetParam(), kVectorscope, 60);
        scope.frame.high_quality = high;
        scope.scopes.monochrome = false;
        scope.scopes.quality = 1;
        expect_traces(scope, {1, 0.01,
                              " (each hit whose code lies just below a whole number may "
                              "be rounded the other way)"});
    }
}

TEST_P(PanelTraces, slice_waveform_in_every_mode) {
    std::uint32_t seed = 70;
    for (const int channels : {1, 2, 3}) {
        for (const double position : {0.0, 37.0, 100.0}) {
            ScopeFrame scope = alone(GetParam(), kSlice, ++seed);
            scope.frame.high_quality = seed % 2 == 0;
            scope.frame.settings.slice_position = position;
            scope.scopes.slice_channels = channels;
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, histogram_in_both_modes) {
    for (const int channels : {1, 2}) {
        for (const bool high : {false, true}) {
            ScopeFrame scope = alone(GetParam(), kHistogram, 90);
            scope.frame.high_quality = high;
            scope.scopes.histogram_channels = channels;
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, five_scopes_at_once_at_every_sampling_quality_and_resolution) {
    constexpr SceneOptions kScenes[] = {
        {1, 1, 1, 1, false}, {2, 2, 1, 1, false}, {1, 1, 10, 11, false}, {1, 2, 2, 1, false}};
    std::uint32_t seed = 100;
    for (const SceneOptions &scene : kScenes) {
        for (const int quality : {1, 2, 3}) {
            ScopeFrame scope = alone(GetParam(), kWaveform, ++seed);
            scope.frame.scene = scene;
            scope.frame.high_quality = quality != 2;
            scope.frame.settings.show = {false, true, true, true, true, true};
            for (double &size : scope.frame.settings.size) size *= 2;
            scope.scopes.quality = quality;
            scope.scopes.brightness = {100, 120, 90, 150, 100, 100};
            expect_traces(scope, allowed_at(GetParam()));
        }
    }
}

TEST_P(PanelTraces, corrected_picture_is_measured_or_the_input) {
    for (const int corrections : {1, 2}) {
        ScopeFrame scope = alone(GetParam(), kWaveform, 120);
        scope.frame.settings.layout = 1;
        scope.frame.settings.corrections = corrections;
        scope.frame.settings.gain = 0.6;
        scope.frame.settings.show[kHistogram] = true;
        expect_traces(scope, allowed_at(GetParam()));
    }
}

std::string depth_label(const testing::TestParamInfo<stage::Depth> &tested) {
    return "bits" + std::to_string(static_cast<int>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Flow, PanelTraces, testing::ValuesIn(kDepths), depth_label);

}  // namespace
}  // namespace ks::flow
