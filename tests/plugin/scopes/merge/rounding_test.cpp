// Where plots round: colours just below a whole number of codes, and long runs of float additions.
#include <gtest/gtest.h>

#include <cmath>

#include "pixels/plot.h"
#include "plugin/scopes/merge/trace_promises.h"
#include "scopes/merge/even_plots.h"

namespace ks {
namespace {

using oracle::Depth;

constexpr unsigned kMode = kPlotAdditive | kPlotClampFloat;

int red_after(int code, float red) {
    Pixel8 pixel{0, static_cast<std::uint8_t>(code), 0, 0};
    blend_pixel(pixel, {0.0f, red, 0.0f, 0.0f}, kMode);
    return pixel.red;
}

/// True when a plot of `red` adds the same to every 8-bit code, found by trying.
bool tried_even(float red) {
    const int alone = red_after(0, red);
    for (int code = 1; code <= 255; ++code) {
        if (red_after(code, red) != std::min(code + alone, 255)) return false;
    }
    return true;
}

TEST(EvenPlots, every_uneven_float_around_every_code_is_known) {
    std::size_t uneven = 0, called_uneven = 0;
    for (int code = 0; code <= 255; ++code) {
        float red = static_cast<float>(code / 255.0);
        for (int i = 0; i < 400; ++i) red = std::nextafterf(red, -1.0f);
        for (int i = 0; i < 800; ++i, red = std::nextafterf(red, 2.0f)) {
            if (red < 0.0f) continue;
            const bool even = tried_even(red);
            uneven += even ? 0 : 1;
            called_uneven += adds_evenly(red) ? 0 : 1;
            ASSERT_TRUE(even || !adds_evenly(red)) << "code " << code << ", red " << red;
        }
    }
    EXPECT_GT(uneven, 1000u);
    EXPECT_GE(called_uneven, uneven);
}

TEST(EvenPlots, counts_cannot_tell_what_uneven_colours_leave) {
    // A colour just below one code adds nothing to 0 and a code to 100.
    const float red = std::nextafterf(static_cast<float>(1 / 255.0), 0.0f);
    ASSERT_FALSE(adds_evenly(red));
    EXPECT_EQ(red_after(0, red), 0);
    EXPECT_EQ(red_after(200, red), 201);
    // So the same two plots in another order leave another pixel.
    const float much = 200.2f / 255.0f;
    EXPECT_EQ(red_after(red_after(0, much), red), 201);
    EXPECT_EQ(red_after(red_after(0, red), much), 200);
}

TraceCase waveform_only(oracle::Image source) {
    TraceCase c;
    c.settings.show = {false, true, false, false, false, false};
    c.settings.quality = 3;
    c.settings.layer_width = c.settings.output_width = 1920;
    c.source = std::move(source);
    c.extents[oracle::kWaveform] = {200, 90};
    return c;
}

/// A plot of the waveform's luma or red trace is uneven at that brightness.
bool waveform_uneven(double brightness, double factor, float weight) {
    const auto gain = static_cast<float>(brightness * 0.01 * factor * 1.5);
    for (const float channel : {0.05f, 0.032f, 0.034f}) {
        const float plotted = channel * gain * weight;
        if (!adds_evenly(plotted) && !tried_even(plotted)) return true;
    }
    return false;
}

TEST(WaveformRounding, whole_plots_just_below_a_code_at_8_bits) {
    TraceCase c = waveform_only(smooth_picture(64, 90, Depth::kByte, 21));
    c.settings.quality = 1;
    int found = 0;
    for (int step = 0; step <= 100000; ++step) {
        const double brightness = 50.0 + step * 1e-3;
        if (!waveform_uneven(brightness, 2.0, 1.0f)) continue;
        ++found;
        SCOPED_TRACE(brightness);
        c.settings.brightness[oracle::kWaveform] = brightness;
        ASSERT_EQ(expect_promises(c).worst, 0.0);
    }
    EXPECT_GE(found, 3);
}

TEST(WaveformRounding, split_plots_just_below_a_code_at_8_bits) {
    TraceCase c = waveform_only(smooth_picture(324, 90, Depth::kByte, 22));
    c.settings.sub_pixel = true;
    int found = 0;
    for (int step = 0; step <= 100000; ++step) {
        const double brightness = 50.0 + step * 1e-3;
        // Every second column lies on a pixel's border, the others on a centre.
        if (!waveform_uneven(brightness, 0.125, 0.5f)) continue;
        ++found;
        SCOPED_TRACE(brightness);
        c.settings.brightness[oracle::kWaveform] = brightness;
        ASSERT_EQ(expect_promises(c).worst, 0.0);
    }
    EXPECT_GE(found, 3);
}

TEST(WaveformRounding, split_plots_at_16_bits_are_low_by_no_more_than_their_uncertain_hits) {
    PromiseCount sum;
    for (int step = 0; step < 8; ++step) {
        TraceCase c = waveform_only(smooth_picture(640, 300, Depth::kWord, 23));
        c.settings.sub_pixel = true;
        c.settings.brightness[oracle::kWaveform] = 50.0 + step * 12.1;
        const PromiseCount count = expect_promises(c);
        sum.uncertain += count.uncertain;
        sum.off += count.off;
    }
    EXPECT_GT(sum.uncertain, 100u);
    EXPECT_GT(sum.off, 0u);
}

TEST(WaveformRounding, long_runs_of_equal_float_additions) {
    double worst = 0.0;
    for (const int height : {480, 1080, 4000}) {
        for (const int width : {40, 64, 200}) {
            TraceCase c =
                waveform_only(flat_picture(width, height, Depth::kFloat, {1, 0.31, 0.52, 0.77}));
            c.settings.sub_pixel = true;
            c.settings.brightness[oracle::kWaveform] = 75.0;
            worst = std::max(worst, expect_promises(c).worst);
        }
    }
    EXPECT_GT(worst, 1e-7);  // the additions do round
}

TraceCase colours_only(oracle::Image source) {
    TraceCase c = waveform_only(std::move(source));
    c.settings.show = {false, false, true, false, false, false};
    c.settings.monochrome = false;
    c.extents[oracle::kVectorscope] = {200, 218};
    return c;
}

TEST(ColourRounding, codes_just_below_a_whole_number_are_low_by_their_hits_at_most) {
    PromiseCount sum;
    for (int step = 0; step < 20; ++step) {
        TraceCase c = colours_only(noise_picture(160, 100, Depth::kWord, 24));
        make_opaque(c.source);
        c.settings.quality = 1 + step % 3;
        c.settings.brightness[oracle::kVectorscope] = 50.0 + step * 5.0;
        const PromiseCount count = expect_promises(c);
        sum.uncertain += count.uncertain;
        sum.off += count.off;
    }
    EXPECT_GT(sum.uncertain, 10u);
}

TEST(ColourRounding, the_bound_is_needed_at_8_bits) {
    // A grey that adds unevenly at some brightness, after others on the same centre pixel.
    for (int step = 0; step <= 100000; ++step) {
        const double brightness = 100.0 + step * 5e-4;
        const float gain = static_cast<float>(brightness * 0.01 * 0.125 * 1.5) * 0.2f;
        for (int code = 1; code < 256; ++code) {
            const float red = static_cast<float>(code) * PixelTraits<Pixel8>::kToUnit * gain;
            if (adds_evenly(red) || tried_even(red)) continue;
            TraceCase c = colours_only(flat_picture(1, 40, Depth::kByte, {1, 0.5, 0.5, 0.5}));
            c.settings.brightness[oracle::kVectorscope] = brightness;
            const double v = code;
            for (int y = 38; y < 40; ++y) oracle::store_pixel(c.source, 0, y, {255, v, v, v});
            const PromiseCount count = expect_promises(c);
            EXPECT_GT(count.uncertain, 0u);
            if (count.off > 0) return;
        }
    }
    FAIL() << "no such brightness";
}

TEST(ColourRounding, long_runs_of_equal_float_additions) {
    double most = 0.0;
    for (const int height : {200, 400, 800}) {
        const TraceCase c =
            colours_only(flat_picture(3, height, Depth::kFloat, {1, 0.021, 0.02, 0.013}));
        expect_promises(c);
        most = std::max(most, 3.0 * height * 0.021 * 0.0375);
    }
    EXPECT_GT(most, 1.0);  // up to full scale
}

TEST(ColourRounding, alpha_counts_the_samples_by_their_alphas) {
    for (const Depth depth : {Depth::kByte, Depth::kWord, Depth::kFloat}) {
        TraceCase opaque = colours_only(flat_picture(20, 10, depth, {1, 0.4, 0.4, 0.4}));
        TraceCase half = colours_only(flat_picture(20, 20, depth, {0.5, 0.4, 0.4, 0.4}));
        const auto centre_alpha = [&](const TraceCase &c) {
            MeasuredTraces got = measure(c.source, c.settings, c.extents, c.run);
            double alpha = 0.0;
            visit_format(format_of(depth), [&]<class P>(P) {
                alpha = static_cast<double>(got.panels[oracle::kVectorscope]
                                                .view()
                                                .template pixel<P>(got.context.vectorscopeCentreX,
                                                                   got.context.vectorscopeCentreY)
                                                ->alpha);
                return 0;
            });
            return alpha;
        };
        // 8-bit 127 is slightly less than a half: 31 of 64 parts.
        if (depth == Depth::kByte)
            half.source = flat_picture(20, 20, depth, {128.1 / 255, .4, .4, .4});
        EXPECT_EQ(centre_alpha(opaque), centre_alpha(half));
        half.source = flat_picture(20, 20, depth, {0.0, 0.4, 0.4, 0.4});
        EXPECT_EQ(centre_alpha(half), 0.0);
        EXPECT_GT(centre_alpha(opaque), 0.0);
    }
}

}  // namespace
}  // namespace ks
