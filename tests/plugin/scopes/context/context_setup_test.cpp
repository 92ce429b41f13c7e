// The sampling record against the oracle's set-up values, and its switches.
#include "scopes/context/context_setup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "oracle/scope_oracle.h"

namespace ks {
namespace {

/// A frame with all five panels; nothing reads their pixels here.
struct FrameSetup {
    SampledFrame frame;
    ScopeSettings settings;
    oracle::ScopeSettings s;
    oracle::PanelExtents extents{};
    std::vector<std::uint32_t> bins = std::vector<std::uint32_t>(768, 99);
    int memory = 0;

    explicit FrameSetup(FormatCode format = kFormat8) {
        frame.format = format;
        frame.switches = {1, 1, 1, 1, 1, 0};
        frame.source = {&memory, 0, 1920, 1080};
        frame.histogram_bins = bins.data();
        s.layer_width = s.output_width = 1920;
        s.show = {false, true, true, true, true, true};
        for (const int kind : {1, 2, 3, 4, 5}) panel(kind, 480 + kind, 304 + 2 * kind);
    }
    void panel(int kind, int width, int height) {
        const auto k = static_cast<std::size_t>(kind);
        frame.panels[k - 1] = {&memory, 0, width, height};
        extents[k] = {width, height};
    }
    [[nodiscard]] LayoutUnits units() const {
        const auto u = [](int v) { return static_cast<std::uint32_t>(v); };
        return layout_units(label_scale(s.layer_width, s.output_width),
                            make_frame_scale({s.par_num, u(s.par_den)}, {1, u(s.downsample_x_den)},
                                             {1, u(s.downsample_y_den)}));
    }
    ScopeSampleContext make() { return make_sample_context(frame, settings, units()); }
    /// The oracle's, for the same settings.
    oracle::ScopeContext expected() {
        s.luma_math = settings.luma_math == LumaMath::k709 ? 2 : 1;
        s.quality = settings.quality;
        s.max_waveform = settings.max_waveform_scale;
        s.waveform_channels = static_cast<int>(settings.waveform_mode);
        s.view_channels = settings.parade_mode == ParadeMode::kYCbCr ? 2 : 1;
        s.histogram_channels = static_cast<int>(settings.histogram_mode);
        s.brightness = {0,
                        settings.waveform_brightness,
                        settings.vectorscope_brightness,
                        settings.parade_brightness,
                        0,
                        0};
        s.calibrate = settings.calibrate_for;
        s.monochrome = settings.monochrome;
        oracle::Image image;
        image.width = frame.source.width;
        image.height = frame.source.height;
        image.depth = frame.format == kFormatF ? oracle::Depth::kFloat : oracle::Depth::kByte;
        return oracle::set_up_scopes(s, image, extents);
    }
};

void expect_colour(const Colour &got, const oracle::Colour &want) {
    EXPECT_EQ(got.alpha, want[0]);
    EXPECT_EQ(got.red, want[1]);
    EXPECT_EQ(got.green, want[2]);
    EXPECT_EQ(got.blue, want[3]);
}

void expect_agree(FrameSetup &setup) {
    const ScopeSampleContext c = setup.make();
    const oracle::ScopeContext want = setup.expected();
    EXPECT_EQ(c.stepX, want.step);
    EXPECT_EQ(c.stepY, want.step);
    EXPECT_EQ(c.topY, want.top);
    EXPECT_EQ(c.needLuma != 0, want.need_luma);
    EXPECT_EQ(c.valueScale, want.value_scale);
    EXPECT_EQ(c.waveformLeft, want.waveform.left);
    EXPECT_EQ(c.waveformBottom, want.waveform.bottom);
    EXPECT_EQ(c.waveformSpan, want.waveform.span);
    EXPECT_EQ(c.waveformXScale, want.waveform_x_scale);
    EXPECT_EQ(c.waveformGain, want.waveform_gain);
    expect_colour(c.lumaColour, want.luma_colour);
    EXPECT_EQ(c.vectorscopeCentreX, want.centre_x);
    EXPECT_EQ(c.vectorscopeCentreY, want.centre_y);
    EXPECT_EQ(c.vectorscopeLeft, want.clip.left);
    EXPECT_EQ(c.vectorscopeRight, want.clip.right);
    EXPECT_EQ(c.vectorscopeTop, want.clip.top);
    EXPECT_EQ(c.vectorscopeBottom, want.clip.bottom);
    EXPECT_EQ(c.cbGain, want.cb_gain);
    EXPECT_EQ(c.crGain, want.cr_gain);
    EXPECT_EQ(c.calibrationGain, want.calibration_gain);
    EXPECT_EQ(c.vectorscopeGain, want.vectorscope_gain);
    expect_colour(c.monochromeColour, want.monochrome_colour);
    EXPECT_EQ(static_cast<int>(c.paradeMode), want.parade_mode);
    EXPECT_EQ(c.paradeBottom, want.parade.bottom);
    EXPECT_EQ(c.paradeAnchorBottom, want.parade.bottom);
    EXPECT_EQ(c.paradeSpan, want.parade.span);
    EXPECT_EQ(c.paradeCentreOffset, want.parade_centre_offset);
    EXPECT_EQ(c.paradeXScale, want.parade_x_scale);
    EXPECT_EQ(c.paradeValueScale, want.value_scale);
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_EQ(c.paradeColumns[k], want.parade_anchors[k]);
        expect_colour(c.paradeColours[k], want.parade_colours[k]);
    }
}

TEST(ContextSetupTest, agrees_with_the_oracle_over_parameters) {
    for (const int quality : {1, 2, 3}) {
        for (const int mode : {1, 2, 3}) {
            for (const int calibrate : {1, 2, 3, 4}) {
                for (const double brightness : {50.0, 100.0, 131.7, 150.0}) {
                    FrameSetup setup(mode == 3 ? kFormatF : kFormat8);
                    setup.settings.quality = quality;
                    setup.settings.waveform_mode = static_cast<TraceMode>(mode);
                    setup.settings.calibrate_for = calibrate;
                    setup.settings.waveform_brightness = brightness;
                    setup.settings.vectorscope_brightness = brightness + 1.0;
                    setup.settings.parade_brightness = brightness + 2.0;
                    setup.settings.max_waveform_scale = 100.0 + brightness;
                    setup.settings.parade_mode = mode == 2 ? ParadeMode::kYCbCr : ParadeMode::kRgb;
                    expect_agree(setup);
                }
            }
        }
    }
}

TEST(ContextSetupTest, agrees_with_the_oracle_over_layouts) {
    for (const int width : {200, 333, 1000}) {
        for (const int height : {130, 562, 1034}) {
            for (const int den : {1, 2, 4}) {
                for (const auto &[num, par_den] : {std::pair{1, 1}, {10, 11}, {2, 1}}) {
                    for (const int layer : {640, 3840}) {
                        FrameSetup setup;
                        setup.s.layer_width = layer;
                        setup.s.output_width = layer / den;
                        setup.s.downsample_x_den = den;
                        setup.s.downsample_y_den = den;
                        setup.s.par_num = num;
                        setup.s.par_den = par_den;
                        for (const int kind : {1, 2, 3, 4, 5}) setup.panel(kind, width, height);
                        expect_agree(setup);
                    }
                }
            }
        }
    }
}

TEST(ContextSetupTest, luma_is_needed_by_whoever_reads_it) {
    const auto needs = [](auto &&change) {
        FrameSetup setup;
        setup.frame.switches = {0, 0, 0, 0, 0, 0};
        change(setup);
        return setup.make().needLuma != 0;
    };
    const auto slot = [](ScopeKind kind) { return scope_slot(kind); };
    EXPECT_FALSE(needs([](FrameSetup &) {}));
    EXPECT_TRUE(needs([&](FrameSetup &s) {
        s.frame.switches[slot(ScopeKind::kWaveform)] = 1;
        s.settings.waveform_mode = TraceMode::kRgbAndLuma;
    }));
    EXPECT_FALSE(needs([&](FrameSetup &s) {
        s.frame.switches[slot(ScopeKind::kWaveform)] = 1;
        s.settings.waveform_mode = TraceMode::kRgb;
    }));
    EXPECT_TRUE(needs([&](FrameSetup &s) { s.frame.switches[slot(ScopeKind::kVectorscope)] = 1; }));
    EXPECT_FALSE(needs([&](FrameSetup &s) { s.frame.switches[slot(ScopeKind::kParade)] = 1; }));
    EXPECT_TRUE(needs([&](FrameSetup &s) {
        s.frame.switches[slot(ScopeKind::kParade)] = 1;
        s.settings.parade_mode = ParadeMode::kYCbCr;
    }));
    EXPECT_FALSE(needs([&](FrameSetup &s) { s.frame.switches[slot(ScopeKind::kHistogram)] = 1; }));
    EXPECT_TRUE(needs([&](FrameSetup &s) {
        s.frame.switches[slot(ScopeKind::kHistogram)] = 1;
        s.settings.histogram_mode = HistogramMode::kLuma;
    }));
}

TEST(ContextSetupTest, the_value_scale_is_for_float_pictures) {
    FrameSetup setup(kFormatF);
    setup.settings.max_waveform_scale = 120.0;
    EXPECT_DOUBLE_EQ(setup.make().valueScale, 100.0 / 120.0);
    setup.settings.max_waveform_scale = 0.0;  // a damaged project
    EXPECT_EQ(setup.make().valueScale, 1.0);
    for (const FormatCode format : {kFormat8, kFormat16}) {
        FrameSetup codes(format);
        codes.settings.max_waveform_scale = 120.0;
        EXPECT_EQ(codes.make().valueScale, 1.0);
        EXPECT_EQ(codes.make().paradeValueScale, 1.0);
    }
}

TEST(ContextSetupTest, the_used_bins_are_cleared_and_no_maximum_is_zero) {
    FrameSetup setup;
    setup.make();
    EXPECT_EQ(std::count(setup.bins.begin(), setup.bins.end(), 0u), 768);
    FrameSetup luma;
    luma.settings.histogram_mode = HistogramMode::kLuma;
    const ScopeSampleContext c = luma.make();
    EXPECT_EQ(std::count(luma.bins.begin(), luma.bins.begin() + 256, 0u), 256);
    EXPECT_EQ(luma.bins[256], 99u);
    EXPECT_EQ(c.histogramMax, (std::array<std::uint32_t, 3>{1, 1, 1}));
    EXPECT_EQ(c.waveformOverRange, 0);
    EXPECT_EQ(c.paradeOverRange, 0);
}

TEST(ContextSetupTest, a_scope_without_a_panel_is_off) {
    FrameSetup setup;
    setup.frame.panels = {};
    ScopeSampleContext c = setup.make();
    EXPECT_EQ(c.waveformOn + c.vectorscopeOn + c.paradeOn + c.sliceOn + c.histogramOn, 0);
    FrameSetup no_bins;
    no_bins.frame.histogram_bins = nullptr;
    EXPECT_EQ(no_bins.make().histogramOn, 0);
    FrameSetup empty;
    empty.frame.panels[0].height = 0;
    EXPECT_EQ(empty.make().waveformOn, 0);
}

TEST(ContextSetupTest, panels_too_narrow_for_a_column_are_off) {
    FrameSetup setup;
    setup.panel(oracle::kWaveform, 38, 304);
    setup.panel(oracle::kParade, 40, 304);
    ScopeSampleContext c = setup.make();
    EXPECT_EQ(c.waveformOn, 0);
    EXPECT_EQ(c.paradeOn, 0);
    setup.panel(oracle::kWaveform, 39, 304);
    setup.panel(oracle::kParade, 41, 304);
    c = setup.make();
    EXPECT_EQ(c.waveformOn, 1);
    EXPECT_EQ(c.paradeOn, 1);
}

TEST(ContextSetupTest, a_source_without_pixels_makes_a_record_that_samples_nothing) {
    FrameSetup setup;
    setup.frame.source.width = 0;
    const ScopeSampleContext c = setup.make();
    EXPECT_EQ(c.source.base, nullptr);
    EXPECT_EQ(c.source.height, 0);
}

TEST(ContextSetupTest, the_quality_of_the_render_and_mute_are_passed_on) {
    FrameSetup setup;
    EXPECT_EQ(setup.make().subPixel, 0);
    EXPECT_EQ(setup.make().muted, 0);
    setup.frame.high_quality = true;
    setup.frame.switches[5] = 1;
    EXPECT_EQ(setup.make().subPixel, 1);
    EXPECT_EQ(setup.make().muted, 1);
}

}  // namespace
}  // namespace ks
