// The menu bar, and the keys that stand for its items.
#pragma once

#include <SDL.h>

#include <functional>
#include <string>
#include <vector>

#include "kestrel-stage/window/widgets/file_dialog.h"
#include "kestrel-stage/window/widgets/widget_log.h"
#include "kestrel-stage/window/widgets/window_acts.h"

namespace stage_view {

class Menus {
  public:
    explicit Menus(WindowActs &acts) : acts_(acts) {}

    /// Draws the bar along the top of the window and carries out what is chosen.
    void draw_bar(WidgetLog &log);
    /// Draws the dialog that an item opened.
    void draw_dialog(WidgetLog &log) { dialog_.draw(log); }
    bool asks() const { return dialog_.open(); }
    /// A key pressed while no text is typed and no dialog waits.
    void key(const SDL_Keysym &key);
    /// Height of the bar as drawn last, pixels.
    int height() const { return height_; }

  private:
    /// One line of a menu: an act, a menu of its own, or with neither a separator.
    struct Line {
        std::string name{};
        std::string keys{};
        std::function<void()> act{};
        bool enabled = true;
        bool checked = false;
        std::function<std::vector<Line>()> menu{};
    };
    using Lines = std::vector<Line>;

    void draw_menu(const std::string &path, const Line &line, WidgetLog &log);
    void draw_lines(const std::string &path, const Lines &lines, WidgetLog &log);
    Lines bar_lines();
    Lines file_lines();
    Lines chart_lines(bool as_layer);
    Lines edit_lines();
    Lines layer_lines();
    Lines view_lines();
    Lines project_lines();
    Lines depth_lines();
    Lines thread_lines();
    Lines aspect_lines();
    Lines comp_lines();
    void ask_for_picture(bool as_layer);
    void ask_for_project();
    void ask_where_to_save();

    WindowActs &acts_;
    FileDialog dialog_;
    std::filesystem::path last_picture_;
    int height_ = 0;
};

}  // namespace stage_view
