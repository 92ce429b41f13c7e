// Which parameters the scopes read, in what order, and what a failing one leaves.
#include "scopes/settings_reader.h"

#include <gtest/gtest.h>

#include "plugin/support/render_host.h"

namespace ks {
namespace {

class SettingsReaderTest : public testing::Test {
  protected:
    void enable(std::initializer_list<ScopeKind> kinds) {
        for (const ScopeKind kind : kinds) scopes_.switches[scope_slot(kind)] = 1;
    }
    ScopeSettings read(PF_PixelFormat format = PF_PixelFormat_ARGB32) {
        host_.log().clear();
        host_.host.calls.fallible = 0;
        chain_ = ErrorChain();
        const ScopeSettings settings = read_scope_settings(chain_, &host_.host.in, format, scopes_);
        host_.expect_clean();
        return settings;
    }
    /// The parameters checked out, in order; each must be checked in before the next.
    std::vector<int> order() {
        std::vector<int> params;
        bool open = false;
        for (const std::string &call : host_.log()) {
            const bool out = call.rfind("checkout ", 0) == 0;
            EXPECT_NE(out, open) << call;
            open = out;
            if (out) params.push_back(std::stoi(call.substr(9)));
        }
        return params;
    }

    RenderHost host_;
    ScopeSet scopes_;
    ErrorChain chain_;
};

using Params = std::vector<int>;

TEST_F(SettingsReaderTest, without_scopes_only_what_all_share) {
    read();
    EXPECT_EQ(order(), (Params{kParamLuminanceMath, kParamSamplingQuality}));
    EXPECT_TRUE(chain_.ok());
}

TEST_F(SettingsReaderTest, the_highest_value_is_read_for_waveforms_of_float_pictures) {
    for (const ScopeKind kind : {ScopeKind::kWaveform, ScopeKind::kParade, ScopeKind::kSlice,
                                 ScopeKind::kVectorscope, ScopeKind::kHistogram}) {
        scopes_ = {};
        enable({kind});
        const bool waveform = kind != ScopeKind::kVectorscope && kind != ScopeKind::kHistogram;
        host_.set_slider(kParamMaxWaveformScale, 150.0);
        EXPECT_EQ(read(PF_PixelFormat_ARGB128).max_waveform_scale, waveform ? 150.0 : 100.0);
        EXPECT_EQ(order()[2] == kParamMaxWaveformScale, waveform);
        for (const PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64}) {
            EXPECT_EQ(read(format).max_waveform_scale, 100.0);
        }
    }
}

TEST_F(SettingsReaderTest, every_scope_reads_its_own) {
    const std::vector<std::pair<ScopeKind, Params>> cases{
        {ScopeKind::kWaveform, {kParamWaveformShowChannels, kParamWaveformBrightness}},
        {ScopeKind::kVectorscope,
         {kParamVectorscopeMonochrome, kParamVectorscopeCalibrateFor, kParamVectorscopeBrightness}},
        {ScopeKind::kParade, {kParamViewChannels, kParamParadeBrightness}},
        {ScopeKind::kSlice, {kParamSliceShowChannels}},
        {ScopeKind::kHistogram, {kParamHistogramShowChannels, kParamHistogramHeight}}};
    Params all{kParamLuminanceMath, kParamSamplingQuality};
    for (const auto &[kind, own] : cases) {
        scopes_ = {};
        enable({kind});
        read();
        Params want{kParamLuminanceMath, kParamSamplingQuality};
        want.insert(want.end(), own.begin(), own.end());
        EXPECT_EQ(order(), want);
        all.insert(all.end(), own.begin(), own.end());
    }
    enable({ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade, ScopeKind::kSlice,
            ScopeKind::kHistogram});
    read();
    EXPECT_EQ(order(), all);
}

TEST_F(SettingsReaderTest, values_arrive) {
    enable({ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade, ScopeKind::kSlice,
            ScopeKind::kHistogram});
    host_.set_popup(kParamLuminanceMath, 2);
    host_.set_popup(kParamSamplingQuality, 2);
    host_.set_popup(kParamWaveformShowChannels, 2);
    host_.set_slider(kParamWaveformBrightness, 61.0);
    host_.show(kParamVectorscopeMonochrome, false);
    host_.set_popup(kParamVectorscopeCalibrateFor, 3);
    host_.set_slider(kParamVectorscopeBrightness, 62.0);
    host_.set_popup(kParamViewChannels, 2);
    host_.set_slider(kParamParadeBrightness, 63.0);
    host_.set_popup(kParamSliceShowChannels, 3);
    host_.set_popup(kParamHistogramShowChannels, 2);
    host_.set_slider(kParamHistogramHeight, 64.0);
    const ScopeSettings s = read();
    EXPECT_EQ(s.luma_math, LumaMath::k709);
    EXPECT_EQ(s.quality, 2);
    EXPECT_EQ(s.waveform_mode, TraceMode::kRgb);
    EXPECT_EQ(s.waveform_brightness, 61.0);
    EXPECT_FALSE(s.monochrome);
    EXPECT_EQ(s.calibrate_for, 3);
    EXPECT_EQ(s.vectorscope_brightness, 62.0);
    EXPECT_EQ(s.parade_mode, ParadeMode::kYCbCr);
    EXPECT_EQ(s.parade_brightness, 63.0);
    EXPECT_EQ(s.slice_mode, TraceMode::kLuma);
    EXPECT_EQ(s.histogram_mode, HistogramMode::kLuma);
    EXPECT_EQ(s.histogram_height, 64.0);
}

TEST_F(SettingsReaderTest, the_first_error_ends_the_reading) {
    enable({ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade, ScopeKind::kSlice,
            ScopeKind::kHistogram});
    read(PF_PixelFormat_ARGB128);
    const int steps = host_.host.calls.fallible;
    ASSERT_EQ(steps, 26);  // 13 parameters, out and in
    for (int n = 1; n <= steps; ++n) {
        host_.host.calls.fail_at = n;
        read(PF_PixelFormat_ARGB128);
        SCOPED_TRACE(host_.host.calls.failed);
        EXPECT_EQ(chain_.result(), 77);
        // A failed check-out is the last call; so is a failed check-in.
        EXPECT_EQ(host_.log().size(), static_cast<std::size_t>(n));
    }
}

TEST_F(SettingsReaderTest, nothing_is_read_after_an_earlier_error) {
    enable({ScopeKind::kWaveform});
    host_.log().clear();
    chain_.keep(12);
    read_scope_settings(chain_, &host_.host.in, PF_PixelFormat_ARGB32, scopes_);
    EXPECT_EQ(chain_.result(), 12);
    EXPECT_TRUE(host_.log().empty());
}

TEST(SamplingQualityTest, steps_and_factors_keep_the_brightness) {
    for (const int choice : {1, 2, 3, 0, 99}) {
        const SamplingQuality q = sampling_quality(choice);
        EXPECT_EQ(q.step, choice == 1 ? 4 : choice == 2 ? 2 : 1);
        EXPECT_EQ(q.factor, 0.125 * q.step * q.step);
    }
}

TEST(TraceModeTest, unknown_choices_show_everything) {
    EXPECT_EQ(trace_mode(1), TraceMode::kRgbAndLuma);
    EXPECT_EQ(trace_mode(2), TraceMode::kRgb);
    EXPECT_EQ(trace_mode(3), TraceMode::kLuma);
    EXPECT_EQ(trace_mode(0), TraceMode::kRgbAndLuma);
    EXPECT_EQ(trace_mode(77), TraceMode::kRgbAndLuma);
}

}  // namespace
}  // namespace ks
