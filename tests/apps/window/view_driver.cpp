#include "apps/window/view_driver.h"

#include <stdlib.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "support/paths.h"

namespace view {
namespace {

constexpr int kScreenWidth = 1700, kScreenHeight = 1500;
constexpr const char *kSize = "1600x1400";

/// Between two acts of the hand, so that a program sees a person and not one burst.
constexpr std::chrono::milliseconds kPause{15};

std::string read_text(const std::filesystem::path &file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

void ViewTest::SetUp() {
    if (!XDisplay::possible()) GTEST_SKIP() << "Xvfb is not installed: there is no display to try";
    std::string name = (std::filesystem::temp_directory_path() / "ks-view-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
    display_ = std::make_unique<XDisplay>(kScreenWidth, kScreenHeight, folder_);
}

void ViewTest::TearDown() {
    if (HasFailure() && program_) {
        std::cerr << read_text(folder_ / "view.log") << read_text(folder_ / "report.json");
    }
    program_.reset();
    display_.reset();
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
}

void ViewTest::launch(const std::vector<std::string> &arguments) {
    std::vector<std::string> words = {
        paths::stage(), "view", "--size", kSize, "--report", (folder_ / "report.json").string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    program_ = std::make_unique<ChildProcess>(
        words, folder_.string(),
        std::vector<std::string>{"DISPLAY=" + display_->name(), "SDL_VIDEODRIVER=x11",
                                 // SDL looks for a desktop session; there is none here.
                                 "DBUS_SESSION_BUS_ADDRESS=disabled:"},
        (folder_ / "view.log").string());
}

void ViewTest::start(const std::vector<std::string> &arguments) {
    std::filesystem::remove(folder_ / "report.json");
    launch(arguments);
    wait_for("a first frame", [](const Json &now) { return now.contains("settled"); });
    ASSERT_TRUE(wait_until([this] { return display_->find_window(); }, kPatience));
}

int ViewTest::stop() {
    const auto status = program_->end(kPatience);
    if (!status) ADD_FAILURE() << "the window does not close";
    return status.value_or(-1);
}

ViewTest::Json ViewTest::report() const {
    return Json::parse(read_text(folder_ / "report.json"), nullptr, false);
}

ViewTest::Json ViewTest::wait_for(const std::string &what, const Check &check) {
    Json now;
    const auto holds = [&] {
        if (!program_->running()) return true;
        now = report();
        return !now.is_discarded() && check(now);
    };
    const bool in_time = wait_until(holds, kPatience);
    if (!in_time || !program_->running()) {
        throw std::runtime_error(
            (in_time ? "the program ended while waiting for " : "in vain waited for ") + what);
    }
    return now;
}

void ViewTest::move(Point at) {
    display_->move(at.x, at.y);
    std::this_thread::sleep_for(kPause);
}

void ViewTest::press(Point at, unsigned button) {
    move(at);
    display_->button(button, true);
    std::this_thread::sleep_for(kPause);
}

void ViewTest::release(unsigned button) {
    display_->button(button, false);
    std::this_thread::sleep_for(kPause);
}

void ViewTest::click(Point at) {
    press(at);
    release();
}

void ViewTest::wheel(Point at, bool up) {
    press(at, up ? 4 : 5);
    release(up ? 4 : 5);
}

void ViewTest::drag(Point from, Point to, int steps) {
    press(from);
    for (int step = 1; step <= steps; ++step) {
        move({from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps});
    }
    release();
}

Point ViewTest::middle(const std::string &role, const std::string &name, int parameter) {
    Json rect;
    wait_for(role + " \"" + name + "\"", [&](const Json &now) {
        for (const Json &widget : now.at("widgets")) {
            if (widget.at("role") != role || widget.at("name") != name) continue;
            if (parameter >= 0 && widget.value("parameter", -1) != parameter) continue;
            rect = widget.at("rect");
            return !rect.is_null();
        }
        return false;
    });
    return {rect[0].get<int>() + rect[2].get<int>() / 2,
            rect[1].get<int>() + rect[3].get<int>() / 2};
}

void ViewTest::choose(const std::string &menu, const std::string &item) {
    click("menu", menu);
    click("item", item);
}

Point ViewTest::comp_point(double x, double y) const {
    const Json pane = report().at("pane");
    const double zoom = pane.at("zoom");
    const double stretch = pane.at("stretch");
    const double left = pane.at("rect")[0].get<double>() + pane.at("pan")[0].get<double>();
    const double top = pane.at("rect")[1].get<double>() + pane.at("pan")[1].get<double>();
    return {static_cast<int>(std::lround(left + x * zoom * stretch)),
            static_cast<int>(std::lround(top + y * zoom))};
}

const ViewTest::Json &ViewTest::entry(const Json &report, int index) {
    for (const Json &line : report.at("panel")) {
        if (line.at("index") == index) return line;
    }
    throw std::runtime_error("the panel has no parameter " + std::to_string(index));
}

}  // namespace view
