// Handles in the picture, dragged with the mouse.
#include <cmath>
#include <fstream>
#include <sstream>

#include "apps/window/view_driver.h"

namespace view {
namespace {

constexpr int kLayout = 2, kOriginal = 10, kCompare = 11, kOpacity = 12;
constexpr int kHistogramGroup = 53, kWaveformPosition = 27, kWaveformWidth = 28;

bool near_color(std::uint32_t pixel, int red, int green, int blue, int tolerance) {
    const auto close = [&](int shift, int wanted) {
        return std::abs(static_cast<int>((pixel >> shift) & 0xFF) - wanted) <= tolerance;
    };
    return close(16, red) && close(8, green) && close(0, blue);
}

class ViewHandles : public ViewTest {
  protected:
    /// A chart as a hidden layer, chosen as the effect's "Original Source".
    void choose_original() {
        click("menu", "Layer");
        click("menu", "Layer/Add Chart");
        click("item", "Layer/Add Chart/bars75");
        wait_for("the new layer",
                 [](const Json &now) { return now["comp"]["layers"].size() == 3; });
        click("video", "1. bars75");
        wait_for("the new layer hidden",
                 [](const Json &now) { return now["comp"]["layers"][0]["video"] == false; });
        click("popup", "Original Source", kOriginal);
        click("choice", "Original Source/1. bars75", kOriginal);
        wait_for("the wipe enabled",
                 [](const Json &now) { return entry(now, kCompare)["disabled"] == false; });
    }

