// What the window's menus and buttons do, on top of the desk.
#pragma once

#include <deque>
#include <exception>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "stage/desk/desk.h"

namespace stage_view {

/// Something to be read and dismissed.
struct Notice {
    std::string text;
    bool as_error = false;
};

/// Acts never throw: what goes wrong becomes a notice.
class WindowActs {
  public:
    explicit WindowActs(stage::Desk &desk) : desk_(desk) {}

    stage::Desk &desk() { return desk_; }
    stage::Session &session() { return desk_.session(); }
    /// Null when there is none.
    stage::Item *comp();

    /// Runs `act`; an exception becomes a notice. True when it went through.
    template <typename Act>
    bool attempt(Act &&act) {
        try {
            act();
            return true;
        } catch (const std::exception &error) {
            notify(error.what(), true);
            return false;
        }
    }

    // Project. A picture or chart that is opened gets a comp of its own, and the effect on an
    // adjustment layer over it.
    void open_picture(const std::filesystem::path &file);
    void open_chart(const std::string &chart, int width, int height);
    void add_picture(const std::filesystem::path &file);
    void add_chart(const std::string &chart);
    void save_project(const std::filesystem::path &file);
    void load_project(const std::filesystem::path &file);
    void show_comp(stage::ItemId comp);
    void apply_effect();
    void duplicate_layer();
    void delete_layer();

    // Edits in the panel. Those of one hold of a widget, by mouse or keys, are one step of undo.
    void set_value(int index, const stage::ParamValue &value);
    /// Once per frame: closes the step when no widget is held.
    void settle_edits(bool held);
    void reset_effect();
    void undo();
    void redo();

    // View and host.
    void fit();
    /// Point (x, y) of the pane stays where it is.
    void zoom_to(double zoom, double x, double y);
    void zoom_middle(double zoom);
    void zoom_step(double factor) { zoom_middle(desk_.viewport().zoom * factor); }
    void pan_by(double dx, double dy);
    /// Once per frame, with the pane's size: keeps the pixel aspect, and a fitted picture fitted.
    void settle_view(int width, int height);
    void set_resolution(int downsample);
    /// Limited to the comp's frames.
    void set_frame(std::int64_t frame);
    void step_frames(std::int64_t count) { set_frame(desk_.frame() + count); }
    void set_window(stage::WindowKind kind);
    void set_depth(stage::Depth depth);
    /// 0: as many as the machine has.
    void set_threads(int count);
    int threads() const { return threads_; }
    void set_pixel_aspect(int numerator, int denominator);
    /// Width of a pixel over its height.
    double pixel_aspect();

    void notify(const std::string &text, bool as_error);
    /// Takes over what the plug-in had shown since the last call.
    void collect_messages();
    std::deque<Notice> notices;

    std::filesystem::path project_file;  ///< of the last save or load
    bool correct_aspect = true;          ///< the view shows pixels in their true shape
    bool quit = false;

  private:
    /// How a viewer was last laid out.
    struct Fitting {
        bool fitted = true;
        int width = 0, height = 0, source_width = 0, source_height = 0;
        double stretch = 0;
        bool operator==(const Fitting &) const = default;
    };
    template <typename AddLayer>
    void open(AddLayer &&add_layer);

    stage::Desk &desk_;
    std::map<stage::WindowKind, Fitting> fittings_;
    std::size_t messages_taken_ = 0;
    int threads_ = 0;
    bool edit_open_ = false;
    bool held_ = false;
};

}  // namespace stage_view
