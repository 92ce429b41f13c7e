// "DRAWBOT Supplier Suite", "Draw Suite", "Pen Suite" and "Image Suite": objects and who holds
// them.
#include "stage/services/drawing_host.h"

namespace stage_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SupplierSuite : public DrawingTest {
  protected:
    int held() const { return host.drawbot.held(); }
};

TEST_F(SupplierSuite, the_drawing_reference_leads_to_supplier_and_surface) {
    EXPECT_NE(drawing, nullptr);
    EXPECT_NE(supplier, nullptr);
    EXPECT_NE(surface, nullptr);
    EXPECT_EQ(draw_suite.GetSupplier(drawing, nullptr), A_Err_PARAMETER);
    EXPECT_EQ(draw_suite.GetSurface(drawing, nullptr), A_Err_PARAMETER);
}

TEST_F(SupplierSuite, every_object_is_counted_until_its_last_release) {
    const DRAWBOT_PenRef a = pen();
    const DRAWBOT_BrushRef b = brush();
    const DRAWBOT_FontRef c = font();
    const DRAWBOT_ImageRef d = image();
    const DRAWBOT_PathRef e = path();
    EXPECT_EQ(held(), 5);
    EXPECT_EQ(retain(a), 0);
    for (const SPErr error : {release(a), release(b), release(c), release(d), release(e)}) {
        EXPECT_EQ(error, 0);
    }
    EXPECT_EQ(held(), 1);
    EXPECT_EQ(release(a), 0);
    EXPECT_EQ(held(), 0);
}

TEST_F(SupplierSuite, answers_what_it_supports) {
    const auto &s = supplier_suite;
    const auto ask = [&](auto slot) {
        DRAWBOT_Boolean answer = 77;
        EXPECT_EQ(slot(supplier, &answer), 0);
        return static_cast<int>(answer);
    };
    EXPECT_EQ(ask(s.SupportsText), 1);
    EXPECT_EQ(ask(s.SupportsPixelLayoutBGRA), 1);
    EXPECT_EQ(ask(s.PrefersPixelLayoutBGRA), 1);
    EXPECT_EQ(ask(s.SupportsPixelLayoutARGB), 1);
    EXPECT_EQ(ask(s.PrefersPixelLayoutARGB), 0);
    float size = 0;
    EXPECT_EQ(s.GetDefaultFontSize(supplier, &size), 0);
    EXPECT_GT(size, 0);
    EXPECT_EQ(s.SupportsText(supplier, nullptr), A_Err_PARAMETER);
}

TEST_F(SupplierSuite, refuses_what_cannot_be_made_and_hands_out_null) {
    const DRAWBOT_ColorRGBA red{1, 0, 0, 1};
    const char pixels[4] = {};
    DRAWBOT_PenRef pen_made = reinterpret_cast<DRAWBOT_PenRef>(this);
    EXPECT_EQ(supplier_suite.NewPen(supplier, &red, -1, &pen_made), A_Err_PARAMETER);
    EXPECT_EQ(pen_made, nullptr);
    EXPECT_EQ(supplier_suite.NewPen(supplier, nullptr, 1, &pen_made), A_Err_PARAMETER);
    DRAWBOT_FontRef font_made = nullptr;
    EXPECT_EQ(supplier_suite.NewDefaultFont(supplier, 0, &font_made), A_Err_PARAMETER);
    DRAWBOT_ImageRef image_made = nullptr;
    EXPECT_EQ(supplier_suite.NewImageFromBuffer(supplier, 1, 1, 4, 99, pixels, &image_made),
              A_Err_PARAMETER);
    EXPECT_EQ(supplier_suite.NewPath(supplier, nullptr), A_Err_PARAMETER);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_EQ(held(), 0);
}

