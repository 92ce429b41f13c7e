// One frame: which host calls are made, in which order, and what stays behind.
#include <gtest/gtest.h>

#include <cmath>

#include "plugin/support/render_host.h"

namespace ks {
namespace {

const std::vector<std::string> kDrawing{"new_world", "transfer", "transform",     "copy",
                                        "fill",      "iterate",  "dispose_world", "abort"};

std::string checkouts(std::vector<int> indices) {
    std::string text;
    for (const int i : indices) text += "checkout " + std::to_string(i) + "\ncheckin\n";
    return text;
}

TEST(RenderFrame, reads_its_settings_in_order_each_checked_in_at_once) {
    RenderHost host;
    host.show_only({kParamShowWaveformMonitor, kParamShowVectorscope, kParamShowChannelParade,
                    kParamShowSliceWaveform, kParamShowHistogram});
    ASSERT_EQ(host.render(), 0);
    const std::string read = host.calls({"checkout", "checkin"});
    const std::string expected =
        checkouts({19, 20, 21, 22, 23, 24, 2, 6, 15, 7, 8, 9, 59, 28, 44, 39, 51, 49, 56, 61});
    EXPECT_EQ(read.substr(0, expected.size()), expected);
    host.expect_clean();
}

TEST(RenderFrame, sizes_of_hidden_scopes_are_not_read) {
    RenderHost host;
    host.show_only({});
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"checkout", "checkin"}),
              checkouts({19, 20, 21, 22, 23, 24, 2, 6, 15, 7, 8, 9, 59, 61}));
    host.expect_clean();
}

TEST(RenderFrame, four_way_classic_by_default) {
    RenderHost host;
    ASSERT_EQ(host.render(), 0);
    std::string expected =
        "new_world 200x130 cleared\n"  // waveform monitor
        "new_world 200x130 cleared\n"  // channel parade
        "new_world 200x218 cleared\n"  // vectorscope
        "new_world 1920x1080\n"        // corrected image
        "copy 1920x1080 to 1920x1080\n"
        "iterate_generic 2\n"  // the scopes are measured, their traces drawn
        "iterate_generic 2\n"
        "abort\nabort\nabort\nabort\nabort\nabort\n"  // before and after each graticule
        "fill 1920x1080 255,30,30,30\n"
        "transform 1920x1080 scale 1.33333,1.33333 by -640,0 rect 0,0,1920,1080 to 1920x1080\n";
    for (const char *corner : {"480,810", "960,810", "1440,810"}) {
        expected +=
            "new_world 480x270 cleared\n"
            "transform 1920x1080 scale 4,4 by 0,0 rect 0,0,480,270 to 480x270\n"
            "abort\n"
            "iterate8 480x270 in place progress 0..270\n"
            "transfer 0,0,480,270 at " +
            std::string(corner) +
            " opacity 255/32768 to 1920x1080\n"
            "dispose_world 480x270\n";
    }
    expected +=
        // Stacking order 1, 2, 3: the last one first.
        "transfer 0,0,200,130 at 0,0 opacity 255/32768 to 1920x1080\n"
        "dispose_world 200x130\n"
        "transfer 0,0,200,218 at 0,0 opacity 255/32768 to 1920x1080\n"
        "dispose_world 200x218\n"
        "transfer 0,0,200,130 at 0,0 opacity 255/32768 to 1920x1080\n"
        "dispose_world 200x130\n"
        "dispose_world 1920x1080\n";
    EXPECT_EQ(host.calls(kDrawing), expected);
    host.expect_clean();
}

TEST(RenderFrame, four_way_split_is_a_grid) {
    RenderHost host(PF_PixelFormat_ARGB64, 400, 300);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 3);
    host.set_popup(kParamViewChannels, 2);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"transform", "transfer", "iterate"}),
              "transform 400x300 scale 2,2 by 0,0 rect 0,0,400,300 to 400x300\n"
              "transform 400x300 scale 2,2 by 0,0 rect 0,0,200,150 to 200x150\n"
              "iterate16 200x150 in place progress 0..150\n"
              "transfer 0,0,200,150 at 200,0 opacity 255/32768 to 400x300\n"
              "transform 400x300 scale 2,2 by 0,0 rect 0,0,200,150 to 200x150\n"
              "iterate16 200x150 in place progress 0..150\n"
              "transfer 0,0,200,150 at 0,150 opacity 255/32768 to 400x300\n"
              "transform 400x300 scale 2,2 by 0,0 rect 0,0,200,150 to 200x150\n"
              "iterate16 200x150 in place progress 0..150\n"
              "transfer 0,0,200,150 at 200,150 opacity 255/32768 to 400x300\n");
    host.expect_clean();
}

