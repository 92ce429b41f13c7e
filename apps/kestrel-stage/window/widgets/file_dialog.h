// Asks for a file: a path that can be typed, and a list to click through.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "kestrel-stage/window/widgets/widget_log.h"

namespace stage_view {

class FileDialog {
  public:
    /// Opens it. `chosen` gets the path, as typed, when the user agrees.
    void ask(const std::string &title, const std::string &agree, const std::string &hint,
             const std::filesystem::path &start,
             std::function<void(const std::filesystem::path &)> chosen);
    bool open() const { return open_; }
    void draw(WidgetLog &log);

  private:
    void list_folder();
    void rows(WidgetLog &log);
    void finish(bool agreed);

    bool open_ = false;
    bool just_opened_ = false;
    std::string title_, agree_, hint_, path_, listed_;
    std::vector<std::string> folders_, files_;
    std::filesystem::path folder_;
    std::function<void(const std::filesystem::path &)> chosen_;
};

}  // namespace stage_view