TEST_F(SupplierSuite, colours_and_sizes_that_are_no_numbers_are_findings) {
    const DRAWBOT_ColorRGBA good{1, 0, 0, 1}, bad{1, kNan, 0, 1};
    DRAWBOT_PenRef pen_made = nullptr;
    DRAWBOT_BrushRef brush_made = nullptr;
    DRAWBOT_FontRef font_made = nullptr;
    EXPECT_NE(supplier_suite.NewPen(supplier, &bad, 1, &pen_made), 0);
    EXPECT_NE(supplier_suite.NewPen(supplier, &good, kInfinity, &pen_made), 0);
    EXPECT_NE(supplier_suite.NewBrush(supplier, &bad, &brush_made), 0);
    EXPECT_NE(supplier_suite.NewDefaultFont(supplier, kNan, &font_made), 0);
    EXPECT_EQ(findings(), std::vector<std::string>(4, "drawbot.not_a_number"));
    EXPECT_EQ(held(), 0);
}

TEST_F(SupplierSuite, an_injected_failure_makes_nothing) {
    host.faults.arm(1);
    DRAWBOT_PathRef made = nullptr;
    EXPECT_EQ(supplier_suite.NewPath(supplier, &made), stage::kInjectedError);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(held(), 0);
}

TEST_F(SupplierSuite, an_injected_failure_still_releases) {
    const DRAWBOT_PathRef made = path();
    host.faults.arm_name("DRAWBOT Supplier Suite.ReleaseObject");
    EXPECT_EQ(release(made), stage::kInjectedError);
    host.faults.reset();
    EXPECT_EQ(held(), 0);
}

TEST_F(SupplierSuite, dashes_are_set_and_taken_off) {
    const DRAWBOT_PenRef made = pen();
    const DRAWBOT_PathRef line = path();
    const float dashes[] = {4, 2.5f};
    EXPECT_EQ(pen_suite.SetDashPattern(made, dashes, 2), 0);
    EXPECT_EQ(surface_suite.StrokePath(surface, made, line), 0);
    EXPECT_EQ(pen_suite.SetDashPattern(made, nullptr, 0), 0);
    EXPECT_EQ(surface_suite.StrokePath(surface, made, line), 0);
    EXPECT_THAT(drawn(), ElementsAre("stroke 2, dash 4, dash 2.5, color 1 0 0 1: empty",
                                     "stroke 2, color 1 0 0 1: empty"));
    release(made);
    release(line);
}

TEST_F(SupplierSuite, dashes_that_draw_nothing_are_refused) {
    const DRAWBOT_PenRef made = pen();
    const float nothing[] = {0, 0}, negative[] = {4, -2}, broken[] = {4, kNan};
    EXPECT_EQ(pen_suite.SetDashPattern(made, nothing, 2), A_Err_PARAMETER);
    EXPECT_EQ(pen_suite.SetDashPattern(made, negative, 2), A_Err_PARAMETER);
    EXPECT_EQ(pen_suite.SetDashPattern(made, nothing, -1), A_Err_PARAMETER);
    EXPECT_EQ(pen_suite.SetDashPattern(made, nullptr, 2), A_Err_PARAMETER);
    EXPECT_THAT(findings(), IsEmpty());
    EXPECT_EQ(pen_suite.SetDashPattern(made, broken, 2), A_Err_PARAMETER);
    EXPECT_THAT(findings(), ElementsAre("drawbot.not_a_number"));
    release(made);
}

TEST_F(SupplierSuite, an_image_has_a_scale_factor_above_zero) {
    const DRAWBOT_ImageRef made = image();
    const DRAWBOT_PointF32 origin{3, 4};
    EXPECT_EQ(image_suite.SetScaleFactor(made, 2), 0);
    EXPECT_EQ(image_suite.SetScaleFactor(made, 0), A_Err_PARAMETER);
    EXPECT_EQ(surface_suite.DrawImage(surface, made, &origin, 1), 0);
    EXPECT_THAT(drawn(), ElementsAre("image 2x1 at 3 4, alpha 1, scale 2"));
    release(made);
}

}  // namespace
}  // namespace stage_test
