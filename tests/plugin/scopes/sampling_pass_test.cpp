// The pass between the host and the panels: parts, failures, what it leaves behind, memory.
#include "scopes/sampling_pass.h"

#include <gtest/gtest.h>

#include <cstring>

#include "oracle/scope_oracle.h"
#include "plugin/scopes/iterate_host.h"
#include "scopes/context/context_setup.h"
#include "scopes/sampling/sample_plan.h"

namespace ks {
namespace {

class SamplingPassTest : public testing::Test {
  protected:
    static constexpr int kWidth = 96, kHeight = 128;

    SamplingPassTest() : pixels_(kWidth * kHeight), bins_(768, 0) {
        for (int i = 0; i < kWidth * kHeight; ++i) {
            const auto code = [&](int f) { return static_cast<std::uint8_t>(i * f / 7 % 256); };
            pixels_[static_cast<std::size_t>(i)] = {255, code(3), code(5), code(11)};
        }
        frame_.source = {pixels_.data(), kWidth * 4, kWidth, kHeight};
        frame_.format = kFormat8;
        frame_.switches = {1, 1, 1, 1, 1, 0};
        frame_.histogram_bins = bins_.data();
        for (std::size_t i = 0; i < kScopeKinds; ++i) {
            panels_[i].resize(200 * 200);
            frame_.panels[i] = {panels_[i].data(), 200 * 4, 200, 200};
        }
        settings_.quality = 3;
    }

    ScopeSampleContext context() {
        return make_sample_context(frame_, settings_,
                                   layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 1})));
    }
    PF_Err run(ScopeSampleContext &context) {
        for (auto &panel : panels_) std::fill(panel.begin(), panel.end(), Pixel8{});
        host_.calls.log.clear();
        host_.calls.fallible = 0;
        PF_Err error = 0;
        try {
            SuiteCache suites(&host_.basic);
            error = run_sampling_pass(suites, context);
        } catch (PF_Err thrown) {
            error = thrown;
        }
        EXPECT_EQ(host_.calls.live_blocks(), 0);
        EXPECT_EQ(host_.calls.open_locks(), 0);
        EXPECT_EQ(host_.suites_held(), 0);
        EXPECT_TRUE(host_.calls.misuse.empty());
        return error;
    }
    PF_Err run() {
        ScopeSampleContext c = context();
        return run(c);
    }
    [[nodiscard]] int calls(const std::string &start) const {
        int count = 0;
        for (const std::string &call : host_.calls.log) count += call.rfind(start, 0) == 0;
        return count;
    }
    [[nodiscard]] bool drawn(ScopeKind kind) const {
        const auto &panel = panels_[scope_slot(kind)];
        return std::any_of(panel.begin(), panel.end(), [](const Pixel8 &p) {
            return p.alpha != 0 || p.red != 0 || p.green != 0 || p.blue != 0;
        });
    }
    [[nodiscard]] bool anything_drawn() const {
        return drawn(ScopeKind::kWaveform) || drawn(ScopeKind::kVectorscope) ||
               drawn(ScopeKind::kParade);
    }
    [[nodiscard]] std::vector<std::vector<Pixel8>> panels() const { return panels_; }

    fake::FakeHost host_;
    IterateHost iterate_{host_};
    SampledFrame frame_;
    ScopeSettings settings_;
    std::vector<Pixel8> pixels_;
    std::vector<std::uint32_t> bins_;
    std::vector<std::vector<Pixel8>> panels_{kScopeKinds};
};

TEST_F(SamplingPassTest, draws_three_scopes_and_counts_the_fourth) {
    ScopeSampleContext c = context();
    EXPECT_EQ(run(c), 0);
    EXPECT_TRUE(drawn(ScopeKind::kWaveform));
    EXPECT_TRUE(drawn(ScopeKind::kVectorscope));
    EXPECT_TRUE(drawn(ScopeKind::kParade));
    EXPECT_FALSE(drawn(ScopeKind::kSlice));
    EXPECT_FALSE(drawn(ScopeKind::kHistogram));
    EXPECT_EQ(c.histogramMax[0], *std::max_element(bins_.begin(), bins_.begin() + 256));
    EXPECT_GT(c.histogramMax[0], 1u);
    EXPECT_EQ(c.waveformOverRange, 0);
}

