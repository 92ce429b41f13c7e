// The window around panel and handles: zoom, files, messages, and doing nothing.
#include <cmath>
#include <fstream>
#include <sstream>

#include "apps/window/view_driver.h"
#include "stage/image/codecs/picture_io.h"

namespace view {
namespace {

class ViewWindow : public ViewTest {
  protected:
    void write_grey(const std::string &name, int width, int height, float level) const {
        stage::Picture picture = stage::make_picture(width, height, stage::SampleType::U8);
        for (std::size_t i = 0; i < picture.argb.size(); ++i) {
            picture.argb[i] = i % 4 == 0 ? 1.0f : level;
        }
        stage::write_picture(folder() / name, picture, stage::Depth::U8);
    }

    std::uint32_t comp_pixel(double x, double y) {
        const Point at = comp_point(x, y);
        return display().pixels().at(at.x, at.y);
    }

    /// Processor time that the program has used, in ticks of the system's clock.
    long used_ticks() {
        std::ifstream in("/proc/" + std::to_string(program().pid()) + "/stat");
        std::ostringstream text;
        text << in.rdbuf();
        std::istringstream fields(text.str().substr(text.str().rfind(')') + 2));
        std::string skipped;
        for (int i = 0; i < 11; ++i) fields >> skipped;
        long user = 0;
        long system = 0;
        fields >> user >> system;
        return user + system;
    }
};

TEST_F(ViewWindow, ScopesAreDrawnOverTheTestCard) {
    start();
    const WindowPixels pixels = display().pixels();
    // Inside the waveform monitor's panel, 200 pixels wide at (15, 15) below a bar of 18.
    const Point low = comp_point(40, 45);
    const Point high = comp_point(210, 140);
    int dark = 0;
    int bright = 0;
    for (int y = low.y; y < high.y; ++y) {
        for (int x = low.x; x < high.x; ++x) {
            const std::uint32_t green = (pixels.at(x, y) >> 8) & 0xFF;
            dark += green < 60 ? 1 : 0;
            bright += green > 120 ? 1 : 0;
        }
    }
    EXPECT_GT(bright, 40) << "no trace";
    EXPECT_GT(dark, bright) << "no panel behind the trace";
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, WheelZoomsAtThePointer) {
    start();
    const Point at = comp_point(1200, 300);
    const double before = report()["pane"]["zoom"];
    wheel(at, true);
    const Json after = wait_for(
        "the zoom", [&](const Json &now) { return now["pane"]["zoom"].get<double>() > before; });
    EXPECT_NEAR(after["pane"]["zoom"].get<double>(), before * 1.25, 1e-9);
    const Point still = comp_point(1200, 300);
    EXPECT_NEAR(still.x, at.x, 1);
    EXPECT_NEAR(still.y, at.y, 1);
    click("button", "Fit");
    wait_for("the fit", [&](const Json &now) { return now["pane"]["zoom"] == before; });
    choose("View", "View/200 %");
    wait_for("200 %", [](const Json &now) { return now["pane"]["zoom"] == 2.0; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, MiddleDragPans) {
    start();
    const Json before = report()["pane"]["pan"];
    const Point from = comp_point(900, 500);
    press(from, 2);
    move({from.x + 40, from.y - 25});
    release(2);
    const Json after =
        wait_for("the pan", [&](const Json &now) { return now["pane"]["pan"][0] != before[0]; });
    EXPECT_DOUBLE_EQ(after["pane"]["pan"][0].get<double>(), before[0].get<double>() + 40);
    EXPECT_DOUBLE_EQ(after["pane"]["pan"][1].get<double>(), before[1].get<double>() - 25);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, MenusSetDepthResolutionThreadsAndAspect) {
    start();
    click("menu", "Project");
    click("menu", "Project/Depth");
    click("item", "Project/Depth/16 Bits per Channel");
    wait_for("16 bits", [](const Json &now) { return now["depth"] == 16; });
    click("menu", "Project");
    click("menu", "Project/Threads");
    click("item", "Project/Threads/4");
    wait_for("4 threads", [](const Json &now) { return now["threads"] == 4; });
    click("menu", "Project");
    click("menu", "Project/Pixel Aspect");
    click("item", "Project/Pixel Aspect/Anamorphic 2:1");
    wait_for("pixels of 2:1", [](const Json &now) { return now["pane"]["stretch"] == 2.0; });
    choose("View", "View/Pixel Aspect Correction");
    wait_for("no correction", [](const Json &now) { return now["pane"]["stretch"] == 1.0; });
    choose("View", "View/Half");
    const Json after =
        wait_for("half", [](const Json &now) { return now["pane"]["resolution"] == 2; });
    EXPECT_EQ(after["findings"], 0);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, StrictChecksCanBeTurnedOffAndOn) {
    start();
    for (const bool on : {false, true}) {
        EXPECT_EQ(report()["checks"], !on);
        click("menu", "Project");
        click("item", "Project/Strict Checks");
        wait_for("the checks", [&](const Json &now) { return now["checks"] == on; });
        click("checkbox", "Show Histogram", 23);
        wait_for("the histogram", [&](const Json &now) { return entry(now, 23)["value"] == !on; });
    }
    EXPECT_EQ(report()["findings"], 0);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, EscapeClosesMenusAndDialogs) {
    start();
    const auto shown = [](const Json &now, const std::string &name) {
        for (const Json &widget : now["widgets"]) {
            if (widget["name"] == name) return true;
        }
        return false;
    };
    click("menu", "Project");
    click("menu", "Project/Depth");
    wait_for("the menu",
             [&](const Json &now) { return shown(now, "Project/Depth/8 Bits per Channel"); });
    display().key("Escape");
    wait_for("no menu", [&](const Json &now) { return !shown(now, "Project/Depth"); });
    display().key("o", true);
    wait_for("the dialog", [&](const Json &now) { return shown(now, "Cancel"); });
    display().key("Escape");
    wait_for("no dialog", [&](const Json &now) { return !shown(now, "Cancel"); });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, LayerWindowShowsTheLayer) {
    start();
    choose("View", "View/Layer Window");
    wait_for("the layer window", [](const Json &now) { return now["pane"]["window"] == "layer"; });
    choose("View", "View/Composition Window");
    wait_for("the comp window", [](const Json &now) { return now["pane"]["window"] == "comp"; });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, SequenceIsScrubbed) {
    for (int i = 0; i < 5; ++i) {
        write_grey("shot.000" + std::to_string(i) + ".png", 640, 360, 0.2f * static_cast<float>(i));
    }
    start({(folder() / "shot.%04d.png").string()});
    click("popup", "Monitor Layout", 2);
    click("choice", "Monitor Layout/Single", 2);
    wait_for("one view", [](const Json &now) { return number(now, 2) == 1; });
    ASSERT_EQ(report()["comp"]["frames"], 5);
    EXPECT_EQ(comp_pixel(500, 300) & 0xFF, 0U);
    const Json first = report();
    Point time = middle("time", "Frame");
    press(time);
    release();
    wait_for("the middle", [](const Json &now) { return now["pane"]["frame"] == 2; });
    EXPECT_EQ(comp_pixel(500, 300) & 0xFF, 102U);
    display().key("Next");
    wait_for("the next frame", [](const Json &now) { return now["pane"]["frame"] == 3; });
    EXPECT_EQ(comp_pixel(500, 300) & 0xFF, 153U);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, WarningOfThePluginIsShownUntilOk) {
    write_grey("small.png", 320, 200, 0.5f);
    start();
    click("menu", "Layer");
    click("item", "Layer/Add Picture...");
    click("text", "Path");
    display().key("End");
    for (const char *letter : {"s", "m", "a", "l", "l", "period", "p", "n", "g"}) {
        display().key(letter);
    }
    click("button", "Add");
    wait_for("the layer", [](const Json &now) { return now["comp"]["layers"].size() == 3; });
    choose("Layer", "Layer/Apply Effect");
    const Json shown =
        wait_for("the warning", [](const Json &now) { return now["messages"].size() == 1; });
    EXPECT_EQ(shown["messages"][0]["text"],
              "Warning: You have applied Kestrel Scopes to a source layer with different "
              "dimensions to the comp.\n\nIt is recommended that you apply Kestrel Scopes to an "
              "adjustment layer at the top of the stack");
    EXPECT_EQ(shown["messages"][0]["error"], true);
    click("button", "OK");
    wait_for("no message", [](const Json &now) { return now["messages"].empty(); });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, ProjectComesBackAsItWasSaved) {
    start();
    click("popup", "Monitor Layout", 2);
    click("choice", "Monitor Layout/Windowed", 2);
    wait_for("the choice", [](const Json &now) { return number(now, 2) == 6; });
    display().key("s", true);
    click("button", "Save");
    const auto file = folder() / "project.json";
    ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(file); }, kPatience));
    EXPECT_EQ(stop(), 0);
    start({"--project", file.string()});
    const Json loaded =
        wait_for("the project", [](const Json &now) { return !now["panel"].empty(); });
    EXPECT_EQ(number(loaded, 2), 6);
    EXPECT_EQ(loaded["comp"]["layers"].size(), 2U);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, WrongPictureIsAMessageAndTheWindowStays) {
    start({(folder() / "nothing.png").string()});
    const Json shown =
        wait_for("the message", [](const Json &now) { return now["messages"].size() == 1; });
    EXPECT_NE(shown["messages"][0]["text"].get<std::string>().find("nothing.png"),
              std::string::npos);
    EXPECT_TRUE(shown["comp"].is_null());
    click("button", "OK");
    wait_for("no message", [](const Json &now) { return now["messages"].empty(); });
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, SleepsWhileNobodyActs) {
    start();
    move(comp_point(1000, 500));
    long before = -1;
    // Start-up may still have something to finish.
    ASSERT_TRUE(wait_until(
        [&] {
            const long now = used_ticks();
            const bool quiet = now == before;
            before = now;
            wait_until([] { return false; }, Seconds(0.3));
            return quiet;
        },
        kPatience));
    const int drawn = report()["drawn"];
    wait_until([] { return false; }, Seconds(1));
    EXPECT_LE(used_ticks() - before, 2);
    EXPECT_EQ(report()["drawn"], drawn);
    EXPECT_EQ(stop(), 0);
}

TEST_F(ViewWindow, ScreenshotIsThePictureOfTheWindow) {
    const auto file = folder() / "shot.png";
    start({"--screenshot", file.string()});
    const WindowPixels pixels = display().pixels();
    EXPECT_EQ(stop(), 0);
    const stage::Picture picture = stage::read_picture(file);
    ASSERT_EQ(picture.width, pixels.width);
    ASSERT_EQ(picture.height, pixels.height);
    int different = 0;
    for (int y = 0; y < picture.height; y += 3) {
        for (int x = 0; x < picture.width; x += 3) {
            const float *argb = picture.at(x, y);
            const auto code = [&](int c) {
                return static_cast<std::uint32_t>(std::lround(argb[c] * 255));
            };
            const std::uint32_t seen = code(1) << 16 | code(2) << 8 | code(3);
            different += seen != (pixels.at(x, y) & 0xFFFFFF) ? 1 : 0;
        }
    }
    // The status line tells the time that the frame took, which goes on.
    EXPECT_LT(different, 2000);
}

TEST_F(ViewWindow, EndsAfterTheFramesThatAreAskedFor) {
    launch({"--frames", "3"});
    ASSERT_TRUE(wait_until([this] { return !program().running(); }, kPatience));
    EXPECT_EQ(program().status(), 0);
    EXPECT_EQ(report()["settled"], 3);
}

}  // namespace
}  // namespace view
