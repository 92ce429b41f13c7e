// Handle suite, world suite and world transform suite through their tables.
#include <limits>

#include "stage/host/active_command.h"
#include "stage/services/pixel_suite_fixture.h"

namespace stage_test {
namespace {

using stage::Depth;

class PixelSuites : public SuiteFixture {
  protected:
    const PF_WorldSuite2 *worlds = suite<PF_WorldSuite2>(kPFWorldSuite, 2);
    const PF_WorldTransformSuite1 *transform =
        suite<PF_WorldTransformSuite1>(kPFWorldTransformSuite, 1);
    const PF_HandleSuite1 *handles = suite<PF_HandleSuite1>(kPFHandleSuite, 2);

    static PF_CompositeMode in_front() {
        PF_CompositeMode mode{};
        mode.xfer = PF_Xfer_IN_FRONT;
        mode.opacity = 255;
        mode.opacitySu = 32768;
        return mode;
    }
    static PF_FloatMatrix scale(double s) { return {{{s, 0, 0}, {0, s, 0}, {0, 0, 1}}}; }
    PF_Err draw(PF_EffectWorld *src, PF_EffectWorld *dst, const PF_FloatMatrix &matrix,
                bool src2dst = false, PF_Quality quality = PF_Quality_HI) {
        const PF_CompositeMode mode = in_front();
        return transform->transform_world(nullptr, quality, PF_MF_Alpha_STRAIGHT, 0, src, &mode,
                                          nullptr, &matrix, 1, src2dst ? 1 : 0, nullptr, dst);
    }
};

TEST_F(PixelSuites, handle_suite_allocates_locks_and_disposes) {
    PF_Handle handle = handles->host_new_handle(3072);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(handles->host_lock_handle(handle), *handle);
    EXPECT_EQ(handles->host_get_handle_size(handle), 3072u);
    handles->host_unlock_handle(handle);
    EXPECT_EQ(handles->host_resize_handle(8, &handle), 0);
    EXPECT_EQ(handles->host_get_handle_size(handle), 8u);
    handles->host_dispose_handle(handle);
    EXPECT_EQ(host.handles.live_count(), 0u);
    EXPECT_EQ(checks(), Names{});
}

TEST_F(PixelSuites, handle_suite_failures) {
    host.faults.arm(1, true);
    EXPECT_EQ(handles->host_new_handle(8), nullptr);
    host.faults.reset();
    PF_Handle handle = handles->host_new_handle(8);
    host.faults.arm(1);
    EXPECT_EQ(handles->host_lock_handle(handle), nullptr);
    EXPECT_EQ(host.handles.info(handle)->locks, 0);
    host.faults.arm(1);
    EXPECT_EQ(handles->host_resize_handle(16, &handle), stage::kInjectedError);
    EXPECT_EQ(host.handles.size(handle), 8u);
    host.faults.reset();
    host.handles.size_limit = 100;
    EXPECT_EQ(handles->host_resize_handle(101, &handle), PF_Err_OUT_OF_MEMORY);
    handles->host_dispose_handle(handle);
    EXPECT_EQ(host.faults.count(), 1u);  // disposal is no fallible call
    EXPECT_EQ(handles->host_resize_handle(1, &handle), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(handles->host_get_handle_size(handle), 0u);
}

TEST_F(PixelSuites, new_world_has_the_asked_format_and_layout) {
    host.options.worlds = {20, 12, true};
    struct Case {
        PF_PixelFormat format;
        int rowbytes;
    };
    for (const Case c : {Case{PF_PixelFormat_ARGB32, 40 + 20}, Case{PF_PixelFormat_ARGB64, 80 + 20},
                         Case{PF_PixelFormat_ARGB128, 160 + 20}}) {
        PF_EffectWorld made{};
        ASSERT_EQ(worlds->PF_NewWorld(nullptr, 10, 4, 1, c.format, &made), 0);
        EXPECT_EQ(made.rowbytes, c.rowbytes);
        PF_PixelFormat format = PF_PixelFormat_INVALID;
        EXPECT_EQ(worlds->PF_GetPixelFormat(&made, &format), 0);
        EXPECT_EQ(format, c.format);
        EXPECT_EQ(worlds->PF_DisposeWorld(nullptr, &made), 0);
    }
    EXPECT_TRUE(host.worlds.plugin_worlds().empty());
    EXPECT_EQ(checks(), Names{});
}

TEST_F(PixelSuites, new_world_refusals_leave_the_record_alone) {
    PF_EffectWorld record{};
    record.width = 77;
    const auto make = [&](int w, int h, PF_PixelFormat format) {
        return worlds->PF_NewWorld(nullptr, w, h, 1, format, &record);
    };
    EXPECT_EQ(make(0, 5, PF_PixelFormat_ARGB32), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(make(5, -1, PF_PixelFormat_ARGB32), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(make(30001, 5, PF_PixelFormat_ARGB32), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(make(5, 5, PF_PixelFormat_BGRA32), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(make(30000, 30000, PF_PixelFormat_ARGB128), PF_Err_OUT_OF_MEMORY);
    host.faults.arm(1);
    EXPECT_EQ(make(5, 5, PF_PixelFormat_ARGB32), stage::kInjectedError);
    EXPECT_EQ(record.width, 77);
    EXPECT_EQ(record.data, nullptr);
    EXPECT_TRUE(host.worlds.plugin_worlds().empty());
}

TEST_F(PixelSuites, pixel_format_of_a_null_or_dead_world_is_a_finding) {
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    EXPECT_EQ(worlds->PF_GetPixelFormat(nullptr, &format), PF_Err_BAD_CALLBACK_PARAM);
    PF_EffectWorld made{};
    ASSERT_EQ(worlds->PF_NewWorld(nullptr, 2, 2, 1, PF_PixelFormat_ARGB32, &made), 0);
    ASSERT_EQ(worlds->PF_DisposeWorld(nullptr, &made), 0);
    EXPECT_EQ(worlds->PF_GetPixelFormat(&made, &format), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(format, PF_PixelFormat_INVALID);
    EXPECT_EQ(checks(), (Names{"world.dead", "world.dead"}));
}

TEST_F(PixelSuites, a_second_disposal_and_a_host_world_are_findings) {
    PF_EffectWorld made{};
    ASSERT_EQ(worlds->PF_NewWorld(nullptr, 2, 2, 1, PF_PixelFormat_ARGB32, &made), 0);
    EXPECT_EQ(worlds->PF_DisposeWorld(nullptr, &made), 0);
    EXPECT_EQ(worlds->PF_DisposeWorld(nullptr, &made), PF_Err_BAD_CALLBACK_PARAM);
    PF_EffectWorld own = world(2, 2, Depth::U8);
    EXPECT_EQ(worlds->PF_DisposeWorld(nullptr, &own), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), (Names{"world.dead", "world.not_owned"}));
    EXPECT_NE(host.worlds.find(&own), nullptr);
}

TEST_F(PixelSuites, an_injected_disposal_failure_disposes_all_the_same) {
    PF_EffectWorld made{};
    ASSERT_EQ(worlds->PF_NewWorld(nullptr, 2, 2, 1, PF_PixelFormat_ARGB32, &made), 0);
    host.faults.arm(1);
    EXPECT_EQ(worlds->PF_DisposeWorld(nullptr, &made), stage::kInjectedError);
    EXPECT_TRUE(host.worlds.plugin_worlds().empty());
}

TEST_F(PixelSuites, a_record_stretched_beyond_its_pixels_is_refused) {
    PF_EffectWorld src = world(4, 4, Depth::U8), dst = world(4, 4, Depth::U8);
    src.height = 5;
    EXPECT_EQ(utils->copy(nullptr, &src, &dst, nullptr, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{"world.record"});
}

TEST_F(PixelSuites, copy_between_depths_is_refused) {
    PF_EffectWorld src = world(4, 4, Depth::U8), dst = world(4, 4, Depth::Float);
    EXPECT_EQ(utils->copy(nullptr, &src, &dst, nullptr, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(transform->copy(nullptr, &src, &dst, nullptr, nullptr), PF_Err_BAD_CALLBACK_PARAM);
}

TEST_F(PixelSuites, copy_stretches_by_the_quality_of_the_command_and_copy_hq_always_smoothly) {
    PF_EffectWorld src = world(2, 1, Depth::U8), dst = world(4, 1, Depth::U8);
    at<PF_Pixel>(src, 1, 0) = {255, 200, 200, 200};
    PF_InData in_data{};
    stage::ActiveCommand command;
    command.in_data = &in_data;
    const auto second = [&] { return at<PF_Pixel>(dst, 1, 0).red; };

    EXPECT_EQ(utils->copy(nullptr, &src, &dst, nullptr, nullptr), 0);  // outside: high
    EXPECT_EQ(second(), 50);
    host.active = &command;
    in_data.quality = PF_Quality_LO;
    EXPECT_EQ(utils->copy(nullptr, &src, &dst, nullptr, nullptr), 0);
    EXPECT_EQ(second(), 0);
    EXPECT_EQ(transform->copy_hq(nullptr, &src, &dst, nullptr, nullptr), 0);
    EXPECT_EQ(second(), 50);
    in_data.quality = PF_Quality_HI;
    EXPECT_EQ(transform->copy(nullptr, &src, &dst, nullptr, nullptr), 0);
    EXPECT_EQ(second(), 50);
    host.active = nullptr;
}

TEST_F(PixelSuites, transfer_rect_takes_a_null_rectangle_as_the_whole_source) {
    PF_EffectWorld src = world(2, 2, Depth::U8), dst = world(4, 4, Depth::U8);
    utils->fill(nullptr, nullptr, nullptr, &dst);
    const PF_Pixel red{255, 255, 0, 0};
    utils->fill(nullptr, &red, nullptr, &src);
    const PF_CompositeMode mode = in_front();
    EXPECT_EQ(transform->transfer_rect(nullptr, PF_Quality_HI, PF_MF_Alpha_STRAIGHT, 0, nullptr,
                                       &src, &mode, nullptr, 3, -1, &dst),
              0);
    EXPECT_EQ(at<PF_Pixel>(dst, 3, 0).red, 255);
    EXPECT_EQ(at<PF_Pixel>(dst, 2, 0).red, 0);
    EXPECT_EQ(at<PF_Pixel>(dst, 3, 1).red, 0);
}

TEST_F(PixelSuites, transfer_rect_refuses_masks_missing_modes_and_unknown_modes) {
    PF_EffectWorld src = world(2, 2, Depth::U8), dst = world(2, 2, Depth::U8);
    const PF_Pixel red{255, 255, 0, 0};
    utils->fill(nullptr, &red, nullptr, &src);
    PF_CompositeMode mode = in_front();
    PF_MaskWorld mask{};
    const auto transfer = [&](const PF_CompositeMode *m, const PF_MaskWorld *k) {
        return transform->transfer_rect(nullptr, PF_Quality_HI, PF_MF_Alpha_STRAIGHT, 0, nullptr,
                                        &src, m, k, 0, 0, &dst);
    };
    EXPECT_EQ(transfer(&mode, &mask), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(transfer(nullptr, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    mode.xfer = PF_Xfer_DISSOLVE;
    EXPECT_EQ(transfer(&mode, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(at<PF_Pixel>(dst, 0, 0).red, 0);
}

TEST_F(PixelSuites, transform_world_reads_the_matrix_in_either_direction) {
    for (const bool src2dst : {false, true}) {
        PF_EffectWorld src = world(4, 4, Depth::U8), dst = world(4, 4, Depth::U8);
        const PF_Pixel red{255, 255, 0, 0};
        utils->fill(nullptr, &red, nullptr, &src);
        EXPECT_EQ(draw(&src, &dst, scale(src2dst ? 0.5 : 2), src2dst), 0);
        EXPECT_EQ(at<PF_Pixel>(dst, 1, 1).red, 255);
        EXPECT_EQ(at<PF_Pixel>(dst, 2, 1).alpha, 0);
        EXPECT_EQ(at<PF_Pixel>(dst, 1, 2).alpha, 0);
    }
}

TEST_F(PixelSuites, transform_world_interpolates_at_high_quality_only) {
    for (const PF_Quality quality : {PF_Quality_HI, PF_Quality_LO, PF_Quality_DRAWING_AUDIO}) {
        PF_EffectWorld src = world(2, 2, Depth::U8), dst = world(1, 1, Depth::U8);
        const PF_Pixel black{255, 0, 0, 0};
        utils->fill(nullptr, &black, nullptr, &src);
        at<PF_Pixel>(src, 1, 1).red = 200;
        EXPECT_EQ(draw(&src, &dst, scale(2), false, quality), 0);
        EXPECT_EQ(at<PF_Pixel>(dst, 0, 0).red, quality == PF_Quality_HI ? 50 : 200);
    }
}

TEST_F(PixelSuites, transform_world_with_an_unusable_matrix_draws_nothing_and_succeeds) {
    PF_EffectWorld src = world(2, 2, Depth::U8), dst = world(2, 2, Depth::U8);
    const PF_Pixel red{255, 255, 0, 0};
    utils->fill(nullptr, &red, nullptr, &src);
    for (const double s :
         {0.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(draw(&src, &dst, scale(s)), 0);
        EXPECT_EQ(draw(&src, &dst, scale(s), true), 0);
    }
    EXPECT_EQ(at<PF_Pixel>(dst, 0, 0).alpha, 0);
}

TEST_F(PixelSuites, transform_world_takes_exactly_one_matrix_and_no_mask) {
    PF_EffectWorld src = world(2, 2, Depth::U8), dst = world(2, 2, Depth::U8);
    const PF_CompositeMode mode = in_front();
    const PF_FloatMatrix matrices[2] = {scale(1), scale(1)};
    PF_MaskWorld mask{};
    const auto call = [&](const PF_FloatMatrix *m, A_long count, const PF_MaskWorld *k) {
        return transform->transform_world(nullptr, PF_Quality_HI, PF_MF_Alpha_STRAIGHT, 0, &src,
                                          &mode, k, m, count, 0, nullptr, &dst);
    };
    EXPECT_EQ(call(matrices, 1, nullptr), 0);
    EXPECT_EQ(call(matrices, 2, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(call(matrices, 0, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(call(nullptr, 1, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(call(matrices, 1, &mask), PF_Err_BAD_CALLBACK_PARAM);
}

TEST_F(PixelSuites, slots_nobody_needs_are_findings) {
    EXPECT_EQ(transform->blend(nullptr, nullptr, nullptr, 0, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(checks(), Names{"suite.unimplemented"});
}

TEST_F(PixelSuites, calls_are_traced_by_suite_and_slot) {
    host.trace.enable(true);
    PF_EffectWorld made{};
    worlds->PF_NewWorld(nullptr, 20, 13, 1, PF_PixelFormat_ARGB32, &made);
    utils->fill(nullptr, nullptr, nullptr, &made);
    worlds->PF_DisposeWorld(nullptr, &made);
    EXPECT_EQ(host.trace.calls(), (Names{"PF World Suite.PF_NewWorld", "utils.fill",
                                         "PF World Suite.PF_DisposeWorld"}));
    EXPECT_EQ(host.trace.entries()[0].arguments, "20x13 argb8 clear");
    EXPECT_EQ(host.trace.entries()[0].result, "0");
    EXPECT_EQ(host.trace.entries()[1].arguments, "20x13 all");
}

}  // namespace
}  // namespace stage_test
