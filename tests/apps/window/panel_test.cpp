// The Effect Controls panel under the mouse and the keyboard.
#include <cmath>

#include "apps/window/view_driver.h"

namespace view {
namespace {

constexpr int kLayout = 2, kPosition = 4, kSize = 5, kGamma = 7, kColor = 37;

class ViewPanel : public ViewTest {};

TEST_F(ViewPanel, DragOfASliderIsLiveAndOneStepOfUndo) {
    start();
    const double before = number(report(), kGamma);
    const Point middle_of_track = middle("slider", "Monitor Gamma", kGamma);
    drag(middle_of_track, {middle_of_track.x + 30, middle_of_track.y}, 10);
    const Json after =
        wait_for("the slider", [&](const Json &now) { return number(now, kGamma) > 2.6; });
    // Precision 2: no more digits than the panel shows.
    const double hundredths = number(after, kGamma) * 100;
    EXPECT_NEAR(hundredths, std::round(hundredths), 1e-6);
    display().key("z", true);
    wait_for("undo", [&](const Json &now) { return number(now, kGamma) == before; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, TypedNumberIsTakenWithinTheLimits) {
    start();
    const auto type = [&](const char *digit) {
        click("number", "Monitor Gamma", kGamma);
        display().key("a", true);
        display().key(digit);
        display().key("Return");
    };
    type("2");
    wait_for("2", [](const Json &now) { return number(now, kGamma) == 2; });
    type("9");
    wait_for("the limit", [](const Json &now) { return number(now, kGamma) == 5; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, TypedColourIsOneStepOfUndo) {
    start();
    const Json before = entry(report(), kColor)["value"];
    click("checkbox", "Show Reference Line", 36);
    wait_for("the colour enabled",
             [](const Json &now) { return entry(now, kColor)["disabled"] == false; });
    click("color", "Reference Colour", kColor);
    display().key("a", true);
    for (const char *letter : {"4", "0", "8", "0", "c", "0"}) display().key(letter);
    display().key("Return");
    wait_for("the colour", [](const Json &now) { return entry(now, kColor)["text"] == "#4080c0"; });
    EXPECT_EQ(entry(report(), kColor)["value"], Json({before[0], 0x40, 0x80, 0xc0}))
        << "alpha is not typed";
    display().key("z", true);
    wait_for("undo", [&](const Json &now) { return entry(now, kColor)["value"] == before; });
    EXPECT_EQ(entry(report(), 36)["value"], true) << "that was a step before";
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, PointStaysOnItsLayer) {
    start();
    const Json first = report();
    Json rect;  // of the last of its two fields, y
    for (const Json &widget : first["widgets"]) {
        if (widget["role"] == "point" && widget.value("parameter", -1) == 27) rect = widget["rect"];
    }
    const Point second{rect[0].get<int>() + rect[2].get<int>() / 2,
                       rect[1].get<int>() + rect[3].get<int>() / 2};
    click(second);
    click(second);
    display().key("a", true);
    for (const char *digit : {"5", "0", "0", "0"}) display().key(digit);
    display().key("Return");
    const Json after =
        wait_for("the point", [](const Json &now) { return entry(now, 27)["value"][1] == 1080.0; });
    EXPECT_EQ(entry(after, 27)["value"][0], entry(first, 27)["value"][0]);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, ChoiceOfAPopupEnablesWhatDependsOnIt) {
    start();
    ASSERT_EQ(entry(report(), kSize)["disabled"], true);
    click("popup", "Monitor Layout", kLayout);
    const Json open = wait_for("the choices", [](const Json &now) {
        for (const Json &widget : now["widgets"]) {
            if (widget["name"] == "Monitor Layout/Windowed") return true;
        }
        return false;
    });
    int choices = 0;
    for (const Json &widget : open["widgets"]) choices += widget["role"] == "choice" ? 1 : 0;
    EXPECT_EQ(choices, 5) << "separators are no choices";
    click("choice", "Monitor Layout/Windowed", kLayout);
    const Json after =
        wait_for("the choice", [](const Json &now) { return number(now, kLayout) == 6; });
    EXPECT_EQ(entry(after, kSize)["disabled"], false);
    EXPECT_EQ(entry(after, kPosition)["disabled"], false);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, GreyedEntriesTakeNoClick) {
    start();
    const double before = number(report(), kSize);
    const Point track = middle("slider", "Monitor Size", kSize);
    click({track.x + 40, track.y});
    // A later act that works shows that the click has been dealt with.
    click("checkbox", "Show Slice Waveform", 22);
    const Json after =
        wait_for("the checkbox", [](const Json &now) { return entry(now, 22)["value"] == true; });
    EXPECT_EQ(number(after, kSize), before);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, HiddenEntriesAreNotShownAndTwirlsClose) {
    start();
    const auto shown = [](const Json &now, const std::string &role, int parameter) {
        for (const Json &widget : now["widgets"]) {
            if (widget["role"] == role && widget.value("parameter", -1) == parameter) return true;
        }
        return false;
    };
    const Json first = report();
    EXPECT_FALSE(shown(first, "checkbox", 68)) << "RESET is always hidden";
    EXPECT_FALSE(shown(first, "group", 53)) << "the histogram is off";
    EXPECT_TRUE(shown(first, "slider", kGamma));
    click("group", "Primary Monitor", 3);
    wait_for("the group closed", [&](const Json &now) { return !shown(now, "slider", kGamma); });
    click("group", "Primary Monitor", 3);
    wait_for("the group open", [&](const Json &now) { return shown(now, "slider", kGamma); });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, ResetBringsBackTheDefaults) {
    start();
    click("popup", "Monitor Layout", kLayout);
    click("choice", "Monitor Layout/Single", kLayout);
    wait_for("the choice", [](const Json &now) { return number(now, kLayout) == 1; });
    click("checkbox", "Show Histogram", 23);
    wait_for("the histogram", [](const Json &now) { return entry(now, 53)["hidden"] == false; });
    click("button", "Reset");
    const Json after =
        wait_for("the default", [](const Json &now) { return number(now, kLayout) == 4; });
    EXPECT_EQ(entry(after, 53)["hidden"], true);
    EXPECT_EQ(entry(after, kColor)["text"], entry(report(), kColor)["text"]);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewPanel, TextIsPresentAsPixels) {
    start();
    const Json first = report();
    const WindowPixels pixels = display().pixels();
    int labels = 0;
    for (const Json &widget : first["widgets"]) {
        if (widget["role"] != "label" || widget["rect"].is_null() || !widget["enabled"]) continue;
        ++labels;
        const Json &rect = widget["rect"];
        int bright = 0;
        for (int y = rect[1]; y < rect[1].get<int>() + rect[3].get<int>(); ++y) {
            for (int x = rect[0]; x < rect[0].get<int>() + rect[2].get<int>(); ++x) {
                bright += (pixels.at(x, y) & 0xFF) > 150 ? 1 : 0;
            }
        }
        const int area = rect[2].get<int>() * rect[3].get<int>();
        EXPECT_GT(bright * 40, area) << widget["name"];
        EXPECT_LT(bright * 2, area) << widget["name"];
    }
    EXPECT_GT(labels, 20);
    EXPECT_EQ(stop(), 0);
}

}  // namespace
}  // namespace view
