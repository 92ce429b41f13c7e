// What a frame reads and leaves in the instance record, the wipe, the markers, and every failure.
#include <gtest/gtest.h>

#include <cmath>

#include "plugin/support/render_host.h"

namespace ks {
namespace {

std::vector<int> order_of(const InstanceRecord &record) {
    return {record.scope_order[0], record.scope_order[1], record.scope_order[2],
            record.scope_order[3], record.scope_order[4]};
}

RenderHost &scopes_only(RenderHost &host, std::vector<Param> shown) {
    host.set_popup(kParamMonitorLayout, 7);
    host.show_only(std::move(shown));
    return host;
}

TEST(StackingOrder, follows_the_walk_when_the_number_of_scopes_changes) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    scopes_only(host, {kParamShowVectorscope, kParamShowChannelParade, kParamShowSliceWaveform,
                       kParamShowHistogram});
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.record().scope_count, 4);
    EXPECT_EQ(order_of(host.record()), (std::vector<int>{3, 2, 4, 5, 0}));
}

TEST(StackingOrder, survives_while_the_same_number_of_scopes_stays_enabled) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    scopes_only(host, {kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowChannelParade});
    host.record().scope_order[0] = 2;
    host.record().scope_order[1] = 3;
    host.record().scope_order[2] = 1;
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(order_of(host.record()), (std::vector<int>{2, 3, 1, 0, 0}));
    EXPECT_EQ(host.calls({"checkout 27", "checkout 38", "checkout 43"}),
              "checkout 27\ncheckout 43\ncheckout 38\n");
}

TEST(StackingOrder, becomes_empty_without_scopes) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    scopes_only(host, {});
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.record().scope_count, 0);
    EXPECT_EQ(order_of(host.record()), (std::vector<int>{0, 0, 0, 0, 0}));
}

TEST(StackingOrder, passes_over_scopes_that_are_off) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    scopes_only(host, {kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowHistogram});
    ASSERT_EQ(host.render(), 0);  // the record still lists 1, 2, 3
    EXPECT_EQ(host.calls({"checkout 27", "checkout 38", "checkout 43", "checkout 55"}),
              "checkout 38\ncheckout 27\n");
    host.expect_clean();
}

TEST(StackingOrder, damaged_entries_and_repetitions_are_passed_over) {
    for (const int code : {-128, -1, 0, 6, 127, 1}) {
        RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
        scopes_only(host,
                    {kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowChannelParade});
        host.record().scope_order[1] = static_cast<std::int8_t>(code);
        ASSERT_EQ(host.render(), 0) << code;
        EXPECT_EQ(host.calls({"checkout 27"}), "checkout 27\n") << code;
        host.expect_clean();
    }
}

TEST(StackingOrder, every_damaged_count_is_replaced) {
    for (const int count : {-128, -1, 4, 5, 6, 127}) {
        RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
        scopes_only(host, {kParamShowWaveformMonitor});
        host.record().scope_count = static_cast<std::int8_t>(count);
        ASSERT_EQ(host.render(), 0) << count;
        EXPECT_EQ(host.record().scope_count, 1) << count;
        EXPECT_EQ(order_of(host.record()), (std::vector<int>{1, 0, 0, 0, 0})) << count;
    }
}

TEST(StackingOrder, positions_are_whole_pixels_not_scaled_again) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    host.host.in.downsample_x = {1, 2};
    scopes_only(host, {kParamShowVectorscope});
    host.set_point(kParamVectorscopePosition, (15 << 16) + 60000, -3 * 65536 - 1);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"transfer"}),
              "transfer 0,0,100,218 at 15,-4 opacity 255/32768 to 400x300\n");
}

TEST(GammaCache, is_rebuilt_exactly_when_the_gamma_differs) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.powers, 0);  // a new record holds gamma 1
    for (const double gamma : {2.0, 1.0, 2.0}) {
        host.powers = 0;
        host.set_slider(kParamMonitorGamma, gamma);
        ASSERT_EQ(host.render(), 0);
        EXPECT_EQ(host.powers, 767) << gamma;
        EXPECT_EQ(host.record().ramp_key, static_cast<float>(gamma));
    }
    host.powers = 0;
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.powers, 0);
}

