// Session files: what a user does, written down to be played again. docs/stage/session-files.md
// describes them.
#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "stage/host/host_options.h"

namespace stage {

class SessionPlayer;

/// The `format` and `version` that a session file carries.
inline constexpr char kSessionFormat[] = "kestrel-stage-session";
inline constexpr int kSessionVersion = 1;

/// A session file is wrong, or a step of it cannot be done: "FILE:LINE: PATH: reason", one line.
class SessionFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Does one step. Throws SessionFileError, SessionError, ProjectError, PictureError.
using SessionAct = std::function<void(SessionPlayer &)>;

/// One step, checked and ready to be done.
struct SessionStep {
    /// An expectation or note leaves the plug-in's last answer as it is.
    enum class Kind { kAct, kCheck };

    std::string where;  ///< "FILE:LINE: steps[3].drag"
    Kind kind = Kind::kAct;
    SessionAct act;
};

struct SessionFile {
    HostOptions options;  ///< of the host before the plug-in is loaded
    std::vector<SessionStep> steps;
};

/// Reads the whole file and checks everything that can be checked without the plug-in: names of
/// steps and members, types, ranges. `name` is how errors call the file. Throws SessionFileError.
SessionFile session_from_text(const std::string &text, const std::string &name);
/// The same of a file. Throws SessionFileError "FILE: reason" when it cannot be read.
SessionFile read_session_file(const std::filesystem::path &file);

}  // namespace stage