    /// Where the wipe handle of the layout "Four-Way Classic" stands in the comp.
    Point wipe_handle(double compare, double opacity) const {
        return comp_point(480 + 1440 * compare / 100, 810 * ((100 - opacity) * 0.004 + 0.5));
    }
};

TEST_F(ViewHandles, DragOfTheWipeChangesBothItsParameters) {
    start();
    choose_original();
    const Point from = wipe_handle(0, 100);
    const Point to = wipe_handle(50, 60);
    drag(from, to, 12);
    const Json after = wait_for("the end of the drag", [](const Json &now) {
        return now["pane"]["dragging"] == false && number(now, kCompare) > 40;
    });
    // A window pixel is worth 0.12 and 0.51 percent here.
    EXPECT_NEAR(number(after, kCompare), 50, 0.3);
    EXPECT_NEAR(number(after, kOpacity), 60, 0.8);
    EXPECT_GE(after["last_drag"]["frames"].get<int>(), 1);
    EXPECT_EQ(after["findings"], 0);
    const Point handle = wipe_handle(number(after, kCompare), number(after, kOpacity));
    const WindowPixels pixels = display().pixels();
    // The theme's foreground, 0.93, 0.76, 0.29.
    EXPECT_TRUE(near_color(pixels.at(handle.x, handle.y), 237, 194, 74, 4))
        << std::hex << pixels.at(handle.x, handle.y);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, OneDragIsOneStepOfUndo) {
    start();
    choose_original();
    drag(wipe_handle(0, 100), wipe_handle(50, 60), 12);
    wait_for("the end of the drag", [](const Json &now) {
        return now["pane"]["dragging"] == false && number(now, kCompare) > 40;
    });
    display().key("z", true);
    const Json undone =
        wait_for("undo", [](const Json &now) { return number(now, kCompare) == 0; });
    EXPECT_EQ(number(undone, kOpacity), 100);
    EXPECT_NE(entry(undone, kOriginal)["value"], 0);
    display().key("z", true, true);
    wait_for("redo", [](const Json &now) { return number(now, kCompare) > 40; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, CursorsFollowTheHandles) {
    start();
    const Json first = report();
    const double x = entry(first, kWaveformPosition)["value"][0];
    const double y = entry(first, kWaveformPosition)["value"][1];
    const double width = number(first, kWaveformWidth);
    move(comp_point(x + width / 2, y + 9));
    wait_for("the move cursor", [](const Json &now) { return now["cursor"] == "move"; });
    move(comp_point(x + width, y + width * 0.5625 + 18));
    const Json corner = wait_for("the corner's cursor",
                                 [](const Json &now) { return now["cursor"] == "horizontal"; });
    EXPECT_EQ(corner["pane"]["effect_cursor"], 22);
    move(comp_point(1200, 500));
    wait_for("the arrow", [](const Json &now) { return now["cursor"] == "arrow"; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, DragOfAMoveBarTakesTheScopeAlong) {
    start();
    const Json first = report();
    const double x = entry(first, kWaveformPosition)["value"][0];
    const double y = entry(first, kWaveformPosition)["value"][1];
    const double zoom = first["pane"]["zoom"];
    drag(comp_point(x + 60, y + 9), comp_point(x + 460, y + 209), 10);
    const Json after = wait_for("the scope moved", [&](const Json &now) {
        return now["pane"]["dragging"] == false &&
               entry(now, kWaveformPosition)["value"][0].get<double>() > x + 350;
    });
    // The effect keeps the offset of the grab in window pixels. Pointers are whole window pixels,
    // which are up to two of the comp here.
    const Json position = entry(after, kWaveformPosition)["value"];
    EXPECT_NEAR(position[0].get<double>(), x + 460 - 60 * zoom, 2.5);
    EXPECT_NEAR(position[1].get<double>(), y + 209 - 9 * zoom, 2.5);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, MovesThatWaitAreTakenAsOne) {
    start();
    click("checkbox", "Show Slice Waveform", 22);
    wait_for("the slice", [](const Json &now) { return entry(now, 22)["value"] == true; });
    click("checkbox", "Show Histogram", 23);
    const Json first =
        wait_for("the histogram", [](const Json &now) { return entry(now, 23)["value"] == true; });
    const double x = entry(first, kWaveformPosition)["value"][0];
    const double y = entry(first, kWaveformPosition)["value"][1];
    const double zoom = first["pane"]["zoom"];
    constexpr int kMoves = 400;
    press(comp_point(x + 60, y + 9));
    wait_for("the drag", [](const Json &now) { return now["pane"]["dragging"] == true; });
    const Point from = comp_point(x + 60, y + 9);
    for (int step = 1; step <= kMoves; ++step) display().move(from.x + step, from.y + step / 2);
    release();
    const Json after = wait_for("the end of the drag", [&](const Json &now) {
        return now["pane"]["dragging"] == false && now["last_drag"]["frames"].get<int>() > 0;
    });
    const Json drag = after["last_drag"];
    // For the record only: a busy machine is slower.
    RecordProperty("milliseconds_per_frame",
                   std::to_string(drag["milliseconds_per_frame"].get<double>()));
    EXPECT_LT(drag["frames"].get<int>(), kMoves);
    EXPECT_GT(drag["milliseconds_per_frame"].get<double>(), 0);
    EXPECT_GE(drag["worst_milliseconds"], drag["milliseconds_per_frame"]);
    const Json position = entry(after, kWaveformPosition)["value"];
    EXPECT_NEAR(position[0].get<double>(), x + 60 + kMoves / zoom - 60 * zoom, 2.5);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, ShowHistogramRevealsItsGroupAndPutsItInFront) {
    start();
    ASSERT_EQ(entry(report(), kHistogramGroup)["hidden"], true);
    click("checkbox", "Show Histogram", 23);
    const Json after = wait_for("the group", [](const Json &now) {
        return entry(now, kHistogramGroup)["hidden"] == false;
    });
    EXPECT_EQ(entry(after, 23)["value"], true);
    display().key("s", true);
    click("button", "Save");
    const auto file = folder() / "project.json";
    ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(file); }, kPatience));
    std::ifstream in(file);
    std::ostringstream text;
    text << in.rdbuf();
    // Histogram first, then the three that were there, four in all.
    EXPECT_NE(text.str().find("0501020300040"), std::string::npos) << text.str();
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewHandles, LayoutOffHasNoWipeHandle) {
    start();
    choose_original();
    click("popup", "Monitor Layout", kLayout);
    click("choice", "Monitor Layout/Off (Scopes Only)", kLayout);
    wait_for("the layout", [](const Json &now) { return number(now, kLayout) == 7; });
    drag(comp_point(480, 405), comp_point(900, 500), 4);
    move(comp_point(1500, 100));
    const Json after =
        wait_for("rest", [](const Json &now) { return now["pane"]["dragging"] == false; });
    EXPECT_EQ(number(after, kCompare), 0);
    EXPECT_EQ(stop(), 0);
}

}  // namespace
}  // namespace view