TEST(GammaCache, compares_as_doubles) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    host.set_slider(kParamMonitorGamma, 2.2);  // no float equals it
    ASSERT_EQ(host.render(), 0);
    host.powers = 0;
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.powers, 767);
}

TEST(GammaCache, rebuilding_for_gamma_1_restores_a_new_records_tables) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    for (const double gamma : {2.0, 1.0}) {
        host.set_slider(kParamMonitorGamma, gamma);
        ASSERT_EQ(host.render(), 0);
    }
    InstanceRecord fresh{};
    init_instance_record(fresh);
    for (int i = 0; i < kRampEntries + kStepEntries; ++i) {
        ASSERT_EQ(host.record().gamma_tables[i], fresh.gamma_tables[i]) << i;
    }
}

TEST(GammaCache, nan_gamma_and_gain_are_survived) {
    for (const PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB128}) {
        RenderHost host(format, 100, 80);
        host.set_slider(kParamMonitorGamma, std::nan(""));
        host.set_slider(kParamMonitorGain, std::nan(""));
        EXPECT_EQ(host.render(), 0);
        host.expect_clean();
    }
}

TEST(Wipe, without_an_original_nothing_is_read) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"checkout 11", "checkout 12"}), "");
}

TEST(Wipe, at_0_the_opacity_is_not_read) {
    for (const double fraction : {0.0, -5.0, std::nan("")}) {
        RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
        host.show_only({});
        host.original = host.make_world(100, 80);
        host.has_original = true;
        host.set_slider(kParamCompareWithOriginal, fraction);
        ASSERT_EQ(host.render(), 0);
        EXPECT_EQ(host.calls({"checkout 11", "checkout 12"}), "checkout 11\n");
    }
}

TEST(Wipe, lays_the_centred_original_over_the_corrected_image) {
    RenderHost host(PF_PixelFormat_ARGB32, 101, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    host.original = host.make_world(60, 200);
    host.has_original = true;
    host.set_slider(kParamCompareWithOriginal, 50.0);
    host.set_slider(kParamCompareOpacity, 50.0);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"checkout 11", "checkout 12", "transfer"}),
              "checkout 11\ncheckout 12\n"
              "transfer 0,0,50,80 at 20,0 opacity 127/16384 to 101x80\n");
    host.expect_clean();
}

TEST(Wipe, opacities_out_of_range_are_limited) {
    const std::pair<double, const char *> cases[] = {
        {150.0, "255/32768"}, {-1.0, "0/0"}, {std::nan(""), "0/0"}};
    for (const auto &[opacity, code] : cases) {
        RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
        host.show_only({});
        host.set_popup(kParamMonitorLayout, 1);
        host.original = host.make_world(100, 80);
        host.has_original = true;
        host.set_slider(kParamCompareWithOriginal, 100.0);
        host.set_slider(kParamCompareOpacity, opacity);
        ASSERT_EQ(host.render(), 0);
        EXPECT_NE(host.calls({"transfer"}).find(code), std::string::npos) << opacity;
    }
}

const PF_PixelFloat &pixel_at(const PF_EffectWorld &world, int x, int y) {
    const char *row = reinterpret_cast<const char *>(world.data) + y * world.rowbytes;
    return reinterpret_cast<const PF_PixelFloat *>(row)[x];
}

