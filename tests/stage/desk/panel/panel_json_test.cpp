// The panel as JSON; the verb and the window write it alike.
#include "stage/desk/panel/panel_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using stage::PanelEntry;
using Kind = PanelEntry::Kind;

PanelEntry entry_of(Kind kind, const char *text) {
    PanelEntry entry;
    entry.index = 7;
    entry.depth = 1;
    entry.kind = kind;
    entry.name = "Name";
    entry.text = text;
    entry.value.number = 1;
    entry.value.x = 12.5;
    entry.value.y = -3;
    entry.value.color = {255, 18, 171, 0};
    entry.value.layer = 4;
    return entry;
}

json only_entry(const PanelEntry &entry) {
    const json list = stage::panel_json({entry}, true);
    return list.at(0);
}

TEST(PanelJson, values_are_numbers_and_the_text_is_the_panels) {
    const json color = only_entry(entry_of(Kind::kColor, "#12ab00"));
    EXPECT_EQ(color, json::parse(R"({"index": 7, "depth": 1, "kind": "color", "name": "Name",
        "value": [255, 18, 171, 0], "text": "#12ab00",
        "hidden": false, "disabled": false, "collapsed": false})"));
    EXPECT_EQ(only_entry(entry_of(Kind::kPoint, ""))["value"], json({12.5, -3.0}));
    EXPECT_EQ(only_entry(entry_of(Kind::kLayer, ""))["value"], 4);
    EXPECT_EQ(only_entry(entry_of(Kind::kCheckbox, ""))["value"], true);
    EXPECT_EQ(only_entry(entry_of(Kind::kPopup, ""))["value"], 1.0);
    EXPECT_EQ(only_entry(entry_of(Kind::kSlider, ""))["value"], 1.0);
}

TEST(PanelJson, groups_have_no_value) {
    const json group = only_entry(entry_of(Kind::kGroup, ""));
    EXPECT_EQ(group["kind"], "group");
    EXPECT_FALSE(group.contains("value"));
    EXPECT_FALSE(group.contains("text"));
}

TEST(PanelJson, hidden_entries_are_there_when_asked_for) {
    PanelEntry hidden = entry_of(Kind::kSlider, "");
    hidden.hidden = true;
    const std::vector<PanelEntry> entries{hidden, entry_of(Kind::kPoint, "")};
    EXPECT_EQ(stage::panel_json(entries, true).size(), 2u);
    ASSERT_EQ(stage::panel_json(entries, false).size(), 1u);
    EXPECT_EQ(stage::panel_json(entries, false)[0]["kind"], "point");
}

}  // namespace
