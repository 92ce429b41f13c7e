// Lines of values in JSON text.
#include "stage/text/line_index.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using stage::LineIndex;

TEST(LineIndex, finds_values_of_objects_and_lists) {
    const LineIndex lines(
        "{\n \"a\": 1,\n \"b\": [\n 2, {\"c\":\n \"x\"},\n [true,\nfalse]\n ]\n}\n");
    EXPECT_EQ(lines.line_of(""), 1);
    EXPECT_EQ(lines.line_of("a"), 2);
    EXPECT_EQ(lines.line_of("b"), 3);
    EXPECT_EQ(lines.line_of("b[0]"), 4);
    EXPECT_EQ(lines.line_of("b[1]"), 4);
    EXPECT_EQ(lines.line_of("b[1].c"), 5);
    EXPECT_EQ(lines.line_of("b[2][0]"), 6);
    EXPECT_EQ(lines.line_of("b[2][1]"), 7);
}

TEST(LineIndex, a_value_stands_where_it_begins) {
    const LineIndex lines("{ \"a\":\n {\n \"b\"\n:\n null } }");
    EXPECT_EQ(lines.line_of("a"), 2);
    EXPECT_EQ(lines.line_of("a.b"), 5);
}

TEST(LineIndex, missing_values_are_looked_for_around) {
    const LineIndex lines("{\n\"a\": {\n\"b\": [1,\n2] } }");
    EXPECT_EQ(lines.line_of("a.b[7].x"), 3);
    EXPECT_EQ(lines.line_of("a.c"), 2);
    EXPECT_EQ(lines.line_of("z"), 1);
}

TEST(LineIndex, braces_commas_and_breaks_inside_text_do_not_count) {
    const LineIndex lines("[\"{\\\"[,\\\\\",\n\"\\n}\",\n3]");
    EXPECT_EQ(lines.line_of("[1]"), 2);
    EXPECT_EQ(lines.line_of("[2]"), 3);
}

TEST(LineIndex, escaped_names_are_read) {
    const LineIndex lines("{\"\\u0061\\\"b\":\n1}");
    EXPECT_EQ(lines.line_of("a\"b"), 2);
}

TEST(LineIndex, dos_line_ends_count_once) {
    const LineIndex lines("[1,\r\n2,\r\n3]");
    EXPECT_EQ(lines.line_of("[2]"), 3);
}

TEST(LineIndex, empty_objects_and_lists_leave_the_rest_in_place) {
    const LineIndex lines("[{},[],\n{\"a\":{}},\n5]");
    EXPECT_EQ(lines.line_of("[2].a"), 2);
    EXPECT_EQ(lines.line_of("[3]"), 3);
}

TEST(LineIndex, a_single_number_is_a_text) {
    EXPECT_EQ(LineIndex("\n 12").line_of(""), 2);
}

TEST(LineIndex, a_name_twice_is_refused_in_its_own_object_only) {
    EXPECT_NO_THROW(LineIndex("{\"a\":{\"a\":1},\"b\":{\"a\":2}}"));
    try {
        LineIndex("{\"a\":[{\"b\":1,\n\"b\":2}]}");
        FAIL();
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "line 2: a[0].b: is given twice");
    }
}

TEST(LineIndex, deep_nesting_is_refused_and_does_not_run_away) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_NO_THROW(LineIndex(nested(LineIndex::kMaxDepth)));
    EXPECT_THROW(LineIndex(nested(LineIndex::kMaxDepth + 1)), std::runtime_error);
    EXPECT_THROW(LineIndex(nested(1'000'000)), std::runtime_error);
}

}  // namespace
