// An X server without a screen, and a hand on its mouse and keyboard.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/window/child_process.h"

namespace view {

/// Pixels of a window, 0xFFRRGGBB, rows from the top.
struct WindowPixels {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
};

/// A server of its own on a free display number. Positions are pixels of the one window that is
/// looked at. Throws std::runtime_error.
class XDisplay {
  public:
    /// False where Xvfb is not installed.
    static bool possible();

    XDisplay(int width, int height, const std::filesystem::path &folder);
    ~XDisplay();

    /// ":7"
    const std::string &name() const { return name_; }
    /// Finds the program's window, which must be on the screen, and gives it the keyboard as a
    /// window manager would. False when there is none yet.
    bool find_window();

    void move(int x, int y);
    void button(unsigned number, bool down);
    /// Presses and releases a key by its X name: "z", "Return"; with Control or Shift held.
    void key(const std::string &name, bool control = false, bool shift = false);
    WindowPixels pixels();

  private:
    struct Connection;
    std::string name_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace view
