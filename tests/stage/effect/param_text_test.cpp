// Names and texts as a user of the command line types them, and what he is told when he errs.
#include <gmock/gmock.h>

#include "stage/effect/param_catalog.h"
#include "stage/effect/param_defs.h"

namespace stage_test {
namespace {

using stage::ParamCatalog;
using stage::ParamValue;
using testing::HasSubstr;
using testing::Not;

constexpr PF_Fixed kPercent = 65536;

class ParamTextTest : public testing::Test {
  protected:
    ParamTextTest() {
        const PF_ParamDef defs[] = {
            group("Scopes", 1),                                        // 1
            group("Waveform", 2),                                      // 2
            slider("Size", 3, 200, 1000, 200),                         // 3
            point("Position", 4, 50 * kPercent, 0, true),              // 4
            group_end(),                                               // 5
            group("Histogram", 6),                                     // 6
            slider("Size", 7, 0, 0.1f, 0.05, true),                    // 7
            group_end(),                                               // 8
            group_end(),                                               // 9
            popup("Layout", 10, "Single|Four-Way|(-|Windowed", 4, 1),  // 10
            checkbox("Show", 11, "", true),                            // 11
            colour("Tint", 12, {255, 1, 2, 3}),                        // 12
            param(PF_Param_LAYER, "Original", 13),                     // 13
            point("Anywhere", 14, 0, 0, false),                        // 14
        };
        for (const PF_ParamDef &def : defs) catalog.append(def);
    }
    std::string find_error(std::string_view name) const {
        try {
            return "found " + std::to_string(catalog.find(name));
        } catch (const std::runtime_error &error) {
            return error.what();
        }
    }
    ParamValue parse(int index, std::string_view text) const {
        return catalog.parse(index, text, 200, 100);
    }
    std::string parse_error(int index, std::string_view text) const {
        try {
            parse(index, text);
            return "accepted";
        } catch (const std::runtime_error &error) {
            return error.what();
        }
    }
    ParamCatalog catalog;
};

TEST_F(ParamTextTest, finds_a_name_that_occurs_once_whatever_its_case) {
    EXPECT_EQ(catalog.find("Layout"), 10);
    EXPECT_EQ(catalog.find("lAYOUT"), 10);
    EXPECT_EQ(catalog.find("Position"), 4);
}

TEST_F(ParamTextTest, finds_by_as_much_of_the_path_as_makes_it_unique) {
    EXPECT_EQ(catalog.find("Waveform/Size"), 3);
    EXPECT_EQ(catalog.find("Histogram/Size"), 7);
    EXPECT_EQ(catalog.find("Scopes/Histogram/Size"), 7);
    EXPECT_THAT(find_error("form/Size"), HasSubstr("there is no parameter"));
    EXPECT_THAT(find_error("Scopes/Size"), HasSubstr("there is no parameter"));
}

TEST_F(ParamTextTest, finds_by_index_but_no_group_and_not_the_input) {
    EXPECT_EQ(catalog.find("3"), 3);
    EXPECT_EQ(catalog.find(" 13 "), 13);
    for (const char *wrong : {"0", "1", "5", "15", "-3", "3.5"}) {
        EXPECT_EQ(find_error(wrong), std::string("there is no parameter with index ") + wrong +
                                         " that has a value (1 to 14)");
    }
}

TEST_F(ParamTextTest, says_which_parameters_share_a_name) {
    EXPECT_EQ(find_error("Size"),
              "\"Size\" is the name of several parameters; say one of "
              "\"Scopes/Waveform/Size\", \"Scopes/Histogram/Size\"");
}

TEST_F(ParamTextTest, lists_the_parameters_that_a_wrong_path_may_have_meant) {
    EXPECT_EQ(find_error("Vectorscope/Size"),
              "there is no parameter \"Vectorscope/Size\"; say one of "
              "\"Scopes/Waveform/Size\", \"Scopes/Histogram/Size\"");
    EXPECT_EQ(find_error("Nonsense"),
              "there is no parameter \"Nonsense\" (the verb \"params\" lists them all)");
    EXPECT_THAT(find_error(""), HasSubstr("there is no parameter"));
    EXPECT_THAT(find_error("Scopes"), HasSubstr("there is no parameter"));
}

TEST_F(ParamTextTest, sliders_take_numbers_of_their_range) {
    EXPECT_EQ(parse(3, "200").number, 200);
    EXPECT_EQ(parse(3, "+1000").number, 1000);
    EXPECT_EQ(parse(3, " 2.5e2 ").number, 250);
    EXPECT_EQ(parse(7, "0.1").number, 0.1);  // the limit as typed, though a float holds another
    EXPECT_EQ(parse(7, "0.05%").number, 0.05);
}

TEST_F(ParamTextTest, sliders_name_their_range_when_they_refuse) {
    for (const char *wrong : {"199.99", "1000.1", "wide", "", "nan", "inf", "300 px", "300%"}) {
        EXPECT_EQ(parse_error(3, wrong), "\"Scopes/Waveform/Size\" cannot be \"" +
                                             std::string(wrong) +
                                             "\": it must be a number from 200 to 1000");
    }
    EXPECT_THAT(parse_error(7, "0.11"), HasSubstr("from 0 to 0.1"));
}

TEST_F(ParamTextTest, popups_take_a_choice_by_text_or_number) {
    EXPECT_EQ(parse(10, "Four-Way").number, 2);
    EXPECT_EQ(parse(10, "windowed").number, 4);
    EXPECT_EQ(parse(10, "4").number, 4);
}

TEST_F(ParamTextTest, popups_list_their_choices_without_separators) {
    for (const char *wrong : {"3", "0", "5", "(-", "1.5", "Five-Way", ""}) {
        EXPECT_EQ(parse_error(10, wrong),
                  "\"Layout\" cannot be \"" + std::string(wrong) +
                      "\": choose one of 1 \"Single\", 2 \"Four-Way\", 4 \"Windowed\"");
    }
}

TEST_F(ParamTextTest, checkboxes_take_words_for_yes_and_no) {
    for (const char *yes : {"on", "ON", "true", "yes", "1"}) EXPECT_EQ(parse(11, yes).number, 1);
    for (const char *no : {"off", "False", "no", "0"}) EXPECT_EQ(parse(11, no).number, 0);
    EXPECT_EQ(parse_error(11, "maybe"), "\"Show\" cannot be \"maybe\": say on or off");
}

TEST_F(ParamTextTest, points_take_pixels_or_percent_of_the_layer) {
    EXPECT_EQ(parse(4, "10,20.5"), (ParamValue{0, 10, 20.5, {}, 0}));
    EXPECT_EQ(parse(4, "25%, 50%"), (ParamValue{0, 50, 50, {}, 0}));
    EXPECT_EQ(parse(4, "0,100%"), (ParamValue{0, 0, 100, {}, 0}));
    EXPECT_EQ(parse(14, "-5,400"), (ParamValue{0, -5, 400, {}, 0}));
    EXPECT_THAT(parse_error(4, "10"), HasSubstr("say x,y in layer pixels, or x%,y% of the layer"));
    EXPECT_THAT(parse_error(4, "10,"), HasSubstr("say x,y"));
    EXPECT_THAT(parse_error(4, "10,2,3"), HasSubstr("say x,y"));
    EXPECT_THAT(parse_error(4, "201,0"),
                HasSubstr("the point must lie on the layer, 0,0 to 200,100"));
    EXPECT_THAT(parse_error(4, "-1%,0"), HasSubstr("must lie on the layer"));
}

TEST_F(ParamTextTest, colours_take_hex_or_three_numbers) {
    const std::array<std::uint8_t, 4> expected{255, 16, 32, 255};
    EXPECT_EQ(parse(12, "#1020ff").color, expected);
    EXPECT_EQ(parse(12, "#1020FF").color, expected);
    EXPECT_EQ(parse(12, "16,32,255").color, expected);
    for (const char *wrong : {"red", "#1020f", "#1020ff0", "16,32", "16,32,256", "16,32,255,0",
                              "-1,0,0", "#1020fg", ""}) {
        EXPECT_EQ(parse_error(12, wrong), "\"Tint\" cannot be \"" + std::string(wrong) +
                                              "\": say #rrggbb, or red,green,blue from 0 to 255");
    }
}

TEST_F(ParamTextTest, layers_and_groups_are_not_set_by_text) {
    EXPECT_EQ(parse_error(13, "Layer 1"), "\"Original\" is a layer, which only a project can name");
    EXPECT_EQ(parse_error(1, "x"), "\"Scopes\" has no value to set");
}

TEST_F(ParamTextTest, values_read_back_as_they_were_typed) {
    const struct {
        int index;
        const char *text;
    } values[] = {{3, "234.5"}, {10, "Windowed"}, {11, "on"}, {11, "off"}, {12, "#0a0b0c"}};
    for (const auto &value : values) {
        EXPECT_EQ(catalog.to_text(value.index, parse(value.index, value.text)), value.text);
    }
    EXPECT_EQ(catalog.to_text(4, parse(4, "15,30.25")), "(15, 30.25)");
}

TEST_F(ParamTextTest, odd_values_have_a_text_too) {
    EXPECT_EQ(catalog.to_text(13, {}), "none");
    EXPECT_EQ(catalog.to_text(13, {0, 0, 0, {}, 42}), "42");
    EXPECT_EQ(catalog.to_text(10, {9, 0, 0, {}, 0}), "?");
    EXPECT_EQ(catalog.to_text(1, {}), "");
    EXPECT_THAT(catalog.to_text(7, {0.05, 0, 0, {}, 0}), Not(HasSubstr("%")));
}

}  // namespace
}  // namespace stage_test
