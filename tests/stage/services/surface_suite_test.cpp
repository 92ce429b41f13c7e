// "DRAWBOT Surface Suite": what is recorded, and the state that can be asked for.
#include "stage/services/drawing_host.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SurfaceSuite : public DrawingTest {
  protected:
    DRAWBOT_Rect32 clip_bounds() {
        DRAWBOT_Rect32 rect{-1, -1, -1, -1};
        EXPECT_EQ(surface_suite.GetClipBounds(surface, &rect), 0);
        return rect;
    }
    bool is_within(const DRAWBOT_Rect32 &rect) {
        DRAWBOT_Boolean within = 77;
        EXPECT_EQ(surface_suite.IsWithinClipBounds(surface, &rect, &within), 0);
        return within == 1;
    }
    SPErr clip(const DRAWBOT_Rect32 &rect) { return surface_suite.Clip(surface, supplier, &rect); }
    SPErr transform(const DRAWBOT_MatrixF32 &matrix) {
        return surface_suite.Transform(surface, &matrix);
    }
};

void expect_rect(const DRAWBOT_Rect32 &rect, int left, int top, int width, int height) {
    EXPECT_EQ(rect.left, left);
    EXPECT_EQ(rect.top, top);
    EXPECT_EQ(rect.width, width);
    EXPECT_EQ(rect.height, height);
}

