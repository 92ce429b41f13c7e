// GDI+ as effects use it: the host has started it, and a bitmap over the effect's own memory is
// disposed of while the graphics object made from it goes on drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "stage/binary/gdiplus_runtime.h"
#include "stage/binary/loaded_library.h"

namespace {

struct Image;
struct Graphics;
struct Pen;
struct Brush;
struct FontFamily;
struct Font;

struct RectF {
    float x, y, width, height;
};

constexpr std::int32_t kPremultipliedArgb32 = 0xE200B;  // 8 bits, stored blue first
constexpr std::int32_t kPixels = 2;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

// The flat functions that the tests use, all looked up at once.
struct Gdiplus {
#ifdef _WIN32
    stage::LoadedLibrary library{"gdiplus.dll"};
#else
    stage::LoadedLibrary library{"libgdiplus.so.0"};
#endif
    template <typename... Arguments>
    int call(const char *name, Arguments... arguments) const {
        return library.function<int(Arguments...)>(name)(arguments...);
    }
};

class GdiplusTest : public testing::Test {
  protected:
    static constexpr int kWidth = 128;
    static constexpr int kHeight = 64;

    void SetUp() override {
        ASSERT_TRUE(runtime->available()) << runtime->reason();
        gdiplus = std::make_unique<Gdiplus>();
    }

    // A graphics object on `pixels` whose image is disposed of already.
    Graphics *orphaned_graphics() {
        Image *image = nullptr;
        Graphics *graphics = nullptr;
        EXPECT_EQ(gdiplus->call("GdipCreateBitmapFromScan0", kWidth, kHeight, kWidth * 4,
                                kPremultipliedArgb32,
                                reinterpret_cast<std::uint8_t *>(pixels.data()), &image),
                  0);
        EXPECT_EQ(gdiplus->call("GdipGetImageGraphicsContext", image, &graphics), 0);
        EXPECT_EQ(gdiplus->call("GdipDisposeImage", image), 0);
        return graphics;
    }

    void draw_line(Graphics *graphics, float y) {
        Pen *pen = nullptr;
        ASSERT_EQ(gdiplus->call("GdipCreatePen1", kWhite, 1.0f, kPixels, &pen), 0);
        EXPECT_EQ(gdiplus->call("GdipDrawLine", graphics, pen, 4.0f, y, 100.0f, y), 0);
        gdiplus->call("GdipDeletePen", pen);
    }

    void draw_text(Graphics *graphics, const char16_t *text) {
        FontFamily *family = nullptr;
        Font *font = nullptr;
        Brush *brush = nullptr;
        ASSERT_EQ(gdiplus->call("GdipCreateFontFamilyFromName", u"Arial",
                                static_cast<void *>(nullptr), &family),
                  0);
        ASSERT_EQ(gdiplus->call("GdipCreateFont", family, 20.0f, 0, kPixels, &font), 0);
        ASSERT_EQ(gdiplus->call("GdipCreateSolidFill", kWhite, &brush), 0);
        const RectF area = {0.0f, 24.0f, 128.0f, 40.0f};
        EXPECT_EQ(gdiplus->call("GdipDrawString", graphics, text, -1, font, &area,
                                static_cast<void *>(nullptr), brush),
                  0);
        gdiplus->call("GdipDeleteBrush", brush);
        gdiplus->call("GdipDeleteFont", font);
        gdiplus->call("GdipDeleteFontFamily", family);
    }

    // Pixels with any content in rows [top, bottom).
    std::ptrdiff_t painted(int top, int bottom) const {
        return std::count_if(pixels.begin() + top * kWidth, pixels.begin() + bottom * kWidth,
                             [](std::uint32_t pixel) { return pixel != 0; });
    }

    std::optional<stage::GdiplusRuntime> runtime{std::in_place};
    std::unique_ptr<Gdiplus> gdiplus;
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kWidth * kHeight);
};

TEST_F(GdiplusTest, draws_a_line_after_the_image_is_disposed_of) {
    Graphics *const graphics = orphaned_graphics();
    draw_line(graphics, 10.0f);
    EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", graphics), 0);
    EXPECT_GE(painted(9, 12), 90);
    EXPECT_EQ(painted(0, 8), 0);
    EXPECT_EQ(painted(14, kHeight), 0);
}

TEST_F(GdiplusTest, draws_text_in_arial_after_the_image_is_disposed_of) {
    Graphics *const graphics = orphaned_graphics();
    draw_text(graphics, u"100 IRE");
    EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", graphics), 0);
    EXPECT_GE(painted(24, kHeight), 100);
    EXPECT_EQ(painted(0, 22), 0);
}

TEST_F(GdiplusTest, keeps_each_disposed_image_apart) {
    Graphics *const first = orphaned_graphics();
    Graphics *const second = orphaned_graphics();
    EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", first), 0);
    draw_line(second, 30.0f);
    EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", second), 0);
    EXPECT_GE(painted(29, 32), 90);
}

TEST_F(GdiplusTest, survives_many_frames_of_disposed_images) {
    for (int frame = 0; frame < 500; ++frame) {
        Graphics *const graphics = orphaned_graphics();
        ASSERT_NE(graphics, nullptr) << "frame " << frame;
        draw_line(graphics, 10.0f);
        ASSERT_EQ(gdiplus->call("GdipDeleteGraphics", graphics), 0) << "frame " << frame;
    }
}

TEST_F(GdiplusTest, stays_started_while_one_of_two_runtimes_lives) {
    { const stage::GdiplusRuntime other; }
    Graphics *const graphics = orphaned_graphics();
    draw_line(graphics, 10.0f);
    EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", graphics), 0);
    EXPECT_GE(painted(9, 12), 90);
}

TEST_F(GdiplusTest, draws_text_again_after_the_last_runtime_has_ended) {
    for (int round = 0; round < 2; ++round) {
        std::fill(pixels.begin(), pixels.end(), 0u);
        runtime.reset();
        runtime.emplace();
        Graphics *const graphics = orphaned_graphics();
        draw_text(graphics, u"75 %");
        EXPECT_EQ(gdiplus->call("GdipDeleteGraphics", graphics), 0);
        EXPECT_GE(painted(24, kHeight), 50) << "round " << round;
    }
}

TEST(GdiplusRuntime, can_be_started_again_after_it_was_shut_down) {
    { const stage::GdiplusRuntime first; }
    const stage::GdiplusRuntime second;
    EXPECT_TRUE(second.available()) << second.reason();
    EXPECT_EQ(second.reason(), "");
}

}  // namespace
