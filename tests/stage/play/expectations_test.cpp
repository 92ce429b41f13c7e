// Every kind of expectation holds when it should, and fails, with what was wanted and found, when
// it should not.
#include "stage/play/player_fixture.h"

namespace ks::play {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Case {
    const char *name;
    std::string before;  ///< steps, each with its comma
    std::string holds;   ///< an expectation, without braces
    std::string fails;   ///< the same with another value
    std::string says;    ///< of the failure: wanted ..., found ...
};
void PrintTo(const Case &tested, std::ostream *stream) {
    *stream << tested.name;
}

class Expectation : public testing::TestWithParam<Case> {};

TEST_P(Expectation, holds_or_fails_as_it_should) {
    const Case &tested = GetParam();
    const std::string before = kApplied + tested.before;
    expect_clean(play(before + "{ \"expect\": { " + tested.holds + " } }"));
    const stage::PlayReport report = play(before + "{ \"expect\": { " + tested.fails + " } }");
    EXPECT_FALSE(report.stopped);
    ASSERT_FALSE(report.failures.empty());
    EXPECT_THAT(report.failures.front(), HasSubstr(tested.says));
    EXPECT_THAT(report.failures.front(), HasSubstr("].expect."));
}

const Case kCases[] = {
    {"slider", R"({ "set": { "Max Waveform Scale": 150 } },)",
     R"("values": { "Max Waveform Scale": 150 })", R"("values": { "Max Waveform Scale": 151 })",
     "wanted 151, found 150"},
    {"slider_within", R"({ "set": { "Max Waveform Scale": 150 } },)",
     R"("values": { "Max Waveform Scale": { "is": 152, "within": 2 } })",
     R"("values": { "Max Waveform Scale": { "is": 152, "within": 1.9 } })",
     "wanted 152 within 1.9, found 150"},
    {"popup", "", R"("values": { "Monitor Layout": "Four-Way Classic" })",
     R"("values": { "Monitor Layout": 1 })", "wanted Single, found Four-Way Classic"},
    {"checkbox", "", R"("values": { "Show Vectorscope": true })",
     R"("values": { "Show Vectorscope": false })", "wanted off, found on"},
    {"color", "", R"("values": { "Reference Colour": "#000000" })",
     R"("values": { "Reference Colour": "#000001" })", "wanted #000001, found #000000"},
    {"layer", "", R"("values": { "Original Source": "none" })",
     R"("values": { "Original Source": "Scopes" })", "wanted Scopes, found none"},
    {"point", "", R"("values": { "Monitor Position": [0, 0] })",
     R"("values": { "Monitor Position": [0, 1] })", "wanted [0,1], found [0,0]"},
    {"point_within", "", R"("values": { "Monitor Position": { "is": [1, 1], "within": 1 } })",
     R"("values": { "Monitor Position": { "is": [2, 0], "within": 1 } })",
     "wanted [2,0] within 1, found [0,0]"},
    {"hidden", "", R"("hidden": ["RESET", "Scopes/Histogram"])",
     R"("hidden": ["Scopes/Vectorscope"])", "wanted Scopes/Vectorscope hidden, found shown"},
    {"shown", "", R"("shown": ["Scopes/Vectorscope"])", R"("shown": ["RESET"])",
     "wanted RESET shown, found hidden"},
    {"disabled", "", R"("disabled": ["Monitor Size"])", R"("disabled": ["Monitor Gain"])",
     "wanted Monitor Gain disabled, found enabled"},
    {"enabled", "", R"("enabled": ["Monitor Gain"])", R"("enabled": ["Monitor Size"])",
     "wanted Monitor Size enabled, found disabled"},
    {"order", "", R"("order": [1, 2, 3])", R"("order": [1, 3, 2])",
     "wanted [1, 3, 2], found [1, 2, 3]"},
    {"flat", "", R"("flat": "01010203 00 00 03 01")", R"("flat": "00 01 02 03 00 00 03 01")",
     "wanted 0001020300000301, found 0101020300000301"},
    {"layer_names", "", R"("layers": ["Scopes", "KSTR_Backing"])",
     R"("layers": ["KSTR_Backing", "Scopes"])", "wanted [KSTR_Backing, Scopes], found [Scopes, "},
    {"layer_flags", "",
     R"("layers": [{ "name": "Scopes", "flags": ["guide", "adjustment"] }, "KSTR_Backing"])",
     R"("layers": [{ "name": "Scopes", "flags": ["guide"] }, "KSTR_Backing"])",
     "[0].flags: wanted [guide], found [adjustment, guide]"},
    {"layer_hidden", R"({ "hide layer": "KSTR_Backing" },)",
     R"("layers": ["Scopes", { "name": "KSTR_Backing", "flags": ["locked", "hidden"] }])",
     R"("layers": ["Scopes", { "name": "KSTR_Backing", "flags": ["locked"] }])",
     "[1].flags: wanted [locked], found [hidden, locked]"},
    {"layer_expression", R"({ "untick": "Lock Layer Position" },)",
     R"("layers": [{ "name": "Scopes", "expression": "" }, "KSTR_Backing"])",
     R"("layers": [{ "name": "Scopes", "expression": "x" }, "KSTR_Backing"])",
     R"([0].expression: wanted "x", found "")"},
    {"layer_size", "", R"("layers": ["Scopes", { "name": "KSTR_Backing", "size": [640, 360] }])",
     R"("layers": ["Scopes", { "name": "KSTR_Backing", "size": [640, 359] }])",
     "[1].size: wanted 640x359, found 640x360"},
    {"layer_selected", "", R"("layers": [{ "name": "Scopes", "selected": true }, "KSTR_Backing"])",
     R"("layers": [{ "name": "Scopes", "selected": false }, "KSTR_Backing"])",
     "[0].selected: wanted not selected, found selected"},
    {"layer_effects", "", R"("layers": [{ "name": "Scopes", "effects": 1 }, "KSTR_Backing"])",
     R"("layers": [{ "name": "Scopes", "effects": 2 }, "KSTR_Backing"])",
     "[0].effects: wanted 2, found 1"},
    {"selected", "", R"("selected": ["Scopes"])", R"("selected": [])", "wanted [], found [Scopes]"},
    {"error", R"({ "options": { "scripts fail": true } }, { "untick": "Lock Layer Position" },)",
     R"("error": 1)", R"("error": 0)", "wanted error 0, found error 1"},
    {"handled", R"({ "click": [20, 10] },)", R"("handled": true)", R"("handled": false)",
     "wanted false, found true"},
    {"dragging", R"({ "press": [20, 10] },)", R"("dragging": true)", R"("dragging": false)",
     "wanted false, found true"},
    {"skipped", R"("render",)", R"("skipped": false)", R"("skipped": true)",
     "wanted true, found false"},
    {"cross_hair", R"({ "press": [3, 3] }, { "release": [3, 3] },)",
     R"("cross-hair": "Waveform Monitor/Scope Position")", R"("cross-hair": "none")",
     "wanted none, found Scopes/Waveform Monitor/Scope Position"},
    {"cursor", R"({ "move": [20, 10] },)", R"("cursor": "layer move")", R"("cursor": 21)",
     "wanted resize vertical, found layer move"},
    {"pixels", R"({ "set": { "Monitor Layout": "Single" } },)",
     R"("pixels": [{ "at": [639, 359], "color": "#020000", "within": 2 }])",
     R"("pixels": [{ "at": [639, 359], "color": "#020000", "within": 1 }])",
     "wanted #020000, found #000000"},
    {"frame_size", R"({ "resolution": "half" },)", R"("frame size": [320, 180])",
     R"("frame size": [640, 360])", "wanted 640x360, found 320x180"},
    {"drawn", R"({ "set": { "Monitor Layout": "Windowed" } },)",
     R"("drawn": ["theme fill, shadow: move 320 180", "paint rect 0 0 320 18"])",
     R"("drawn": ["theme fill, shadow: move 320 181", "paint rect 0 0 320 18"])",
     "wanted theme fill, shadow: move 320 181, found theme fill, shadow: move 320 180"},
    {"drawn_count", "", R"("drawn": [])", R"("drawn": ["paint rect"])",
     "wanted 1 primitives, found 0"},
    {"messages", "", R"("messages": [])", R"("messages": [{ "plain": "a" }])",
     R"(wanted plain "a", found nothing)"},
    {"findings", "", R"("findings": [])", R"("findings": ["leak.handle"])",
     "wanted leak.handle, found nothing"},
};

INSTANTIATE_TEST_SUITE_P(All, Expectation, testing::ValuesIn(kCases),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST(Expectations, the_session_goes_on_after_a_failure) {
    const stage::PlayReport report =
        play(kApplied + R"({ "expect": { "order": [3], "selected": [] } },
                           { "tick": "Show Histogram" },
                           { "expect": { "order": [5, 1, 2, 3] } })");
    EXPECT_FALSE(report.stopped);
    EXPECT_EQ(report.steps, 7);
    EXPECT_EQ(report.checks, 3);
    EXPECT_THAT(report.failures,
                ElementsAre("f:3: steps[4].expect.order: wanted [3], found [1, 2, 3]",
                            "f:3: steps[4].expect.selected: wanted [], found [Scopes]"));
}

TEST(Expectations, a_message_counts_once_and_the_kind_matters) {
    const std::string scene =
        R"({ "new comp": { "size": [640, 360] } },
           { "add chart": { "chart": "ramp", "size": [64, 36] } }, "apply",)";
    const stage::PlayReport unasked = play(scene + R"({ "note": "no expectation" })");
    EXPECT_THAT(unasked.failures, IsEmpty());
    ASSERT_EQ(unasked.messages.size(), 1u);
    const std::string text =
        unasked.messages[0].text.substr(0, unasked.messages[0].text.find('\n'));
    const stage::PlayReport wrong =
        play(scene + R"({ "expect": { "messages": [{ "plain": ")" + text + R"(" }] } },
                        { "expect": { "messages": [] } })");
    ASSERT_EQ(wrong.failures.size(), 1u);
    EXPECT_THAT(wrong.failures[0], HasSubstr("found error \"" + text));
    EXPECT_THAT(wrong.messages, IsEmpty());
}

TEST(Expectations, an_error_that_nobody_asks_about_is_a_failure) {
    const stage::PlayReport report = play(kApplied + R"({ "options": { "scripts fail": true } },
                           { "untick": "Lock Layer Position" }, { "note": "nothing" },
                           { "tick": "Show Histogram" })");
    EXPECT_THAT(report.failures,
                ElementsAre("f:4: steps[5].untick: the plug-in answered with error 1, which no "
                            "expectation asks about"));
    EXPECT_FALSE(report.stopped);
}

TEST(Expectations, an_error_at_the_very_end_is_a_failure_too) {
    const stage::PlayReport report =
        play(kApplied +
             R"({ "options": { "scripts fail": true } }, { "untick": "Lock Layer Position" })");
    ASSERT_EQ(report.failures.size(), 1u);
    EXPECT_THAT(report.failures[0], HasSubstr("error 1, which no expectation asks about"));
}

TEST(Expectations, expected_findings_are_taken_off_the_report) {
    const std::string steps = kApplied + R"("reset",)";
    const std::string options = R"({ "adopt replaced sequence": false })";
    EXPECT_THAT(play(steps + R"({ "note": "unasked" })", options).findings,
                testing::Not(IsEmpty()));
    const stage::PlayReport asked = play(
        steps + R"({ "expect": { "findings": ["handle.dead", "leak.handle", "sequence.dead"] } })",
        options);
    EXPECT_THAT(asked.failures, IsEmpty());
    EXPECT_THAT(asked.findings, IsEmpty());
}

}  // namespace
}  // namespace ks::play
