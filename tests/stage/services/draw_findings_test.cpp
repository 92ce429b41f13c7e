// What must not be done with Drawbot's references, noticed by strict mode.
#include <thread>

#include "stage/ledger/thread_role.h"
#include "stage/services/drawing_host.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DrawFindings : public testing::Test, public DrawingHost {
  protected:
    DrawFindings() { begin(); }
    std::string last_text() { return host.strict.all().back().text; }
};

TEST_F(DrawFindings, everything_given_back_leaves_no_finding) {
    release(path());
    release(pen());
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, objects_left_at_the_end_are_leaks_of_their_kind) {
    path();
    const DRAWBOT_PenRef twice = pen();
    retain(twice);
    end();
    ASSERT_EQ(host.strict.all().size(), 2u);
    std::vector<std::string> texts;
    for (const stage::Finding &finding : host.strict.all()) texts.push_back(finding.text);
    EXPECT_THAT(texts, testing::UnorderedElementsAre("a path was not released, held 1 times",
                                                     "a pen was not released, held 2 times"));
    EXPECT_EQ(host.strict.all()[0].check, "leak.drawbot");
    EXPECT_EQ(host.strict.all()[0].command, "PF_Cmd_EVENT");
    EXPECT_EQ(host.drawbot.held(), 0);
}

TEST_F(DrawFindings, an_object_released_too_often_is_unknown) {
    const DRAWBOT_PathRef once = path();
    EXPECT_EQ(release(once), 0);
    EXPECT_NE(release(once), 0);
    EXPECT_THAT(last_text(), HasSubstr("was released before"));
    EXPECT_THAT(findings(), ElementsAre("drawbot.unknown"));
}

TEST_F(DrawFindings, a_released_path_cannot_be_used) {
    const DRAWBOT_PathRef gone = path();
    release(gone);
    EXPECT_NE(path_suite.MoveTo(gone, 1, 1), 0);
    EXPECT_NE(theme_suite.PF_FillPath(drawing, gone, 1), 0);
    EXPECT_THAT(findings(), ElementsAre("drawbot.unknown", "drawbot.unknown"));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(DrawFindings, a_reference_of_another_kind_is_named) {
    const DRAWBOT_PenRef made = pen();
    EXPECT_NE(path_suite.MoveTo(reinterpret_cast<DRAWBOT_PathRef>(made), 1, 1), 0);
    EXPECT_EQ(last_text(), "a pen was passed as a path");
    EXPECT_THAT(findings(), ElementsAre("drawbot.unknown"));
    release(made);
}

TEST_F(DrawFindings, null_and_foreign_references_are_unknown) {
    EXPECT_NE(path_suite.MoveTo(nullptr, 1, 1), 0);
    EXPECT_EQ(last_text(), "the path reference is null");
    EXPECT_NE(path_suite.MoveTo(reinterpret_cast<DRAWBOT_PathRef>(this), 1, 1), 0);
    EXPECT_NE(release(this), 0);
    EXPECT_THAT(findings(), ElementsAre("drawbot.unknown", "drawbot.unknown", "drawbot.unknown"));
}

TEST_F(DrawFindings, what_belongs_to_the_event_is_not_released_or_retained) {
    EXPECT_NE(release(supplier), 0);
    EXPECT_NE(release(surface), 0);
    EXPECT_NE(release(drawing), 0);
    EXPECT_NE(retain(surface), 0);
    EXPECT_EQ(findings(), std::vector<std::string>(4, "drawbot.not_owned"));
    EXPECT_EQ(surface_suite.Flush(surface), 0);
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, drawing_after_the_event_is_refused) {
    const DRAWBOT_ColorRGBA grey{0.5f, 0.5f, 0.5f, 1};
    const DRAWBOT_RectF32 rect{0, 0, 1, 1};
    end();
    EXPECT_NE(surface_suite.PaintRect(surface, &grey, &rect), 0);
    EXPECT_NE(draw_suite.GetSupplier(drawing, &supplier), 0);
    EXPECT_THAT(findings(), ElementsAre("drawbot.outside_draw", "drawbot.outside_draw"));
    EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(DrawFindings, references_of_an_earlier_event_are_stale) {
    const DRAWBOT_PathRef old_path = path();
    const DRAWBOT_SurfaceRef old_surface = surface;
    end();
    EXPECT_THAT(findings(), ElementsAre("leak.drawbot"));
    begin();
    EXPECT_NE(surface, old_surface);
    EXPECT_NE(surface_suite.Flush(old_surface), 0);
    EXPECT_NE(path_suite.MoveTo(old_path, 1, 1), 0);
    EXPECT_EQ(last_text(), "a path reference of an earlier draw event was used");
    EXPECT_THAT(findings(), ElementsAre("drawbot.outside_draw", "drawbot.outside_draw"));
}

TEST_F(DrawFindings, a_new_event_starts_with_an_empty_list_and_a_fresh_state) {
    EXPECT_EQ(surface_suite.SetAntiAliasPolicy(surface, 1), 0);
    end();
    begin(100, 50);
    EXPECT_THAT(drawn(), IsEmpty());
    DRAWBOT_AntiAliasPolicy policy = -1;
    surface_suite.GetAntiAliasPolicy(surface, &policy);
    EXPECT_EQ(policy, kDRAWBOT_AntiAliasPolicy_Default);
    DRAWBOT_Rect32 clip{};
    surface_suite.GetClipBounds(surface, &clip);
    EXPECT_EQ(clip.width, 100);
    EXPECT_EQ(clip.height, 50);
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, states_left_pushed_are_a_finding) {
    surface_suite.PushStateStack(surface);
    surface_suite.PushStateStack(surface);
    end();
    EXPECT_EQ(last_text(), "2 pushed states were not popped");
    EXPECT_THAT(findings(), ElementsAre("drawbot.state_balance"));
}

TEST_F(DrawFindings, an_event_opened_over_another_closes_it) {
    path();
    begin();
    EXPECT_THAT(findings(), ElementsAre("leak.drawbot"));
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, an_end_without_an_event_is_nothing) {
    end();
    end();
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(DrawFindings, the_render_thread_may_not_draw_or_release) {
    const DRAWBOT_PathRef made = path();
    {
        const stage::ScopedThreadRole role(stage::ThreadRole::kRender);
        EXPECT_EQ(path_suite.MoveTo(made, 1, 1), A_Err_WRONG_THREAD);
        EXPECT_EQ(release(made), A_Err_WRONG_THREAD);
    }
    EXPECT_THAT(findings(), ElementsAre("thread.render", "thread.render"));
    EXPECT_EQ(release(made), 0);
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, a_worker_may_not_draw_or_release) {
    const DRAWBOT_PathRef made = path();
    std::thread worker([&] {
        const stage::ScopedThreadRole role(stage::ThreadRole::kWorker);
        EXPECT_EQ(path_suite.MoveTo(made, 1, 1), A_Err_WRONG_THREAD);
        EXPECT_EQ(release(made), A_Err_WRONG_THREAD);
    });
    worker.join();
    EXPECT_THAT(findings(), testing::Each("thread.worker"));
    EXPECT_EQ(release(made), 0);
    EXPECT_THAT(end_findings(), IsEmpty());
}

TEST_F(DrawFindings, many_objects_of_old_events_are_forgotten_in_the_end) {
    for (int i = 0; i < 5000; ++i) release(path());
    EXPECT_THAT(end_findings(), IsEmpty());
    EXPECT_EQ(host.drawbot.held(), 0);
}

}  // namespace
}  // namespace stage_test
