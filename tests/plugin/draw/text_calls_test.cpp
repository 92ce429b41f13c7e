// Text: its calls of GDI+, its place, and the correction for pixels that are not square.
#include <gtest/gtest.h>

#include "draw/wide_text.h"
#include "plugin/draw/calls_fixture.h"

namespace {

using namespace draw_test;
using namespace ks::draw;

class TextCalls : public CallsTest {
  protected:
    TextCalls() {
        EXPECT_EQ(create(), PF_Err_NONE);
        take_log();
    }
    ~TextCalls() override {
        release();
        host.expect_nothing_held();
    }

    // The transform and drawing calls of one text; objects are numbered anew.
    Log drawing(double x, TextAlign align) {
        gdiplus().made = 2;
        draw_text(x, 60, "100", kWhite, 12, align, surface);
        Log kept;
        for (const std::string &line : take_log()) {
            if (line.find("Transform") != line.npos || line.find("DrawString") != line.npos) {
                kept.push_back(line);
            }
        }
        return kept;
    }
};

TEST_F(TextCalls, makes_and_deletes_everything_it_uses) {
    EXPECT_EQ(draw_text(30, 60, "100", kRed, 12.5f, TextAlign::kCentre, surface), 0);
    EXPECT_EQ(
        take_log(),
        (Log{"GdipCreateSolidFill #FF0000FF", "GdipCreateFontFamilyFromName 'Arial' null",
             "GdipCreateFont family4 12.5 0 2", "GdipDeleteFontFamily family4",
             "GdipCreateStringFormat 0 0", "GdipSetStringFormatAlign format6 1",
             "GdipDrawString graphics2 '100' 3 font5 (30,47.5) (0,0) format6 brush3",
             "GdipDeleteStringFormat format6", "GdipDeleteFont font5", "GdipDeleteBrush brush3"}));
}

TEST_F(TextCalls, given_y_is_the_bottom_of_the_em_box) {
    EXPECT_EQ(drawing(30, TextAlign::kNear),
              Log{"GdipDrawString graphics2 '100' 3 font5 (30,48) (0,0) format6 brush3"});
}

TEST_F(TextCalls, alignments_are_gdiplus_numbers) {
    for (const auto align : {TextAlign::kNear, TextAlign::kCentre, TextAlign::kFar}) {
        draw_text(0, 0, "x", kRed, 12, align, surface);
        const std::string number = std::to_string(static_cast<int>(align));
        const std::string line = take_log()[5];
        EXPECT_EQ(line.substr(line.size() - 1), number);
        EXPECT_EQ(line.substr(0, 24), "GdipSetStringFormatAlign");
    }
}

TEST_F(TextCalls, equal_downsampling_changes_no_transform) {
    surface.den_x = 2;
    surface.den_y = 2;
    EXPECT_EQ(drawing(30, TextAlign::kFar),
              Log{"GdipDrawString graphics2 '100' 3 font5 (30,48) (0,0) format6 brush3"});
}

TEST_F(TextCalls, wide_pixels_narrow_the_glyphs_and_undo_it) {
    surface.pixel_aspect = 2.0;
    EXPECT_EQ(drawing(30, TextAlign::kNear),
              (Log{"GdipScaleWorldTransform graphics2 0.5 1 0",
                   "GdipDrawString graphics2 '100' 3 font5 (30,48) (0,0) format6 brush3",
                   "GdipScaleWorldTransform graphics2 2 1 0"}));
}

TEST_F(TextCalls, horizontal_downsampling_narrows_the_glyphs) {
    surface.den_x = 4;
    EXPECT_EQ(drawing(30, TextAlign::kNear)[0], "GdipScaleWorldTransform graphics2 0.25 1 0");
}

TEST_F(TextCalls, vertical_downsampling_widens_the_glyphs) {
    surface.den_y = 2;
    EXPECT_EQ(drawing(30, TextAlign::kNear)[0], "GdipScaleWorldTransform graphics2 2 1 0");
}

TEST_F(TextCalls, only_far_alignment_corrects_x_for_the_transform) {
    surface.pixel_aspect = 2.0;
    EXPECT_EQ(drawing(30, TextAlign::kNear)[1],
              "GdipDrawString graphics2 '100' 3 font5 (30,48) (0,0) format6 brush3");
    EXPECT_EQ(drawing(30, TextAlign::kCentre)[1],
              "GdipDrawString graphics2 '100' 3 font5 (30,48) (0,0) format6 brush3");
    EXPECT_EQ(drawing(30, TextAlign::kFar)[1],
              "GdipDrawString graphics2 '100' 3 font5 (60,48) (0,0) format6 brush3");
}

TEST_F(TextCalls, transform_is_undone_after_a_failed_drawing) {
    surface.pixel_aspect = 2.0;
    gdiplus().fails["GdipDrawString"] = 4;
    EXPECT_EQ(drawing(30, TextAlign::kNear).back(), "GdipScaleWorldTransform graphics2 2 1 0");
    EXPECT_EQ(surface.graphics->last_status, 4);
}

TEST_F(TextCalls, font_that_is_not_there_is_noted_and_drawing_is_tried) {
    gdiplus().fails["GdipCreateFontFamilyFromName"] = 14;
    gdiplus().fails["GdipCreateFont"] = 2;
    draw_text(0, 12, "A", kRed, 12, TextAlign::kNear, surface);
    const Log log = take_log();
    EXPECT_EQ(log[2], "GdipCreateFont null 12 0 2");
    EXPECT_EQ(log[5], "GdipDrawString graphics2 'A' 1 null (0,0) (0,0) format4 brush3");
    EXPECT_EQ(surface.graphics->last_status, 2);
}

TEST_F(TextCalls, empty_text_is_drawn_as_such) {
    draw_text(0, 12, "", kRed, 12, TextAlign::kNear, surface);
    EXPECT_EQ(take_log()[6], "GdipDrawString graphics2 '' 0 font5 (0,0) (0,0) format6 brush3");
}

TEST_F(TextCalls, length_is_kept_in_16_bits) {
    draw_text(0, 12, std::string(65536 + 2, 'a'), kRed, 12, TextAlign::kNear, surface);
    EXPECT_EQ(take_log()[6], "GdipDrawString graphics2 'aa' 2 font5 (0,0) (0,0) format6 brush3");
}

TEST_F(TextCalls, text_whose_16_bit_length_is_negative_is_not_drawn) {
    EXPECT_EQ(draw_text(0, 12, std::string(40000, 'a'), kRed, 12, TextAlign::kNear, surface), 0);
    EXPECT_EQ(take_log(), Log{});
    EXPECT_EQ(surface.graphics->last_status, 2);
}

TEST(WideText, has_one_unit_a_byte_and_a_terminating_zero) {
    const std::u16string wide = widen("-50 %", 5);
    EXPECT_EQ(wide, u"-50 %");
    EXPECT_EQ(wide.c_str()[5], u'\0');
}

TEST(WideText, takes_only_the_length_given) {
    EXPECT_EQ(widen("12345", 2), u"12");
    EXPECT_EQ(widen("12345", 0), u"");
}

// Latin-1, and the same in the code page of western Windows.
TEST(WideText, bytes_above_ascii_are_single_characters) {
    EXPECT_EQ(widen("45\xB0", 3), u"45\u00B0");
}

}  // namespace
