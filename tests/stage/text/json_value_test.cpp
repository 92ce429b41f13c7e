// Values of JSON texts: what is read, and what is said of wrong ones.
#include "stage/text/json_value.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace {

using stage::JsonDocument;
using stage::JsonError;
using stage::JsonFault;
using stage::JsonValue;
using Kind = JsonFault::Kind;
using Lines = JsonDocument::Lines;

constexpr char kText[] = R"({
  "a": [1, 2.5, "x"],
  "b": { "c": true,
         "d": 18446744073709551615 },
  "e": {}
})";

/// What `act` is refused with.
JsonFault fault_of(const std::function<void()> &act) {
    try {
        act();
    } catch (const JsonError &error) {
        return error.fault();
    }
    ADD_FAILURE() << "nothing was wrong";
    return {};
}

JsonFault fault_of(const std::function<void(const JsonValue &)> &act, Lines lines) {
    const JsonDocument document(kText, "f.json", lines);
    return fault_of([&] { act(document.root()); });
}

TEST(JsonValue, reads_what_is_there) {
    const JsonDocument document(kText, "f.json", Lines::kCounted);
    const JsonValue root = document.root();
    EXPECT_EQ(root["a"].size(), 3u);
    EXPECT_EQ(root["a"].at(0).integer(1, 1), 1);
    EXPECT_EQ(root["a"].at(1).number(), 2.5);
    EXPECT_EQ(root["a"].at(1).number(2.5, 2.5), 2.5);
    EXPECT_EQ(root["a"].elements().back().string(), "x");
    EXPECT_TRUE(root["b"]["c"].boolean());
    EXPECT_FALSE(root.find("z").has_value());
    EXPECT_EQ(root.members().front().first, "a") << "in the order of the text";
}

TEST(JsonValue, tells_where_it_stands) {
    const JsonDocument counted(kText, "f.json", Lines::kCounted);
    EXPECT_EQ(counted.root().where(), "f.json:1");
    EXPECT_EQ(counted.root()["b"]["d"].where(), "f.json:4: b.d");
    const JsonDocument plain(kText, "f.json", Lines::kNotCounted);
    EXPECT_EQ(plain.root().where(), "f.json");
    EXPECT_EQ(plain.root()["a"].at(2).where(), "f.json: a[2]");
}

TEST(JsonValue, whole_numbers_keep_to_their_range) {
    const auto integer = [](const char *member, int index, std::int64_t low, std::int64_t high) {
        return fault_of(
            [=](const JsonValue &root) {
                root[member].at(static_cast<std::size_t>(index)).integer(low, high);
            },
            Lines::kCounted);
    };
    const JsonFault outside = integer("a", 0, 2, 30);
    EXPECT_EQ(outside.kind, Kind::kOutside);
    EXPECT_EQ(outside.low + " " + outside.high, "2 30");
    EXPECT_EQ(outside.path, "a[0]");
    EXPECT_EQ(outside.line, 2);
    EXPECT_EQ(integer("a", 0, -30, 0).kind, Kind::kOutside);
    EXPECT_EQ(integer("a", 1, 0, 9).kind, Kind::kNotWhole);
    EXPECT_EQ(integer("a", 2, 0, 9).kind, Kind::kNotWhole);
    const auto huge = [](const JsonValue &root) {
        root["b"]["d"].integer(0, std::numeric_limits<std::int64_t>::max());
    };
    EXPECT_EQ(fault_of(huge, Lines::kNotCounted).kind, Kind::kOutside);
}

TEST(JsonValue, a_missing_member_is_told_with_its_object) {
    const JsonFault fault =
        fault_of([](const JsonValue &root) { root["b"]["z"]; }, Lines::kCounted);
    EXPECT_EQ(fault.kind, Kind::kMissing);
    EXPECT_EQ(fault.path, "b");
    EXPECT_EQ(fault.text, "z");
    EXPECT_EQ(fault.line, 3);
    EXPECT_EQ(reason_text(fault), "\"z\" is missing");
    EXPECT_STREQ(JsonError(fault).what(), "line 3: b: \"z\" is missing");
}

TEST(JsonValue, other_kinds_of_values_are_refused) {
    const struct {
        std::function<void(const JsonValue &)> act;
        const char *what;
    } cases[] = {
        {[](const JsonValue &root) { root["a"]["x"]; }, "a: expected an object"},
        {[](const JsonValue &root) { root["a"].members(); }, "a: expected an object"},
        {[](const JsonValue &root) { root["e"].members(); }, "e: is empty"},
        {[](const JsonValue &root) { root["b"].size(); }, "b: expected a list"},
        {[](const JsonValue &root) { root["a"].at(3); }, "a: has too few elements"},
        {[](const JsonValue &root) { root["a"].at(2).number(); }, "a[2]: expected a number"},
        {[](const JsonValue &root) { root["a"].at(0).boolean(); }, "a[0]: expected true or false"},
        {[](const JsonValue &root) { root["a"].at(0).string(); }, "a[0]: expected text"},
        {[](const JsonValue &root) { root["a"].pair(0, 9); }, "a: expected a list of two numbers"},
        {[](const JsonValue &root) { root["a"].typed(); }, "a[2]: expected a number"},
        {[](const JsonValue &root) {
             root.only({"a", "b"});
         },
         "e: is not known here (a, b)"},
        {[](const JsonValue &root) { root["a"].at(1).number(0, 2.25); },
         "a[1]: must lie within 0 to 2.25"},
        {[](const JsonValue &root) { root.fail("no"); }, "no"},
    };
    for (const auto &tried : cases) {
        EXPECT_STREQ(JsonError(fault_of(tried.act, Lines::kNotCounted)).what(), tried.what);
    }
}

TEST(JsonDocument, broken_text_is_refused_with_its_place) {
    const auto broken = [](Lines lines) {
        return fault_of([=] { JsonDocument("{\n \"a\": }", "f", lines); });
    };
    EXPECT_EQ(broken(Lines::kCounted).kind, Kind::kSyntax);
    EXPECT_EQ(broken(Lines::kCounted).line, 2);
    EXPECT_EQ(broken(Lines::kNotCounted).line, 0);
    EXPECT_EQ(broken(Lines::kNotCounted).byte, 9u);
    EXPECT_EQ(fault_of([] { JsonDocument("[1e999]", "f", Lines::kCounted); }).text,
              "a number is too large");
}

TEST(JsonDocument, of_equal_members_the_last_counts_where_lines_are_not_counted) {
    const std::string text = "{\"a\": 1,\n\"a\": 2}";
    EXPECT_EQ(JsonDocument(text, "f", Lines::kNotCounted).root()["a"].integer(0, 9), 2);
    EXPECT_STREQ(JsonError(fault_of([&] { JsonDocument(text, "f", Lines::kCounted); })).what(),
                 "line 2: a: is given twice");
}

}  // namespace
