// The project file: the whole project as JSON, readable by people, with a version number.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "stage/project/project.h"

namespace stage {

/// The `format` and `version` that a project file carries. A file with another version is refused.
inline constexpr char kProjectFormat[] = "kestrel-stage-project";
inline constexpr int kProjectVersion = 1;

/// Footage that a project refers to: exactly one of `path` and `chart` is set.
struct FootageRequest {
    std::string path;   ///< UTF-8; a file or a printf pattern, absolute or as the caller set it
    std::string chart;  ///< name of a built-in chart
    int width = 0, height = 0;  ///< size when saved; the size in which a chart is wanted
};

/// Footage as opened.
struct OpenedFootage {
    int width = 0, height = 0;
    std::int64_t frames = 1;
    FrameReader reader;
};

/// Opens footage while a project is loaded, so that the project itself knows no picture formats.
/// May throw any std::exception; its text becomes part of the load error.
using FootageOpener = std::function<OpenedFootage(const FootageRequest &)>;

/// The file's text. Footage whose path lies beneath the absolute folder `base` is written relative
/// to it, other footage with its absolute path; `base` may be empty, then paths stay as they are.
/// Throws ProjectError for numbers that are not finite and text that is not UTF-8.
std::string project_to_text(const Project &project, const std::filesystem::path &base);

/// The reverse: replaces the contents of `project` only when all is well. `what` names the text in
/// errors; they read "WHAT: items[2].layers[0].scale: expected a number". An empty `open` leaves
/// the footage closed. Throws ProjectError.
void project_from_text(Project &project, const std::string &text, const std::string &what,
                       const std::filesystem::path &base, const FootageOpener &open);

/// Writes the file whole or not at all. Throws ProjectError "FILE: reason".
void save_project(const Project &project, const std::filesystem::path &file);
/// Replaces the contents of `project`; on an error it stays as it was. Throws ProjectError.
void load_project(Project &project, const std::filesystem::path &file, const FootageOpener &open);

}  // namespace stage