TEST(RenderFrame, single_copies_the_corrected_image) {
    RenderHost host(PF_PixelFormat_ARGB128, 200, 100);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls(kDrawing),
              "new_world 200x100\n"
              "copy 200x100 to 200x100\n"
              "copy 200x100 to 200x100\n"
              "dispose_world 200x100\n");
    host.expect_clean();
}

TEST(RenderFrame, windowed_reads_position_and_size_before_it_draws) {
    RenderHost host(PF_PixelFormat_ARGB128, 200, 100);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 6);
    host.set_point(kParamMonitorPosition, (10 << 16) + 65535, -1);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"checkout 4", "checkout 5", "fill", "transform"}),
              "checkout 4\n"
              "checkout 5\n"
              "fill 200x100 255,30,30,30\n"
              "transform 200x100 scale 2,2 by -20,2 rect 0,0,200,100 to 200x100\n");
    host.expect_clean();
}

TEST(RenderFrame, windowed_at_size_0_draws_the_background_only) {
    RenderHost host(PF_PixelFormat_ARGB32, 200, 100);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 6);
    host.set_slider(kParamMonitorSize, 0.0);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"transform"}), "");
    host.expect_clean();
}

TEST(RenderFrame, scopes_only_draws_neither_monitor_nor_wipe) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    host.show_only({kParamShowVectorscope});
    host.set_popup(kParamMonitorLayout, 7);
    host.original = host.make_world(400, 300);
    host.has_original = true;
    host.set_slider(kParamCompareWithOriginal, 50.0);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls(kDrawing),
              "new_world 200x218 cleared\n"
              "iterate_generic 2\n"
              "iterate_generic 2\n"
              "abort\nabort\n"
              "fill 400x300 255,30,30,30\n"
              "transfer 0,0,200,218 at 0,0 opacity 255/32768 to 400x300\n"
              "dispose_world 200x218\n");
    EXPECT_EQ(host.calls({"checkout 11"}), "");
    host.expect_clean();
}

TEST(RenderFrame, separator_layouts_are_drawn_as_single) {
    for (const int layout : {2, 5, 0, 8}) {
        RenderHost host(PF_PixelFormat_ARGB32, 200, 100);
        host.show_only({});
        host.set_popup(kParamMonitorLayout, layout);
        ASSERT_EQ(host.render(), 0);
        EXPECT_EQ(host.calls({"copy", "fill"}),
                  "copy 200x100 to 200x100\ncopy 200x100 to 200x100\n");
    }
}

TEST(RenderFrame, any_correction_takes_one_conversion_pass_after_an_abort_check) {
    for (const Param changed : {kParamMonitorGamma, kParamMonitorGain}) {
        RenderHost host(PF_PixelFormat_ARGB128, 200, 100);
        host.show_only({});
        host.set_popup(kParamMonitorLayout, 1);
        host.set_slider(changed, 1.5);
        ASSERT_EQ(host.render(), 0);
        EXPECT_EQ(host.calls(kDrawing),
                  "new_world 200x100\n"
                  "abort\n"
                  "iterate_float 200x100 progress 0..100\n"
                  "copy 200x100 to 200x100\n"
                  "dispose_world 200x100\n");
        host.expect_clean();
    }
}

TEST(RenderFrame, an_input_smaller_than_the_output_starts_from_a_cleared_image) {
    RenderHost host(PF_PixelFormat_ARGB32, 200, 100);
    host.input = host.make_world(150, 100);
    host.show_only({});
    host.set_popup(kParamMonitorLayout, 1);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"new_world"}), "new_world 200x100 cleared\n");
}

TEST(RenderFrame, unknown_formats_give_516_before_anything_is_read) {
    RenderHost host(PF_PixelFormat_BGRA32, 200, 100);
    EXPECT_EQ(host.render(), 516);
    EXPECT_EQ(host.calls({"checkout", "new_world"}), "");
    host.expect_clean();
}

