// The graticules through the drawing layer and the real GDI+, on a stand-in host.
#include "scopes/graticules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hostapi/constants.h"
#include "scopes/traces/histogram_bars.h"
#include "stage/binary/gdiplus_runtime.h"
#include "support/fake_host.h"

namespace ks {
namespace {

constexpr std::array<IntSize, kScopeKinds> kPanelSizes{
    {{200, 130}, {200, 218}, {200, 130}, {200, 130}, {272, 102}}};

/// Five transparent panels of 8-bit pixels and the parameters' values.
class Graticules : public testing::Test {
  protected:
    Graticules() {
        current() = this;
        host_.in.quality = PF_Quality_HI;
        host_.in.pixel_aspect_ratio = {1, 1};
        host_.in.downsample_x = {1, 1};
        host_.in.downsample_y = {1, 1};
        host_.in.inter.checkout_param = [](PF_ProgPtr, PF_ParamIndex index, A_long, A_long,
                                           A_u_long, PF_ParamDef *def) {
            Graticules &self = *current();
            const PF_Err error = self.host_.calls.step("checkout " + std::to_string(index));
            if (error == 0) def->u = self.params_[index];
            self.read_.push_back(index);
            return error;
        };
        params_[kParamWaveformScale].pd.value = 1;
        params_[kParamWaveformGuides].pd.value = 1;
        params_[kParamVectorscopeGraticule].pd.value = 1;
        context_.pixelFormat = kFormat8;
        context_.vectorscopeLeft = 8;
        context_.vectorscopeTop = 26;
        context_.vectorscopeCentreX = 100;
        context_.vectorscopeCentreY = 118;
        context_.cbGain = context_.crGain = 184.0;
        for (std::size_t slot = 0; slot < kPanelSizes.size(); ++slot) make_panel(slot);
    }
    ~Graticules() override { current() = nullptr; }

    void show(std::initializer_list<ScopeKind> kinds) {
        scopes_ = {};
        for (const ScopeKind kind : kinds) {
            scopes_.switches[scope_slot(kind)] = 1;
            scopes_.panels[scope_slot(kind)] = &worlds_[scope_slot(kind)];
        }
    }
    void show_all() {
        show({ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade, ScopeKind::kSlice,
              ScopeKind::kHistogram});
    }
    PF_Err draw() {
        host_.calls.log.clear();
        host_.calls.fallible = 0;
        read_.clear();
        return draw_graticules(&host_.in, &host_.out, scopes_, context_, slice_,
                               layout_units(1.0, FrameScale{}), FrameScale{});
    }
    void expect_clean() {
        EXPECT_EQ(host_.calls.live_blocks(), 0);
        EXPECT_EQ(host_.calls.open_locks(), 0);
        EXPECT_EQ(host_.suites_held(), 0);
        EXPECT_TRUE(host_.calls.misuse.empty());
    }
    PF_Pixel pixel(ScopeKind kind, int x, int y) {
        const PF_EffectWorld &world = worlds_[scope_slot(kind)];
        return world.data[y * world.width + x];
    }
    bool touched(ScopeKind kind) {
        const auto &pixels = pixels_[scope_slot(kind)];
        return std::any_of(pixels.begin(), pixels.end(), [](const PF_Pixel &p) {
            return p.alpha != 0 || p.red != 0 || p.green != 0 || p.blue != 0;
        });
    }

    fake::FakeHost host_;
    std::map<int, PF_ParamDefUnion> params_;
    std::vector<int> read_;
    ScopeSet scopes_;
    ScopeSampleContext context_;
    SliceResult slice_;

  private:
    static Graticules *&current() {
        static Graticules *test = nullptr;
        return test;
    }
    void make_panel(std::size_t slot) {
        PF_EffectWorld &world = worlds_[slot];
        world.width = kPanelSizes[slot].width;
        world.height = kPanelSizes[slot].height;
        world.rowbytes = world.width * 4;
        pixels_[slot].resize(static_cast<std::size_t>(world.width * world.height));
        world.data = pixels_[slot].data();
    }

