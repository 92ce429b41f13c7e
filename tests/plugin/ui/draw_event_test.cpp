// Draw events: the calls in order, what survives which failure, and that everything is given back.
#include <gtest/gtest.h>

#include "plugin/ui/event_host.h"
#include "ui/drawbot_path.h"
#include "ui/events.h"

namespace {

class DrawEvent : public testing::Test {
  protected:
    using Lines = std::vector<std::string>;

    PF_Err draw() {
        fake.event(PF_Event_DRAW);
        try {
            return ks::handle_event(&fake.host.in, &fake.host.out, fake.params.data(), &fake.extra);
        } catch (PF_Err error) {
            return error;
        }
    }
    [[nodiscard]] bool handled() const { return fake.extra.evt_out_flags == 1; }
    void expect_given_back(int draws) {
        EXPECT_TRUE(fake.live_paths.empty());
        EXPECT_TRUE(fake.suites_balanced(draws));
        EXPECT_TRUE(fake.host.calls.misuse.empty());
    }

    fake::EventHost fake;
};

TEST_F(DrawEvent, paints_the_three_handles_in_order_and_nothing_of_the_scopes) {
    expected::Scene scene;
    scene.opacity = 50;  // yo = 200 + 540 * 0.7 = 578; xw = 300 + 960 * 0.3 = 588
    fake.show(scene);
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(fake.drawn(), (Lines{"NewPath",
                                   "MoveTo 1260 740",
                                   "LineTo 1260 728",
                                   "LineTo 1248 740",
                                   "LineTo 1260 740",
                                   "FillPath shadow on",
                                   "ReleaseObject",
                                   "PaintRect 300 200 960 18 in 0.5 0.5 0.5 0.75",
                                   "NewPath",
                                   "MoveTo 585 470",
                                   "LineTo 591 470",
                                   "MoveTo 588 470",
                                   "LineTo 588 578",
                                   "MoveTo 585 686",
                                   "LineTo 591 686",
                                   "StrokePath shadow on",
                                   "ReleaseObject",
                                   "NewPath",
                                   "MoveTo 583 578",
                                   "LineTo 588 573",
                                   "LineTo 593 578",
                                   "LineTo 588 583",
                                   "FillPath shadow on",
                                   "ReleaseObject"}));
    EXPECT_TRUE(fake.changed().empty());
    expect_given_back(1);
}

TEST_F(DrawEvent, asks_for_reference_colour_supplier_and_surface_in_order) {
    draw();
    Lines asked;
    for (const std::string &line : fake.host.calls.log) {
        if (line.find("Get") != std::string::npos) asked.push_back(line);
    }
    EXPECT_EQ(asked, (Lines{"PF_GetDrawingReference", "PF_GetPreferredForegroundColor",
                            "GetSupplier", "GetSurface"}));
}

TEST_F(DrawEvent, paints_in_window_pixels_of_both_windows) {
    fake.window.zoom_den = 4;
    fake.window.pan_x = 10;
    fake.window.layer_x = 40;
    draw();
    EXPECT_TRUE(fake.logged("PaintRect 95 50 240 18"));
    EXPECT_TRUE(fake.logged("layer_to_comp at -7/2400"));
    fake.host.calls.log.clear();
    fake.context_data.w_type = PF_Window_LAYER;
    draw();
    EXPECT_TRUE(fake.logged("PaintRect 85 50 240 18"));
    EXPECT_FALSE(fake.logged("layer_to_comp"));
    expect_given_back(2);
}

TEST_F(DrawEvent, full_opacity_has_no_stem) {
    expected::Scene scene;
    scene.opacity = 100;
    fake.show(scene);
    draw();
    EXPECT_FALSE(fake.logged("StrokePath"));
    EXPECT_TRUE(fake.logged("FillPath"));
}

TEST_F(DrawEvent, disabled_compare_hides_the_wipe_alone) {
    expected::Scene scene;
    scene.layout = 4;
    scene.compare_disabled = true;
    fake.show(scene);
    draw();
    EXPECT_TRUE(fake.drawn().empty());
    EXPECT_TRUE(handled());
    // Other flags of the panel do not disable it.
    fake.definitions[11].ui_flags = PF_PUI_ECW_SEPARATOR;
    draw();
    EXPECT_TRUE(fake.logged("FillPath"));
}

TEST_F(DrawEvent, scopes_only_paints_nothing_and_is_handled) {
    expected::Scene scene;
    scene.layout = 7;
    fake.show(scene);
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_TRUE(fake.drawn().empty());
    expect_given_back(1);
}

TEST_F(DrawEvent, null_drawing_reference_is_survived_and_never_handed_on) {
    fake.draw_reference = 0;
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_FALSE(fake.logged("GetSupplier"));
    EXPECT_TRUE(fake.drawn().empty());
    expect_given_back(0);
}

TEST_F(DrawEvent, supplier_without_a_path_is_survived) {
    fake.null_path = true;
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(fake.drawn(), (Lines{"NewPath"}));
    expect_given_back(1);
}

TEST_F(DrawEvent, first_error_skips_all_later_drawing_but_the_release) {
    fake.host.calls.fails = {{"LineTo 1260 728", 5}};
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(fake.drawn(),
              (Lines{"NewPath", "MoveTo 1260 740", "LineTo 1260 728", "ReleaseObject"}));
    expect_given_back(1);
}

TEST_F(DrawEvent, failing_theme_calls_are_survived) {
    for (const char *call :
         {"FillPath shadow on", "StrokePath shadow on", "PF_GetPreferredForegroundColor"}) {
        fake.host.calls.fails = {{call, 5}};
        EXPECT_EQ(draw(), 0) << call;
        EXPECT_TRUE(handled());
        EXPECT_TRUE(fake.live_paths.empty());
    }
    expect_given_back(3);
}

TEST_F(DrawEvent, failing_release_ends_the_painting_and_does_not_escape) {
    fake.host.calls.fails = {{"ReleaseObject", 5}};
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(handled());
    EXPECT_EQ(fake.drawn().back(), "ReleaseObject");
    EXPECT_FALSE(fake.logged("PaintRect"));
    expect_given_back(1);
}

TEST_F(DrawEvent, failing_draw_and_release_together_are_survived) {
    fake.host.calls.fails = {{"FillPath shadow on", 6}, {"ReleaseObject", 5}};
    EXPECT_EQ(draw(), 0);
    expect_given_back(1);
}

TEST_F(DrawEvent, path_is_released_once_by_its_end_or_before_it) {
    ks::DrawbotSuites suites{};
    ASSERT_EQ(ks::AcquireDrawbotSuites(&fake.host.in, &fake.host.out, &suites), 0);
    const auto supplier = fake::reference<DRAWBOT_SupplierRef>(fake::EventHost::kSupplier);
    fake.host.calls.fails = {{"ReleaseObject", 5}};
    { const ks::DrawbotPath left_open(suites, supplier); }
    EXPECT_EQ(fake.drawn(), (Lines{"NewPath", "ReleaseObject"})) << "its error is swallowed";
    fake.host.calls.log.clear();
    {
        ks::DrawbotPath released(suites, supplier);
        try {
            released.release();
            FAIL() << "no exception";
        } catch (const ks::DRAWBOT_Exception &failure) {
            EXPECT_EQ(failure.error, 5);
        }
    }
    EXPECT_EQ(fake.drawn(), (Lines{"NewPath", "ReleaseObject"}));
    EXPECT_TRUE(fake.live_paths.empty());
}

TEST_F(DrawEvent, every_call_failing_in_turn_is_survived) {
    EXPECT_EQ(draw(), 0);
    const int calls = fake.host.calls.fallible;
    ASSERT_GT(calls, 30);
    for (int n = 1; n <= calls; ++n) {
        fake.host.held.clear();
        fake.host.next_command();
        fake.host.calls.fail_at = n;
        const PF_Err error = draw();
        const std::string failed = fake.host.calls.failed;
        SCOPED_TRACE(failed);
        if (failed.rfind("acquire ", 0) == 0) {
            EXPECT_EQ(error, 516);
            EXPECT_FALSE(handled());
        } else {
            EXPECT_EQ(error, 0);
            EXPECT_TRUE(handled());
        }
        EXPECT_TRUE(fake.live_paths.empty());
        EXPECT_TRUE(fake.host.calls.misuse.empty());
        EXPECT_EQ(fake.host.held[std::make_pair(std::string(kPFEffectCustomUISuite), 1)], 0);
        EXPECT_EQ(
            fake.host.held[std::make_pair(std::string(kPFEffectCustomUIOverlayThemeSuite), 1)], 0);
        if (failed.rfind("acquire DRAWBOT", 0) != 0) {
            EXPECT_TRUE(fake.suites_balanced(fake.logged("acquire DRAWBOT Surface") ? 1 : 0));
        }
    }
}

TEST_F(DrawEvent, refused_drawbot_suite_is_516_with_its_message_and_the_earlier_ones_held) {
    fake.host.refused = {kDRAWBOT_SupplierSuite};
    EXPECT_EQ(draw(), 516);
    EXPECT_STREQ(fake.host.out.return_msg, "Not able to acquire AEFX Suite.");
    EXPECT_NE(fake.host.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE, 0);
    EXPECT_FALSE(fake.logged("release DRAWBOT"));
    EXPECT_EQ(fake.host.held[std::make_pair(std::string(kDRAWBOT_DrawSuite), 1)], 1);
}

TEST_F(DrawEvent, missing_basic_suite_is_516) {
    fake.host.in.pica_basicP = nullptr;
    EXPECT_EQ(draw(), 516);
}

TEST_F(DrawEvent, surface_suite_is_acquired_at_1_and_released_at_2) {
    draw();
    EXPECT_TRUE(fake.logged("acquire DRAWBOT Surface Suite 1"));
    EXPECT_TRUE(fake.logged("release DRAWBOT Surface Suite 2"));
    EXPECT_FALSE(fake.logged("release DRAWBOT Surface Suite 1"));
}

TEST_F(DrawEvent, ratios_that_are_not_above_0_do_not_divide_by_zero) {
    fake.host.in.pixel_aspect_ratio = {0, 0};
    fake.host.in.downsample_x = {0, 0};
    fake.host.in.downsample_y = {0, 0};
    EXPECT_EQ(draw(), 0);
    EXPECT_TRUE(fake.logged("PaintRect 300 200 960 18"));
}

}  // namespace
