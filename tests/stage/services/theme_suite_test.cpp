// The overlay theme suite, and the custom-UI suite's drawing reference.
#include "stage/services/drawing_host.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ThemeSuite : public DrawingTest {};

TEST_F(ThemeSuite, answers_with_the_hosts_theme) {
    host.drawbot.theme = {{0.1f, 0.2f, 0.3f, 0.4f}, {0.5f, 0.6f, 0.7f, 0.8f}, 2.5f, 7, 3, -4};
    DRAWBOT_ColorRGBA color{};
    float number = 0;
    A_LPoint offset{};
    EXPECT_EQ(theme_suite.PF_GetPreferredForegroundColor(&color), 0);
    EXPECT_EQ(color.red, 0.1f);
    EXPECT_EQ(color.green, 0.2f);
    EXPECT_EQ(color.blue, 0.3f);
    EXPECT_EQ(color.alpha, 0.4f);
    EXPECT_EQ(theme_suite.PF_GetPreferredShadowColor(&color), 0);
    EXPECT_EQ(color.red, 0.5f);
    EXPECT_EQ(color.alpha, 0.8f);
    EXPECT_EQ(theme_suite.PF_GetPreferredStrokeWidth(&number), 0);
    EXPECT_EQ(number, 2.5f);
    EXPECT_EQ(theme_suite.PF_GetPreferredVertexSize(&number), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(theme_suite.PF_GetPreferredShadowOffset(&offset), 0);
    EXPECT_EQ(offset.x, 3);
    EXPECT_EQ(offset.y, -4);
    EXPECT_EQ(theme_suite.PF_GetPreferredStrokeWidth(nullptr), PF_Err_BAD_CALLBACK_PARAM);
}

TEST_F(ThemeSuite, draws_paths_with_and_without_shadow) {
    const DRAWBOT_PathRef figure = path();
    path_suite.MoveTo(figure, 1, 2);
    EXPECT_EQ(theme_suite.PF_StrokePath(drawing, figure, 1), 0);
    EXPECT_EQ(theme_suite.PF_StrokePath(drawing, figure, 0), 0);
    EXPECT_EQ(theme_suite.PF_FillPath(drawing, figure, 1), 0);
    EXPECT_EQ(theme_suite.PF_FillPath(drawing, figure, 0), 0);
    EXPECT_THAT(drawn(), ElementsAre("theme stroke, shadow: move 1 2", "theme stroke: move 1 2",
                                     "theme fill, shadow: move 1 2", "theme fill: move 1 2"));
    release(figure);
}

TEST_F(ThemeSuite, draws_vertices) {
    const A_FloatPoint center{12.5, 6};
    EXPECT_EQ(theme_suite.PF_FillVertex(drawing, &center, 1), 0);
    EXPECT_THAT(drawn(), ElementsAre("theme vertex, shadow: 12.5 6"));
    EXPECT_EQ(theme_suite.PF_FillVertex(drawing, nullptr, 1), PF_Err_BAD_CALLBACK_PARAM);
    const A_FloatPoint bad{kNan, 6};
    EXPECT_EQ(theme_suite.PF_FillVertex(drawing, &bad, 1), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_THAT(findings(), ElementsAre("drawbot.not_a_number"));
}

TEST_F(ThemeSuite, may_be_asked_outside_a_draw_event_but_draws_only_in_one) {
    const DRAWBOT_PathRef figure = path();
    release(figure);
    end();
    float number = 0;
    EXPECT_EQ(theme_suite.PF_GetPreferredStrokeWidth(&number), 0);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_EQ(theme_suite.PF_StrokePath(drawing, figure, 1), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_THAT(findings(), ElementsAre("drawbot.outside_draw"));
}

class CustomUiSuite : public testing::Test, public DrawingHost {};

TEST_F(CustomUiSuite, gives_no_drawing_reference_outside_a_draw_event) {
    EXPECT_EQ(custom_ui.PF_GetDrawingReference(context_handle, &drawing),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(drawing, nullptr);
    EXPECT_THAT(findings(), ElementsAre("drawbot.outside_draw"));
}

TEST_F(CustomUiSuite, may_succeed_with_a_null_reference_that_leads_nowhere) {
    host.drawbot.begin(list, true);
    drawing = reinterpret_cast<DRAWBOT_DrawRef>(this);
    EXPECT_EQ(custom_ui.PF_GetDrawingReference(context_handle, &drawing), 0);
    EXPECT_EQ(drawing, nullptr);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_NE(draw_suite.GetSupplier(drawing, &supplier), 0);
    EXPECT_EQ(supplier, nullptr);
    EXPECT_THAT(findings(), ElementsAre("drawbot.unknown"));
}

TEST_F(CustomUiSuite, wants_a_context_and_a_place_for_the_reference) {
    begin();
    EXPECT_EQ(custom_ui.PF_GetDrawingReference(nullptr, &drawing), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(custom_ui.PF_GetDrawingReference(context_handle, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(CustomUiSuite, number_one_gives_the_same_reference) {
    begin();
    bool refused = false;
    const auto *first = static_cast<const PF_EffectCustomUISuite1 *>(
        host.suites.acquire(kPFEffectCustomUISuite, 1, &refused));
    DRAWBOT_DrawRef again = nullptr;
    EXPECT_EQ(first->PF_GetDrawingReference(context_handle, &again), 0);
    EXPECT_EQ(again, drawing);
}

TEST_F(CustomUiSuite, offers_no_asynchronous_manager) {
    PF_AsyncManagerP manager = nullptr;
    EXPECT_EQ(custom_ui.PF_GetContextAsyncManager(nullptr, nullptr, &manager),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_THAT(findings(), ElementsAre("suite.unimplemented"));
}

}  // namespace
}  // namespace stage_test
