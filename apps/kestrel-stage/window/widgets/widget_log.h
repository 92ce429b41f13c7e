// What stands where in the window: the list that programs drive it by.
#pragma once

#include <string>
#include <vector>

namespace stage_view {

/// Window pixels; empty when nothing of the thing can be seen.
struct PixelRect {
    int x = 0, y = 0, width = 0, height = 0;
    bool contains(int px, int py) const {
        return px >= x && py >= y && px < x + width && py < y + height;
    }
};

/// One thing that can be clicked or read.
struct Widget {
    std::string role;  ///< "menu", "item", "button", "slider" ...
    std::string name;  ///< as shown; choices and items carry their parent's: "View/100 %"
    PixelRect rect;
    bool enabled = true;
    bool checked = false;
    int parameter = -1;  ///< index of the parameter that it edits
};

/// Filled anew with every frame.
class WidgetLog {
  public:
    void clear() { widgets_.clear(); }
    /// The item that ImGui drew last, cut to what its window shows.
    void add(const std::string &role, const std::string &name, bool enabled = true,
             bool checked = false, int parameter = -1);
    /// A thing of a known place.
    void add_at(const std::string &role, const std::string &name, const PixelRect &rect,
                bool enabled = true, bool checked = false) {
        widgets_.push_back({role, name, rect, enabled, checked});
    }
    const std::vector<Widget> &widgets() const { return widgets_; }

  private:
    std::vector<Widget> widgets_;
};

}  // namespace stage_view
