#include "apps/window/x_display.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace view {
namespace {

constexpr int kStartMilliseconds = 20000;

/// Reads the display's number, one line. Empty when the server does not come up.
std::string read_number(int descriptor) {
    std::string text;
    pollfd waiting{descriptor, POLLIN, 0};
    while (!text.ends_with('\n')) {
        if (poll(&waiting, 1, kStartMilliseconds) != 1) return {};
        char letter = 0;
        if (read(descriptor, &letter, 1) != 1) return {};
        text += letter;
    }
    text.pop_back();
    return text;
}

}  // namespace

struct XDisplay::Connection {
    explicit Connection(const std::string &name) : display(XOpenDisplay(name.c_str())) {
        if (display == nullptr) throw std::runtime_error("the X server at " + name + " is silent");
    }
    ~Connection() { XCloseDisplay(display); }

    void send_key(KeySym symbol, bool down) const {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), down, CurrentTime);
    }

    Display *display;
    Window window = 0;
    int x = 0, y = 0;  ///< of the window on the screen
};

bool XDisplay::possible() {
    const char *path = std::getenv("PATH");
    std::string folders = path != nullptr ? path : "";
    folders += ':';
    for (std::size_t colon; (colon = folders.find(':')) != std::string::npos;) {
        if (access((folders.substr(0, colon) + "/Xvfb").c_str(), X_OK) == 0) return true;
        folders.erase(0, colon + 1);
    }
    return false;
}

XDisplay::XDisplay(int width, int height, const std::filesystem::path &folder) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    server_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0",
                                 screen, "-nolisten", "tcp"},
        folder.string(), std::vector<std::string>{}, (folder / "xvfb.log").string(), ends[1]);
    close(ends[1]);
    const std::string number = read_number(ends[0]);
    close(ends[0]);
    if (number.empty()) throw std::runtime_error("Xvfb does not start");
    name_ = ":" + number;
    connection_ = std::make_unique<Connection>(name_);
}

XDisplay::~XDisplay() = default;

bool XDisplay::find_window() {
    Display *display = connection_->display;
    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0) {
        return false;
    }
    connection_->window = 0;
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes look;
        if (XGetWindowAttributes(display, children[i], &look) == 0) continue;
        if (look.map_state != IsViewable || look.width < 500) continue;
        connection_->window = children[i];
        connection_->x = look.x;
        connection_->y = look.y;
    }
    if (children != nullptr) XFree(children);
    if (connection_->window == 0) return false;
    XSetInputFocus(display, connection_->window, RevertToPointerRoot, CurrentTime);
    XSync(display, False);
    return true;
}

void XDisplay::move(int x, int y) {
    XTestFakeMotionEvent(connection_->display, -1, connection_->x + x, connection_->y + y,
                         CurrentTime);
    XSync(connection_->display, False);
}

void XDisplay::button(unsigned number, bool down) {
    XTestFakeButtonEvent(connection_->display, number, down, CurrentTime);
    XSync(connection_->display, False);
}

void XDisplay::key(const std::string &name, bool control, bool shift) {
    const KeySym symbol = XStringToKeysym(name.c_str());
    if (symbol == NoSymbol) throw std::runtime_error("no key is called " + name);
    if (control) connection_->send_key(XStringToKeysym("Control_L"), true);
    if (shift) connection_->send_key(XStringToKeysym("Shift_L"), true);
    connection_->send_key(symbol, true);
    connection_->send_key(symbol, false);
    if (shift) connection_->send_key(XStringToKeysym("Shift_L"), false);
    if (control) connection_->send_key(XStringToKeysym("Control_L"), false);
    XSync(connection_->display, False);
}

WindowPixels XDisplay::pixels() {
    Display *display = connection_->display;
    XWindowAttributes look;
    XGetWindowAttributes(display, connection_->window, &look);
    XImage *image = XGetImage(display, connection_->window, 0, 0, static_cast<unsigned>(look.width),
                              static_cast<unsigned>(look.height), AllPlanes, ZPixmap);
    if (image == nullptr) throw std::runtime_error("the window cannot be read");
    WindowPixels result{look.width, look.height, {}};
    result.pixels.reserve(static_cast<std::size_t>(look.width) *
                          static_cast<std::size_t>(look.height));
    for (int y = 0; y < look.height; ++y) {
        for (int x = 0; x < look.width; ++x) {
            const unsigned long pixel = XGetPixel(image, x, y);
            result.pixels.push_back(static_cast<std::uint32_t>(pixel & 0xFFFFFF) | 0xFF000000U);
        }
    }
    XDestroyImage(image);
    return result;
}

}  // namespace view