TEST(MarkerLines, wipe_edge_is_additive_white_of_the_opacity) {
    RenderHost host(PF_PixelFormat_ARGB128, 100, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    host.original = host.make_world(100, 80);
    host.has_original = true;
    host.set_slider(kParamCompareWithOriginal, 50.0);
    host.set_slider(kParamCompareOpacity, 25.0);
    ASSERT_EQ(host.render(), 0);
    for (int y = 0; y < 80; ++y) {
        const PF_PixelFloat &p = pixel_at(host.output, 50, y);
        EXPECT_EQ(p.alpha, 0.25f);
        EXPECT_EQ(p.red, 0.25f);
        EXPECT_EQ(p.blue, 0.25f);
    }
    EXPECT_EQ(pixel_at(host.output, 49, 0).red, 0.0f);
    EXPECT_EQ(pixel_at(host.output, 51, 0).red, 0.0f);
}

TEST(MarkerLines, a_full_wipe_has_no_edge) {
    RenderHost host(PF_PixelFormat_ARGB128, 100, 80);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 6);  // the edge would lie inside the frame
    host.original = host.make_world(100, 80);
    host.has_original = true;
    host.set_slider(kParamCompareWithOriginal, 100.0);
    ASSERT_EQ(host.render(), 0);
    for (int x = 0; x < 100; ++x) EXPECT_EQ(pixel_at(host.output, x, 10).red, 0.0f);
}

TEST(MarkerLines, slice_line_is_dashed_green_over_the_picture) {
    RenderHost host(PF_PixelFormat_ARGB128, 100, 81);
    host.show_only({kParamShowSliceWaveform});
    host.set_popup(kParamMonitorLayout, 1);
    ASSERT_EQ(host.render(), 0);
    for (int x = 0; x < 100; ++x) {
        const PF_PixelFloat &p = pixel_at(host.output, x, 40);
        EXPECT_EQ(p.green, x % 9 < 4 ? 0.75f : 0.0f) << x;
        EXPECT_EQ(p.alpha, x % 9 < 4 ? 0.75f : 0.0f) << x;
    }
}

/// Every fallible call of a frame fails in turn: the first error is the result, nothing leaks, and
/// the next frame is whole again.
void fail_each_call(RenderHost &host) {
    ASSERT_EQ(host.render(), 0);
    const int total = host.host.calls.fallible;
    for (int n = 1; n <= total; ++n) {
        host.host.calls.fail_at = n;
        const PF_Err error = host.render();
        const std::string &failed = host.host.calls.failed;
        if (failed.rfind("acquire", 0) == 0) {
            EXPECT_EQ(error, 516) << failed;
        } else if (failed.rfind("new_handle", 0) == 0) {
            EXPECT_EQ(error, 4) << failed;
        } else if (failed == "lock") {
            EXPECT_TRUE(error == 512 || error == 4) << failed;
        } else {
            EXPECT_EQ(error, 77) << failed;
        }
        host.expect_clean();
    }
    host.host.calls.fail_at = 0;
    EXPECT_EQ(host.render(), 0);
    host.expect_clean();
}

class FailEachCall : public testing::TestWithParam<int> {};

TEST_P(FailEachCall, keeps_the_first_error_and_cleans_up) {
    RenderHost host(PF_PixelFormat_ARGB32, 40, 80);
    host.show_only({kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowChannelParade,
                    kParamShowSliceWaveform, kParamShowHistogram});
    host.set_popup(kParamMonitorLayout, GetParam());
    host.set_slider(kParamMonitorGain, 2.0);
    host.original = host.make_world(20, 20);
    host.has_original = true;
    host.set_slider(kParamCompareWithOriginal, 50.0);
    fail_each_call(host);
}

INSTANTIATE_TEST_SUITE_P(Layouts, FailEachCall, testing::Values(1, 3, 4, 6, 7));

TEST(FailedFrame, an_abort_is_returned_and_stops_the_conversion) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    host.set_slider(kParamMonitorGain, 2.0);
    host.host.calls.fails["abort"] = 517;
    EXPECT_EQ(host.render(), 517);
    EXPECT_EQ(host.calls({"iterate"}), "");
    host.expect_clean();
}

TEST(FailedFrame, a_lost_record_is_512) {
    RenderHost host(PF_PixelFormat_ARGB32, 100, 80);
    host.host.refuse_locks = true;
    host.show_only({});
    EXPECT_EQ(host.render(), 512);
    host.expect_clean();
}

}  // namespace
}  // namespace ks
