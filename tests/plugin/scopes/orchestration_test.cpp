// One frame's scopes: what is written into the record, drawn, skipped and reported.
#include "scopes/orchestration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "plugin/scopes/iterate_host.h"
#include "plugin/support/render_host.h"
#include "stage/binary/gdiplus_runtime.h"

namespace ks {
namespace {

class OrchestrationTest : public testing::Test {
  protected:
    static constexpr int kWidth = 128, kHeight = 96;

    OrchestrationTest() : iterate_(host_.host) {
        host_.host.in.width = 1920;
        host_.host.in.height = 1080;
        scopes_.output_width = 1920;
        measured_ = host_.make_world(kWidth, kHeight);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                pixel(measured_, x, y) = {255, static_cast<A_u_char>(x * 2),
                                          static_cast<A_u_char>(y * 2), 90};
            }
        }
    }
    void enable(std::initializer_list<ScopeKind> kinds) {
        for (const ScopeKind kind : kinds) {
            const std::size_t slot = scope_slot(kind);
            scopes_.switches[slot] = 1;
            scopes_.kinds[static_cast<std::size_t>(scopes_.count++)] = kind;
            worlds_[slot] = host_.make_world(240, 200);
            scopes_.panels[slot] = &worlds_[slot];
        }
        bins_.assign(768, 0xDEADBEEF);
        scopes_.histogram_bins = bins_.data();
    }
    void enable_all() {
        enable({ScopeKind::kWaveform, ScopeKind::kParade, ScopeKind::kVectorscope,
                ScopeKind::kSlice, ScopeKind::kHistogram});
    }
    PF_Err run() {
        host_.log().clear();
        host_.host.calls.fallible = 0;
        for (PF_EffectWorld *world : scopes_.panels) {
            if (world == nullptr) continue;
            std::fill_n(reinterpret_cast<char *>(world->data), world->rowbytes * world->height, 0);
        }
        PF_Err error = 0;
        try {
            error = run_scopes(&host_.host.in, &host_.host.out, PF_PixelFormat_ARGB32, &measured_,
                               scopes_);
        } catch (PF_Err thrown) {
            error = thrown;
        }
        host_.expect_clean();
        return error;
    }
    static PF_Pixel &pixel(PF_EffectWorld &world, int x, int y) {
        char *row = reinterpret_cast<char *>(world.data) + std::ptrdiff_t{y} * world.rowbytes;
        return reinterpret_cast<PF_Pixel *>(row)[x];
    }
    [[nodiscard]] bool drawn(ScopeKind kind) const {
        const PF_EffectWorld &world = worlds_[scope_slot(kind)];
        const char *data = reinterpret_cast<const char *>(world.data);
        return std::any_of(data, data + world.rowbytes * world.height,
                           [](char c) { return c != 0; });
    }
    [[nodiscard]] bool logged(const std::string &start) const {
        const auto &log = host_.host.calls.log;
        return std::any_of(log.begin(), log.end(),
                           [&](const std::string &call) { return call.rfind(start, 0) == 0; });
    }

    stage::GdiplusRuntime gdiplus_;
    RenderHost host_;
    IterateHost iterate_;
    ScopeSet scopes_;
    PF_EffectWorld measured_{};
    std::array<PF_EffectWorld, kScopeKinds> worlds_{};
    std::vector<std::uint32_t> bins_;
};

TEST_F(OrchestrationTest, all_five_panels_are_drawn) {
    enable_all();
    EXPECT_EQ(run(), 0);
    for (const ScopeKind kind : kScopeWalkOrder) EXPECT_TRUE(drawn(kind));
    // Every second column and row by default; column 0 is black, which is not counted.
    std::uint32_t counted = 0;
    for (std::size_t i = 0; i < 256; ++i) counted += bins_[i];
    EXPECT_EQ(counted, 63u * 48u);
}

