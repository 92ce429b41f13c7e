// Making and releasing a surface, call by call.
#include <gtest/gtest.h>

#include "plugin/draw/calls_fixture.h"

namespace {

using namespace draw_test;

constexpr PF_Err kAborted = 77;

class SurfaceCalls : public CallsTest {};

TEST_F(SurfaceCalls, creation_makes_bitmap_and_graphics_in_this_order) {
    ASSERT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(host.calls.telling(),
              (Log{"abort", "GdipCreateBitmapFromScan0 4 2 16 925707",
                   "GdipGetImageGraphicsContext image1", "GdipDisposeImage image1",
                   "GdipSetCompositingMode graphics2 0", "GdipSetCompositingQuality graphics2 2",
                   "GdipSetSmoothingMode graphics2 2", "GdipSetTextRenderingHint graphics2 4"}));
    release();
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, creation_takes_memory_for_raster_bitmap_and_graphics) {
    ASSERT_EQ(create(), PF_Err_NONE);
    for (const char *taken : {"new_handle 32", "new_handle 24", "new_handle 16"}) {
        EXPECT_EQ(host.calls.count(taken), 1) << taken;
    }
    EXPECT_LT(host.calls.first("abort"), host.calls.first("new_handle 32"));
    release();
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, release_deletes_the_graphics_and_then_frees_the_memory) {
    ASSERT_EQ(create(), PF_Err_NONE);
    take_log();
    EXPECT_EQ(release(), PF_Err_NONE);
    EXPECT_EQ(host.calls.telling(), (Log{"abort", "GdipDeleteGraphics graphics2"}));
    EXPECT_LT(host.calls.first("GdipDeleteGraphics graphics2"), host.calls.first("dispose"));
    EXPECT_EQ(host.calls.count("dispose"), 2);
    EXPECT_EQ(surface.raster, nullptr);
    EXPECT_EQ(surface.graphics_memory, nullptr);
    EXPECT_EQ(surface.graphics, nullptr);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, raster_is_unlocked_while_drawing_and_the_graphics_memory_is_locked) {
    ASSERT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(host.calls.block_of(surface.raster, "look")->locks, 0);
    EXPECT_EQ(host.calls.block_of(surface.graphics_memory, "look")->locks, 1);
    EXPECT_EQ(host.calls.live_blocks(), 2);
    release();
}

TEST_F(SurfaceCalls, bitmap_is_made_over_the_raster_and_does_not_outlive_the_creation) {
    ASSERT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(gdiplus().raster,
              reinterpret_cast<std::uint8_t *>(host.bytes(surface.raster).data()));
    EXPECT_EQ(gdiplus().alive.size(), 1u);
    release();
}

class SurfaceQuality : public SurfaceCalls, public testing::WithParamInterface<PF_Quality> {};

TEST_P(SurfaceQuality, takes_the_fast_modes_below_the_best_quality) {
    host.in.quality = GetParam();
    ASSERT_EQ(create(), PF_Err_NONE);
    const Log calls = host.calls.telling();
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(Log(calls.end() - 4, calls.end()),
              (Log{"GdipSetCompositingMode graphics2 0", "GdipSetCompositingQuality graphics2 1",
                   "GdipSetSmoothingMode graphics2 1", "GdipSetTextRenderingHint graphics2 0"}));
    release();
}
INSTANTIATE_TEST_SUITE_P(Qualities, SurfaceQuality,
                         testing::Values(PF_Quality_LO, PF_Quality_DRAWING_AUDIO, 2));

TEST_F(SurfaceCalls, failing_modes_are_only_noted) {
    gdiplus().fails["GdipSetSmoothingMode"] = 6;
    EXPECT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(surface.graphics->last_status, 6);
    EXPECT_EQ(release(), PF_Err_NONE);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, bitmap_status_is_not_looked_at) {
    gdiplus().fails = {{"GdipCreateBitmapFromScan0", 3}, {"GdipGetImageGraphicsContext", 2}};
    EXPECT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(surface.graphics->native, nullptr);
    EXPECT_EQ(surface.graphics->last_status, 2);
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_EQ(release(), PF_Err_NONE);
    host.expect_nothing_held();
}

// One way for creation to fail.
struct Failure {
    const char *name;
    int fail_at;         // fallible host call, from 1; 0 for none
    const char *throws;  // GDI+ function
    PF_Err code;
    const char *message;
};

class SurfaceFailure : public SurfaceCalls, public testing::WithParamInterface<Failure> {};

TEST_P(SurfaceFailure, shows_its_message_and_holds_nothing) {
    const Failure &failure = GetParam();
    host.calls.fail_at = failure.fail_at;
    host.calls.fail_code = kAborted;
    gdiplus().throws = failure.throws;
    EXPECT_EQ(create(), failure.code);
    EXPECT_STREQ(host.out.return_msg, failure.message);
    const bool told = failure.message[0] != '\0';
    EXPECT_EQ(host.out.out_flags, told ? PF_OutFlag_DISPLAY_ERROR_MESSAGE : 0);
    EXPECT_EQ(surface.raster, nullptr);
    EXPECT_EQ(surface.graphics_memory, nullptr);
    EXPECT_EQ(surface.graphics, nullptr);
    host.expect_nothing_held();
}
INSTANTIATE_TEST_SUITE_P(
    Failures, SurfaceFailure,
    testing::Values(
        Failure{"abort", 1, "", kAborted, ""},
        Failure{"raster_memory", 3, "", 4, "ksDrawSuite: Bitmap memory not allocated"},
        Failure{"raster_lock", 4, "", 4, "ksDrawSuite: Could not lock bitmap memory"},
        Failure{"bitmap_memory", 5, "", 4, "ksDrawSuite: GDI+ Bitmap memory not allocated"},
        Failure{"bitmap_lock", 6, "", 4, "ksDrawSuite: GDI+ Bitmap memory not allocated"},
        Failure{"bitmap_exception", 0, "GdipCreateBitmapFromScan0", 512,
                "ksDrawSuite: Exception creating GDI+ Bitmap"},
        Failure{"graphics_memory", 7, "", 4, "ksDrawSuite: GDI+ Graphics memory not allocated"},
        Failure{"graphics_lock", 8, "", 512, "ksDrawSuite: GDI+ context not created"},
        Failure{"graphics_exception", 0, "GdipGetImageGraphicsContext", 512,
                "ksDrawSuite: Exception creating GDI+ Graphics"}),
    [](const auto &tested) { return std::string(tested.param.name); });

TEST_F(SurfaceCalls, the_message_itself_is_the_format) {
    host.calls.fail_at = 3;
    create();
    const Log log = take_log();
    EXPECT_NE(std::find(log.begin(), log.end(), "sprintf ksDrawSuite: Bitmap memory not allocated"),
              log.end());
}

TEST_F(SurfaceCalls, creation_in_an_aborted_render_allocates_nothing) {
    host.calls.fails["abort"] = kAborted;
    EXPECT_EQ(create(), kAborted);
    EXPECT_EQ(take_log(), Log{"abort"});
}

TEST_F(SurfaceCalls, creation_throws_without_the_basic_suite) {
    host.in.pica_basicP = nullptr;
    EXPECT_THROW(create(), PF_Err);
    EXPECT_EQ(take_log(), Log{});
}

TEST_F(SurfaceCalls, creation_throws_when_the_handle_suite_is_refused) {
    host.refused.insert(kPFHandleSuite);
    try {
        create();
        FAIL() << "nothing thrown";
    } catch (PF_Err code) {
        EXPECT_EQ(code, 516);
    }
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, unknown_format_is_516_from_creation_without_a_message) {
    surface.format = PF_PixelFormat_BGRA32;
    EXPECT_EQ(create(), 516);
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_EQ(host.out.out_flags, 0);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, unknown_format_is_516_from_release_and_everything_is_freed) {
    ASSERT_EQ(create(), PF_Err_NONE);
    world.fill({1, 2, 3, 4});
    surface.format = PF_PixelFormat_BGRA32;
    EXPECT_EQ(release(), 516);
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_EQ(world.get(0, 0).alpha, 1);
    EXPECT_EQ(world.get(3, 1).blue, 4);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, release_without_a_raster_is_512_and_frees_nothing) {
    ASSERT_EQ(create(), PF_Err_NONE);
    const PF_Handle raster = std::exchange(surface.raster, nullptr);
    take_log();
    EXPECT_EQ(release(), 512);
    EXPECT_EQ(take_log(), Log{"abort"});
    EXPECT_STREQ(host.out.return_msg, "");
    EXPECT_EQ(host.calls.live_blocks(), 2);
    surface.raster = raster;
    release();
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, release_without_a_raster_is_512_also_in_an_aborted_render) {
    host.calls.fails["abort"] = kAborted;
    EXPECT_EQ(release(), 512);
}

TEST_F(SurfaceCalls, release_in_an_aborted_render_copies_nothing_and_frees_everything) {
    ASSERT_EQ(create(), PF_Err_NONE);
    world.fill({1, 2, 3, 4});
    host.calls.fails["abort"] = kAborted;
    take_log();
    EXPECT_EQ(release(), kAborted);
    EXPECT_EQ(host.calls.telling(), (Log{"abort", "GdipDeleteGraphics graphics2"}));
    EXPECT_LT(host.calls.first("GdipDeleteGraphics graphics2"), host.calls.first("dispose"));
    EXPECT_EQ(world.get(0, 0).alpha, 1);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, release_whose_lock_fails_says_so_and_frees_everything) {
    ASSERT_EQ(create(), PF_Err_NONE);
    world.fill({1, 2, 3, 4});
    host.refuse_locks = true;
    EXPECT_EQ(release(), 4);
    EXPECT_STREQ(host.out.return_msg, "ksDrawSuite: Could not lock bitmap memory");
    EXPECT_EQ(world.get(0, 0).alpha, 1);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, release_takes_no_suite_anew_and_frees_everything_without_one) {
    ASSERT_EQ(create(), PF_Err_NONE);
    host.refused.insert(kPFHandleSuite);
    EXPECT_EQ(release(), PF_Err_NONE);
    EXPECT_EQ(gdiplus().alive.size(), 0u);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, a_surface_can_be_made_again_after_its_release) {
    for (int pass = 0; pass < 2; ++pass) {
        ASSERT_EQ(create(), PF_Err_NONE);
        ASSERT_EQ(release(), PF_Err_NONE);
    }
    host.expect_nothing_held();
}

// GDI+ refuses a bitmap without pixels, which is noted like any failure of it.
class OddWorld : public SurfaceCalls, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(OddWorld, is_survived) {
    surface.world.width = GetParam().first;
    surface.world.height = GetParam().second;
    EXPECT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(take_log()[6], "GdipCreateBitmapFromScan0 0 0 0 925707");
    EXPECT_EQ(release(), PF_Err_NONE);
    EXPECT_TRUE(world.padding_untouched());
    host.expect_nothing_held();
}
INSTANTIATE_TEST_SUITE_P(Sizes, OddWorld,
                         testing::Values(std::pair{0, 2}, std::pair{4, 0}, std::pair{-4, 2},
                                         std::pair{4, -2}, std::pair{-4, -2}, std::pair{0, 0},
                                         std::pair{-2147483647 - 1, 2}));

TEST_F(SurfaceCalls, rows_longer_than_gdiplus_can_address_are_no_memory) {
    surface.world.width = 0x20000000;
    EXPECT_EQ(create(), 4);
    EXPECT_STREQ(host.out.return_msg, "ksDrawSuite: Bitmap memory not allocated");
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, world_without_data_is_drawn_on_and_dropped) {
    surface.world.data = nullptr;
    ASSERT_EQ(create(), PF_Err_NONE);
    EXPECT_EQ(host.bytes(surface.raster), std::vector<char>(32, 0));
    EXPECT_EQ(release(), PF_Err_NONE);
    host.expect_nothing_held();
}

TEST_F(SurfaceCalls, description_takes_resolution_aspect_and_scale) {
    host.in.downsample_x = {1, 2};
    host.in.downsample_y = {1, 4};
    host.in.pixel_aspect_ratio = {40, 33};
    const auto described = ks::draw::describe_surface(host.in, ks::kFormatF, world.world, 1.5);
    EXPECT_EQ(described.raster, nullptr);
    EXPECT_EQ(described.graphics_memory, nullptr);
    EXPECT_EQ(described.graphics, nullptr);
    EXPECT_EQ(described.format, ks::kFormatF);
    EXPECT_EQ(described.world.data, world.world.data);
    EXPECT_EQ(described.world.rowbytes, world.world.rowbytes);
    EXPECT_EQ(described.den_x, 2u);
    EXPECT_EQ(described.den_y, 4u);
    EXPECT_EQ(described.pixel_aspect, 40.0 / 33.0);
    EXPECT_EQ(described.scale, 1.5);
}

TEST_F(SurfaceCalls, description_takes_missing_ratios_for_full_resolution_and_square_pixels) {
    host.in.downsample_x = {0, 0};
    host.in.downsample_y = {0, 0};
    for (const PF_RationalScale ratio : {PF_RationalScale{1, 0}, {0, 1}, {-4, 3}, {0, 0}}) {
        host.in.pixel_aspect_ratio = ratio;
        const auto described = ks::draw::describe_surface(host.in, ks::kFormat8, world.world, 1.0);
        EXPECT_EQ(described.den_x, 1u);
        EXPECT_EQ(described.den_y, 1u);
        EXPECT_EQ(described.pixel_aspect, 1.0);
    }
}

}  // namespace