TEST(RenderFrame, a_refused_world_suite_shows_its_own_message) {
    RenderHost host;
    host.host.refused.insert(kPFWorldSuite);
    EXPECT_EQ(host.render(), 516);
    EXPECT_STREQ(host.host.out.return_msg, "Couldn't load suite PF_WorldSuite2.");
    EXPECT_NE(host.host.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);
    host.expect_clean();
}

TEST(RenderFrame, refused_suites_end_the_frame_with_516_and_nothing_left) {
    for (const char *suite :
         {kPFHandleSuite, kPFWorldTransformSuite, kPFIterate8Suite, kAEGPIterateSuite}) {
        RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
        host.host.refused.insert(suite);
        EXPECT_EQ(host.render(), 516) << suite;
        host.expect_clean();
    }
}

TEST(RenderFrame, each_suite_is_acquired_at_most_once_by_render_scopes_and_drawing_surface) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    host.set_slider(kParamMonitorGain, 2.0);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"acquire"}),
              "acquire PF World Suite 2\n"
              "acquire PF Handle Suite 2\n"
              "acquire PF Iterate8 Suite 1\n"
              "acquire PF Handle Suite 2\n"  // the scopes
              "acquire AEGP Iterate Suite 1\n"
              "acquire PF Handle Suite 2\n"  // three surfaces
              "acquire PF Handle Suite 2\n"
              "acquire PF Handle Suite 2\n"
              "acquire PF World Transform Suite 1\n");
}

TEST(RenderFrame, worlds_without_pixels_are_survived) {
    RenderHost host(PF_PixelFormat_ARGB32, 200, 100);
    host.input.data = nullptr;
    EXPECT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls(kDrawing), "fill 200x100 clear\n");
    host.output.data = nullptr;
    EXPECT_EQ(host.render(), 0);
    EXPECT_TRUE(host.log().empty());
}

TEST(RenderFrame, half_resolution_halves_the_panels) {
    RenderHost host(PF_PixelFormat_ARGB32, 960, 540);
    host.host.in.downsample_x = {1, 2};
    host.host.in.downsample_y = {1, 2};
    host.show_only({kParamShowWaveformMonitor, kParamShowHistogram});
    host.set_popup(kParamMonitorLayout, 7);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"new_world"}),
              "new_world 100x65 cleared\n"
              "new_world 136x51 cleared\n");
}

TEST(RenderFrame, panels_without_pixels_are_left_out_but_stay_listed) {
    RenderHost host(PF_PixelFormat_ARGB32, 200, 100);
    host.host.in.downsample_x = {1, 999};
    host.host.in.downsample_y = {1, 999};
    host.show_only({kParamShowVectorscope, kParamShowHistogram});
    host.set_popup(kParamMonitorLayout, 7);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"new_world", "transfer"}), "");
    EXPECT_EQ(host.record().scope_count, 2);
    host.expect_clean();
}

TEST(RenderFrame, denominators_and_aspect_of_0_count_as_1) {
    RenderHost host(PF_PixelFormat_ARGB32, 1920, 1080);
    host.host.in.downsample_x = {1, 0};
    host.host.in.downsample_y = {1, 0};
    host.host.in.pixel_aspect_ratio = {0, 0};
    host.show_only({kParamShowWaveformMonitor});
    host.set_popup(kParamMonitorLayout, 7);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.calls({"new_world"}), "new_world 200x130 cleared\n");
}

TEST(RenderFrame, histogram_bins_are_one_handle_of_3072_bytes_and_go_with_the_frame) {
    RenderHost host(PF_PixelFormat_ARGB32, 400, 300);
    host.show_only({kParamShowHistogram});
    host.set_popup(kParamMonitorLayout, 7);
    ASSERT_EQ(host.render(), 0);
    EXPECT_EQ(host.host.calls.count("new_handle 3072"), 1);
    EXPECT_LT(host.host.calls.first("new_handle 3072"), host.host.calls.first("lock"));
    host.expect_clean();
    host.host.refuse_memory = true;
    EXPECT_EQ(host.render(), 4);
    host.expect_clean();
}

}  // namespace
}  // namespace ks