TEST_F(OrchestrationTest, the_label_scale_is_written_on_every_render) {
    enable({ScopeKind::kHistogram});
    for (const auto &[layer, output, scale] :
         {std::tuple{1920, 1920, 1.0}, {1920, 480, 2.0}, {3840, 3840, 1.5}}) {
        host_.host.in.width = layer;
        scopes_.output_width = output;
        host_.record().cached_value = -1.0;
        EXPECT_EQ(run(), 0);
        EXPECT_DOUBLE_EQ(host_.record().cached_value, scale);
    }
    scopes_.switches.back() = 1;  // muted
    host_.record().cached_value = -1.0;
    EXPECT_EQ(run(), 0);
    EXPECT_DOUBLE_EQ(host_.record().cached_value, 1.5);
}

TEST_F(OrchestrationTest, without_a_record_nothing_is_drawn) {
    enable_all();
    host_.host.refuse_locks = true;
    EXPECT_EQ(run(), PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_FALSE(logged("checkout"));
    EXPECT_FALSE(drawn(ScopeKind::kWaveform));
    host_.host.refuse_locks = false;
    const PF_Handle record = host_.host.out.sequence_data;
    host_.host.out.sequence_data = nullptr;
    EXPECT_EQ(run(), PF_Err_INTERNAL_STRUCT_DAMAGED);
    host_.host.out.sequence_data = record;
}

TEST_F(OrchestrationTest, muted_scopes_are_not_sampled) {
    enable_all();
    scopes_.switches.back() = 1;
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(logged("iterate "));
    EXPECT_EQ(std::count(bins_.begin(), bins_.end(), 0u), 768);
}

TEST_F(OrchestrationTest, the_slice_alone_needs_no_pass) {
    enable({ScopeKind::kSlice});
    scopes_.slice_fraction = 0.5;
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(logged("iterate "));
    EXPECT_TRUE(drawn(ScopeKind::kSlice));
}

TEST_F(OrchestrationTest, the_first_error_ends_the_work) {
    enable_all();
    host_.host.calls.fails["iterate 2"] = 41;
    EXPECT_EQ(run(), 41);
    for (const ScopeKind kind : kScopeWalkOrder) EXPECT_FALSE(drawn(kind));
    EXPECT_DOUBLE_EQ(host_.record().cached_value, 1.0);
    host_.host.calls.fails.clear();
    EXPECT_EQ(run(), 0);
}

TEST_F(OrchestrationTest, every_failing_call_is_reported_and_nothing_stays_open) {
    enable_all();
    ASSERT_EQ(run(), 0);
    const int steps = host_.host.calls.fallible;
    for (int n = 1; n <= steps; ++n) {
        host_.host.calls.fail_at = n;
        const PF_Err error = run();
        SCOPED_TRACE(host_.host.calls.failed);
        EXPECT_NE(error, 0);
    }
    host_.host.calls.fail_at = 0;
    EXPECT_EQ(run(), 0);
}

TEST_F(OrchestrationTest, an_unknown_format_is_an_error) {
    enable({ScopeKind::kWaveform});
    EXPECT_EQ(
        run_scopes(&host_.host.in, &host_.host.out, PF_PixelFormat_INVALID, &measured_, scopes_),
        516);
    host_.expect_clean();
}

TEST_F(OrchestrationTest, a_refused_suite_is_an_error) {
    enable({ScopeKind::kWaveform});
    host_.host.refused.insert(kAEGPIterateSuite);
    EXPECT_EQ(run(), 516);
    EXPECT_FALSE(drawn(ScopeKind::kWaveform));
}

TEST_F(OrchestrationTest, the_same_bytes_on_any_threads) {
    enable_all();
    iterate_.threads = 1;
    ASSERT_EQ(run(), 0);
    std::vector<std::vector<char>> serial;
    for (const PF_EffectWorld &world : worlds_) {
        const char *data = reinterpret_cast<const char *>(world.data);
        serial.emplace_back(data, data + world.rowbytes * world.height);
    }
    iterate_.parallel = true;
    for (const A_long threads : {2, 8, 24}) {  // 96 rows
        iterate_.threads = threads;
        ASSERT_EQ(run(), 0);
        for (std::size_t i = 0; i < kScopeKinds; ++i) {
            EXPECT_EQ(std::memcmp(worlds_[i].data, serial[i].data(), serial[i].size()), 0);
        }
    }
}

}  // namespace
}  // namespace ks
