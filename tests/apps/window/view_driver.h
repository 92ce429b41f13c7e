// kestrel-stage view as a program under test: its window, its report, and a user's hand.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "apps/window/x_display.h"

namespace view {

struct Point {
    int x = 0, y = 0;
};

/// Each test has a server, a folder and a window of its own. Waiting never lasts longer than
/// kPatience; what does not happen in time fails the test with the report as it stands.
class ViewTest : public testing::Test {
  protected:
    using Json = nlohmann::json;
    using Check = std::function<bool(const Json &report)>;
    static constexpr Seconds kPatience{40};

    void SetUp() override;
    void TearDown() override;

    /// Starts the program with these arguments beside the window's size and the report.
    void launch(const std::vector<std::string> &arguments);
    /// The same, and waits for the window.
    void start(const std::vector<std::string> &arguments = {});
    /// The program's exit status after it was asked to end.
    int stop();

    /// The last report; waits until `check` holds for it.
    Json wait_for(const std::string &what, const Check &check);
    Json report() const;

    void move(Point at);
    void press(Point at, unsigned button = 1);
    void release(unsigned button = 1);
    void click(Point at);
    void wheel(Point at, bool up);
    /// From one point to the other in `steps` moves, with the button held.
    void drag(Point from, Point to, int steps);

    /// The middle of a widget once it is shown; `parameter` where names repeat.
    Point middle(const std::string &role, const std::string &name, int parameter = -1);
    void click(const std::string &role, const std::string &name, int parameter = -1) {
        click(middle(role, name, parameter));
    }
    /// Opens a menu and chooses an item: "View", "View/100 %".
    void choose(const std::string &menu, const std::string &item);

    /// Window pixels of a point of the comp.
    Point comp_point(double x, double y) const;
    /// Entry of the panel by parameter index.
    static const Json &entry(const Json &report, int index);
    static double number(const Json &report, int index) {
        return entry(report, index).at("value").get<double>();
    }

    std::filesystem::path folder() const { return folder_; }
    XDisplay &display() { return *display_; }
    ChildProcess &program() { return *program_; }

  private:
    std::filesystem::path folder_;
    std::unique_ptr<XDisplay> display_;
    std::unique_ptr<ChildProcess> program_;
};

}  // namespace view