    stage::GdiplusRuntime gdiplus_;
    std::array<PF_EffectWorld, kScopeKinds> worlds_{};
    std::array<std::vector<PF_Pixel>, kScopeKinds> pixels_;
};

TEST_F(Graticules, AllFivePanelsAreDrawn) {
    show_all();
    EXPECT_EQ(draw(), 0);
    for (const ScopeKind kind : kScopeWalkOrder) {
        const PF_Pixel band = pixel(kind, 150, 17);  // below the title, left of the chips
        EXPECT_EQ(band.alpha, 255);
        EXPECT_EQ(band.red, 51);
        EXPECT_EQ(band.green, 51);
        EXPECT_EQ(band.blue, 51);
    }
    expect_clean();
}

TEST_F(Graticules, ScopesThatAreOffAreLeftAlone) {
    show({ScopeKind::kParade});
    EXPECT_EQ(draw(), 0);
    for (const ScopeKind kind : kScopeWalkOrder) {
        EXPECT_EQ(touched(kind), kind == ScopeKind::kParade);
    }
}

TEST_F(Graticules, AScopeWithoutAPanelIsLeftOut) {
    show_all();
    scopes_.panels[scope_slot(ScopeKind::kWaveform)] = nullptr;
    scopes_.panels[scope_slot(ScopeKind::kVectorscope)] = nullptr;
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(touched(ScopeKind::kHistogram));
    expect_clean();
}

TEST_F(Graticules, MuteTakesTheVectorscopesGraticuleOnly) {
    show_all();
    context_.muted = 1;
    EXPECT_EQ(draw(), 0);
    for (const ScopeKind kind : kScopeWalkOrder) {
        EXPECT_EQ(touched(kind), kind != ScopeKind::kVectorscope);
    }
}

TEST_F(Graticules, ParametersAreReadBeforeAnythingIsDrawn) {
    show_all();
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(read_, (std::vector<int>{kParamWaveformScale, kParamWaveformGuides,
                                       kParamVectorscopeGraticule, kParamVectorscopeSkinToneLine,
                                       kParamVectorscopeReferenceLine}));
    const auto &log = host_.calls.log;
    const auto last_read = std::find(log.rbegin(), log.rend(), "checkin_param");
    const auto first_draw = std::find(log.begin(), log.end(), "abort");
    EXPECT_LT(log.rend() - last_read, first_draw - log.begin() + 1);
}

TEST_F(Graticules, OnlyTheShownScopesParametersAreRead) {
    show({ScopeKind::kHistogram});
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(read_.empty());
    show({ScopeKind::kSlice});
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(read_.size(), 2u);
    show({ScopeKind::kVectorscope});
    params_[kParamVectorscopeReferenceLine].bd.value = 1;
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(read_.back(), kParamVectorscopeReferenceColour);
    context_.muted = 1;
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(read_.empty());
}

TEST_F(Graticules, APanelsLinesStandOnTheirRows) {
    show({ScopeKind::kWaveform});
    EXPECT_EQ(draw(), 0);
    for (const int row : {26, 50, 74, 98, 122}) {
        const int expected = (122 - row) / 24 % 2 == 0 ? 102 : 63;
        EXPECT_NEAR(pixel(ScopeKind::kWaveform, 110, row).green, expected, 1) << row;
        EXPECT_EQ(pixel(ScopeKind::kWaveform, 110, row - 3).green, 0) << row;
    }
}

TEST_F(Graticules, OverRangeShowsTheRedMarkOfItsScopeOnly) {
    const auto has_red = [&](ScopeKind kind) {
        for (int y = 4; y < 16; ++y) {
            for (int x = 160; x < 169; ++x) {
                const PF_Pixel p = pixel(kind, x, y);
                if (p.red > 150 && p.green < 60) return true;
            }
        }
        return false;
    };
    show({ScopeKind::kWaveform, ScopeKind::kParade, ScopeKind::kSlice});
    slice_.over_range = true;
    EXPECT_EQ(draw(), 0);
    EXPECT_FALSE(has_red(ScopeKind::kWaveform));
    EXPECT_FALSE(has_red(ScopeKind::kParade));
    EXPECT_TRUE(has_red(ScopeKind::kSlice));
    context_.waveformOverRange = context_.paradeOverRange = 1;
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(has_red(ScopeKind::kWaveform));
    EXPECT_TRUE(has_red(ScopeKind::kParade));
}

/// The fills of the four chips, at their middles.
std::array<int, 4> chip_codes(const std::array<PF_Pixel, 4> &chips) {
    std::array<int, 4> codes{};
    for (std::size_t i = 0; i < 4; ++i) {
        codes[i] = (chips[i].red / 51) * 100 + (chips[i].green / 51) * 10 + chips[i].blue / 51;
    }
    return codes;
}

TEST_F(Graticules, LegendsFollowTheScopesModes) {
    const auto chips = [&](ScopeKind kind) {
        const int shift = kind == ScopeKind::kHistogram ? 72 : 0;
        return chip_codes({pixel(kind, 173 + shift, 10), pixel(kind, 179 + shift, 10),
                           pixel(kind, 185 + shift, 10), pixel(kind, 191 + shift, 10)});
    };
    show_all();
    context_.waveformMode = TraceMode::kRgbAndLuma;
    context_.paradeMode = ParadeMode::kYCbCr;
    slice_.mode = TraceMode::kLuma;
    context_.histogramRgb = HistogramMode::kRgb;
    EXPECT_EQ(draw(), 0);
    using Codes = std::array<int, 4>;
    EXPECT_EQ(chips(ScopeKind::kWaveform), (Codes{500, 40, 5, 333}));
    EXPECT_EQ(chips(ScopeKind::kParade), (Codes{333, 550, 55, 0}));
    EXPECT_EQ(chips(ScopeKind::kSlice), (Codes{0, 0, 0, 333}));
    EXPECT_EQ(chips(ScopeKind::kHistogram), (Codes{500, 40, 5, 0}));
    context_.histogramRgb = HistogramMode::kLuma;
    context_.paradeMode = ParadeMode::kRgb;
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(chips(ScopeKind::kHistogram), (Codes{0, 0, 0, 333}));
    EXPECT_EQ(chips(ScopeKind::kParade), (Codes{500, 40, 5, 0}));
}

TEST_F(Graticules, EveryFailingCallEndsTheWorkAndReleasesTheSurface) {
    show_all();
    params_[kParamVectorscopeReferenceLine].bd.value = 1;
    EXPECT_EQ(draw(), 0);
    const int calls = host_.calls.fallible;
    ASSERT_GT(calls, 20);
    for (int n = 1; n <= calls; ++n) {
        host_.calls.fail_at = n;
        PF_Err error = 0;
        try {
            error = draw();
        } catch (PF_Err thrown) {
            error = thrown;
        }
        EXPECT_NE(error, 0) << n << ": " << host_.calls.failed;
        EXPECT_EQ(host_.calls.live_blocks(), 0) << host_.calls.failed;
        EXPECT_EQ(host_.suites_held(), 0);
        EXPECT_TRUE(host_.calls.misuse.empty());
    }
    host_.calls.fail_at = 0;
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(host_.calls.live_blocks(), 0);
}

TEST_F(Graticules, AParameterErrorDrawsNothing) {
    show_all();
    host_.calls.fail_at = 3;
    EXPECT_EQ(draw(), 77);
    for (const ScopeKind kind : kScopeWalkOrder) EXPECT_FALSE(touched(kind));
}

TEST_F(Graticules, AnUnknownFormatIsRefused) {
    show_all();
    context_.pixelFormat = kFormatInvalid;
    EXPECT_EQ(draw(), kUnknownFormatError);
    expect_clean();
}

}  // namespace
}  // namespace ks