TEST_F(SurfaceSuite, paints_a_rectangle_in_a_colour_of_its_own) {
    const DRAWBOT_ColorRGBA grey{0.5f, 0.5f, 0.5f, 0.75f};
    const DRAWBOT_RectF32 rect{10, 20, 100, 18};
    EXPECT_EQ(surface_suite.PaintRect(surface, &grey, &rect), 0);
    EXPECT_THAT(drawn(), ElementsAre("paint rect 10 20 100 18, color 0.5 0.5 0.5 0.75"));
    EXPECT_EQ(surface_suite.PaintRect(surface, nullptr, &rect), A_Err_PARAMETER);
    EXPECT_EQ(surface_suite.PaintRect(surface, &grey, nullptr), A_Err_PARAMETER);
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(SurfaceSuite, fills_a_path_by_either_rule) {
    const DRAWBOT_BrushRef filling = brush();
    const DRAWBOT_PathRef figure = path();
    path_suite.MoveTo(figure, 1, 2);
    EXPECT_EQ(surface_suite.FillPath(surface, filling, figure, kDRAWBOT_FillType_EvenOdd), 0);
    EXPECT_EQ(surface_suite.FillPath(surface, filling, figure, kDRAWBOT_FillType_Winding), 0);
    EXPECT_EQ(surface_suite.FillPath(surface, filling, figure, 2), A_Err_PARAMETER);
    EXPECT_THAT(drawn(), ElementsAre("fill even-odd, color 0 1 0 1: move 1 2",
                                     "fill, color 0 1 0 1: move 1 2"));
    release(filling);
    release(figure);
}

TEST_F(SurfaceSuite, strokes_a_path_with_the_pens_colour_and_width) {
    const DRAWBOT_PenRef drawing_pen = pen({0, 0, 1, 0.5f}, 3);
    const DRAWBOT_PathRef figure = path();
    path_suite.MoveTo(figure, 1, 2);
    EXPECT_EQ(surface_suite.StrokePath(surface, drawing_pen, figure), 0);
    EXPECT_THAT(drawn(), ElementsAre("stroke 3, color 0 0 1 0.5: move 1 2"));
    release(drawing_pen);
    release(figure);
}

TEST_F(SurfaceSuite, draws_text_with_alignment_and_truncation) {
    const DRAWBOT_BrushRef filling = brush();
    const DRAWBOT_FontRef lettering = font(14);
    const DRAWBOT_PointF32 origin{5, 6};
    const auto draw = [&](const char16_t *text, int alignment, int truncation) {
        return surface_suite.DrawString(surface, filling, lettering, text, &origin, alignment,
                                        truncation, 40);
    };
    EXPECT_EQ(draw(u"Gr\u00FCn", kDRAWBOT_TextAlignment_Left, kDRAWBOT_TextTruncation_None), 0);
    EXPECT_EQ(draw(u"b", kDRAWBOT_TextAlignment_Center, kDRAWBOT_TextTruncation_EndEllipsis), 0);
    EXPECT_THAT(drawn(),
                ElementsAre("text \"Gr\xC3\xBCn\" at 5 6, size 14, color 0 1 0 1",
                            "text \"b\" at 5 6, size 14, centred, ellipsis at 40, color 0 1 0 1"));
    EXPECT_EQ(draw(nullptr, 0, 0), A_Err_PARAMETER);
    EXPECT_EQ(draw(u"b", 3, 0), A_Err_PARAMETER);
    EXPECT_EQ(draw(u"b", 0, 4), A_Err_PARAMETER);
    release(filling);
    release(lettering);
}

TEST_F(SurfaceSuite, draws_an_image_at_a_point) {
    const DRAWBOT_ImageRef shown = image();
    const DRAWBOT_PointF32 origin{5, 6}, bad{kNan, 6};
    EXPECT_EQ(surface_suite.DrawImage(surface, shown, &origin, 0.25f), 0);
    ASSERT_EQ(list.primitives.size(), 1u);
    EXPECT_EQ(list.primitives[0].image.argb, (std::vector<std::uint32_t>{0xFF010203, 0x80040506}));
    EXPECT_THAT(drawn(), ElementsAre("image 2x1 at 5 6, alpha 0.25"));
    EXPECT_NE(surface_suite.DrawImage(surface, shown, &bad, 1), 0);
    EXPECT_NE(surface_suite.DrawImage(surface, shown, &origin, kNan), 0);
    EXPECT_THAT(findings(), ElementsAre("drawbot.not_a_number", "drawbot.not_a_number"));
    release(shown);
}

TEST_F(SurfaceSuite, the_first_clip_is_the_window) {
    expect_rect(clip_bounds(), 0, 0, 640, 480);
}

TEST_F(SurfaceSuite, clips_meet_and_are_kept_by_push_and_pop) {
    EXPECT_EQ(surface_suite.PushStateStack(surface), 0);
    EXPECT_EQ(clip({10, 10, 100, 100}), 0);
    EXPECT_EQ(clip({50, 0, 100, 60}), 0);
    expect_rect(clip_bounds(), 50, 10, 60, 50);
    EXPECT_EQ(surface_suite.PopStateStack(surface), 0);
    expect_rect(clip_bounds(), 0, 0, 640, 480);
    EXPECT_THAT(drawn(),
                ElementsAre("push state", "clip 10 10 100 100", "clip 50 0 100 60", "pop state"));
}

TEST_F(SurfaceSuite, clips_that_do_not_meet_leave_nothing) {
    EXPECT_EQ(clip({10, 10, 10, 10}), 0);
    EXPECT_EQ(clip({30, 30, 10, 10}), 0);
    expect_rect(clip_bounds(), 0, 0, 0, 0);
    EXPECT_FALSE(is_within({10, 10, 1, 1}));
    drawn();
}

TEST_F(SurfaceSuite, a_rectangle_is_within_the_clip_when_all_of_it_is) {
    EXPECT_EQ(clip({10, 10, 100, 100}), 0);
    EXPECT_TRUE(is_within({10, 10, 100, 100}));
    EXPECT_FALSE(is_within({9, 10, 5, 5}));
    EXPECT_FALSE(is_within({100, 100, 11, 5}));
    drawn();
}

TEST_F(SurfaceSuite, clip_bounds_are_in_the_coordinates_of_the_transform) {
    // Translation stands in the third row: twice as large, then 100 to the right.
    EXPECT_EQ(transform({{{2, 0, 0}, {0, 2, 0}, {100, 0, 1}}}), 0);
    EXPECT_EQ(clip({10, 10, 100, 100}), 0);  // 120, 20 to 320, 220
    expect_rect(clip_bounds(), 10, 10, 100, 100);
    EXPECT_EQ(transform({{{0.5f, 0, 0}, {0, 0.5f, 0}, {-50, 0, 1}}}), 0);  // back again
    expect_rect(clip_bounds(), 120, 20, 200, 200);
    drawn();
}

TEST_F(SurfaceSuite, transforms_are_recorded_and_only_affine_ones_are_taken) {
    EXPECT_EQ(transform({{{2, 0, 0}, {0, 3, 0}, {4, 5, 1}}}), 0);
    EXPECT_THAT(drawn(), ElementsAre("transform 2 0 0 0 3 0 4 5 1"));
    EXPECT_EQ(transform({{{1, 0, 0.5f}, {0, 1, 0}, {0, 0, 1}}}), A_Err_PARAMETER);
    EXPECT_EQ(surface_suite.Transform(surface, nullptr), A_Err_PARAMETER);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_EQ(transform({{{1, 0, 0}, {0, kInfinity, 0}, {0, 0, 1}}}), A_Err_PARAMETER);
    EXPECT_THAT(findings(), ElementsAre("drawbot.not_a_number"));
}

TEST_F(SurfaceSuite, a_transform_that_cannot_be_undone_leaves_no_clip) {
    EXPECT_EQ(transform({{{0, 0, 0}, {0, 0, 0}, {0, 0, 1}}}), 0);
    expect_rect(clip_bounds(), 0, 0, 0, 0);
    drawn();
}

TEST_F(SurfaceSuite, policies_are_kept_by_push_and_pop) {
    DRAWBOT_InterpolationPolicy interpolation = -1;
    DRAWBOT_AntiAliasPolicy antialias = -1;
    EXPECT_EQ(surface_suite.GetInterpolationPolicy(surface, &interpolation), 0);
    EXPECT_EQ(surface_suite.GetAntiAliasPolicy(surface, &antialias), 0);
    EXPECT_EQ(interpolation, kDRAWBOT_InterpolationPolicy_Default);
    EXPECT_EQ(antialias, kDRAWBOT_AntiAliasPolicy_Default);
    surface_suite.PushStateStack(surface);
    EXPECT_EQ(surface_suite.SetInterpolationPolicy(surface, kDRAWBOT_InterpolationPolicy_Med), 0);
    EXPECT_EQ(surface_suite.SetAntiAliasPolicy(surface, kDRAWBOT_AntiAliasPolicy_High), 0);
    surface_suite.GetInterpolationPolicy(surface, &interpolation);
    surface_suite.GetAntiAliasPolicy(surface, &antialias);
    EXPECT_EQ(interpolation, kDRAWBOT_InterpolationPolicy_Med);
    EXPECT_EQ(antialias, kDRAWBOT_AntiAliasPolicy_High);
    surface_suite.PopStateStack(surface);
    surface_suite.GetAntiAliasPolicy(surface, &antialias);
    EXPECT_EQ(antialias, kDRAWBOT_AntiAliasPolicy_Default);
    EXPECT_THAT(drawn(),
                ElementsAre("push state", "interpolation on", "antialias on", "pop state"));
    EXPECT_EQ(surface_suite.SetAntiAliasPolicy(surface, 3), A_Err_PARAMETER);
    EXPECT_EQ(surface_suite.SetInterpolationPolicy(surface, -1), A_Err_PARAMETER);
    EXPECT_EQ(surface_suite.GetAntiAliasPolicy(surface, nullptr), A_Err_PARAMETER);
}

TEST_F(SurfaceSuite, flush_changes_nothing) {
    EXPECT_EQ(surface_suite.Flush(surface), 0);
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(SurfaceSuite, window_pixels_are_screen_pixels) {
    float scale = 0;
    EXPECT_EQ(surface_suite.GetTransformToScreenScale(surface, &scale), 0);
    EXPECT_EQ(scale, 1);
}

TEST_F(SurfaceSuite, number_one_draws_too_but_has_no_screen_scale) {
    bool refused = false;
    const auto *first = static_cast<const DRAWBOT_SurfaceSuite1 *>(
        host.suites.acquire(kDRAWBOT_SurfaceSuite, 1, &refused));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->Flush(surface), 0);
    float scale = 0;
    EXPECT_EQ(first->GetTransformToScreenScale(surface, &scale), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_THAT(findings(), ElementsAre("suite.unimplemented"));
}

TEST_F(SurfaceSuite, states_popped_without_a_push_are_a_finding) {
    EXPECT_NE(surface_suite.PopStateStack(surface), 0);
    EXPECT_THAT(findings(), ElementsAre("drawbot.state_balance"));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(SurfaceSuite, an_injected_failure_draws_nothing) {
    const DRAWBOT_ColorRGBA grey{0.5f, 0.5f, 0.5f, 0.75f};
    const DRAWBOT_RectF32 rect{10, 20, 100, 18};
    host.faults.arm_name("DRAWBOT Surface Suite.PaintRect");
    EXPECT_EQ(surface_suite.PaintRect(surface, &grey, &rect), stage::kInjectedError);
    host.faults.reset();
    EXPECT_THAT(drawn(), IsEmpty());
}

}  // namespace
}  // namespace stage_test