TEST_F(SamplingPassTest, one_handle_is_taken_and_given_back) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(calls("new_handle"), 1);
    EXPECT_EQ(calls("dispose"), 1);
    EXPECT_EQ(calls("iterate"), 2);
}

TEST_F(SamplingPassTest, the_parts_follow_the_hosts_threads) {
    const auto asked = [&](A_long threads) {
        iterate_.threads = threads;
        EXPECT_EQ(run(), 0);
        for (const std::string &call : host_.calls.log) {
            if (call.rfind("iterate ", 0) == 0) return call;
        }
        return std::string();
    };
    EXPECT_EQ(asked(1), "iterate 1");
    EXPECT_EQ(asked(2), "iterate 2");
    EXPECT_EQ(asked(64), "iterate 64");
    EXPECT_EQ(asked(96), "iterate 64");
    EXPECT_EQ(asked(0), "iterate -1");  // once per processor
    EXPECT_EQ(asked(-4), "iterate -1");
    EXPECT_TRUE(drawn(ScopeKind::kWaveform));
}

TEST_F(SamplingPassTest, the_same_bytes_on_any_threads) {
    iterate_.threads = 1;
    EXPECT_EQ(run(), 0);
    const auto serial = panels();
    const auto bins = bins_;
    for (const A_long threads : {2, 4, 64, 96, 0}) {  // 128 rows: all of them divide it but 3
        if (threads == 0) iterate_.processors = 8;
        for (const bool parallel : {false, true}) {
            iterate_.threads = threads;
            iterate_.parallel = parallel;
            iterate_.reversed = !parallel;
            EXPECT_EQ(run(), 0);
            for (std::size_t i = 0; i < kScopeKinds; ++i) {
                EXPECT_EQ(std::memcmp(panels()[i].data(), serial[i].data(), 200 * 200 * 4), 0);
            }
            EXPECT_EQ(bins_, bins);
        }
    }
}

TEST_F(SamplingPassTest, nothing_is_done_when_muted_or_without_work) {
    ScopeSampleContext c = context();
    c.muted = 1;
    EXPECT_EQ(run(c), 0);
    EXPECT_TRUE(host_.calls.log.empty());
    c = context();
    c.waveformOn = c.vectorscopeOn = c.paradeOn = c.histogramOn = 0;  // the slice needs no pass
    EXPECT_EQ(run(c), 0);
    EXPECT_TRUE(host_.calls.log.empty());
    frame_.source.width = 0;
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(host_.calls.log.empty());
    EXPECT_FALSE(anything_drawn());
}

TEST_F(SamplingPassTest, each_scope_alone_is_work) {
    for (const ScopeKind kind : {ScopeKind::kWaveform, ScopeKind::kVectorscope, ScopeKind::kParade,
                                 ScopeKind::kHistogram}) {
        frame_.switches = {};
        frame_.switches[scope_slot(kind)] = 1;
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(calls("iterate"), 2);
        EXPECT_EQ(drawn(kind), kind != ScopeKind::kHistogram);
    }
    EXPECT_NE(*std::max_element(bins_.begin(), bins_.end()), 0u);
}

TEST_F(SamplingPassTest, an_unknown_pixel_format_is_an_error) {
    ScopeSampleContext c = context();
    c.pixelFormat = kFormatInvalid;
    EXPECT_EQ(run(c), 516);
    EXPECT_FALSE(anything_drawn());
}

TEST_F(SamplingPassTest, an_unknown_thread_count_is_an_error) {
    host_.calls.fails["get_num_threads"] = 31;
    EXPECT_EQ(run(), 31);
    EXPECT_EQ(calls("iterate "), 0);
}

TEST_F(SamplingPassTest, a_failing_iteration_ends_it) {
    host_.calls.fails["iterate 2"] = 32;
    EXPECT_EQ(run(), 32);
    EXPECT_EQ(calls("iterate "), 1);
    EXPECT_FALSE(anything_drawn());
}

