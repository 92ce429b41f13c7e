#include "stage/services/drawing_host.h"

#include <array>
#include <cstdint>

namespace stage_test {

DrawingHost::DrawingHost()
    : custom_ui(suite<PF_EffectCustomUISuite2>(kPFEffectCustomUISuite, 2)),
      theme_suite(
          suite<PF_EffectCustomUIOverlayThemeSuite1>(kPFEffectCustomUIOverlayThemeSuite, 1)),
      draw_suite(suite<DRAWBOT_DrawbotSuite1>(kDRAWBOT_DrawSuite, 1)),
      supplier_suite(suite<DRAWBOT_SupplierSuite1>(kDRAWBOT_SupplierSuite, 1)),
      surface_suite(suite<DRAWBOT_SurfaceSuite2>(kDRAWBOT_SurfaceSuite, 2)),
      path_suite(suite<DRAWBOT_PathSuite1>(kDRAWBOT_PathSuite, 1)),
      pen_suite(suite<DRAWBOT_PenSuite1>(kDRAWBOT_PenSuite, 1)),
      image_suite(suite<DRAWBOT_ImageSuite1>(kDRAWBOT_ImageSuite, 1)) {}

void DrawingHost::begin(int width, int height) {
    host.drawbot.begin(list, false, width, height);
    refresh_references();
}

void DrawingHost::refresh_references() {
    EXPECT_EQ(custom_ui.PF_GetDrawingReference(context_handle, &drawing), 0);
    EXPECT_EQ(draw_suite.GetSupplier(drawing, &supplier), 0);
    EXPECT_EQ(draw_suite.GetSurface(drawing, &surface), 0);
}

std::vector<std::string> DrawingHost::findings() {
    std::vector<std::string> names;
    for (const stage::Finding &finding : host.strict.all()) names.push_back(finding.check);
    host.strict.clear();
    return names;
}

std::vector<std::string> DrawingHost::drawn() {
    std::vector<std::string> lines;
    for (const stage::DrawPrimitive &primitive : list.primitives) {
        lines.push_back(to_text(primitive));
    }
    list.primitives.clear();
    return lines;
}

std::vector<std::string> DrawingHost::end_findings() {
    EXPECT_THAT(findings(), testing::IsEmpty());
    end();
    return findings();
}

DRAWBOT_PathRef DrawingHost::path() {
    DRAWBOT_PathRef made = nullptr;
    EXPECT_EQ(supplier_suite.NewPath(supplier, &made), 0);
    return made;
}

DRAWBOT_PenRef DrawingHost::pen(DRAWBOT_ColorRGBA color, float width) {
    DRAWBOT_PenRef made = nullptr;
    EXPECT_EQ(supplier_suite.NewPen(supplier, &color, width, &made), 0);
    return made;
}

DRAWBOT_BrushRef DrawingHost::brush(DRAWBOT_ColorRGBA color) {
    DRAWBOT_BrushRef made = nullptr;
    EXPECT_EQ(supplier_suite.NewBrush(supplier, &color, &made), 0);
    return made;
}

DRAWBOT_FontRef DrawingHost::font(float size) {
    DRAWBOT_FontRef made = nullptr;
    EXPECT_EQ(supplier_suite.NewDefaultFont(supplier, size, &made), 0);
    return made;
}

DRAWBOT_ImageRef DrawingHost::image() {
    constexpr std::array<std::uint8_t, 8> kPixels{255, 1, 2, 3, 128, 4, 5, 6};
    constexpr DRAWBOT_PixelLayout kArgbStraight = 4;
    DRAWBOT_ImageRef made = nullptr;
    EXPECT_EQ(
        supplier_suite.NewImageFromBuffer(supplier, 2, 1, 8, kArgbStraight, kPixels.data(), &made),
        0);
    return made;
}

}  // namespace stage_test