TEST_F(SamplingPassTest, every_failing_call_is_reported_and_nothing_leaks) {
    EXPECT_EQ(run(), 0);
    const int steps = host_.calls.fallible;
    EXPECT_GE(steps, 7);  // two suites, threads, a handle and its lock, two iterations
    for (int n = 1; n <= steps; ++n) {
        host_.calls.fail_at = n;
        const PF_Err error = run();
        const std::string &failed = host_.calls.failed;
        SCOPED_TRACE(failed);
        const bool suite = failed.rfind("acquire", 0) == 0;
        const bool memory = failed == "lock" || failed.rfind("new_handle", 0) == 0;
        EXPECT_EQ(error, suite ? 516 : memory ? 4 : 77);
        EXPECT_FALSE(anything_drawn());
    }
    host_.calls.fail_at = 0;
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(anything_drawn());
}

TEST_F(SamplingPassTest, refused_memory_and_locks) {
    host_.refuse_memory = true;
    EXPECT_EQ(run(), 4);
    host_.refuse_memory = false;
    host_.refuse_locks = true;
    EXPECT_EQ(run(), 4);
    EXPECT_EQ(calls("iterate "), 0);
}

TEST_F(SamplingPassTest, over_range_is_told_to_the_scopes_that_are_on) {
    std::vector<PixelF> source(kWidth * kHeight, PixelF{1, 0.5f, 1.2f, 0.5f});
    std::vector<PixelF> panel(3 * 200 * 200);
    frame_.source = {source.data(), kWidth * 16, kWidth, kHeight};
    frame_.format = kFormatF;
    for (std::size_t i = 0; i < 3; ++i) {
        frame_.panels[i] = {panel.data() + i * 200 * 200, 200 * 16, 200, 200};
    }
    frame_.switches = {1, 1, 0, 0, 0, 0};
    ScopeSampleContext c = context();
    EXPECT_EQ(run(c), 0);
    EXPECT_EQ(c.waveformOverRange, 1);
    EXPECT_EQ(c.paradeOverRange, 0);
    frame_.switches = {0, 1, 1, 0, 0, 0};
    c = context();
    EXPECT_EQ(run(c), 0);
    EXPECT_EQ(c.waveformOverRange, 0);
    EXPECT_EQ(c.paradeOverRange, 1);
}

TEST(SampleMemory, uhd_with_64_parts_stays_below_64_mib) {
    for (const FormatCode format : {kFormat8, kFormat16, kFormatF}) {
        for (const bool monochrome : {true, false}) {
            for (const ParadeMode view : {ParadeMode::kRgb, ParadeMode::kYCbCr}) {
                for (const bool high : {true, false}) {
                    SampledFrame frame;
                    int memory = 0;
                    std::vector<std::uint32_t> bins(768);
                    frame.source = {&memory, 0, 3840, 2160};
                    frame.format = format;
                    frame.high_quality = high;
                    frame.switches = {1, 1, 1, 1, 1, 0};
                    frame.histogram_bins = bins.data();
                    for (WorldView &panel : frame.panels) panel = {&memory, 0, 1000, 597};
                    frame.panels[scope_slot(ScopeKind::kVectorscope)] = {&memory, 0, 1000, 1018};
                    ScopeSettings settings;
                    settings.quality = 3;
                    settings.monochrome = monochrome;
                    settings.waveform_mode = TraceMode::kRgbAndLuma;
                    settings.parade_mode = view;
                    settings.max_waveform_scale = 120.0;
                    settings.histogram_mode = HistogramMode::kRgb;
                    const ScopeSampleContext context = make_sample_context(
                        frame, settings,
                        layout_units(1.0, make_frame_scale({1, 1}, {1, 1}, {1, 1})));
                    const SamplePlan plan = make_sample_plan(context, 64);
                    EXPECT_LT(plan.bytes, std::size_t{64} << 20);
                    EXPECT_GE(plan.vectorscope.count, 1);
                    EXPECT_LE(static_cast<std::size_t>(plan.vectorscope.count) *
                                  plan.vectorscope.grid_bytes(),
                              std::max(kVectorGridBudget, plan.vectorscope.grid_bytes()));
                }
            }
        }
    }
}

}  // namespace
}  // namespace ks
